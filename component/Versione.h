// The component's version, from the one place that knows it: the build's project version.
#pragma once

#include "platform/runtime/Api.h"

#include <string>

namespace norvel {

struct NumeriVersione {
    int principale = 0;
    int secondario = 0;
    int revisione = 0;
};

NR_API NumeriVersione versioneComponente();

// "1.0.94": the numbers as they are, for people and packages. Lives as long as the process.
NR_API const char* versioneBreve();

// "1.000.094": minor and revision are the last three characters of "000" and the number, so a
// number of more than three digits keeps its last three.
NR_API std::string testoVersione(NumeriVersione numeri);

} // namespace norvel
