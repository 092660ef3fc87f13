// Runs a statement up to its first block of rows in the background.
#pragma once

#include "platform/adodb/fetch/Fetch.h"
#include "platform/adodb/provider/Provider.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace norvel::adodb {

// A statement may take minutes to its first row. One thread runs it and reads the first block; the
// owner goes on meanwhile.
class Execution {
  public:
    // Runs the statement, on the execution's thread; cancelled turns true when it is to stop.
    using Run = std::function<StatementResult(const std::atomic<bool>& cancelled)>;

    // ended is called on the execution's thread, once, when there is an outcome.
    Execution(Run run, std::function<void()> ended);
    ~Execution(); // cancels and waits for its thread
    Execution(const Execution&) = delete;
    Execution& operator=(const Execution&) = delete;

    void cancel() noexcept;
    // True once there is an outcome.
    bool wait(std::chrono::milliseconds longest) const;

    struct Outcome {
        std::unique_ptr<Fetch> fetch; // its first block is read; null: the statement has no rows
        RowCount affected = 0;
        std::optional<Errore> error; // why there is no fetch
    };
    // Once; there is one.
    Outcome take();

  private:
    void work(const Run& run);

    mutable std::mutex mutex_;
    mutable std::condition_variable ended_;
    bool done_ = false;
    Outcome outcome_;
    Fetch* reading_ = nullptr; // whose first block is being read
    std::atomic<bool> cancelled_{false};
    std::thread thread_;
};

} // namespace norvel::adodb
