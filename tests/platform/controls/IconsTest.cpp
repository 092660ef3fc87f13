#include "platform/controls/Icons.h"

#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <string>

namespace norvel::tests {

using controls::drawIcon;
using controls::iconColours;
using controls::iconKeys;

namespace {

const wxColour lightFace(0xF6, 0xF5, 0xF4);
const wxColour darkFace(0x35, 0x35, 0x35);
const wxColour darkText(0x2E, 0x34, 0x36);
const wxColour lightText(0xEE, 0xEE, 0xEC);

constexpr int border = 6; // free pixels around the icon

// An icon of so many pixels, with a border around it.
wxImage picture(std::string_view key, int side, const wxColour& face, const wxColour& text,
                bool enabled = true) {
    wxBitmap bitmap;
    bitmap.Create(side + 2 * border, side + 2 * border, 24);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(wxBrush(face));
    dc.Clear();
    {
        const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
        const auto length = static_cast<double>(side);
        drawIcon(*context, key, wxRect2DDouble(border, border, length, length),
                 iconColours(face, text, enabled), 1);
    }
    dc.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
}

std::string bytesOf(const wxImage& image) {
    return {reinterpret_cast<const char*>(image.GetData()),
            static_cast<std::size_t>(image.GetWidth()) *
                static_cast<std::size_t>(image.GetHeight()) * 3};
}

bool isColour(const wxImage& image, int x, int y, const wxColour& colour) {
    return image.GetRed(x, y) == colour.Red() && image.GetGreen(x, y) == colour.Green() &&
           image.GetBlue(x, y) == colour.Blue();
}

int countOf(const wxImage& image, const wxColour& colour) {
    int count = 0;
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            count += isColour(image, x, y, colour) ? 1 : 0;
    return count;
}

// WCAG 2 contrast ratio.
double contrast(const wxColour& a, const wxColour& b) {
    const auto linear = [](unsigned char part) {
        const double c = part / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const wxColour& c) {
        return 0.2126 * linear(c.Red()) + 0.7152 * linear(c.Green()) + 0.0722 * linear(c.Blue());
    };
    const double la = luminance(a) + 0.05;
    const double lb = luminance(b) + 0.05;
    return std::max(la, lb) / std::min(la, lb);
}

} // namespace

TEST(Icons, EveryCommandOfTheWindowsHasAnIconOfItsOwn) {
    const std::string neutral = bytesOf(picture("ignota", 20, lightFace, darkText));
    std::set<std::string> seen{neutral};
    for (const char* key :
         {"Apri",      "Facilitata", "Modifica",    "Drop",      "Taglia",         "copia",
          "copiaclip", "excel",      "HTML",        "Stampa",    "primo",          "indietro",
          "avanti",    "ultimo",     "Aggiorna",    "configura", "Chiudi",         "nuovo",
          "vista",     "ordine",     "salva",       "nota",      "rimpicciolisci", "ingrandisci",
          "pagina",    "larghezza",  "orientamento"})
        EXPECT_TRUE(seen.insert(bytesOf(picture(key, 20, lightFace, darkText))).second) << key;
    EXPECT_EQ(iconKeys().size(), 27U);
}

TEST(Icons, KeysAreCaseBlindAndAnUnknownOneGetsTheNeutralIcon) {
    EXPECT_EQ(bytesOf(picture("HTML", 20, lightFace, darkText)),
              bytesOf(picture("html", 20, lightFace, darkText)));
    const std::string neutral = bytesOf(picture("ignota", 20, lightFace, darkText));
    EXPECT_EQ(neutral, bytesOf(picture("", 20, lightFace, darkText)));
    EXPECT_GT(
        countOf(picture("ignota", 20, lightFace, darkText), iconColours(lightFace, darkText).line),
        20);
}

TEST(Icons, NothingIsDrawnOutsideTheSquareAtAnySize) {
    for (const auto key : iconKeys())
        for (const int side : {16, 18, 20, 24, 25, 32, 40, 64}) {
            const wxImage image = picture(key, side, lightFace, darkText);
            for (int y = 0; y < image.GetHeight(); ++y)
                for (int x = 0; x < image.GetWidth(); ++x) {
                    const bool inside =
                        x >= border && y >= border && x < border + side && y < border + side;
                    ASSERT_TRUE(inside || isColour(image, x, y, lightFace))
                        << key << ' ' << side << ": " << x << ',' << y;
                }
        }
}

TEST(Icons, StraightStrokesAreSharpAtEverySize) {
    for (const int side : {16, 18, 20, 24, 25, 30, 32, 40}) {
        const auto tones = iconColours(lightFace, darkText);
        const wxImage image = picture("Facilitata", side, lightFace, darkText);
        const int pure =
            countOf(image, tones.line) + countOf(image, tones.accent) + countOf(image, lightFace);
        // Frame and stripes alone: every pixel has one of the three colours, but for the corners.
        EXPECT_GE(pure, image.GetWidth() * image.GetHeight() - 16) << side;
    }
}

TEST(Icons, BothTonesReadOnLightAndOnDark) {
    for (const auto& [face, text] :
         {std::pair{lightFace, darkText}, std::pair{darkFace, lightText},
          std::pair{*wxWHITE, *wxBLACK}, std::pair{*wxBLACK, *wxWHITE}}) {
        const auto tones = iconColours(face, text);
        EXPECT_GE(contrast(tones.line, face), 4.5);
        EXPECT_GE(contrast(tones.accent, face), 4.5);
        EXPECT_GE(contrast(tones.onAccent, tones.accent), 4.5);
        const auto pale = iconColours(face, text, false);
        EXPECT_LT(contrast(pale.line, face), contrast(tones.line, face) / 2);
    }
}

TEST(Icons, ASheetOfAllForPeopleToLookAt) {
    auto keys = iconKeys();
    keys.emplace_back("ignota");
    constexpr int cell = 52;
    wxImage sheet(static_cast<int>(keys.size()) * cell, 8 * cell);
    int y = 0;
    for (const auto& [face, text] :
         {std::pair{lightFace, darkText}, std::pair{darkFace, lightText}}) {
        sheet.SetRGB(wxRect(0, y, sheet.GetWidth(), 4 * cell), face.Red(), face.Green(),
                     face.Blue());
        for (const int row : {0, 1, 2, 3}) { // the toolbar's at 100, 150, 200 %; disabled
            const int side = row == 3 ? 20 : 20 + row * 10;
            for (std::size_t i = 0; i < keys.size(); ++i)
                sheet.Paste(picture(keys[i], side, face, text, row != 3),
                            static_cast<int>(i) * cell, y);
            y += cell;
        }
    }
    EXPECT_TRUE(exists(keepImage(sheet, "icons")));
}

} // namespace norvel::tests
