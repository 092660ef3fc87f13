#include "platform/grid/preview/PreviewCanvas.h"

#include "platform/controls/WxText.h"
#include "platform/grid/Palette.h"
#include "platform/runtime/ErroreInCorso.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>

namespace norvel::grid {

using adodb::RowCount;

namespace {

constexpr int gapDip = 16;    // between the paper and the window's edges
constexpr int arrowDip = 48;  // an arrow key scrolls so far
constexpr int notchDip = 120; // a notch of the wheel

} // namespace

PreviewCanvas::PreviewCanvas(wxWindow* parent, PrintJob& job, PagePainter& painter)
    : job_(job), painter_(painter) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
           wxHSCROLL | wxVSCROLL | wxWANTS_CHARS | wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE);
    SetScrollRate(1, 1);
    EnableScrolling(false, false); // painted anew: a moved picture would leave its seams
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& e) {
        layOut();
        e.Skip();
    });
    Bind(wxEVT_MOUSEWHEEL, &PreviewCanvas::onWheel, this);
    Bind(wxEVT_KEY_DOWN, &PreviewCanvas::onKey, this);
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& e) {
        SetFocus();
        e.Skip();
    });
}

double PreviewCanvas::pixelsPerTwip() const {
    return zoom_ * 96.0 / 1440.0 * GetDPIScaleFactor() / GetContentScaleFactor();
}

wxSize PreviewCanvas::paperSize() const {
    const PaperSize paper = job_.Layout().Paper();
    const double scale = pixelsPerTwip();
    return {static_cast<int>(std::lround(paper.Width * scale)),
            static_cast<int>(std::lround(paper.Height * scale))};
}

wxRect PreviewCanvas::PaperRect() const {
    const wxSize paper = paperSize();
    const wxSize room = GetClientSize();
    const int gap = FromDIP(gapDip);
    const wxPoint view = GetViewStart();
    return {std::max(gap, (room.x - paper.x) / 2) - view.x,
            std::max(gap, (room.y - paper.y) / 2) - view.y, paper.x, paper.y};
}

// Scroll bars do not come and go with a page that is fitted: it leaves room for them.
void PreviewCanvas::layOut() {
    const int gap = FromDIP(gapDip);
    const wxSize room = mode_ == ZoomMode::Page ? GetSize() : GetClientSize();
    if (mode_ != ZoomMode::Fixed) {
        const double unit = 96.0 / 1440.0 * GetDPIScaleFactor() / GetContentScaleFactor();
        int width = room.x - 2 * gap;
        if (mode_ == ZoomMode::Width) {
            const int bar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
            width = GetSize().x - 2 * gap - std::max(0, bar);
        }
        zoom_ = fittingZoom(mode_, job_.Layout().Paper(), width / unit, (room.y - 2 * gap) / unit);
    }
    const wxSize paper = paperSize();
    SetVirtualSize(paper.x + 2 * gap, paper.y + 2 * gap);
    Refresh(false);
}

void PreviewCanvas::changed() {
    Refresh(false);
    if (OnChange) OnChange();
}

void PreviewCanvas::scrollTo(int x, int y) {
    Scroll(std::max(0, x), std::max(0, y));
    Refresh(false);
}

void PreviewCanvas::ShowPage(RowCount page, bool bottom) {
    page_ = std::clamp<RowCount>(page, 1, job_.PageCount());
    const int end = GetVirtualSize().y - GetClientSize().y;
    scrollTo(GetViewStart().x, bottom ? end : 0);
    changed();
}

void PreviewCanvas::ShowRow(RowCount row) {
    layOut();
    ShowPage(job_.Layout().PageOfRow(row, 1));
}

wxPoint PreviewCanvas::Centre() const {
    const wxSize room = GetClientSize();
    return {room.x / 2, room.y / 2};
}

void PreviewCanvas::SetZoom(ZoomMode mode, double zoom) {
    zoomTo(mode, zoom, Anchor());
}

wxPoint PreviewCanvas::Anchor() const {
    const wxPoint centre = Centre();
    return GetViewStart().y == 0 ? wxPoint(centre.x, PaperRect().y) : centre;
}

void PreviewCanvas::zoomTo(ZoomMode mode, double zoom, wxPoint around) {
    const wxRect before = PaperRect();
    mode_ = mode;
    zoom_ = std::clamp(zoom, leastZoom, mostZoom);
    layOut();
    // The point of the paper that was there.
    const wxRect paper = PaperRect();
    const auto moved = [](int at, int start, int length, int newStart, int newLength) {
        const double share = length > 0 ? static_cast<double>(at - start) / length : 0;
        return static_cast<int>(std::lround(newStart + share * newLength)) - at;
    };
    scrollBy(moved(around.x, before.x, before.width, paper.x, paper.width),
             moved(around.y, before.y, before.height, paper.y, paper.height));
    changed();
}

void PreviewCanvas::StepZoom(bool larger, wxPoint around) {
    zoomTo(ZoomMode::Fixed, nextZoom(zoom_, larger), around);
}

void PreviewCanvas::scrollBy(int x, int y) {
    const wxPoint view = GetViewStart();
    scrollTo(view.x + x, view.y + y);
}

// True when there was another page that way.
bool PreviewCanvas::turnPage(int direction) {
    const RowCount wanted = page_ + direction;
    if (wanted < 1 || wanted > job_.PageCount()) return false;
    ShowPage(wanted, direction < 0);
    return true;
}

void PreviewCanvas::onWheel(wxMouseEvent& event) {
    if (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL) return event.Skip();
    wheel_ += event.GetWheelRotation();
    const int notches = wheel_ / std::max(1, event.GetWheelDelta());
    if (event.ControlDown()) {
        wheel_ -= notches * event.GetWheelDelta();
        for (int i = 0; i < std::abs(notches); ++i)
            StepZoom(notches > 0, event.GetPosition());
        return;
    }
    const int end = GetVirtualSize().y - GetClientSize().y;
    const int view = GetViewStart().y;
    const bool atEdge = event.GetWheelRotation() < 0 ? view >= end : view <= 0;
    if (atEdge) {
        wheel_ -= notches * event.GetWheelDelta();
        if (notches != 0) turnPage(notches < 0 ? 1 : -1);
        return;
    }
    const int step =
        FromDIP(notchDip) * event.GetWheelRotation() / std::max(1, event.GetWheelDelta());
    wheel_ = 0;
    scrollBy(0, -step);
}

void PreviewCanvas::onKey(wxKeyEvent& event) {
    const int step = FromDIP(arrowDip);
    const int end = GetVirtualSize().y - GetClientSize().y;
    const int view = GetViewStart().y;
    switch (event.GetKeyCode()) {
    case WXK_DOWN:
        if (view >= end)
            turnPage(1);
        else
            scrollBy(0, step);
        return;
    case WXK_UP:
        if (view <= 0)
            turnPage(-1);
        else
            scrollBy(0, -step);
        return;
    case WXK_LEFT:
        return scrollBy(-step, 0);
    case WXK_RIGHT:
        return scrollBy(step, 0);
    default:
        event.Skip();
    }
}

// The paper is white whatever the theme is. What could not be read stands on it.
void PreviewCanvas::paint() {
    wxAutoBufferedPaintDC dc(this);
    const Palette palette = systemPalette();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(blend(palette.face, palette.faceText, palette.dark ? 0.12 : 0.28));
    dc.DrawRectangle(GetClientSize());
    const wxRect paper = PaperRect();
    const int shadow = FromDIP(2);
    dc.SetBrush(blend(palette.face, *wxBLACK, 0.6));
    dc.DrawRectangle(paper.x + shadow, paper.y + shadow, paper.width, paper.height);
    dc.SetBrush(*wxWHITE_BRUSH);
    dc.DrawRectangle(paper);
    const wxRect part = wxRect(GetClientSize()).Intersect(paper);
    if (part.IsEmpty()) return;
    try {
        painter_.PaintOnScreen(dc, job_.Page(page_), pixelsPerTwip(), paper.GetTopLeft(), part);
    } catch (...) { // each paint would raise it anew
        const Errore error = erroreInCorso();
        dc.SetFont(GetFont());
        dc.SetTextForeground(*wxBLACK);
        dc.DrawLabel(controls::toWx("Impossibile leggere i record: " + error.descrizione()),
                     wxRect(part).Deflate(FromDIP(gapDip)), wxALIGN_LEFT | wxALIGN_TOP);
    }
}

} // namespace norvel::grid
