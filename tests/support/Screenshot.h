// Pictures of what a test sees, for people to look at.
#pragma once

#include <wx/gdicmn.h>
#include <wx/image.h>

#include <filesystem>
#include <string_view>

class wxWindow;

namespace norvel::tests {

// The folder of test output: the environment variable NR_TEST_OUTPUT, else "test-output" under the
// current folder. Created on first use.
std::filesystem::path outputFolder();

// Takes a picture of a window's client area, or of the whole display, in physical pixels as they
// are on screen, popups over it included; writes it as outputFolder()/NAME.png (on Windows .bmp)
// and returns that path. Fails the test when it cannot be taken.
std::filesystem::path screenshot(const wxWindow& window, std::string_view name);
std::filesystem::path screenshotOfDisplay(std::string_view name);
// Writes an image that a test made, as a picture of that name.
std::filesystem::path keepImage(const wxImage& image, std::string_view name);

// What is on screen now of a part of a window's client area (empty: all of it), for tests that look
// at pixels. Physical pixels, as screenshot.
wxImage imageOf(const wxWindow& window, wxRect part = {});
// The mean brightness of an image, 0 (black) to 255 (white).
double brightnessOf(const wxImage& image);

} // namespace norvel::tests
