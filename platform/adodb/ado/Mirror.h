// A second cursor over what a host's recordset shows.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/ado/Dispatch.h"

#include <optional>
#include <vector>

namespace norvel::adodb {

// A clone that takes over the filter and the order of its origin (clones inherit neither), so that
// rows can be looked at without moving the origin, and bookmarks found where the cursor knows no
// positions. It is made anew when the origin's filter or order is another, and after Renew().
class Mirror {
  public:
    explicit Mirror(const com::DispatchObject& origin) : origin_(origin) {}

    // The origin was requeried, or rows came or went.
    void Renew();
    // The bookmark of a row (1 is the first); nullopt beyond the last. Rows are walked once.
    std::optional<Variant> BookmarkAt(RowCount position);
    // Where the row of a bookmark stands; adPosUnknown where it is not on show.
    RowCount PositionOf(const Variant& bookmark);
    // All rows on show; walks to the last.
    RowCount Count();
    // The bookmarks of count rows from that of start on.
    std::vector<Variant> BookmarksFrom(const Variant& start, RowCount count);

  private:
    const com::DispatchObject& clone();
    void extend(RowCount rows);

    const com::DispatchObject& origin_;
    com::DispatchObject clone_;
    Variant filter_;
    std::string sort_;
    std::vector<Variant> rows_; // the bookmarks of the first rows
    bool complete_ = false;     // there are no more
};

// Whether a value of Filter hides rows.
bool hasFilter(const Variant& filter);

// A clone of a host's recordset; 3251, said for the host's developer, where it has no bookmarks.
com::DispatchObject cloneOf(const com::DispatchObject& recordset, LockTypeEnum lockType);

// Walks count rows from the current one, leaving the cursor behind the last: their bookmarks.
std::vector<Variant> walkBookmarks(const com::DispatchObject& recordset, RowCount count);

} // namespace norvel::adodb
