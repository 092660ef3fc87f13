// How far a print is.
#pragma once

#include "platform/adodb/Recordset.h"

#include <wx/dialog.h>

#include <chrono>
#include <memory>

class wxLog;
class wxStaticText;
class wxWindowDisabler;

namespace norvel::grid {

// Shows itself once the print has taken a second; the other windows take no input while it lives.
class PrintProgress : public wxDialog {
  public:
    explicit PrintProgress(wxWindow& parent);
    ~PrintProgress() override;
    PrintProgress(const PrintProgress&) = delete;
    PrintProgress& operator=(const PrintProgress&) = delete;

    void Tell(adodb::RowCount page, adodb::RowCount pages);
    bool Cancelled() const { return cancelled_; }

  private:
    wxStaticText* text_ = nullptr;
    std::unique_ptr<wxWindowDisabler> others_;
    std::chrono::steady_clock::time_point begun_, told_;
    bool cancelled_ = false;
};

// Keeps what the toolkit would say in boxes of its own, for as long as it lives.
class QuietLog {
  public:
    QuietLog();
    ~QuietLog();
    QuietLog(const QuietLog&) = delete;
    QuietLog& operator=(const QuietLog&) = delete;
    std::string Said() const;

  private:
    class Target;
    std::unique_ptr<Target> target_;
    wxLog* before_;
};

} // namespace norvel::grid
