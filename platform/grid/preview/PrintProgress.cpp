#include "platform/grid/preview/PrintProgress.h"

#include "platform/controls/WxText.h"

#include <wx/button.h>
#include <wx/log.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/utils.h>

namespace norvel::grid {

namespace {

using namespace std::chrono_literals;
constexpr auto shownAfter = 1s;
constexpr auto pause = 100ms; // between two texts

wxString progressText(adodb::RowCount page, adodb::RowCount pages) {
    return controls::toWx("Pagina " + std::to_string(page) + " di " + std::to_string(pages));
}

} // namespace

PrintProgress::PrintProgress(wxWindow& parent)
    : wxDialog(&parent, wxID_ANY, "Stampa in corso"), begun_(std::chrono::steady_clock::now()) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    text_ = new wxStaticText(this, wxID_ANY, progressText(1000000, 1000000));
    auto* cancel = new wxButton(this, wxID_CANCEL, "Annulla");
    const int border = FromDIP(12);
    text_->SetMinSize(wxSize(FromDIP(280), -1));
    column->Add(text_, 0, wxEXPAND | wxALL, border);
    column->Add(cancel, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, border);
    SetSizerAndFit(column);
    CentreOnParent();
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { cancelled_ = true; }, wxID_CANCEL);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { cancelled_ = true; });
}

PrintProgress::~PrintProgress() = default;

void PrintProgress::Tell(adodb::RowCount page, adodb::RowCount pages) {
    if (!others_) others_ = std::make_unique<wxWindowDisabler>(this);
    const auto now = std::chrono::steady_clock::now();
    if (now - begun_ < shownAfter || now - told_ < pause) return;
    told_ = now;
    text_->SetLabel(progressText(page, pages));
    if (!IsShown()) Show();
}

class QuietLog::Target : public wxLog {
  public:
    std::string said;

  protected:
    void DoLogRecord(wxLogLevel level, const wxString& message, const wxLogRecordInfo&) override {
        if (level <= wxLOG_Warning) said = controls::fromWx(message);
    }
};

QuietLog::QuietLog()
    : target_(std::make_unique<Target>()), before_(wxLog::SetActiveTarget(target_.get())) {}

QuietLog::~QuietLog() {
    wxLog::SetActiveTarget(before_);
}

std::string QuietLog::Said() const {
    return target_->said;
}

} // namespace norvel::grid
