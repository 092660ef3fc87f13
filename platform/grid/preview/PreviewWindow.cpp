#include "platform/grid/preview/PreviewWindow.h"

#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/WxText.h"
#include "platform/grid/preview/PrintRun.h"
#include "platform/grid/print/PageCodes.h"
#include "platform/runtime/MessageBox.h"
#include "platform/runtime/Twips.h"

#include <wx/display.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

namespace {

constexpr int barTwips = 420;

struct BarButton {
    const char* key;
    const char* description;
    const char* shortcut;
};

// From left to right; an empty key is a separator.
constexpr std::array<BarButton, 15> barButtons{{
    {"Stampa", "Stampa", "Ctrl+P"},
    {"", "", ""},
    {"primo", "Prima pagina", "Inizio"},
    {"indietro", "Pagina precedente", "Pag\xE2\x86\x91"},
    {"avanti", "Pagina seguente", "Pag\xE2\x86\x93"},
    {"ultimo", "Ultima pagina", "Fine"},
    {"", "", ""},
    {"rimpicciolisci", "Rimpicciolisci", "Ctrl+-"},
    {"ingrandisci", "Ingrandisci", "Ctrl++"},
    {"pagina", "Pagina intera", "Ctrl+0"},
    {"larghezza", "Larghezza della pagina", "Ctrl+2"},
    {"", "", ""},
    {"orientamento", "Foglio orizzontale", "Ctrl+R"},
    {"", "", ""},
    {"Chiudi", "Chiudi l'anteprima", "Esc"},
}};

wxPaperSize paperOf(const PaperSize& paper) {
    return paper == PaperSize{} ? wxPAPER_A4 : wxPAPER_NONE;
}

// What the print dialog begins with.
wxPrintData printData(const PrintSettings& settings) {
    wxPrintData data;
    data.SetOrientation(settings.Orientation == PageOrientation::Landscape ? wxLANDSCAPE
                                                                           : wxPORTRAIT);
    data.SetPaperId(paperOf(settings.Paper));
    if (paperOf(settings.Paper) == wxPAPER_NONE) {
        const auto millimetres = [](double twips) {
            return static_cast<int>(std::lround(twips * 25.4 / twipsPerInch));
        };
        data.SetPaperSize({millimetres(settings.Paper.Width), millimetres(settings.Paper.Height)});
    }
    return data;
}

} // namespace

PreviewWindow::PreviewWindow(wxWindow* parent, PrintInfo& info, PrintJob job,
                             std::unique_ptr<PagePainter> painter)
    : wxDialog(parent, wxID_ANY, controls::toWx(info.PreviewCaption), wxDefaultPosition,
               wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX),
      info_(info), painter_(std::move(painter)), job_(std::move(job)), printer_(printData(info)) {
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    makeBar();
    PageField = new wxTextCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                               wxTE_PROCESS_ENTER | wxTE_RIGHT);
    Canvas = new PreviewCanvas(this, job_, *painter_);
    Counter = new controls::StatusBar(this, 2);
    placeParts();
    bind();
    tell();
}

void PreviewWindow::makeBar() {
    Bar = new controls::ToolBar(this, barTwips);
    for (const BarButton& button : barButtons) {
        controls::Button made{button.key, button.description};
        made.Shortcut = button.shortcut;
        if (made.Key.empty()) made.Style = controls::ButtonStyle::Separator;
        if (made.Key == "orientamento") {
            made.Style = controls::ButtonStyle::Check;
            made.Value = info_.Orientation == PageOrientation::Landscape ? 1 : 0;
        }
        Bar->Add(std::move(made));
    }
}

// As high as the screen allows and wide enough for a page.
void PreviewWindow::placeParts() {
    const int border = FromDIP(6);
    auto* top = new wxBoxSizer(wxHORIZONTAL);
    const double scale = FromDIP(1000) / 1000.0;
    Bar->SetMinSize(wxSize(-1, twipsToPixels(barTwips, scale)));
    PageField->SetMinSize(wxSize(PageField->GetTextExtent("00000000").x + FromDIP(16), -1));
    top->Add(Bar, 1, wxALIGN_CENTRE_VERTICAL);
    top->Add(new wxStaticText(this, wxID_ANY, "Vai a pagina:"), 0,
             wxALIGN_CENTRE_VERTICAL | wxLEFT | wxRIGHT, border);
    top->Add(PageField, 0, wxALIGN_CENTRE_VERTICAL | wxTOP | wxBOTTOM | wxRIGHT, border / 2);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(top, 0, wxEXPAND);
    column->Add(Canvas, 1, wxEXPAND);
    Counter->SetMinSize(wxSize(-1, twipsToPixels(Counter->HeightTwips(), scale)));
    column->Add(Counter, 0, wxEXPAND);
    SetSizer(column);
    SetMinSize(FromDIP(wxSize(360, 240)));
    const int display = wxDisplay::GetFromWindow(GetParent() ? GetParent() : this);
    const wxRect area =
        wxDisplay(display == wxNOT_FOUND ? 0U : static_cast<unsigned>(display)).GetClientArea();
    SetSize(std::min(area.width * 94 / 100, FromDIP(960)), area.height * 88 / 100);
    CentreOnParent();
    wxPoint at = GetPosition();
    at.x = std::clamp(at.x, area.x, std::max(area.x, area.GetRight() - GetSize().x));
    at.y = std::clamp(at.y, area.y, std::max(area.y, area.GetBottom() - GetSize().y));
    Move(at);
}

void PreviewWindow::bind() {
    Bar->OnButtonClick = [this](const controls::Button& button) { onButton(button.Key); };
    Canvas->OnChange = [this] { tell(); };
    PageField->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { goToField(); });
    Bind(wxEVT_CHAR_HOOK, &PreviewWindow::onCharHook, this);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { close(); });
}

void PreviewWindow::Run() {
    CallAfter([this] { Canvas->SetFocus(); }); // once the loop has noted who had it before
    loop_.Run(*this);
}

void PreviewWindow::close() {
    loop_.End();
}

void PreviewWindow::tell() {
    Counter->SetPanelText(1,
                          withPageNumbers(info_.PreviewCounter, Canvas->Page(), job_.PageCount()));
    Counter->SetPanelText(2, std::to_string(std::lround(Canvas->Zoom() * 100)) + " %");
    PageField->ChangeValue(controls::toWx(std::to_string(Canvas->Page())));
    const auto enable = [this](const char* key, bool on) {
        if (Bar->Item(key).Enabled != on)
            Bar->Change(key, [on](controls::Button& button) { button.Enabled = on; });
    };
    for (const char* key : {"primo", "indietro"})
        enable(key, Canvas->Page() > 1);
    for (const char* key : {"avanti", "ultimo"})
        enable(key, Canvas->Page() < job_.PageCount());
}

void PreviewWindow::onButton(std::string_view key) {
    if (key == "Stampa") return print();
    if (key == "primo") return Canvas->ShowPage(1);
    if (key == "indietro") return Canvas->ShowPage(Canvas->Page() - 1);
    if (key == "avanti") return Canvas->ShowPage(Canvas->Page() + 1);
    if (key == "ultimo") return Canvas->ShowPage(job_.PageCount());
    if (key == "rimpicciolisci") return Canvas->StepZoom(false, Canvas->Anchor());
    if (key == "ingrandisci") return Canvas->StepZoom(true, Canvas->Anchor());
    if (key == "pagina") return Canvas->SetZoom(ZoomMode::Page);
    if (key == "larghezza") return Canvas->SetZoom(ZoomMode::Width);
    if (key == "orientamento") return turnPaper();
    if (key == "Chiudi") close();
}

// The row at the top of the page stays on show.
void PreviewWindow::turnPaper() {
    const RowCount row = job_.Layout().PageAt(Canvas->Page()).firstRow;
    info_.Orientation = info_.Orientation == PageOrientation::Portrait ? PageOrientation::Landscape
                                                                       : PageOrientation::Portrait;
    job_.SetPaper(info_.Paper, info_.Orientation);
    printer_.GetPrintData().SetOrientation(
        info_.Orientation == PageOrientation::Landscape ? wxLANDSCAPE : wxPORTRAIT);
    Bar->Change("orientamento", [this](controls::Button& button) {
        button.Value = info_.Orientation == PageOrientation::Landscape ? 1 : 0;
    });
    Canvas->ShowRow(row);
}

// The keyboard is back at the pages, so that Page Down goes on from there.
void PreviewWindow::goToField() {
    long long page = 0;
    if (PageField->GetValue().Strip(wxString::both).ToLongLong(&page)) {
        Canvas->ShowPage(page);
        Canvas->SetFocus();
    } else {
        wxBell();
        PageField->SelectAll();
    }
}

bool PreviewWindow::pageKey(int key) {
    switch (key) {
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
        Canvas->ShowPage(Canvas->Page() + 1);
        return true;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
        Canvas->ShowPage(Canvas->Page() - 1);
        return true;
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
        if (!Canvas->HasFocus()) return false;
        Canvas->ShowPage(1);
        return true;
    case WXK_END:
    case WXK_NUMPAD_END:
        if (!Canvas->HasFocus()) return false;
        Canvas->ShowPage(job_.PageCount());
        return true;
    case WXK_ESCAPE:
        close();
        return true;
    default:
        return false;
    }
}

bool PreviewWindow::controlKey(int key) {
    switch (key) {
    case '+':
    case '=':
    case WXK_NUMPAD_ADD:
        Canvas->StepZoom(true, Canvas->Anchor());
        return true;
    case '-':
    case WXK_NUMPAD_SUBTRACT:
        Canvas->StepZoom(false, Canvas->Anchor());
        return true;
    case '0':
    case WXK_NUMPAD0:
        Canvas->SetZoom(ZoomMode::Page);
        return true;
    case '1':
    case WXK_NUMPAD1:
        Canvas->SetZoom(ZoomMode::Fixed);
        return true;
    case '2':
    case WXK_NUMPAD2:
        Canvas->SetZoom(ZoomMode::Width);
        return true;
    case 'R':
        turnPaper();
        return true;
    case 'P':
        print();
        return true;
    case 'G':
        PageField->SetFocus();
        PageField->SelectAll();
        return true;
    default:
        return false;
    }
}

void PreviewWindow::onCharHook(wxKeyEvent& event) {
    const int modifiers = event.GetModifiers();
    const int key = event.GetKeyCode();
    const bool control = modifiers == wxMOD_CONTROL || modifiers == (wxMOD_CONTROL | wxMOD_SHIFT);
    const bool handled = control ? controlKey(key) : modifiers == wxMOD_NONE ? pageKey(key) : false;
    if (!handled) event.Skip();
}

void PreviewWindow::print() {
    Printout printout(info_.PreviewCaption, job_, *painter_);
    printer_.SetMinPage(1);
    printer_.SetMaxPage(printout.Pages());
    printer_.EnablePageNumbers(true);
    const PrintOutcome outcome = runPrint(*this, printout, printer_, true);
    if (!outcome.printed && !outcome.reason.empty())
        mostraMessaggio({.testo = "La stampa non \xC3\xA8 riuscita.\r\n" + outcome.reason,
                         .titolo = info_.PreviewCaption,
                         .icona = BoxIcon::Exclamation});
    Canvas->SetFocus();
}

} // namespace norvel::grid
