#include "platform/adodb/store/Batch.h"

#include <algorithm>

namespace norvel::adodb {

namespace {

// Cells of a batch: a handful of batches with their texts fit a core's second-level cache.
constexpr std::uint32_t cells = 4096;

std::uint32_t rowsFor(int columns) {
    return std::clamp(cells / static_cast<std::uint32_t>(std::max(columns, 1)), 16U, 1024U);
}

} // namespace

Batch::Batch(int columns)
    : columns_(columns), fullCapacity_(rowsFor(columns)), capacity_(fullCapacity_),
      kinds_(std::make_unique_for_overwrite<RawKind[]>(fullCapacity_ *
                                                       static_cast<std::size_t>(columns))),
      values_(std::make_unique_for_overwrite<RawValue[]>(fullCapacity_ *
                                                         static_cast<std::size_t>(columns))),
      arena_(std::make_unique_for_overwrite<char[]>(arenaSize)) {}

Batch::~Batch() = default;

void Batch::reset(std::uint32_t rowLimit, std::chrono::steady_clock::time_point until) {
    capacity_ = std::clamp(rowLimit, 1U, fullCapacity_);
    until_ = until;
    written_ = 0;
    taken = 0;
    arenaUsed_ = longBytes_ = 0;
    longs_.clear();
    wanted_.store(false, std::memory_order_relaxed);
    ready_.store(0, std::memory_order_relaxed);
}

bool Batch::setLong(std::size_t i, const char* data, std::size_t length, RawKind kind) {
    longs_.push_back(std::make_unique<std::string>(data, length));
    longBytes_ += length;
    kinds_[i] = kind;
    values_[i].longValue = longs_.back().get();
    return true;
}

// A row that does not fit what is left waits for the next batch; one that does not fit a whole
// batch keeps its texts out of line.
bool Batch::rowTooWide(std::size_t i, const char* data, std::size_t length, RawKind kind) {
    if (written_ > 0) return false;
    return setLong(i, data, length, kind);
}

} // namespace norvel::adodb
