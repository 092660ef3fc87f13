#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"

#include <gtest/gtest.h>
#include <wx/window.h>

#include <cstdlib>
#include <string>
#include <unistd.h>

namespace norvel::tests {

namespace {

// ImageMagick's import reads the display itself, so the picture is what a person would see.
std::filesystem::path take(const std::string& crop, std::string_view name) {
    Robot().pump();
    auto path = outputFolder() / (std::string(name) + ".png");
    const std::string command = "import -silent -window root " + crop + " '" + path.string() + "'";
    const int status = std::system(command.c_str()); // NOLINT(bugprone-command-processor)
    EXPECT_EQ(status, 0) << "no picture: " << command;
    return path;
}

// The option that cuts a part of a window's client area out of the display.
std::string cropTo(const wxWindow& window, wxRect part) {
    const double scale = window.GetContentScaleFactor();
    if (part.IsEmpty()) part = wxRect(window.GetClientSize());
    const wxPoint origin = window.ClientToScreen(part.GetPosition());
    const auto pixels = [scale](int logical) {
        return std::to_string(static_cast<int>(logical * scale));
    };
    return "-crop " + pixels(part.width) + "x" + pixels(part.height) + "+" + pixels(origin.x) +
           "+" + pixels(origin.y) + " +repage";
}

void needPng() {
    if (wxImage::FindHandler(wxBITMAP_TYPE_PNG) == nullptr) wxImage::AddHandler(new wxPNGHandler);
}

} // namespace

std::filesystem::path screenshot(const wxWindow& window, std::string_view name) {
    return take(cropTo(window, {}), name);
}

std::filesystem::path screenshotOfDisplay(std::string_view name) {
    return take("", name);
}

std::filesystem::path keepImage(const wxImage& image, std::string_view name) {
    needPng();
    auto path = outputFolder() / (std::string(name) + ".png");
    EXPECT_TRUE(image.SaveFile(wxString::FromUTF8(path.string()), wxBITMAP_TYPE_PNG)) << path;
    return path;
}

wxImage imageOf(const wxWindow& window, wxRect part) {
    needPng();
    const std::string name = "image-" + std::to_string(getpid());
    const auto path = take(cropTo(window, part), name);
    wxImage image;
    EXPECT_TRUE(image.LoadFile(wxString::FromUTF8(path.string()), wxBITMAP_TYPE_PNG)) << path;
    std::filesystem::remove(path);
    return image;
}

} // namespace norvel::tests
