#include "platform/controls/IconPen.h"

#include <wx/brush.h>
#include <wx/pen.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace norvel::controls {

namespace {
constexpr double gridSide = 16;
constexpr double strokeUnits = 1.15; // a stroke's width before it is rounded to device pixels
} // namespace

IconPen::IconPen(wxGraphicsContext& context, const wxRect2DDouble& where,
                 const IconColours& colours, double deviceScale)
    : context_(context), where_(where), colours_(colours), deviceScale_(deviceScale),
      unit_(std::min(where.m_width, where.m_height) / gridSide) {}

double IconPen::strokeWidth() const {
    return std::max(1.0, std::round(strokeUnits * weight_ * unit_ * deviceScale_)) / deviceScale_;
}

// The nearest place for a stroke's middle that puts both its edges on whole device pixels.
double IconPen::onStroke(double device) const {
    const double half = strokeWidth() * deviceScale_ / 2;
    return std::round(device - half) + half;
}

IconPen::Point IconPen::exactPoint(Point point) const {
    return {where_.m_x + point.x * unit_, where_.m_y + point.y * unit_};
}

IconPen::Point IconPen::strokePoint(Point point) const {
    const Point at = exactPoint(point);
    return {onStroke(at.x * deviceScale_) / deviceScale_,
            onStroke(at.y * deviceScale_) / deviceScale_};
}

IconPen::Point IconPen::edgePoint(Point point) const {
    const Point at = exactPoint(point);
    return {std::round(at.x * deviceScale_) / deviceScale_,
            std::round(at.y * deviceScale_) / deviceScale_};
}

double IconPen::length(double units) const {
    return units * unit_;
}

const wxColour& IconPen::colour(Tone tone) const {
    switch (tone) {
    case Tone::Accent:
        return colours_.accent;
    case Tone::OnAccent:
        return colours_.onAccent;
    case Tone::Line:
        break;
    }
    return colours_.line;
}

void IconPen::usePen(Tone tone) {
    context_.SetPen(context_.CreatePen(
        wxGraphicsPenInfo(colour(tone), strokeWidth()).Cap(wxCAP_ROUND).Join(wxJOIN_ROUND)));
}

wxGraphicsPath IconPen::path(std::initializer_list<Point> points, bool closed) const {
    wxGraphicsPath line = context_.CreatePath();
    bool first = true;
    for (const Point& point : points) {
        const Point at = strokePoint(point);
        if (first)
            line.MoveToPoint(at.x, at.y);
        else
            line.AddLineToPoint(at.x, at.y);
        first = false;
    }
    if (closed) line.CloseSubpath();
    return line;
}

void IconPen::stroke(std::initializer_list<Point> points, Tone tone) {
    usePen(tone);
    context_.StrokePath(path(points, false));
}

void IconPen::outline(std::initializer_list<Point> points, Tone tone) {
    usePen(tone);
    context_.StrokePath(path(points, true));
}

void IconPen::fill(std::initializer_list<Point> points, Tone tone) {
    context_.SetBrush(wxBrush(colour(tone)));
    wxGraphicsPath shape = context_.CreatePath();
    bool first = true;
    for (const Point& point : points) {
        const Point at = edgePoint(point);
        if (first)
            shape.MoveToPoint(at.x, at.y);
        else
            shape.AddLineToPoint(at.x, at.y);
        first = false;
    }
    shape.CloseSubpath();
    context_.FillPath(shape);
}

void IconPen::frame(double x, double y, double width, double height, Tone tone) {
    usePen(tone);
    const Point first = strokePoint({x, y});
    const Point last = strokePoint({x + width, y + height});
    wxGraphicsPath shape = context_.CreatePath();
    shape.AddRectangle(first.x, first.y, last.x - first.x, last.y - first.y);
    context_.StrokePath(shape);
}

// Its size is rounded, not its far edges, so that blocks of one size are one size everywhere.
void IconPen::block(double x, double y, double width, double height, Tone tone) {
    const Point first = edgePoint({x, y});
    const auto rounded = [this](double units) {
        return std::max(1.0, std::round(length(units) * deviceScale_)) / deviceScale_;
    };
    context_.SetPen(wxNullPen);
    context_.SetBrush(wxBrush(colour(tone)));
    context_.DrawRectangle(first.x, first.y, rounded(width), rounded(height));
}

void IconPen::ring(Point centre, double radius, Tone tone) {
    arc(centre, radius, 0, 360, tone);
}

void IconPen::disc(Point centre, double radius, Tone tone) {
    const Point at = exactPoint(centre);
    const double r = length(radius);
    context_.SetPen(wxNullPen);
    context_.SetBrush(wxBrush(colour(tone)));
    context_.DrawEllipse(at.x - r, at.y - r, 2 * r, 2 * r);
}

void IconPen::arc(Point centre, double radius, double from, double to, Tone tone) {
    usePen(tone);
    const Point at = exactPoint(centre);
    const double degree = std::numbers::pi / 180;
    const double r = length(radius);
    wxGraphicsPath shape = context_.CreatePath();
    if (to - from >= 360) {
        shape.AddCircle(at.x, at.y, r);
    } else { // on Windows an arc without a current point begins with a line from the origin
        shape.MoveToPoint(at.x + r * std::cos(from * degree), at.y + r * std::sin(from * degree));
        shape.AddArc(at.x, at.y, r, from * degree, to * degree, true);
    }
    context_.StrokePath(shape);
}

} // namespace norvel::controls
