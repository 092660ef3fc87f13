// Reads the rows of a host's recordset through a clone of its own: the host's current record never
// moves because something is painted.
#pragma once

#include "platform/grid/model/RowCache.h"
#include "platform/grid/model/SelBookmarks.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace norvel::grid {

// A clone of the recordset with the recordset's own filter, and its order or another: "" for none.
// Raises what the recordset raises when it is closed, busy or cannot be cloned.
NR_API adodb::RecordsetRef cloneOfView(adodb::Recordset& host, const std::string& sort);

// The view of a recordset as it stood when the reader was made: its filter and its order. A new
// filter or order needs a new reader; rows that arrive later show up by themselves.
class NR_API RowReader : public RowIds {
  public:
    // Errore: what the recordset raises when it is closed, busy or cannot be cloned.
    explicit RowReader(adodb::Recordset& host);

    adodb::RowCount Rows() const override;
    Variant BookmarkAt(adodb::RowCount row) override;
    std::optional<adodb::RowCount> RowOf(const Variant& bookmark) override;
    std::shared_ptr<RowIds> StableView() override;

    // The number of a field by its name (case-blind); -1 on a miss.
    int FieldIndex(std::string_view name) const;
    int FieldCount() const { return static_cast<int>(fieldTypes_.size()); }
    adodb::DataTypeEnum FieldType(int index) const {
        return fieldTypes_[static_cast<std::size_t>(index)];
    }

    // Whether rows that arrive later go between those that are there, as in an order: what is
    // drawn of rows then holds until more have come.
    bool Shifts() const { return !sort_.empty(); }

    // Brings the cells of the rows [first, first + count) and of the fields into the cache, as far
    // as they are not there and the rows exist. What the cache held of rows that have shifted since
    // is dropped.
    void Fill(RowCache& cache, adodb::RowCount first, adodb::RowCount count,
              const std::vector<int>& fields);

    // The values of up to count rows from the row first on and of the fields (numbers, in any
    // order); at least one row where first is one.
    adodb::RowBlock Values(adodb::RowCount first, adodb::RowCount count,
                           const std::vector<int>& fields);

    // Puts equal values of these fields together (Recordset::GroupBy): rows count in that order
    // from then on, and those that arrive later do not show. Only right after it was made.
    adodb::Grouping GroupBy(const std::vector<std::string>& fields) {
        return clone_->GroupBy(fields);
    }

    // Whether the host still shows the same rows as this reader, in the same or another order.
    bool SameFilter(const adodb::Recordset& host) const { return filter_ == host.Filter(); }
    bool SameSort(const adodb::Recordset& host) const { return sort_ == host.Sort(); }

  private:
    RowReader() = default;
    void read(RowCache& cache, const RowCache::Gap& gap);
    adodb::RowBlock readBlock(adodb::RowCount first, adodb::RowCount count,
                              const std::vector<Variant>& fields);
    adodb::RecordsetRef clone_;
    Variant filter_;
    std::string sort_;
    adodb::RowCount filledFrom_ = 0; // of how many rows, while they shift, the cache holds some
    std::vector<adodb::DataTypeEnum> fieldTypes_;
    std::unordered_map<std::string, int> fieldNumbers_; // by folded name
    std::shared_ptr<RowIds> stable_;
};

} // namespace norvel::grid
