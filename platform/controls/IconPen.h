// Draws an icon's strokes and shapes on a 16 by 16 grid, whatever its size on screen.
#pragma once

#include "platform/controls/Icons.h"

#include <wx/graphics.h>

#include <initializer_list>

namespace norvel::controls {

// Coordinates are units of the grid, y downwards. Horizontal and vertical edges fall on whole
// pixels of the device, and strokes are a whole number of them wide, so that nothing is blurred.
class IconPen {
  public:
    struct Point {
        double x, y;
    };
    enum class Tone { Line, Accent, OnAccent };

    IconPen(wxGraphicsContext& context, const wxRect2DDouble& where, const IconColours& colours,
            double deviceScale);

    // How many strokes wide the next strokes are; 1 at first.
    void weight(double strokes) { weight_ = strokes; }
    void stroke(std::initializer_list<Point> points, Tone tone = Tone::Line);
    void outline(std::initializer_list<Point> points, Tone tone = Tone::Line); // closed
    void fill(std::initializer_list<Point> points, Tone tone = Tone::Line);
    void frame(double x, double y, double width, double height, Tone tone = Tone::Line);
    void block(double x, double y, double width, double height, Tone tone = Tone::Line);
    void ring(Point centre, double radius, Tone tone = Tone::Line);
    void disc(Point centre, double radius, Tone tone = Tone::Line);
    // Clockwise; angles in degrees, 0 to the right, 90 down.
    void arc(Point centre, double radius, double from, double to, Tone tone = Tone::Line);

  private:
    double strokeWidth() const; // logical pixels
    double onStroke(double device) const;
    Point strokePoint(Point point) const;
    Point edgePoint(Point point) const;
    Point exactPoint(Point point) const;
    double length(double units) const;
    const wxColour& colour(Tone tone) const;
    void usePen(Tone tone);
    wxGraphicsPath path(std::initializer_list<Point> points, bool closed) const;

    wxGraphicsContext& context_;
    wxRect2DDouble where_;
    const IconColours& colours_;
    double deviceScale_;
    double unit_; // logical pixels a unit
    double weight_ = 1;
};

} // namespace norvel::controls
