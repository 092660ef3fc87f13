// What each system does to open a document; for OpenDocument.cpp.
#pragma once

#include <filesystem>

namespace norvel {

void openBySystem(const std::filesystem::path& file, void* owner);

} // namespace norvel
