// The programs of mdbtools, which read files of Access. They run apart: a damaged file may bring
// one down, and must not take the host with it.
#pragma once

#include "platform/adodb/sqlite/SqliteHandle.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

struct MdbToolEnd {
    bool well = false;     // it ended by itself and with success
    std::string complaint; // what it wrote to its error output
};

// Runs a program with its arguments and hands on its output, piece by piece; texts are UTF-8. The
// program is ended when take raises or stop is due. Raises Errore where it is not installed, where
// it was stopped, and what take raises.
MdbToolEnd runMdbTool(const std::vector<std::string>& command, const Stop& stop,
                      const std::function<void(std::string_view)>& take);

} // namespace norvel::adodb
