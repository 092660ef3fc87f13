#include "hosts/norvelricerca/FileDemo.h"

#include "hosts/norvelricerca/DatiDemo.h"
#include "platform/runtime/Errore.h"

#include <sqlite3.h>

#include <memory>
#include <string>
#include <system_error>

namespace norvel::hosts {

namespace {

constexpr int erroreFileEsistente = 58; // "Il file esiste già"

// Every table's name and the columns of clienti, in one line.
constexpr const char* impronta =
    "SELECT (SELECT group_concat(name) FROM (SELECT name FROM sqlite_master WHERE type = 'table' "
    "ORDER BY name)) || ':' || (SELECT group_concat(name) FROM pragma_table_info('clienti'))";
constexpr const char* improntaDemo =
    "clienti,operatori,ricerchepers:codice,ragione_sociale,citta,provincia,indirizzo,"
    "data_nascita,fatturato,attivo,note";

struct ChiudiDb {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct ChiudiStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

} // namespace

bool eDatiDemo(const std::filesystem::path& percorso) {
    const auto nome = percorso.u8string();
    sqlite3* handle = nullptr;
    const int aperto = sqlite3_open_v2(reinterpret_cast<const char*>(nome.c_str()), &handle,
                                       SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, ChiudiDb> db(handle);
    if (aperto != SQLITE_OK) return false;
    sqlite3_stmt* preparato = nullptr;
    const int pronto = sqlite3_prepare_v2(db.get(), impronta, -1, &preparato, nullptr);
    const std::unique_ptr<sqlite3_stmt, ChiudiStatement> statement(preparato);
    if (pronto != SQLITE_OK || sqlite3_step(preparato) != SQLITE_ROW) return false;
    const auto* testo = reinterpret_cast<const char*>(sqlite3_column_text(preparato, 0));
    return testo != nullptr && std::string(testo) == improntaDemo;
}

void creaFileDemo(const std::filesystem::path& percorso, std::int64_t righe) {
    std::error_code errore;
    const auto genere = std::filesystem::status(percorso, errore).type();
    const bool libero =
        genere == std::filesystem::file_type::not_found ||
        (genere == std::filesystem::file_type::regular &&
         (std::filesystem::file_size(percorso, errore) == 0 || eDatiDemo(percorso)));
    if (!libero)
        throw Errore(erroreFileEsistente,
                     "«" + percorso.string() +
                         "» esiste già e non è una base dati di esempio: non viene sovrascritto");
    creaDatiDemo(percorso, righe);
}

} // namespace norvel::hosts
