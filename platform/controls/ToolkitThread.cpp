#include "platform/controls/ToolkitThread.h"

#include "platform/runtime/Errore.h"

#include <wx/app.h>
#include <wx/debug.h>
#include <wx/module.h>
#include <wx/object.h>

#include <atomic>
#include <memory>

namespace norvel::controls {

namespace {
std::atomic<int> uses{0};
} // namespace

InUse::InUse() {
    ++uses;
}
InUse::~InUse() {
    --uses;
}
bool toolkitInUse() {
    return uses > 0;
}

// The toolkit keeps its owner's identity in one module of its own; ending and beginning that module
// on the new thread makes it the owner. Windows of GTK belong to no thread, only to one at a time.
// The module's end asserts that it runs on the old owner, which is not here to do it.
void adoptCallingThread() {
    const std::unique_ptr<wxObject> object(wxCreateDynamicObject("wxThreadModule"));
    auto* module = dynamic_cast<wxModule*>(object.get());
    if (module == nullptr)
        throw Errore(430, "La finestra di ricerca può essere aperta solo dal primo thread");
    const wxAssertHandler_t handler = wxSetAssertHandler(nullptr);
    module->Exit();
    const bool begun = module->Init();
    wxSetAssertHandler(handler);
    if (!begun) throw Errore(7, "Memoria esaurita");
}

} // namespace norvel::controls
