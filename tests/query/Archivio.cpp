#include "tests/query/Archivio.h"

#include <sqlite3.h>

#include <random>
#include <stdexcept>

namespace norvel::query {

namespace {

constexpr const char* contenuto =
    "CREATE TABLE clienti (codice INTEGER PRIMARY KEY, nome TEXT, citta TEXT, note TEXT, nato DATE,"
    " prezzo REAL, attivo BOOLEAN, Annullato TEXT);"
    "INSERT INTO clienti VALUES (1,'Anna','Roma',NULL,'1980-03-15',12.5,1,'si'),"
    "(2,'Bruno',NULL,'','1990-07-01',7,0,'no'),"
    "(3,'Carla d''Ami','Roma','x',NULL,NULL,NULL,NULL),"
    "(4,'Élodie','','y','2000-01-01',100,1,'');"
    "CREATE TABLE segreti (parola TEXT);"
    "INSERT INTO segreti VALUES ('PAROLA-SEGRETA-7391');";

void crea(const std::string& file) {
    sqlite3* db = nullptr;
    const int aperto = sqlite3_open(file.c_str(), &db);
    const int fatto =
        aperto == SQLITE_OK ? sqlite3_exec(db, contenuto, nullptr, nullptr, nullptr) : aperto;
    sqlite3_close(db);
    if (fatto != SQLITE_OK) throw std::runtime_error("l'archivio di prova non si crea");
}

} // namespace

Archivio::Archivio() {
    std::random_device caso;
    do
        file_ =
            std::filesystem::temp_directory_path() / ("nr_query_" + std::to_string(caso()) + ".db");
    while (std::filesystem::exists(file_));
    crea(file_.string());
    connessione_ = "Provider=SQLite;Data Source=" + file_.string();
}

Archivio::~Archivio() {
    std::error_code nessuno;
    std::filesystem::remove(file_, nessuno);
}

void Archivio::aggiungi(const std::string& nome) const {
    sqlite3* db = nullptr;
    sqlite3_stmt* istruzione = nullptr;
    sqlite3_open(file_.string().c_str(), &db);
    sqlite3_exec(db, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    sqlite3_prepare_v2(db, "INSERT INTO clienti (nome) VALUES (?)", -1, &istruzione, nullptr);
    sqlite3_bind_text(istruzione, 1, nome.data(), static_cast<int>(nome.size()), SQLITE_TRANSIENT);
    const int fatto = sqlite3_step(istruzione);
    sqlite3_finalize(istruzione);
    sqlite3_close(db);
    if (fatto != SQLITE_DONE) throw std::runtime_error("la riga non si aggiunge");
}

adodb::RecordsetRef Archivio::apri(const std::string& sql) const {
    auto recordset = adodb::makeClientRecordset();
    recordset->Open(sql, connessione_);
    return recordset;
}

std::string Archivio::righe(const std::string& sql) const {
    const auto recordset = apri(sql);
    std::vector<std::string> tutte;
    for (; !recordset->EOF_(); recordset->MoveNext()) {
        std::vector<std::string> valori;
        valori.reserve(static_cast<std::size_t>(recordset->Fields().Count()));
        for (int i = 0; i < recordset->Fields().Count(); ++i)
            valori.push_back(recordset->Fields()(i).Value().toDisplay());
        tutte.push_back(uniti(valori));
    }
    return uniti(tutte, " / ");
}

std::string Archivio::tutto() const {
    return righe("SELECT type, name, sql FROM sqlite_master") + righe("SELECT * FROM clienti") +
           righe("SELECT * FROM segreti");
}

Messaggi::Messaggi()
    : prima_(impostaGestoreMessaggi([this](const Messaggio& messaggio) {
          visti.push_back(messaggio);
          return BoxAnswer::Ok;
      })) {}

Messaggi::~Messaggi() {
    impostaGestoreMessaggi(prima_);
}

Messaggio messaggioModulo(const std::string& descrizione) {
    return {"Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n" + descrizione, "TAMBORIN",
            BoxIcon::Information, BoxButtons::Ok};
}

std::string uniti(const std::vector<std::string>& testi, const std::string& fra) {
    std::string tutti;
    for (std::size_t i = 0; i < testi.size(); ++i)
        tutti += (i == 0 ? "" : fra) + testi[i];
    return tutti;
}

} // namespace norvel::query
