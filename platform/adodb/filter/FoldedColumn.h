// The texts of a column as a case-blind comparison sees them, made once and kept with the store.
#pragma once

#include "platform/adodb/filter/WideScan.h"
#include "platform/adodb/store/Segment.h"

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>

namespace norvel::adodb {

// One row group's texts folded: a run for each row, or for each entry of a dictionary. A column
// that is not text has the folded form of what the grid shows. It tells nothing of rows that are
// NULL or exceptional: their values are looked at one by one.
struct FoldedSegment {
    Runs runs;
    // Some text holds a byte from which characters may combine: that a folded text is found inside
    // a folded text then does not mean yet that whole characters are.
    bool combining = false;
    std::size_t memory = 0; // bytes beyond the segment's own

    std::unique_ptr<char[]> ownBytes;         // none where the texts are folded as they are
    std::unique_ptr<std::uint32_t[]> ownEnds; // none where folding kept every length
};

// True where characters of the text may combine.
bool mayCombine(std::string_view text);

// Any thread may ask; whoever needs a group first folds it, others wait for that group alone.
class FoldedColumn {
  public:
    std::shared_ptr<const FoldedSegment> segment(std::size_t group, const Segment& segment,
                                                 DataTypeEnum type);
    // Null where it was not made yet.
    std::shared_ptr<const FoldedSegment> made(std::size_t group);
    std::size_t memory();

  private:
    struct Slot {
        std::mutex mutex;
        std::shared_ptr<const FoldedSegment> made;
    };
    Slot& slot(std::size_t group);

    std::mutex mutex_;
    std::map<std::size_t, Slot> slots_;
};

} // namespace norvel::adodb
