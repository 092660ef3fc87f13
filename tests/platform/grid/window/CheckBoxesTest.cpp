// Columns that show check boxes.
#include "tests/platform/grid/window/GridFixture.h"

namespace norvel::tests {
namespace {

using namespace adodb;

class CheckBoxesTest : public GridTest {
  protected:
    // Numbers, and -1, 0, Null, 5 in turns.
    void openYesNo() {
        open(GeneratedRecordset::make(
            {{"codice", adInteger,
              [](RowCount row) { return Variant(static_cast<std::int32_t>(row + 1)); }},
             {"sospeso", adInteger,
              [](RowCount row) {
                  if (row % 4 == 2) return Variant::null();
                  return Variant(row % 4 == 0 ? -1 : row % 4 == 1 ? 0 : 5);
              }},
             {"attivo", adBoolean, [](RowCount row) { return Variant(row % 3 == 0); }},
             {"nota", adVarWChar, [](RowCount row) { return Variant(row % 2 ? "forse" : "0"); }}},
            30));
        for (const int column : {1, 2, 3})
            grid_->Columns().Item(column).ValueItems = {.Translate = true,
                                                        .Presentation = grid::presentationCheckBox};
        grid_->Changed();
        robot_.pump();
    }
    // How many pixels of a cell are not of its background.
    int inkOf(int row, int column) {
        const wxImage image = imageOf(*grid_, wxRect(grid_->CellRect(row, column)).Deflate(3));
        const auto colourAt = [&](int x, int y) {
            return image.GetRed(x, y) << 16 | image.GetGreen(x, y) << 8 | image.GetBlue(x, y);
        };
        int ink = 0;
        for (int y = 0; y < image.GetHeight(); ++y)
            for (int x = 0; x < image.GetWidth(); ++x)
                ink += colourAt(x, y) != colourAt(0, 0);
        return ink;
    }
};

TEST_F(CheckBoxesTest, CheckedHasATickClearHasNoneAndNullHasNoBox) {
    openYesNo();
    robot_.drag(*grid_, cellCentre(6, 0), cellCentre(9, 1));
    screenshot(*frame_, "grid_check_boxes");
    const int checked = inkOf(4, 1);
    const int clear = inkOf(5, 1);
    EXPECT_EQ(inkOf(2, 1), 0);
    EXPECT_GT(clear, 20) << "a frame";
    EXPECT_GT(checked, clear + 10) << "and a tick";
    EXPECT_EQ(inkOf(3, 1), checked) << "any number but 0";
    EXPECT_EQ(inkOf(3, 2), checked);
    EXPECT_EQ(inkOf(4, 2), clear);
    EXPECT_EQ(inkOf(4, 3), clear) << "a text that is a number, too";
    EXPECT_NE(inkOf(5, 3), clear) << "what is no yes or no stays text";
}

TEST_F(CheckBoxesTest, WhereNothingCanBeEditedSpaceAndClicksChangeNothing) {
    openYesNo();
    robot_.click(*grid_, cellCentre(1, 1));
    robot_.click(*grid_, cellCentre(1, 1));
    robot_.press(WXK_SPACE);
    EXPECT_EQ(grid_->CellText(1, 1), "0");
    EXPECT_EQ(grid_->focusArea(), grid::Area::Data);
}

TEST_F(CheckBoxesTest, WithoutTranslationTheValuesAreShown) {
    openYesNo();
    const int tick = inkOf(4, 1);
    grid_->Columns().Item(1).ValueItems = {};
    grid_->Changed();
    robot_.pump();
    EXPECT_NE(inkOf(4, 1), tick);
    EXPECT_EQ(grid_->DataTypeCode(1), adInteger) << "it holds 5, too";
    EXPECT_EQ(grid_->DataTypeCode(2), 10);
    grid_->SetDataSource(nullptr);
    EXPECT_EQ(grid_->DataTypeCode(2), 10) << "as the type is known still";
    EXPECT_THROW(grid_->DataTypeCode(9), Errore);
}

} // namespace
} // namespace norvel::tests
