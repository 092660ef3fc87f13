#include "platform/runtime/WideText.h"

#include <windows.h>

namespace norvel {

std::wstring wideText(std::string_view text) {
    std::wstring result(text.size(), L'\0'); // never longer than the bytes
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           result.data(), static_cast<int>(result.size()));
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::string narrowText(std::wstring_view text) {
    std::string result(text.size() * 3, '\0'); // a surrogate pair is four bytes of two
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(),
                            static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

} // namespace norvel
