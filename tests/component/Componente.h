// What the tests of the public class share: a window that records what it is asked, boxes that are
// recorded instead of shown, a fresh session.
#pragma once

#include "component/Ricerca.h"
#include "component/VariabiliGlobali.h"
#include "platform/runtime/MessageBox.h"
#include "search_window/FinestraRicerca.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace norvel {

// How a failed expectation shows an Errore.
inline void PrintTo(const Errore& errore, std::ostream* uscita) {
    *uscita << errore.numero() << " - " << errore.descrizione();
}

} // namespace norvel

namespace norvel::tests {

// A search window without a display. Each call is a line of the record; a call may have something
// to do first (fail, look at the session, call the class again).
class FinestraRegistrata final : public search_window::FinestraRicerca {
  public:
    using Registro = std::vector<std::string>;
    using Azioni = std::map<std::string, std::function<void()>>;

    FinestraRegistrata(Registro& registro, Azioni& azioni) : registro_(registro), azioni_(azioni) {}

    void SetStatusBarVisible(bool visible) override { nota("StatusBar.Visible", visible); }
    void SetBarraBaseVisible(bool visible) override { nota("BarraBase.Visible", visible); }
    void SetCaption(const std::string& caption) override { nota("Caption", caption); }
    void SetHeight(float twips) override { nota("Height", twips); }
    void SetWidth(float twips) override { nota("Width", twips); }
    void SetTop(float twips) override { nota("Top", twips); }
    void SetLeft(float twips) override { nota("Left", twips); }
    void SetWindowState(int state) override { nota("WindowState", state); }
    void centraForm() override { nota("centraForm", ""); }
    void SetRecordset(adodb::RecordsetRef recordset) override {
        righe = std::move(recordset);
        nota("Recordset", righe ? "" : "Nothing");
    }
    void ImpostaStileGriglia() override { nota("ImpostaStileGriglia", ""); }
    void CollegaGriglia() override { nota("DataSource", ""); }
    int NumeroColonne() const override { return static_cast<int>(combo.size()); }
    bool FilterCombo(int colonna) const override { return combo.at(colonna); }
    void SetFilterCombo(int colonna, bool value) override {
        combo.at(colonna) = value;
        nota("FilterCombo", colonna, value);
    }
    void SetButtonVisible(std::string_view key, bool visible) override {
        nota("Button", key, visible);
    }
    void Show(bool modale) override { nota("Show", modale ? "modal" : "modeless"); }

    std::vector<bool> combo{false, true, false}; // of the columns, as a styling left them
    adodb::RecordsetRef righe;

  private:
    template <class... Valori>
    void nota(const std::string& chiamata, const Valori&... valori) {
        std::ostringstream riga;
        riga << std::boolalpha << chiamata;
        ((riga << ' ' << valori), ...);
        std::string testo = riga.str();
        if (testo.back() == ' ') testo.pop_back();
        registro_.push_back(testo);
        const auto azione = azioni_.find(chiamata);
        if (azione != azioni_.end()) azione->second();
    }

    Registro& registro_;
    Azioni& azioni_;
};

class ComponenteTest : public ::testing::Test {
  protected:
    void SetUp() override {
        sessione() = VariabiliGlobali{};
        vecchiBox_ = impostaGestoreMessaggi([this](const Messaggio& messaggio) {
            messaggi.push_back(messaggio);
            return BoxAnswer::Ok;
        });
        vecchiaFonte_ = search_window::impostaFinestraRicerca(
            {[this] { return carica(); }, [this] { return finestra != nullptr; }});
    }

    void TearDown() override {
        search_window::impostaFinestraRicerca(std::move(vecchiaFonte_));
        impostaGestoreMessaggi(std::move(vecchiBox_));
        sessione() = VariabiliGlobali{};
    }

    static VariabiliGlobali& sessione() { return variabiliGlobali(); }

    // Makes a call of the window fail.
    void cade(const std::string& chiamata, std::int64_t numero = 7,
              const std::string& descrizione = "Memoria esaurita") {
        azioni[chiamata] = [=] { throw Errore(numero, descrizione); };
    }

    // The window goes, as after a choice.
    void scarica() { finestra.reset(); }

    std::vector<std::string> registro; // what windows were asked, in order
    FinestraRegistrata::Azioni azioni; // what a call does besides, by its name
    std::vector<Messaggio> messaggi;
    std::unique_ptr<FinestraRegistrata> finestra; // while loaded

  private:
    search_window::FinestraRicerca* carica() {
        if (!finestra) {
            finestra = std::make_unique<FinestraRegistrata>(registro, azioni);
            registro.emplace_back("Load");
            const auto azione = azioni.find("Load");
            if (azione != azioni.end()) {
                auto caduta = std::exchange(finestra, nullptr); // a load that fails leaves none
                azione->second();
                finestra = std::move(caduta);
            }
        }
        return finestra.get();
    }

    BoxHandler vecchiBox_;
    search_window::FonteFinestra vecchiaFonte_;
};

} // namespace norvel::tests
