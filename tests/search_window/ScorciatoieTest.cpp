// The table of keys that stand for the toolbar's buttons.
#include "search_window/Scorciatoie.h"

#include "platform/grid/model/Navigation.h"
#include "platform/runtime/Text.h"
#include "search_window/Pulsanti.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <utility>

namespace norvel::search_window {
namespace {

TEST(Scorciatoie, EveryCommandHasItsKeyAndTagliaNone) {
    for (const Pulsante& p : pulsantiBarra)
        EXPECT_EQ(testoScorciatoie(p.chiave).empty(), equalsText(p.chiave, "Taglia")) << p.chiave;
    for (const Scorciatoia& s : scorciatoie)
        EXPECT_TRUE(std::ranges::any_of(pulsantiBarra, [&](const Pulsante& p) {
            return equalsText(p.chiave, s.chiave);
        })) << s.chiave;
    EXPECT_EQ(testoScorciatoie("apri"), "Ctrl+Invio; menu: Ctrl+O");
    EXPECT_EQ(testoScorciatoie("stampa"), "Ctrl+P") << "keys are case-blind";
}

TEST(Scorciatoie, NoTwoCommandsShareAKey) {
    std::set<std::pair<int, int>> viste;
    for (const Scorciatoia& s : scorciatoie) {
        EXPECT_TRUE(viste.emplace(s.codice, s.modificatori).second) << s.testo;
        EXPECT_EQ(scorciatoiaDi(s.codice, s.modificatori), &s);
    }
}

TEST(Scorciatoie, NoCommandTakesAKeyThatTheGridOrATextFieldNeeds) {
    const std::set<std::pair<int, int>> prese{{WXK_RETURN, wxMOD_NONE},
                                              {'C', wxMOD_CONTROL},
                                              {'A', wxMOD_CONTROL},
                                              {'V', wxMOD_CONTROL},
                                              {'X', wxMOD_CONTROL},
                                              {'Z', wxMOD_CONTROL},
                                              {'Y', wxMOD_CONTROL},
                                              {WXK_F2, wxMOD_NONE},
                                              {WXK_F4, wxMOD_NONE},
                                              {'G', wxMOD_CONTROL},
                                              {'G', wxMOD_CONTROL | wxMOD_SHIFT},
                                              {'0', wxMOD_CONTROL},
                                              {'0', wxMOD_ALT},
                                              {WXK_LEFT, wxMOD_CONTROL | wxMOD_SHIFT},
                                              {WXK_RIGHT, wxMOD_CONTROL | wxMOD_SHIFT},
                                              {WXK_DOWN, wxMOD_ALT},
                                              {WXK_F4, wxMOD_ALT},
                                              {WXK_ESCAPE, wxMOD_NONE},
                                              {WXK_TAB, wxMOD_NONE},
                                              {WXK_SPACE, wxMOD_NONE}};
    for (const Scorciatoia& s : scorciatoie) {
        EXPECT_FALSE(prese.contains({s.codice, s.modificatori})) << s.testo;
        EXPECT_TRUE(s.modificatori != wxMOD_NONE || s.codice > WXK_START) << s.testo;
    }
}

TEST(Scorciatoie, TheNumberPadRepeatsItsKeysAndOtherModifiersAreOtherKeys) {
    EXPECT_EQ(scorciatoiaDi(WXK_NUMPAD_END, wxMOD_ALT), scorciatoiaDi(WXK_END, wxMOD_ALT));
    EXPECT_EQ(scorciatoiaDi(WXK_NUMPAD_ENTER, wxMOD_CONTROL),
              scorciatoiaDi(WXK_RETURN, wxMOD_CONTROL));
    EXPECT_EQ(scorciatoiaDi('P', wxMOD_CONTROL | wxMOD_ALT), nullptr) << "AltGr writes characters";
    EXPECT_EQ(scorciatoiaDi('P', wxMOD_NONE), nullptr);
    EXPECT_STREQ(scorciatoiaDi('P', wxMOD_CONTROL | wxMOD_SHIFT)->chiave, "configura");
}

TEST(Scorciatoie, TheOperatorsDocumentTellsEachOfThem) {
    std::ifstream file(std::string(NR_SOURCE_DIR) + "/docs/operatori.md");
    const std::string testo{std::istreambuf_iterator<char>(file), {}};
    ASSERT_FALSE(testo.empty());
    for (const Scorciatoia& s : scorciatoie)
        EXPECT_NE(testo.find("| " + std::string(s.testo) + " |"), std::string::npos) << s.testo;
}

} // namespace
} // namespace norvel::search_window
