#include "platform/grid/print/PrintJob.h"

#include <utility>

namespace norvel::grid {

using adodb::RowCount;

PrintJob::PrintJob(PrintTable table, RowCount rows, ReadPrintRows read, PageTextSizes sizes)
    : table_(std::move(table)), rows_(rows), read_(std::move(read)), sizes_(std::move(sizes)),
      layout_(pageLayout(table_, sizes_, rows_)) {}

void PrintJob::SetPaper(const PaperSize& upright, PageOrientation orientation) {
    table_.settings.Paper = upright;
    table_.settings.Orientation = orientation;
    layout_ = pageLayout(table_, sizes_, rows_);
    lastPage_ = 0;
}

const PageContents& PrintJob::Page(RowCount page) {
    if (page == lastPage_) return last_;
    lastPage_ = 0;
    const PageLayout::Place place = layout_.PageAt(page);
    adodb::RowBlock rows;
    if (place.rows > 0 && place.columns > 0) rows = read_(place.firstRow, place.rows);
    rows.values.resize(table_.columns.size());
    last_ = pageContents(table_, layout_, page, rows, sizes_);
    lastPage_ = page;
    return last_;
}

} // namespace norvel::grid
