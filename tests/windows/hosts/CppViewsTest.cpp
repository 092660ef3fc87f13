// Personal views, layout files and the toolbar over a host's own recordsets, as an operator uses
// them. Where a column stands shows in its filter cell: what is typed there finds its values.
#include "tests/windows/hosts/CppHost.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace norvel::tests {
namespace {

namespace fs = std::filesystem;
using com::ComPtr;

// Written on another system: nome is its first column, codice its second.
const fs::path& keptLayout() {
    static const fs::path path = windowsPath(NR_SOURCE_DIR "/tests/platform/grid/layout/vista.grx");
    return path;
}

class CppViews : public testing::Test {
  protected:
    void SetUp() override {
        folder_ =
            fs::temp_directory_path() / (L"nr_viste_" + std::to_wstring(std::random_device()()));
        fs::create_directories(folder_ / L"parametri");
        ASSERT_TRUE(ricerca_ = createRicerca());
        prepare(*ricerca_.get(), clients(50));
        const std::wstring path = folder_.wstring() + L"\\";
        EXPECT_EQ(ricerca_->put_Percorso(Text(path)), S_OK);
        EXPECT_EQ(ricerca_->put_PercorsoPers(Text(path)), S_OK);
        EXPECT_EQ(ricerca_->put_Modulo(Text(L"CLI")), S_OK);
        EXPECT_EQ(ricerca_->put_FilterBar(Text(L"1")), S_OK);
        operators("SELECT 'ROSSI' AS codiceutente, 1 AS ricerchepers UNION ALL "
                  "SELECT 'BIANCHI', 0");
        user(L"ROSSI");
    }
    // The session keeps nothing for the next test.
    void TearDown() override {
        const ComPtr<_Ricerca> last = createRicerca();
        for (const auto put : {&_Ricerca::put_Percorso, &_Ricerca::put_PercorsoPers,
                               &_Ricerca::put_Modulo, &_Ricerca::put_User})
            (last.get()->*put)(Text(L""));
        last->putref_Recordset(nullptr);
        last->putref_RecordsetOperatori(nullptr);
        last->putref_RecordsetViste(nullptr);
        fs::remove_all(folder_);
    }
    void user(const wchar_t* code) { EXPECT_EQ(ricerca_->put_User(Text(code)), S_OK); }
    void operators(const std::string& sql) {
        EXPECT_EQ(ricerca_->putref_RecordsetOperatori(openRows(sql).get()), S_OK);
    }
    // A row of the table of views, and its file.
    void view(bool preferred) {
        const std::string flag = preferred ? "-1" : "0";
        EXPECT_EQ(ricerca_->putref_RecordsetViste(
                      openRows("SELECT 'ROSSI' AS codiceoperatore, 'CLI' AS codicericerca, "
                               "'Vista di città' AS NomeVista, " +
                               flag + " AS preferito")
                          .get()),
                  S_OK);
        fs::copy_file(keptLayout(), folder_ / L"ROSSIVista di città.grx");
    }
    std::wstring answerTo(const std::function<void(const Shown&)>& steps) {
        EXPECT_EQ(search(*ricerca_.get(), [&] { steps(Shown::titled(caption)); }), S_OK);
        return answerOf(*ricerca_.get());
    }

    ComPtr<_Ricerca> ricerca_;
    fs::path folder_;
};

// Chooses the client whose name is typed where the first column is.
void findInFirstColumn(const Shown& window) {
    press(VK_HOME);
    pressHolding(VK_SHIFT, VK_TAB);
    for (const char c : std::string("CLIENTE 37"))
        press(static_cast<WORD>(c));
    press(VK_DOWN);
    window.chooseByEnter();
}

bool menuIsOpen() {
    return FindWindowW(L"#32768", nullptr) != nullptr;
}

// The nth button behind "Apri", from 1.
void clickButton(const Shown& window, int n) {
    constexpr int firstMiddle = 62;
    constexpr int step = 30;
    window.click(window.toolbar(), firstMiddle + (n - 1) * step, 16);
}
constexpr int primo = 9, indietro = 10, avanti = 11, ultimo = 12; // "Modifica" is hidden

TEST_F(CppViews, WithoutViewsTheFirstColumnIsTheFirstField) {
    EXPECT_EQ(answerTo(findInFirstColumn), L"1") << "a name is no code";
}

TEST_F(CppViews, APreferredViewSavedOnAnotherSystemIsOnShowAtTheStart) {
    view(true);
    EXPECT_EQ(answerTo(findInFirstColumn), L"37");
}

TEST_F(CppViews, AnEntryOfTheMenuOfViewsShowsItsView) {
    view(false);
    EXPECT_EQ(answerTo([](const Shown& window) {
                  pressHolding(VK_CONTROL, 'O');
                  waitUntil("no menu of views", [] { return menuIsOpen(); });
                  press(VK_DOWN);
                  press(VK_RETURN);
                  waitUntil("the menu stays", [] { return !menuIsOpen(); });
                  findInFirstColumn(window);
              }),
              L"37");
}

TEST_F(CppViews, TheBaseLayoutServesAnOperatorWithoutViews) {
    view(false);
    // Of the search as a whole: the same look under the search's own name.
    user(L"VERDI");
    EXPECT_EQ(ricerca_->put_Modulo(Text(L"ROSSIVista di città")), S_OK);
    fs::copy_file(keptLayout(), folder_ / L"parametri" / L"ROSSIVista di città.grx");
    EXPECT_EQ(answerTo(findInFirstColumn), L"37");
}

TEST_F(CppViews, AGroupedViewOpensItsGroupsAndChoosesARowOfTheHost) {
    EXPECT_EQ(ricerca_->putref_Recordset(
                  openRows("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                           "LIMIT 50) SELECT i AS codice, i % 3 AS gruppo FROM n")
                      .get()),
              S_OK);
    std::ofstream(folder_ / L"parametri" / L"CLI.grx", std::ios::binary)
        << "NorvelRicerca grid layout 1\n[layout \"CLI\"]\nDataView = 2\n"
           "GroupColumns = \"gruppo\"\n[end]\n";
    EXPECT_EQ(answerTo([](const Shown& window) {
                  pressHolding(VK_CONTROL, VK_HOME); // the group of 0
                  press(VK_RETURN);
                  press(VK_DOWN, 2); // 3, 6
                  window.chooseByEnter();
              }),
              L"6");
}

TEST_F(CppViews, TheToolbarMovesTheHostsRecordset) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  clickButton(window, ultimo);
                  clickButton(window, indietro);
                  window.chooseByEnter();
              }),
              L"49");
    EXPECT_EQ(answerTo([](const Shown& window) {
                  clickButton(window, primo);
                  clickButton(window, avanti);
                  window.chooseByEnter();
              }),
              L"2");
}

TEST_F(CppViews, AvantiBouncesBackAtTheEnd) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  pressHolding(VK_MENU, VK_END);
                  pressHolding(VK_MENU, VK_RIGHT); // behind the last record
                  pressHolding(VK_MENU, VK_RIGHT);
                  window.chooseByEnter();
              }),
              L"50");
}

TEST_F(CppViews, UltimoIsForOperatorsWithTheRightToViews) {
    user(L"BIANCHI");
    EXPECT_EQ(answerTo([](const Shown& window) {
                  clickButton(window, avanti);
                  clickButton(window, ultimo);
                  pressHolding(VK_MENU, VK_END);
                  window.chooseByEnter();
              }),
              L"2");
}

} // namespace
} // namespace norvel::tests
