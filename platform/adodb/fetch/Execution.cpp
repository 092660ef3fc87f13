#include "platform/adodb/fetch/Execution.h"

#include "platform/adodb/Errors.h"

#include <exception>
#include <utility>

namespace norvel::adodb {

Execution::Execution(Run run, std::function<void()> ended) {
    thread_ = std::thread([this, run = std::move(run), ended = std::move(ended)] {
        work(run);
        ended();
    });
}

Execution::~Execution() {
    cancel();
    thread_.join();
}

void Execution::cancel() noexcept {
    const std::scoped_lock lock(mutex_);
    cancelled_ = true;
    if (reading_) reading_->abandon();
}

bool Execution::wait(std::chrono::milliseconds longest) const {
    std::unique_lock lock(mutex_);
    return ended_.wait_for(lock, longest, [&] { return done_; });
}

Execution::Outcome Execution::take() {
    const std::scoped_lock lock(mutex_);
    return std::move(outcome_);
}

void Execution::work(const Run& run) {
    Outcome outcome;
    std::unique_ptr<Fetch> fetch; // goes only once cancel() cannot reach it any more
    try {
        StatementResult result = run(cancelled_);
        outcome.affected = result.affected;
        if (result.rows) {
            fetch = std::make_unique<Fetch>(std::move(result.rows));
            {
                const std::scoped_lock lock(mutex_);
                if (cancelled_) throw adoError(adErrOperationCancelled);
                reading_ = fetch.get();
            }
            fetch->readFirstBlock();
            outcome.fetch = std::move(fetch);
        }
    } catch (...) {
        outcome.error = asErrore(std::current_exception());
    }
    {
        const std::scoped_lock lock(mutex_);
        reading_ = nullptr;
    }
    fetch.reset();
    const std::scoped_lock lock(mutex_);
    if (cancelled_ && outcome.error) outcome.error = adoError(adErrOperationCancelled);
    outcome_ = std::move(outcome);
    done_ = true;
    ended_.notify_all();
}

} // namespace norvel::adodb
