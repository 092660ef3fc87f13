// What a side menu knows, shared by the files that place it, draw it and listen to the operator.
#pragma once

#include "platform/controls/ExplorerBar.h"
#include "platform/controls/PartsInput.h"

#include <wx/gdicmn.h>

class wxDC;
class wxGraphicsContext;
class wxScrollBar;

namespace norvel::controls {

// Its parts are the rows of the layout.
struct ExplorerBar::Impl : PartsInput<std::size_t> {
    ExplorerBar& bar;
    int widthTwips;
    std::vector<ExplorerGroup> groups;
    ExplorerRows layout;
    wxScrollBar* scrollBar = nullptr;
    int top = 0; // pixels scrolled away
    int stopped = 0;
    int wheel = 0; // what a notch is still to be made of

    std::string selected;

    Impl(ExplorerBar& owner, int twips) : PartsInput(owner), bar(owner), widthTwips(twips) {}

    // ExplorerBar.cpp
    ExplorerMetrics metrics(int width) const;
    void layOut() override;
    void scrollTo(int pixels);
    void show(std::size_t row);
    const std::string& keyOf(const ExplorerRow& row) const;
    Place rowOf(std::string_view key) const;
    bool isCommand(const ExplorerRow& row) const;
    wxRect rectOf(std::size_t row) const override;
    wxSize area() const; // without the scroll bar

    // ExplorerBarPaint.cpp
    void paint(const wxRect& damaged) override;
    void paintGroup(wxGraphicsContext& context, std::size_t group) const;
    void paintFace(wxGraphicsContext& context, std::size_t row) const;
    void paintShapes(wxGraphicsContext& context, const wxRect& damaged) const;
    void paintRow(wxGraphicsContext& context, std::size_t row) const;
    void paintTexts(wxDC& dc, std::size_t row) const;

    // ExplorerBarInput.cpp
    void listenToWheel();
    void turnWheel(int rotation, int delta);
    Place partAt(wxPoint at) const override;
    std::vector<std::size_t> stops() const override;
    std::string tipOf(std::size_t row) const override;
    void focused(std::size_t row) override { show(row); }
    bool otherKey(int key) override;
    bool takePress(std::size_t row) override;
    void click(std::size_t row) override;
    void pressKey(std::size_t row) override { click(row); }
};

} // namespace norvel::controls
