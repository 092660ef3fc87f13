// Layout files on disk.
#include "platform/grid/layout/LayoutFile.h"

#include "platform/grid/layout/LayoutText.h"
#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <random>
#include <string>

namespace norvel::grid {
namespace {

namespace fs = std::filesystem;

class LayoutFileTest : public testing::Test {
  protected:
    LayoutFileTest() {
        static std::atomic<int> number{0};
        folder =
            fs::temp_directory_path() / ("nr_layout_" + std::to_string(std::random_device()()) +
                                         "_" + std::to_string(++number));
        fs::create_directories(folder / "Parametri");
    }
    ~LayoutFileTest() override { fs::remove_all(folder); }
    LayoutFileTest(const LayoutFileTest&) = delete;
    LayoutFileTest& operator=(const LayoutFileTest&) = delete;

    std::string path(const std::string& name) const { return (folder / name).string(); }
    void write(const std::string& name, const std::string& contents) const {
        std::ofstream(folder / name, std::ios::binary) << contents;
    }
    std::string contents(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static std::int64_t errorOf(const std::function<void()>& call) {
        try {
            call();
        } catch (const Errore& error) {
            return error.numero();
        }
        return 0;
    }
    static Layout withColumns(int count) {
        Layout layout;
        for (int i = 0; i < count; ++i)
            layout.Columns.push_back({"c" + std::to_string(i), "Colonna", 1000.0 + i, i, true, {}});
        return layout;
    }

    fs::path folder;
};

TEST_F(LayoutFileTest, KeepsSeveralLayoutsByNamesWithoutCase) {
    saveLayout(path("prova.grx"), "Clienti", withColumns(3));
    saveLayout(path("prova.grx"), "Articoli", withColumns(5));
    EXPECT_EQ(loadLayout(path("prova.grx"), "CLIENTI"), withColumns(3));
    EXPECT_EQ(loadLayout(path("prova.grx"), "Articoli"), withColumns(5));
    saveLayout(path("prova.grx"), "clienti", withColumns(1));
    EXPECT_EQ(loadLayout(path("prova.grx"), "Clienti"), withColumns(1));
    EXPECT_EQ(loadLayout(path("prova.grx"), "Articoli"), withColumns(5));
    EXPECT_EQ(errorOf([&] { loadLayout(path("prova.grx"), "Fatture"); }), 5);
}

TEST_F(LayoutFileTest, IsFoundByTheHostsNotationWithoutCase) {
    const std::string host = folder.string() + "\\PARAMETRI\\rossiclienti.GRX";
    saveLayout(folder.string() + "\\parametri\\ROSSIClienti.grx", "x", withColumns(2));
    EXPECT_TRUE(fs::exists(folder / "Parametri" / "ROSSIClienti.grx"));
    EXPECT_EQ(loadLayout(host, "x"), withColumns(2));
    saveLayout(host, "x", withColumns(4));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "Parametri"), {}), 1)
        << "the same file, written over";
    EXPECT_EQ(loadLayout(host, "x"), withColumns(4));
}

TEST_F(LayoutFileTest, WhatIsMissingOrNoLayoutFileSaysSo) {
    EXPECT_EQ(errorOf([&] { loadLayout(path("manca.grx"), "x"); }), 53);
    EXPECT_EQ(errorOf([&] { loadLayout(path("Parametri"), "x"); }), 75);
    write("altro.grx", "qualcos'altro");
    EXPECT_EQ(errorOf([&] { loadLayout(path("altro.grx"), "x"); }), 321);
    write("lungo.grx", std::string(17 * 1024 * 1024, ' '));
    EXPECT_EQ(errorOf([&] { loadLayout(path("lungo.grx"), "x"); }), 7);
    EXPECT_EQ(errorOf([&] { saveLayout(path("nessuna/x.grx"), "x", {}); }), 76);
    EXPECT_EQ(errorOf([&] { saveLayout(path("Parametri"), "x", {}); }) == 0, false);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 3) << "nothing left behind";
}

TEST_F(LayoutFileTest, AFileThatIsNoLayoutFileIsWrittenOver) {
    write("altro.grx", "qualcos'altro");
    saveLayout(path("altro.grx"), "x", withColumns(2));
    EXPECT_EQ(loadLayout(path("altro.grx"), "x"), withColumns(2));
}

TEST_F(LayoutFileTest, AFileOfALaterVersionIsNotWrittenOver) {
    const std::string later = "NorvelRicerca grid layout 2\n[layout \"Clienti\"]\n[end]\n";
    write("nuovo.grx", later);
    EXPECT_EQ(errorOf([&] { saveLayout(path("nuovo.grx"), "x", withColumns(2)); }),
              laterLayoutVersion);
    EXPECT_EQ(fs::file_size(folder / "nuovo.grx"), later.size());
}

TEST_F(LayoutFileTest, AFileThatCannotBeReadIsNotWrittenOver) {
    const std::string lines(17 * 1024 * 1024, '\n');
    write("lungo.grx", "NorvelRicerca grid layout 1\n" + lines + "[end]\n");
    EXPECT_EQ(errorOf([&] { saveLayout(path("lungo.grx"), "x", withColumns(2)); }), 7);
    EXPECT_GT(fs::file_size(folder / "lungo.grx"), lines.size());
}

TEST_F(LayoutFileTest, NumbersOutOfRangeDoNotMakeAFileUnreadable) {
    Layout layout = withColumns(3);
    layout.Columns[0].Width = -1;
    layout.Columns[1].Width = 1e9;
    layout.Columns[2].Width = std::numeric_limits<double>::quiet_NaN();
    layout.Columns[2].Order = -5;
    layout.Style.Font.Size = 1e30;
    saveLayout(path("a.grx"), "x", layout);
    const Layout read = loadLayout(path("a.grx"), "x");
    ASSERT_EQ(read.Columns.size(), 3U);
    EXPECT_EQ(read.Columns[2].Width, 1'000'000);
    EXPECT_EQ(read.Columns[0].Width, 0);
    EXPECT_EQ(read.Columns[1].Order, 0);
}

TEST_F(LayoutFileTest, TheSameLayoutMakesTheSameFile) {
    saveLayout(path("a.grx"), "x", withColumns(20));
    const std::string once = contents("a.grx");
    saveLayout(path("a.grx"), "x", withColumns(20));
    EXPECT_EQ(contents("a.grx"), once);
}

} // namespace
} // namespace norvel::grid
