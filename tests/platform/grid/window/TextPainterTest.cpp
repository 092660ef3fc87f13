// Both text painters, looked at by the pixels they leave.
#include "platform/grid/TextPainter.h"

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/settings.h>

#include <functional>

namespace norvel::tests {
namespace {

using namespace grid;

constexpr int pictureWidth = 400;
constexpr int pictureHeight = 40;
const wxRect box(50, 5, 200, 30);

struct Maker {
    const char* name;
    std::unique_ptr<TextPainter> (*make)();
};

class TextPainterTest : public testing::TestWithParam<Maker> {
  protected:
    void SetUp() override {
        frame = new wxFrame(nullptr, wxID_ANY, "Testi");
        font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
        painter = GetParam().make();
        painter->SetFont(font, *frame);
    }
    void TearDown() override { frame->Destroy(); }

    // Where the text left anything but white.
    wxRect ink(std::string_view text, Alignment align, Overflow overflow = Overflow::Ellipsis,
               wxRect into = box) {
        wxBitmap bitmap;
        bitmap.Create(pictureWidth, pictureHeight, 24);
        {
            wxMemoryDC dc(bitmap);
            dc.SetBackground(*wxWHITE_BRUSH);
            dc.Clear();
            painter->Begin(dc, wxRect(0, 0, pictureWidth, pictureHeight));
            painter->Draw(text, into, align, overflow, *wxBLACK);
            painter->End();
        }
        const wxImage image = bitmap.ConvertToImage();
        wxRect found;
        for (int y = 0; y < pictureHeight; ++y)
            for (int x = 0; x < pictureWidth; ++x)
                if (image.GetGreen(x, y) < 200) found.Union(wxRect(x, y, 1, 1));
        return found;
    }
    int toolkitWidth(std::string_view text) {
        int width = 0;
        frame->GetTextExtent(wxString::FromUTF8(text.data(), text.size()), &width, nullptr, nullptr,
                             nullptr, &font);
        return width;
    }
    wxFrame* frame = nullptr;
    wxFont font;
    std::unique_ptr<TextPainter> painter;
};

TEST_P(TextPainterTest, MeasuresAsTheToolkitDoes) {
    for (const std::string_view text :
         {"Reggio nell'Emilia", "1234567,89", "Forlì", "AVAToT fi", "東京都", "x", ""})
        EXPECT_NEAR(painter->Width(text), toolkitWidth(text), 1) << text;
    EXPECT_NEAR(painter->Height(), frame->GetCharHeight(), 2);
}

TEST_P(TextPainterTest, AlignsLeftRightAndInTheMiddle) {
    const std::string_view text = "Hannover";
    EXPECT_NEAR(ink(text, Alignment::Left).GetLeft(), box.GetLeft(), 2);
    EXPECT_NEAR(ink(text, Alignment::Right).GetRight(), box.GetRight(), 2);
    const wxRect middle = ink(text, Alignment::Center);
    EXPECT_NEAR(middle.GetLeft() - box.GetLeft(), box.GetRight() - middle.GetRight(), 3);
}

TEST_P(TextPainterTest, StandsInTheMiddleOfItsLine) {
    const wxRect found = ink("HHH", Alignment::Left);
    EXPECT_NEAR(found.GetTop() - box.GetTop(), box.GetBottom() - found.GetBottom(), 4);
}

TEST_P(TextPainterTest, ATextTooWideEndsInsideItsBoxWithAnEllipsis) {
    std::string text;
    while (painter->Width(text) < 2 * box.width)
        text += "Società Cooperativa ";
    for (const Alignment align : {Alignment::Left, Alignment::Right, Alignment::Center}) {
        const wxRect found = ink(text, align);
        EXPECT_GE(found.GetLeft(), box.GetLeft() - 1);
        EXPECT_LE(found.GetRight(), box.GetRight() + 1);
        EXPECT_GT(found.width, box.width * 3 / 4);
    }
}

TEST_P(TextPainterTest, ANumberTooWideIsNeverShownInPart) {
    const wxRect narrow(50, 5, 40, 30);
    const wxRect hashes = ink("1234567890,12", Alignment::Right, Overflow::Hashes, narrow);
    const wxRect same = ink("9999999999,99", Alignment::Right, Overflow::Hashes, narrow);
    EXPECT_EQ(hashes, same) << "nothing of the number itself shows";
    EXPECT_LE(hashes.GetRight(), narrow.GetRight() + 1);
    EXPECT_FALSE(hashes.IsEmpty());
}

TEST_P(TextPainterTest, OtherScriptsAreDrawnAndCutToo) {
    EXPECT_FALSE(ink("東京都港区", Alignment::Left).IsEmpty());
    EXPECT_FALSE(ink("e\xCC\x81t\xC3\xA9 \xF0\x9F\x98\x80", Alignment::Left).IsEmpty());
    std::string longText;
    for (int i = 0; i < 60; ++i)
        longText += "東京";
    const wxRect found = ink(longText, Alignment::Left);
    EXPECT_LE(found.GetRight(), box.GetRight() + 1);
}

TEST_P(TextPainterTest, DrawsNothingWhereThereIsNoTextOrNoRoom) {
    EXPECT_TRUE(ink("", Alignment::Left).IsEmpty());
    EXPECT_TRUE(ink("testo", Alignment::Left, Overflow::Ellipsis, wxRect(50, 5, 0, 30)).IsEmpty());
    EXPECT_TRUE(ink("123", Alignment::Left, Overflow::Hashes, wxRect(50, 5, -5, 30)).IsEmpty());
}

TEST_P(TextPainterTest, TheClipHoldsForEveryText) {
    wxBitmap bitmap;
    bitmap.Create(pictureWidth, pictureHeight, 24);
    {
        wxMemoryDC dc(bitmap);
        dc.SetBackground(*wxWHITE_BRUSH);
        dc.Clear();
        painter->Begin(dc, wxRect(100, 0, 20, pictureHeight));
        painter->Draw("MMMMMMMMMMMMMM", box, Alignment::Left, Overflow::Ellipsis, *wxBLACK);
        painter->Draw("東京都東京都東京都", box, Alignment::Left, Overflow::Ellipsis, *wxBLACK);
        painter->End();
    }
    const wxImage image = bitmap.ConvertToImage();
    for (int y = 0; y < pictureHeight; ++y)
        for (int x = 0; x < pictureWidth; ++x)
            if (x < 100 || x >= 120) {
                ASSERT_GT(image.GetGreen(x, y), 250) << x << ',' << y;
            }
}

INSTANTIATE_TEST_SUITE_P(Painters, TextPainterTest,
                         testing::Values(Maker{"quickest", makeTextPainter},
                                         Maker{"plain", makePlainTextPainter}),
                         [](const auto& instance) { return instance.param.name; });

} // namespace
} // namespace norvel::tests
