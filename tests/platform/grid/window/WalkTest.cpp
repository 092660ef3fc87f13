// Whatever operators and hosts do to a grid, in whatever order: groups, splits, frozen columns,
// layouts, orders, filters, editing and selections get into each other's way.
#include "tests/platform/grid/window/GroupFixture.h"

#include <array>
#include <random>

namespace norvel::tests {
namespace {

using namespace adodb;

class WalkTest : public GroupTest, public testing::WithParamInterface<unsigned> {
  protected:
    void SetUp() override { openPlain(); }

    int below(int limit) { return static_cast<int>(chance_() % static_cast<unsigned>(limit)); }
    bool coin() { return below(2) == 0; }

    wxPoint somewhere() {
        const wxSize size = grid_->GetClientSize();
        return {below(size.x + 60) - 30, coin() ? below(size.y + 60) - 30 : below(120)};
    }
    void mouse(wxEventType type, const wxPoint& at, bool held) {
        wxMouseEvent event(type);
        event.SetEventObject(grid_);
        event.SetPosition(at);
        event.SetLeftDown(held);
        event.SetShiftDown(shift_);
        event.SetControlDown(control_);
        grid_->ProcessWindowEvent(event);
    }
    void useMouse() {
        shift_ = below(3) == 0;
        control_ = below(4) == 0;
        const wxPoint from = somewhere();
        mouse(wxEVT_LEFT_DOWN, from, true);
        for (int moves = below(4); moves > 0; --moves)
            mouse(wxEVT_MOTION, somewhere(), true);
        if (below(20) == 0) changeByHost();
        mouse(wxEVT_LEFT_UP, coin() ? from : somewhere(), false);
        if (below(4) == 0) mouse(wxEVT_LEFT_DCLICK, from, true);
        if (coin()) mouse(wxEVT_LEFT_UP, from, false);
        mouse(wxEVT_MOTION, somewhere(), false);
    }
    void useKey() {
        static constexpr std::array keys{WXK_UP,
                                         WXK_DOWN,
                                         WXK_LEFT,
                                         WXK_RIGHT,
                                         WXK_PAGEUP,
                                         WXK_PAGEDOWN,
                                         WXK_HOME,
                                         WXK_END,
                                         WXK_F2,
                                         WXK_TAB,
                                         WXK_ESCAPE,
                                         WXK_RETURN,
                                         WXK_SPACE,
                                         WXK_NUMPAD_ADD,
                                         WXK_NUMPAD_SUBTRACT,
                                         WXK_NUMPAD_MULTIPLY,
                                         WXK_NUMPAD_DIVIDE};
        wxKeyEvent event(wxEVT_CHAR_HOOK);
        event.SetEventObject(grid_);
        event.m_keyCode = keys[static_cast<std::size_t>(below(keys.size()))];
        if (below(5) == 0)
            event.m_keyCode = std::array<int, 7>{
                'A', 'G', 'C', 'G', '+', '-', '0'}[static_cast<std::size_t>(below(7))];
        event.SetShiftDown(below(3) == 0);
        event.SetControlDown(below(3) == 0);
        event.SetAltDown(below(8) == 0);
        grid_->ProcessWindowEvent(event);
    }
    void type() {
        wxKeyEvent event(wxEVT_CHAR);
        event.SetEventObject(grid_);
        event.m_keyCode = std::array<int, 3>{'7', 'a', '/'}[static_cast<std::size_t>(below(3))];
        event.m_uniChar = static_cast<wxChar>(event.m_keyCode);
        grid_->ProcessWindowEvent(event);
    }

    void changeLook() {
        static const std::array<std::string, 7> fields{"citta", "zona", "NOME", "codice",
                                                       "nulla", "",     "saldo"};
        grid::GridStyle& style = grid_->Style();
        style.DataView = below(4) == 0 ? 0 : 2;
        style.GroupColumns.clear();
        for (int n = below(4); n > 0; --n)
            style.GroupColumns.push_back(fields[static_cast<std::size_t>(below(fields.size()))]);
        style.MarqueeStyle = 1 + below(2);
        style.RowHeight = below(3) * below(3000);
        grid::Split& split = grid_->SplitAt(below(grid_->SplitCount()));
        split.FrozenColumns = below(7) - 1;
        split.FilterBar = coin();
        split.AllowColMove = split.AllowRowSizing = coin();
        split.AlternatingRowStyle = coin();
        grid::Column& column = grid_->Columns().Item(below(grid_->Columns().Count()));
        column.Visible = below(4) > 0;
        column.Width = below(4) * 2000;
        column.Order = below(8);
        column.Locked = coin();
        column.FilterCombo = coin();
        grid_->Changed();
    }
    void changeByHost() {
        switch (below(12)) {
        case 0:
            return customers_->SetSort(coin() ? "" : coin() ? "nome DESC" : "[zona], [citta]");
        case 1:
            return customers_->SetFilter(coin() ? "" : coin() ? "codice < 20" : "codice < 0");
        case 2:
            if (!customers_->BOF() && !customers_->EOF_() && customers_->RecordCount() > 20)
                customers_->Delete(adAffectCurrent);
            return;
        case 3:
            layout_ = grid_->Layouts().Present();
            return;
        case 4:
            return grid_->Layouts().Apply(layout_);
        case 5:
            if (grid_->SplitCount() < 3) grid_->AddSplit();
            return;
        case 6:
            if (grid_->SplitCount() > 1) grid_->RemoveSplit(below(grid_->SplitCount()));
            return;
        case 7:
            grid_->SetAllowUpdate(coin());
            return;
        case 8:
            return grid_->SetAllGroupsOpen(coin());
        case 9:
            if (customers_->RecordCount() > 0) customers_->Move(below(9) - 4, {});
            return;
        case 10:
            return grid_->SetFirstRow(below(100) - 10);
        default:
            return changeLook();
        }
    }

    // What the grid says of itself holds together.
    void look() {
        grid_->Update();
        ASSERT_LT(grid_->CurrentRow(), std::max<RowCount>(1, grid_->LineCount()));
        ASSERT_LE(grid_->SelBookmarks().Count(), customers_->RecordCount());
        for (RowCount i = 0; i < grid_->SelBookmarks().Count(); ++i)
            ASSERT_NO_THROW(grid_->SelBookmarks().Item(i));
        ASSERT_LT(grid_->SelEndCol(), grid_->Columns().Count());
        for (RowCount row = grid_->FirstRow(); row < grid_->FirstRow() + grid_->RowsInView(); ++row)
            ASSERT_TRUE(!grid_->IsGroupRow(row) || !grid_->LineText(row).empty());
    }

    std::mt19937 chance_{GetParam()};
    grid::Layout layout_;
    bool shift_ = false, control_ = false;
};

TEST_P(WalkTest, NoOrderOfActionsBreaksTheGrid) {
    grid_->OnError = [](const Errore&) {};
    layout_ = grid_->Layouts().Present();
    for (int step = 0; step < 1500; ++step) {
        SCOPED_TRACE(step);
        try {
            const int what = below(10);
            if (what < 4)
                useMouse();
            else if (what < 7)
                useKey();
            else if (what < 8)
                type();
            else
                changeByHost();
        } catch (const Errore&) { // a host may be refused while a cell is half typed
        }
        look();
        if (HasFatalFailure()) return;
        if (step % 300 == 0) robot_.pump();
    }
    grid_->SetAllowUpdate(false);
}

INSTANTIATE_TEST_SUITE_P(Seeds, WalkTest, testing::Values(1U, 2U, 3U));

} // namespace
} // namespace norvel::tests
