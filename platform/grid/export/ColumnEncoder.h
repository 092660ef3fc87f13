// Rows of columns as the bytes of an exported file.
#pragma once

#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"
#include "platform/grid/export/Markup.h"
#include "platform/grid/export/TextEscape.h"

#include <span>
#include <vector>

namespace norvel::grid {

// Values become the bytes that wholeCellText and appendText make of them, without a Variant and a
// text in between wherever a value is stored as its column's type. Any number of threads may use
// it. The markup and the store must outlive it.
class ColumnEncoder {
  public:
    // fields: the store's column for each column of the table, -1: none.
    ColumnEncoder(const adodb::ColumnStore& store, const std::vector<int>& fields,
                  const Markup& markup);

    // Appends rows until all are there or out holds more than limit bytes; how many they were: at
    // least one.
    std::size_t encode(std::span<const adodb::RowNumber> rows, std::size_t limit,
                       GrowingBytes& out) const;

  private:
    void encodeValue(const adodb::Segment& segment, std::uint32_t row, adodb::DataTypeEnum type,
                     GrowingBytes& out) const;

    struct Column {
        int field = -1;
        adodb::DataTypeEnum type = adodb::adEmpty;
    };
    const adodb::ColumnStore& store_;
    std::vector<Column> columns_;
    const Markup& markup_;
};

// A row's values in order, each behind what the markup has before it.
void appendBytes(GrowingBytes& out, std::string_view bytes);

} // namespace norvel::grid
