// The picture in a heading: its file, its size, where it is drawn.
#include "platform/grid/HeadingPicture.h"

#include "platform/runtime/Errore.h"
#include "tests/platform/grid/window/GridFixture.h"

#include <filesystem>
#include <fstream>

namespace norvel::tests {
namespace {

namespace fs = std::filesystem;

std::shared_ptr<const grid::Picture> square(int side, std::uint8_t red) {
    auto picture = std::make_shared<grid::Picture>();
    picture->width = picture->height = side;
    picture->rgb.assign(3 * static_cast<std::size_t>(side) * static_cast<std::size_t>(side), 0);
    for (std::size_t i = 3; i < picture->rgb.size(); i += 3)
        picture->rgb[i] = red; // all but the first pixel
    return picture;
}

std::int64_t failure(const fs::path& file) {
    try {
        grid::loadPicture(file);
    } catch (const Errore& error) {
        return error.numero();
    }
    return 0;
}

class HeadingPictureTest : public GridTest {
  protected:
    int redPixels(int column) {
        const wxImage image = imageOf(*grid_, grid_->HeadingRect(column));
        int count = 0;
        for (int y = 0; y < image.GetHeight(); ++y)
            for (int x = 0; x < image.GetWidth(); ++x)
                count += image.GetRed(x, y) > 180 && image.GetGreen(x, y) < 60 ? 1 : 0;
        return count;
    }
    void show(int column, std::shared_ptr<const grid::Picture> picture, int position) {
        grid_->Columns().Item(column).Heading = {std::move(picture), position, true};
        grid_->Refresh();
    }
};

TEST_F(HeadingPictureTest, TheSamplePicturesAreRead) {
    for (const char* name : {"SortUp.bmp", "SortDown.bmp"}) {
        const auto picture =
            grid::loadPicture(fs::path(NR_SOURCE_DIR "/hosts/esempi/parametri") / name);
        EXPECT_EQ(picture->width, 48);
        EXPECT_EQ(picture->height, 48);
        EXPECT_EQ(picture->rgb.size(), 48U * 48 * 3);
    }
}

TEST_F(HeadingPictureTest, AFileThatIsNotThereOrNoBitmapIsAnError) {
    EXPECT_EQ(failure("/nessuna/freccia.bmp"), 53);
    const fs::path file = outputFolder() / "rotta.bmp";
    for (const std::string bytes :
         {"", "BM", "BM6 nothing that could be a bitmap at all, really"}) {
        std::ofstream(file, std::ios::binary) << bytes;
        EXPECT_EQ(failure(file), 481) << bytes;
    }
    fs::remove(file);
}

TEST_F(HeadingPictureTest, ItIsShownAtPositionOneOnlyBesideTheText) {
    openCustomers(20);
    show(1, square(16, 220), 0);
    EXPECT_EQ(redPixels(1), 0);
    show(1, square(16, 220), 1);
    EXPECT_GT(redPixels(1), 100);
    EXPECT_EQ(redPixels(2), 0);
    screenshot(*frame_, "grid_heading_picture");
    show(1, grid_->Columns().Item(1).Heading.ForegroundPicture, 7);
    EXPECT_EQ(redPixels(1), 0);
}

TEST_F(HeadingPictureTest, OneThatIsHigherThanTheTextIsFittedToIt) {
    openCustomers(20);
    show(1, square(400, 220), 1);
    const int pixels = redPixels(1);
    EXPECT_GT(pixels, 100);
    EXPECT_LT(pixels, 60 * 60) << "no wider than high, and within the heading";
    EXPECT_EQ(grid::HeadingPicture::Size(grid_->Columns().Item(1).Heading, 1.0, 18),
              wxSize(18, 18));
    EXPECT_EQ(grid::HeadingPicture::Size({square(8, 1), 1, false}, 1.0, 18), wxSize(8, 8));
    EXPECT_EQ(grid::HeadingPicture::Size({square(8, 1), 1, false}, 2.0, 36), wxSize(16, 16));
}

TEST_F(HeadingPictureTest, AColumnTooNarrowForItKeepsItsText) {
    openCustomers(20);
    show(1, square(16, 220), 1);
    grid_->Columns().Item(1).Width = 200;
    grid_->Changed();
    EXPECT_EQ(redPixels(1), 0);
}

} // namespace
} // namespace norvel::tests
