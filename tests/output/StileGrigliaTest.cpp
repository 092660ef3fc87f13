// The grid's style, as the configuration window sets it and reads it back.
#include "output/StileGriglia.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

namespace norvel::output {
namespace {

class StileGrigliaTest : public testing::Test {
  protected:
    void colonna(const char* campo, int codice) {
        grid::Column nuova;
        nuova.DataField = campo;
        colonne.Add(nuova);
        codici.push_back(codice);
    }
    ParteStile parte() {
        return {colonne, split, stile,
                [this](int i) { return codici[static_cast<std::size_t>(i)]; }};
    }
    grid::ValueItems valori(int i) const { return colonne.Item(i).ValueItems; }
    template <class Azione>
    static std::int64_t errore(Azione azione) {
        try {
            azione();
        } catch (const Errore& e) {
            return e.numero();
        }
        return 0;
    }

    grid::Columns colonne;
    std::vector<int> codici;
    grid::Split split;
    grid::GridStyle stile;
};

constexpr grid::ValueItems casella{true, grid::presentationCheckBox};

TEST_F(StileGrigliaTest, ChekBoxTurnsYesNoColumnsAloneIntoCheckBoxes) {
    colonna("attivo", codiceSiNo);
    colonna("nome", 8);
    colonna("saldo", 6);
    colonna("estero", codiceSiNo);
    impostaChekBox(parte(), true);
    EXPECT_EQ(valori(0), casella);
    EXPECT_EQ(valori(1), grid::ValueItems());
    EXPECT_EQ(valori(2), grid::ValueItems());
    EXPECT_EQ(valori(3), casella);
    impostaChekBox(parte(), false);
    EXPECT_EQ(valori(0), grid::ValueItems());
    EXPECT_EQ(valori(3), grid::ValueItems());
}

TEST_F(StileGrigliaTest, AViewWithoutYesNoColumnsIsUnaffectedByChekBox) {
    colonna("nome", 8);
    colonna("saldo", 11);
    colonne.Item(1).ValueItems = {true, 3};
    impostaChekBox(parte(), true);
    EXPECT_EQ(valori(0), grid::ValueItems());
    EXPECT_EQ(valori(1), (grid::ValueItems{true, 3}));
    impostaChekBox(parte(), false);
    EXPECT_EQ(valori(1), (grid::ValueItems{true, 3})) << "columns of other types are left alone";
}

TEST_F(StileGrigliaTest, EachBoxSetsItsFlagOfTheFirstSplitAndNoOther) {
    const auto prova = [&](void (*imposta)(const ParteStile&, bool), bool grid::Split::*flag) {
        for (const bool attivo : {true, false}) {
            grid::Split atteso = split;
            atteso.*flag = attivo;
            imposta(parte(), attivo);
            EXPECT_EQ(split, atteso);
        }
    };
    prova(impostaRidimensionaColonne, &grid::Split::AllowSizing);
    prova(impostaRidimensionaRighe, &grid::Split::AllowRowSizing);
    prova(impostaSpostaColonne, &grid::Split::AllowColMove);
    prova(impostaLetturaFacilitata, &grid::Split::AlternatingRowStyle);
    EXPECT_EQ(stile, grid::GridStyle());
}

TEST_F(StileGrigliaTest, EvidenziaIsMarqueeTwoOrOne) {
    impostaEvidenziaRiga(parte(), false);
    EXPECT_EQ(stile.MarqueeStyle, 1);
    impostaEvidenziaRiga(parte(), true);
    EXPECT_EQ(stile.MarqueeStyle, 2);
}

TEST_F(StileGrigliaTest, GroupingSwitchesColumnMovingOnAndOffWithIt) {
    impostaRaggruppamento(parte(), true);
    EXPECT_EQ(stile.DataView, 2);
    EXPECT_TRUE(split.AllowColMove);
    impostaRaggruppamento(parte(), false);
    EXPECT_EQ(stile.DataView, 0);
    EXPECT_FALSE(split.AllowColMove);
}

TEST_F(StileGrigliaTest, GroupingOffSwitchesColumnMovingOffThoughItWasTickedByItself) {
    impostaSpostaColonne(parte(), true);
    impostaRaggruppamento(parte(), false);
    EXPECT_FALSE(split.AllowColMove);
}

TEST_F(StileGrigliaTest, ASizeIsReadFromTheCombosText) {
    impostaDimensioneCarattere(parte(), "14");
    EXPECT_EQ(stile.Font.Size, 14);
    impostaDimensioneCarattere(parte(), " 10,5 ");
    EXPECT_EQ(stile.Font.Size, 10.5);
}

TEST_F(StileGrigliaTest, ASizeThatIsNoNumberRaisesAndChangesNothing) {
    stile.Font.Size = 12;
    for (const char* testo : {"grande", "", "12 punti"})
        EXPECT_EQ(errore([&] { impostaDimensioneCarattere(parte(), testo); }), 13) << testo;
    for (const char* testo : {"0", "-8", "1001"})
        EXPECT_EQ(errore([&] { impostaDimensioneCarattere(parte(), testo); }), 380) << testo;
    EXPECT_NE(errore([&] { impostaDimensioneCarattere(parte(), "1e999"); }), 0);
    EXPECT_EQ(stile.Font.Size, 12);
}

TEST_F(StileGrigliaTest, AFontIsTakenWholeItsSizeInSinglePrecision) {
    impostaCarattere(parte(), {"DejaVu Sans", 9.1, true, true});
    EXPECT_EQ(stile.Font, (grid::FontStyle{"DejaVu Sans", static_cast<float>(9.1), true, true}));
    impostaCarattere(parte(), {"DejaVu Serif", 12, false, false});
    EXPECT_EQ(stile.Font, (grid::FontStyle{"DejaVu Serif", 12, false, false}));
}

TEST_F(StileGrigliaTest, WhatWasSetOfAFontBeforeItFailedStays) {
    stile.Font = {"DejaVu Sans", 12, false, false};
    EXPECT_EQ(errore([&] { impostaCarattere(parte(), {"DejaVu Serif", 0, true, true}); }), 380);
    EXPECT_EQ(stile.Font, (grid::FontStyle{"DejaVu Serif", 12, true, false}));
}

TEST_F(StileGrigliaTest, ColoursAreDecimalTexts) {
    impostaColorePari(parte(), "12648447");
    impostaColoreDispari(parte(), "0");
    EXPECT_EQ(split.EvenRowStyle.BackColor, 0x00C0FFFFU);
    EXPECT_EQ(split.OddRowStyle.BackColor, 0U);
    impostaColorePari(parte(), "-2147483633");
    EXPECT_EQ(split.EvenRowStyle.BackColor, 0x8000000FU);
    impostaColorePari(parte(), "2147483663");
    EXPECT_EQ(split.EvenRowStyle.BackColor, 0x8000000FU);
}

TEST_F(StileGrigliaTest, ATextThatIsNoColourRaisesAndChangesNothing) {
    const grid::Split prima = split;
    for (const char* testo : {"", "rosso", "12,5", "4294967296", "-2147483649"}) {
        EXPECT_EQ(errore([&] { impostaColorePari(parte(), testo); }), 13) << testo;
        EXPECT_EQ(errore([&] { impostaColoreDispari(parte(), testo); }), 13) << testo;
    }
    EXPECT_EQ(split, prima);
}

TEST_F(StileGrigliaTest, TheControlsSayWhatTheGridHas) {
    split.EvenRowStyle.BackColor = 0x00C0FFFF;
    split.OddRowStyle.BackColor = 0x8000000F;
    split.AlternatingRowStyle = split.AllowColMove = split.AllowRowSizing = true;
    split.AllowSizing = false;
    stile.MarqueeStyle = grid::marqueeRow;
    EXPECT_EQ(leggiStile(parte()),
              (ControlliStile{"12648447", "-2147483633", true, true, false, true, true}));
    split = {};
    split.AllowSizing = true;
    stile.MarqueeStyle = 3;
    const ControlliStile controlli = leggiStile(parte());
    EXPECT_TRUE(controlli.colonne);
    EXPECT_FALSE(controlli.facilitato || controlli.sposta || controlli.righe ||
                 controlli.evidenzia);
}

TEST_F(StileGrigliaTest, AColourComesBackAsItWasSet) {
    for (const char* testo : {"0", "255", "16777215", "-1", "2147483647"}) {
        impostaColorePari(parte(), testo);
        impostaColoreDispari(parte(), testo);
        EXPECT_EQ(leggiStile(parte()).colorePari, testo);
        EXPECT_EQ(leggiStile(parte()).coloreDispari, testo);
    }
}

} // namespace
} // namespace norvel::output
