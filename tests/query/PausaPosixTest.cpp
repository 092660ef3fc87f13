// Typing over this project's own recordsets filters at every key.
#include "query/PausaDigitazione.h"
#include "tests/query/Archivio.h"

#include <gtest/gtest.h>

namespace norvel::query {
namespace {

TEST(Pausa, SuiRecordsetNostriNonSiAspetta) {
    const Archivio archivio;
    EXPECT_EQ(pausaDigitazioneMs(*archivio.apri("SELECT * FROM clienti")), 0);
    EXPECT_EQ(pausaDigitazioneMs(*adodb::makeClientRecordset()), 0);
}

} // namespace
} // namespace norvel::query
