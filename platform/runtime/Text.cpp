#include "platform/runtime/Text.h"

#include "platform/runtime/TextSystem.h"
#include "platform/runtime/Utf8.h"

#include <algorithm>
#include <memory>

namespace norvel {
namespace {

constexpr char32_t firstCombining = 0x300; // nothing below joins its neighbours
constexpr unsigned char leadOfFirstCombining = 0xCC;

bool mayCombine(char byte) {
    return static_cast<unsigned char>(byte) >= leadOfFirstCombining;
}

void appendLowerAscii(std::string& out, std::string_view ascii) {
    const std::size_t from = out.size();
    out.append(ascii);
    char* data = out.data() + from;
    char* const end = out.data() + out.size();
    constexpr std::uint64_t ones = 0x0101010101010101U;
    for (; end - data >= 8; data += 8) {
        std::uint64_t word = eightBytes(data);
        // The high bit of each byte: set by the first sum from 'A' up, by the second past 'Z'.
        const std::uint64_t capitals =
            (word + ones * (0x80U - 'A')) & ~(word + ones * (0x7FU - 'Z')) & highBits;
        word |= capitals >> 2U;
        std::memcpy(data, &word, sizeof word);
    }
    std::transform(data, end, data, lowerAscii);
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

// Looks through the ASCII at the start of text; found tells the match. Returns the position from
// which the rest has to be folded, npos when the answer is known.
std::size_t findInAscii(std::string_view text, std::string_view lowNeedle, std::size_t start,
                        TextMatch& found) {
    const std::size_t length = lowNeedle.size();
    const auto equalAt = [&](std::size_t at, std::size_t offset) {
        return lowerAscii(text[at + offset]) == lowNeedle[offset];
    };
    for (std::size_t at = start; at < text.size(); ++at) {
        if (!isAscii(text[at])) return at;
        if (!equalAt(at, 0)) continue;
        std::size_t offset = 1;
        while (offset < length && at + offset < text.size() && equalAt(at, offset))
            ++offset;
        if (at + offset < text.size() && !isAscii(text[at + offset])) return at;
        if (offset == length) {
            found = {at, length};
            return std::string::npos;
        }
    }
    return std::string::npos;
}

// Walks the matches of a needle in a text, folding the text at most once.
class Matches {
  public:
    Matches(std::string_view text, std::string_view needle)
        : text_(text), needle_(foldText(needle)),
          asciiNeedle_(asciiPrefix(needle_) == needle_.size()) {}

    TextMatch next(std::size_t start) {
        if (needle_.empty() || start > text_.size()) return {};
        if (!map_ && asciiNeedle_) {
            TextMatch found;
            start = findInAscii(text_, needle_, start, found);
            if (start == std::string::npos) return found;
        }
        if (!map_) {
            base_ = start;
            map_ = std::make_unique<FoldedMap>(text_.substr(start));
        }
        const auto& origin = map_->origin;
        // origin holds rising positions with holes; folded and original offsets differ, so the
        // position is looked up from where the last search ended.
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
    bool asciiNeedle_;
    std::unique_ptr<FoldedMap> map_;
    std::size_t base_ = 0;
    std::size_t cursor_ = 0;
};

int sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

// First position where the two differ in more than ASCII case, or where either stops being ASCII.
std::size_t commonAscii(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t at = 0;
    for (; at + 8 <= shorter; at += 8) { // equal byte for byte, as most of equal texts is
        const std::uint64_t word = eightBytes(a.data() + at);
        if (word != eightBytes(b.data() + at) || (word & highBits) != 0) break;
    }
    while (at < shorter && isAscii(a[at]) && isAscii(b[at]) &&
           lowerAscii(a[at]) == lowerAscii(b[at]))
        ++at;
    return at;
}

bool plainAt(std::string_view text, std::size_t at) {
    return at >= text.size() || isAscii(text[at]);
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

int compareText(std::string_view a, std::string_view b) {
    const std::size_t at = commonAscii(a, b);
    if (plainAt(a, at) && plainAt(b, at) && plainAt(a, at + 1) && plainAt(b, at + 1)) {
        if (at >= a.size() || at >= b.size()) return at < b.size() ? -1 : at < a.size() ? 1 : 0;
        return lowerAscii(a[at]) < lowerAscii(b[at]) ? -1 : 1;
    }
    // What stands before may be the base of a combining mark.
    const std::size_t from = at > 0 ? at - 1 : 0;
    return sign(foldText(a.substr(from)).compare(foldText(b.substr(from))));
}

bool equalsText(std::string_view a, std::string_view b) {
    return a == b || compareText(a, b) == 0;
}

int collateText(std::string_view a, std::string_view b) {
    return sign(system_text::collate(a, b));
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
