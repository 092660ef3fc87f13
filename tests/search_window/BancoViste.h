// The bench of views: a host with operators and personal views, and layout files of its own.
#pragma once

#include "platform/grid/layout/LayoutFile.h"
#include "tests/search_window/BancoQuery.h"

#include <atomic>
#include <filesystem>
#include <random>

namespace norvel::search_window {

class BancoViste : public BancoQuery {
  protected:
    void SetUp() override {
        BancoQuery::SetUp();
        static std::atomic<int> numero{0};
        cartella = std::filesystem::temp_directory_path() /
                   ("nr_banco_viste_" + std::to_string(std::random_device()()) + "_" +
                    std::to_string(++numero));
        std::filesystem::create_directories(cartella / "parametri");
        ricerca.SetPercorso(cartella.string() + "\\");
        ricerca.SetPercorsoPers(cartella.string() + "\\");
        ricerca.SetUser("ROSSI");
        ricerca.SetModulo("CLI");
        esegui("CREATE TABLE operatori (codiceutente TEXT, ricerchepers BOOLEAN)");
        esegui("INSERT INTO operatori VALUES ('ROSSI', 1), ('BIANCHI', 0)");
        esegui("CREATE TABLE ricerchepers (codiceoperatore TEXT, codicericerca TEXT, "
               "NomeVista TEXT, preferito BOOLEAN)");
    }
    void TearDown() override {
        BancoQuery::TearDown();
        std::filesystem::remove_all(cartella);
    }
    void vista(const std::string& nome, bool preferita) {
        esegui("INSERT INTO ricerchepers VALUES ('ROSSI', 'CLI', '" + nome + "', " +
               (preferita ? "1" : "0") + ")");
    }
    // A layout that shows citta first, with this caption, and no nome.
    void salva(const std::string& file, const std::string& nome, const char* titolo) const {
        grid::Layout disposizione;
        const auto colonna = [&](const char* campo, const char* testo, int ordine, bool visibile) {
            disposizione.Columns.push_back({campo, testo, 2000, ordine, visibile, {}});
        };
        colonna("citta", titolo, 0, true);
        colonna("codice", "Codice", 1, true);
        colonna("nome", "Nome", 2, false);
        grid::saveLayout((cartella / file).string(), nome, disposizione);
    }
    void apriConViste(const std::function<void()>& passo) {
        ricerca.SetRecordsetOperatori(tabella("SELECT * FROM operatori"));
        ricerca.SetRecordsetViste(tabella("SELECT * FROM ricerchepers"));
        prova(passo);
    }
    static std::string titolo() { return griglia().Columns().Item(Citta).Caption; }
    static const controls::Button& barra(const char* chiave) {
        return finestra().BarraBase->Item(chiave);
    }
    void clicBarra(const char* chiave) { robot.click(*finestra().BarraBase, pulsante(chiave)); }
    static wxPoint frecciaApri() {
        const wxRect r = finestra().BarraBase->ButtonRect("Apri");
        return {r.GetRight() - 4, r.y + r.height / 2};
    }
    // Chooses the nth entry of the menu of views, from 0.
    void scegliVista(int voce) {
        tests::Script menu;
        menu.then("apre il menu", [&] { robot.click(*finestra().BarraBase, frecciaApri()); });
        menu.then("va alla voce", [&, voce] { robot.pressTimes(voce + 1, WXK_DOWN); });
        bool scelta = false;
        menu.then("sceglie", [&] {
            robot.press(WXK_RETURN);
            scelta = true;
        });
        menu.run([&] { EXPECT_TRUE(robot.waitUntil([&] { return scelta; })); });
    }

    std::filesystem::path cartella;
};

} // namespace norvel::search_window
