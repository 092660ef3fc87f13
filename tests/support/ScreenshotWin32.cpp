#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/window.h>

#include <string>

namespace norvel::tests {

namespace {

wxImage take(wxRect part) {
    Robot().pump();
    wxScreenDC screen;
    if (part.IsEmpty()) part = wxRect(screen.GetSize());
    wxBitmap picture;
    picture.Create(part.GetSize(), 24);
    wxMemoryDC memory(picture);
    EXPECT_TRUE(memory.Blit(wxPoint(0, 0), part.GetSize(), &screen, part.GetPosition()))
        << "no picture";
    memory.SelectObject(wxNullBitmap);
    return picture.ConvertToImage();
}

} // namespace

// The toolkit has no library for PNG here.
std::filesystem::path keepImage(const wxImage& image, std::string_view name) {
    auto path = outputFolder() / (std::string(name) + ".bmp");
    EXPECT_TRUE(image.SaveFile(wxString(path.wstring()), wxBITMAP_TYPE_BMP)) << path;
    return path;
}

std::filesystem::path screenshot(const wxWindow& window, std::string_view name) {
    return keepImage(imageOf(window), name);
}

std::filesystem::path screenshotOfDisplay(std::string_view name) {
    return keepImage(take({}), name);
}

wxImage imageOf(const wxWindow& window, wxRect part) {
    if (part.IsEmpty()) part = wxRect(window.GetClientSize());
    part.SetPosition(window.ClientToScreen(part.GetPosition()));
    return take(part);
}

} // namespace norvel::tests
