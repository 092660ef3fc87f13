// What a side menu knows, shared by the files that place it, draw it and listen to the operator.
#pragma once

#include "platform/controls/ExplorerBar.h"

#include <wx/gdicmn.h>

#include <optional>

class wxDC;
class wxGraphicsContext;
class wxScrollBar;

namespace norvel::controls {

struct ExplorerBar::Impl {
    ExplorerBar& bar;
    int widthTwips;
    std::vector<ExplorerGroup> groups;
    ExplorerRows layout;
    wxScrollBar* scrollBar = nullptr;
    int top = 0; // pixels scrolled away
    int stopped = 0;
    int wheel = 0; // what a notch is still to be made of

    using Row = std::optional<std::size_t>; // of the layout
    Row hover, pressed, focus;
    std::string selected;
    std::string tip;

    Impl(ExplorerBar& owner, int twips) : bar(owner), widthTwips(twips) {}

    // ExplorerBar.cpp
    ExplorerMetrics metrics(int width) const;
    void layOut();
    void scrollTo(int pixels);
    void show(std::size_t row);
    const std::string& keyOf(const ExplorerRow& row) const;
    Row rowOf(std::string_view key) const;
    bool isCommand(const ExplorerRow& row) const;
    wxRect rectOf(std::size_t row) const;
    wxSize area() const; // without the scroll bar

    // ExplorerBarPaint.cpp
    void paint(const wxRect& damaged);
    void paintGroup(wxGraphicsContext& context, std::size_t group) const;
    void paintFace(wxGraphicsContext& context, std::size_t row) const;
    void paintShapes(wxGraphicsContext& context, const wxRect& damaged) const;
    void paintRow(wxGraphicsContext& context, std::size_t row) const;
    void paintTexts(wxDC& dc, std::size_t row) const;

    // ExplorerBarInput.cpp
    void listen();
    void listenToMouse();
    Row rowAt(wxPoint at) const;
    void setHover(Row row);
    void setFocus(Row row);
    void mouseDown(wxPoint at);
    void mouseUp(wxPoint at);
    void turnWheel(int rotation, int delta);
    bool keyDown(int key, bool shift, bool alt);
    std::vector<std::size_t> stops() const;
    void moveFocus(int step);
    void moveFocusToEnd(bool last);
    void refresh(Row row);
    void click(std::size_t row);
};

} // namespace norvel::controls
