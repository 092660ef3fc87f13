// The print preview, used with real keys and the real mouse.
#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/grid/preview/GridPreview.h"
#include "platform/grid/preview/PreviewWindow.h"
#include "platform/grid/preview/Printers.h"
#include "tests/platform/grid/window/GridFixture.h"
#include "tests/support/Boxes.h"
#include "tests/support/Script.h"

#include <wx/textctrl.h>

#include <algorithm>

namespace norvel::tests {
namespace {

using adodb::RowCount;
using grid::PageOrientation;
using grid::PreviewWindow;

class PreviewTest : public GridTest {
  protected:
    static PreviewWindow* preview() {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* p = dynamic_cast<PreviewWindow*>(w); p && p->IsShown()) return p;
        return nullptr;
    }
    static std::string counter() { return preview()->Counter->PanelText(1); }
    // "Page 3 of 12": the page, and how many there are (the fonts of a system decide).
    static std::string counterAt(RowCount page) {
        return "Page " + std::to_string(page) + " of " + std::to_string(pages());
    }
    static RowCount pages() {
        const std::string text = counter();
        return std::stoll(text.substr(text.rfind(' ') + 1));
    }
    // Pages of so many rows, side by side.
    static RowCount across(RowCount rows) {
        RowCount most = 0;
        for (RowCount page = 1; page <= pages(); ++page)
            most = std::max(most, preview()->Job().Layout().PageAt(page).rows);
        return pages() / ((rows + most - 1) / most);
    }
    static std::string zoom() { return preview()->Counter->PanelText(2); }
    static RowCount page() { return preview()->Canvas->Page(); }
    static wxPoint middle() { return preview()->Canvas->Centre(); }
    void clickBar(const char* key) {
        robot_.click(*preview()->Bar, centre(preview()->Bar->ButtonRect(key)));
    }
    // Opens the preview, does the step, and closes it by Esc.
    void look(const std::function<void()>& step) {
        Script script;
        script.waitFor("aperta", [] { return preview() && preview()->IsActive(); })
            .then("guarda", step)
            .then("Esc", [&] { robot_.press(WXK_ESCAPE); });
        script.run([&] { grid::showPreview(*grid_, grid_->PrintInfo()); }, 60000);
        EXPECT_EQ(preview(), nullptr);
    }
    void openPrinted(RowCount rows) {
        openCustomers(rows);
        grid::PrintInfo& info = grid_->PrintInfo();
        info.PageHeader = "Ricerca clienti";
        info.PageHeaderFont.Italic = true;
        info.PageFooter = "\\tPage: \\p";
    }
    void showColumns(const std::vector<std::string>& fields) {
        for (int i = 0; i < grid_->Columns().Count(); ++i) {
            grid::Column& column = grid_->Columns().Item(i);
            column.Visible = std::ranges::find(fields, column.DataField) != fields.end();
        }
        grid_->Changed();
    }
};

TEST_F(PreviewTest, KeysTurnThePagesAndTheCounterTellsWhere) {
    openPrinted(1000);
    look([&] {
        EXPECT_EQ(preview()->GetTitle(), "Anteprima di stampa");
        EXPECT_GT(pages(), 30);
        EXPECT_EQ(counter(), counterAt(1));
        screenshot(*preview(), "anteprima");
        robot_.press(WXK_PAGEDOWN);
        EXPECT_EQ(counter(), counterAt(2));
        robot_.press(WXK_END);
        EXPECT_EQ(counter(), counterAt(pages()));
        screenshot(*preview(), "anteprima-ultima");
        robot_.press(WXK_PAGEDOWN);
        EXPECT_EQ(page(), pages()) << "nothing behind the last";
        robot_.press(WXK_PAGEUP);
        EXPECT_EQ(counter(), counterAt(pages() - 1));
        robot_.press(WXK_HOME);
        EXPECT_EQ(counter(), counterAt(1));
        robot_.press(WXK_PAGEUP);
        EXPECT_EQ(counter(), counterAt(1));
    });
    EXPECT_TRUE(robot_.waitUntil([&] { return grid_->HasFocus(); }));
}

TEST_F(PreviewTest, ButtonsTurnThePagesAndAreOffAtTheEnds) {
    openPrinted(100);
    look([&] {
        EXPECT_FALSE(preview()->Bar->Item("primo").Enabled);
        EXPECT_FALSE(preview()->Bar->Item("indietro").Enabled);
        clickBar("ultimo");
        EXPECT_EQ(page(), pages());
        EXPECT_FALSE(preview()->Bar->Item("avanti").Enabled);
        EXPECT_FALSE(preview()->Bar->Item("ultimo").Enabled);
        clickBar("indietro");
        clickBar("primo");
        EXPECT_EQ(page(), 1);
        clickBar("avanti");
        EXPECT_EQ(page(), 2);
        EXPECT_TRUE(preview()->Canvas->HasFocus()) << "a click leaves the keyboard at the pages";
    });
}

TEST_F(PreviewTest, APageIsReachedByItsNumber) {
    openPrinted(1000);
    look([&] {
        robot_.press('G', wxMOD_CONTROL);
        robot_.type("22\n");
        EXPECT_EQ(page(), 22);
        robot_.press(WXK_PAGEDOWN);
        EXPECT_EQ(page(), 23);
        robot_.press('G', wxMOD_CONTROL);
        robot_.type("99999\n");
        EXPECT_EQ(page(), pages()) << "beyond the end is the last";
        robot_.press('G', wxMOD_CONTROL);
        robot_.type("due\n");
        EXPECT_EQ(page(), pages());
        EXPECT_TRUE(preview()->PageField->HasFocus()) << "to be put right";
    });
}

TEST_F(PreviewTest, ZoomByKeysWheelAndButtons) {
    openPrinted(100);
    look([&] {
        const double whole = preview()->Canvas->Zoom();
        robot_.press('1', wxMOD_CONTROL);
        EXPECT_EQ(zoom(), "100 %");
        robot_.wheel(*preview()->Canvas, middle(), -1, wxMOD_CONTROL);
        EXPECT_EQ(zoom(), "110 %");
        clickBar("rimpicciolisci");
        EXPECT_EQ(zoom(), "100 %");
        clickBar("larghezza");
        EXPECT_GT(preview()->Canvas->Zoom(), whole);
        EXPECT_EQ(preview()->Canvas->GetViewStart().y, 0) << "the top of the page stays on show";
        const wxRect paper = preview()->Canvas->PaperRect();
        const int room = preview()->Canvas->GetClientSize().x;
        EXPECT_GE(paper.x, 0);
        EXPECT_LE(paper.GetRight(), room);
        EXPECT_GT(paper.width, room * 9 / 10);
        screenshot(*preview(), "anteprima-larghezza");
        robot_.press('0', wxMOD_CONTROL);
        EXPECT_EQ(preview()->Canvas->Zoom(), whole);
        EXPECT_LE(preview()->Canvas->PaperRect().GetBottom(), preview()->Canvas->GetClientSize().y);
    });
}

TEST_F(PreviewTest, ZoomKeepsThePointUnderTheMouse) {
    openPrinted(100);
    look([&] {
        grid::PreviewCanvas& canvas = *preview()->Canvas;
        const auto share = [&](wxPoint at) {
            const wxRect paper = canvas.PaperRect();
            return wxRealPoint(static_cast<double>(at.x - paper.x) / paper.width,
                               static_cast<double>(at.y - paper.y) / paper.height);
        };
        robot_.press('2', wxMOD_CONTROL);
        const wxPoint at = middle() + wxPoint(80, 120);
        const wxRealPoint before = share(at);
        robot_.wheel(canvas, at, -4, wxMOD_CONTROL);
        screenshot(*preview(), "anteprima-grande");
        EXPECT_NEAR(share(at).x, before.x, 0.01);
        EXPECT_NEAR(share(at).y, before.y, 0.01);
    });
}

TEST_F(PreviewTest, TheWheelScrollsAndTurnsThePageAtItsEnd) {
    openPrinted(100);
    look([&] {
        grid::PreviewCanvas& canvas = *preview()->Canvas;
        robot_.wheel(canvas, middle(), 1);
        EXPECT_EQ(page(), 2) << "the page is seen whole: there is nothing to scroll";
        robot_.wheel(canvas, middle(), -1);
        EXPECT_EQ(page(), 1);
        robot_.press('2', wxMOD_CONTROL);
        robot_.wheel(canvas, middle(), 1);
        EXPECT_EQ(page(), 1);
        EXPECT_GT(canvas.GetViewStart().y, 0);
        robot_.wheel(canvas, middle(), 12);
        EXPECT_GE(page(), 2);
        robot_.press(WXK_PAGEDOWN);
        EXPECT_EQ(canvas.GetViewStart().y, 0) << "a new page is shown from its top";
        robot_.press(WXK_DOWN);
        EXPECT_GT(canvas.GetViewStart().y, 0);
    });
}

TEST_F(PreviewTest, ThePaperTurnsAndTheNextPreviewKeepsIt) {
    openPrinted(1000);
    look([&] {
        robot_.pressTimes(2, WXK_PAGEDOWN);
        const RowCount row = preview()->Job().Layout().PageAt(3).firstRow;
        clickBar("orientamento");
        const wxRect paper = preview()->Canvas->PaperRect();
        EXPECT_GT(paper.width, paper.height);
        const auto place = preview()->Job().Layout().PageAt(page());
        EXPECT_LE(place.firstRow, row) << "the row that stood on top stays on show";
        EXPECT_GT(place.firstRow + place.rows, row);
        EXPECT_GT(page(), 3) << "fewer rows a page";
        screenshot(*preview(), "anteprima-orizzontale");
    });
    EXPECT_EQ(grid_->PrintInfo().Orientation, PageOrientation::Landscape);
    look([&] {
        EXPECT_EQ(preview()->Bar->Item("orientamento").Value, 1);
        robot_.press('R', wxMOD_CONTROL);
        EXPECT_EQ(preview()->Bar->Item("orientamento").Value, 0);
    });
    EXPECT_EQ(grid_->PrintInfo().Orientation, PageOrientation::Portrait);
}

TEST_F(PreviewTest, TheColumnsOnShowAreThoseOfTheGrid) {
    openPrinted(1000);
    showColumns({"codice", "citta", "attivo"});
    grid::Column& active = grid_->Columns().Item(grid_->Columns().IndexOf("attivo"));
    active.ValueItems = {true, grid::presentationCheckBox};
    grid_->SplitAt(0).AlternatingRowStyle = true;
    look([&] {
        EXPECT_EQ(across(1000), 1);
        robot_.press('1', wxMOD_CONTROL);
        screenshot(*preview(), "anteprima-caselle");
    });
}

TEST_F(PreviewTest, AMillionRowsAreReadAsTheyAreLookedAt) {
    openPrinted(1000000);
    const RowCount before = rows_->rowsRead();
    look([&] {
        EXPECT_GT(pages(), 15000);
        robot_.press(WXK_END);
        robot_.press(WXK_HOME);
        screenshot(*preview(), "anteprima-milione");
    });
    EXPECT_LT(rows_->rowsRead() - before, 80 * 5);
}

TEST_F(PreviewTest, WithoutRowsThereIsAPageOfHeadings) {
    openPrinted(0);
    look([&] {
        EXPECT_LE(pages(), 3) << "of headings alone, side by side";
        screenshot(*preview(), "anteprima-vuota");
    });
}

TEST_F(PreviewTest, RowsThatCannotBeReadAreSaidOnThePage) {
    Boxes boxes;
    openPrinted(1000);
    look([&] {
        rows_->failReads(Errore(3709, "La connessione \xC3\xA8 chiusa"));
        robot_.press(WXK_PAGEDOWN);
        screenshot(*preview(), "anteprima-errore");
        EXPECT_EQ(page(), 2);
        rows_->healReads();
        robot_.press(WXK_PAGEUP);
        EXPECT_EQ(page(), 1);
    });
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(PreviewTest, ItIsModalAndClosesByItsButtonToo) {
    openPrinted(100);
    Script script;
    script.waitFor("aperta", [] { return preview() && preview()->IsActive(); }).then("Chiudi", [&] {
        EXPECT_FALSE(frame_->IsEnabled());
        clickBar("Chiudi");
    });
    script.run([&] { grid::showPreview(*grid_, grid_->PrintInfo()); });
    EXPECT_EQ(preview(), nullptr);
    EXPECT_TRUE(frame_->IsEnabled());
    EXPECT_EQ(rows_->moves(), 0) << "the host's current record stays";
}

TEST_F(PreviewTest, WithoutARecordsetItRaisesAndOpensNothing) {
    openPrinted(10);
    grid_->SetDataSource(nullptr);
    EXPECT_THROW(grid::showPreview(*grid_, grid_->PrintInfo()), Errore);
    grid_->SetDataSource(&source_);
    rows_->failClones(Errore(3251, "no"));
    EXPECT_THROW(grid::showPreview(*grid_, grid_->PrintInfo()), Errore);
    EXPECT_EQ(preview(), nullptr);
}

TEST_F(PreviewTest, ItOpensWhereThereIsAPrinterAndNowhereElse) {
    Boxes boxes;
    openPrinted(10);
    bool opened = false;
    Script script;
    if (grid::printerAvailable())
        script.waitFor("aperta", [] { return preview() && preview()->IsActive(); })
            .then("Esc", [&] {
                opened = true;
                robot_.press(WXK_ESCAPE);
            });
    script.run([&] { grid_->PrintInfo().PrintPreview(); });
    EXPECT_EQ(opened, grid::printerAvailable());
    EXPECT_TRUE(boxes.shown().empty());
}

} // namespace
} // namespace norvel::tests
