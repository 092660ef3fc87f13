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

// The keys of texts of plain ASCII characters, put together from those of the characters. Such a
// key is each character's own bytes one after the other, and an end that depends on their number
// alone: what the collator makes of every pair of characters is looked at before that is relied on.
class PlainKeys {
  public:
    explicit PlainKeys(const UCollator* collator) : collator_(collator) {
        std::string letters;
        for (std::string& end : ends_) {
            end = keyOf(letters).substr(letters.size());
            letters += 'a';
        }
        for (char c = firstPlain; c <= lastPlain; ++c)
            learn(c);
        for (char a = firstPlain; a <= lastPlain; ++a)
            for (char b = firstPlain; b <= lastPlain; ++b)
                checkPair(a, b);
    }

    // False where the text is not of that kind; key is as it was then.
    bool append(std::string& key, std::string_view text) const {
        if (text.size() >= ends_.size()) return false;
        const std::size_t before = key.size();
        key.resize(before + text.size() * longest);
        char* out = key.data() + before;
        for (const char c : text) {
            const Own& own = owns_[static_cast<unsigned char>(c)];
            if (own.length == 0) {
                key.resize(before);
                return false;
            }
            std::memcpy(out, own.bytes, longest);
            out += own.length;
        }
        key.resize(static_cast<std::size_t>(out - key.data()));
        key += ends_[text.size()];
        return true;
    }

  private:
    static constexpr char firstPlain = ' ';
    static constexpr char lastPlain = '~';
    static constexpr std::size_t longest = 4;
    struct Own {
        char bytes[longest] = {};
        std::uint8_t length = 0; // 0: not plain
    };

    std::string keyOf(std::string_view text) const {
        std::string key;
        appendAnyKey(collator_, key, text);
        return key;
    }
    void learn(char c) {
        const std::string key = keyOf({&c, 1});
        const std::size_t length = key.size() - std::min(key.size(), ends_[1].size());
        if (length == 0 || length > longest || !key.ends_with(ends_[1])) return;
        Own& own = owns_[static_cast<unsigned char>(c)];
        std::memcpy(own.bytes, key.data(), length);
        own.length = static_cast<std::uint8_t>(length);
    }
    void checkPair(char a, char b) {
        const char pair[] = {a, b};
        std::string key;
        if (!append(key, {pair, 2}) || key == keyOf({pair, 2})) return;
        owns_[static_cast<unsigned char>(a)].length = 0;
        owns_[static_cast<unsigned char>(b)].length = 0;
    }

    const UCollator* collator_;
    std::array<std::string, 256> ends_; // by the number of characters
    std::array<Own, 256> owns_;
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
