#include "platform/runtime/Text.h"

#include "platform/runtime/TextSystem.h"
#include "platform/runtime/Utf8.h"

#include <algorithm>
#include <array>
#include <memory>

namespace norvel {
namespace {

constexpr char32_t firstCombining = 0x300; // nothing below joins its neighbours
constexpr unsigned char leadOfFirstCombining = 0xCC;

bool mayCombine(char byte) {
    return static_cast<unsigned char>(byte) >= leadOfFirstCombining;
}

// The folded forms of the code points below firstCombining, of which most texts are made.
const std::array<char32_t, firstCombining>& simpleFolds() {
    static const std::array<char32_t, firstCombining> folds = [] {
        std::array<char32_t, firstCombining> all{};
        for (char32_t c = 0; c < firstCombining; ++c)
            all[c] = system_text::foldCodePoint(c);
        return all;
    }();
    return folds;
}

void appendLowerAscii(std::string& out, std::string_view ascii) {
    const std::size_t from = out.size();
    out.append(ascii);
    char* data = out.data() + from;
    char* const end = out.data() + out.size();
    for (; end - data >= 8; data += 8) {
        const std::uint64_t low = lowerAscii(eightBytes(data));
        std::memcpy(data, &low, sizeof low);
    }
    std::transform(data, end, data, [](char c) { return lowerAscii(c); });
}

// The end of the segment that begins at start: a code point and all that join it.
std::size_t segmentEnd(std::string_view text, std::size_t start) {
    std::size_t at = start + decodeUtf8(text, start).length;
    while (at < text.size() && mayCombine(text[at])) {
        const CodePoint next = decodeUtf8(text, at);
        if (!next.valid || system_text::startsSegment(next.value)) break;
        at += next.length;
    }
    return at;
}

void appendFoldedSegment(std::string& out, std::string_view segment) {
    const CodePoint first = decodeUtf8(segment, 0);
    if (segment.size() == 1 && first.valid) {
        out.push_back(lowerAscii(segment.front()));
    } else if (!first.valid) {
        out.append(segment.substr(0, 1)); // what is not text stays itself
        if (segment.size() > 1) out += system_text::foldSegment(segment.substr(1));
    } else if (first.length < segment.size() ||
               (first.value >= firstCombining && !system_text::isComposed(first.value))) {
        out += system_text::foldSegment(segment);
    } else if (first.value < firstCombining) {
        appendUtf8(out, simpleFolds()[first.value]);
    } else {
        appendUtf8(out, system_text::foldCodePoint(first.value));
    }
}

// A text folded, and where each segment of the folded form comes from.
struct FoldedMap {
    std::string folded;
    std::vector<std::size_t> origin; // of folded byte i, npos inside a segment; one entry more

    explicit FoldedMap(std::string_view text) {
        folded.reserve(text.size());
        origin.reserve(text.size() + 1);
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = segmentEnd(text, at);
            origin.push_back(at);
            appendFoldedSegment(folded, text.substr(at, end - at));
            origin.resize(folded.size(), std::string::npos);
            at = end;
        }
        origin.push_back(text.size());
    }

    TextMatch find(std::string_view foldedNeedle, std::size_t from) const {
        for (std::size_t at = folded.find(foldedNeedle, from); at != std::string::npos;
             at = folded.find(foldedNeedle, at + 1)) {
            const std::size_t start = origin[at];
            const std::size_t end = origin[at + foldedNeedle.size()];
            if (start != std::string::npos && end != std::string::npos) return {start, end - start};
        }
        return {};
    }
};

// A character that is folded by itself: below firstCombining, with nothing behind it that might
// join it. Length 0 for any other.
struct SimpleCharacter {
    char32_t folded = 0;
    unsigned length = 0;
};

SimpleCharacter simpleAt(std::string_view text, std::size_t at,
                         const std::array<char32_t, firstCombining>& folds) {
    const CodePoint point = decodeUtf8(text, at);
    const std::size_t behind = at + point.length;
    if (!point.valid || point.value >= firstCombining) return {};
    if (behind < text.size() && mayCombine(text[behind])) return {};
    return {folds[point.value], point.length};
}

// Searches the simple characters at the start of text; found tells the match. Returns the position
// from which the rest has to be folded, npos when the answer is known.
std::size_t findAmongSimple(std::string_view text, std::u32string_view needle, std::size_t start,
                            TextMatch& found) {
    const auto& folds = simpleFolds();
    for (std::size_t at = start; at < text.size();) {
        const bool amidAscii = at + 1 < text.size() && isAscii(text[at]) && isAscii(text[at + 1]);
        if (amidAscii && static_cast<char32_t>(lowerAscii(text[at])) != needle[0]) {
            ++at;
            continue;
        }
        const SimpleCharacter first = simpleAt(text, at, folds);
        if (first.length == 0) return at;
        std::size_t end = at;
        std::size_t matched = 0;
        while (matched < needle.size() && end < text.size()) {
            const SimpleCharacter next = simpleAt(text, end, folds);
            if (next.length == 0) return at;
            if (next.folded != needle[matched]) break;
            ++matched;
            end += next.length;
        }
        if (matched == needle.size()) {
            found = {at, end - at};
            return std::string::npos;
        }
        at += first.length;
    }
    return std::string::npos;
}

// The code points of a text; none if it is not UTF-8.
std::u32string codePoints(std::string_view text) {
    std::u32string result;
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint point = decodeUtf8(text, at);
        if (!point.valid) return {};
        result.push_back(point.value);
        at += point.length;
    }
    return result;
}

// Walks the matches of a needle in a text, folding the text at most once.
class Matches {
  public:
    Matches(std::string_view text, std::string_view needle)
        : text_(text), needle_(foldText(needle)), points_(codePoints(needle_)) {}

    // The first match at or after start, which may not lie before the last one's.
    TextMatch next(std::size_t start) {
        if (needle_.empty() || start > text_.size()) return {};
        if (!map_) {
            TextMatch found;
            if (!points_.empty()) start = findAmongSimple(text_, points_, start, found);
            if (start == std::string::npos) return found;
            base_ = start;
            map_ = std::make_unique<FoldedMap>(text_.substr(start));
        }
        const std::vector<std::size_t>& origin = map_->origin;
        while (cursor_ < origin.size() &&
               (origin[cursor_] == std::string::npos || base_ + origin[cursor_] < start))
            ++cursor_;
        TextMatch found = map_->find(needle_, cursor_);
        if (found.position != std::string::npos) found.position += base_;
        return found;
    }

  private:
    std::string_view text_;
    std::string needle_;
    std::u32string points_;
    std::unique_ptr<FoldedMap> map_; // of the text from base_ on
    std::size_t base_ = 0;
    std::size_t cursor_ = 0; // in the folded text, where the next match may begin
};

// Length of a beginning that both have but for case, in whole steps of eight bytes of ASCII.
std::size_t commonAscii(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t at = 0;
    for (; at + 8 <= shorter; at += 8) {
        const std::uint64_t left = eightBytes(a.data() + at);
        const std::uint64_t right = eightBytes(b.data() + at);
        if (((left | right) & highBits) != 0 || lowerAscii(left) != lowerAscii(right)) break;
    }
    return at;
}

template <typename T>
int order(T a, T b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

} // namespace

std::string foldText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (isAscii(text[at])) {
            std::size_t run = asciiPrefix(text.substr(at));
            // The last ASCII character may be the base of a combining mark.
            if (at + run < text.size() && mayCombine(text[at + run])) --run;
            appendLowerAscii(result, text.substr(at, run));
            at += run;
            if (at >= text.size()) break;
        }
        const std::size_t end = segmentEnd(text, at);
        appendFoldedSegment(result, text.substr(at, end - at));
        at = end;
    }
    return result;
}

// The order of the folded bytes, which is that of the folded code points.
int compareText(std::string_view a, std::string_view b) {
    const auto& folds = simpleFolds();
    const std::size_t common = commonAscii(a, b);
    // The last of the common characters may be the base of a combining mark.
    a.remove_prefix(common > 0 ? common - 1 : 0);
    b.remove_prefix(common > 0 ? common - 1 : 0);
    while (!a.empty() && !b.empty()) {
        const SimpleCharacter left = simpleAt(a, 0, folds);
        const SimpleCharacter right = simpleAt(b, 0, folds);
        if (left.length == 0 || right.length == 0)
            return order(foldText(a).compare(foldText(b)), 0);
        if (left.folded != right.folded) return order(left.folded, right.folded);
        a.remove_prefix(left.length);
        b.remove_prefix(right.length);
    }
    return order(a.size(), b.size()); // one of them is at its end
}

bool equalsText(std::string_view a, std::string_view b) {
    return a == b || compareText(a, b) == 0;
}

int collateText(std::string_view a, std::string_view b) {
    return order(system_text::collate(a, b), 0);
}

std::string collationKey(std::string_view text) {
    std::string key;
    system_text::appendCollationKey(key, text);
    return key;
}

void appendCollationKey(std::string& key, std::string_view text) {
    system_text::appendCollationKey(key, text);
}

TextMatch matchText(std::string_view text, std::string_view needle, std::size_t start) {
    if (needle.empty()) return start <= text.size() ? TextMatch{start, 0} : TextMatch{};
    return Matches(text, needle).next(start);
}

std::size_t findText(std::string_view text, std::string_view needle, std::size_t start) {
    return matchText(text, needle, start).position;
}

std::string replaceText(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    Matches matches(text, from);
    std::size_t done = 0;
    for (TextMatch match = matches.next(0); match.position != std::string::npos;
         match = matches.next(done)) {
        result.append(text.substr(done, match.position - done)).append(to);
        done = match.position + match.length;
    }
    return result.append(text.substr(done));
}

std::vector<std::string> splitText(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    if (text.empty()) return parts;
    Matches matches(text, separator);
    std::size_t done = 0;
    for (TextMatch match = matches.next(0); match.position != std::string::npos;
         match = matches.next(done)) {
        parts.emplace_back(text.substr(done, match.position - done));
        done = match.position + match.length;
    }
    parts.emplace_back(text.substr(done));
    return parts;
}

std::string trimText(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

} // namespace norvel
