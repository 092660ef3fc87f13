#include "platform/grid/export/Markup.h"

#include "platform/grid/export/TextEscape.h"
#include "platform/grid/model/CellText.h"

namespace norvel::grid {

namespace {

constexpr const char* byteOrderMark = "\xEF\xBB\xBF";
constexpr const char* lineEnd = "\r\n";

std::string shown(const std::string& text, bool html) {
    adodb::GrowingBytes bytes;
    appendText(bytes, wholeCellText(text), html);
    return {bytes.data(), bytes.size()};
}

Markup delimited(const ExportTable& table, const ExportSpec& spec) {
    Markup markup;
    std::string headings;
    for (const ExportColumn& column : table.columns) {
        const std::string before =
            (markup.before.empty() ? "" : spec.suffix + spec.delimiter) + spec.prefix;
        headings += before + shown(column.caption, false);
        markup.before.push_back(before);
    }
    markup.rowEnd = (table.columns.empty() ? "" : spec.suffix) + lineEnd;
    markup.head = byteOrderMark;
    if (spec.headings) markup.head += headings + markup.rowEnd;
    return markup;
}

// Sizes in points are read on the screen and on paper alike.
constexpr const char* style =
    R"(body { font: 10pt system-ui, sans-serif; margin: 1.5em; color: #1a1a1a; }
h1 { font-size: 14pt; font-weight: 600; margin: 0 0 0.8em; }
table { border-collapse: collapse; }
th, td { border: 1px solid #c8ccd0; padding: 0.2em 0.6em; text-align: left; vertical-align: top; white-space: pre-wrap; }
th { background: #e8ecf0; font-weight: 600; position: sticky; top: 0; }
tbody tr:nth-child(even) { background: #f6f8fa; }
@media print {
  body { margin: 0; font-size: 8pt; }
  thead { display: table-header-group; }
  th { position: static; }
  tr { break-inside: avoid; }
}
)";

// Alignment is said once a column, not in every cell.
std::string alignments(const ExportTable& table) {
    std::string rules;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const Alignment align = table.columns[i].align;
        if (align == Alignment::Left) continue;
        const std::string child = ":nth-child(" + std::to_string(i + 1) + ")";
        rules.append("th").append(child).append(", td").append(child);
        rules.append(" { text-align: ");
        rules.append(align == Alignment::Right ? "right" : "center").append("; }\n");
    }
    return rules;
}

std::string headingRow(const ExportTable& table) {
    std::string row = "<tr>";
    for (const ExportColumn& column : table.columns)
        row += "<th scope=\"col\">" + shown(column.caption, true) + "</th>";
    return row + "</tr>\n";
}

Markup html(const ExportTable& table, const ExportSpec& spec) {
    Markup markup;
    markup.html = true;
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        markup.before.emplace_back(i == 0 ? "<tr><td>" : "</td><td>");
    markup.rowEnd = table.columns.empty() ? "<tr></tr>\n" : "</td></tr>\n";
    const std::string title = shown(spec.title, true);
    markup.head = "<!DOCTYPE html>\n<html lang=\"it\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
                  title + "</title>\n<style>\n" + style + alignments(table) +
                  "</style>\n</head>\n<body>\n";
    if (!title.empty()) markup.head += "<h1>" + title + "</h1>\n";
    markup.head += "<table>\n<thead>\n" + headingRow(table) + "</thead>\n<tbody>\n";
    markup.tail = "</tbody>\n</table>\n</body>\n</html>\n";
    return markup;
}

} // namespace

Markup markupOf(const ExportTable& table, const ExportSpec& spec) {
    return spec.format == ExportFormat::Html ? html(table, spec) : delimited(table, spec);
}

} // namespace norvel::grid
