#include "tests/support/Screenshot.h"

#include <cstdlib>

namespace norvel::tests {

std::filesystem::path outputFolder() {
    const char* given = std::getenv("NR_TEST_OUTPUT");
    std::filesystem::path folder =
        given != nullptr && *given != '\0' ? given : std::filesystem::path("test-output");
    folder = std::filesystem::absolute(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

double brightnessOf(const wxImage& image) {
    const auto count = static_cast<std::size_t>(image.GetWidth()) *
                       static_cast<std::size_t>(image.GetHeight()) * 3;
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += image.GetData()[i];
    return sum / static_cast<double>(count);
}

} // namespace norvel::tests
