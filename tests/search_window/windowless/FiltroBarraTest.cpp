#include "search_window/FiltroBarra.h"

#include "platform/runtime/Errore.h"
#include "search_window/Testi.h"

#include <gtest/gtest.h>

namespace norvel::search_window {
namespace {

using query::Confronto;
using Colonne = std::vector<query::ColonnaFiltro>;

adodb::DataTypeEnum tipo(const std::string& campo) {
    if (campo == "prezzo") return adodb::adDouble;
    if (campo == "data") return adodb::adDate;
    if (campo == "manca") throw Errore(3265, "Elemento non trovato");
    return adodb::adVarWChar;
}

FiltroBarra valuta(const Colonne& colonne, bool multiplo = false) {
    return valutaBarra(colonne, tipo, Confronto::Contiene, multiplo);
}

TEST(FiltroBarra, CelleVuoteNonSonoUnFiltro) {
    const FiltroBarra barra = valuta({{"nome", ""}, {"prezzo", " "}});
    EXPECT_TRUE(barra.valido);
    EXPECT_EQ(barra.testo, "");
    EXPECT_EQ(barra.motivi, (std::vector<std::string>{"", ""}));
}

TEST(FiltroBarra, CelleBuoneSonoIlTestoDelFiltro) {
    const FiltroBarra barra = valuta({{"nome", "ros"}, {"prezzo", "12,5"}});
    EXPECT_TRUE(barra.valido);
    EXPECT_EQ(barra.testo, "nome LIKE '*ros*' AND prezzo=12.5");
}

TEST(FiltroBarra, UnaCellaRifiutataNonLasciaNessunFiltroEDiceQualeE) {
    const FiltroBarra barra = valuta({{"nome", "ros"}, {"prezzo", "1 2"}, {"data", "ieri"}});
    EXPECT_FALSE(barra.valido);
    EXPECT_EQ(barra.motivi[0], "");
    EXPECT_EQ(barra.motivi[1], "Qui serve un solo numero, per esempio 12,5");
    EXPECT_EQ(barra.motivi[2], "Qui serve una data, per esempio 15/03/2011");
}

TEST(FiltroBarra, UnCampoCheMancaSegnaLaSuaCellaSenzaMessaggi) {
    int mostrati = 0;
    const auto prima = impostaGestoreMessaggi([&](const Messaggio&) {
        ++mostrati;
        return BoxAnswer::Ok;
    });
    const FiltroBarra barra = valuta({{"manca", "x"}});
    impostaGestoreMessaggi(prima);
    EXPECT_FALSE(barra.valido);
    EXPECT_EQ(barra.motivi[0], "Elemento non trovato");
    EXPECT_EQ(mostrati, 0);
}

TEST(FiltroBarra, PiuValoriSonoAlternative) {
    const Colonne colonne = {{"nome", "A ;§; B"}, {"prezzo", ""}};
    EXPECT_TRUE(contienePiuValori(colonne));
    EXPECT_FALSE(contienePiuValori({{"nome", "A ;B"}}));
    EXPECT_EQ(valuta(colonne, true).testo, "(nome LIKE '*A*' OR nome LIKE '*B*')");
    const FiltroBarra numeri = valuta({{"prezzo", "1 ;§; due"}}, true);
    EXPECT_FALSE(numeri.valido);
    EXPECT_FALSE(numeri.motivi[0].empty()) << "each value is looked at";
}

TEST(FiltroBarra, TroppeAlternativeSonoUnRifiutoDaDire) {
    std::string molti = "0";
    for (int i = 1; i <= 1000; ++i)
        molti += separatoreValori + std::to_string(i);
    const FiltroBarra barra = valuta({{"nome", molti}}, true);
    EXPECT_FALSE(barra.valido);
    EXPECT_FALSE(barra.rifiuto.empty());
    EXPECT_EQ(barra.motivi[0], "");
    EXPECT_EQ(messaggioRifiuto(barra.rifiuto).testo, barra.rifiuto);
}

TEST(Testi, IlConteggioDeiRecordSelezionati) {
    EXPECT_EQ(testoRecordSelezionati(71), "Record selezionati 71");
    EXPECT_EQ(testoRecordSelezionati(0), "Record selezionati 0");
}

} // namespace
} // namespace norvel::search_window
