// Personal views made in the configuration window, through the DLL, over a host's own recordsets.
#include "tests/windows/hosts/CppHost.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace norvel::tests {
namespace {

namespace fs = std::filesystem;
using com::ComPtr;
using com::DispatchObject;

const std::wstring configura = L"Configurazione ricerca   --> CLI";

class CppConfigura : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  (L"nr_configura_" + std::to_wstring(std::random_device()()));
        fs::create_directories(folder_ / L"parametri");
        std::ofstream(folder_ / L"viste.db").close(); // an empty database
        open("CREATE TABLE ricerchepers (codiceoperatore TEXT, codicericerca TEXT, NomeVista TEXT, "
             "preferito BOOLEAN, PRIMARY KEY (codiceoperatore, codicericerca, NomeVista))");
        ASSERT_TRUE(ricerca_ = createRicerca());
        prepare(*ricerca_.get(), clients(50));
        const std::wstring path = folder_.wstring() + L"\\";
        EXPECT_EQ(ricerca_->put_Percorso(Text(path)), S_OK);
        EXPECT_EQ(ricerca_->put_PercorsoPers(Text(path)), S_OK);
        EXPECT_EQ(ricerca_->put_Modulo(Text(L"CLI")), S_OK);
        EXPECT_EQ(ricerca_->put_User(Text(L"ROSSI")), S_OK);
        EXPECT_EQ(ricerca_->put_FilterBar(Text(L"1")), S_OK);
        EXPECT_EQ(ricerca_->putref_RecordsetOperatori(
                      openRows("SELECT 'ROSSI' AS codiceutente, 1 AS ricerchepers").get()),
                  S_OK);
        EXPECT_EQ(ricerca_->putref_RecordsetViste(open("SELECT * FROM ricerchepers").get()), S_OK);
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
        std::error_code gone; // the database may still be open somewhere
        fs::remove_all(folder_, gone);
    }
    // A statement on the host's database of views; its rows may be written.
    DispatchObject open(const std::string& sql) const {
        CLSID id{};
        ComPtr<IDispatch> made;
        CLSIDFromProgID(L"ADODB.Recordset", &id);
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                         reinterpret_cast<void**>(made.put()));
        DispatchObject rows(std::move(made));
        rows.putNumber(L"CursorLocation", 3);
        rows.call(L"Open", {com::textArgument(sql),
                            com::textArgument("Provider=SQLite;Data Source=" +
                                              (folder_ / L"viste.db").string()),
                            com::numberArgument(3), com::numberArgument(3)});
        return rows;
    }
    std::int64_t count(const std::string& where) const {
        const DispatchObject rows = open("SELECT * FROM ricerchepers WHERE " + where);
        return rows.number(L"RecordCount");
    }
    std::wstring answerTo(const std::function<void(const Shown&)>& steps) {
        EXPECT_EQ(search(*ricerca_.get(), [&] { steps(Shown::titled(caption)); }), S_OK);
        return answerOf(*ricerca_.get());
    }
    static Shown openConfigura() {
        pressHolding2(VK_CONTROL, VK_SHIFT, 'P');
        return Shown::titled(configura);
    }
    static void pressHolding2(WORD first, WORD second, WORD key) {
        keybd_event(static_cast<BYTE>(first), 0, 0, 0);
        pressHolding(second, key);
        keybd_event(static_cast<BYTE>(first), 0, KEYEVENTF_KEYUP, 0);
    }
    // The nth entry of the side menu, which has the keyboard.
    static void page(int entry) {
        press(VK_HOME);
        press(VK_DOWN, entry);
        press(VK_RETURN);
    }
    // From the side menu: the page of views, a name, preferred, «Salva vista».
    static void save(const std::string& name) {
        page(3);
        press(VK_TAB); // the name
        pressHolding(VK_CONTROL, 'A');
        for (const char c : name) // without Shift: small letters
            press(static_cast<WORD>(c));
        press(VK_TAB, 2);
        press(VK_SPACE); // preferred
        pressHolding(VK_SHIFT, VK_TAB);
        press(VK_SPACE);
    }

    ComPtr<_Ricerca> ricerca_;
    fs::path folder_;
};

TEST_F(CppConfigura, AViewSavedHereIsTheOneThatTheNextSearchOpensWith) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  openConfigura();
                  EXPECT_EQ(IsWindowEnabled(window.handle()), 0) << "it is modal";
                  page(1);
                  press(VK_TAB); // the columns that are shown
                  press(VK_DOWN);
                  press(VK_RETURN); // «codice» goes
                  pressHolding(VK_SHIFT, VK_TAB);
                  save("MIA");
                  Shown::titled(L"Conferma salvataggio").answer(IDYES);
                  Shown::titled(L"Salvataggio").answer(IDOK);
                  Shown::titled(configura).closeByKeys();
                  Shown::titled(caption).chooseByEnter();
              }),
              L"1")
        << "the search goes on where it was";
    EXPECT_TRUE(fs::exists(folder_ / L"ROSSImia.grx"));
    EXPECT_EQ(count("codiceoperatore='ROSSI' AND codicericerca='CLI' AND NomeVista='mia' AND "
                    "preferito <> 0"),
              1);
    EXPECT_EQ(ricerca_->putref_RecordsetViste(open("SELECT * FROM ricerchepers").get()), S_OK);
    EXPECT_EQ(ricerca_->putref_Recordset(clients(50).get()), S_OK);
    EXPECT_EQ(answerTo([](const Shown& window) {
                  press(VK_HOME);
                  pressHolding(VK_SHIFT, VK_TAB); // the filter of the first column: «nome» now
                  for (const char c : std::string("CLIENTE 37"))
                      press(static_cast<WORD>(c));
                  press(VK_DOWN);
                  window.chooseByEnter();
              }),
              L"37");
}

TEST_F(CppConfigura, ThePreviewNeverMovesTheHostsCurrentRow) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  press(VK_DOWN, 4);
                  for (int times = 0; times < 2; ++times) { // unloaded and loaded anew
                      const Shown config = openConfigura();
                      pressHolding(VK_SHIFT, VK_TAB); // the preview
                      press(VK_DOWN, 7);
                      pressHolding(VK_CONTROL, VK_END);
                      config.endBy([&] { config.clickMiddle(config.button(L"&Chiudi")); });
                      Shown::titled(caption);
                  }
                  window.chooseByEnter();
              }),
              L"5");
}

TEST_F(CppConfigura, ARowThatTheDatabaseRefusesIsToldAndTheWindowsLiveOn) {
    open("CREATE TRIGGER no BEFORE INSERT ON ricerchepers BEGIN SELECT RAISE(ABORT, 'no'); END");
    EXPECT_EQ(answerTo([](const Shown&) {
                  const Shown config = openConfigura();
                  save("MIA");
                  Shown::titled(L"Conferma salvataggio").answer(IDYES);
                  Shown::titled(L"TAMBORIN").answer(IDOK);
                  config.closeByKeys();
                  Shown::titled(caption).chooseByEnter();
              }),
              L"1");
    EXPECT_TRUE(fs::exists(folder_ / L"ROSSImia.grx")) << "the file comes first, and stays";
    EXPECT_EQ(count("1 = 1"), 0);
}

} // namespace
} // namespace norvel::tests
