// A window as the search window has it: a toolbar above, a field in the middle, a status bar below.
#pragma once

#include "platform/controls/Keyboard.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/runtime/Twips.h"
#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"
#include "tests/support/Script.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/settings.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace norvel::tests {

class BarWindow : public wxFrame {
  public:
    controls::ToolBar* bar;
    wxTextCtrl* field;
    controls::StatusBar* status;

    explicit BarWindow(int width = 760, int panels = 2)
        : wxFrame(nullptr, wxID_ANY, "Barra", wxPoint(60, 60), wxSize(width, 260)),
          bar(new controls::ToolBar(this, 480)),
          field(new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxTE_MULTILINE)),
          status(new controls::StatusBar(this, panels)) {
        SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
        Bind(wxEVT_SIZE, [this](wxSizeEvent&) { layOut(); });
        controls::travelByTab(*this);
    }

    void layOut() {
        const wxSize area = GetClientSize();
        const int barHeight = twipsToPixels(bar->HeightTwips(), FromDIP(1000) / 1000.0);
        const int statusHeight = twipsToPixels(status->HeightTwips(), FromDIP(1000) / 1000.0);
        bar->SetSize(0, 0, area.x, barHeight);
        field->SetSize(0, barHeight, area.x, area.y - barHeight - statusHeight);
        status->SetSize(0, area.y - statusHeight, area.x, statusHeight);
    }
};

// The search window's buttons, one of each kind among them, all enabled.
inline std::vector<controls::Button> allButtons() {
    using controls::Button;
    using controls::ButtonStyle;
    std::vector<Button> buttons;
    const auto add = [&](const char* key, const char* text, ButtonStyle style) {
        Button button;
        button.Key = key;
        button.Description = text;
        button.Style = style;
        buttons.push_back(button);
    };
    add("Apri", "Selezione", ButtonStyle::DropDown);
    buttons.back().ButtonMenus = {{"Base:clienti", "Vista predefinita"}, {"v2", "Conti & saldi"}};
    add("Facilitata", "Abilita / Disabilita la lettura facilitata", ButtonStyle::Check);
    add("Modifica", "Modifica", ButtonStyle::Check);
    add("Drop", "Visualizza ricerca avanzata", ButtonStyle::Check);
    add("", "", ButtonStyle::Separator);
    add("Taglia", "Taglia", ButtonStyle::Push);
    add("copia", "Esporta su clipboard in formato excel", ButtonStyle::Push);
    add("copiaclip", "Copia negli appunti", ButtonStyle::Push);
    add("excel", "", ButtonStyle::Push);
    add("HTML", "Esporta in html", ButtonStyle::Push);
    add("Stampa", "Stampa il documento", ButtonStyle::Push);
    add("", "", ButtonStyle::Separator);
    add("primo", "Vai al primo record", ButtonStyle::Push);
    add("indietro", "Vai al record precedente", ButtonStyle::Push);
    add("avanti", "Vai al record successivo", ButtonStyle::Push);
    add("ultimo", "Vai all'ultimo record", ButtonStyle::Push);
    add("Aggiorna", "Aggiorna elenco", ButtonStyle::Push);
    add("configura", "Personalizza Ricerca", ButtonStyle::Push);
    add("Chiudi", "Chiudi Finestra", ButtonStyle::Push);
    return buttons;
}

// The arrow keys of a menu stop at entries that cannot be chosen, or pass them by.
#ifdef __WXMSW__
inline constexpr bool stopsAtDisabledEntries = true;
#else
inline constexpr bool stopsAtDisabledEntries = false;
#endif

// A test with the window open and active, and what its toolbar told.
class BarTest : public testing::Test {
  protected:
    Robot robot;
    BarWindow* window = nullptr;
    std::vector<std::string> told; // "copia", "Facilitata=1", "Apri>v2"

    void open(int width = 760, std::vector<controls::Button> buttons = allButtons()) {
        window = new BarWindow(width);
        for (auto& button : buttons)
            window->bar->Add(std::move(button));
        window->bar->OnButtonClick = [this](const controls::Button& button) {
            const bool check = button.Style == controls::ButtonStyle::Check;
            told.push_back(button.Key + (check ? "=" + std::to_string(button.Value) : ""));
        };
        window->bar->OnButtonMenuClick = [this](const controls::Button& button,
                                                const controls::ButtonMenu& menu) {
            told.push_back(button.Key + ">" + menu.Key);
        };
        robot.show(*window);
        robot.focus(*window->field);
    }
    void TearDown() override {
        if (window != nullptr) window->Destroy();
        robot.pump();
    }
    wxPoint middleOf(std::string_view key) const {
        const wxRect place = window->bar->ButtonRect(key);
        return {place.x + place.height / 2, place.y + place.height / 2};
    }
    wxPoint arrowOf(std::string_view key) const {
        const wxRect place = window->bar->ButtonRect(key);
        return {place.GetRight() - 4, place.y + place.height / 2};
    }
    void clickButton(std::string_view key) { robot.click(*window->bar, middleOf(key)); }
};

} // namespace norvel::tests
