// The field that stands over a data cell while it is edited.
#pragma once

#include <wx/textctrl.h>

#include <functional>
#include <memory>
#include <string>

namespace norvel::grid {

// One line, or several for a text that has several: Ctrl+Enter breaks lines there. It is a child of
// the grid's window and goes with it.
class CellEditor {
  public:
    explicit CellEditor(wxWindow& grid) : grid_(grid) {}
    CellEditor(const CellEditor&) = delete;
    CellEditor& operator=(const CellEditor&) = delete;

    // Where the caret stands at the start: behind the text, or the whole text is selected.
    enum class Caret { AtEnd, SelectAll };
    void Open(const std::string& text, Caret caret);
    void Type(const std::string& text); // in place of what is there, the caret behind it
    void Close();                       // the grid gets the focus that the field had
    bool IsOpen() const { return open_ != nullptr; }
    bool HasFocus() const { return open_ && open_->text->HasFocus(); }
    void SetFocus(); // the caret where it was

    std::string Text() const;
    bool Changed() const; // since Open
    bool SeveralLines() const { return open_ == &lines_; }
    void SelectAll();
    void BreakLine();
    void SetFont(const wxFont& font);

    // Over the cell, inside its frame and margin, as far as that is in the room; out of sight where
    // nothing of it can be seen. Several lines take more room, of at least this size, and bring the
    // frame with them.
    struct Look {
        int margin = 0; // from the cell's left edge to the text
        int frame = 0;  // how thick the cell's frame is
        int cut = 0;    // of the border that themes draw around a text field
        wxColour frameColour, backColour;
        wxSize linesSize;
    };
    void Place(const wxRect& cell, const wxRect& room, const Look& look);

    // The focus went to another control of the same window.
    std::function<void()> OnFocusLost;

  private:
    struct Field {
        wxWindow* frame = nullptr;
        wxTextCtrl* text = nullptr;
    };
    void make(Field& field, long style);
    void placeLine(const wxRect& cell, const wxRect& room, const Look& look);
    void placeLines(const wxRect& cell, const wxRect& room, const Look& look);
    void paintLinesFrame();
    void focusLost();

    wxWindow& grid_;
    // The fields go with the grid's window, which is later than this: their last events find no
    // one.
    std::shared_ptr<int> life_ = std::make_shared<int>();
    Field line_, lines_;
    Field* open_ = nullptr;
    wxColour frameColour_;
    int frame_ = 0;
    wxString opened_;      // as the field gave it back at the start
    bool returns_ = false; // the lines of the text end in CR LF
};

} // namespace norvel::grid
