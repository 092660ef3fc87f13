// Filter texts and the criteria language: what an unmarked cell makes is one condition of it, and
// says what was typed.
#include "platform/adodb/filter/Criteria.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"
#include "query/VerificaCella.h"
#include "tests/query/Archivio.h"
#include "tests/query/Ostili.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace norvel::query {
namespace {

using adodb::Criteria;
using adodb::FilterClause;
using adodb::FilterOperator;
using adodb::FilterValue;

adodb::DataTypeEnum tipoDi(const std::string& campo) {
    static const std::map<std::string, adodb::DataTypeEnum> tipi = {
        {"nome", adodb::adVarWChar},  {"Annullato", adodb::adVarWChar},
        {"codice", adodb::adInteger}, {"prezzo", adodb::adDouble},
        {"nato", adodb::adDate},      {"attivo", adodb::adBoolean}};
    return tipi.at(campo);
}

TEST(Accettati, IlTestoDigitatoEIlValoreDellaCondizione) {
    for (const std::string& testo : ostili()) {
        for (const auto confronto : {Confronto::Uguale, Confronto::Diverso}) {
            const ColonnaFiltro cella{"nome", testo};
            if (verificaCella(cella, tipoDi, confronto)) continue;
            const Criteria criteri = adodb::parseFilter(componiFiltro({cella}, tipoDi, confronto));
            if (criteri.groups.empty()) continue; // a blank cell
            ASSERT_EQ(criteri.groups.size(), 1U) << testo;
            ASSERT_EQ(criteri.groups[0].size(), 1U) << testo;
            const FilterClause& condizione = criteri.groups[0][0];
            EXPECT_EQ(condizione.name, "nome");
            EXPECT_EQ(condizione.op, confronto == Confronto::Uguale ? FilterOperator::Equal
                                                                    : FilterOperator::NotEqual);
            EXPECT_EQ(condizione.value.kind, FilterValue::Kind::Quoted);
            EXPECT_EQ(condizione.value.text, testo);
        }
    }
}

// Random cells of all classes; blank ones too.
std::vector<ColonnaFiltro> celle(std::mt19937& motore) {
    static const std::vector<std::string> pezzi = {
        "'",  "\"",         "a",       "Rossi",       " ",       "OR",   " AND ", "(",  ")",
        "#",  "[",          "]",       "*",           "%",       "\\",   ";",     "1",  "12,5",
        "-3", "15/03/2011", "[Nulli]", "[Non vuoti]", "[Vuoti]", "NULL", "=",     "<>", "Falso",
        "Si", "à",          "€",       "--",          "LIKE",    "\n",   ".",     "e5"};
    std::vector<ColonnaFiltro> tutte;
    for (const char* campo : {"nome", "prezzo", "nato", "attivo", "codice", "Annullato"}) {
        std::string valore;
        for (std::size_t i = motore() % 4; i > 0; --i)
            valore += pezzi[motore() % pezzi.size()];
        tutte.push_back({campo, valore});
    }
    return tutte;
}

TEST(Accettati, CioCheFannoCelleNonSegnateSiLeggeSempre) {
    std::mt19937 motore(23);
    int letti = 0;
    for (int giro = 0; giro < 60'000; ++giro) {
        const auto confronto = static_cast<Confronto>(2 + motore() % 3);
        std::vector<ColonnaFiltro> buone;
        std::size_t condizioni = 0;
        for (const ColonnaFiltro& cella : celle(motore)) {
            if (verificaCella(cella, tipoDi, confronto)) continue;
            if (trimText(cella.valore).empty()) continue;
            const bool coppia = equalsText(cella.valore, voceNonVuoti) &&
                                classeDiTipo(tipoDi(cella.campo)) == ClasseColonna::Testo;
            condizioni += coppia ? 2 : 1;
            buone.push_back(cella);
        }
        const std::string filtro = componiFiltro(buone, tipoDi, confronto);
        Criteria criteri;
        ASSERT_NO_THROW(criteri = adodb::parseFilter(filtro)) << filtro;
        if (buone.empty()) {
            ASSERT_TRUE(criteri.groups.empty());
            continue;
        }
        ASSERT_EQ(criteri.groups.size(), 1U) << filtro;
        ASSERT_EQ(criteri.groups[0].size(), condizioni) << filtro;
        ++letti;
    }
    EXPECT_GT(letti, 20'000);
}

TEST(Accettati, AncheCioCheFannoPiuValoriSiLegge) {
    std::mt19937 motore(29);
    int letti = 0;
    for (int giro = 0; giro < 20'000; ++giro) {
        const auto confronto = static_cast<Confronto>(2 + motore() % 3);
        std::map<std::string, std::string> valori;
        for (int scelta = 0; scelta < 3; ++scelta)
            for (const ColonnaFiltro& cella : celle(motore))
                if (!verificaCella(cella, tipoDi, confronto))
                    valori[cella.campo] +=
                        (valori[cella.campo].empty() ? "" : separatoreValori) + cella.valore;
        std::vector<ColonnaFiltro> colonne;
        colonne.reserve(valori.size());
        for (const auto& [campo, valore] : valori)
            colonne.push_back({campo, valore});
        const FiltroComposto filtro = componiFiltroMultiplo(colonne, tipoDi, confronto);
        ASSERT_TRUE(filtro.rifiuto.empty());
        Criteria criteri;
        ASSERT_NO_THROW(criteri = adodb::parseFilter(filtro.testo)) << filtro.testo;
        ASSERT_LE(criteri.groups.size(), 729U);
        letti += criteri.groups.size() > 1 ? 1 : 0;
    }
    EXPECT_GT(letti, 5'000);
}

TEST(Accettati, MilleAlternativeSiLeggono) {
    std::string valori;
    for (int i = 0; i < 1000; ++i)
        valori += (i == 0 ? "v" : " ;§; v") + std::to_string(i);
    const auto filtro =
        componiFiltroMultiplo({{"nome", valori}, {"attivo", "si"}}, tipoDi, Confronto::Uguale);
    const Criteria criteri = adodb::parseFilter(filtro.testo);
    ASSERT_EQ(criteri.groups.size(), 1000U);
    for (const auto& gruppo : criteri.groups)
        EXPECT_EQ(gruppo.size(), 2U);
}

} // namespace
} // namespace norvel::query
