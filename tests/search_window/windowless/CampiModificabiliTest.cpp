#include "search_window/CampiModificabili.h"

#include <gtest/gtest.h>

namespace norvel::search_window {
namespace {

TEST(CampiModificabili, NamesAreBlindToCaseAndToBlanksAround) {
    const std::vector<std::string> campi{"Nome", " città ", "SCONTO "};
    EXPECT_TRUE(campoModificabile(campi, "nome"));
    EXPECT_TRUE(campoModificabile(campi, "CITTÀ"));
    EXPECT_TRUE(campoModificabile(campi, "sconto"));
    EXPECT_FALSE(campoModificabile(campi, "codice"));
    EXPECT_FALSE(campoModificabile(campi, "nom"));
}

TEST(CampiModificabili, AnEmptyNameNamesNothing) {
    EXPECT_FALSE(campoModificabile({"", "  "}, ""));
    EXPECT_FALSE(campoModificabile({}, "nome"));
}

} // namespace
} // namespace norvel::search_window
