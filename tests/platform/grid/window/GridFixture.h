// A frame with a grid over generated rows, and the robot that uses it.
#pragma once

#include "platform/grid/Grid.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"
#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

#include <memory>
#include <utility>
#include <vector>

namespace norvel::tests {

class GridTest : public testing::Test {
  protected:
    // A field in front of the grid and one behind it, so that the keyboard can leave it.
    void open(std::shared_ptr<GeneratedRecordset> rows) {
        rows_ = std::move(rows);
        openOver(rows_);
    }
    void openOver(adodb::RecordsetRef recordset);
    void openCustomers(adodb::RowCount rows) {
        open(GeneratedRecordset::make(customerColumns(), rows));
    }
    void TearDown() override;
    wxPoint cellCentre(adodb::RowCount rowPosition, int column) const;
    static wxPoint centre(const wxRect& r) { return {r.x + r.width / 2, r.y + r.height / 2}; }
    std::vector<int> selectedCodes(); // the numbers of the selected rows, from 1, in order

    controls::DataControl source_;
    std::shared_ptr<GeneratedRecordset> rows_;
    wxFrame* frame_ = nullptr;
    wxTextCtrl* before_ = nullptr;
    grid::Grid* grid_ = nullptr;
    wxTextCtrl* after_ = nullptr;
    Robot robot_;
};

} // namespace norvel::tests
