#include "tests/platform/grid/window/GridFixture.h"

#include <wx/panel.h>
#include <wx/sizer.h>

namespace norvel::tests {

void GridTest::openOver(adodb::RecordsetRef recordset) {
    frame_ = new wxFrame(nullptr, wxID_ANY, "Griglia", {20, 20});
    auto* panel = new wxPanel(frame_);
    auto* column = new wxBoxSizer(wxVERTICAL);
    before_ = new wxTextCtrl(panel, wxID_ANY);
    grid_ = new grid::Grid(panel);
    after_ = new wxTextCtrl(panel, wxID_ANY);
    column->Add(before_, 0, wxEXPAND);
    column->Add(grid_, 1, wxEXPAND);
    column->Add(after_, 0, wxEXPAND);
    panel->SetSizer(column);
    frame_->SetClientSize(1100, 620);
    source_.SetRecordset(std::move(recordset));
    grid_->SetDataSource(&source_);
    frame_->Show();
    ASSERT_TRUE(robot_.waitForActive(*frame_));
    robot_.focus(*grid_);
}

void GridTest::TearDown() {
    if (!frame_) return;
    grid_->SetDataSource(nullptr);
    frame_->Destroy();
    robot_.pump();
}

wxPoint GridTest::cellCentre(adodb::RowCount rowPosition, int column) const {
    return centre(grid_->CellRect(rowPosition, column));
}

std::vector<int> GridTest::selectedCodes() {
    std::vector<int> codes;
    auto& selected = grid_->SelBookmarks();
    for (adodb::RowCount i = 0; i < selected.Count(); ++i)
        codes.push_back(static_cast<int>(selected.Item(i).toDouble()));
    return codes;
}

} // namespace norvel::tests
