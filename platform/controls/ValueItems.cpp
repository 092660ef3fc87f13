#include "platform/controls/ValueItems.h"

#include "platform/runtime/Text.h"

namespace norvel::controls {

namespace {

bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Most entries are told apart by their first ASCII characters; only where another character stands
// at or behind the place that decides are the texts folded.
bool begins(std::string_view text, std::string_view prefix, const std::string& folded) {
    std::size_t i = 0;
    while (i < prefix.size() && i < text.size() && isAscii(text[i]) && isAscii(prefix[i])) {
        const bool lastOfText = i + 1 == text.size() || isAscii(text[i + 1]);
        if (lower(text[i]) != lower(prefix[i])) {
            const bool lastOfPrefix = i + 1 == prefix.size() || isAscii(prefix[i + 1]);
            if (lastOfText && lastOfPrefix) return false;
            break;
        }
        ++i;
    }
    if (i == prefix.size() && (i == text.size() || isAscii(text[i]))) return true;
    if (i == text.size() && i < prefix.size() && isAscii(prefix[i])) return false;
    return foldText(text).starts_with(folded);
}

} // namespace

void ValueItems::Clear() {
    texts_ = {};
    ends_ = {};
}

void ValueItems::Add(std::string_view text) {
    texts_ += text;
    ends_.push_back(texts_.size());
}

std::string_view ValueItems::At(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(texts_).substr(begin, ends_[index] - begin);
}

std::optional<std::size_t> ValueItems::FindPrefix(std::string_view prefix, std::size_t from) const {
    if (prefix.empty()) return std::nullopt;
    const std::string folded = foldText(prefix);
    for (std::size_t step = 0; step < Count(); ++step) {
        const std::size_t index = (from + step) % Count();
        if (begins(At(index), prefix, folded)) return index;
    }
    return std::nullopt;
}

} // namespace norvel::controls
