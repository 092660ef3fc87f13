#include "hosts/norvelricerca/DatiDemo.h"

#include "hosts/norvelricerca/DatiDemoElenchi.h"
#include "platform/runtime/Errore.h"

#include <sqlite3.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace norvel::hosts {

namespace {

constexpr std::int64_t numeroErroreDatabase = -2147467259; // E_FAIL, as a provider reports failures

// Pseudo-random numbers of one row, a function of the row's number alone (splitmix64).
class Sorte {
  public:
    explicit Sorte(std::uint64_t seme) : stato_(seme) { stato_ = numero(); }
    std::uint64_t numero() {
        std::uint64_t z = stato_ += 0x9E3779B97F4A7C15U;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    // 0 to n - 1
    std::size_t sotto(std::size_t n) {
        return static_cast<std::size_t>(((numero() >> 32U) * n) >> 32U);
    }
    template <class Elenco>
    const auto& scelta(const Elenco& elenco) {
        return elenco[sotto(elenco.size())];
    }

  private:
    std::uint64_t stato_;
};

struct Comune {
    std::string_view nome;
    std::string_view provincia;
};

// The towns; a province's chief town comes up half the times that the province does.
class Comuni {
  public:
    Comuni() {
        for (const Provincia& provincia : elencoProvince()) {
            inizi_.push_back(comuni_.size());
            aggiungi(provincia);
        }
        inizi_.push_back(comuni_.size());
    }
    const Comune& scelto(Sorte& sorte) const {
        const std::size_t provincia = sorte.sotto(inizi_.size() - 1);
        const std::size_t primo = inizi_[provincia];
        if (sorte.sotto(2) == 0) return comuni_[primo];
        return comuni_[primo + sorte.sotto(inizi_[provincia + 1] - primo)];
    }

  private:
    void aggiungi(const Provincia& provincia) {
        std::string_view resto = provincia.citta;
        while (!resto.empty()) {
            const std::size_t fine = resto.find('|');
            comuni_.push_back({resto.substr(0, fine), provincia.sigla});
            resto = fine == std::string_view::npos ? "" : resto.substr(fine + 1);
        }
    }
    std::vector<Comune> comuni_;
    std::vector<std::size_t> inizi_;
};

// What one row of clienti holds; the texts keep their memory from row to row.
struct Cliente {
    std::string ragioneSociale;
    std::string indirizzo;
    std::string dataNascita; // empty: NULL
    std::string note;
    const Comune* comune = nullptr;
    double fatturato = 0;
    bool attivo = false;
    bool noteNulle = false;
};

void componiRagioneSociale(Sorte& sorte, std::string& testo) {
    testo.clear();
    if (sorte.sotto(3) == 0) {
        testo.append(sorte.scelta(elencoNomi())).append(" ");
        testo.append(sorte.scelta(elencoCognomi()));
        return;
    }
    testo.append(sorte.scelta(elencoAttivita())).append(" ");
    testo.append(sorte.scelta(elencoCognomi())).append(" ");
    if (sorte.sotto(3) == 0) testo.append(sorte.scelta(elencoNomi())).append(" ");
    testo.append(sorte.scelta(elencoForme()));
}

void componiIndirizzo(Sorte& sorte, std::string& testo) {
    testo.clear();
    testo.append(sorte.scelta(elencoVie())).append(" ");
    testo.append(sorte.scelta(elencoIntitolazioni())).append(", ");
    testo.append(std::to_string(1 + sorte.sotto(240)));
    if (sorte.sotto(8) == 0) testo.append("/").append(1, static_cast<char>('A' + sorte.sotto(6)));
}

void appendiDueCifre(std::string& testo, std::size_t numero) {
    testo += static_cast<char>('0' + numero / 10);
    testo += static_cast<char>('0' + numero % 10);
}

void componiData(Sorte& sorte, std::string& testo) {
    testo.clear();
    if (sorte.sotto(40) == 0) return;
    testo.append(std::to_string(1930 + sorte.sotto(75))).append("-");
    appendiDueCifre(testo, 1 + sorte.sotto(12));
    testo.append("-");
    appendiDueCifre(testo, 1 + sorte.sotto(28));
}

void componiNote(Sorte& sorte, Cliente& cliente) {
    cliente.note.clear();
    const std::size_t genere = sorte.sotto(10);
    cliente.noteNulle = genere < 2;
    if (genere < 3) return;
    cliente.note.append(sorte.scelta(elencoNote()));
    if (sorte.sotto(2) == 0) cliente.note.append(" ").append(sorte.scelta(elencoNote()));
}

void componiCliente(std::int64_t codice, const Comuni& comuni, Cliente& cliente) {
    Sorte sorte(static_cast<std::uint64_t>(codice));
    componiRagioneSociale(sorte, cliente.ragioneSociale);
    cliente.comune = &comuni.scelto(sorte);
    componiIndirizzo(sorte, cliente.indirizzo);
    componiData(sorte, cliente.dataNascita);
    cliente.fatturato = static_cast<double>(sorte.sotto(50'000'000)) / 100.0;
    cliente.attivo = sorte.sotto(5) != 0;
    componiNote(sorte, cliente);
}

// The file being written. Every failure is an Errore with SQLite's own words in it.
class Scrittura {
  public:
    explicit Scrittura(const std::filesystem::path& percorso) {
        const auto utf8 = percorso.u8string();
        sqlite3* handle = nullptr;
        const int esito = sqlite3_open_v2(
            reinterpret_cast<const char*>(utf8.c_str()), &handle,
            SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
        db_.reset(handle);
        controlla(esito, SQLITE_OK);
    }
    void esegui(const char* sql) {
        controlla(sqlite3_exec(db_.get(), sql, nullptr, nullptr, nullptr), SQLITE_OK);
    }
    void prepara(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        const int esito = sqlite3_prepare_v2(db_.get(), sql, -1, &statement, nullptr);
        inserimento_.reset(statement);
        controlla(esito, SQLITE_OK);
    }
    void scrivi(std::int64_t codice, const Cliente& cliente) {
        sqlite3_stmt* s = inserimento_.get();
        sqlite3_bind_int64(s, 1, codice);
        testo(2, cliente.ragioneSociale);
        testo(3, cliente.comune->nome);
        testo(4, cliente.comune->provincia);
        testo(5, cliente.indirizzo);
        if (cliente.dataNascita.empty())
            sqlite3_bind_null(s, 6);
        else
            testo(6, cliente.dataNascita);
        sqlite3_bind_double(s, 7, cliente.fatturato);
        sqlite3_bind_int(s, 8, cliente.attivo ? 1 : 0);
        if (cliente.noteNulle)
            sqlite3_bind_null(s, 9);
        else
            testo(9, cliente.note);
        controlla(sqlite3_step(s), SQLITE_DONE);
        sqlite3_reset(s);
    }
    void chiudi() {
        inserimento_.reset();
        db_.reset();
    }

  private:
    struct ChiudiDb {
        void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
    };
    struct ChiudiStatement {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    void testo(int indice, std::string_view valore) {
        sqlite3_bind_text(inserimento_.get(), indice, valore.data(),
                          static_cast<int>(valore.size()), SQLITE_STATIC);
    }
    void controlla(int esito, int atteso) {
        if (esito == atteso) return;
        throw Errore(numeroErroreDatabase, std::string("Impossibile scrivere il database demo: ") +
                                               sqlite3_errmsg(db_.get()));
    }
    std::unique_ptr<sqlite3, ChiudiDb> db_;
    std::unique_ptr<sqlite3_stmt, ChiudiStatement> inserimento_;
};

constexpr const char* schema = R"sql(
CREATE TABLE clienti (
    codice INTEGER PRIMARY KEY,
    ragione_sociale TEXT,
    citta TEXT,
    provincia TEXT,
    indirizzo TEXT,
    data_nascita DATE,
    fatturato NUMERIC,
    attivo BOOLEAN,
    note TEXT
);
CREATE TABLE operatori (codiceutente TEXT PRIMARY KEY, ricerchepers BOOLEAN);
CREATE TABLE ricerchepers (
    codiceoperatore TEXT,
    codicericerca TEXT,
    NomeVista TEXT,
    preferito BOOLEAN,
    PRIMARY KEY (codiceoperatore, codicericerca, NomeVista)
);
INSERT INTO operatori VALUES ('mario', 1), ('anna', 1), ('nicolò', 1), ('ospite', 0);
INSERT INTO ricerchepers VALUES
    ('mario', 'clienti', 'Elenco telefonico', 0),
    ('mario', 'clienti', 'Clienti attivi', 0),
    ('anna', 'clienti', 'Per città', 1),
    ('anna', 'fornitori', 'Elenco breve', 0);
)sql";

// The flush to disk is the commit's: no journal, since an unfinished file is thrown away.
void scriviDatabase(const std::filesystem::path& percorso, std::int64_t righe) {
    Scrittura scrittura(percorso);
    scrittura.esegui("PRAGMA journal_mode=OFF; PRAGMA synchronous=FULL; PRAGMA cache_size=-16000;"
                     "BEGIN EXCLUSIVE");
    scrittura.esegui(schema);
    scrittura.prepara("INSERT INTO clienti VALUES (?,?,?,?,?,?,?,?,?)");
    const Comuni comuni;
    Cliente cliente;
    for (std::int64_t codice = 1; codice <= righe; ++codice) {
        componiCliente(codice, comuni, cliente);
        scrittura.scrivi(codice, cliente);
    }
    scrittura.esegui("COMMIT");
    scrittura.chiudi();
}

} // namespace

void creaDatiDemo(const std::filesystem::path& percorso, std::int64_t righe) {
    if (righe < 0) throw erroreArgomento();
    std::filesystem::path parziale = percorso;
    parziale += ".parziale";
    std::error_code errore;
    std::filesystem::remove(parziale, errore);
    try {
        scriviDatabase(parziale, righe);
        std::filesystem::rename(parziale, percorso, errore);
        if (errore)
            throw Errore(numeroErroreDatabase,
                         "Impossibile scrivere il database demo: " + errore.message());
    } catch (...) {
        std::error_code ignorato;
        std::filesystem::remove(parziale, ignorato);
        throw;
    }
}

} // namespace norvel::hosts
