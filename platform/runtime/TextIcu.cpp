// The system's Unicode tables by ICU. The only file that knows ICU.
#include "platform/runtime/Text.h"
#include "platform/runtime/TextSystem.h"
#include "platform/runtime/Utf8.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

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

// Bytes that are not UTF-8 count as U+FFFD, as ucol_strcollUTF8 counts them.
std::string collationKey(std::string_view text) {
    const UCollator* const collator = italianCollator();
    if (collator == nullptr) return foldText(text);
    std::u16string wide(text.size(), u'\0'); // never longer than the bytes
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8WithSub(wide.data(), static_cast<int32_t>(wide.size()), &length, text.data(),
                         static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &status);
    std::string key(text.size() * 3 + 16, '\0'); // a guess
    const auto fill = [&] {
        return ucol_getSortKey(collator, wide.data(), length,
                               reinterpret_cast<std::uint8_t*>(key.data()),
                               static_cast<int32_t>(key.size()));
    };
    int32_t needed = fill();
    if (needed > static_cast<int32_t>(key.size())) {
        key.resize(static_cast<std::size_t>(needed));
        needed = fill();
    }
    key.resize(needed > 0 ? static_cast<std::size_t>(needed) - 1 : 0); // without the 0 at its end
    return key;
}

} // namespace norvel::system_text
