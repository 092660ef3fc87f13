#include "tests/output/Parte.h"

#include "platform/runtime/WholeFile.h"

#include <random>

namespace norvel::output {

namespace fs = std::filesystem;
using namespace adodb;

void BancoEsporta::SetUp() {
    std::random_device random;
    do
        cartella = fs::temp_directory_path() / ("nr_esporta_" + std::to_string(random()));
    while (!fs::create_directory(cartella));
    sessione.gPercorso = cartella.string() + "/";
    sessione.gModulo = "Clienti";
    prima_ = setDocumentOpener([this](const fs::path& aperto, void*) { aperti.push_back(aperto); });
    connessione = makeConnection();
    connessione->Open("Provider=SQLite;Data Source=:memory:");
    connessione->Execute("CREATE TABLE clienti (codice INTEGER, nome TEXT, citta TEXT, importo "
                         "REAL, data DATE, attivo BOOLEAN, foto BLOB)");
    for (const char* riga : {"1, 'Rossi', 'Roma', 12.5, '2011-03-15', 1, x'00'",
                             "2, 'Bianchi', NULL, NULL, NULL, 0, NULL",
                             "3, 'D''Amico', 'Milano', -3, '2012-12-31', NULL, NULL",
                             "4, 'Verdi 100%', 'Romano', 0, '2011-03-16', 1, NULL"})
        connessione->Execute(std::string("INSERT INTO clienti VALUES (") + riga + ")");
    recordset = tabella();
    colonneDa(*recordset, false);
    area.righe = [] { return RowCount{0}; };
}

void BancoEsporta::TearDown() {
    setDocumentOpener(std::move(prima_));
    fs::remove_all(cartella);
}

RecordsetRef BancoEsporta::aperta(const std::string& sql, int opzioni) {
    auto aperto = makeClientRecordset();
    aperto->Open(sql, Variant(std::static_pointer_cast<Object>(connessione)), adOpenStatic,
                 adLockReadOnly, opzioni);
    return aperto;
}

RecordsetRef BancoEsporta::tabella(const std::string& sql) {
    return aperta(sql, adCmdText);
}

RecordsetRef BancoEsporta::tabellaInterrotta() {
    return aperta("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 3000) "
                  "SELECT CASE WHEN i = 2000 THEN abs(-9223372036854775807 - 1) ELSE i END AS "
                  "codice FROM n",
                  adCmdText | adAsyncFetch);
}

void BancoEsporta::colonneDa(Recordset& da, bool visibili) {
    colonne.Clear();
    for (int i = 0; i < da.Fields().Count(); ++i) {
        grid::Column colonna;
        colonna.DataField = colonna.Caption = da.Fields()(i).Name();
        colonna.DataType = da.Fields()(i).Type();
        colonna.Order = i;
        colonna.Visible = visibili;
        colonne.Add(colonna);
    }
}

void BancoEsporta::seleziona(const std::vector<RowCount>& righe, int prima, int ultima) {
    std::vector<Variant> segni;
    const RecordsetRef clone = recordset->Clone();
    for (const RowCount riga : righe) {
        clone->SetAbsolutePosition(riga);
        segni.push_back(clone->Bookmark());
    }
    area.presente = true;
    area.prima = prima;
    area.ultima = ultima;
    area.righe = [n = static_cast<RowCount>(segni.size())] { return n; };
    area.bookmark = [segni](RowCount i) { return segni.at(static_cast<std::size_t>(i)); };
}

ParteEsportazione BancoEsporta::parte() {
    ParteEsportazione p{sessione, colonne, stile, recordset};
    p.titolo = "Ricerca clienti";
    p.area = area;
    p.attendiRighe = [this] { return attende && recordset->WaitFetch(10000); };
    p.esegui = [this](Lavoro& lavoro) {
        if (finisce) return eseguiTutto(lavoro);
        lavoro.passo();
        return false;
    };
    p.clessidra = [this](bool si) { fatti.emplace_back(si ? "clessidra si" : "clessidra no"); };
    p.svuotaAppunti = [this] {
        fatti.emplace_back("svuota");
        appunti.clear();
    };
    p.scriviAppunti = [this](const std::string& testo) {
        fatti.emplace_back("scrivi");
        appunti = testo;
    };
    p.recordsetEsportazione = [this](int& opzioni) {
        if (!esportazione_) esportazione_ = makeClientRecordset();
        opzioni = adCmdText | adAsyncExecute | adAsyncFetchNonBlocking;
        return esportazione_;
    };
    return p;
}

std::string BancoEsporta::file(const std::string& nome) const {
    return fs::exists(cartella / nome) ? readWholeFile(cartella / nome, 1 << 24) : std::string();
}

long BancoEsporta::quantiFile() const {
    long quanti = 0;
    for (const auto& voce : fs::recursive_directory_iterator(cartella))
        quanti += voce.is_regular_file() ? 1 : 0;
    return quanti;
}

} // namespace norvel::output
