#include "platform/adodb/odbc/OdbcRowSource.h"

#include "platform/adodb/fetch/Fetch.h"

#include <utility>

namespace norvel::adodb {

OdbcRowSource::OdbcRowSource(std::unique_ptr<OdbcStatement> statement, const Identify& identify,
                             std::shared_ptr<OdbcUse> keep, std::int64_t rowLimit)
    : rowLimit_(rowLimit), keep_(std::move(keep)), statement_(std::move(statement)),
      columns_(describeColumns(*statement_)) {
    if (identify) identity_ = identify(columns_);
    infos_.reserve(columns_.size());
    for (const OdbcColumn& column : columns_)
        infos_.push_back(column.info);
    block_ = std::make_unique<OdbcBlock>(*statement_, columns_);
}

OdbcRowSource::~OdbcRowSource() = default;

bool OdbcRowSource::read(Batch& batch) {
    if (!statement_) return false;
    try {
        if (readOn(batch)) return true;
    } catch (...) {
        keep_->spoil();
        throw;
    }
    block_.reset();
    std::unique_ptr<OdbcStatement> ended;
    {
        const std::scoped_lock lock(endMutex_);
        ended = std::move(statement_);
    }
    ended.reset(); // the driver may wait for its server: a cancel() does not wait with it
    keep_.reset(); // whoever waits for the connection has it
    if (rowLimit_ > 0 && rows_ >= rowLimit_) throw fetchLimitError();
    return false;
}

bool OdbcRowSource::readOn(Batch& batch) {
    do {
        if (block_->atEnd() && !block_->fetch()) return false;
        if (!block_->store(batch)) return true; // the row waits for the next batch
        statement_->settle();
        ++rows_;
    } while (batch.endRow());
    return true;
}

void OdbcRowSource::cancel() noexcept {
    const std::scoped_lock lock(endMutex_);
    if (statement_) statement_->cancel();
}

} // namespace norvel::adodb
