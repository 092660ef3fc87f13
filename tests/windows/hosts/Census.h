// What a process holds of the system, to compare before and after.
#pragma once

#include <iosfwd>
#include <windows.h>

namespace norvel::tests {

struct Census {
    long windows = 0; // of the calling thread, shown or hidden, with all their parts
    long messageOnly = 0;
    long disabled = 0; // of those windows
    long graphics = 0; // pens, fonts, bitmaps, device contexts
    long user = 0;     // windows, menus, icons, hooks: how many, or the highest place in use
    long threads = 0;

    static Census taken();
};
std::ostream& operator<<(std::ostream& out, const Census& census);

} // namespace norvel::tests
