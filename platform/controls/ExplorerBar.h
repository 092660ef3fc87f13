// A side menu: groups of commands with icons, one below the other.
#pragma once

#include "platform/controls/ExplorerLayout.h"
#include "platform/runtime/Api.h"

#include <wx/control.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace norvel::controls {

// Mouse: a click is told when the button comes up where it went down; a click on a group's heading
// or on a note is told as well, under its key, though neither looks like a command. Keyboard: Tab
// into and out of the menu; the arrows, Home and End walk the commands, Enter and Space click the
// one with the focus ring. Headings and notes are no stops. What does not fit scrolls.
//
// The menu is as wide as it was made, or as its commands need in its font; ask its best size.
// OnItemClick may change the menu or Destroy() the window.
class NR_API ExplorerBar : public wxControl {
  public:
    ExplorerBar(wxWindow* parent, int widthTwips);
    ~ExplorerBar() override;

    // At the end. Errore 35602 ("Chiave non univoca nell'insieme") where a key of it is taken.
    void AddGroup(ExplorerGroup group);
    void Clear();
    const std::vector<ExplorerGroup>& Groups() const;
    // Between the two nothing is placed or painted; they nest.
    void StopRedraw();
    void ResumeRedraw();

    // The command that is in force, marked; "" for none. Errore 35601 ("Elemento non trovato").
    void SetSelectedKey(std::string_view key);
    std::string SelectedKey() const;
    // Where a heading or an entry stands, in client pixels; it may be scrolled out of view.
    // Errore 35601.
    wxRect ItemRect(std::string_view key) const;
    // The size at which a menu of these groups cuts no command and scrolls nothing; at least as
    // wide as it was made.
    wxSize SizeFor(const std::vector<ExplorerGroup>& groups) const;
    // The command where the keyboard stands; "" while the menu has no focus.
    std::string FocusedKey() const;

    std::function<void(const std::string& key)> OnItemClick;

    bool AcceptsFocus() const override { return true; }
    bool SetFont(const wxFont& font) override;

  protected:
    wxSize DoGetBestClientSize() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace norvel::controls
