#include "query/FiltroColonne.h"

#include "platform/runtime/MessageBox.h"
#include "platform/runtime/Text.h"
#include "query/Condizioni.h"

namespace norvel::query {

namespace {

// The first position at or behind the end of what opens at da: a text in quotes or hashes, a name
// in brackets.
std::size_t oltreLetterale(std::string_view filtro, std::size_t da) {
    const char chiude = filtro[da] == '[' ? ']' : filtro[da];
    const std::size_t fine = filtro.find(chiude, da + 1);
    return fine == std::string_view::npos ? filtro.size() : fine + 1;
}

bool limitaParola(char c) {
    const bool lettera = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool altro = c == '_' || static_cast<unsigned char>(c) >= 0x80U;
    return !lettera && !altro && !(c >= '0' && c <= '9');
}

bool eUnOr(std::string_view filtro, std::size_t at) {
    return equalsText(filtro.substr(at, 2), "or") && (at == 0 || limitaParola(filtro[at - 1])) &&
           (at + 2 >= filtro.size() || limitaParola(filtro[at + 2]));
}

bool haOrInCima(std::string_view filtro) {
    std::ptrdiff_t parentesi = 0;
    for (std::size_t at = 0; at < filtro.size();) {
        const char c = filtro[at];
        if (c == '\'' || c == '#' || c == '[') {
            at = oltreLetterale(filtro, at); // a doubled quote opens the text anew
            continue;
        }
        if (c == '(') ++parentesi;
        if (c == ')') --parentesi;
        if (parentesi <= 0 && (c == 'o' || c == 'O') && eUnOr(filtro, at)) return true;
        ++at;
    }
    return false;
}

std::string componi(const std::vector<ColonnaFiltro>& colonne, const TipoDiCampo& tipo,
                    Confronto confronto) {
    std::string filtro;
    bool altre = false;
    for (const auto& [campo, valore] : colonne) {
        if (trimText(valore).empty()) continue;
        if (altre) filtro += " AND ";
        altre = true;
        std::string_view prima;
        for (const std::string& condizione :
             condizioniDi(campo, valore, tipo(campo), genereDi(valore, confronto))) {
            filtro.append(prima).append(condizione);
            prima = " AND ";
        }
    }
    return filtro;
}

} // namespace

Confronto confrontoScelto(bool optDiverso, bool optUguale) {
    if (optDiverso) return Confronto::Diverso;
    return optUguale ? Confronto::Uguale : Confronto::Contiene;
}

TipoDiCampo tipiDi(adodb::Recordset& recordset) {
    return [&recordset](const std::string& campo) { return recordset.Fields()(campo).Type(); };
}

std::string componiFiltro(const std::vector<ColonnaFiltro>& colonne, const TipoDiCampo& tipo,
                          Confronto confronto) {
    try {
        return componi(colonne, tipo, confronto);
    } catch (const Errore& errore) {
        mostraErroreModulo(errore);
        return "";
    }
}

std::string traParentesi(std::string_view filtro) {
    if (!haOrInCima(filtro)) return std::string(filtro);
    return std::string("(").append(filtro).append(")");
}

} // namespace norvel::query
