// The distinct texts of a column, numbered in the order of their first appearance.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// A run of bytes that grows without being written twice.
class GrowingBytes {
  public:
    char* extend(std::size_t bytes) {
        if (bytes > capacity_ - size_) grow(bytes);
        char* at = data_.get() + size_;
        size_ += bytes;
        return at;
    }
    char* data() { return data_.get(); }
    const char* data() const { return data_.get(); }
    std::size_t size() const { return size_; }
    void shrink(std::size_t size) { size_ = size; }

  private:
    void grow(std::size_t bytes);
    std::unique_ptr<char[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// Number 0 is the empty text always. Texts are taken as the bytes they are.
class TextDictionary {
  public:
    TextDictionary();
    // The number of the text, a new one where it was not there.
    std::uint32_t add(std::string_view text);
    std::uint32_t size() const { return static_cast<std::uint32_t>(ends_.size()); }
    std::string_view text(std::uint32_t number) const {
        const std::uint32_t start = number == 0 ? 0 : ends_[number - 1];
        return {bytes_.data() + start, ends_[number] - start};
    }
    const std::vector<std::uint32_t>& ends() const { return ends_; }
    const GrowingBytes& bytes() const { return bytes_; }
    void clear();
    // Gives the texts these forms, number by number (0 stays empty). No text can be added after.
    void replace(const std::vector<std::string>& texts);

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; // 0: free
    };
    std::uint32_t insert(Slot& slot, std::uint32_t hash, std::string_view text);
    void grow();

    std::vector<Slot> slots_; // a power of two, at most half of them taken
    std::vector<std::uint32_t> ends_;
    GrowingBytes bytes_;
};

} // namespace norvel::adodb
