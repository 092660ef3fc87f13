// The system's Unicode tables by Windows' own routines.
#include "platform/runtime/Text.h"
#include "platform/runtime/TextSystem.h"
#include "platform/runtime/Utf8.h"
#include "platform/runtime/WideText.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <windows.h>

namespace norvel::system_text {
namespace {

struct Fold {
    char32_t from;
    char32_t to;
};

// Where simple case folding is not the small letter: final and symbol forms of letters, and the
// Turkish i's, which fold to nothing else. Windows' small letters leave out some of the signs that
// stand for letters, so these are here, too. Source: Unicode 15, CaseFolding.txt, statuses C and S.
constexpr std::array folds = {
    Fold{0x00B5, 0x03BC}, Fold{0x0130, 0x0130}, Fold{0x0131, 0x0131}, Fold{0x017F, 0x0073},
    Fold{0x0345, 0x03B9}, Fold{0x03C2, 0x03C3}, Fold{0x03D0, 0x03B2}, Fold{0x03D1, 0x03B8},
    Fold{0x03D5, 0x03C6}, Fold{0x03D6, 0x03C0}, Fold{0x03F0, 0x03BA}, Fold{0x03F1, 0x03C1},
    Fold{0x03F4, 0x03B8}, Fold{0x03F5, 0x03B5}, Fold{0x1C80, 0x0432}, Fold{0x1C81, 0x0434},
    Fold{0x1C82, 0x043E}, Fold{0x1C83, 0x0441}, Fold{0x1C84, 0x0442}, Fold{0x1C85, 0x0442},
    Fold{0x1C86, 0x044A}, Fold{0x1C87, 0x0463}, Fold{0x1C88, 0xA64B}, Fold{0x1E9B, 0x1E61},
    Fold{0x1E9E, 0x00DF}, Fold{0x1FBE, 0x03B9}, Fold{0x2126, 0x03C9}, Fold{0x212A, 0x006B},
    Fold{0x212B, 0x00E5}};

struct Range {
    char32_t first;
    char32_t last;
    char32_t distance = 0; // from capital to small letter
};

// Capitals beyond the first 65,536 characters, which Windows maps in its later releases only. Same
// source.
constexpr std::array farCapitals = {Range{0x10400, 0x10427, 40}, Range{0x104B0, 0x104D3, 40},
                                    Range{0x10570, 0x1057A, 39}, Range{0x1057C, 0x1058A, 39},
                                    Range{0x1058C, 0x10592, 39}, Range{0x10594, 0x10595, 39},
                                    Range{0x10C80, 0x10CB2, 64}, Range{0x118A0, 0x118BF, 32},
                                    Range{0x16E40, 0x16E5F, 32}, Range{0x1E900, 0x1E921, 34}};

// Characters that combine with what stands before them though they are no combining marks: vowel
// signs and the second and third letters of Korean syllables. Source: Unicode 15,
// DerivedNormalizationProps.txt, NFC_Quick_Check=Maybe, less those with a combining class.
constexpr std::array joiningLetters = {
    Range{0x09BE, 0x09BE},   Range{0x09D7, 0x09D7},   Range{0x0B3E, 0x0B3E},
    Range{0x0B56, 0x0B57},   Range{0x0BBE, 0x0BBE},   Range{0x0BD7, 0x0BD7},
    Range{0x0CC2, 0x0CC2},   Range{0x0CD5, 0x0CD6},   Range{0x0D3E, 0x0D3E},
    Range{0x0D57, 0x0D57},   Range{0x0DCF, 0x0DCF},   Range{0x0DDF, 0x0DDF},
    Range{0x102E, 0x102E},   Range{0x1161, 0x1175},   Range{0x11A8, 0x11C2},
    Range{0x1B35, 0x1B35},   Range{0x11127, 0x11127}, Range{0x1133E, 0x1133E},
    Range{0x11357, 0x11357}, Range{0x114B0, 0x114B0}, Range{0x114BA, 0x114BA},
    Range{0x114BD, 0x114BD}, Range{0x115AF, 0x115AF}, Range{0x11930, 0x11930}};

// The combining mark that, in canonical order, stands behind every other: Greek ypogegrammeni.
constexpr wchar_t lastInOrder = 0x0345;

const Range* rangeOf(const auto& ranges, char32_t c) {
    const auto found = std::find_if(ranges.begin(), ranges.end(),
                                    [c](const Range& r) { return c >= r.first && c <= r.last; });
    return found == ranges.end() ? nullptr : &*found;
}

std::wstring wideOf(char32_t c) {
    std::string text;
    appendUtf8(text, c);
    return wideText(text);
}

// The text itself where Windows cannot normalize it (characters of a later Unicode).
std::wstring normalized(NORM_FORM form, const std::wstring& text) {
    const auto size = static_cast<int>(text.size());
    int room = NormalizeString(form, text.data(), size, nullptr, 0); // an estimate
    while (room > 0) {
        std::wstring result(static_cast<std::size_t>(room), L'\0');
        const int length = NormalizeString(form, text.data(), size, result.data(), room);
        if (length > 0) {
            result.resize(static_cast<std::size_t>(length));
            return result;
        }
        if (GetLastError() != ERROR_INSUFFICIENT_BUFFER || -length <= room) break;
        room = -length; // a better one
    }
    return text;
}

// Small letters of the first 65,536 characters, by their number, made in one call.
std::wstring makeSmallLetters() {
    std::wstring all(0x10000, L'\0');
    for (std::size_t c = 0; c < all.size(); ++c)
        all[c] = static_cast<wchar_t>(c);
    std::wstring small = all; // should the call fail, every letter stays itself
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE | LCMAP_LINGUISTIC_CASING, all.data(),
                  static_cast<int>(all.size()), small.data(), static_cast<int>(small.size()),
                  nullptr, nullptr, 0);
    for (const Fold& fold : folds)
        small[fold.from] = static_cast<wchar_t>(fold.to);
    return small;
}

std::wstring folded(const std::wstring& text) {
    std::string result;
    const std::string narrow = narrowText(text);
    for (std::size_t at = 0; at < narrow.size();) {
        const CodePoint point = decodeUtf8(narrow, at);
        appendUtf8(result, foldCodePoint(point.value));
        at += point.length;
    }
    return wideText(result);
}

// A mark put behind the last in canonical order comes out before it.
bool findsSegmentStart(char32_t c) {
    if (c == lastInOrder) return false;
    const std::wstring ordered = normalized(NormalizationD, lastInOrder + wideOf(c));
    if (ordered.empty() || ordered.front() != lastInOrder) return false;
    const std::string behind = narrowText(std::wstring_view(ordered).substr(1));
    return behind.empty() || rangeOf(joiningLetters, decodeUtf8(behind, 0).value) == nullptr;
}

bool findsComposed(char32_t c) {
    const std::wstring text = wideOf(c);
    return normalized(NormalizationC, text) == text;
}

// Answers for the first 65,536 characters, asked of Windows once each.
class Answers {
  public:
    explicit Answers(bool (*find)(char32_t)) : find_(find) {}

    bool operator()(char32_t c) {
        if (c >= known_->size()) return find_(c);
        std::atomic<char>& answer = (*known_)[c];
        if (answer.load(std::memory_order_relaxed) == unknown)
            answer.store(find_(c) ? yes : no, std::memory_order_relaxed);
        return answer.load(std::memory_order_relaxed) == yes;
    }

  private:
    static constexpr char unknown = 0;
    static constexpr char no = 1;
    static constexpr char yes = 2;
    bool (*find_)(char32_t);
    std::unique_ptr<std::array<std::atomic<char>, 0x10000>> known_ =
        std::make_unique<std::array<std::atomic<char>, 0x10000>>();
};

// Punctuation counts, and stands before letters; case, width and the two Japanese alphabets do not
// count: what remains when tertiary differences are left out.
constexpr DWORD collation =
    NORM_IGNORECASE | NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE | SORT_STRINGSORT;

// A length for Windows, which takes no 0: an empty text is one that ends at once.
int lengthOf(const std::wstring& text) {
    return text.empty() ? -1 : static_cast<int>(text.size());
}

} // namespace

// As Unicode's simple case folding, but that Cherokee, which it folds to capitals, becomes small
// letters: what is equal stays equal.
char32_t foldCodePoint(char32_t c) {
    static const std::wstring& smallLetters = *new std::wstring(makeSmallLetters());
    if (c < smallLetters.size()) return smallLetters[c];
    const Range* const capitals = rangeOf(farCapitals, c);
    return capitals == nullptr ? c : c + capitals->distance;
}

bool startsSegment(char32_t c) {
    static Answers& answers = *new Answers(findsSegmentStart);
    return answers(c);
}

bool isComposed(char32_t c) {
    static Answers& answers = *new Answers(findsComposed);
    return answers(c);
}

// Composed twice: letters whose capital exists in pieces only (J with caron) meet their small form
// after folding.
std::string foldSegment(std::string_view segment) {
    return narrowText(
        normalized(NormalizationC, folded(normalized(NormalizationC, wideText(segment)))));
}

// Windows counts a sort key's room in bytes, though it takes it for wide characters.
void appendCollationKey(std::string& out, std::string_view text) {
    const std::wstring wide = normalized(NormalizationC, wideText(text));
    const auto fill = [&](void* room, int bytes) {
        return LCMapStringEx(L"it-IT", LCMAP_SORTKEY | collation, wide.data(), lengthOf(wide),
                             static_cast<wchar_t*>(room), bytes, nullptr, nullptr, 0);
    };
    const int needed = fill(nullptr, 0);
    std::string key(needed > 0 ? static_cast<std::size_t>(needed) : 0, '\0');
    const int length = needed > 0 ? fill(key.data(), needed) : 0;
    if (length > 0) {
        out.append(key, 0, static_cast<std::size_t>(length) - 1); // without the 0 at its end
    } else {
        std::string folded = foldText(text);
        std::ranges::replace(folded, '\0', '\1');
        out += folded;
    }
}

// By the keys, so that single comparisons and sorts by keys never differ: CompareStringEx and the
// keys disagree on some texts.
int collate(std::string_view a, std::string_view b) {
    std::string first;
    std::string second;
    appendCollationKey(first, a);
    appendCollationKey(second, b);
    return first.compare(second);
}

} // namespace norvel::system_text
