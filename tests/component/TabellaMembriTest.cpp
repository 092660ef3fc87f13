// The member table against the interface's fixed facts, and calls through it.
#include "component/TabellaMembri.h"

#include "tests/component/Componente.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norvel::tests {
namespace {

TEST(TabellaMembriTest, HasEveryMemberWithItsIdentifierKindAndTypeInInterfaceOrder) {
    constexpr unsigned getLet = modoGet | modoLet;
    struct Atteso {
        const char* nome;
        DispId id;
        unsigned modi;
        TipoMembro tipo;
    };
    const std::vector<Atteso> attesi{
        {"PercorsoPers", 0x68030011, getLet, TipoMembro::Testo},
        {"Percorso", 0x68030010, getLet, TipoMembro::Testo},
        {"User", 0x6803000F, getLet, TipoMembro::Testo},
        {"Risposta", 0x6803000E, modoGet, TipoMembro::Testo},
        {"Modulo", 0x6803000D, getLet, TipoMembro::Testo},
        {"SoloRicerca", 0x68030015, getLet, TipoMembro::Booleano},
        {"Caption", 0x6803000C, getLet, TipoMembro::Testo},
        {"StatusBar", 0x6803000B, getLet, TipoMembro::Testo},
        {"Toolbar", 0x6803000A, getLet, TipoMembro::Testo},
        {"Top", 0x68030009, getLet, TipoMembro::Testo},
        {"Left", 0x68030008, getLet, TipoMembro::Testo},
        {"Height", 0x68030007, getLet, TipoMembro::Testo},
        {"Width", 0x68030006, getLet, TipoMembro::Testo},
        {"WindowsState", 0x68030005, getLet, TipoMembro::Testo},
        {"SelezioneMultipla", 0x68030014, getLet, TipoMembro::Booleano},
        {"FilterBar", 0x68030004, getLet, TipoMembro::Testo},
        {"CampoRicerca", 0x68030003, getLet, TipoMembro::Testo},
        {"AbilitaModificaCampi", 0x68030016, getLet, TipoMembro::Testo},
        {"Ricerca", 0x60030012, modoMetodo, TipoMembro::Variante},
        {"abilitaCombo", 0x60030017, modoMetodo, TipoMembro::Nessuno},
        {"QueryBase", 0x68030018, modoLet, TipoMembro::Testo},
        {"Recordset", 0x68030002, modoSet, TipoMembro::Recordset},
        {"RecordsetOperatori", 0x68030001, modoSet, TipoMembro::Recordset},
        {"RecordsetViste", 0x68030000, modoSet, TipoMembro::Recordset},
        {"Ver", 0x68030013, modoGet, TipoMembro::Testo},
    };
    ASSERT_EQ(tabellaMembri().size(), attesi.size());
    for (std::size_t posto = 0; posto < attesi.size(); ++posto) {
        const Membro& membro = tabellaMembri()[posto];
        EXPECT_EQ(membro.nome, attesi[posto].nome) << posto;
        EXPECT_EQ(membro.id, attesi[posto].id) << membro.nome;
        EXPECT_EQ(membro.modi, attesi[posto].modi) << membro.nome;
        EXPECT_EQ(membro.tipo, attesi[posto].tipo) << membro.nome;
    }
}

TEST(TabellaMembriTest, HasAnAccessorForEachModeAndNoOther) {
    for (const Membro& membro : tabellaMembri()) {
        EXPECT_EQ(membro.leggi != nullptr, (membro.modi & modoGet) != 0) << membro.nome;
        EXPECT_EQ(membro.scrivi != nullptr, (membro.modi & (modoLet | modoSet)) != 0)
            << membro.nome;
        EXPECT_EQ(membro.chiama != nullptr, (membro.modi & modoMetodo) != 0) << membro.nome;
        EXPECT_EQ(membro.nome.data()[membro.nome.size()], '\0') << membro.nome;
    }
}

TEST(TabellaMembriTest, FindsMembersByNameWhateverTheCaseAndByIdentifier) {
    EXPECT_EQ(GetIDsOfNames("CAMPORICERCA"), 0x68030003);
    EXPECT_EQ(GetIDsOfNames("abilitacombo"), 0x60030017);
    EXPECT_EQ(GetIDsOfNames("ricerca"), 0x60030012);
    ASSERT_NE(trovaMembro("ver"), nullptr);
    EXPECT_EQ(trovaMembro("ver")->nome, "Ver");
    ASSERT_NE(trovaMembro(0x6803000E), nullptr);
    EXPECT_EQ(trovaMembro(0x6803000E)->nome, "Risposta");
    EXPECT_EQ(trovaMembro("Risposte"), nullptr);
    EXPECT_EQ(trovaMembro(""), nullptr);
    EXPECT_EQ(trovaMembro(0x6803FFFF), nullptr);
    EXPECT_EQ(trovaMembro(0), nullptr);
}

class ChiamataTest : public ComponenteTest {
  protected:
    Variant chiama(std::string_view nome, unsigned modo, const std::vector<Variant>& valori) {
        return Invoke(ricerca, nome, modo, valori);
    }
    // The Errore of a call that must fail.
    Errore caduta(std::string_view nome, unsigned modo, const std::vector<Variant>& valori) {
        try {
            chiama(nome, modo, valori);
        } catch (const Errore& errore) {
            return errore;
        }
        ADD_FAILURE() << nome << ": no error";
        return {0, ""};
    }

    Ricerca ricerca;
    const Errore membro{438, "Proprietà o metodo non supportati dall'oggetto"};
    const Errore argomenti{450,
                           "Numero di argomenti errato o assegnazione di proprietà non valida"};
    const Errore tipo{13, "Tipo non corrispondente"};
};

TEST_F(ChiamataTest, EveryTextMemberIsPutAndReadByItsIdentifier) {
    for (const Membro& riga : tabellaMembri()) {
        if (riga.tipo != TipoMembro::Testo || riga.modi != (modoGet | modoLet)) continue;
        const Variant valore("valore di " + std::string(riga.nome));
        EXPECT_TRUE(Invoke(ricerca, riga.id, modoLet, {&valore, 1}).isEmpty());
        EXPECT_EQ(Invoke(ricerca, riga.id, modoGet), valore) << riga.nome;
    }
    EXPECT_EQ(sessione().gUser, Variant("valore di User"));
    EXPECT_EQ(sessione().gPercorso, Variant("valore di Percorso"));
    EXPECT_EQ(sessione().gPercorsoPers, Variant("valore di PercorsoPers"));
    EXPECT_EQ(sessione().gTop, Variant("valore di Top"));
    EXPECT_EQ(sessione().gLeft, Variant("valore di Left"));
    EXPECT_EQ(sessione().gCampiModificabili,
              std::vector<std::string>{"valore di AbilitaModificaCampi"});
}

TEST_F(ChiamataTest, ReadsWhatTheClassReads) {
    sessione().gRisposta = 42;
    EXPECT_EQ(chiama("Risposta", modoGet, {}), Variant("42"));
    EXPECT_EQ(chiama("ver", modoGet, {}), Variant("1.000.094"));
    EXPECT_EQ(chiama("SoloRicerca", modoGet, {}), Variant(false));
    sessione().gWindowsState = "2";
    EXPECT_EQ(chiama("SelezioneMultipla", modoGet, {}), Variant(true));
}

TEST_F(ChiamataTest, PutsTheMembersThatCannotBeRead) {
    chiama("QueryBase", modoLet, {"SELECT 1"});
    EXPECT_EQ(sessione().gQueryBase, "SELECT 1");
    const auto righe = adodb::makeClientRecordset();
    const auto operatori = adodb::makeClientRecordset();
    const auto viste = adodb::makeClientRecordset();
    chiama("Recordset", modoSet, {ObjectRef(righe)});
    chiama("RecordsetOperatori", modoSet, {ObjectRef(operatori)});
    chiama("RecordsetViste", modoSet, {ObjectRef(viste)});
    EXPECT_EQ(sessione().gRecordset, righe);
    EXPECT_EQ(sessione().gRecordsetOperatori, operatori);
    EXPECT_EQ(sessione().gRecordsetViste, viste);
    chiama("Recordset", modoSet, {ObjectRef()});
    EXPECT_EQ(sessione().gRecordset, nullptr);
}

TEST_F(ChiamataTest, RunsTheMethods) {
    azioni["Show"] = [this] {
        sessione().gRisposta = "scelta";
        scarica();
    };
    EXPECT_TRUE(chiama("Ricerca", modoMetodo, {}).isEmpty());
    EXPECT_EQ(ricerca.Risposta(), "scelta");
    EXPECT_TRUE(chiama("ABILITACOMBO", modoMetodo, {}).isEmpty());
    EXPECT_EQ(finestra->combo, (std::vector<bool>{true, false, true}));
}

TEST_F(ChiamataTest, AScriptsMethodOrPropertyCallReachesBoth) {
    azioni["Show"] = [this] { scarica(); };
    EXPECT_TRUE(chiama("Ricerca", modoMetodo | modoGet, {}).isEmpty());
    EXPECT_EQ(registro.back(), "Show modal");
    EXPECT_EQ(chiama("Ver", modoMetodo | modoGet, {}), Variant("1.000.094"));
}

TEST_F(ChiamataTest, AHostThatDoesNotKnowLetFromSetReachesBoth) {
    chiama("Caption", modoLet | modoSet, {"Clienti"});
    EXPECT_EQ(ricerca.Caption(), "Clienti");
    const auto righe = adodb::makeClientRecordset();
    chiama("Recordset", modoLet | modoSet, {ObjectRef(righe)});
    EXPECT_EQ(sessione().gRecordset, righe);
}

TEST_F(ChiamataTest, ValuesOfOtherTypesBecomeTheTextOfATextProperty) {
    chiama("Width", modoLet, {9000});
    EXPECT_EQ(sessione().gWidth, Variant("9000"));
    chiama("Height", modoLet, {6000.5});
    EXPECT_EQ(sessione().gHeight, Variant("6000,5"));
    chiama("Toolbar", modoLet, {true});
    EXPECT_EQ(sessione().gToolbar, Variant("True"));
    chiama("Caption", modoLet, {Variant()});
    EXPECT_EQ(sessione().gCaption, Variant(""));
    chiama("Caption", modoLet, {Date{40666}});
    EXPECT_EQ(sessione().gCaption, Variant("03/05/2011"));
}

TEST_F(ChiamataTest, ValuesOfOtherTypesBecomeTheBooleanOfABooleanProperty) {
    chiama("SoloRicerca", modoLet, {-1});
    EXPECT_TRUE(sessione().gSoloRicerca);
    chiama("SoloRicerca", modoLet, {"0"});
    EXPECT_FALSE(sessione().gSoloRicerca);
    chiama("SoloRicerca", modoLet, {"True"});
    EXPECT_TRUE(sessione().gSoloRicerca);
    chiama("SoloRicerca", modoLet, {Variant()});
    EXPECT_FALSE(sessione().gSoloRicerca);
    chiama("SelezioneMultipla", modoLet, {1});
    EXPECT_TRUE(sessione().gSelezioneMultipla);
    EXPECT_EQ(caduta("SoloRicerca", modoLet, {"forse"}), tipo);
}

TEST_F(ChiamataTest, ValuesWithoutAReadingAreRefusedAndNothingChanges) {
    const ObjectRef righe = adodb::makeClientRecordset();
    ricerca.SetCaption("prima");
    EXPECT_EQ(caduta("Caption", modoLet, {Variant::null()}).numero(), 94);
    EXPECT_EQ(caduta("Caption", modoLet, {righe}), tipo);
    EXPECT_EQ(caduta("Caption", modoLet, {Variant(std::vector<Variant>{1, 2})}), tipo);
    EXPECT_EQ(ricerca.Caption(), "prima");
    EXPECT_EQ(caduta("SoloRicerca", modoLet, {Variant::null()}).numero(), 94);
    EXPECT_EQ(caduta("SoloRicerca", modoLet, {righe}), tipo);
}

TEST_F(ChiamataTest, OnlyARecordsetOrNothingGoesIntoARecordsetProperty) {
    const auto righe = adodb::makeClientRecordset();
    ricerca.SetRecordset(righe);
    EXPECT_EQ(caduta("Recordset", modoSet, {ObjectRef(adodb::makeConnection())}), tipo);
    EXPECT_EQ(caduta("Recordset", modoSet, {"clienti"}), tipo);
    EXPECT_EQ(caduta("Recordset", modoSet, {0}), tipo);
    EXPECT_EQ(caduta("Recordset", modoSet, {Variant()}), tipo);
    EXPECT_EQ(caduta("Recordset", modoSet, {Variant::null()}), tipo);
    EXPECT_EQ(sessione().gRecordset, righe);
}

TEST_F(ChiamataTest, AMemberThatIsNotThereIsError438) {
    EXPECT_EQ(caduta("Colore", modoGet, {}), membro);
    EXPECT_EQ(caduta("", modoGet, {}), membro);
    EXPECT_THROW(GetIDsOfNames("Colore"), Errore);
    try {
        Invoke(ricerca, 0x68030019, modoGet);
        FAIL() << "no error";
    } catch (const Errore& errore) {
        EXPECT_EQ(errore, membro);
    }
}

TEST_F(ChiamataTest, AMemberUsedInAModeItDoesNotHaveIsError438) {
    const ObjectRef righe = adodb::makeClientRecordset();
    EXPECT_EQ(caduta("Risposta", modoLet, {"x"}), membro);
    EXPECT_EQ(caduta("Ver", modoLet, {"x"}), membro);
    EXPECT_EQ(caduta("QueryBase", modoGet, {}), membro);
    EXPECT_EQ(caduta("Recordset", modoGet, {}), membro);
    EXPECT_EQ(caduta("Recordset", modoLet, {righe}), membro);
    EXPECT_EQ(caduta("Caption", modoSet, {righe}), membro);
    EXPECT_EQ(caduta("Caption", modoMetodo, {}), membro);
    EXPECT_EQ(caduta("Ricerca", modoGet, {}), membro);
    EXPECT_EQ(caduta("Ricerca", modoLet, {1}), membro);
    EXPECT_TRUE(registro.empty());
}

TEST_F(ChiamataTest, AWrongNumberOfArgumentsIsError450) {
    EXPECT_EQ(caduta("Caption", modoLet, {}), argomenti);
    EXPECT_EQ(caduta("Caption", modoLet, {"a", "b"}), argomenti);
    EXPECT_EQ(caduta("Caption", modoGet, {"a"}), argomenti);
    EXPECT_EQ(caduta("Recordset", modoSet, {}), argomenti);
    EXPECT_EQ(caduta("Ricerca", modoMetodo, {1}), argomenti);
    EXPECT_EQ(caduta("abilitaCombo", modoMetodo | modoGet, {1}), argomenti);
    EXPECT_TRUE(registro.empty());
}

TEST_F(ChiamataTest, ACallThatAsksForNothingOrForOppositesIsError5) {
    EXPECT_EQ(caduta("Caption", 0, {}).numero(), 5);
    EXPECT_EQ(caduta("Caption", 16, {}).numero(), 5);
    EXPECT_EQ(caduta("Caption", modoGet | modoLet, {"a"}).numero(), 5);
    EXPECT_EQ(caduta("Caption", modoGet | 32, {}).numero(), 5);
}

TEST_F(ChiamataTest, WhatTheMemberRaisesPassesThrough) {
    sessione().gRisposta = Variant::null();
    EXPECT_EQ(caduta("Risposta", modoGet, {}).numero(), 94);
    cade("Load", 430, "nessuno schermo");
    EXPECT_EQ(caduta("abilitaCombo", modoMetodo, {}), Errore(430, "nessuno schermo"));
}

} // namespace
} // namespace norvel::tests
