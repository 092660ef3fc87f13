#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <vector>

namespace norvel {
namespace {

TEST(Errore, IsAValueThatMayBeThrown) {
    try {
        throw Errore(3021, "Record corrente assente");
    } catch (const std::exception& thrown) {
        EXPECT_STREQ(thrown.what(), "Record corrente assente");
        EXPECT_EQ(dynamic_cast<const Errore&>(thrown), Errore(3021, "Record corrente assente"));
    }
    Errore kept = erroreOverflow();
    kept = erroreArgomento();
    EXPECT_EQ(kept, erroreArgomento());
    EXPECT_FALSE(kept == Errore(5, "altro"));
    EXPECT_FALSE(kept == Errore(6, kept.descrizione()));
}

TEST(Errore, TheHostsOwnErrorsHaveItsNumbersAndWords) {
    EXPECT_EQ(erroreTipoNonCorrispondente(), Errore(13, "Tipo non corrispondente"));
    EXPECT_EQ(erroreOverflow(), Errore(6, "Overflow"));
    EXPECT_EQ(erroreArgomento(), Errore(5, "Chiamata di routine o argomento non validi"));
    EXPECT_EQ(erroreOggettoNonImpostato(),
              Errore(91, "Variabile oggetto o variabile del blocco With non impostata"));
    EXPECT_EQ(erroreNull(), Errore(94, "Utilizzo non valido di Null"));
}

} // namespace
} // namespace norvel
