#include "platform/runtime/MessageBox.h"
#include "platform/runtime/Text.h"
#include "query/Condizioni.h"
#include "query/FiltroColonne.h"

#include <algorithm>

namespace norvel::query {

namespace {

using Gruppo = std::vector<std::string>; // conditions that hold together
using Alternative = std::vector<Gruppo>;

// The cell's values as alternatives; none where the cell makes no condition.
Alternative alternativeDi(const ColonnaFiltro& colonna, adodb::DataTypeEnum tipo,
                          Confronto confronto) {
    Alternative alternative;
    Gruppo diversi; // the values that the field must all differ from: one alternative
    for (const std::string_view valore : valoriDi(colonna.valore)) {
        if (trimText(valore).empty()) continue;
        if (equalsText(valore, voceTutti)) return {};
        const Genere genere = genereDi(valore, confronto);
        Gruppo condizioni = condizioniDi(colonna.campo, valore, tipo, genere);
        if (genere == Genere::Diverso)
            diversi.insert(diversi.end(), condizioni.begin(), condizioni.end());
        else if (!condizioni.empty())
            alternative.push_back(std::move(condizioni));
    }
    if (!diversi.empty()) alternative.push_back(std::move(diversi));
    return alternative;
}

// True where the columns' alternatives, distributed, stay within bounds. Reckoned before anything
// is distributed.
bool entroILimiti(const std::vector<Alternative>& colonne) {
    std::size_t gruppi = 1;
    std::size_t condizioni = 0; // of the longest group there can be
    for (const Alternative& colonna : colonne) {
        std::size_t lunga = 0;
        for (const Gruppo& gruppo : colonna)
            lunga = std::max(lunga, gruppo.size());
        gruppi *= colonna.size();
        condizioni += lunga;
        if (gruppi > massimoAlternative || lunga > massimoAlternative) return false;
    }
    return gruppi * condizioni <= massimoCondizioni;
}

Alternative distribuite(const std::vector<Alternative>& colonne) {
    Alternative tutte{Gruppo{}};
    for (const Alternative& colonna : colonne) {
        Alternative nuove;
        for (const Gruppo& prima : tutte) {
            for (const Gruppo& seconda : colonna) {
                nuove.push_back(prima);
                nuove.back().insert(nuove.back().end(), seconda.begin(), seconda.end());
            }
        }
        tutte = std::move(nuove);
    }
    return tutte;
}

std::string unito(const Gruppo& gruppo) {
    std::string testo;
    for (const std::string& condizione : gruppo)
        testo.append(testo.empty() ? "" : " AND ").append(condizione);
    return testo;
}

// Alternatives of one condition each stand together in parentheses; of several each in its own, as
// ADO takes them.
std::string scritte(const Alternative& alternative) {
    if (alternative.size() == 1) return unito(alternative.front());
    bool semplici = true;
    for (const Gruppo& gruppo : alternative)
        semplici = semplici && gruppo.size() == 1;
    std::string testo;
    for (const Gruppo& gruppo : alternative) {
        const std::string condizioni = unito(gruppo);
        testo.append(testo.empty() ? "" : " OR ");
        testo.append(gruppo.size() == 1 ? condizioni : "(" + condizioni + ")");
    }
    return semplici ? "(" + testo + ")" : testo;
}

FiltroComposto componi(const std::vector<ColonnaFiltro>& colonne, const TipoDiCampo& tipo,
                       Confronto confronto) {
    std::vector<Alternative> alternative;
    for (const ColonnaFiltro& colonna : colonne) {
        if (trimText(colonna.valore).empty()) continue;
        Alternative sue = alternativeDi(colonna, tipo(colonna.campo), confronto);
        if (!sue.empty()) alternative.push_back(std::move(sue));
    }
    if (!entroILimiti(alternative))
        return {"", "La scelta fatta richiede più di " + std::to_string(massimoAlternative) +
                        " combinazioni di valori: ridurre i valori scelti."};
    return {scritte(distribuite(alternative)), ""};
}

} // namespace

FiltroComposto componiFiltroMultiplo(const std::vector<ColonnaFiltro>& colonne,
                                     const TipoDiCampo& tipo, Confronto confronto) {
    try {
        return componi(colonne, tipo, confronto);
    } catch (const Errore& errore) {
        mostraErroreModulo(errore);
        return {};
    }
}

} // namespace norvel::query
