// The selected rows, in the order in which they were selected.
#pragma once

#include "platform/adodb/Recordset.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

namespace norvel::grid {

// The rows of one view (one filter, one order) by place, from 0, and by bookmark.
class NR_API RowIds {
  public:
    virtual ~RowIds();
    virtual adodb::RowCount Rows() const = 0;
    virtual Variant BookmarkAt(adodb::RowCount row) = 0;
    virtual std::optional<adodb::RowCount> RowOf(const Variant& bookmark) = 0;
    // The same recordset in a view whose rows keep their places whatever else arrives; null when
    // this one is such a view.
    virtual std::shared_ptr<RowIds> StableView() { return nullptr; }
};

// Selected rows are kept as spans of places and become bookmarks only when one is read, so that
// selecting ten million rows is one step. A row is in the set once; selecting it again leaves its
// place in the order. Indexes start at 0.
class NR_API SelBookmarks {
  public:
    adodb::RowCount Count() const { return count_; }
    // Errore 9 on a bad index; what the recordset raises when the row is gone.
    Variant Item(adodb::RowCount index);
    void Remove(adodb::RowCount index); // Errore 9 on a bad index
    // A bookmark that is not of the rows on show is refused with Errore 3021.
    void Add(const Variant& bookmark);
    void Clear();

    // --- by row of the view on show ---
    bool Contains(adodb::RowCount row) const;
    // All of them, both ends included. After a new order each row would have to be looked for: more
    // than a screen of them count as selected only where all rows are.
    bool ContainsAll(adodb::RowCount first, adodb::RowCount last) const;
    // The selected rows as ranges [first, second], from the top.
    std::vector<std::pair<adodb::RowCount, adodb::RowCount>> Ranges() const;
    // Both ends included, in the direction from first to last.
    void AddRows(adodb::RowCount first, adodb::RowCount last);
    void RemoveRow(adodb::RowCount row);
    void ToggleRow(adodb::RowCount row);

    // The view on show became another. keep: it holds the same rows in another order, and they stay
    // selected; otherwise the set is emptied. A null view: no rows.
    void SetView(std::shared_ptr<RowIds> view, bool keep);

    std::function<void()> OnChange; // after the set changed

  private:
    struct Span { // of places in source_; first > last: selected upwards
        adodb::RowCount first, last;
        adodb::RowCount Count() const { return (first < last ? last - first : first - last) + 1; }
        adodb::RowCount At(adodb::RowCount i) const { return first < last ? first + i : first - i; }
    };
    struct Found {
        std::size_t span = 0;
        adodb::RowCount start = 0; // index of the span's first row
    };
    void changed();
    void startSource();
    std::optional<adodb::RowCount> toSource(adodb::RowCount row) const;
    bool holds(adodb::RowCount place) const;
    std::vector<adodb::RowCount> rowsOnShow() const;
    std::optional<std::unordered_set<double>> numericBookmarks() const;
    void addPlaces(adodb::RowCount first, adodb::RowCount last);
    void append(Span span);
    void removePlace(adodb::RowCount place);
    void insertInterval(adodb::RowCount low, adodb::RowCount high);
    void eraseFromInterval(adodb::RowCount place);
    Found find(adodb::RowCount index);
    void cut(std::size_t span, adodb::RowCount offset);

    std::shared_ptr<RowIds> view_;
    std::shared_ptr<RowIds> source_; // the view whose places the spans mean
    std::deque<Span> order_;
    std::map<adodb::RowCount, adodb::RowCount> intervals_; // the same places: low to high
    adodb::RowCount count_ = 0;
    Found last_; // where the last index was found, so that reading in order is quick
};

} // namespace norvel::grid
