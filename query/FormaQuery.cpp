#include "query/FormaQuery.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/provider/ConnectionString.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Utf8.h"
#include "query/ElaboraQuery.h"
#include "query/Lessico.h"
#include "query/LessicoFiltro.h"
#include "query/TestoSql.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <vector>

namespace norvel::query {

namespace {

constexpr std::int64_t rifiutata = adodb::dbErrorsInCommand;

Errore erroreForma() {
    return {rifiutata, "Un valore del filtro cambierebbe la forma dell'interrogazione, che non "
                       "viene eseguita."};
}

// A pair of harmless values: what differs between the queries that they give is where values stand.
struct Innocui {
    const char* testo;
    const char* data;
};
constexpr Innocui primi = {"'nra'", "#01-02-2003#"};
constexpr Innocui secondi = {"'nrb'", "#04-05-2006#"};

using Pezzi = std::vector<PezzoFiltro>;

std::string conValori(const Pezzi& pezzi, const Innocui& innocui) {
    std::string filtro;
    for (const PezzoFiltro& pezzo : pezzi) {
        if (pezzo.genere == PezzoFiltro::Genere::Virgolette)
            filtro += innocui.testo;
        else if (pezzo.genere == PezzoFiltro::Genere::Cancelletti)
            filtro += innocui.data;
        else
            filtro += pezzo.testo;
    }
    return filtro;
}

// The lexical rules by which the connection's database may read a query, and whether it may take a
// backslash for an escape: every database may that is not known by its provider or driver.
struct Lettura {
    std::vector<Regole> regole;
    bool barre = false;
};

constexpr std::array<std::string_view, 4> nomiSqlServer = {"SQLOLEDB", "SQLNCLI", "MSOLEDBSQL",
                                                           "SQL Server"};
constexpr std::array<std::string_view, 3> nomiAccess = {"Jet.OLEDB", "ACE.OLEDB",
                                                        "Microsoft Access"};

Lettura letturaDi(const std::string& strConnessione) {
    const adodb::ConnectionString connessione(strConnessione);
    const std::string provider = trimText(connessione.value("Provider").value_or(""));
    if (equalsText(provider, "SQLite")) return {{Regole::Sqlite}};
    const std::string chi = provider + "\n" + connessione.value("Driver").value_or("");
    const auto nominato = [&chi](const auto& nomi) {
        return std::any_of(nomi.begin(), nomi.end(),
                           [&chi](std::string_view nome) { return contiene(chi, nome); });
    };
    switch (riconosciDialetto(strConnessione)) {
    case Dialetto::Sql:
        return {{Regole::SqlServer}, !nominato(nomiSqlServer)};
    case Dialetto::Access:
        return {{Regole::Access}, !nominato(nomiAccess)};
    case Dialetto::MySql:
        return {{Regole::MySql}, true};
    default: // whose neutral notation neither SQL Server nor MySQL reads
        return {{Regole::Access, Regole::Sqlite}, true};
    }
}

// Characters that drivers which convert a statement to the machine's code page turn into a quote
// or a backslash (Microsoft's best-fit tables of the Windows code pages): what stood inside a text
// would end it.
bool divieneVirgoletta(std::string_view testo) {
    constexpr std::array<char32_t, 6> simili = {0x2B9, 0x2BC, 0x2C8, 0x2032, 0xFF07, 0xFF3C};
    for (std::size_t at = 0; at < testo.size();) {
        const CodePoint punto = decodeUtf8(testo, at);
        if (punto.valid && std::find(simili.begin(), simili.end(), punto.value) != simili.end())
            return true;
        at += punto.length;
    }
    return false;
}

// Does the token say what the piece of the filter says? Wildcards change, nothing else may.
bool valoreIntatto(const Simbolo& simbolo, const PezzoFiltro& pezzo, Regole regole, bool barre) {
    const bool testo = simbolo.genere == GenereSimbolo::Testo && simbolo.testo.starts_with('\'');
    if (pezzo.genere == PezzoFiltro::Genere::Cancelletti) // as it was, or rendered
        return testo || (simbolo.genere == GenereSimbolo::Data && simbolo.testo == pezzo.testo);
    if (!testo) return false;
    if (barre && simbolo.testo.find('\\') != std::string_view::npos) return false;
    if (regole != Regole::Sqlite && divieneVirgoletta(simbolo.testo)) return false;
    return valoreDi(simbolo.testo) == sostituisci(valoreDi(pezzo.testo), "*", "%");
}

// The query and its two harmless siblings, rendered.
struct Interrogazioni {
    std::string vera, prima, seconda;
};

bool stessaForma(const Interrogazioni& query, const Pezzi& valori, Regole regole, bool barre) {
    const auto veri = simboliDi(query.vera, regole);
    const auto conPrimi = simboliDi(query.prima, regole);
    const auto conSecondi = simboliDi(query.seconda, regole);
    if (veri.size() != conPrimi.size() || veri.size() != conSecondi.size()) return false;
    std::size_t visti = 0;
    for (std::size_t i = 0; i < veri.size(); ++i) {
        if (conPrimi[i] == conSecondi[i]) {
            if (veri[i] != conPrimi[i]) return false;
            continue;
        }
        if (visti == valori.size() || veri[i].genere != conPrimi[i].genere) return false;
        if (!valoreIntatto(veri[i], valori[visti], regole, barre)) return false;
        ++visti;
    }
    return visti == valori.size();
}

// nullopt where rendering fails.
std::optional<std::string> resa(const std::string& neutra, Dialetto dialetto) {
    try {
        Variant query(neutra);
        return rendiQuery(query, dialetto);
    } catch (const Errore&) {
        return std::nullopt;
    }
}

Pezzi valoriTra(const Pezzi& pezzi) {
    Pezzi valori;
    std::copy_if(pezzi.begin(), pezzi.end(), std::back_inserter(valori),
                 [](const PezzoFiltro& p) { return p.genere != PezzoFiltro::Genere::Resto; });
    return valori;
}

// Raises where a value of the filter changes the shape.
void controllaForma(const Interrogazioni& query, const Pezzi& pezzi,
                    const std::string& strConnessione) {
    const Pezzi valori = valoriTra(pezzi);
    const auto [regole, barre] = letturaDi(strConnessione);
    for (const Regole insieme : regole)
        if (!stessaForma(query, valori, insieme, barre)) throw erroreForma();
}

} // namespace

std::string queryControllata(const ComponiQuery& componi, const std::string& filtro,
                             const std::string& strConnessione) {
    const auto pezzi = pezziDiFiltro(filtro);
    if (!pezzi) throw erroreForma();
    const Dialetto dialetto = riconosciDialetto(strConnessione);
    const auto prima = resa(componi(conValori(*pezzi, primi)), dialetto);
    const auto seconda = resa(componi(conValori(*pezzi, secondi)), dialetto);
    if (!prima || !seconda) { // no value's fault
        Variant neutra(componi(filtro));
        ElaboraQuery(neutra, strConnessione);
        throw Errore(rifiutata, "L'interrogazione non può essere composta.");
    }
    const auto vera = resa(componi(filtro), dialetto);
    if (!vera) throw erroreForma();

    controllaForma({*vera, *prima, *seconda}, *pezzi, strConnessione);
    return *vera;
}

std::string queryControllataNonResa(const ComponiQuery& componi, const std::string& filtro,
                                    const std::string& strConnessione) {
    const auto pezzi = pezziDiFiltro(filtro);
    if (!pezzi) throw erroreForma();
    std::string vera = componi(filtro);
    controllaForma({vera, componi(conValori(*pezzi, primi)), componi(conValori(*pezzi, secondi))},
                   *pezzi, strConnessione);
    return vera;
}

} // namespace norvel::query
