// The print command on the real window.
#include "platform/grid/preview/PreviewWindow.h"
#include "platform/grid/preview/Printers.h"
#include "tests/search_window/Banco.h"

#include <wx/dialog.h>

namespace norvel::search_window {
namespace {

constexpr int inSottofondo =
    adodb::adCmdText | adodb::adAsyncFetch | adodb::adAsyncFetchNonBlocking;

class StampaTest : public Banco {
  protected:
    void SetUp() override {
        Banco::SetUp();
        if (!grid::printerAvailable()) GTEST_SKIP() << "the preview opens where there is a printer";
    }
    static grid::PreviewWindow* anteprima() {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* p = dynamic_cast<grid::PreviewWindow*>(w); p && p->IsShown()) return p;
        return nullptr;
    }
    static std::string contatore() { return anteprima()->Counter->PanelText(1); }
    static grid::PrintInfo& impostazioni() { return finestra().Griglia->PrintInfo(); }
    void clicStampa() { robot.click(*finestra().BarraBase, pulsante("Stampa")); }
    // The command, what the operator does in the preview, Esc.
    tests::Script& stampa(const std::function<void()>& passo) {
        script.then("Stampa", [this] { clicStampa(); })
            .waitFor("anteprima", [] { return anteprima() && anteprima()->IsActive(); })
            .then("guarda", passo)
            .then("Esc", [this] { robot.press(WXK_ESCAPE); })
            .waitFor("chiusa", [] { return !anteprima() && finestra().Finestra->IsActive(); });
        return script;
    }
    void chiudi() {
        script.then("chiude", [] { finestra().Scarica(ModoScarico::Codice); });
    }
};

TEST_F(StampaTest, ThePreviewShowsTheResultUnderTheWindowsCaption) {
    aperta();
    stampa([&] {
        EXPECT_EQ(anteprima()->GetTitle(), "Anteprima di stampa");
        EXPECT_EQ(contatore(), "Page 1 of 3");
        EXPECT_EQ(impostazioni().PageHeader, "Ricerca clienti");
        EXPECT_TRUE(impostazioni().PageHeaderFont.Italic);
        EXPECT_EQ(impostazioni().PageFooter, "\\tPage: \\p");
        EXPECT_TRUE(impostazioni().RepeatHeadings);
        tests::screenshotOfDisplay("stampa");
    });
    chiudi();
    cerca(clienti(120));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(StampaTest, ACaptionChangedByTheHostBeforePrintingAppearsInTheHeaderOfTheNextPrint) {
    aperta();
    stampa([&] { EXPECT_EQ(impostazioni().PageHeader, "Ricerca clienti"); });
    script.then("altro titolo", [&] { finestra().SetCaption("Ricerca fornitori"); });
    stampa([&] { EXPECT_EQ(impostazioni().PageHeader, "Ricerca fornitori"); });
    chiudi();
    cerca(clienti(3));
}

TEST_F(StampaTest, PrintingTwiceLeavesTheSameSettings) {
    grid::PrintSettings prima;
    aperta();
    stampa([&] { prima = impostazioni(); });
    stampa([&] { EXPECT_EQ(static_cast<grid::PrintSettings>(impostazioni()), prima); });
    chiudi();
    cerca(clienti(3));
}

TEST_F(StampaTest, RowsStillComingAreWaitedForAndTheWaitCanBeCancelled) {
    auto rs = apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 20000), "
                   "m(j) AS (SELECT 1 UNION ALL SELECT j + 1 FROM m LIMIT 20000) "
                   "SELECT i AS codice, (SELECT count(*) FROM m WHERE j > i) AS nome FROM n",
                   inSottofondo);
    const auto attesa = [] {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* d = dynamic_cast<wxDialog*>(w); d && d->IsShown()) return d->IsActive();
        return false;
    };
    aperta()
        .then("Stampa", [this] { clicStampa(); })
        .waitFor("l'attesa si vede", attesa)
        .then("Esc",
              [&] {
                  EXPECT_EQ(anteprima(), nullptr);
                  robot.press(WXK_ESCAPE);
              })
        .then("nessuna anteprima", [&] {
            EXPECT_EQ(anteprima(), nullptr);
            EXPECT_FALSE(attesa());
        });
    chiudi();
    cerca(rs);
    EXPECT_TRUE(boxes.shown().empty());
    rs->Cancel();
}

TEST_F(StampaTest, AFetchThatBrokeOffEndsItWithItsError) {
    auto rs = apri("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 300000) "
                   "SELECT i AS codice, CASE WHEN i = 200000 THEN abs(-9223372036854775807 - 1) "
                   "ELSE i END AS nome FROM n",
                   inSottofondo);
    aperta()
        .waitFor("lo dice", [&] { return !boxes.shown().empty(); })
        .then("Stampa", [this] { clicStampa(); })
        .then("l'errore, e nessuna anteprima", [&] {
            EXPECT_EQ(anteprima(), nullptr);
            ASSERT_EQ(boxes.shown().size(), 2U);
            EXPECT_TRUE(boxes.lastText().starts_with(
                "Si \xC3\xA8 verificato un errore nel modulo DllRicercaNorvel.Toolbar1\r"))
                << boxes.lastText();
        });
    chiudi();
    cerca(rs);
}

TEST_F(StampaTest, OverAClosedRecordsetNothingHappens) {
    auto rs = clienti(3);
    aperta()
        .then("chiuso dall'host", [&] { rs->Close(); })
        .then("Stampa", [this] { clicStampa(); })
        .then("niente", [] { EXPECT_EQ(anteprima(), nullptr); });
    chiudi();
    cerca(rs);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(StampaTest, FilterOrderAndAnEmptyResultArePrintedAsTheGridShowsThem) {
    auto rs = clienti(500);
    aperta().then("filtra", [&] { rs->SetFilter(Variant("nome LIKE '*7*'")); });
    stampa([&] { EXPECT_EQ(contatore(), "Page 1 of 3") << "95 of 500 rows"; });
    script.then("niente resta", [&] { rs->SetFilter(Variant("codice = 0")); });
    stampa([&] { EXPECT_EQ(contatore(), "Page 1 of 1"); });
    chiudi();
    cerca(rs);
}

} // namespace
} // namespace norvel::search_window
