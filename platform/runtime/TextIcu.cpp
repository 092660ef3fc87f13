// The system's Unicode tables by ICU. The only file that knows ICU.
#include "platform/runtime/Text.h"
#include "platform/runtime/TextSystem.h"
#include "platform/runtime/Utf8.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

namespace norvel::system_text {
namespace {

struct CollatorCloser {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};

const UNormalizer2* composer() {
    static const UNormalizer2* const normalizer = [] {
        UErrorCode status = U_ZERO_ERROR;
        return unorm2_getNFCInstance(&status);
    }();
    return normalizer;
}

// Null only where ICU's data are missing.
const UCollator* italianCollator() {
    static const std::unique_ptr<UCollator, CollatorCloser> collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UCollator, CollatorCloser> opened(ucol_open("it", &status));
        if (U_FAILURE(status)) return std::unique_ptr<UCollator, CollatorCloser>();
        ucol_setStrength(opened.get(), UCOL_SECONDARY);
        return opened;
    }();
    return collator.get();
}

std::u16string toUtf16(std::string_view text) {
    std::u16string result(text.size(), u'\0'); // never longer than the bytes
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8(result.data(), static_cast<int32_t>(result.size()), &length, text.data(),
                  static_cast<int32_t>(text.size()), &status);
    result.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return result;
}

std::string toUtf8(const std::u16string& text) {
    std::string result(text.size() * 3, '\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF8(result.data(), static_cast<int32_t>(result.size()), &length, text.data(),
                static_cast<int32_t>(text.size()), &status);
    result.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return result;
}

std::u16string composed(const std::u16string& text) {
    std::u16string result(text.size() * 3 + 8, u'\0'); // composition never grows threefold
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        unorm2_normalize(composer(), text.data(), static_cast<int32_t>(text.size()), result.data(),
                         static_cast<int32_t>(result.size()), &status);
    if (U_FAILURE(status)) return text;
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::u16string folded(const std::u16string& text) {
    std::u16string result;
    result.reserve(text.size());
    const auto size = static_cast<int32_t>(text.size());
    for (int32_t at = 0; at < size;) {
        UChar32 c = 0;
        U16_NEXT(text.data(), at, size, c);
        const UChar32 lower = u_foldCase(c, U_FOLD_CASE_DEFAULT);
        if (lower <= 0xFFFF) {
            result.push_back(static_cast<char16_t>(lower));
        } else {
            result.push_back(U16_LEAD(lower));
            result.push_back(U16_TRAIL(lower));
        }
    }
    return result;
}

// Bytes that are not UTF-8 count as U+FFFD, as ucol_strcollUTF8 counts them.
void appendAnyKey(const UCollator* collator, std::string& key, std::string_view text) {
    std::u16string wide(text.size(), u'\0'); // never longer than the bytes
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8WithSub(wide.data(), static_cast<int32_t>(wide.size()), &length, text.data(),
                         static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &status);
    const std::size_t before = key.size();
    const auto fill = [&] {
        return ucol_getSortKey(collator, wide.data(), length,
                               reinterpret_cast<std::uint8_t*>(key.data() + before),
                               static_cast<int32_t>(key.size() - before));
    };
    key.resize(before + text.size() * 3 + 16); // a guess
    int32_t needed = fill();
    if (static_cast<std::size_t>(needed) > key.size() - before) {
        key.resize(before + static_cast<std::size_t>(needed));
        needed = fill();
    }
    // without the 0 at its end
    key.resize(before + (needed > 0 ? static_cast<std::size_t>(needed) - 1 : 0));
}

// The keys of texts of plain characters (of ASCII, and letters of Latin-1 with one accent), put
// together from those of the characters. A key is here each character's own bytes one after the
// other, a 1, and the accents, each behind bytes that depend only on how many characters lead up to
// it; at last bytes for those that follow. Of which characters that is true, the collator itself is
// asked, for each and for every pair.
class PlainKeys {
  public:
    explicit PlainKeys(const UCollator* collator) : collator_(collator) {
        std::string letters;
        for (std::size_t n = 0; n < longestText; ++n) {
            ends_[n] = keyOf(letters).substr(n);
            const std::string accented = keyOf(letters + "à").substr(n + 1 + ends_[0].size());
            if (!accented.empty()) leads_[n + 1] = accented.substr(0, accented.size() - 1);
            letters += 'a';
        }
        std::vector<std::string> plain;
        for (char c = ' '; c <= '~'; ++c)
            if (learn(own(c), {&c, 1})) plain.emplace_back(1, c);
        for (unsigned char c = 0x80; c < 0xC0; ++c) {
            const char letter[] = {latinLead, static_cast<char>(c)};
            if (learn(latin_[c - 0x80U], {letter, 2})) plain.emplace_back(letter, 2);
        }
        for (const std::string& first : plain)
            for (const std::string& second : plain)
                checkPair(first, second);
    }

    // False where the text is not of that kind; key is as it was then.
    bool append(std::string& key, std::string_view text) const {
        if (text.size() >= longestText) return false;
        char bytes[longestText * longest];
        char* out = bytes;
        std::size_t run = 0; // characters since the last accent
        std::string accents;
        for (std::size_t at = 0; at < text.size(); ++at) {
            const bool latin = text[at] == latinLead && at + 1 < text.size();
            const Own& one = latin ? latinLetter(text[++at]) : owns_[unsignedOf(text[at])];
            if (one.length == 0) return false;
            std::memcpy(out, one.bytes, longest);
            out += one.length;
            ++run;
            if (one.accent == 0) continue;
            accents += leads_[run];
            accents += one.accent;
            run = 0;
        }
        key.append(bytes, static_cast<std::size_t>(out - bytes));
        if (accents.empty()) {
            key += ends_[run];
        } else {
            key += ends_[0];
            key += accents;
            key.append(ends_[run], ends_[0].size());
        }
        return true;
    }

  private:
    static constexpr std::size_t longestText = 256;
    static constexpr std::size_t longest = 4;
    static constexpr char latinLead = '\xC3'; // of U+00C0 to U+00FF
    struct Own {
        char bytes[longest] = {};
        std::uint8_t length = 0; // 0: not plain
        char accent = 0;         // 0: none
    };

    static std::size_t unsignedOf(char c) { return static_cast<unsigned char>(c); }
    const Own& latinLetter(char second) const { return latin_[unsignedOf(second) & 0x3FU]; }
    Own& own(char c) { return owns_[unsignedOf(c)]; }
    Own& ownOf(std::string_view letter) {
        return letter.size() == 1 ? own(letter[0]) : latin_[unsignedOf(letter[1]) & 0x3FU];
    }

    std::string keyOf(std::string_view text) const {
        std::string key;
        appendAnyKey(collator_, key, text);
        return key;
    }
    // Whether the character's key is its own bytes and one end, or one accent.
    bool learn(Own& one, std::string_view letter) {
        const std::string key = keyOf(letter);
        const std::size_t length = key.find('\1');
        if (length == 0 || length > longest) return false;
        std::memcpy(one.bytes, key.data(), length);
        one.length = static_cast<std::uint8_t>(length);
        if (key.ends_with(leads_[1] + key.back())) one.accent = key.back();
        std::string own;
        if (append(own, letter) && own == key) return true;
        one.accent = 0;
        if (append(own = {}, letter) && own == key) return true;
        one.length = 0;
        return false;
    }
    void checkPair(const std::string& first, const std::string& second) {
        std::string key;
        if (!append(key, first + second) || key == keyOf(first + second)) return;
        ownOf(first).length = 0;
        ownOf(second).length = 0;
    }

    const UCollator* collator_;
    std::array<std::string, longestText> ends_;      // by the number of characters before
    std::array<std::string, longestText + 1> leads_; // by the number of characters up to an accent
    std::array<Own, 256> owns_;
    std::array<Own, 64> latin_;
};

// What stands for a key must not hold a zero.
void appendWithoutZeros(std::string& key, std::string text) {
    std::ranges::replace(text, '\0', '\1');
    key += text;
}

} // namespace

char32_t foldCodePoint(char32_t c) {
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
}

bool startsSegment(char32_t c) {
    return unorm2_hasBoundaryBefore(composer(), static_cast<UChar32>(c)) != 0;
}

bool isComposed(char32_t c) {
    if (unorm2_isInert(composer(), static_cast<UChar32>(c)) != 0) return true; // most, and cheap
    return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_NFC_QUICK_CHECK) == UNORM_YES;
}

// Composed twice: letters whose capital exists in pieces only (J with caron) meet their small form
// after folding.
std::string foldSegment(std::string_view segment) {
    return toUtf8(composed(folded(composed(toUtf16(segment)))));
}

int collate(std::string_view a, std::string_view b) {
    const UCollator* const collator = italianCollator();
    if (collator == nullptr) return compareText(a, b);
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(collator, a.data(), static_cast<int32_t>(a.size()), b.data(),
                            static_cast<int32_t>(b.size()), &status);
}

void appendCollationKey(std::string& key, std::string_view text) {
    const UCollator* const collator = italianCollator();
    if (collator == nullptr) {
        appendWithoutZeros(key, foldText(text));
        return;
    }
    static const PlainKeys& plain = *new PlainKeys(collator);
    if (!plain.append(key, text)) appendAnyKey(collator, key, text);
}

} // namespace norvel::system_text
