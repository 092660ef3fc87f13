// The memory of one row group: exact in size, given back to the system when the group goes.
#pragma once

#include <cstddef>
#include <utility>

namespace norvel::adodb {

// Uninitialised bytes, aligned to 64. Raises std::bad_alloc.
class Slab {
  public:
    Slab() = default;
    explicit Slab(std::size_t bytes);
    ~Slab();
    Slab(Slab&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    Slab& operator=(Slab&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        return *this;
    }
    Slab(const Slab&) = delete;
    Slab& operator=(const Slab&) = delete;

    std::byte* data() const { return data_; }
    std::size_t size() const { return size_; }

  private:
    std::byte* data_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace norvel::adodb
