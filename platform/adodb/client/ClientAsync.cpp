// Statements of a ClientRecordset whose first block comes in the background.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
#include "platform/runtime/OwnerQueue.h"

#include <utility>

namespace norvel::adodb {

StatementRequest ClientRecordset::requestFor(const Options& options) const {
    StatementRequest request;
    request.text = statement_;
    request.background = options.background;
    request.timeoutSeconds = connection_->CommandTimeout();
    return request;
}

void ClientRecordset::await(const std::shared_ptr<Session>& session, const Options& options,
                            bool opening) {
    const std::uint64_t number = ++lastAwaited_;
    auto run = [session, request = requestFor(options)](const std::atomic<bool>& cancelled) {
        StatementRequest own = request;
        own.cancelled = &cancelled;
        return session->execute(own);
    };
    auto ended = [weak = weak_from_this(), number] {
        postToOwner([weak, number] {
            const auto recordset = weak.lock();
            if (recordset && recordset->awaited_ && recordset->awaited_->number == number)
                recordset->awaitedEnded();
        });
    };
    Awaited next;
    next.options = options;
    next.opening = opening;
    next.number = number;
    next.execution.reset(new Execution(std::move(run), std::move(ended)));
    awaited_ = std::move(next);
}

// There is an outcome; or it is given up, and counts as cancelled.
void ClientRecordset::awaitedEnded(bool givenUp) {
    const auto self = shared_from_this();
    Awaited done = std::move(*awaited_);
    awaited_.reset();
    Execution::Outcome outcome;
    if (givenUp)
        outcome.error = adoError(adErrOperationCancelled);
    else
        outcome = done.execution->take();
    affected_ = outcome.affected;
    if (done.opening)
        openingEnded(std::move(outcome), done.options);
    else
        requeryEnded(std::move(outcome), done.options);
}

void ClientRecordset::openingEnded(Execution::Outcome outcome, const Options& options) {
    if (!outcome.error && !outcome.fetch) { // no rows: it stays closed
        clear();
        sinks_.tellFreely([&](auto& sink) { sink.FetchComplete(nullptr, adStatusOK, *this); });
        return;
    }
    try {
        if (outcome.error) throw *outcome.error;
        present(std::make_shared<RowSet>(std::move(outcome.fetch), options.waits), options);
    } catch (const Errore& error) {
        clear();
        openError_ = error;
        tellFetchFailed(error);
    }
}

void ClientRecordset::requeryEnded(Execution::Outcome outcome, const Options& options) {
    if (!outcome.error && !outcome.fetch) outcome.error = adoError(adErrIllegalOperation);
    if (outcome.error) {
        tellRequeried(&*outcome.error);
        tellFetchFailed(*outcome.error);
        return;
    }
    const auto rows = std::make_shared<RowSet>(std::move(outcome.fetch), options.waits);
    showAgain(rows);
    rows->start(fetchListener(rows->generation()));
    returnToRow();
    tellRequeried(nullptr);
}

void ClientRecordset::tellFetchFailed(const Errore& error) {
    sinks_.tellFreely(
        [&](auto& sink) { sink.FetchComplete(&error, adStatusErrorsOccurred, *this); });
}

} // namespace norvel::adodb
