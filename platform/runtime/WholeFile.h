// Files written whole or not at all.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace norvel {

// Puts contents into the file, in the place of what it held. Whatever happens meanwhile, the
// process killed included, the file holds either what it held or the new contents; a failure leaves
// no other file behind, a kill may leave one whose name begins with the file's and ends in ".tmp".
// Raises Errore by the numbers that hosts know: 61 disk full, 70 permission denied, 76 no such
// folder, 75 anything else.
NR_API void writeWholeFile(const std::filesystem::path& path, std::string_view contents);

// The whole file; at most longest bytes. Raises 53 where there is none, 7 where it is longer, 70,
// 75.
NR_API std::string readWholeFile(const std::filesystem::path& path, std::size_t longest);

} // namespace norvel
