#include "tests/windows/hosts/ScriptHost.h"

#include "platform/runtime/WideText.h"

#include <fstream>
#include <stdexcept>

namespace norvel::tests {

namespace {

const Script prelude = {R"(Option Explicit
Dim r, esito
Set r = CreateObject("NorvelRicerca.Ricerca")

Sub Mostra(testo)
    WScript.Echo testo
End Sub

Function Apri(sql)
    Dim rs
    Set rs = CreateObject("ADODB.Recordset")
    rs.CursorLocation = 3
    rs.Open sql, "Provider=SQLite;Data Source=:memory:", 3, 1
    Set Apri = rs
End Function

Function Clienti(n)
    Set Clienti = Apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 200) " & _
        "SELECT i AS codice, 'Nicolò ' || i AS nome FROM n WHERE i <= " & n)
End Function

Sub Prepara(rs)
    r.Caption = "Ricerca clienti"
    r.CampoRicerca = "codice"
    r.WindowsState = 1
    r.StatusBar = 1
    Set r.Recordset = rs
    Set r.RecordsetOperatori = Apri("SELECT '' AS codiceutente, 0 AS ricerchepers WHERE 0")
    Set r.RecordsetViste = Apri("SELECT '' AS codiceoperatore, '' AS codicericerca, '' AS NomeVista, 0 AS preferito WHERE 0")
End Sub

Sub Tenta(cosa)
    If Err.Number = 0 Then Mostra cosa & ": fatto" Else Mostra cosa & ": " & Err.Number
    Err.Clear
End Sub
)",
                        R"(var r = new ActiveXObject("NorvelRicerca.Ricerca"), esito;

function Mostra(testo) {
    WScript.Echo(testo);
}

function Apri(sql) {
    var rs = new ActiveXObject("ADODB.Recordset");
    rs.CursorLocation = 3;
    rs.Open(sql, "Provider=SQLite;Data Source=:memory:", 3, 1);
    return rs;
}

function Clienti(n) {
    return Apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 200) " +
        "SELECT i AS codice, 'Nicolò ' || i AS nome FROM n WHERE i <= " + n);
}

function Prepara(rs) {
    r.Caption = "Ricerca clienti";
    r.CampoRicerca = "codice";
    r.WindowsState = 1;
    r.StatusBar = 1;
    r.Recordset = rs;
    r.RecordsetOperatori = Apri("SELECT '' AS codiceutente, 0 AS ricerchepers WHERE 0");
    r.RecordsetViste = Apri("SELECT '' AS codiceoperatore, '' AS codicericerca, '' AS NomeVista, 0 AS preferito WHERE 0");
}

function Tenta(cosa, azione) {
    try {
        azione();
        Mostra(cosa + ": fatto");
    } catch (e) {
        var numeri = {3: 438, 6: 438, 14: 450}; // Wine's JScript leaves automation's codes as they are
        var numero = e.number & 0xFFFF;
        Mostra(cosa + ": " + (numeri[numero] || numero));
    }
}
)"};

// An error that nobody caught ends a script without a word.
const Script epilogue = {"\nMostra \"(fine)\"\n", "\nMostra(\"(fine)\");\n"};
constexpr std::wstring_view lastLine = L"(fine)\n";

// Windows-1252 has every letter of these scripts.
void write(const std::filesystem::path& path, const std::string& text) {
    constexpr UINT westernEurope = 1252;
    const std::wstring wide = wideText(text);
    std::string bytes(wide.size(), '\0');
    WideCharToMultiByte(westernEurope, 0, wide.data(), static_cast<int>(wide.size()), bytes.data(),
                        static_cast<int>(bytes.size()), nullptr, nullptr);
    std::ofstream(path, std::ios::binary) << bytes;
}

} // namespace

std::string nameOfLanguage(const testing::TestParamInfo<Language>& language) {
    return language.param == Language::VBScript ? "VBScript" : "JScript";
}

std::wstring runScript(Language language, const Script& script,
                       const std::function<void(Program&)>& operate) {
    const auto path =
        scratchFolder() / (language == Language::VBScript ? "ospite.vbs" : "ospite.js");
    write(path, prelude.in(language) + script.in(language) + epilogue.in(language));
    Program host({L"cscript", L"//nologo", path.wstring()});
    try {
        if (operate) operate(host);
        EXPECT_EQ(host.end(), 0U) << narrowText(host.errors());
    } catch (const std::runtime_error& failure) {
        ADD_FAILURE() << failure.what();
    }
    std::wstring wrote = host.output();
    const bool finished = wrote.ends_with(lastLine);
    EXPECT_TRUE(finished) << "the script broke off";
    if (finished) wrote.resize(wrote.size() - lastLine.size());
    return wrote;
}

} // namespace norvel::tests
