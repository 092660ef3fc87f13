// Which fields of the grid the host lets operators edit.
#pragma once

#include "platform/runtime/Api.h"

#include <string>
#include <string_view>
#include <vector>

namespace norvel::search_window {

// True where the list names the field: blind to case, blanks around a name in the list apart. Empty
// names, as «a;;b» has one, name nothing.
NR_API bool campoModificabile(const std::vector<std::string>& campi, std::string_view campo);

} // namespace norvel::search_window
