#include "query/ElaboraQuery.h"

#include "platform/runtime/MessageBox.h"
#include "platform/runtime/Text.h"
#include "query/DataTesto.h"
#include "query/RiscritturaIif.h"
#include "query/TestoSql.h"

#include <algorithm>
#include <limits>

namespace norvel::query {

namespace {

// Characters da (from 1) on, at most quanti of them; a date's text is ASCII but for blanks around.
std::string_view caratteri(std::string_view testo, std::size_t da,
                           std::size_t quanti = std::string_view::npos) {
    return testo.size() < da ? std::string_view() : testo.substr(da - 1, quanti);
}

// The number at the start of the text without sign and leading zeros; "0" where there is none.
std::string cifreIniziali(std::string_view testo) {
    const std::size_t inizio = testo.starts_with('-') || testo.starts_with('+') ? 1 : 0;
    const std::size_t fine = std::min(testo.find_first_not_of("0123456789", inizio), testo.size());
    const std::string_view cifre = testo.substr(inizio, fine - inizio);
    const std::size_t prima = cifre.find_first_not_of('0');
    return prima == std::string_view::npos ? "0" : std::string(cifre.substr(prima));
}

std::string dataResa(std::string_view pezzo, Dialetto dialetto) {
    std::string giorno;
    if (caratteri(pezzo, 5, 1) == "-") {
        giorno.append(caratteri(pezzo, 1, 4)).append("-").append(caratteri(pezzo, 6, 2));
        giorno.append("-").append(pezzo.substr(pezzo.size() - 2));
    } else {
        giorno.append(caratteri(pezzo, 7)).append("-").append(caratteri(pezzo, 1, 2));
        giorno.append("-").append(cifreIniziali(caratteri(pezzo, 4)));
    }
    if (dialetto == Dialetto::Sql) return " CONVERT(DATETIME,'" + giorno + " 00:00:00', 102) ";
    return " DATE_FORMAT('" + giorno + " 00:00:00','%Y-%m-%d %T') ";
}

// The text without its "#", every piece that is a date rendered.
std::string rendiDate(std::string_view testo, Dialetto dialetto) {
    std::string reso;
    reso.reserve(testo.size() + 64);
    for (std::size_t inizio = 0;;) {
        const std::size_t fine = std::min(testo.find('#', inizio), testo.size());
        const std::string_view pezzo = testo.substr(inizio, fine - inizio);
        if (leggiGiorno(pezzo))
            reso += dataResa(pezzo, dialetto);
        else
            reso += pezzo;
        if (fine == testo.size()) return reso;
        inizio = fine + 1;
    }
}

std::string rendiDifferenze(std::string testo, Dialetto dialetto) {
    constexpr std::string_view apertura = "datediff('d',";
    if (dialetto == Dialetto::Sql) return sostituisci(testo, apertura, "datediff(day,");
    if (dialetto == Dialetto::MySql) return sostituisci(testo, apertura, "datediff(");
    return testo;
}

std::string rendiCondizionali(std::string testo, Dialetto dialetto) {
    if (!contiene(testo, " iif(")) return testo;
    if (dialetto == Dialetto::Sql) return riscriviIif(testo);
    if (dialetto == Dialetto::MySql) testo = sostituisci(testo, "iif(", " if(");
    return sostituisci(sostituisci(testo, ";)", ")"), ";", ",");
}

// Every plain SELECT gets TOP 100 PERCENT, which lets SQL Server sort a subquery.
std::string limitaRighe(std::string_view testo) {
    constexpr std::string_view selezione = "SELECT ";
    std::string nuovo;
    nuovo.reserve(testo.size() + 64);
    std::size_t fatto = 0;
    for (std::size_t at = cerca(testo, selezione); at != std::string_view::npos;
         at = cerca(testo, selezione, at + 1)) {
        if (stanno(testo, at, "SELECT DISTINCT") || stanno(testo, at, "SELECT TOP")) continue;
        nuovo.append(testo.substr(fatto, at - fatto)).append("SELECT TOP 100 PERCENT ");
        fatto = at + selezione.size();
    }
    return nuovo.append(testo.substr(fatto));
}

} // namespace

std::string rendiQuery(Variant& strQuery, Dialetto dialetto) {
    std::string testo = trimText(strQuery.toText());
    if (testo.ends_with(';')) testo.pop_back();
    strQuery = testo;

    const bool conDate = std::count(testo.begin(), testo.end(), '#') > 1;
    if (conDate && (dialetto == Dialetto::Sql || dialetto == Dialetto::MySql))
        testo = rendiDate(testo, dialetto);
    testo = rendiCondizionali(rendiDifferenze(std::move(testo), dialetto), dialetto);
    return dialetto == Dialetto::Sql ? limitaRighe(testo) : testo;
}

std::string ElaboraQuery(Variant& strQuery, const std::string& strConnessione) {
    try {
        return rendiQuery(strQuery, riconosciDialetto(strConnessione));
    } catch (const Errore& errore) {
        mostraErroreModulo(errore);
        return "";
    }
}

std::string togliOptionFast(std::string& strQuery) {
    try {
        const std::size_t prima = cerca(strQuery, " OPTION (FAST ");
        if (prima == std::string::npos) return strQuery;
        const std::size_t posizione = caratteriDi(std::string_view(strQuery).substr(0, prima)) + 1;
        if (posizione > std::numeric_limits<std::int16_t>::max()) throw erroreOverflow();
        strQuery.resize(prima + 1);
        return strQuery;
    } catch (const Errore& errore) {
        mostraErroreModulo(errore);
        return "";
    }
}

Variant Nullo(const Variant& valore) {
    return valore.isNull() ? Variant("") : valore;
}

} // namespace norvel::query
