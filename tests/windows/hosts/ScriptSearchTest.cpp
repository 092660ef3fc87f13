// Scripts that search: an operator chooses in the window, the script reads the answer.
#include "tests/windows/hosts/ScriptHost.h"

namespace norvel::tests {
namespace {

const std::wstring title = L"Ricerca clienti";

using ScriptSearch = Scripts;

TEST_P(ScriptSearch, EnterHandsTheCurrentRowBackAndTheResultIsEmpty) {
    const std::wstring wrote = run({R"(
        Dim rs
        Set rs = Clienti(100)
        Prepara rs
        r.CampoRicerca = "NOME"
        esito = r.Ricerca
        If IsEmpty(esito) Then Mostra "vuoto"
        Mostra r.Risposta & "=" & rs.Fields("nome").Value & ", " & rs.AbsolutePosition
        Mostra r.Width & " x " & r.Height)",
                                    R"(
        var rs = Clienti(100);
        Prepara(rs);
        r.CampoRicerca = "NOME";
        esito = r.Ricerca();
        if (esito === undefined) Mostra("vuoto");
        Mostra(r.Risposta + "=" + rs.Fields("nome").Value + ", " + rs.AbsolutePosition);
        Mostra(r.Width + " x " + r.Height);)"},
                                   [](Program& host) {
                                       const Shown window = host.window(title);
                                       press(VK_DOWN, 2);
                                       window.chooseByEnter();
                                   });
    EXPECT_EQ(wrote, L"vuoto\nNicolò 3=Nicolò 3, 3\n11355 x 7000\n");
}

TEST_P(ScriptSearch, DoubleClickHandsTheClickedRowBackAndTheCloseBoxNothing) {
    const std::wstring wrote = run({R"(
        Dim rs
        Set rs = Clienti(100)
        Prepara rs
        r.Ricerca
        If r.Risposta = CStr(rs.Fields("codice").Value) And rs.AbsolutePosition > 3 Then Mostra "riga scelta"
        r.Ricerca
        Mostra "[" & r.Risposta & "]")",
                                    R"(
        var rs = Clienti(100);
        Prepara(rs);
        r.Ricerca();
        if (r.Risposta === String(rs.Fields("codice").Value) && rs.AbsolutePosition > 3) Mostra("riga scelta");
        r.Ricerca();
        Mostra("[" + r.Risposta + "]");)"},
                                   [](Program& host) {
                                       host.window(title).chooseByDoubleClick();
                                       host.window(title).close();
                                   });
    EXPECT_EQ(wrote, L"riga scelta\n[]\n");
}

TEST_P(ScriptSearch, SelectedRowsComeBackEachWithABarAndTheModeLastsOneAnswer) {
    const std::wstring wrote = run({R"(
        Prepara Clienti(100)
        r.SelezioneMultipla = True
        r.Ricerca
        Mostra r.Risposta
        r.Ricerca
        Mostra r.Risposta)",
                                    R"(
        Prepara(Clienti(100));
        r.SelezioneMultipla = true;
        r.Ricerca();
        Mostra(r.Risposta);
        r.Ricerca();
        Mostra(r.Risposta);)"},
                                   [](Program& host) {
                                       const Shown several = host.window(title);
                                       for (const WORD key : {VK_SPACE, VK_DOWN, VK_SPACE, VK_DOWN,
                                                              VK_DOWN, VK_SPACE, VK_UP, VK_UP})
                                           pressHolding(VK_CONTROL, key);
                                       several.chooseByEnter();
                                       const Shown one = host.window(title);
                                       press(VK_DOWN);
                                       one.chooseByEnter();
                                   });
    EXPECT_EQ(wrote, L"1|2|4|\n5\n");
}

TEST_P(ScriptSearch, DoubleClickWithSeveralAllowedGivesTheOneRowAndABar) {
    const std::wstring wrote = run({R"(
        Dim rs
        Set rs = Clienti(100)
        Prepara rs
        r.SelezioneMultipla = True
        r.Ricerca
        If r.Risposta = rs.Fields("codice").Value & "|" Then Mostra "una")",
                                    R"(
        var rs = Clienti(100);
        Prepara(rs);
        r.SelezioneMultipla = true;
        r.Ricerca();
        if (r.Risposta === rs.Fields("codice").Value + "|") Mostra("una");)"},
                                   [](Program& host) { host.window(title).chooseByDoubleClick(); });
    EXPECT_EQ(wrote, L"una\n");
}

// "Apri" with nothing selected asks; Yes takes every row, No none.
TEST_P(ScriptSearch, NothingSelectedAsksWhetherAllAreMeant) {
    const std::wstring wrote =
        run({R"(
        Dim volta
        For volta = 1 To 2
            Prepara Clienti(4)
            r.SelezioneMultipla = True
            r.Ricerca
            Mostra "[" & r.Risposta & "]"
        Next)",
             R"(
        for (var volta = 1; volta <= 2; ++volta) {
            Prepara(Clienti(4));
            r.SelezioneMultipla = true;
            r.Ricerca();
            Mostra("[" + r.Risposta + "]");
        })"},
            [](Program& host) {
                for (const int button : {IDYES, IDNO}) {
                    const Shown window = host.window(title);
                    const Shown box = Shown::boxAfter([&] { window.clickApri(); }, L"Inserimento");
                    EXPECT_EQ(box.words(), L"Inserisco tutti i record?");
                    box.answer(button);
                    window.waitClosed();
                }
            });
    EXPECT_EQ(wrote, L"[1|2|3|4|]\n[]\n");
}

// CmdChiudi is the one way out that leaves an older answer; a browse-only search has no other way
// to keep it.
TEST_P(ScriptSearch, BrowsingHandsNothingBackAndTheButtonChiudiLeavesTheOlderAnswer) {
    const std::wstring wrote = run({R"(
        Prepara Clienti(100)
        r.Ricerca
        r.SoloRicerca = True
        r.SelezioneMultipla = True
        r.Ricerca
        Mostra r.Risposta)",
                                    R"(
        Prepara(Clienti(100));
        r.Ricerca();
        r.SoloRicerca = true;
        r.SelezioneMultipla = true;
        r.Ricerca();
        Mostra(r.Risposta);)"},
                                   [](Program& host) {
                                       host.window(title).chooseByEnter();
                                       const Shown window = host.window(title);
                                       window.doubleClickARow();
                                       window.clickApri();
                                       press(VK_RETURN);
                                       EXPECT_TRUE(window.open());
                                       window.leaveByButton();
                                   });
    EXPECT_EQ(wrote, L"1\n");
}

// Which only a process that never set them shows: a text without a number would be an error.
TEST_P(ScriptSearch, UnsetPlacementAndSizeAreTheScreensCornerAndTheDefaults) {
    RECT seen{};
    const std::wstring wrote = run({R"(
        r.Caption = "Ricerca clienti"
        Set r.Recordset = Clienti(3)
        r.Ricerca
        Mostra r.Width & " x " & r.Height & " [" & r.Top & r.Left & r.WindowsState & r.Risposta & "]")",
                                    R"(
        r.Caption = "Ricerca clienti";
        r.Recordset = Clienti(3);
        r.Ricerca();
        Mostra(r.Width + " x " + r.Height + " [" + r.Top + r.Left + r.WindowsState + r.Risposta + "]");)"},
                                   [&seen](Program& host) {
                                       const Shown window = host.window(title);
                                       GetWindowRect(window.handle(), &seen);
                                       window.close();
                                   });
    EXPECT_EQ(wrote, L"11355 x 7000 []\n");
    EXPECT_EQ(seen.left, 0);
    EXPECT_EQ(seen.top, 0);
    EXPECT_NEAR(seen.right, 757, 1);
    EXPECT_NEAR(seen.bottom, 467, 1);
}

TEST_P(ScriptSearch, DoubleClickOnAnEmptyResultDoesNothing) {
    const std::wstring wrote = run({R"(
        Prepara Clienti(0)
        r.Ricerca
        Mostra "[" & r.Risposta & "]")",
                                    R"(
        Prepara(Clienti(0));
        r.Ricerca();
        Mostra("[" + r.Risposta + "]");)"},
                                   [](Program& host) {
                                       const Shown window = host.window(title);
                                       window.doubleClickARow();
                                       window.click(window.rows(), 60, 30, 2);
                                       EXPECT_TRUE(window.open());
                                       window.close();
                                   });
    EXPECT_EQ(wrote, L"[]\n");
}

TEST_P(ScriptSearch, AChosenNullIsAnErrorWhereItIsReadAndAnAbortedSearchLeavesTheOlderAnswer) {
    const std::wstring wrote = run({R"(
        Prepara Apri("SELECT 7 AS codice, NULL AS vuoto")
        r.Ricerca
        r.Width = "larga"
        r.Ricerca
        Mostra r.Risposta
        r.Width = 0
        r.CampoRicerca = "vuoto"
        r.Ricerca
        Dim letto
        On Error Resume Next
        letto = r.Risposta: Tenta "leggere Null")",
                                    R"(
        Prepara(Apri("SELECT 7 AS codice, NULL AS vuoto"));
        r.Ricerca();
        r.Width = "larga";
        r.Ricerca();
        Mostra(r.Risposta);
        r.Width = 0;
        r.CampoRicerca = "vuoto";
        r.Ricerca();
        Tenta("leggere Null", function () { return r.Risposta; });)"},
                                   [](Program& host) {
                                       host.window(title).chooseByEnter();
                                       host.window(L"NorvelRicerca").answer(IDOK);
                                       host.window(title).chooseByEnter();
                                   });
    EXPECT_EQ(wrote, L"7\nleggere Null: 94\n");
}

// What goes wrong in a search is told to the operator and not to the script.
TEST_P(ScriptSearch, FailuresAreBoxesAndNoErrorsOfTheScript) {
    const std::wstring wrote =
        run({R"(
        Mostra TypeName(r.Ricerca)
        Prepara Clienti(100)
        r.Width = "larga"
        r.Ricerca
        r.Width = 0
        r.CampoRicerca = "nonesiste"
        r.Ricerca
        Mostra "[" & r.Risposta & "]")",
             R"(
        esito = r.Ricerca();
        Mostra(esito === undefined ? "Empty" : typeof esito);
        Prepara(Clienti(100));
        r.Width = "larga";
        r.Ricerca();
        r.Width = 0;
        r.CampoRicerca = "nonesiste";
        r.Ricerca();
        Mostra("[" + r.Risposta + "]");)"},
            [](Program& host) {
                const std::wstring failed = L"Errore nella funzione NorvelRicerca.Ricerca\n";
                const Shown noRows = host.window(L"NorvelRicerca");
                EXPECT_EQ(noRows.words().find(failed), 0U);
                noRows.answer(IDOK);
                const Shown noNumber = host.window(L"NorvelRicerca");
                EXPECT_EQ(noNumber.words(), failed + L"13 - Tipo non corrispondente");
                noNumber.answer(IDOK);
                const Shown window = host.window(title);
                const Shown noField =
                    Shown::boxAfter([&] { window.doubleClickARow(); }, L"TAMBORIN");
                EXPECT_EQ(noField.words().find(L"Errore nel modulo di ricerca, rivolgersi "
                                               L"all'assistenza\n"),
                          0U);
                noField.answer(IDOK);
                EXPECT_TRUE(window.open());
                window.close();
            });
    EXPECT_EQ(wrote, L"Empty\n[]\n");
}

INSTANTIATE_TEST_SUITE_P(In, ScriptSearch, bothLanguages, nameOfLanguage);

} // namespace
} // namespace norvel::tests
