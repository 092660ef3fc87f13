// Pages painted into pictures.
#include "platform/grid/preview/PagePainter.h"

#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>

namespace norvel::tests {
namespace {

using grid::Alignment;
using grid::PageContents;
using grid::PageFont;
using grid::PagePainter;

// Both ways of painting: the platform's best, and the toolkit's own.
class PagePainterTest : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override {
        wxFont italic(font_);
        italic.SetStyle(wxFONTSTYLE_ITALIC);
        const grid::PageFontSet fonts{font_, italic, font_};
        painter_ = GetParam() ? grid::makePagePainter(fonts) : grid::makePlainPagePainter(fonts);
    }
    // The page at so many pixels a twip, on a picture of a tenth of an inch by one.
    wxImage paint(const PageContents& page, double zoom, wxSize size, wxPoint origin = {}) {
        wxBitmap bitmap;
        bitmap.Create(size.x, size.y, 24);
        {
            wxMemoryDC dc(bitmap);
            dc.SetBackground(*wxWHITE_BRUSH);
            dc.Clear();
            painter_->PaintOnScreen(dc, page, zoom, origin, wxRect(size));
        }
        return bitmap.ConvertToImage();
    }
    static bool isInk(const wxImage& image, int x, int y) { return image.GetRed(x, y) < 160; }
    // Whether texts are measured apart from pixels; Windows has the toolkit's own way alone.
    static bool exact() {
#ifdef _WIN32
        return false;
#else
        return GetParam();
#endif
    }
    // The columns of pixels with ink in them: first and last; -1 where there is none.
    static std::pair<int, int> inkAcross(const wxImage& image) {
        std::pair<int, int> found{-1, -1};
        for (int x = 0; x < image.GetWidth(); ++x)
            for (int y = 0; y < image.GetHeight(); ++y)
                if (isInk(image, x, y)) {
                    if (found.first < 0) found.first = x;
                    found.second = x;
                }
        return found;
    }
    static PageContents line(const std::string& text, Alignment align) {
        PageContents page;
        page.texts.push_back({text, {300, 100, 4000, 300}, align, PageFont::Cell});
        return page;
    }

    wxFont font_{wxFontInfo(10).Family(wxFONTFAMILY_SWISS)};
    std::unique_ptr<PagePainter> painter_;
};

TEST_P(PagePainterTest, TextsAreAsWideAtEveryZoomAsOnPaper) {
    const std::string text = "Hannover millimetri 1234567890";
    const double twips = painter_->Sizes().width(PageFont::Cell, text);
    for (const double zoom : {0.05, 0.0667, 0.11, 0.2}) {
        const wxImage image = paint(line(text, Alignment::Left), zoom,
                                    {static_cast<int>(4600 * zoom), static_cast<int>(500 * zoom)});
        const auto [first, last] = inkAcross(image);
        ASSERT_GE(first, 0) << zoom;
        // A glyph begins and ends within its room; the toolkit's own texts fit whole pixels,
        // letter by letter.
        const double bearings = 3 + 45 * zoom;
        const double allowed = exact() ? bearings : bearings + 0.08 * twips * zoom;
        EXPECT_NEAR(last - first + 1, twips * zoom, allowed) << zoom;
        EXPECT_NEAR(first, 300 * zoom, bearings) << zoom;
    }
}

TEST_P(PagePainterTest, TextsKeepToTheirSideOfTheBox) {
    constexpr double zoom = 0.2;
    const wxSize size(920, 100);
    const auto right = inkAcross(paint(line("12,50", Alignment::Right), zoom, size));
    EXPECT_NEAR(right.second, 4300 * zoom, 3);
    const auto centre = inkAcross(paint(line("12,50", Alignment::Center), zoom, size));
    EXPECT_NEAR((centre.first + centre.second) / 2.0, 2300 * zoom, 4);
}

TEST_P(PagePainterTest, LinesAndFillsStandWhereTheySay) {
    PageContents page;
    page.fills.push_back({{0, 0, 1000, 500}, 0x000000FF}); // red
    page.lines.push_back({0, 600, 1000, true});
    const wxImage image = paint(page, 0.1, {120, 80});
    EXPECT_EQ(image.GetRed(50, 25), 255);
    EXPECT_EQ(image.GetGreen(50, 25), 0);
    EXPECT_EQ(image.GetGreen(50, 55), 255) << "below the fill";
    EXPECT_EQ(image.GetGreen(50, 60), grid::pageLineColour & 0xFF) << "one sharp pixel";
    EXPECT_EQ(image.GetGreen(50, 62), 255);
    EXPECT_EQ(image.GetGreen(110, 60), 255) << "as long as it says";
}

TEST_P(PagePainterTest, AThinLineIsSeenHoweverSmallThePageIs) {
    PageContents page;
    page.lines.push_back({0, 1000, 10000, true});
    const wxImage image = paint(page, 0.005, {60, 12});
    bool seen = false;
    for (int y = 3; y <= 7; ++y)
        seen = seen || image.GetGreen(20, y) < 200;
    EXPECT_TRUE(seen);
}

TEST_P(PagePainterTest, ACheckBoxIsMarkedOrNot) {
    const auto ink = [this](bool checked) {
        PageContents page;
        page.checks.push_back({{100, 100, 200, 200}, checked});
        const wxImage image = paint(page, 0.2, {80, 80});
        int pixels = 0;
        for (int x = 26; x < 54; ++x)
            for (int y = 26; y < 54; ++y)
                pixels += isInk(image, x, y) ? 1 : 0;
        return pixels;
    };
    EXPECT_EQ(ink(false), 0) << "empty inside";
    EXPECT_GT(ink(true), 40);
}

TEST_P(PagePainterTest, WhatLiesOutsideThePartIsNotPainted) {
    PageContents page = line("Fuori", Alignment::Left);
    wxBitmap bitmap;
    bitmap.Create(200, 100, 24);
    {
        wxMemoryDC dc(bitmap);
        dc.SetBackground(*wxWHITE_BRUSH);
        dc.Clear();
        painter_->PaintOnScreen(dc, page, 0.1, {0, 0}, wxRect(0, 60, 200, 40));
    }
    EXPECT_EQ(inkAcross(bitmap.ConvertToImage()).first, -1);
}

TEST_P(PagePainterTest, OriginMovesThePage) {
    const auto here = inkAcross(paint(line("Qui", Alignment::Left), 0.1, {400, 80}));
    const auto there = inkAcross(paint(line("Qui", Alignment::Left), 0.1, {400, 80}, {100, 0}));
    EXPECT_NEAR(there.first - here.first, 100, 1);
}

INSTANTIATE_TEST_SUITE_P(Painters, PagePainterTest, testing::Bool());

} // namespace
} // namespace norvel::tests
