// Which rows of a row set show, and in which order.
#pragma once

#include "platform/adodb/client/RowSet.h"
#include "platform/adodb/filter/FilterProgram.h"
#include "platform/adodb/sort/SortOrder.h"
#include "platform/adodb/store/RowList.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace norvel::adodb {

// Shared by the recordsets that show the same rows in the same way (a grid's clone beside its
// host's), so that a filter runs once. Rows that a fetch brings later are filtered, and put into
// the order, when somebody asks. Deleted rows do not show. The owner thread alone uses it.
class View {
  public:
    // What makes a view: a filter, or a list of rows, or neither; and an order, or none.
    struct Rules {
        std::shared_ptr<const FilterProgram> filter;
        std::optional<RowList> only; // ascending
        std::shared_ptr<const SortOrder> order;
        bool plain() const { return !filter && !only && !order; }
    };

    // previous: the view that this one takes the place of (may be null); what it knows spares work:
    // where the filter only narrows that one's, its rows alone are looked at; where the order is
    // that one's turned round, its list serves.
    View(std::shared_ptr<RowSet> rows, Rules rules, View* previous);
    // Just these rows, in any order, put into that order: what comes later does not show.
    View(std::shared_ptr<RowSet> rows, RowList list, std::shared_ptr<const SortOrder> order);
    // The one view of these rows under this key, which tells rules apart; made where there is none.
    static std::shared_ptr<View> shared(const std::shared_ptr<RowSet>& rows, const std::string& key,
                                        Rules rules, View* previous);

    // Those known so far.
    RowCount rows();
    // As RowSet::reach, of the rows that show.
    RowCount reach(RowCount wanted);
    RowCount rowAt(RowCount position) const;
    // nullopt where the row does not show.
    std::optional<RowCount> positionOf(RowCount row);
    // Where a row that does not show, or no longer, would stand by its values: what shows there
    // follows it.
    RowCount placeOf(RowNumber row);
    // The rows that show by now, in any order.
    RowList list();
    // Those of a view of just some rows, in its order.
    const RowList& ordered() const { return *list_; }
    // Changes when rows that were known have moved.
    std::uint32_t version() const { return version_; }
    const Rules& rules() const { return rules_; }

    // Around a change of one row's values, or its deletion: before it the row is taken out (the
    // answer: whether it showed), after it it is put where it belongs by now.
    bool take(RowNumber row);
    void put(RowNumber row, bool showed);

  private:
    using Run = std::pair<std::size_t, std::size_t>;

    bool takeOverFilter(const View& previous);
    bool takeOverOrder(View& previous);
    void update();
    void add(RowList hits);
    RowList& changeable();
    void straighten();
    Run equalsAround(std::size_t index) const;
    std::size_t indexFor(RowNumber row) const;
    std::optional<std::size_t> indexOf(RowNumber row);
    void listChanged();
    bool before(RowNumber a, RowNumber b) const;

    std::shared_ptr<RowSet> rows_;
    Rules rules_;
    std::shared_ptr<RowList> list_; // never null; nothing of a plain view; may be another view's
    // The list is in the opposite order: it is read backwards, runs of equal rows forwards.
    bool turned_ = false;
    mutable Run run_; // the one that was read last, while the list stays; empty: none
    // Where each row stands in the list; made once so many rows of an order were looked for that it
    // costs less, kept while the list stays.
    RowList indexes_;
    std::size_t lookedFor_ = 0; // while the list stays
    RowNumber examined_ = 0;
    std::uint32_t version_ = 0;
};

} // namespace norvel::adodb
