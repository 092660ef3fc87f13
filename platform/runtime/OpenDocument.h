// Opening a file with the application that the system associates with it.
#pragma once

#include "platform/runtime/Api.h"

#include <filesystem>
#include <functional>

namespace norvel {

// Returns as soon as the system has been asked: the application runs by itself and outlives this
// process. owner: the window (the system's own handle, may be null) that a message of the system's
// belongs to. A file that nothing opens, or that is not there, is no error here.
NR_API void openDocument(const std::filesystem::path& file, void* owner);

using DocumentOpener = std::function<void(const std::filesystem::path& file, void* owner)>;
// Replaces what openDocument does; returns what was there, null for the system's own. For tests.
NR_API DocumentOpener setDocumentOpener(DocumentOpener opener);

} // namespace norvel
