// The table of the side menu as the control takes it.
#pragma once

#include "platform/controls/ExplorerLayout.h"

#include <vector>

namespace norvel::views {

std::vector<controls::ExplorerGroup> gruppiExplorer();

} // namespace norvel::views
