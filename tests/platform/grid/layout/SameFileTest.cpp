// One look, one file: what one system writes another reads, byte for byte. The same file serves the
// tests of the component on Windows.
#include "platform/grid/layout/LayoutFile.h"

#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <locale>
#include <random>
#include <string>

namespace norvel::grid {
namespace {

namespace fs = std::filesystem;

constexpr const char* keptFile = NR_SOURCE_DIR "/tests/platform/grid/layout/vista.grx";
constexpr const char* layoutName = "ROSSIVista di città";

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Something of everything: a column of each visibility, texts that need care, numbers with a
// fraction, colours with the highest bit, group columns, a font.
Layout look() {
    Layout layout;
    layout.Split.AllowRowSizing = layout.Split.AllowColMove = true;
    layout.Split.AlternatingRowStyle = true;
    layout.Split.EvenRowStyle.BackColor = 0x00C0FFFF;
    layout.Split.OddRowStyle.BackColor = 0x8000000F;
    layout.Split.FrozenColumns = 1;
    layout.Style.MarqueeStyle = marqueeCell;
    layout.Style.RowHeight = 1000.0 / 3;
    layout.Style.Font = {"Segoe UI", 10.5, true, true};
    layout.Style.GroupColumns = {"nome", "la \"città\""};
    layout.Columns = {{"nome", "Ragione sociale «à è»", 3000.25, 0, true, {}},
                      {"codice", "Codice\ncliente", 1200, 1, true, {}},
                      {"attivo", "Attivo", 0.1, 2, true, {true, presentationCheckBox}},
                      {"la \"città\"", "C:\\via\tcittà €", 1440, 3, false, {}}};
    return layout;
}

TEST(LayoutFileOfEverySystem, TheSameLookIsTheSameBytes) {
    const fs::path folder =
        fs::temp_directory_path() / ("nr_same_file_" + std::to_string(std::random_device()()));
    fs::create_directories(folder);
    saveLayout((folder / "x.grx").string(), layoutName, look());
    EXPECT_EQ(bytesOf(folder / "x.grx"), bytesOf(keptFile));
    fs::remove_all(folder);
}

// A host's language, in which numbers have a comma and groups of digits.
struct Italian : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "vero"; }
    std::string do_falsename() const override { return "falso"; }
};

TEST(LayoutFileOfEverySystem, TheHostsLanguageDoesNotGetIntoIt) {
    const fs::path folder =
        fs::temp_directory_path() / ("nr_same_file_" + std::to_string(std::random_device()()));
    fs::create_directories(folder);
    const std::string file = (folder / "x.grx").string();
    const std::string numbers = std::setlocale(LC_NUMERIC, nullptr);
    // Where the system has one of its own.
    for (const char* name : {"it_IT.UTF-8", "Italian_Italy.1252", "it-IT"})
        if (std::setlocale(LC_NUMERIC, name)) break;
    const std::locale before = std::locale::global({std::locale(), new Italian});
    saveLayout(file, layoutName, look());
    const Layout loaded = loadLayout(keptFile, layoutName);
    std::locale::global(before);
    std::setlocale(LC_NUMERIC, numbers.c_str());
    EXPECT_EQ(bytesOf(file), bytesOf(keptFile));
    EXPECT_EQ(loaded, look());
    fs::remove_all(folder);
}

TEST(LayoutFileOfEverySystem, LinesEndAsTheyDidOnTheSystemThatWroteThem) {
    const std::string bytes = bytesOf(keptFile);
    ASSERT_FALSE(bytes.empty());
    EXPECT_EQ(bytes.find('\r'), std::string::npos) << "a check-out must not change them";
    EXPECT_EQ(bytes.back(), '\n');
}

TEST(LayoutFileOfEverySystem, WhatAnotherSystemWroteIsTheSameLook) {
    EXPECT_EQ(loadLayout(keptFile, layoutName), look());
}

} // namespace
} // namespace norvel::grid
