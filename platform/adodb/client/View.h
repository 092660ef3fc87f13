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

namespace norvel::adodb {

// Shared by the recordsets that show the same rows in the same way (a grid's clone beside its
// host's), so that a filter runs once. Rows that a fetch brings later are filtered, and put into
// the order, when somebody asks. The owner thread alone uses it.
class View {
  public:
    // What makes a view: a filter, or a list of rows, or neither; and an order, or none.
    struct Rules {
        std::shared_ptr<const FilterProgram> filter;
        std::optional<RowList> only; // ascending
        std::shared_ptr<const SortOrder> order;
        bool plain() const { return !filter && !only && !order; }
    };

    // previous: the view that this one takes the place of (may be null); where the filter only
    // narrows that one's and the order is the same, its rows alone are looked at.
    View(std::shared_ptr<RowSet> rows, Rules rules, const View* previous);
    // The one view of these rows under this key, which tells rules apart; made where there is none.
    static std::shared_ptr<View> shared(const std::shared_ptr<RowSet>& rows, const std::string& key,
                                        Rules rules, const View* previous);

    // Those known so far.
    RowCount rows();
    // As RowSet::reach, of the rows that show.
    RowCount reach(RowCount wanted);
    RowCount rowAt(RowCount position) const;
    // nullopt where the row does not show.
    std::optional<RowCount> positionOf(RowCount row);
    // Changes when rows that were known have moved.
    std::uint32_t version() const { return version_; }
    const Rules& rules() const { return rules_; }

  private:
    void takeOver(const View& previous);
    void update();
    void add(RowList hits);

    std::shared_ptr<RowSet> rows_;
    Rules rules_;
    RowList list_; // nothing of a plain view
    RowNumber examined_ = 0;
    std::uint32_t version_ = 0;
    RowList positions_;             // of every row, where there is an order; made when asked for
    std::uint32_t positionsOf_ = 0; // the version and the count that they are of
    std::size_t positionsCount_ = 0;
};

} // namespace norvel::adodb
