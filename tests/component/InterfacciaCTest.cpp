// The C interface: called from C (ospite.c), and what only C++ can look at.
#include "tests/component/Componente.h"
#include "tests/component/ospite.h"

#include <gtest/gtest.h>

#include <NorvelRicerca/NorvelRicerca.h>
#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace norvel::tests {
namespace {

class InterfacciaCTest : public ComponenteTest {
  protected:
    void SetUp() override {
        ComponenteTest::SetUp();
        azioni["Show"] = [this] {
            sessione().gRisposta = 4711;
            scarica();
        };
    }
};

#define ASSERT_HOST(call) ASSERT_EQ(call, 0) << "tests/component/ospite.c, that line"

TEST_F(InterfacciaCTest, TellsItsVersionToAHostInC) {
    ASSERT_HOST(ospite_versione());
}

TEST_F(InterfacciaCTest, PutsAndGetsPropertiesOfEveryTypeFromC) {
    ASSERT_HOST(ospite_proprieta());
}

TEST_F(InterfacciaCTest, RunsTheSearchFromCAndGivesTheAnswer) {
    ASSERT_HOST(ospite_ricerca());
    EXPECT_EQ(std::count(registro.begin(), registro.end(), "Show modal"), 1);
    EXPECT_EQ(sessione().gRecordsetOperatori, nullptr);
}

TEST_F(InterfacciaCTest, OpensRecordsetsFromCAndSaysWhyItCannot) {
    ASSERT_HOST(ospite_recordset("Provider=SQLite;Data Source=:memory:",
                                 "Provider=SQLite;Data Source=/non/esiste/clienti.db"));
}

TEST_F(InterfacciaCTest, NullHandlesNamesAndTargetsAreErrorsAndNoCrash) {
    ASSERT_HOST(ospite_nulli());
}

TEST_F(InterfacciaCTest, WrongHandlesAreErrorsAndNoCrash) {
    ASSERT_HOST(ospite_maniglie_sbagliate());
}

TEST_F(InterfacciaCTest, EveryFailureLeavesItsNumberAndText) {
    ASSERT_HOST(ospite_errori());
}

TEST_F(InterfacciaCTest, GivesTheMemberTableToBindingsInOtherLanguages) {
    ASSERT_HOST(ospite_tabella());
}

TEST_F(InterfacciaCTest, ModesAreTheMemberTables) {
    EXPECT_EQ(NR_MEMBER_METHOD, int{modoMetodo});
    EXPECT_EQ(NR_MEMBER_GET, int{modoGet});
    EXPECT_EQ(NR_MEMBER_PUT, int{modoLet});
    EXPECT_EQ(NR_MEMBER_PUTREF, int{modoSet});
    EXPECT_EQ(NR_LOCK_READ_ONLY, int{adodb::adLockReadOnly});
    EXPECT_EQ(NR_LOCK_OPTIMISTIC, int{adodb::adLockOptimistic});
    EXPECT_EQ(NR_FETCH_BACKGROUND, int{adodb::adAsyncFetch});
    EXPECT_EQ(NR_FETCH_NON_BLOCKING, int{adodb::adAsyncFetchNonBlocking});
}

TEST_F(InterfacciaCTest, NoExceptionOfAnyKindCrossesIt) {
    nr_ricerca* ricerca = nr_ricerca_create();
    azioni["FilterCombo"] = [] { throw std::runtime_error("rotto"); };
    EXPECT_EQ(nr_call(ricerca, "abilitaCombo"), NR_ERROR);
    EXPECT_EQ(nr_last_error_number(), 51);
    EXPECT_STREQ(nr_last_error_text(), "Errore interno: rotto");
    azioni["FilterCombo"] = [] { throw std::bad_alloc(); };
    EXPECT_EQ(nr_call(ricerca, "abilitaCombo"), NR_ERROR);
    EXPECT_EQ(nr_last_error_number(), 7);
    azioni["FilterCombo"] = [] { throw 1; };
    EXPECT_EQ(nr_call(ricerca, "abilitaCombo"), NR_ERROR);
    EXPECT_EQ(nr_last_error_number(), 51);
    EXPECT_EQ(nr_ricerca_release(ricerca), NR_OK);
}

TEST_F(InterfacciaCTest, ASearchThatFailsShowsItsBoxAndSucceedsForTheCaller) {
    cade("Caption", 1234, "Guasto di prova");
    nr_ricerca* ricerca = nr_ricerca_create();
    EXPECT_EQ(nr_call(ricerca, "Ricerca"), NR_OK);
    EXPECT_EQ(nr_last_error_number(), 0);
    ASSERT_EQ(messaggi.size(), 1U);
    EXPECT_EQ(messaggi[0].testo,
              "Errore nella funzione NorvelRicerca.Ricerca\r1234 - Guasto di prova");
    nr_ricerca_release(ricerca);
}

TEST_F(InterfacciaCTest, ErrorsBelongToTheThreadThatMadeThem) {
    nr_ricerca* ricerca = nr_ricerca_create();
    EXPECT_EQ(nr_put_text(ricerca, "Colore", "x"), NR_ERROR);
    std::thread([&] {
        EXPECT_EQ(nr_last_error_number(), 0);
        EXPECT_EQ(nr_get_text(nullptr, "Caption"), nullptr);
        EXPECT_EQ(nr_last_error_number(), 91);
    }).join();
    EXPECT_EQ(nr_last_error_number(), 438);
    nr_ricerca_release(ricerca);
}

TEST_F(InterfacciaCTest, AnErrorOfACallInsideAnotherIsNotTheOuterOnes) {
    nr_ricerca* ricerca = nr_ricerca_create();
    azioni["Show"] = [&] {
        EXPECT_EQ(nr_put_text(ricerca, "Colore", "x"), NR_ERROR);
        scarica();
    };
    EXPECT_EQ(nr_call(ricerca, "Ricerca"), NR_OK);
    EXPECT_EQ(nr_last_error_number(), 0);
    nr_ricerca_release(ricerca);
}

TEST_F(InterfacciaCTest, ACallFromAnotherThreadWhileTheWindowIsOpenFailsThere) {
    nr_ricerca* ricerca = nr_ricerca_create();
    azioni["Show"] = [&] {
        std::thread([&] {
            EXPECT_EQ(nr_call(ricerca, "Ricerca"), NR_ERROR);
            EXPECT_EQ(nr_last_error_number(), 430);
            EXPECT_STREQ(nr_last_error_text(),
                         "La finestra di ricerca è aperta in un altro thread");
        }).join();
        scarica();
    };
    EXPECT_EQ(nr_call(ricerca, "Ricerca"), NR_OK);
    nr_ricerca_release(ricerca);
}

TEST_F(InterfacciaCTest, AnObjectReleasedDuringItsOwnSearchLivesUntilTheSearchEnds) {
    nr_ricerca* ricerca = nr_ricerca_create();
    nr_put_boolean(ricerca, "SoloRicerca", 1);
    bool ancora = false;
    azioni["Show"] = [&] {
        EXPECT_EQ(nr_ricerca_release(ricerca), NR_OK);
        ancora = sessione().gSoloRicerca;
        scarica();
    };
    EXPECT_EQ(nr_call(ricerca, "Ricerca"), NR_OK);
    EXPECT_TRUE(ancora);
    EXPECT_FALSE(sessione().gSoloRicerca) << "the object has ended with the call";
    EXPECT_EQ(nr_ricerca_release(ricerca), NR_ERROR);
}

TEST_F(InterfacciaCTest, ARecordsetHeldByTheSearchOutlivesItsHandle) {
    const char* campi[] = {"codiceoperatore", "codicericerca", "NomeVista", "preferito"};
    nr_ricerca* ricerca = nr_ricerca_create();
    nr_recordset* viste = nr_recordset_create(campi, 4);
    ASSERT_NE(viste, nullptr);
    EXPECT_EQ(nr_putref(ricerca, "RecordsetViste", viste), NR_OK);
    EXPECT_EQ(nr_recordset_release(viste), NR_OK);
    ASSERT_NE(sessione().gRecordsetViste, nullptr);
    EXPECT_EQ(sessione().gRecordsetViste->State(), adodb::adStateOpen);
    EXPECT_EQ(sessione().gRecordsetViste->Fields().Count(), 4);
    EXPECT_EQ(sessione().gRecordsetViste->Fields()("nomevista").Name(), "NomeVista");
    nr_ricerca_release(ricerca);
}

TEST_F(InterfacciaCTest, ARecordsetWithoutRowsRefusesAFieldTwice) {
    const char* campi[] = {"codice", "Codice"};
    EXPECT_EQ(nr_recordset_create(campi, 2), nullptr);
    EXPECT_EQ(nr_last_error_number(), 3367);
}

TEST_F(InterfacciaCTest, ManyThreadsMakeUseAndReleaseObjectsAtOnce) {
    std::atomic<int> riusciti{0};
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int numero = 0; numero < 4; ++numero)
        threads.emplace_back([&] {
            for (int giro = 0; giro < 200; ++giro) {
                const char* campi[] = {"a"};
                nr_recordset* righe = nr_recordset_create(campi, 1);
                if (righe && nr_recordset_count(righe) == 0 &&
                    nr_recordset_release(righe) == NR_OK && nr_recordset_count(righe) == -1)
                    ++riusciti;
            }
        });
    for (std::thread& uno : threads)
        uno.join();
    EXPECT_EQ(riusciti, 800);
}

} // namespace
} // namespace norvel::tests
