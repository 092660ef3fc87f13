#include "platform/adodb/fetch/Fetch.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/fetch/FetchLimit.h"

#include <exception>
#include <limits>
#include <new>
#include <utility>

namespace norvel::adodb {

namespace {

using namespace std::chrono_literals;

constexpr auto publishInterval = 100ms;
constexpr auto tellInterval = 50ms;
constexpr auto firstBlockTime = 50ms; // longer, and what is there is the first block
constexpr std::size_t batchCount = 8;
constexpr std::size_t batchesToWake = 4; // a thread is woken for so many, not for each

} // namespace

Errore asErrore(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Errore& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return adoError(oleOutOfMemory);
    } catch (const std::exception& other) {
        return adoError(oleFail, other.what());
    }
}

Errore fetchLimitError() {
    return adoError(dbStopLimit);
}

Fetch::Fetch(std::unique_ptr<RowSource> source)
    : source_(std::move(source)), limit_(fetchLimit()) {}

Fetch::~Fetch() {
    cancel();
    if (stepper_.joinable()) stepper_.join();
    if (builderThread_.joinable()) builderThread_.join();
}

void Fetch::readFirstBlock() {
    try {
        readFirstRows();
    } catch (...) {
        throw asErrore(std::current_exception());
    }
}

void Fetch::readFirstRows() {
    std::vector<ColumnInfo> columns = source_->columns();
    identity_ = source_->identity();
    firstBatch_ = std::make_unique<Batch>(static_cast<int>(columns.size()));
    const auto until = Clock::now() + firstBlockTime;
    const auto readMore = [&](std::uint32_t have) {
        firstBatch_->reset(firstBlockRows - have, until);
        more_ = source_->read(*firstBatch_);
        return firstBatch_->ready();
    };
    while (readMore(0) == 0 && more_) {
    }
    settleTypes(columns, *firstBatch_);
    store_ = std::make_shared<ColumnStore>(std::move(columns));
    builder_ = std::make_unique<GroupBuilder>(store_);
    builder_->take(*firstBatch_);
    while (more_ && builder_->gathered() < firstBlockRows && Clock::now() < until) {
        readMore(builder_->gathered());
        builder_->take(*firstBatch_);
    }
    builder_->publish();
}

void Fetch::start(Listener listener) {
    if (!more_) {
        source_.reset();
        firstBatch_.reset();
        builder_.reset();
        if (listener) listener();
        return;
    }
    try {
        startThreads(std::move(listener));
    } catch (...) {
        throw asErrore(std::current_exception());
    }
}

void Fetch::startThreads(Listener listener) {
    listener_ = std::move(listener);
    lastTold_ = lastPublished_ = Clock::now();
    batches_.push_back(std::move(firstBatch_));
    for (std::size_t i = 1; i < batchCount; ++i)
        batches_.push_back(std::make_unique<Batch>(store_->columnCount()));
    for (const auto& batch : batches_) {
        batch->reset(batch->capacityLimit());
        free_.push_back(batch.get());
    }
    running_.store(true, std::memory_order_release);
    stepper_ = std::thread([this] { step(); });
    builderThread_ = std::thread([this] { build(); });
}

void Fetch::cancel() noexcept {
    {
        const std::scoped_lock lock(mutex_);
        if (!running()) return;
        cancelled_.store(true, std::memory_order_release);
        if (source_) source_->cancel();
    }
    batchMoved_.notify_all();
}

std::optional<Errore> Fetch::error() const {
    const std::scoped_lock lock(mutex_);
    return error_;
}

void Fetch::waitForRows(std::int64_t rows) const {
    std::unique_lock lock(mutex_);
    rowsCame_.wait(lock, [&] { return store_->rows() >= rows || !running(); });
}

bool Fetch::waitForEnd(std::chrono::milliseconds longest) const {
    std::unique_lock lock(mutex_);
    return rowsCame_.wait_for(lock, longest, [&] { return !running(); });
}

// --- the stepping thread ---

void Fetch::step() {
    try {
        readAll();
    } catch (...) {
        fail(asErrore(std::current_exception()));
    }
    const std::scoped_lock lock(mutex_);
    if (filling_) full_.push_back(std::exchange(filling_, nullptr));
    read_ = true;
    batchMoved_.notify_all();
}

void Fetch::readAll() {
    bool more = true;
    while (more) {
        Batch* batch = freeBatch();
        if (!batch) throw adoError(adErrOperationCancelled);
        more = source_->read(*batch);
        handOver(batch);
    }
}

// Null once the fetch is cancelled.
Batch* Fetch::freeBatch() {
    std::unique_lock lock(mutex_);
    batchMoved_.wait(lock, [&] { return !free_.empty() || cancelled_; });
    if (cancelled_) return nullptr;
    filling_ = free_.back();
    free_.pop_back();
    return filling_;
}

void Fetch::handOver(Batch* batch) {
    bool worthWaking = false;
    {
        const std::scoped_lock lock(mutex_);
        filling_ = nullptr;
        full_.push_back(batch);
        worthWaking = full_.size() == batchesToWake;
    }
    if (worthWaking) batchMoved_.notify_all();
}

// The first failure counts; after cancel() every failure is the cancellation.
void Fetch::fail(const Errore& error) {
    const std::scoped_lock lock(mutex_);
    if (error_) return;
    error_ = cancelled_ ? adoError(adErrOperationCancelled, "Il caricamento dei record è stato "
                                                            "interrotto prima dell'ultimo.")
                        : error;
}

// --- the building thread ---

void Fetch::build() {
    try {
        bool building = true;
        while (building) {
            const auto batches = waitForBatches(lastPublished_ + publishInterval);
            for (Batch* batch : batches)
                if (builder_->take(*batch) > 0) published();
            stopAtLimit();
            recycle(batches);
            if (batches.empty()) {
                building = !allRead();
                takeUnfinished();
            }
            if (Clock::now() >= lastPublished_ + publishInterval || !building) {
                if (builder_->publish()) published();
                lastPublished_ = Clock::now();
            }
        }
    } catch (...) {
        fail(asErrore(std::current_exception()));
        cancel();
    }
    finish();
}

// What was asked for is more than this machine should hold: what came stays, and the fetch is
// broken off, so that nobody takes it for all there is.
void Fetch::stopAtLimit() {
    if (store_->bytes() < limit_) return;
    limit_ = std::numeric_limits<std::size_t>::max(); // once
    fail(fetchLimitError());
    cancel();
}

// The full batches, once they are worth the wake-up, or time is up, or the source is at its end.
std::vector<Batch*> Fetch::waitForBatches(Clock::time_point until) {
    std::unique_lock lock(mutex_);
    batchMoved_.wait_until(lock, until, [&] { return full_.size() >= batchesToWake || read_; });
    return std::exchange(full_, {});
}

bool Fetch::allRead() const {
    const std::scoped_lock lock(mutex_);
    return read_ && full_.empty();
}

void Fetch::recycle(const std::vector<Batch*>& batches) {
    for (Batch* batch : batches)
        batch->reset(batch->capacityLimit());
    bool starved = false;
    {
        const std::scoped_lock lock(mutex_);
        starved = free_.empty();
        free_.insert(free_.end(), batches.begin(), batches.end());
    }
    if (starved) batchMoved_.notify_all();
}

// Takes what is ready in the batch that the source is still filling, once the batches before it are
// taken. It cannot be filled anew meanwhile: it is this thread that recycles batches.
void Fetch::takeUnfinished() {
    Batch* batch = nullptr;
    {
        const std::scoped_lock lock(mutex_);
        if (full_.empty()) batch = filling_;
    }
    if (!batch) return;
    batch->want();
    if (builder_->take(*batch) > 0) published();
}

void Fetch::published() {
    lastPublished_ = Clock::now();
    {
        const std::scoped_lock lock(mutex_); // a waiter is either before its look or waiting
    }
    rowsCame_.notify_all();
    if (lastPublished_ - lastTold_ >= tellInterval) tell();
}

void Fetch::tell() {
    lastTold_ = Clock::now();
    if (listener_) listener_();
}

void Fetch::finish() {
    builder_.reset();
    std::unique_ptr<RowSource> source;
    {
        std::unique_lock lock(mutex_);
        batchMoved_.wait(lock, [&] { return read_; }); // the stepping thread is done with it
        source = std::move(source_);
    }
    source.reset();
    {
        const std::scoped_lock lock(mutex_);
        free_.clear();
        full_.clear();
        batches_.clear();
        running_.store(false, std::memory_order_release);
    }
    rowsCame_.notify_all();
    tell();
}

} // namespace norvel::adodb
