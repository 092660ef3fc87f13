#include "platform/grid/FieldPlace.h"

#include <dlfcn.h>

namespace norvel::grid {

namespace {

// The toolkit's development package brings no headers of GTK; the libraries are in the process.
// (Signatures: GTK 3 and GLib reference.)
template <class Function>
Function* gtk(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

constexpr const char plain[] = "* { box-shadow: none; }";
constexpr unsigned aboveThemes = 600; // GTK_STYLE_PROVIDER_PRIORITY_APPLICATION

} // namespace

// Where the toolkit runs on another GTK the theme's line stays.
void makePlain(wxTextCtrl& field) {
    const auto makeStyle = gtk<void*()>("gtk_css_provider_new");
    const auto read = gtk<int(void*, const char*, long, void**)>("gtk_css_provider_load_from_data");
    const auto contextOf = gtk<void*(void*)>("gtk_widget_get_style_context");
    const auto add = gtk<void(void*, void*, unsigned)>("gtk_style_context_add_provider");
    const auto release = gtk<void(void*)>("g_object_unref");
    if (!makeStyle || !read || !contextOf || !add || !release) return;
    void* const style = makeStyle();
    read(style, plain, sizeof plain - 1, nullptr);
    add(contextOf(field.GetHandle()), style, aboveThemes);
    release(style);
}

// The text stands in the middle of its field.
void placeField(wxTextCtrl& field, const wxSize& frame, int cut) {
    field.SetSize(-cut, -cut, frame.x + 2 * cut, frame.y + 2 * cut, wxSIZE_ALLOW_MINUS_ONE);
}

} // namespace norvel::grid
