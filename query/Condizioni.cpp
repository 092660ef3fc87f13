#include "query/Condizioni.h"

#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Utf8.h"
#include "query/DataTesto.h"
#include "query/TestoSql.h"

#include <array>
#include <cstdio>

namespace norvel::query {

namespace {

std::string condizioneTesto(const std::string& campo, std::string_view valore, Genere genere) {
    std::string condizione = contiene(campo, "Null") ? "[" + campo + "]" : campo;
    const std::string v = sostituisci(valore, "'", "''");
    if (genere == Genere::Contiene) return condizione.append(" LIKE '*").append(v).append("*'");
    condizione.append(genere == Genere::Diverso ? " <> '" : " = '");
    return condizione.append(v).append("'");
}

char cifraBooleana(std::string_view valore) {
    const char prima = lowerAscii(valore.front());
    return valore == "0" || prima == 'n' || prima == 'f' ? '0' : '1';
}

std::vector<std::string> condizioniToken(const std::string& campo, ClasseColonna classe,
                                         Genere genere) {
    const bool testo = classe == ClasseColonna::Testo;
    if (genere == Genere::NonVuoti) {
        if (testo) return {campo + "<>NULL", campo + "<>''"};
        return {campo + "<>NULL"};
    }
    return {campo + (testo && genere == Genere::Vuoti ? "=''" : "=NULL")};
}

} // namespace

Genere genereDi(std::string_view valore, Confronto confronto) {
    if (equalsText(valore, voceVuoti)) return Genere::Vuoti;
    if (equalsText(valore, voceNulli)) return Genere::Nulli;
    if (equalsText(valore, voceNonVuoti)) return Genere::NonVuoti;
    return static_cast<Genere>(confronto);
}

std::vector<std::string> condizioniDi(const std::string& campo, std::string_view valore,
                                      adodb::DataTypeEnum tipo, Genere genere) {
    const ClasseColonna classe = classeDiTipo(tipo);
    if (genere < Genere::Contiene) return condizioniToken(campo, classe, genere);
    if (classe == ClasseColonna::Testo) return {condizioneTesto(campo, valore, genere)};

    std::string condizione = campo + (genere == Genere::Diverso ? "<>" : "=");
    if (classe == ClasseColonna::Data) {
        const auto giorno = dataDiCella(valore);
        if (!giorno) return {};
        return {condizione.append("#").append(*giorno).append("#")};
    }
    if (tipo == adodb::adBoolean) return {condizione + cifraBooleana(valore)};
    return {condizione.append(sostituisci(valore, ",", "."))};
}

std::vector<std::string_view> valoriDi(std::string_view cella) {
    const std::string_view separatore = separatoreValori;
    std::vector<std::string_view> valori;
    for (std::size_t inizio = 0;;) {
        const std::size_t fine = cella.find(separatore, inizio);
        valori.push_back(cella.substr(inizio, fine - inizio));
        if (fine == std::string_view::npos) return valori;
        inizio = fine + separatore.size();
    }
}

ClasseColonna classeDiTipo(adodb::DataTypeEnum tipo) {
    switch (tipo) {
    case adodb::adBoolean:
    case adodb::adCurrency:
    case adodb::adDecimal:
    case adodb::adDouble:
    case adodb::adInteger:
    case adodb::adNumeric:
        return ClasseColonna::Numero;
    case adodb::adDBDate:
    case adodb::adDBTime:
    case adodb::adDBTimeStamp:
    case adodb::adDate:
        return ClasseColonna::Data;
    default:
        return ClasseColonna::Testo;
    }
}

std::optional<std::string> dataDiCella(std::string_view valore) {
    const auto data = leggiGiorno(valore);
    if (!data) return std::nullopt;
    const CivilDate giorno = civilDate(*data);
    std::array<char, 40> testo{};
    std::snprintf(testo.data(), testo.size(), "%02d-%02d-%04d", giorno.day, giorno.month,
                  giorno.year);
    return testo.data();
}

} // namespace norvel::query
