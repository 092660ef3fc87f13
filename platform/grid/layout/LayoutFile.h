// Layout files: several named layouts to a file.
#pragma once

#include "platform/grid/layout/Layout.h"

#include <string>

namespace norvel::grid {

// path: in the host's notation. name: case-blind. Raises 53 where there is no file, 5 where it
// holds no layout of that name, and what reading it and readLayoutText raise.
NR_API Layout loadLayout(const std::string& path, const std::string& name);

// Stores the layout under this name, in the place of one that the file has; the file's others stay.
// A file that is no layout file is written over. Written whole or not at all; raises what
// writeWholeFile raises and, of a file that cannot be read or that a later version wrote, what
// reading it raises.
NR_API void saveLayout(const std::string& path, const std::string& name, const Layout& layout);

} // namespace norvel::grid
