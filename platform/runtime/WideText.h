// Texts as Windows takes them: UTF-16. For Windows only.
#pragma once

#include <string>
#include <string_view>

namespace norvel {

// UTF-8 to UTF-16; what is not UTF-8 becomes U+FFFD.
std::wstring wideText(std::string_view text);
// UTF-16 to UTF-8; half a surrogate pair becomes U+FFFD.
std::string narrowText(std::wstring_view text);

} // namespace norvel
