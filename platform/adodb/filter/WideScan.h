// A needle in many texts that lie one behind the other, many bytes at a time.
#pragma once

#include "platform/adodb/store/RowList.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// Texts in one piece of memory: run i lies from ends[i] to ends[i + 1].
struct Runs {
    const char* bytes = nullptr;
    const std::uint32_t* ends = nullptr; // count + 1
    std::uint32_t count = 0;

    std::string_view operator[](std::uint32_t run) const {
        return {bytes + ends[run], ends[run + 1] - ends[run]};
    }
};

// How many bytes are compared at once. Each finds the same.
enum class ScanWidth { One, Sixteen, ThirtyTwo };

// Those that this processor and this build have, the widest last.
std::vector<ScanWidth> scanWidths();
ScanWidth widestScan();

// Writes the numbers of the runs from begin up to, not including, end that contain the needle, byte
// for byte, ascending; found has room for end - begin. Returns how many. The needle is not empty.
// No byte outside the runs is read.
std::size_t scanRuns(const Runs& runs, std::uint32_t begin, std::uint32_t end,
                     std::string_view needle, RowNumber* found, ScanWidth width = widestScan());

// Keeps those of the given runs (in any order, which is kept) that contain the needle; returns how
// many.
std::size_t scanThese(const Runs& runs, RowNumber* these, std::size_t count,
                      std::string_view needle, ScanWidth width = widestScan());

} // namespace norvel::adodb
