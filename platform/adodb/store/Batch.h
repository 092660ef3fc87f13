// A few rows on their way from a provider to the store: what the provider's thread fills and the
// store's builder empties.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

enum class RawKind : std::uint8_t {
    Null,
    Integer,
    Real,
    Date, // OLE Automation days
    Text,
    Bytes,
    LongText, // a string of its own
    LongBytes,
};

struct RawValue {
    struct Place {
        std::uint32_t offset;
        std::uint32_t length;
    };
    union {
        std::int64_t integer;
        double real;
        Place place;
        std::string* longValue;
    };
};

// Small enough to stay in the processor's cache, used again and again, its memory fixed: the rows
// that are ready may be read while the next one is written. The writer sets a row's values column
// by column (none may be left out) and ends it with endRow(); where a set…() says that the row no
// longer fits, the writer ends the batch there and offers the row again to the next one.
class Batch {
  public:
    explicit Batch(int columns);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    // --- the writer ---
    void setNull(int column) { kinds_[index(column)] = RawKind::Null; }
    void setInteger(int column, std::int64_t value) {
        const std::size_t i = index(column);
        kinds_[i] = RawKind::Integer;
        values_[i].integer = value;
    }
    void setReal(int column, double value) { setDouble(column, value, RawKind::Real); }
    void setDate(int column, double days) { setDouble(column, days, RawKind::Date); }
    // False where the row no longer fits.
    bool setText(int column, const char* text, std::size_t length) {
        return setRun(column, text, length, RawKind::Text, RawKind::LongText);
    }
    bool setBytes(int column, const void* bytes, std::size_t length) {
        return setRun(column, static_cast<const char*>(bytes), length, RawKind::Bytes,
                      RawKind::LongBytes);
    }
    // Makes the row readable. False where the batch is to be handed over now: full, asked for, or
    // late.
    bool endRow() {
        ready_.store(++written_, std::memory_order_release);
        return written_ < capacity_ && longBytes_ < longLimit &&
               !wanted_.load(std::memory_order_relaxed) && !late();
    }

    // --- any thread ---
    // Asks the writer to hand the batch over after the next row.
    void want() { wanted_.store(true, std::memory_order_relaxed); }
    // Rows that may be read.
    std::uint32_t ready() const { return ready_.load(std::memory_order_acquire); }

    // --- the reader ---
    std::uint32_t taken = 0; // rows that the reader is done with
    const RawKind* kinds(int column) const { return kinds_.get() + start(column); }
    const RawValue* values(int column) const { return values_.get() + start(column); }
    const char* arena() const { return arena_.get(); }
    std::string_view text(RawValue value) const {
        return {arena_.get() + value.place.offset, value.place.length};
    }
    int columns() const { return columns_; }

    // Empties it for the next turn. rowLimit: at most that many rows (the capacity if larger);
    // until: handed over once that time has passed and it holds a row.
    void reset(std::uint32_t rowLimit, std::chrono::steady_clock::time_point until = {});
    std::uint32_t capacityLimit() const { return fullCapacity_; }

  private:
    static constexpr std::size_t inlineLimit = std::size_t{16} * 1024; // longer: out of line
    static constexpr std::size_t arenaSize = std::size_t{256} * 1024;
    static constexpr std::size_t longLimit = std::size_t{4} * 1024 * 1024;

    std::size_t start(int column) const { return static_cast<std::size_t>(column) * fullCapacity_; }
    std::size_t index(int column) const { return start(column) + written_; }
    void setDouble(int column, double value, RawKind kind) {
        const std::size_t i = index(column);
        kinds_[i] = kind;
        values_[i].real = value;
    }
    bool setRun(int column, const char* data, std::size_t length, RawKind kind, RawKind longKind) {
        const std::size_t i = index(column);
        if (length > inlineLimit) return setLong(i, data, length, longKind);
        if (length > arenaSize - arenaUsed_) return rowTooWide(i, data, length, longKind);
        if (length != 0) std::memcpy(arena_.get() + arenaUsed_, data, length);
        kinds_[i] = kind;
        values_[i].place = {static_cast<std::uint32_t>(arenaUsed_),
                            static_cast<std::uint32_t>(length)};
        arenaUsed_ += length;
        return true;
    }
    bool setLong(std::size_t i, const char* data, std::size_t length, RawKind kind);
    bool rowTooWide(std::size_t i, const char* data, std::size_t length, RawKind kind);
    bool late() const {
        return until_ != std::chrono::steady_clock::time_point{} &&
               std::chrono::steady_clock::now() >= until_;
    }

    int columns_;
    std::uint32_t fullCapacity_;
    std::uint32_t capacity_;
    std::uint32_t written_ = 0;
    std::size_t arenaUsed_ = 0;
    std::size_t longBytes_ = 0;
    std::chrono::steady_clock::time_point until_;
    std::atomic<std::uint32_t> ready_{0};
    std::atomic<bool> wanted_{false};
    std::unique_ptr<RawKind[]> kinds_;
    std::unique_ptr<RawValue[]> values_;
    std::unique_ptr<char[]> arena_;
    std::vector<std::unique_ptr<std::string>> longs_; // the writer's; the values point into it
};

} // namespace norvel::adodb
