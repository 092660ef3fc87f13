// Texts as the driver manager takes them in wide calls: UTF-16 in the machine's byte order.
#pragma once

#include <cstdint>
#include <sql.h>
#include <sqlext.h>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// A number where the interface takes a pointer: the values of attributes.
inline SQLPOINTER odbcNumber(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}

// With a zero at its end; what is not UTF-8 becomes U+FFFD.
std::vector<SQLWCHAR> odbcWide(std::string_view text);
// Half a surrogate pair becomes U+FFFD.
std::string odbcNarrow(const SQLWCHAR* text, std::size_t length);

} // namespace norvel::adodb
