#include "platform/adodb/store/TextDictionary.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr std::size_t firstSlots = 128;

// Multiplies and folds eight bytes at a time: the texts come from one column, so that spreading
// matters and an adversary does not.
std::uint32_t hashOf(std::string_view text) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = text.size() * factor;
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left >= 8; at += 8, left -= 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, 8);
        hash = (hash ^ word) * factor;
        hash ^= hash >> 29U;
    }
    if (left != 0) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, left);
        hash = (hash ^ word) * factor;
    }
    return static_cast<std::uint32_t>(hash >> 32U);
}

} // namespace

void GrowingBytes::grow(std::size_t bytes) {
    const std::size_t wanted = std::max(size_ + bytes, capacity_ * 2);
    auto larger = std::make_unique_for_overwrite<char[]>(wanted);
    if (size_ != 0) std::memcpy(larger.get(), data_.get(), size_);
    data_ = std::move(larger);
    capacity_ = wanted;
}

TextDictionary::TextDictionary() {
    clear();
}

void TextDictionary::clear() {
    slots_.assign(firstSlots, Slot{});
    ends_.assign(1, 0);
    bytes_.shrink(0);
}

std::uint32_t TextDictionary::add(std::string_view text) {
    if (text.empty()) return 0;
    const std::uint32_t hash = hashOf(text);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        Slot& slot = slots_[at];
        if (slot.number == 0) return insert(slot, hash, text);
        if (slot.hash == hash && this->text(slot.number) == text) return slot.number;
    }
}

std::uint32_t TextDictionary::insert(Slot& slot, std::uint32_t hash, std::string_view text) {
    const auto number = static_cast<std::uint32_t>(ends_.size());
    slot = {hash, number};
    std::memcpy(bytes_.extend(text.size()), text.data(), text.size());
    ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    if (ends_.size() * 2 > slots_.size()) grow();
    return number;
}

void TextDictionary::replace(const std::vector<std::string>& texts) {
    clear();
    for (std::size_t i = 1; i < texts.size(); ++i) {
        std::memcpy(bytes_.extend(texts[i].size()), texts[i].data(), texts[i].size());
        ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    }
}

void TextDictionary::grow() {
    std::vector<Slot> larger(slots_.size() * 4);
    const std::size_t mask = larger.size() - 1;
    for (const Slot& slot : slots_) {
        if (slot.number == 0) continue;
        std::size_t at = slot.hash & mask;
        while (larger[at].number != 0)
            at = (at + 1) & mask;
        larger[at] = slot;
    }
    slots_ = std::move(larger);
}

} // namespace norvel::adodb
