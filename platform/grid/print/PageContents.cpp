#include "platform/grid/print/PageContents.h"

#include "platform/grid/model/CellText.h"
#include "platform/grid/model/CheckBox.h"
#include "platform/grid/print/PageCodes.h"

#include <algorithm>
#include <cmath>

namespace norvel::grid {

using adodb::RowCount;

namespace {

constexpr double margin = 60;      // twips between a text and its cell's edges
constexpr double rowAir = 75;      // above and below a row's text together
constexpr double headingAir = 105; // a heading's
constexpr double headerGap = 140;  // between page header and rows, rows and page footer
constexpr double sectionGap = 200; // between two sections of a header
constexpr std::uint32_t headingColour = 0x00E6E6E6;
constexpr std::uint32_t white = 0x00FFFFFF;

double lineHeight(const PageTextSizes& sizes, PageFont font) {
    return sizes.lineHeight[static_cast<std::size_t>(font)];
}

// The ends of the text's characters that a cut may leave, without blanks before the cut.
std::vector<std::size_t> cuts(std::string_view text) {
    std::vector<std::size_t> ends{0};
    for (std::size_t i = 1; i < text.size(); ++i) {
        const bool inside = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
        if (!inside && text[i - 1] != ' ') ends.push_back(i);
    }
    return ends;
}

std::string withEllipsis(std::string_view text, PageFont font, double room,
                         const PageTextSizes& sizes) {
    constexpr std::string_view ellipsis = "\xE2\x80\xA6";
    if (sizes.width(font, ellipsis) > room) return {};
    const auto cut = [&](std::size_t end) {
        return std::string(text.substr(0, end)) + std::string(ellipsis);
    };
    const std::vector<std::size_t> ends = cuts(text);
    const auto tooLong = std::ranges::partition_point(
        ends, [&](std::size_t end) { return sizes.width(font, cut(end)) <= room; });
    return cut(tooLong == ends.begin() ? 0 : *(tooLong - 1));
}

// What of a text is shown in so much room.
std::string fitted(const std::string& text, PageFont font, bool value, double room,
                   const PageTextSizes& sizes) {
    if (text.empty() || sizes.width(font, text) <= room) return text;
    if (!value) return withEllipsis(text, font, room, sizes);
    const double hash = std::max(1.0, sizes.width(font, "#"));
    return std::string(static_cast<std::size_t>(std::max(0.0, room / hash)), '#');
}

// Composes one page.
class Page {
  public:
    Page(const PrintTable& table, const PageLayout& layout, RowCount page,
         const adodb::RowBlock& rows, const PageTextSizes& sizes)
        : table_(table), layout_(layout), place_(layout.PageAt(page)), rows_(rows), sizes_(sizes),
          page_(page) {
        place_.rows = std::min(place_.rows, rows.rows);
        top_ = layout.Body().y + (place_.headings ? layout.HeadingHeight() : 0);
        right_ = layout.Body().x;
        for (int i = 0; i < place_.columns; ++i)
            right_ += layout.ColumnWidth(place_.firstColumn + i);
    }

    PageContents compose() {
        const double gap = headerGap;
        Box header = layout_.Header();
        header.height -= gap;
        sections(table_.settings.PageHeader, header, PageFont::Header);
        Box footer = layout_.Footer();
        footer.y += gap;
        footer.height -= gap;
        sections(table_.settings.PageFooter, footer, PageFont::Footer);
        if (place_.columns == 0) return std::move(made_);
        backgrounds();
        lines();
        double x = layout_.Body().x;
        for (int i = 0; i < place_.columns; ++i) {
            const int column = place_.firstColumn + i;
            cells(column, x);
            x += layout_.ColumnWidth(column);
        }
        return std::move(made_);
    }

  private:
    double rowTop(RowCount row) const {
        return top_ + layout_.RowHeight() * static_cast<double>(row);
    }
    const PageColumn& column(int index) const {
        return table_.columns[static_cast<std::size_t>(index)];
    }

    // The centre takes what it needs; left and right share the rest where all three stand.
    void sections(const std::string& text, const Box& box, PageFont font) {
        if (box.height <= 0) return;
        const PageSections parts = pageSections(text, page_, layout_.PageCount());
        const double centre = put(parts.centre, box, Alignment::Center, font);
        Box side = box;
        if (centre > 0) side.width = std::max(0.0, (box.width - centre) / 2 - sectionGap);
        const double right = put(parts.right, sideAtRight(side, box), Alignment::Right, font);
        if (centre == 0 && right > 0) side.width = std::max(0.0, box.width - right - sectionGap);
        put(parts.left, side, Alignment::Left, font);
    }
    static Box sideAtRight(Box side, const Box& whole) {
        side.x = whole.Right() - side.width;
        return side;
    }
    // How wide the text became.
    double put(const std::string& text, const Box& box, Alignment align, PageFont font) {
        std::string shown = fitted(text, font, false, box.width, sizes_);
        if (shown.empty()) return 0;
        const double width = sizes_.width(font, shown);
        made_.texts.push_back({std::move(shown), box, align, font});
        return width;
    }

    void backgrounds() {
        const Box& body = layout_.Body();
        if (place_.headings)
            made_.fills.push_back(
                {{body.x, body.y, right_ - body.x, layout_.HeadingHeight()}, headingColour});
        if (!table_.stripes) return;
        for (RowCount row = 0; row < place_.rows; ++row) {
            const bool even = (place_.firstRow + row) % 2 == 1;
            const std::uint32_t colour = printedColour(even ? table_.evenRow : table_.oddRow);
            if (colour == white) continue;
            made_.fills.push_back(
                {{body.x, rowTop(row), right_ - body.x, layout_.RowHeight()}, colour});
        }
    }

    void lines() {
        const Box& body = layout_.Body();
        const double bottom = rowTop(place_.rows);
        const double first = place_.headings ? body.y : top_;
        if (place_.headings) across(body.y);
        for (RowCount row = 0; row <= place_.rows; ++row)
            across(rowTop(row));
        double x = body.x;
        made_.lines.push_back({x, first, bottom - first, false});
        for (int i = 0; i < place_.columns; ++i) {
            const double width = layout_.ColumnWidth(place_.firstColumn + i);
            if (width <= 0) continue;
            x += width;
            made_.lines.push_back({x, first, bottom - first, false});
        }
    }
    void across(double y) {
        made_.lines.push_back({layout_.Body().x, y, right_ - layout_.Body().x, true});
    }

    void cells(int index, double x) {
        const PageColumn& shown = column(index);
        const double width = layout_.ColumnWidth(index);
        const double room = width - 2 * margin;
        if (room <= 0) return;
        if (place_.headings)
            cell(shown.caption, {x + margin, layout_.Body().y, room, layout_.HeadingHeight()},
                 shown.align, false);
        const auto& values = rows_.values[static_cast<std::size_t>(index)];
        const bool value = isNumberType(shown.type) || isDateType(shown.type);
        for (RowCount row = 0; row < place_.rows; ++row) {
            const Variant& read = values[static_cast<std::size_t>(row)];
            const Box box{x + margin, rowTop(row), room, layout_.RowHeight()};
            const std::string text = cellText(read);
            const auto state = shown.checkBox ? checkOf(text) : std::nullopt;
            if (state)
                check(*state, box);
            else
                cell(text, box, shown.align, value);
        }
    }
    void cell(const std::string& text, const Box& box, Alignment align, bool value) {
        std::string shown =
            fitted(cellText(Variant(text)), PageFont::Cell, value, box.width, sizes_);
        if (!shown.empty()) made_.texts.push_back({std::move(shown), box, align, PageFont::Cell});
    }
    void check(Check state, const Box& box) {
        if (state == Check::Blank) return;
        const double side =
            std::min({lineHeight(sizes_, PageFont::Cell) * 0.72, box.width, box.height});
        made_.checks.push_back(
            {{box.x + (box.width - side) / 2, box.y + (box.height - side) / 2, side, side},
             state == Check::Checked});
    }

    const PrintTable& table_;
    const PageLayout& layout_;
    PageLayout::Place place_;
    const adodb::RowBlock& rows_;
    const PageTextSizes& sizes_;
    RowCount page_;
    double top_ = 0;   // of the first row
    double right_ = 0; // of the last column
    PageContents made_;
};

} // namespace

PrintTable printTable(const ExportTable& table, const Split& split, const GridStyle& style,
                      const PrintSettings& settings) {
    PrintTable made;
    made.settings = settings;
    for (const ExportColumn& column : table.columns)
        made.columns.push_back(
            {column.caption, column.align, column.type, column.width, column.checkBox});
    made.stripes = split.AlternatingRowStyle;
    made.evenRow = split.EvenRowStyle.BackColor;
    made.oddRow = split.OddRowStyle.BackColor;
    made.rowHeight = style.RowHeight;
    return made;
}

PageHeights pageHeights(const PrintTable& table, const PageTextSizes& sizes) {
    const auto section = [&](const std::string& text, PageFont font) {
        return text.empty() ? 0 : lineHeight(sizes, font) + headerGap;
    };
    const double line = lineHeight(sizes, PageFont::Cell);
    return {section(table.settings.PageHeader, PageFont::Header),
            section(table.settings.PageFooter, PageFont::Footer), line + headingAir,
            table.rowHeight > 0 ? table.rowHeight : line + rowAir};
}

PageLayout pageLayout(const PrintTable& table, const PageTextSizes& sizes, RowCount rows) {
    std::vector<double> widths;
    for (const PageColumn& column : table.columns)
        widths.push_back(column.width);
    return {table.settings, pageHeights(table, sizes), widths, rows};
}

PageContents pageContents(const PrintTable& table, const PageLayout& layout, RowCount page,
                          const adodb::RowBlock& rows, const PageTextSizes& sizes) {
    return Page(table, layout, page, rows, sizes).compose();
}

std::uint32_t printedColour(std::uint32_t colour) {
    constexpr double leastLight = 0.78; // of black on it, a contrast of 16
    std::array<double, 3> channels{};
    for (std::size_t i = 0; i < channels.size(); ++i)
        channels[i] = static_cast<double>(colour >> (8 * i) & 0xFF) / 255;
    const double light = 0.2126 * channels[0] + 0.7152 * channels[1] + 0.0722 * channels[2];
    const double towardsWhite = light >= leastLight ? 0 : (leastLight - light) / (1 - light);
    std::uint32_t printed = 0;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const double channel = channels[i] + (1 - channels[i]) * towardsWhite;
        printed |= static_cast<std::uint32_t>(std::lround(channel * 255)) << (8 * i);
    }
    return printed;
}

} // namespace norvel::grid
