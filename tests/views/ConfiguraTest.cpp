// The configuration window's menu, names and places, without the window.
#include "views/PostiConfigura.h"
#include "views/VociMenu.h"

#include <gtest/gtest.h>

namespace norvel::views {
namespace {

TEST(VociMenuTest, KeysLeadToTheirPagesWhateverTheirCase) {
    EXPECT_EQ(paginaVoce("POSIZIONE"), 0);
    EXPECT_EQ(paginaVoce("visualizza"), 1);
    EXPECT_EQ(paginaVoce("Stile"), 2);
    EXPECT_EQ(paginaVoce("SALVA"), 3);
    EXPECT_EQ(paginaVoce("chiudi"), std::nullopt);
}

TEST(VociMenuTest, AGroupTheNoteOrAnyOtherKeyLeadsToPageZero) {
    for (const char* chiave : {"MULTI1", "MULTI2", "NEWFOLDER", "", "altro"})
        EXPECT_EQ(paginaVoce(chiave), 0) << chiave;
}

TEST(VociMenuTest, TheMenuHoldsTheTextsOfTheDesign) {
    const auto gruppi = gruppiMenu();
    ASSERT_EQ(gruppi.size(), 2U);
    EXPECT_STREQ(gruppi[0].testo, "Configurazione");
    EXPECT_STREQ(gruppi[0].secondoTitolo, "Parametri");
    EXPECT_TRUE(gruppi[0].speciale);
    ASSERT_EQ(gruppi[0].voci.size(), 5U);
    EXPECT_STREQ(gruppi[0].voci[4].descrizione, "Chiususa finestra parametri configurazione");
    EXPECT_STREQ(gruppi[1].testo, "TAMBORIN");
    ASSERT_EQ(gruppi[1].voci.size(), 1U);
    EXPECT_TRUE(gruppi[1].voci[0].nota);
    EXPECT_STREQ(gruppi[1].voci[0].immagine, immaginiMenu[1]);
    EXPECT_STREQ(voceDiPagina(2).testo, "Modifica Stile");
}

TEST(VociMenuTest, NamesAndCaptionAreMadeOfTheSession) {
    VariabiliGlobali sessione;
    EXPECT_EQ(nomeIniziale(sessione), "");
    EXPECT_EQ(titoloConfigura("Configura", sessione), "Configura   --> ");
    sessione.gUser = "ROSSI";
    sessione.gModulo = "CLI";
    EXPECT_EQ(nomeIniziale(sessione), "ROSSICLI");
    EXPECT_EQ(nomeProposto(sessione), "ROSSIPers");
    EXPECT_EQ(titoloConfigura("Configura", sessione), "Configura   --> CLI");
}

TEST(PostiConfiguraTest, PartsStandByTheConstants) {
    const PostiConfigura posti = postiConfigura(12000, 8000, 3600);
    EXPECT_EQ(posti.menu, (Riquadro{0, 0, 3600, 8000}));
    EXPECT_EQ(posti.griglia.left, 3675);
    EXPECT_EQ(posti.griglia.width, 12000 - 3600 - 100);
    EXPECT_EQ(posti.pagina.left, 3675);
    EXPECT_EQ(posti.pagina.top, 2500);
    EXPECT_LE(posti.griglia.top + posti.griglia.height, posti.pagina.top);
    EXPECT_LE(posti.pagina.top + posti.pagina.height, 8000);
}

TEST(PostiConfiguraTest, InAWindowWithoutRoomGridAndPagesKeepRoomForAScrollBar) {
    for (const auto& [larghezza, altezza] : {std::pair{100, 50}, {3600, 2500}, {0, 0}}) {
        const PostiConfigura posti = postiConfigura(larghezza, altezza, 3600);
        for (const Riquadro& parte : {posti.griglia, posti.pagina}) {
            EXPECT_GE(parte.width, 1000);
            EXPECT_GE(parte.height, 1000);
        }
    }
}

TEST(PostiConfiguraTest, ItIsCentredByWholeTwips) {
    EXPECT_EQ(centrata(28800, 16200, 12001, 8001).left, 8399);
    EXPECT_EQ(centrata(28800, 16200, 12001, 8001).top, 4099);
    EXPECT_EQ(centrata(1000, 1000, 1401, 1400).left, -200);
}

} // namespace
} // namespace norvel::views
