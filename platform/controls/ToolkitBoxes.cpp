#include "platform/controls/ToolkitBoxes.h"

#include "platform/controls/Toolkit.h"
#include "platform/controls/ToolkitThread.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/MessageBox.h"

#include <wx/app.h>
#include <wx/msgdlg.h>
#include <wx/toplevel.h>

namespace norvel::controls {

namespace {

long styleOf(const Messaggio& box) {
    long style = box.pulsanti == BoxButtons::YesNo ? wxYES_NO | wxYES_DEFAULT : wxOK;
    switch (box.icona) {
    case BoxIcon::None:
        style |= wxICON_NONE;
        break;
    case BoxIcon::Critical:
        style |= wxICON_ERROR;
        break;
    case BoxIcon::Question:
        style |= wxICON_QUESTION;
        break;
    case BoxIcon::Exclamation:
        style |= wxICON_EXCLAMATION;
        break;
    case BoxIcon::Information:
        style |= wxICON_INFORMATION;
        break;
    }
    return style;
}

// Hosts write line ends as "\r\n", or as a carriage return alone.
wxString withLineEnds(const std::string& text) {
    wxString shown = toWx(text);
    shown.Replace("\r\n", "\n");
    shown.Replace("\r", "\n");
    return shown;
}

wxWindow* activeWindow() {
    wxWindow* active = wxGetActiveWindow();
    if (active != nullptr) return wxGetTopLevelParent(active);
    for (wxWindow* window : wxTopLevelWindows)
        if (window->IsShown()) active = window;
    return active;
}

BoxAnswer showBox(const Messaggio& box) {
    wxMessageDialog dialog(activeWindow(), withLineEnds(box.testo), toWx(box.titolo), styleOf(box));
    const InUse inUse;
    dialog.SetYesNoLabels(toWx("Sì"), "No");
    dialog.SetOKLabel("OK");
    switch (dialog.ShowModal()) {
    case wxID_YES:
        return BoxAnswer::Yes;
    case wxID_NO:
        return BoxAnswer::No;
    default:
        return box.pulsanti == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
    }
}

} // namespace

void installBoxes() {
    static bool installed = false;
    if (!installed) impostaGestoreMessaggi(showBox);
    installed = true;
}

} // namespace norvel::controls
