#include "platform/controls/Tip.h"
#include "platform/controls/WxText.h"

#include <wx/window.h>

#include <dlfcn.h>

namespace norvel::controls {

namespace {

// GTK leaves a tip where it is while the mouse stays in its area, which is the whole window where
// nobody says otherwise. The toolkit does not offer to say it, and its development package brings
// no headers of GTK; the libraries are in the process. (Signatures: GTK 3 and GLib reference.)
struct Area {
    int x, y, width, height;
};
using Callback = void (*)();

struct GtkCalls {
    void (*setArea)(void*, const Area*);
    void* (*data)(void*, const char*);
    void (*setData)(void*, const char*, void*, void (*)(void*));
    unsigned long (*connect)(void*, const char*, Callback, void*, void*, int);

    template <class Function>
    bool load(Function& function, const char* name) {
        function = reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
        return function != nullptr;
    }
    bool loadAll() {
        return load(setArea, "gtk_tooltip_set_tip_area") && load(data, "g_object_get_data") &&
               load(setData, "g_object_set_data_full") && load(connect, "g_signal_connect_data");
    }
};

// Null where the toolkit runs on another GTK.
const GtkCalls* gtk() {
    static GtkCalls calls;
    static const bool loaded = calls.loadAll();
    return loaded ? &calls : nullptr;
}

constexpr const char* areaKey = "norvel-tip-area";

// Before GTK itself gives the text.
int onQuery(void* widget, int, int, int, void* tooltip, void*) {
    const GtkCalls* const calls = gtk();
    if (const void* area = calls ? calls->data(widget, areaKey) : nullptr)
        calls->setArea(tooltip, static_cast<const Area*>(area));
    return 0;
}

void setArea(void* widget, const wxRect& area) {
    const GtkCalls* const calls = gtk();
    if (widget == nullptr || !calls) return;
    if (calls->data(widget, areaKey) == nullptr)
        calls->connect(widget, "query-tooltip", reinterpret_cast<Callback>(&onQuery), nullptr,
                       nullptr, 0);
    calls->setData(widget, areaKey, new Area{area.x, area.y, area.width, area.height},
                   [](void* old) { delete static_cast<Area*>(old); });
}

} // namespace

void setTip(wxWindow& window, const std::string& text, const wxRect& area) {
    setArea(window.GetConnectWidget(), area);
    if (text.empty())
        window.UnsetToolTip();
    else
        window.SetToolTip(toWx(text));
}

} // namespace norvel::controls
