#include "output/AnteprimaStampa.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <new>

namespace norvel::output {
namespace {

// Prints whose previews are recorded instead of opened.
class AnteprimaStampaTest : public ::testing::Test {
  protected:
    std::vector<grid::PrintSettings> aperte;
    grid::PrintInfo stampa{[this](grid::PrintInfo& info) { aperte.push_back(info); }};
};

TEST_F(AnteprimaStampaTest, ThePageIsSetBeforeThePreviewOpens) {
    anteprimaStampa(stampa, "Ricerca clienti");
    ASSERT_EQ(aperte.size(), 1U);
    EXPECT_EQ(aperte[0].PageHeader, "Ricerca clienti");
    EXPECT_TRUE(aperte[0].PageHeaderFont.Italic);
    EXPECT_EQ(aperte[0].PageFooter, "\\tPage: \\p");
    EXPECT_TRUE(aperte[0].RepeatHeadings);
}

TEST_F(AnteprimaStampaTest, WhatTheDesignCarriesStays) {
    anteprimaStampa(stampa, "x");
    EXPECT_EQ(aperte[0].PreviewCaption, "Anteprima di stampa");
    EXPECT_EQ(aperte[0].PreviewCounter, "Page \\p of \\P");
}

TEST_F(AnteprimaStampaTest, ACaptionChangedByTheHostAppearsInTheHeaderOfTheNextPrint) {
    anteprimaStampa(stampa, "Ricerca clienti");
    anteprimaStampa(stampa, "Ricerca fornitori");
    ASSERT_EQ(aperte.size(), 2U);
    EXPECT_EQ(aperte[1].PageHeader, "Ricerca fornitori");
}

TEST_F(AnteprimaStampaTest, PrintingTwiceLeavesTheSameSettings) {
    anteprimaStampa(stampa, "Ricerca clienti");
    stampa.RepeatHeadings = false;
    stampa.PageFooter = "altro";
    stampa.PageHeaderFont.Italic = false;
    anteprimaStampa(stampa, "Ricerca clienti");
    ASSERT_EQ(aperte.size(), 2U);
    EXPECT_EQ(aperte[1], aperte[0]);
}

TEST_F(AnteprimaStampaTest, EveryErrorIsIgnored) {
    grid::PrintInfo guasta{[](grid::PrintInfo&) { throw Errore(3704, "chiuso"); }};
    EXPECT_NO_THROW(anteprimaStampa(guasta, "Ricerca clienti"));
    EXPECT_EQ(guasta.PageHeader, "Ricerca clienti") << "the steps before it were done";
    grid::PrintInfo piena{[](grid::PrintInfo&) { throw std::bad_alloc(); }};
    EXPECT_NO_THROW(anteprimaStampa(piena, "Ricerca clienti"));
}

} // namespace
} // namespace norvel::output
