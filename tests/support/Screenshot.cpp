#include "tests/support/Screenshot.h"

#include "tests/support/Robot.h"

#include <gtest/gtest.h>
#include <wx/window.h>

#include <cstdlib>
#include <string>

namespace norvel::tests {

namespace {

// ImageMagick's import reads the display itself, so the picture is what a person would see.
std::filesystem::path take(const std::string& crop, std::string_view name) {
    Robot().pump();
    const auto path = outputFolder() / (std::string(name) + ".png");
    const std::string command = "import -silent -window root " + crop + " '" + path.string() + "'";
    const int status = std::system(command.c_str()); // NOLINT(bugprone-command-processor)
    EXPECT_EQ(status, 0) << "no picture: " << command;
    return path;
}

} // namespace

std::filesystem::path outputFolder() {
    const char* given = std::getenv("NR_TEST_OUTPUT");
    std::filesystem::path folder =
        given != nullptr && *given != '\0' ? given : std::filesystem::path("test-output");
    folder = std::filesystem::absolute(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

std::filesystem::path screenshot(const wxWindow& window, std::string_view name) {
    const double scale = window.GetContentScaleFactor();
    const wxPoint origin = window.ClientToScreen(wxPoint(0, 0));
    const wxSize size = window.GetClientSize();
    const auto pixels = [scale](int logical) {
        return std::to_string(static_cast<int>(logical * scale));
    };
    return take("-crop " + pixels(size.x) + "x" + pixels(size.y) + "+" + pixels(origin.x) + "+" +
                    pixels(origin.y) + " +repage",
                name);
}

std::filesystem::path screenshotOfDisplay(std::string_view name) {
    return take("", name);
}

} // namespace norvel::tests
