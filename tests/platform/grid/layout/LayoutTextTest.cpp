// Layouts as text: what is written is read back, and nothing else is taken for a layout.
#include "platform/grid/layout/LayoutText.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <random>

namespace norvel::grid {
namespace {

std::int64_t errorOf(std::string_view text) {
    try {
        readLayoutText(text);
    } catch (const Errore& error) {
        return error.numero();
    }
    return 0;
}

NamedLayout sample() {
    NamedLayout named{"ROSSIClienti", {}};
    named.Contents.Split.FilterBar = false;
    named.Contents.Split.EvenRowStyle.BackColor = 0x00C0FFEE;
    named.Contents.Style.DataView = 2;
    named.Contents.Style.Font = {"Liberation Sans", 10.5, true, false};
    named.Contents.Style.GroupColumns = {"citta", "data \"nascita\""};
    named.Contents.Columns = {{"codice", "Codice", 1440.25, 1, true, {false, 0}},
                              {"attivo", "Attivo\n\t\\ \"sì\"", 600, 0, false, {true, 4}}};
    return named;
}

TEST(LayoutText, SaysInReadableLinesWhatAPersonWouldCompare) {
    EXPECT_EQ(layoutText({sample()}), R"(NorvelRicerca grid layout 1

[layout "ROSSIClienti"]
FilterBar = false
AllowSizing = true
AllowRowSizing = false
AllowColMove = false
AlternatingRowStyle = false
EvenRowStyle.BackColor = 12648430
OddRowStyle.BackColor = 16777215
FrozenColumns = 0
MarqueeStyle = 2
DataView = 2
RowHeight = 0
Font.Name = "Liberation Sans"
Font.Size = 10.5
Font.Bold = true
Font.Italic = false
GroupColumns = "citta", "data \"nascita\""

[column "attivo"]
Caption = "Attivo\n\t\\ \"sì\""
Width = 600
Order = 0
Visible = false
ValueItems.Translate = true
ValueItems.Presentation = 4

[column "codice"]
Caption = "Codice"
Width = 1440.25
Order = 1
Visible = true
ValueItems.Translate = false
ValueItems.Presentation = 0

[end]
)");
}

TEST(LayoutText, IsReadBackWhateverEndsItsLines) {
    NamedLayout expected = sample();
    std::swap(expected.Contents.Columns[0], expected.Contents.Columns[1]); // in the order shown
    std::string text = layoutText({sample()});
    EXPECT_EQ(readLayoutText(text), std::vector{expected});
    std::string other = "\xEF\xBB\xBF";
    for (const char c : text)
        other += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(readLayoutText(other), std::vector{expected});
}

TEST(LayoutText, WhatIsMissingKeepsItsDefaultAndWhatIsUnknownIsPassedOver) {
    const auto read = readLayoutText("NorvelRicerca grid layout 1\n"
                                     "ignota = 7\n"
                                     "[layout \"x\"]\n"
                                     "DataView = 2\n"
                                     "Domani = \"un testo\" e altro\n"
                                     "[split \"1\"]\n"
                                     "FilterBar = false\n"
                                     "[column \"a\"]\n"
                                     "[column \"A\"]\n"
                                     "Width = 5\n"
                                     "[end]\n"
                                     "qualunque cosa");
    ASSERT_EQ(read.size(), 1U);
    Layout expected;
    expected.Style.DataView = 2;
    expected.Columns.resize(1);
    expected.Columns[0].DataField = "a";
    EXPECT_EQ(read[0].Contents, expected) << "the first of two columns of one field counts";
}

TEST(LayoutText, ATruncatedFileIsRefusedWhereverItBreaksOff) {
    const std::string text = layoutText({sample(), {"altro", {}}});
    for (std::size_t length = 0; length + 1 < text.size(); ++length)
        ASSERT_EQ(errorOf(text.substr(0, length)), 321) << length;
    EXPECT_EQ(errorOf(text), 0);
}

TEST(LayoutText, ForeignLaterAndSenselessFilesAreRefused) {
    const std::string head = "NorvelRicerca grid layout 1\n[layout \"x\"]\n";
    for (const char* text : {"", "\n", "PK\x03\x04", "NorvelRicerca grid layout 0\n[end]\n",
                             "NorvelRicerca grid layout -1\n[end]\n", "NorvelRicerca grid layout 1",
                             "NorvelRicerca grid layout 1\n[column \"a\"]\n[end]\n",
                             "NorvelRicerca grid layout 1\n[layout \"a]\n[end]\n",
                             "NorvelRicerca grid layout 1\n[]\n[end]\n"})
        EXPECT_EQ(errorOf(text), 321) << text;
    EXPECT_EQ(errorOf("NorvelRicerca grid layout 2\n[end]\n"), laterLayoutVersion);
    for (const char* line :
         {"FilterBar = 1", "FilterBar = true false", "FilterBar", "= true", "DataView = -1",
          "DataView = 1.5", "DataView = nan", "DataView = 99999999999", "RowHeight = inf",
          "RowHeight = 1e300", "Font.Name = Arial", "Font.Name = \"Arial", "Font.Size = \"10\"",
          "Font.Size = 10 pt", "GroupColumns = a", "GroupColumns = \"a\" \"b\"",
          "GroupColumns = \"a\",", "Font.Name = \"a\\"})
        EXPECT_EQ(errorOf(head + line + "\n[end]\n"), 321) << line;
    std::string columns = head;
    for (int i = 0; i < 40000; ++i)
        columns += "[column \"c" + std::to_string(i) + "\"]\n";
    EXPECT_EQ(errorOf(columns + "[end]\n"), 321) << "more columns than a grid has";
    std::string groups = head + "GroupColumns = \"a\"";
    for (int i = 0; i < 40000; ++i)
        groups += ",\"a\"";
    EXPECT_EQ(errorOf(groups + "\n[end]\n"), 321) << "more groups than a grid has columns";
}

TEST(LayoutText, BytesThatAreNoTextAreRepairedNotKept) {
    const auto read = readLayoutText("NorvelRicerca grid layout 1\n[layout \"\xE0\xFF\"]\n[end]\n");
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].Name.find('\xFF'), std::string::npos);
}

std::string randomText(std::mt19937& chance) {
    static const std::vector<std::string> pieces{"a",   "Z", "è",  "\"", "\\", "\n", "\t",
                                                 "]",   "[", "=",  ",",  "😀",  " ",  "#",
                                                 "end", "'", "\r", ";",  "\\n"};
    std::string text;
    for (unsigned n = chance() % 8; n > 0; --n)
        text += pieces[chance() % pieces.size()];
    return text;
}

TEST(LayoutText, FiveHundredRandomLayoutsComeBackAsTheyWere) {
    std::mt19937 chance(20261121);
    const auto flag = [&] { return chance() % 2 == 0; };
    const auto real = [&](unsigned most, double part) {
        return static_cast<double>(chance() % most) / part;
    };
    for (int round = 0; round < 500; ++round) {
        std::vector<NamedLayout> layouts(chance() % 4);
        for (std::size_t i = 0; i < layouts.size(); ++i) {
            layouts[i].Name = std::to_string(i) + randomText(chance);
            Layout& layout = layouts[i].Contents;
            layout.Split.FilterBar = flag();
            layout.Split.AllowSizing = flag();
            layout.Split.AllowRowSizing = flag();
            layout.Split.AllowColMove = flag();
            layout.Split.AlternatingRowStyle = flag();
            layout.Split.EvenRowStyle.BackColor = chance() % 0x1000000;
            layout.Split.OddRowStyle.BackColor = chance() % 0x1000000;
            layout.Split.FrozenColumns = static_cast<int>(chance() % 5);
            layout.Style.MarqueeStyle = static_cast<int>(chance() % 3);
            layout.Style.DataView = flag() ? 2 : 0;
            layout.Style.RowHeight = real(100000, 7);
            layout.Style.Font = {randomText(chance), real(1000, 11), flag(), flag()};
            for (unsigned n = chance() % 4; n > 0; --n)
                layout.Style.GroupColumns.push_back(randomText(chance));
            for (unsigned n = chance() % 30, k = 0; k < n; ++k)
                layout.Columns.push_back({std::to_string(k) + randomText(chance),
                                          randomText(chance),
                                          real(1000000, 3),
                                          static_cast<int>(k),
                                          flag(),
                                          {flag(), static_cast<int>(chance() % 6)}});
        }
        const std::string text = layoutText(layouts);
        ASSERT_EQ(readLayoutText(text), layouts) << text;
        ASSERT_EQ(layoutText(readLayoutText(text)), text);
    }
}

// Bytes changed, taken out and put in at random: read or refused, nothing else.
TEST(LayoutText, RandomDamageIsReadOrRefused) {
    std::mt19937 chance(20261121);
    const std::string text = layoutText({sample(), {"altro", {}}});
    for (int round = 0; round < 20000; ++round) {
        std::string damaged = text;
        for (unsigned n = 1 + chance() % 4; n > 0; --n) {
            const std::size_t at = chance() % damaged.size();
            switch (chance() % 3) {
            case 0:
                damaged[at] = static_cast<char>(chance());
                break;
            case 1:
                damaged.erase(at, 1 + chance() % 20);
                break;
            default:
                damaged.insert(at, 1, "\"\\[]=\n,x"[chance() % 8]);
            }
        }
        const std::int64_t number = errorOf(damaged);
        ASSERT_TRUE(number == 0 || number == 321 || number == laterLayoutVersion) << damaged;
    }
}

} // namespace
} // namespace norvel::grid
