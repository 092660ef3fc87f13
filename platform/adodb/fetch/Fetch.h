// Brings the rows of a source into a store, in the background.
#pragma once

#include "platform/adodb/provider/Provider.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/GroupBuilder.h"
#include "platform/runtime/Errore.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace norvel::adodb {

// One run over a source. The first block is read on the calling thread; the rest by two threads:
// one steps the source and copies values into small batches that stay in its processor's cache, the
// other turns batches into row groups. A group is published when it is full and when a tenth of a
// second has passed since the last one, so that the rows of a slow source show.
//
// Rows that take more memory than fetchLimit() end it as a failure would, with fetchLimitError().
//
// However it ends, rows published stay. error() tells an end before the last row; it is set before
// running() turns false.
class Fetch {
  public:
    // How the fetch tells of itself, on its own threads, at most 20 times a second; the last call
    // follows the end.
    using Listener = std::function<void()>;

    static constexpr std::uint32_t firstBlockRows = 256;

    explicit Fetch(std::unique_ptr<RowSource> source);
    ~Fetch(); // cancels and waits for its threads
    Fetch(const Fetch&) = delete;
    Fetch& operator=(const Fetch&) = delete;

    // Reads the first rows (one at least, unless there is none), settles the types of columns
    // that have none, and makes the store. Raises what the source raises.
    void readFirstBlock();
    // Makes a readFirstBlock() that is running raise. Any thread.
    void abandon() noexcept { source_->cancel(); }
    const std::shared_ptr<ColumnStore>& store() const { return store_; }
    const RowIdentity& identity() const { return identity_; } // after the first block

    // Goes on in the background where there is more to read; otherwise the fetch is at its end.
    void start(Listener listener);

    void cancel() noexcept;
    bool running() const { return running_.load(std::memory_order_acquire); }
    std::optional<Errore> error() const;
    // Wait until that many rows are published, or the fetch is at its end.
    void waitForRows(std::int64_t rows) const;
    // True once the fetch is at its end.
    bool waitForEnd(std::chrono::milliseconds longest) const;

  private:
    using Clock = std::chrono::steady_clock;

    void readFirstRows();
    void startThreads(Listener listener);
    void step();
    void build();
    void readAll();
    Batch* freeBatch();
    std::vector<Batch*> waitForBatches(Clock::time_point until);
    void handOver(Batch* batch);
    void recycle(const std::vector<Batch*>& batches);
    void takeUnfinished();
    void stopAtLimit();
    bool allRead() const;
    void fail(const Errore& error);
    void published();
    void tell();
    void finish();

    std::unique_ptr<RowSource> source_;
    std::size_t limit_; // bytes of the store (FetchLimit.h)
    RowIdentity identity_;
    std::shared_ptr<ColumnStore> store_;
    std::unique_ptr<GroupBuilder> builder_; // the builder thread's once it runs
    std::unique_ptr<Batch> firstBatch_;
    Listener listener_;
    bool more_ = true;
    Clock::time_point lastTold_;
    Clock::time_point lastPublished_;

    mutable std::mutex mutex_;                 // guards what follows
    mutable std::condition_variable rowsCame_; // what the owner waits for
    std::condition_variable batchMoved_;       // what the two threads wait for
    std::vector<std::unique_ptr<Batch>> batches_;
    std::vector<Batch*> free_;
    std::vector<Batch*> full_; // in the order of the rows
    Batch* filling_ = nullptr;
    bool read_ = false; // the source is at its end, or failed
    std::optional<Errore> error_;

    std::atomic<bool> cancelled_{false};
    std::atomic<bool> running_{false};
    std::thread stepper_;
    std::thread builderThread_;
};

// Why a fetch stopped that would have taken more memory than FetchLimit.h grants:
// DB_S_STOPLIMITREACHED.
Errore fetchLimitError();

// What stops a thread, as the one failure type.
Errore asErrore(const std::exception_ptr& failure);

// Types for the columns that have none, from the rows of the first batch: one kind of values makes
// its type, whole and other numbers together make a double, no values make text, and any other mix
// is a variant.
void settleTypes(std::vector<ColumnInfo>& columns, const Batch& batch);

} // namespace norvel::adodb
