#include "platform/grid/print/PageLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

namespace {

constexpr double leastRoom = 1440; // of the rows, whatever the margins are: an inch

PaperSize asItLies(const PrintSettings& settings) {
    PaperSize paper = settings.Paper;
    if (settings.Orientation == PageOrientation::Landscape) std::swap(paper.Width, paper.Height);
    return paper;
}

// What lies between the margins; where they leave too little, what lies at the first of the two.
Box between(const PaperSize& paper, const PageMargins& margins) {
    const auto side = [](double length, double before, double after) {
        before = std::clamp(before, 0.0, std::max(0.0, length - leastRoom));
        return std::pair{before, std::max(leastRoom, length - before - std::max(0.0, after))};
    };
    const auto [x, width] = side(paper.Width, margins.Left, margins.Right);
    const auto [y, height] = side(paper.Height, margins.Top, margins.Bottom);
    return {x, y, width, height};
}

// As many as fit whole, at least one. A thousandth of a twip is no reason to lose a row.
RowCount rowsIn(double height, double rowHeight) {
    return std::max<RowCount>(1, static_cast<RowCount>(std::floor(height / rowHeight + 1e-6)));
}

} // namespace

PageLayout::PageLayout(const PrintSettings& settings, const PageHeights& heights,
                       const std::vector<double>& columnWidths, RowCount rows)
    : paper_(asItLies(settings)), heights_(heights), repeat_(settings.RepeatHeadings),
      body_(between(paper_, settings.Margins)), widths_(columnWidths),
      rows_(columnWidths.empty() ? 0 : std::max<RowCount>(0, rows)) {
    const double room = body_.height - leastRoom / 2; // header and footer leave the rows some
    heights_.header = std::clamp(heights.header, 0.0, room / 2);
    heights_.footer = std::clamp(heights.footer, 0.0, room / 2);
    body_.y += heights_.header;
    body_.height -= heights_.header + heights_.footer;
    headingHeight_ = std::clamp(heights.heading, 0.0, body_.height / 2);
    rowHeight_ = std::clamp(heights.row, 1.0, body_.height - headingHeight_);
    rowsFirst_ = rowsIn(body_.height - headingHeight_, rowHeight_);
    rowsNext_ = repeat_ ? rowsFirst_ : rowsIn(body_.height, rowHeight_);
    const RowCount rest = std::max<RowCount>(0, rows_ - rowsFirst_);
    down_ = 1 + (rest + rowsNext_ - 1) / rowsNext_;
    makeBands();
}

// Columns that are no longer seen, of width 0, stay with their neighbour.
void PageLayout::makeBands() {
    Band band;
    double used = 0;
    for (double& width : widths_) {
        width = std::isfinite(width) ? std::clamp(width, 0.0, body_.width) : body_.width;
        if (band.count > 0 && used + width > body_.width + 1e-6) {
            bands_.push_back(band);
            band = {band.first + band.count, 0};
            used = 0;
        }
        ++band.count;
        used += width;
    }
    bands_.push_back(band);
}

PageLayout::Place PageLayout::PageAt(RowCount page) const {
    const RowCount place = std::clamp<RowCount>(page, 1, PageCount()) - 1;
    const Band& band = bands_[static_cast<std::size_t>(place / down_)];
    const RowCount downwards = place % down_;
    Place found;
    found.firstColumn = band.first;
    found.columns = band.count;
    found.headings = repeat_ || downwards == 0;
    found.firstRow = downwards == 0 ? 0 : rowsFirst_ + (downwards - 1) * rowsNext_;
    found.rows = std::min(downwards == 0 ? rowsFirst_ : rowsNext_, rows_ - found.firstRow);
    return found;
}

RowCount PageLayout::PageOfRow(RowCount row, RowCount page) const {
    const RowCount band = (std::clamp<RowCount>(page, 1, PageCount()) - 1) / down_;
    const RowCount last = std::max<RowCount>(0, rows_ - 1);
    const RowCount wanted = std::clamp<RowCount>(row, 0, last);
    const RowCount downwards = wanted < rowsFirst_ ? 0 : 1 + (wanted - rowsFirst_) / rowsNext_;
    return band * down_ + downwards + 1;
}

Box PageLayout::Header() const {
    return {body_.x, body_.y - heights_.header, body_.width, heights_.header};
}

Box PageLayout::Footer() const {
    return {body_.x, body_.Bottom(), body_.width, heights_.footer};
}

} // namespace norvel::grid
