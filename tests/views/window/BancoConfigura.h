// The bench of the configuration window: a host with operators and views in a real table, the
// search window open, and «configura» pressed in its toolbar.
#pragma once

#include "platform/controls/ExplorerBar.h"
#include "platform/grid/layout/LayoutFile.h"
#include "tests/search_window/BancoQuery.h"
#include "views/FrmConfigura.h"

#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace norvel::views {

namespace fs = std::filesystem;

class BancoConfigura : public search_window::BancoQuery {
  protected:
    void SetUp() override {
        BancoQuery::SetUp();
        static std::atomic<int> numero{0};
        cartella =
            fs::temp_directory_path() / ("nr_configura_" + std::to_string(std::random_device()()) +
                                         "_" + std::to_string(++numero));
        fs::create_directories(cartella / "parametri");
        ricerca.SetPercorso(cartella.string() + "\\");
        ricerca.SetPercorsoPers(cartella.string() + "\\");
        operatore("ROSSI", "CLI");
        esegui("CREATE TABLE operatori (codiceutente TEXT PRIMARY KEY, ricerchepers BOOLEAN)");
        esegui("INSERT INTO operatori VALUES ('ROSSI', 1), ('BIANCHI', 1)");
        esegui("CREATE TABLE ricerchepers (codiceoperatore TEXT, codicericerca TEXT, "
               "NomeVista TEXT, preferito BOOLEAN, "
               "PRIMARY KEY (codiceoperatore, codicericerca, NomeVista))");
    }
    void TearDown() override {
        BancoQuery::TearDown();
        EXPECT_EQ(frmConfiguraReale(), nullptr);
        fs::permissions(cartella, fs::perms::owner_all, fs::perm_options::add);
        fs::remove_all(cartella);
    }
    void operatore(const char* utente, const char* modulo) {
        ricerca.SetUser(utente);
        ricerca.SetModulo(modulo);
    }
    void riga(const std::string& vista, bool preferita, const std::string& utente = "ROSSI",
              const std::string& modulo = "CLI") {
        esegui("INSERT INTO ricerchepers VALUES ('" + utente + "', '" + modulo + "', '" + vista +
               "', " + (preferita ? "1" : "0") + ")");
    }
    adodb::RecordsetRef apriTabella(const std::string& sql,
                                    adodb::LockTypeEnum blocco = adodb::adLockOptimistic) {
        auto rs = adodb::makeClientRecordset();
        rs->Open(sql, Variant(std::static_pointer_cast<Object>(connessione)), adodb::adOpenStatic,
                 blocco, adodb::adCmdText);
        return rs;
    }
    // "ROSSI/CLI/Mia*": the rows of the table, preferred ones with a star.
    std::string righeViste() {
        auto rs = apriTabella("SELECT * FROM ricerchepers ORDER BY rowid");
        std::string testo;
        for (; !rs->EOF_(); rs->MoveNext()) {
            adodb::Fields& campi = rs->Fields();
            testo += (testo.empty() ? "" : " ") + campi("codiceoperatore").Value().toText() + "/" +
                     campi("codicericerca").Value().toText() + "/" +
                     campi("NomeVista").Value().toText() +
                     (campi("preferito").Value().toBoolean() ? "*" : "");
        }
        return testo;
    }
    bool esiste(const std::string& file) const { return fs::exists(cartella / file); }

    // --- the window ---
    static FrmConfigura& configura() { return *frmConfiguraReale(); }
    static grid::Grid& anteprima() { return *configura().Griglia; }
    static grid::Split& split() { return anteprima().SplitAt(0); }
    static bool configuraPronta() {
        return frmConfiguraReale() && configura().Finestra->IsActive() &&
               !configura().MenuBar->Groups().empty();
    }
    void vai(std::string_view chiave) {
        const wxRect r = configura().MenuBar->ItemRect(chiave);
        robot.click(*configura().MenuBar, {r.x + r.width / 2, r.y + r.height / 2});
    }
    void premi(wxWindow* parte) {
        const wxSize misura = parte->GetClientSize();
        robot.click(*parte, {std::min(10, misura.x / 2), misura.y / 2});
    }
    // Key by key.
    void digitaNome(std::string_view nome) {
        robot.focus(*configura().txtNome);
        robot.press('A', wxMOD_CONTROL);
        robot.press(WXK_DELETE);
        robot.type(nome);
    }
    // The same without the keys, where they are not the matter.
    void scriviNome(std::string_view nome) {
        configura().txtNome->SetValue(wxString::FromUTF8(nome.data(), nome.size()));
        robot.pump();
    }
    // Clicks the entry of a list box, once or twice.
    static wxPoint postoVoce(wxListBox& lista, int voce) {
        const int alta = lista.GetCharHeight();
        wxPoint at(12, alta / 2);
        while (at.y < lista.GetClientSize().y && lista.HitTest(at) != voce)
            at.y += alta / 4;
        return at;
    }
    static int voceDi(wxListBox* lista, std::string_view testo) {
        return lista->FindString(wxString::FromUTF8(testo.data(), testo.size()));
    }
    void scegli(wxListBox* lista, std::string_view testo) {
        const int voce = voceDi(lista, testo);
        ASSERT_GE(voce, 0) << testo;
        robot.click(*lista, postoVoce(*lista, voce));
    }
    void doppio(wxListBox* lista, std::string_view testo) {
        const int voce = voceDi(lista, testo);
        ASSERT_GE(voce, 0) << testo;
        robot.doubleClick(*lista, postoVoce(*lista, voce));
    }
    static std::vector<std::string> voci(wxListBox* lista) {
        std::vector<std::string> tutte;
        for (unsigned i = 0; i < lista->GetCount(); ++i)
            tutte.emplace_back(lista->GetString(i).utf8_string());
        return tutte;
    }
    static int pagineMostrate() {
        int quante = 0;
        for (const wxWindow* pagina : configura().FrmDimensioni)
            quante += pagina->IsShown() ? 1 : 0;
        return quante;
    }
    static std::string testoDi(const wxTextEntry* casella) {
        return casella->GetValue().utf8_string();
    }

    // --- one search, in which the operator presses «configura» and does this ---
    void apriViste(adodb::LockTypeEnum blocco = adodb::adLockOptimistic) {
        ricerca.SetRecordsetOperatori(apriTabella("SELECT * FROM operatori"));
        ricerca.SetRecordsetViste(apriTabella("SELECT * FROM ricerchepers", blocco));
    }
    tests::Script& apreConfigura() {
        script.then("preme configura",
                    [this] { robot.click(*finestra().BarraBase, pulsante("configura")); });
        return script.waitFor("la configurazione è aperta", [] { return configuraPronta(); });
    }
    tests::Script& chiudeConfigura() {
        script.then("chiude la configurazione", [] {
            if (frmConfiguraReale()) configura().Scarica();
        });
        return script.waitFor("è tornata la ricerca", [] {
            return !frmConfiguraReale() && finestra().Finestra->IsActive();
        });
    }
    void provaConfigura(const std::function<void()>& passo,
                        const std::function<void()>& dopo = nullptr) {
        apriViste();
        pronta();
        apreConfigura();
        intero("prova", passo);
        chiudeConfigura();
        if (dopo) intero("dopo", dopo);
        chiude(script);
        cerca(tabella());
    }

    fs::path cartella;
};

} // namespace norvel::views
