#include "platform/grid/export/ExportFile.h"

#include "platform/grid/model/CellText.h"
#include "platform/runtime/WholeFile.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"
#include "tests/platform/grid/export/Articles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace norvel::grid {
namespace {

namespace fs = std::filesystem;

class ExportFileTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::random_device random;
        do
            folder = fs::temp_directory_path() / ("nr_export_" + std::to_string(random()));
        while (!fs::create_directory(folder));
        path = folder / "elenco";
    }
    void TearDown() override { fs::remove_all(folder); }

    ExportFile start(adodb::Recordset& recordset, const ExportSpec& spec) const {
        return {recordset, exportTable(tests::columnsOf(recordset), {}, recordset.Sort()), spec,
                path};
    }
    std::string contents() const { return readWholeFile(path, 1 << 25); }
    std::string exported(adodb::Recordset& recordset, const ExportSpec& spec = {}) const {
        ExportFile file = start(recordset, spec);
        while (file.Step()) {
        }
        EXPECT_EQ(file.Done(), 1);
        return contents();
    }
    long files() const { return std::distance(fs::directory_iterator(folder), {}); }
    static std::string expected(const std::string& name) {
        return readWholeFile(
            std::string(NR_SOURCE_DIR) + "/tests/platform/grid/export/attesi/" + name, 1 << 20);
    }
    static ExportSpec html(const std::string& title) {
        ExportSpec spec;
        spec.format = ExportFormat::Html;
        spec.title = title;
        return spec;
    }

    fs::path folder, path;
};

TEST_F(ExportFileTest, ADelimitedFileIsAsExpectedByteForByte) {
    EXPECT_EQ(exported(*tests::articles()), expected("articoli.csv"));
}

TEST_F(ExportFileTest, AnHtmlPageIsAsExpectedByteForByte) {
    EXPECT_EQ(exported(*tests::articles(), html("Articoli <tutti> & \"più\"")),
              expected("articoli.htm"));
}

TEST_F(ExportFileTest, ADelimitedFileTakesItsDelimiterPrefixSuffixAndHeadings) {
    ExportSpec spec;
    spec.delimiter = " | ";
    spec.prefix = "<";
    spec.suffix = ">";
    spec.headings = false;
    auto recordset = tests::fabricated({{"a", adodb::adInteger}, {"b", adodb::adVarWChar}},
                                       {{1, "x"}, {2, Variant::null()}});
    EXPECT_EQ(exported(*recordset, spec), "\xEF\xBB\xBF<1> | <x>\r\n<2> | <>\r\n");
}

TEST_F(ExportFileTest, NothingIsQuotedAndALineEndBecomesABlankSoThatARowIsALine) {
    auto recordset = tests::fabricated({{"a", adodb::adLongVarWChar}, {"b", adodb::adLongVarWChar}},
                                       {{"uno;due", "\"x\""}, {"a\r\nb\rc\nd\te", "f\n"}});
    EXPECT_EQ(exported(*recordset), "\xEF\xBB\xBF"
                                    "A;B\r\nuno;due;\"x\"\r\na b c d e;f \r\n");
}

TEST_F(ExportFileTest, WithoutRowsThereAreTheHeadings) {
    auto recordset = tests::articles();
    recordset->SetFilter("codice > 100");
    EXPECT_EQ(exported(*recordset), "\xEF\xBB\xBF"
                                    "Codice;Nome;Prezzo;Peso;Data;Attivo;Note\r\n");
    EXPECT_NE(exported(*recordset, html("")).find("<tbody>\n</tbody>"), std::string::npos);
}

TEST_F(ExportFileTest, WithoutColumnsEachRowIsAnEmptyLine) {
    auto recordset = tests::articles();
    ExportFile file(*recordset, {}, {}, path);
    while (file.Step()) {
    }
    EXPECT_EQ(contents(), "\xEF\xBB\xBF\r\n\r\n\r\n\r\n");
}

TEST_F(ExportFileTest, ShowsTheRowsOnShowInTheirOrder) {
    auto recordset = tests::articles();
    recordset->SetFilter("codice <> 2");
    recordset->SetSort("codice DESC");
    const auto position = recordset->AbsolutePosition();
    Columns columns = tests::columnsOf(*recordset);
    for (int i = 1; i < columns.Count(); ++i)
        columns.Item(i).Visible = false;
    ExportFile file(*recordset, exportTable(columns, {}, recordset->Sort()), {}, path);
    while (file.Step()) {
    }
    EXPECT_EQ(contents(), "\xEF\xBB\xBF"
                          "Codice\r\n3\r\n1\r\n");
    EXPECT_EQ(recordset->AbsolutePosition(), position) << "the host's record stays";
}

TEST_F(ExportFileTest, ComesInGroupsInTheGroupView) {
    auto recordset = tests::fabricated({{"codice", adodb::adInteger}, {"citta", adodb::adVarWChar}},
                                       {{1, "Roma"}, {2, "Milano"}, {3, "Roma"}, {4, "Milano"}});
    recordset->SetSort("codice DESC");
    GridStyle style;
    style.DataView = groupView;
    style.GroupColumns = {"citta"};
    ExportFile file(*recordset, exportTable(tests::columnsOf(*recordset), style, recordset->Sort()),
                    {}, path);
    while (file.Step()) {
    }
    EXPECT_EQ(contents(), "\xEF\xBB\xBF"
                          "Citta;Codice\r\nMilano;4\r\nMilano;2\r\nRoma;3\r\nRoma;1\r\n");
    EXPECT_EQ(recordset->Sort(), "codice DESC");
}

TEST_F(ExportFileTest, TheOldFileStaysUntilTheLastStep) {
    writeWholeFile(path, "vecchio");
    auto recordset = tests::GeneratedRecordset::make(tests::customerColumns(), 10'000);
    {
        ExportFile file = start(*recordset, {});
        ASSERT_TRUE(file.Step());
        EXPECT_GT(file.Done(), 0);
        EXPECT_LT(file.Done(), 1);
        EXPECT_EQ(contents(), "vecchio");
    }
    EXPECT_EQ(contents(), "vecchio") << "an export that is given up leaves what was there";
    EXPECT_EQ(files(), 1) << "and nothing else";
}

TEST_F(ExportFileTest, ARecordsetThatFailsHalfWayLeavesNoFile) {
    auto recordset = tests::GeneratedRecordset::make(tests::customerColumns(), 10'000);
    {
        ExportFile file = start(*recordset, {});
        ASSERT_TRUE(file.Step());
        recordset->failReads(Errore(3601, "linea caduta"));
        EXPECT_THROW(file.Step(), Errore);
    }
    EXPECT_EQ(files(), 0);
}

TEST_F(ExportFileTest, AMissingFolderIsTold) {
    path = folder / "manca" / "elenco.csv";
    try {
        start(*tests::articles(), {});
        FAIL();
    } catch (const Errore& error) {
        EXPECT_EQ(error.numero(), 76);
    }
}

// The same rows as columns and as values give the same bytes: numbers, dates and texts of every
// kind, random ones among them.
class ExportWaysTest : public ExportFileTest {
  protected:
    static Variant randomText(std::mt19937& random) {
        static const char* pieces[] = {"a",
                                       "città ",
                                       "<b>",
                                       "&amp;",
                                       "\r\n",
                                       "\r",
                                       "\n",
                                       "\t",
                                       "\x7F",
                                       "€",
                                       "\xC2\x85",
                                       "\u2028",
                                       "日本",
                                       "\u2026",
                                       "😀",
                                       ";",
                                       "\"",
                                       "'",
                                       "0123456789abcdef",
                                       "\xC2\xA0"};
        std::string text;
        for (auto n = random() % 24; n > 0; --n)
            text += pieces[random() % std::size(pieces)];
        return text;
    }
    static double randomDouble(std::mt19937& random) {
        static const double chosen[] = {0,       -0.0,   0.1,
                                        1e14,    1e15,   123456789012.3456,
                                        1e-5,    1e300,  -2.5,
                                        0.00005, 1e10,   99999999999.9999,
                                        1.0 / 3, 1e-300, 0.30000000000000004,
                                        100.005};
        switch (random() % 4) {
        case 0:
            return chosen[random() % std::size(chosen)];
        case 1:
            return static_cast<double>(static_cast<std::int32_t>(random())) / 100;
        case 2:
            return std::ldexp(static_cast<double>(random()),
                              static_cast<int>(random() % 200) - 100);
        default:
            return static_cast<double>(random()) * 1e-7;
        }
    }
    // Decimals of this column's own scale, dates of every year, integers to their limits.
    static std::vector<Variant> randomRow(std::mt19937& random) {
        const auto wide = static_cast<std::int64_t>(std::uint64_t{random()} << 32U | random());
        const auto day = static_cast<double>(static_cast<int>(random() % 3'000'000) - 650'000);
        std::vector<Variant> row = {static_cast<std::int32_t>(random()),
                                    wide,
                                    randomDouble(random),
                                    static_cast<float>(randomDouble(random) / 1e280),
                                    Currency{wide / 1000},
                                    Decimal::fromScaled(wide >> (random() % 60), random() % 7),
                                    Date{random() % 3 == 0 ? 0.0 : day},
                                    Date{day + static_cast<double>(random() % 86400) / 86400},
                                    random() % 2 == 0,
                                    randomText(random),
                                    random() % 2 == 0 ? Variant("ROMA") : Variant("MI<LANO>")};
        for (Variant& value : row)
            if (random() % 12 == 0) value = Variant::null();
        return row;
    }
    static adodb::RecordsetRef randomRows(std::size_t count) {
        std::mt19937 random(20110315);
        std::vector<std::vector<Variant>> rows;
        for (std::size_t i = 0; i < count; ++i)
            rows.push_back(randomRow(random));
        return tests::fabricated({{"intero", adodb::adInteger},
                                  {"grande", adodb::adBigInt},
                                  {"reale", adodb::adDouble},
                                  {"singolo", adodb::adSingle},
                                  {"valuta", adodb::adCurrency},
                                  {"decimale", adodb::adDecimal},
                                  {"giorno", adodb::adDate},
                                  {"momento", adodb::adDBTimeStamp},
                                  {"logico", adodb::adBoolean},
                                  {"testo", adodb::adLongVarWChar},
                                  {"citta", adodb::adLongVarWChar}},
                                 rows);
    }
    // The same rows from a recordset of another making.
    static std::shared_ptr<tests::GeneratedRecordset> copyOf(adodb::Recordset& rows) {
        const auto all =
            std::make_shared<adodb::RowBlock>(rows.GetRows(-1, adodb::adBookmarkFirst));
        std::vector<tests::GeneratedColumn> columns;
        columns.reserve(all->values.size());
        for (int i = 0; i < rows.Fields().Count(); ++i)
            columns.push_back(
                {rows.Fields()(i).Name(), rows.Fields()(i).Type(), [all, i](adodb::RowCount row) {
                     return all->values[static_cast<std::size_t>(i)][static_cast<std::size_t>(row)];
                 }});
        return tests::GeneratedRecordset::make(columns, all->rows);
    }
};

TEST_F(ExportWaysTest, ColumnsAndValuesGiveTheSameBytes) {
    const auto rows = randomRows(4000);
    const auto copy = copyOf(*rows);
    EXPECT_EQ(exported(*rows), exported(*copy));
    EXPECT_EQ(exported(*rows, html("x")), exported(*copy, html("x")));
}

TEST_F(ExportWaysTest, EveryValueIsAsTheGridShowsIt) {
    const auto rows = randomRows(2000);
    std::string lines = "\xEF\xBB\xBF"
                        "Intero;Grande;Reale;Singolo;Valuta;Decimale;Giorno;Momento;Logico;Testo;"
                        "Citta\r\n";
    const adodb::RowBlock all = rows->GetRows(-1, adodb::adBookmarkFirst);
    for (std::size_t row = 0; row < 2000; ++row)
        for (std::size_t c = 0; c < all.values.size(); ++c)
            lines += cellText(all.values[c][row]) + (c + 1 < all.values.size() ? ";" : "\r\n");
    EXPECT_EQ(exported(*rows), lines);
}

TEST_F(ExportWaysTest, LongTextsAreWholeHoweverManyRowsHoldThem) {
    std::vector<std::vector<Variant>> rows;
    std::string lines = "\xEF\xBB\xBF"
                        "N;Testo\r\n";
    for (int i = 0; i < 300; ++i) {
        const std::string text(static_cast<std::size_t>(i % 7 == 0 ? 400'000 : 10 * i), 'x');
        rows.push_back({i, text});
        lines += std::to_string(i) + ";" + text + "\r\n";
    }
    const auto recordset =
        tests::fabricated({{"n", adodb::adInteger}, {"testo", adodb::adLongVarWChar}}, rows);
    EXPECT_EQ(exported(*recordset), lines);
    EXPECT_EQ(exported(*copyOf(*recordset)), lines);
}

TEST_F(ExportWaysTest, ManyRowsInAnyOrderAreAllThere) {
    const auto recordset = adodb::makeClientRecordset();
    recordset->Open("WITH RECURSIVE r(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM r LIMIT 50000) "
                    "SELECT i * 7919 % 50000 AS n, CASE WHEN i % 2 = 0 THEN 'pari' ELSE 'dispari' "
                    "END AS parita FROM r",
                    "Provider=SQLite;Data Source=:memory:");
    recordset->SetSort("n DESC");
    recordset->SetFilter("n < 40000");
    std::string lines = "\xEF\xBB\xBF"
                        "N;Parita\r\n";
    std::vector<const char*> parity(50'000);
    for (int i = 0; i < 50'000; ++i)
        parity[static_cast<std::size_t>(i * 7919LL % 50'000)] = i % 2 == 0 ? "pari" : "dispari";
    for (int n = 39'999; n >= 0; --n)
        lines += std::to_string(n) + ";" + parity[static_cast<std::size_t>(n)] + "\r\n";
    EXPECT_EQ(exported(*recordset), lines);
}

} // namespace
} // namespace norvel::grid
