#include "platform/runtime/OpenDocument.h"

#include "platform/runtime/OpenDocumentSystem.h"

#include <utility>

namespace norvel {

namespace {

DocumentOpener& replaced() {
    static DocumentOpener opener;
    return opener;
}

} // namespace

void openDocument(const std::filesystem::path& file, void* owner) {
    if (replaced())
        replaced()(file, owner);
    else
        openBySystem(file, owner);
}

DocumentOpener setDocumentOpener(DocumentOpener opener) {
    return std::exchange(replaced(), std::move(opener));
}

} // namespace norvel
