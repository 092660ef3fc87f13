// Which rows and which columns stand on which page: arithmetic, without a window and without
// reading a row.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/grid/print/PrintInfo.h"

#include <vector>

namespace norvel::grid {

struct Box { // twips, from the top left of the paper
    double x = 0, y = 0, width = 0, height = 0;
    double Right() const { return x + width; }
    double Bottom() const { return y + height; }
    bool operator==(const Box&) const = default;
};

// Heights of the parts of a page, twips; 0 for a header or footer that takes no room.
struct PageHeights {
    double header = 0, footer = 0, heading = 300, row = 270;
};

// A page is a band of columns and a run of rows. The pages go down first, then to the right, as
// those of spreadsheets do: all rows of the first columns, then all rows of the columns that did
// not fit beside them. Every page but the last of a band has the same number of rows, so that a
// million rows cost no more than one. A column wider than a page is cut to it; a row higher than a
// page, too. Without rows, or without columns, there is one page.
class NR_API PageLayout {
  public:
    PageLayout(const PrintSettings& settings, const PageHeights& heights,
               const std::vector<double>& columnWidths, adodb::RowCount rows);

    struct Place {
        adodb::RowCount firstRow = 0, rows = 0;
        int firstColumn = 0, columns = 0;
        bool headings = true;
        bool operator==(const Place&) const = default;
    };
    // Pages count from 1.
    adodb::RowCount PageCount() const { return down_ * static_cast<adodb::RowCount>(across()); }
    Place PageAt(adodb::RowCount page) const;
    // The page with the row, in the same band of columns as the page.
    adodb::RowCount PageOfRow(adodb::RowCount row, adodb::RowCount page) const;

    PaperSize Paper() const { return paper_; } // as it lies: Width is what goes across
    Box Header() const;
    Box Footer() const;
    // What is left between them.
    Box Body() const { return body_; }
    double RowHeight() const { return rowHeight_; }
    double HeadingHeight() const { return headingHeight_; }
    double ColumnWidth(int column) const { return widths_[static_cast<std::size_t>(column)]; }

  private:
    struct Band {
        int first = 0, count = 0;
    };
    std::size_t across() const { return bands_.size(); }
    void makeBands();

    PaperSize paper_;
    PageHeights heights_;
    bool repeat_;
    Box body_;
    double headingHeight_, rowHeight_;
    std::vector<double> widths_;
    std::vector<Band> bands_;
    adodb::RowCount rows_, rowsFirst_, rowsNext_, down_;
};

} // namespace norvel::grid
