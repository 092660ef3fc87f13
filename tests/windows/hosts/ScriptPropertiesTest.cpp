// What a script meets before and between searches: properties, names, failures, objects that come
// and go.
#include "tests/windows/hosts/ScriptHost.h"

namespace norvel::tests {
namespace {

using ScriptProperties = Scripts;

TEST_P(ScriptProperties, EveryPropertyIsEmptyBeforeItIsSet) {
    const std::wstring wrote = run({R"(
        Mostra "[" & r.PercorsoPers & r.Percorso & r.User & r.Risposta & r.Modulo & r.Caption & r.StatusBar & _
            r.Toolbar & r.Top & r.Left & r.Height & r.Width & r.WindowsState & r.FilterBar & r.CampoRicerca & _
            r.AbilitaModificaCampi & "]"
        If r.SoloRicerca = False And r.SelezioneMultipla = False Then Mostra TypeName(r.SoloRicerca)
        If TypeName(r.Risposta) = "String" Then Mostra r.Ver)",
                                    R"(
        Mostra("[" + r.PercorsoPers + r.Percorso + r.User + r.Risposta + r.Modulo + r.Caption + r.StatusBar +
            r.Toolbar + r.Top + r.Left + r.Height + r.Width + r.WindowsState + r.FilterBar + r.CampoRicerca +
            r.AbilitaModificaCampi + "]");
        if (r.SoloRicerca === false && r.SelezioneMultipla === false) Mostra("Boolean");
        if (typeof r.Risposta === "string") Mostra(r.Ver);)"});
    EXPECT_EQ(wrote, L"[]\nBoolean\n1.000.094\n");
}

// Numbers become texts by Italian conventions, a field of a recordset its value.
TEST_P(ScriptProperties, TextsOfAnyTypeReadBackAsTexts) {
    const std::wstring wrote = run({R"(
        Dim rs, lato
        lato = 9000
        Set rs = Clienti(3)
        r.Width = lato
        r.Caption = "Perché no? Città"
        r.Modulo = rs.Fields("nome")
        r.Top = 12.5
        r.User = True
        Mostra r.Width & "|" & r.Caption & "|" & r.Modulo & "|" & r.Top & "|" & r.User)",
                                    R"(
        var rs = Clienti(3), lato = 9000;
        r.Width = lato;
        r.Caption = "Perché no? Città";
        r.Modulo = rs.Fields("nome");
        r.Top = 12.5;
        r.User = true;
        Mostra(r.Width + "|" + r.Caption + "|" + r.Modulo + "|" + r.Top + "|" + r.User);)"});
    EXPECT_EQ(wrote, L"9000|Perch\u00E9 no? Citt\u00E0|Nicol\u00F2 1|12,5|True\n");
}

TEST_P(ScriptProperties, SelezioneMultiplaReadsTheWindowsStateNotWhatWasSet) {
    const std::wstring wrote = run({R"(
        r.SelezioneMultipla = True
        If Not r.SelezioneMultipla Then Mostra "False"
        r.WindowsState = 2
        r.SelezioneMultipla = False
        If r.SelezioneMultipla Then Mostra "True"
        r.WindowsState = 0
        If Not r.SelezioneMultipla Then Mostra "False")",
                                    R"(
        r.SelezioneMultipla = true;
        if (r.SelezioneMultipla === false) Mostra("False");
        r.WindowsState = 2;
        r.SelezioneMultipla = false;
        if (r.SelezioneMultipla === true) Mostra("True");
        r.WindowsState = 0;
        if (r.SelezioneMultipla === false) Mostra("False");)"});
    EXPECT_EQ(wrote, L"False\nTrue\nFalse\n");
}

TEST_P(ScriptProperties, ListOfFieldsReadsBackAndAnEmptyOneChangesNothing) {
    const std::wstring wrote = run({R"(
        r.AbilitaModificaCampi = ""
        Mostra "[" & r.AbilitaModificaCampi & "]"
        r.AbilitaModificaCampi = "a;b"
        r.AbilitaModificaCampi = ""
        Mostra r.AbilitaModificaCampi)",
                                    R"(
        r.AbilitaModificaCampi = "";
        Mostra("[" + r.AbilitaModificaCampi + "]");
        r.AbilitaModificaCampi = "a;b";
        r.AbilitaModificaCampi = "";
        Mostra(r.AbilitaModificaCampi);)"});
    EXPECT_EQ(wrote, L"[]\na;b\n");
}

TEST_P(ScriptProperties, NamesAreFoundWhateverTheirCase) {
    const std::wstring wrote = run({R"(
        r.CAMPORICERCA = "codice"
        r.percorso = "C:\Gestione\"
        Set r.RECORDSET = Clienti(1)
        r.ABILITACOMBO
        Mostra r.campoRicerca & " " & r.PERCORSO & " " & r.vER)",
                                    R"(
        r.CAMPORICERCA = "codice";
        r.percorso = "C:\\Gestione\\";
        r.RECORDSET = Clienti(1);
        r.ABILITACOMBO();
        Mostra(r.campoRicerca + " " + r.PERCORSO + " " + r.vER);)"});
    EXPECT_EQ(wrote, L"codice C:\\Gestione\\ 1.000.094\n");
}

// 438: no such member, or not to be used so; 13: a value of the wrong type; 450: wrong arguments;
// 94: Null.
TEST_P(ScriptProperties, MistakesAreErrorsByTheirUsualNumbersAndChangeNothing) {
    const std::wstring wrote = run({R"(
        Dim letto
        r.Caption = "prima"
        On Error Resume Next
        r.Ver = "2": Tenta "scrivere Ver"
        r.Risposta = "x": Tenta "scrivere Risposta"
        letto = r.QueryBase: Tenta "leggere QueryBase"
        letto = r.Recordset: Tenta "leggere Recordset"
        r.Recordset = 5: Tenta "un numero per recordset"
        r.NonEsiste = 1: Tenta "un nome ignoto"
        letto = r.Ricerca(1): Tenta "un argomento in più"
        letto = r.Caption(1): Tenta "un indice"
        r.Caption = Null: Tenta "Null per testo"
        r.SoloRicerca = "forse": Tenta "un testo per Boolean"
        Mostra r.Caption)",
                                    R"(
        r.Caption = "prima";
        Tenta("scrivere Ver", function () { r.Ver = "2"; });
        Tenta("scrivere Risposta", function () { r.Risposta = "x"; });
        Tenta("leggere QueryBase", function () { return r.QueryBase; });
        Tenta("leggere Recordset", function () { return r.Recordset; });
        Tenta("un numero per recordset", function () { r.Recordset = 5; });
        Tenta("un nome ignoto", function () { r.NonEsiste = 1; });
        Tenta("un argomento in più", function () { r.Ricerca(1); });
        Tenta("un indice", function () { return r.Caption(1); });
        Tenta("Null per testo", function () { r.Caption = null; });
        Tenta("un testo per Boolean", function () { r.SoloRicerca = "forse"; });
        Mostra(r.Caption);)"});
    EXPECT_EQ(wrote, L"scrivere Ver: 438\nscrivere Risposta: 438\nleggere QueryBase: 438\n"
                     L"leggere Recordset: 438\nun numero per recordset: 438\nun nome ignoto: 438\n"
                     L"un argomento in pi\u00F9: 450\nun indice: 450\nNull per testo: 94\n"
                     L"un testo per Boolean: 13\nprima\n");
}

TEST_P(ScriptProperties, AFailureSaysWhatItIsAndWhereItComesFrom) {
    const std::wstring wrote = run({R"(
        On Error Resume Next
        Set r.RecordsetViste = r
        Mostra Err.Number & " " & Err.Description & " " & Err.Source)",
                                    R"(
        try {
            r.RecordsetViste = r;
        } catch (e) {
            Mostra((e.number & 0xFFFF) + " " + e.description + " NorvelRicerca.Ricerca");
        })"});
    EXPECT_EQ(wrote, L"13 Tipo non corrispondente NorvelRicerca.Ricerca\n");
}

TEST_P(ScriptProperties, ASecondObjectSharesTheSessionAndSwitchesSoloRicercaOff) {
    const std::wstring wrote = run({R"(
        Dim altra
        r.Modulo = "Clienti"
        r.SoloRicerca = True
        Set altra = CreateObject("NorvelRicerca.Ricerca")
        If Not r.SoloRicerca Then Mostra altra.Modulo
        altra.Modulo = "Articoli"
        altra.SoloRicerca = True
        Mostra r.Modulo
        If r.SoloRicerca Then Mostra "sola ricerca"
        Set altra = Nothing
        If Not r.SoloRicerca Then Mostra "di nuovo no")",
                                    R"(
        r.Modulo = "Clienti";
        r.SoloRicerca = true;
        var altra = new ActiveXObject("NorvelRicerca.Ricerca");
        if (!r.SoloRicerca) Mostra(altra.Modulo);
        altra.Modulo = "Articoli";
        altra.SoloRicerca = true;
        Mostra(r.Modulo);
        if (r.SoloRicerca) Mostra("sola ricerca");
        altra = null;
        CollectGarbage();
        if (!r.SoloRicerca) Mostra("di nuovo no");)"});
    EXPECT_EQ(wrote, L"Clienti\nArticoli\nsola ricerca\ndi nuovo no\n");
}

TEST_P(ScriptProperties, SessionLivesOnWhenEveryObjectIsGone) {
    const std::wstring wrote = run({R"(
        Dim volta
        r.Percorso = "C:\Gestione\"
        r.SelezioneMultipla = True
        For volta = 1 To 50
            Set r = Nothing
            Set r = CreateObject("NorvelRicerca.Ricerca")
        Next
        Mostra r.Percorso)",
                                    R"(
        r.Percorso = "C:\\Gestione\\";
        for (var volta = 1; volta <= 50; ++volta) {
            r = null;
            CollectGarbage();
            r = new ActiveXObject("NorvelRicerca.Ricerca");
        }
        Mostra(r.Percorso);)"});
    EXPECT_EQ(wrote, L"C:\\Gestione\\\n");
}

INSTANTIATE_TEST_SUITE_P(In, ScriptProperties, bothLanguages, nameOfLanguage);

} // namespace
} // namespace norvel::tests
