// The bench of the search window's tests: a host over real rows, an operator at the real window.
#pragma once

#include "component/DatiHost.h"
#include "component/Ricerca.h"
#include "component/VariabiliGlobali.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/grid/Grid.h"
#include "search_window/FrmRicerca.h"
#include "tests/support/Boxes.h"
#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"
#include "tests/support/Script.h"

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/frame.h>

#include <string>

namespace norvel::search_window {

// A fresh session, the rows 1 to n as «codice» and «nome», message boxes answered instead of shown.
class Banco : public ::testing::Test {
  protected:
    void SetUp() override {
        installaFrmRicerca();
        variabiliGlobali() = {};
        ricerca.SetRecordsetOperatori(operatoriVuoti());
        ricerca.SetRecordsetViste(visteVuote());
        ricerca.SetCampoRicerca("codice");
        ricerca.SetCaption("Ricerca clienti");
        ricerca.SetStatusBar("1");
        ricerca.SetFilterBar("1");
        ricerca.SetWindowsState("1");
    }
    void TearDown() override {
        variabiliGlobali() = {};
        EXPECT_FALSE(frmRicercaCaricata()) << "an unload leaves no window behind";
    }

    static adodb::RecordsetRef apri(const std::string& sql, int opzioni = adodb::adCmdText) {
        auto rs = adodb::makeClientRecordset();
        rs->Open(sql, "Provider=SQLite;Data Source=:memory:", adodb::adOpenStatic,
                 adodb::adLockReadOnly, opzioni);
        return rs;
    }
    static adodb::RecordsetRef clienti(int n, int opzioni = adodb::adCmdText) {
        return apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                        std::to_string(n) + ") SELECT i AS codice, 'Cliente ' || i AS nome FROM n" +
                        (n == 0 ? " WHERE 0" : ""),
                    opzioni);
    }

    // The window while it is open.
    static FrmRicerca& finestra() { return *frmRicercaReale(); }
    static const std::string& stato() { return finestra().StatusBar->PanelText(1); }
    // Where a data cell of the nth row on show can be clicked.
    static wxPoint cella(int riga, int colonna = 1) {
        const wxRect r = finestra().Griglia->CellRect(riga, colonna);
        return {r.x + r.width / 4, r.y + r.height / 2};
    }
    static wxPoint pulsante(std::string_view chiave) {
        const wxRect r = finestra().BarraBase->ButtonRect(chiave);
        return {r.x + r.height / 2, r.y + r.height / 2};
    }

    // First step of every script: the window is there, painted, active.
    tests::Script& aperta() { return aperta(script); }
    static tests::Script& aperta(tests::Script& passi) {
        return passi.waitFor("la finestra è aperta", [] {
            return frmRicercaReale() && finestra().Finestra->IsShown() &&
                   finestra().Finestra->IsActive();
        });
    }
    // And 500 ms later ready for Enter.
    tests::Script& pronta() {
        aperta();
        return script.waitFor("la finestra è pronta",
                              [] { return variabiliGlobali().gFinestraPronta; });
    }
    // Opens the search; returns when the window has been unloaded.
    void cerca(adodb::RecordsetRef righe) { cerca(std::move(righe), script); }
    void cerca(adodb::RecordsetRef righe, tests::Script& passi) {
        ricerca.SetRecordset(std::move(righe));
        passi.run([this] { EXPECT_TRUE(ricerca.Cerca().isEmpty()); }, 100000);
    }

    Ricerca ricerca;
    tests::Boxes boxes;
    tests::Robot robot;
    tests::Script script;
};

} // namespace norvel::search_window
