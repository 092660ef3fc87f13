#include "platform/controls/HostWindows.h"

#include <wx/toplevel.h>

#include <dlfcn.h>

namespace norvel::controls {

namespace {

// The few calls of GTK that the toolkit does not offer. The libraries are in the process, the
// toolkit links them; their headers are no part of its development package. (Signatures: GTK 3 and
// GLib reference.)
struct List {
    void* data;
    List* next;
    List* previous;
};
using Callback = void (*)();

struct GtkCalls {
    List* (*listToplevels)();
    void (*freeList)(List*);
    int (*isVisible)(void*);
    int (*isSensitive)(void*);
    void (*setSensitive)(void*, int);
    int (*windowType)(void*);
    int (*isActive)(void*);
    void* (*transientFor)(void*);
    void (*setTransientFor)(void*, void*);
    void* (*surface)(void*);
    void (*setModalHint)(void*, int);
    void* (*ref)(void*);
    void (*unref)(void*);
    unsigned long (*connect)(void*, const char*, Callback, void*, void*, int);
    int (*isConnected)(void*, unsigned long);
    void (*disconnect)(void*, unsigned long);
    int (*acquireContext)(void*);
    void (*releaseContext)(void*);

    template <class Function>
    bool load(Function& function, const char* name) {
        function = reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
        return function != nullptr;
    }
    bool loadAll() {
        return load(listToplevels, "gtk_window_list_toplevels") && load(freeList, "g_list_free") &&
               load(isVisible, "gtk_widget_get_visible") &&
               load(isSensitive, "gtk_widget_get_sensitive") &&
               load(setSensitive, "gtk_widget_set_sensitive") &&
               load(windowType, "gtk_window_get_window_type") &&
               load(isActive, "gtk_window_is_active") &&
               load(transientFor, "gtk_window_get_transient_for") &&
               load(setTransientFor, "gtk_window_set_transient_for") &&
               load(surface, "gtk_widget_get_window") &&
               load(setModalHint, "gdk_window_set_modal_hint") && load(ref, "g_object_ref") &&
               load(unref, "g_object_unref") && load(connect, "g_signal_connect_data") &&
               load(isConnected, "g_signal_handler_is_connected") &&
               load(disconnect, "g_signal_handler_disconnect") &&
               load(acquireContext, "g_main_context_acquire") &&
               load(releaseContext, "g_main_context_release");
    }
};

// Null where a GTK without one of the calls is in use: then only the toolkit's own windows are
// disabled.
const GtkCalls* gtk() {
    static GtkCalls calls{};
    static const bool loaded = calls.loadAll();
    return loaded ? &calls : nullptr;
}

bool isToolkits(const void* handle) {
    for (const wxWindow* window : wxTopLevelWindows)
        if (window->GetHandle() == handle) return true;
    return false;
}

int refuseToClose() {
    return 1;
} // handled: the close box does nothing

constexpr int topLevelType = 0; // GTK_WINDOW_TOPLEVEL; the others are menus and tips

} // namespace

// Of a window that is the host's alone.
HostWindows::Disabled HostWindows::disable(void* window) {
    const GtkCalls* calls = gtk();
    calls->ref(window);
    calls->setSensitive(window, 0);
    return {window, calls->connect(window, "delete-event",
                                   reinterpret_cast<Callback>(refuseToClose), nullptr, nullptr, 0)};
}

// The modal window stays over the active one, wherever the operator clicks.
void HostWindows::takeInputFor(wxTopLevelWindow& modal) {
    const GtkCalls* calls = gtk();
    if (calls == nullptr) return;
    List* all = calls->listToplevels();
    for (const List* each = all; each != nullptr; each = each->next) {
        void* window = each->data;
        if (window == modal.GetHandle() || calls->windowType(window) != topLevelType ||
            !calls->isVisible(window))
            continue;
        if (calls->isActive(window) && calls->transientFor(modal.GetHandle()) == nullptr)
            calls->setTransientFor(modal.GetHandle(), window);
        if (!isToolkits(window) && calls->isSensitive(window)) disabled_.push_back(disable(window));
    }
    calls->freeList(all);
}

// The window manager gives the focus to a modal window when its owner is clicked.
void HostWindows::markModal(wxTopLevelWindow& modal) {
    const GtkCalls* calls = gtk();
    void* surface = calls != nullptr ? calls->surface(modal.GetHandle()) : nullptr;
    if (surface != nullptr) calls->setModalHint(surface, 1);
}

void HostWindows::giveBack() {
    const GtkCalls* calls = gtk();
    for (const Disabled& each : disabled_) {
        if (calls->isConnected(each.window, each.closeGuard) != 0) // the host may destroy it
            calls->disconnect(each.window, each.closeGuard);
        calls->setSensitive(each.window, 1);
        calls->unref(each.window);
    }
    disabled_.clear();
}

bool eventsRunOnAnotherThread() {
    const GtkCalls* calls = gtk();
    if (calls == nullptr) return false;
    if (calls->acquireContext(nullptr) == 0) return true;
    calls->releaseContext(nullptr);
    return false;
}

} // namespace norvel::controls
