// What a database may hold and a file must survive: each cell as columns and as values alike.
#include "platform/grid/export/ExportFile.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/WholeFile.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"
#include "tests/platform/grid/export/Articles.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace norvel::grid {
namespace {

namespace fs = std::filesystem;
using std::string_literals::operator""s;

class HostileCellsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::random_device random;
        do
            folder = fs::temp_directory_path() / ("nr_export_" + std::to_string(random()));
        while (!fs::create_directory(folder));
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string written(adodb::Recordset& rows, ExportFormat format) const {
        ExportSpec spec;
        spec.format = format;
        ExportFile file(rows, exportTable(tests::columnsOf(rows), {}, ""), spec, folder / "f");
        while (file.Step()) {
        }
        return readWholeFile(folder / "f", 1 << 22);
    }
    // The one cell of a file, written in both ways.
    std::string cell(adodb::DataTypeEnum type, const Variant& value, ExportFormat format) const {
        const auto columns = tests::fabricated({{"a", type}}, {{value}});
        const auto values = tests::GeneratedRecordset::make(
            {{"a", type, [value](adodb::RowCount) { return value; }}}, 1);
        const std::string file = written(*columns, format);
        EXPECT_EQ(file, written(*values, format));
        const bool html = format == ExportFormat::Html;
        const std::string before = html ? "<tbody>\n<tr><td>"
                                        : "\xEF\xBB\xBF"
                                          "A\r\n";
        const std::string behind =
            html ? "</td></tr>\n</tbody>\n</table>\n</body>\n</html>\n" : "\r\n";
        const std::size_t from = file.find(before) + before.size();
        EXPECT_TRUE(file.ends_with(behind)) << file;
        return file.substr(from, file.size() - behind.size() - from);
    }
    std::string csv(const Variant& value) const {
        return cell(adodb::adLongVarWChar, value, ExportFormat::Delimited);
    }
    std::string html(const Variant& value) const {
        return cell(adodb::adLongVarWChar, value, ExportFormat::Html);
    }

    fs::path folder;
};

TEST_F(HostileCellsTest, WhatASpreadsheetTakesForAFormulaIsWrittenAsItIs) {
    for (const char* text : {"=cmd|' /C calc'!A0", "+39 02", "-2+3", "@SUM(A1)", "=1;2"}) {
        EXPECT_EQ(csv(text), text) << "values are not quoted";
        EXPECT_EQ(html(text), text);
    }
}

TEST_F(HostileCellsTest, QuotesAndDelimitersStayAndLineBreaksTabsAndNulsAreBlanks) {
    EXPECT_EQ(csv("\"a;b\" 'c'"), "\"a;b\" 'c'");
    EXPECT_EQ(csv("a\r\nb\rc\nd\te\vf\x7Fg"), "a b c d e f g");
    EXPECT_EQ(csv("a\0b\0"s), "a b ");
    EXPECT_EQ(html("a\0b\0"s), "a b ");
    EXPECT_EQ(csv("\r\n\r\n"), "  ");
}

TEST_F(HostileCellsTest, BytesThatAreNoTextAreReadAsWesternAndNeverHideAMark) {
    EXPECT_EQ(html("\xC3<script>"), "\xC3\x83&lt;script&gt;");
    EXPECT_EQ(html("x\xE2\x80"), "xâ€");
    for (const char* text :
         {"\xED\xA0\x80", "\xED\xB0\x80<", "\xFF\xFE", "\xC0\xAF", "\xF4\x90\x80\x80"}) {
        const std::string shown = html(text);
        EXPECT_EQ(toValidUtf8(shown), shown) << "a lone surrogate or a stray byte";
        EXPECT_EQ(shown.find('<'), std::string::npos);
    }
}

TEST_F(HostileCellsTest, MarkupIsText) {
    EXPECT_EQ(html("</td></table><script>alert(1)</script>"),
              "&lt;/td&gt;&lt;/table&gt;&lt;script&gt;alert(1)&lt;/script&gt;");
    EXPECT_EQ(html("&amp; &lt;"), "&amp;amp; &amp;lt;");
    EXPECT_EQ(html("<!-- ]]> -->"), "&lt;!-- ]]&gt; --&gt;");
}

TEST_F(HostileCellsTest, MarkupInCaptionsAndInTheTitleIsText) {
    const auto rows = tests::fabricated({{"a", adodb::adInteger}}, {{1}});
    Columns columns = tests::columnsOf(*rows);
    columns.Item(0).Caption = "</th><script>\n\xC3<&\0;"s;
    ExportSpec spec;
    spec.format = ExportFormat::Html;
    spec.title = "</title></h1><script>\r\n";
    ExportFile file(*rows, exportTable(columns, {}, ""), spec, folder / "f");
    while (file.Step()) {
    }
    const std::string page = readWholeFile(folder / "f", 1 << 20);
    EXPECT_EQ(page.find("<script>"), std::string::npos);
    EXPECT_NE(page.find("<title>&lt;/title&gt;&lt;/h1&gt;&lt;script&gt; </title>"),
              std::string::npos);
    EXPECT_NE(page.find("<th scope=\"col\">&lt;/th&gt;&lt;script&gt; \xC3\x83&lt;&amp; ;</th>"),
              std::string::npos)
        << page;
}

TEST_F(HostileCellsTest, ATextOfAMillionCharactersIsWhole) {
    std::string text;
    for (int i = 0; i < 250'000; ++i)
        text += "è<\n";
    EXPECT_EQ(csv(text), replaceText(text, "\n", " "));
    EXPECT_EQ(html(text), replaceText(replaceText(text, "\n", " "), "<", "&lt;"));
}

TEST_F(HostileCellsTest, NumbersThatAreNoneAreWrittenAsHostsWriteThem) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto number = [&](double value) {
        return cell(adodb::adDouble, value, ExportFormat::Delimited);
    };
    EXPECT_EQ(number(infinity), "1,#INF");
    EXPECT_EQ(number(-infinity), "-1,#INF");
    EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "-1,#IND");
    EXPECT_EQ(number(std::numeric_limits<double>::max()), "1,79769313486232E+308");
    EXPECT_EQ(number(std::numeric_limits<double>::denorm_min()), "4,94065645841247E-324");
    EXPECT_EQ(number(-0.0), "0");
}

TEST_F(HostileCellsTest, DatesOfEveryYearAndDatesThatAreNoneAreWritten) {
    const auto date = [&](double days) {
        return cell(adodb::adDate, Date{days}, ExportFormat::Delimited);
    };
    EXPECT_EQ(date(-100), "21/09/1899");
    EXPECT_EQ(date(-657434), "01/01/0100");
    EXPECT_EQ(date(2958465), "31/12/9999");
    EXPECT_EQ(date(-100.75), "21/09/1899 18.00.00");
    EXPECT_EQ(date(1e9), "1000000000");
    EXPECT_EQ(date(-1e9), "-1000000000");
    EXPECT_EQ(date(std::numeric_limits<double>::quiet_NaN()), "-1,#IND");
    EXPECT_EQ(date(std::numeric_limits<double>::infinity()), "1,#INF");
}

TEST_F(HostileCellsTest, AColumnMayStandTwiceAndManyMayStandSideBySide) {
    const auto rows = tests::fabricated({{"a", adodb::adInteger}}, {{7}});
    const auto values = tests::GeneratedRecordset::make(
        {{"a", adodb::adInteger, [](adodb::RowCount) { return Variant(7); }}}, 1);
    Columns columns;
    std::string heading = "\xEF\xBB\xBF";
    std::string line;
    for (int i = 0; i < 300; ++i) {
        Column column;
        column.DataField = "a";
        column.Caption = std::to_string(i);
        column.Order = i;
        columns.Add(column);
        heading.append(i ? ";" : "").append(column.Caption);
        line += i ? ";7" : "7";
    }
    const std::string expected = heading + "\r\n" + line + "\r\n";
    for (adodb::Recordset* recordset : {rows.get(), static_cast<adodb::Recordset*>(values.get())}) {
        ExportFile file(*recordset, exportTable(columns, {}, ""), {}, folder / "f");
        while (file.Step()) {
        }
        EXPECT_EQ(readWholeFile(folder / "f", 1 << 20), expected);
    }
}

} // namespace
} // namespace norvel::grid
