#include "query/VerificaCella.h"

#include "platform/adodb/filter/Criteria.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"
#include "query/Condizioni.h"

#include <algorithm>

namespace norvel::query {

namespace {

constexpr const char* serveUnNumero = "Qui serve un solo numero, per esempio 12,5";
constexpr const char* serveUnaData = "Qui serve una data, per esempio 15/03/2011";
constexpr const char* jolly = "Con «contiene» il testo cercato non può avere * o %";

// Why the recordset would refuse the condition of one value; nullopt where it would not.
std::optional<std::string> verificaValore(const std::string& campo, std::string_view valore,
                                          adodb::DataTypeEnum tipo, Confronto confronto) {
    const Genere genere = genereDi(valore, confronto);
    const ClasseColonna classe = classeDiTipo(tipo);
    const bool digitato = genere >= Genere::Contiene;
    if (digitato && classe == ClasseColonna::Data && !dataDiCella(valore)) return serveUnaData;
    if (digitato && classe == ClasseColonna::Numero && tipo != adodb::adBoolean &&
        !eUnNumero(valore))
        return serveUnNumero;
    try {
        for (const std::string& condizione : condizioniDi(campo, valore, tipo, genere)) {
            const adodb::Criteria criteri = adodb::parseFilter(condizione);
            if (criteri.groups.size() != 1 || criteri.groups.front().size() != 1)
                return "Il filtro sul campo " + campo + " non è una sola condizione";
        }
    } catch (const Errore& errore) {
        const bool conJolly = valore.find_first_of("*%") != std::string_view::npos;
        if (genere == Genere::Contiene && conJolly) return jolly;
        return "Il filtro non è valido: " + errore.descrizione();
    }
    return std::nullopt;
}

std::string_view senzaBlank(std::string_view testo) {
    const std::size_t inizio = testo.find_first_not_of(' ');
    if (inizio == std::string_view::npos) return {};
    return testo.substr(inizio, testo.find_last_not_of(' ') + 1 - inizio);
}

std::size_t togliCifre(std::string_view& testo) {
    const std::size_t cifre = std::min(testo.find_first_not_of("0123456789"), testo.size());
    testo.remove_prefix(cifre);
    return cifre;
}

void togliUno(std::string_view& testo, std::string_view fra) {
    if (!testo.empty() && fra.find(testo.front()) != std::string_view::npos) testo.remove_prefix(1);
}

} // namespace

bool eUnNumero(std::string_view testo) {
    testo = senzaBlank(testo);
    togliUno(testo, "+-");
    std::size_t cifre = togliCifre(testo);
    togliUno(testo, ",.");
    cifre += togliCifre(testo);
    if (cifre == 0) return false;
    if (testo.empty()) return true;
    if (testo.front() != 'e' && testo.front() != 'E') return false;
    testo.remove_prefix(1);
    togliUno(testo, "+-");
    return togliCifre(testo) > 0 && testo.empty();
}

std::optional<std::string> verificaCella(const ColonnaFiltro& cella, const TipoDiCampo& tipo,
                                         Confronto confronto, bool piuValori) {
    if (trimText(cella.valore).empty()) return std::nullopt;
    try {
        const adodb::DataTypeEnum suo = tipo(cella.campo);
        if (!piuValori) return verificaValore(cella.campo, cella.valore, suo, confronto);
        for (const std::string_view valore : valoriDi(cella.valore)) {
            if (equalsText(valore, voceTutti)) return std::nullopt;
            if (trimText(valore).empty()) continue;
            if (auto motivo = verificaValore(cella.campo, valore, suo, confronto)) return motivo;
        }
    } catch (const Errore& errore) {
        return errore.descrizione();
    }
    return std::nullopt;
}

} // namespace norvel::query
