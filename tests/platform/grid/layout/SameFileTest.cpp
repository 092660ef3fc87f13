// One look, one file: what one system writes another reads, byte for byte. The same file serves the
// tests of the component on Windows.
#include "platform/grid/layout/LayoutFile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
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

TEST(LayoutFileOfEverySystem, WhatAnotherSystemWroteIsTheSameLook) {
    EXPECT_EQ(loadLayout(keptFile, layoutName), look());
}

} // namespace
} // namespace norvel::grid
