// The real message box. GTK's own box has no icon and English buttons where the host's locale is
// not Italian, so the box is a small window of ours; elsewhere the system's box serves.
#include "platform/controls/ToolkitBoxes.h"

#include "platform/controls/Toolkit.h"
#include "platform/controls/ToolkitThread.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/MessageBox.h"

#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cstdio>

namespace norvel::controls {

namespace {

// Hosts write line ends as "\r\n", or as a carriage return alone.
wxString withLineEnds(const std::string& text) {
    wxString shown = toWx(text);
    shown.Replace("\r\n", "\n");
    shown.Replace("\r", "\n");
    return shown;
}

// The window that the operator is looking at, over which the box opens.
wxWindow* windowInFront() {
    wxWindow* front = nullptr;
    for (wxWindow* window : wxTopLevelWindows) {
        auto* top = static_cast<wxTopLevelWindow*>(window);
        if (!top->IsShown() || top->IsBeingDeleted()) continue;
        if (top->IsActive()) return top;
        if (top->IsThisEnabled()) front = top; // the modal one, where one is modal
    }
    return front;
}

#ifdef __WXGTK__

wxArtID artOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Critical:
        return wxART_ERROR;
    case BoxIcon::Question:
        return wxART_QUESTION;
    case BoxIcon::Exclamation:
        return wxART_WARNING;
    case BoxIcon::Information:
        return wxART_INFORMATION;
    case BoxIcon::None:
        break;
    }
    return {};
}

class Box : public wxDialog {
  public:
    Box(wxWindow* parent, const Messaggio& box)
        : wxDialog(parent, wxID_ANY, toWx(box.titolo), wxDefaultPosition, wxDefaultSize,
                   wxCAPTION | wxCLOSE_BOX | wxSYSTEM_MENU),
          question_(box.pulsanti == BoxButtons::YesNo),
          preset_(question_ ? box.predefinita : BoxAnswer::Ok),
          answer_(question_ ? BoxAnswer::No : BoxAnswer::Ok) {
        auto* all = new wxBoxSizer(wxVERTICAL);
        auto* upper = new wxBoxSizer(wxHORIZONTAL);
        if (const wxArtID art = artOf(box.icona); !art.empty()) {
            auto* picture = new wxStaticBitmap(
                this, wxID_ANY,
                wxArtProvider::GetBitmapBundle(art, wxART_MESSAGE_BOX, wxSize(32, 32)));
            upper->Add(picture, 0, wxRIGHT, 14);
        }
        upper->Add(makeText(withLineEnds(box.testo)), 1, wxALIGN_CENTRE_VERTICAL);
        all->Add(upper, 1, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, 18);
        all->Add(makeButtons(), 0, wxALIGN_RIGHT | wxALL, 14);
        all->SetMinSize(titleWidth(), wxDefaultCoord);
        SetSizerAndFit(all);
        CentreOnParent();
        Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { modal_.End(); });
        Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) { key(event); });
    }

    // The button takes the focus once the box is modal, which has seen by then where it was before:
    // there the keyboard is afterwards.
    BoxAnswer ask() {
        CallAfter([this] { presetButton_->SetFocus(); });
        modal_.Run(*this);
        return answer_;
    }

  private:
    wxRect screen() const {
        return wxDisplay(GetParent() != nullptr ? GetParent() : this).GetClientArea();
    }

    // What a desktop needs to show the title uncut: the text in bold, as most paint it, and room
    // for the title bar's own buttons.
    int titleWidth() const {
        int width = 0;
        const wxFont bold = GetFont().Bold();
        GetTextExtent(GetTitle(), &width, nullptr, nullptr, nullptr, &bold);
        return std::min(width + FromDIP(120), screen().width * 2 / 3);
    }

    // A text that would leave the screen scrolls instead.
    wxWindow* makeText(const wxString& text) {
        auto* label = new wxStaticText(this, wxID_ANY, wxString());
        label->SetLabelText(text);
        label->Wrap(std::min(560, screen().width * 2 / 3));
        if (label->GetBestSize().y < screen().height * 2 / 3) return label;
        label->Destroy();
        return new wxTextCtrl(this, wxID_ANY, text, wxDefaultPosition,
                              wxSize(560, screen().height / 2),
                              wxTE_MULTILINE | wxTE_READONLY | wxBORDER_SIMPLE);
    }

    wxSizer* makeButtons() {
        auto* row = new wxBoxSizer(wxHORIZONTAL);
        const auto add = [&](const wxString& label, BoxAnswer answer) {
            auto* button = new wxButton(this, wxID_ANY, label);
            button->Bind(wxEVT_BUTTON, [this, answer](wxCommandEvent&) { end(answer); });
            row->Add(button, 0, row->IsEmpty() ? 0 : wxLEFT, 8);
            if (answer != preset_) return;
            button->SetDefault();
            presetButton_ = button;
        };
        if (question_) {
            add(toWx("&Sì"), BoxAnswer::Yes);
            add("&No", BoxAnswer::No);
        } else {
            add("OK", BoxAnswer::Ok);
        }
        return row;
    }

    // Esc refuses; the first letters answer also without Alt, as in the boxes people know.
    void key(wxKeyEvent& event) {
        const int code = event.GetKeyCode();
        const bool plain = !event.ControlDown();
        if (code == WXK_ESCAPE)
            modal_.End();
        else if (question_ && plain && code == 'S')
            end(BoxAnswer::Yes);
        else if (question_ && plain && code == 'N')
            end(BoxAnswer::No);
        else
            event.Skip();
    }

    void end(BoxAnswer answer) {
        answer_ = answer;
        modal_.End();
    }

    bool question_;
    BoxAnswer preset_; // what Enter means
    BoxAnswer answer_; // what leaving it means
    wxButton* presetButton_ = nullptr;
    ModalLoop modal_;
};

BoxAnswer showHere(const Messaggio& box) {
    return Box(windowInFront(), box).ask();
}

#else

long styleOf(const Messaggio& box) {
    const long preset = box.predefinita == BoxAnswer::No ? wxNO_DEFAULT : wxYES_DEFAULT;
    const long style = box.pulsanti == BoxButtons::YesNo ? wxYES_NO | preset : wxOK;
    switch (box.icona) {
    case BoxIcon::Critical:
        return style | wxICON_ERROR;
    case BoxIcon::Question:
        return style | wxICON_QUESTION;
    case BoxIcon::Exclamation:
        return style | wxICON_EXCLAMATION;
    case BoxIcon::Information:
        return style | wxICON_INFORMATION;
    case BoxIcon::None:
        break;
    }
    return style | wxICON_NONE;
}

BoxAnswer showHere(const Messaggio& box) {
    const InUse inUse;
    wxMessageDialog dialog(windowInFront(), withLineEnds(box.testo), toWx(box.titolo),
                           styleOf(box));
    dialog.SetYesNoLabels(toWx("&Sì"), "&No");
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

#endif

// A thread that cannot have the toolkit leaves the box to the one that has it and does not wait:
// that one may be waiting for it.
BoxAnswer showElsewhere(const Messaggio& box, const Errore& why) {
    if (wxTheApp != nullptr)
        wxTheApp->CallAfter([box] { mostraMessaggio(box); });
    else
        std::fprintf(stderr, "%s: %s (%s)\n", box.titolo.c_str(), box.testo.c_str(), why.what());
    return box.pulsanti == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

BoxAnswer showBox(const Messaggio& box) {
    try {
        avviaToolkit();
    } catch (const Errore& errore) {
        return showElsewhere(box, errore);
    }
    return showHere(box);
}

} // namespace

void installBoxes() {
    if (const BoxHandler others = impostaGestoreMessaggi(showBox)) impostaGestoreMessaggi(others);
}

} // namespace norvel::controls
