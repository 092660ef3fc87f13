// One print: a table, its rows, and the pages as they are asked for.
#pragma once

#include "platform/grid/print/PageContents.h"

#include <functional>
#include <optional>

namespace norvel::grid {

// The rows [first, first + count) as values[column of the table][row]; raises what the recordset
// raises.
using ReadPrintRows = std::function<adodb::RowBlock(adodb::RowCount first, adodb::RowCount count)>;

class NR_API PrintJob {
  public:
    PrintJob(PrintTable table, adodb::RowCount rows, ReadPrintRows read, PageTextSizes sizes);

    const PrintSettings& Settings() const { return table_.settings; }
    const PageLayout& Layout() const { return layout_; }
    adodb::RowCount PageCount() const { return layout_.PageCount(); }
    // Lays all pages out anew, which reads nothing.
    void SetPaper(const PaperSize& upright, PageOrientation orientation);
    // The page's contents, from 1; reads the rows of this page alone, and keeps the last page.
    const PageContents& Page(adodb::RowCount page);

  private:
    PrintTable table_;
    adodb::RowCount rows_;
    ReadPrintRows read_;
    PageTextSizes sizes_;
    PageLayout layout_;
    PageContents last_;
    adodb::RowCount lastPage_ = 0; // 0: none
};

} // namespace norvel::grid
