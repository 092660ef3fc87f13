// The component's table of members as options of the program.
#include "hosts/norvelricerca/ProprietaRicerca.h"

#include "component/TabellaMembri.h"
#include "hosts/norvelricerca/Aiuto.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace norvel::hosts {
namespace {

TipoProprieta tipo(const std::string& nome) {
    const auto elenco = proprietaDellaRicerca();
    const auto trovata = std::find_if(elenco.begin(), elenco.end(),
                                      [&](const Proprieta& p) { return p.nome == nome; });
    if (trovata == elenco.end()) {
        ADD_FAILURE() << nome << " is no option";
        return {};
    }
    return trovata->tipo;
}

TEST(ProprietaRicerca, EveryPropertyThatCanBeSetHasItsPhraseInTheHelp) {
    for (const Proprieta& p : proprietaDellaRicerca()) {
        if (p.tipo == TipoProprieta::SolaLettura || p.tipo == TipoProprieta::Oggetto) continue;
        EXPECT_FALSE(fraseProprieta(p.nome).empty()) << p.nome;
    }
}

TEST(ProprietaRicerca, KindsFollowTheTable) {
    EXPECT_EQ(tipo("Caption"), TipoProprieta::Testo);
    EXPECT_EQ(tipo("QueryBase"), TipoProprieta::Testo) << "a property that can only be set";
    EXPECT_EQ(tipo("Width"), TipoProprieta::Numero);
    EXPECT_EQ(tipo("SoloRicerca"), TipoProprieta::Booleano);
    EXPECT_EQ(tipo("Risposta"), TipoProprieta::SolaLettura);
    EXPECT_EQ(tipo("Ver"), TipoProprieta::SolaLettura);
    EXPECT_EQ(tipo("RecordsetViste"), TipoProprieta::Oggetto);
}

TEST(ProprietaRicerca, MethodsAreNoOptions) {
    const auto elenco = proprietaDellaRicerca();
    EXPECT_EQ(elenco.size() + 2, tabellaMembri().size());
    EXPECT_TRUE(std::none_of(elenco.begin(), elenco.end(), [](const Proprieta& p) {
        return p.nome == "Ricerca" || p.nome == "abilitaCombo";
    }));
}

} // namespace
} // namespace norvel::hosts
