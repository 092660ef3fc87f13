// Little-endian bytes, one behind the other.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <vector>

namespace norvel::spreadsheet {

static_assert(std::endian::native == std::endian::little, "values are written as they lie");

class Bytes {
  public:
    template <class T>
    void put(T value) {
        static_assert(std::is_arithmetic_v<T>);
        std::memcpy(extend(sizeof value), &value, sizeof value);
    }
    void put8(unsigned value) { put(static_cast<std::uint8_t>(value)); }
    void put16(unsigned value) { put(static_cast<std::uint16_t>(value)); }
    void put32(std::uint32_t value) { put(value); }
    void zeros(std::size_t count) { std::memset(extend(count), 0, count); }

    // count uninitialised bytes at the end.
    std::byte* extend(std::size_t count) {
        if (size_ + count > bytes_.size()) grow(count);
        std::byte* at = bytes_.data() + size_;
        size_ += count;
        return at;
    }
    template <class T>
    void set(std::size_t offset, T value) {
        std::memcpy(bytes_.data() + offset, &value, sizeof value);
    }
    std::size_t size() const { return size_; }
    std::span<const std::byte> all() const { return {bytes_.data(), size_}; }
    void clear() { size_ = 0; }

  private:
    void grow(std::size_t count) { bytes_.resize((size_ + count) * 2); }

    std::vector<std::byte> bytes_;
    std::size_t size_ = 0;
};

} // namespace norvel::spreadsheet
