#include "platform/controls/Icons.h"

#include "platform/controls/IconPen.h"
#include "platform/runtime/Text.h"

#include <wx/gdicmn.h>
#include <wx/graphics.h>

#include <algorithm>
#include <cmath>

namespace norvel::controls {

namespace {

using Tone = IconPen::Tone;

// A table row with a check mark, between two others: hand this one back.
void selection(IconPen& pen) {
    pen.block(1, 1.6, 14, 1.2);
    pen.block(1, 13.2, 14, 1.2);
    pen.block(1, 4.4, 14, 7.2, Tone::Accent);
    pen.weight(1.5);
    pen.stroke({{4.8, 8.1}, {7, 10.1}, {11.4, 5.9}}, Tone::OnAccent);
}

// A table whose rows alternate.
void easyReading(IconPen& pen) {
    pen.block(2, 4.4, 12, 2.4, Tone::Accent);
    pen.block(2, 9.2, 12, 2.4, Tone::Accent);
    pen.frame(1.5, 2, 13, 12);
}

void pencil(IconPen& pen) {
    pen.fill({{3.6, 10.2}, {10.2, 3.6}, {12.6, 6}, {6, 12.6}}, Tone::Accent);
    pen.outline({{1.9, 14.3}, {3, 10.4}, {11.9, 1.6}, {14.6, 4.3}, {5.7, 13.2}});
    pen.stroke({{9.8, 3.7}, {12.4, 6.3}});
}

// A funnel with the sign of what opens below.
void funnel(IconPen& pen) {
    pen.outline({{1.3, 2.2}, {12.3, 2.2}, {8.3, 7}, {8.3, 13.6}, {5.3, 11.4}, {5.3, 7}});
    pen.weight(1.4);
    pen.stroke({{10.6, 10.6}, {12.8, 12.8}, {15, 10.6}}, Tone::Accent);
}

void scissors(IconPen& pen) {
    pen.stroke({{4.4, 1.6}, {10.5, 10.9}});
    pen.stroke({{11.6, 1.6}, {5.5, 10.9}});
    pen.weight(1.3);
    pen.ring({4.2, 12.5}, 2, Tone::Accent);
    pen.ring({11.8, 12.5}, 2, Tone::Accent);
}

// A clipboard that takes a worksheet.
void worksheetToClipboard(IconPen& pen) {
    pen.frame(2.5, 2.6, 11, 12);
    pen.block(5.2, 1, 5.6, 3);
    pen.weight(1.6);
    pen.stroke({{5.7, 7}, {10.3, 12}}, Tone::Accent);
    pen.stroke({{10.3, 7}, {5.7, 12}}, Tone::Accent);
}

void twoSheets(IconPen& pen) {
    pen.stroke({{3.6, 11.2}, {1.5, 11.2}, {1.5, 1.5}, {9.7, 1.5}, {9.7, 2.8}});
    pen.frame(5.6, 4.8, 8.9, 9.7);
    pen.block(7.6, 7.4, 5, 1.1, Tone::Accent);
    pen.block(7.6, 9.5, 5, 1.1, Tone::Accent);
    pen.block(7.6, 11.6, 3.2, 1.1, Tone::Accent);
}

// A page with a folded corner.
void page(IconPen& pen) {
    pen.outline({{2.5, 1.4}, {9.6, 1.4}, {13.5, 5.3}, {13.5, 14.6}, {2.5, 14.6}});
    pen.stroke({{9.6, 1.4}, {9.6, 5.3}, {13.5, 5.3}});
}

void tablePage(IconPen& pen) {
    page(pen);
    pen.frame(4.8, 7.4, 6.4, 5.2, Tone::Accent);
    pen.stroke({{4.8, 10}, {11.2, 10}}, Tone::Accent);
    pen.stroke({{8, 7.4}, {8, 12.6}}, Tone::Accent);
}

void markupPage(IconPen& pen) {
    page(pen);
    pen.weight(1.2);
    pen.stroke({{6.6, 7.4}, {4.6, 9.9}, {6.6, 12.4}}, Tone::Accent);
    pen.stroke({{9.4, 7.4}, {11.4, 9.9}, {9.4, 12.4}}, Tone::Accent);
}

void printer(IconPen& pen) {
    pen.stroke({{4.2, 5}, {4.2, 1.5}, {11.8, 1.5}, {11.8, 5}});
    pen.stroke({{4.2, 11.4}, {1.5, 11.4}, {1.5, 5.4}, {14.5, 5.4}, {14.5, 11.4}, {11.8, 11.4}});
    pen.frame(4.2, 9, 7.6, 5.5, Tone::Accent);
    pen.block(11.6, 6.8, 1.4, 1, Tone::Accent);
}

void triangle(IconPen& pen, double base, double tip) {
    pen.fill({{base, 3}, {tip, 8}, {base, 13}}, Tone::Accent);
}

void first(IconPen& pen) {
    triangle(pen, 12.8, 5.2);
    pen.block(2.6, 3, 1.8, 10);
}

void previous(IconPen& pen) {
    triangle(pen, 11.6, 4);
}

void next(IconPen& pen) {
    triangle(pen, 4.4, 12);
}

void last(IconPen& pen) {
    triangle(pen, 3.2, 10.8);
    pen.block(11.6, 3, 1.8, 10);
}

// Two arrows that chase each other.
void refresh(IconPen& pen) {
    pen.weight(1.3);
    pen.arc({8, 8}, 5.6, 195, 325);
    pen.arc({8, 8}, 5.6, 15, 145);
    pen.fill({{14.4, 1.8}, {14.4, 7.2}, {9, 7.2}}, Tone::Accent);
    pen.fill({{1.6, 14.2}, {1.6, 8.8}, {7, 8.8}}, Tone::Accent);
}

// Sliders.
void settings(IconPen& pen) {
    for (const double y : {3.0, 8.0, 13.0})
        pen.stroke({{1.6, y}, {14.4, y}});
    pen.disc({10.6, 3}, 2.3, Tone::Accent);
    pen.disc({5, 8}, 2.3, Tone::Accent);
    pen.disc({9, 13}, 2.3, Tone::Accent);
}

// A window with the mark of its close box.
void closeWindow(IconPen& pen) {
    pen.frame(1.5, 2, 13, 12);
    pen.block(1.5, 2, 13, 2.6);
    pen.weight(1.5);
    pen.stroke({{5.8, 7}, {10.2, 11.6}}, Tone::Accent);
    pen.stroke({{10.2, 7}, {5.8, 11.6}}, Tone::Accent);
}

// Columns that change places.
void columns(IconPen& pen) {
    pen.frame(1.5, 1.8, 4.4, 8.4);
    pen.frame(10.1, 1.8, 4.4, 8.4);
    pen.weight(1.2);
    pen.stroke({{1.8, 13.2}, {14.2, 13.2}}, Tone::Accent);
    pen.stroke({{4, 11.2}, {1.8, 13.2}, {4, 15.2}}, Tone::Accent);
    pen.stroke({{12, 11.2}, {14.2, 13.2}, {12, 15.2}}, Tone::Accent);
}

// An eye.
void eye(IconPen& pen) {
    pen.outline({{1.2, 8},
                 {4.2, 4.8},
                 {8, 3.6},
                 {11.8, 4.8},
                 {14.8, 8},
                 {11.8, 11.2},
                 {8, 12.4},
                 {4.2, 11.2}});
    pen.disc({8, 8}, 2.4, Tone::Accent);
}

// A brush over the stroke that it leaves.
void brush(IconPen& pen) {
    pen.weight(1.6);
    pen.stroke({{14, 1.8}, {8, 8.6}});
    pen.fill({{8.6, 7.2}, {10, 8.8}, {7, 12.4}, {3.4, 13}, {4.8, 9.8}}, Tone::Accent);
    pen.weight(1);
    pen.stroke({{1.5, 14.8}, {14.5, 14.8}});
}

// A diskette.
void diskette(IconPen& pen) {
    pen.outline({{1.5, 1.5}, {12, 1.5}, {14.5, 4}, {14.5, 14.5}, {1.5, 14.5}});
    pen.frame(4.5, 1.5, 6.4, 3.8);
    pen.block(4, 8.8, 8, 5.7, Tone::Accent);
}

// An i in a circle.
void note(IconPen& pen) {
    pen.ring({8, 8}, 6.4);
    pen.block(7.2, 4, 1.6, 1.7, Tone::Accent);
    pen.block(7.2, 7, 1.6, 5, Tone::Accent);
}

void magnifier(IconPen& pen) {
    pen.weight(1.3);
    pen.ring({6.6, 6.6}, 4.8);
    pen.weight(2);
    pen.stroke({{10.4, 10.4}, {14.2, 14.2}});
    pen.weight(1.4);
    pen.stroke({{4.4, 6.6}, {8.8, 6.6}}, Tone::Accent);
}

void smaller(IconPen& pen) {
    magnifier(pen);
}

void larger(IconPen& pen) {
    magnifier(pen);
    pen.stroke({{6.6, 4.4}, {6.6, 8.8}}, Tone::Accent);
}

// A page with all its lines between the corners of a window.
void wholePage(IconPen& pen) {
    pen.frame(4.5, 2.5, 7, 11, Tone::Accent);
    pen.stroke({{1.2, 4.2}, {1.2, 1.2}, {3.2, 1.2}});
    pen.stroke({{12.8, 1.2}, {14.8, 1.2}, {14.8, 4.2}});
    pen.stroke({{1.2, 11.8}, {1.2, 14.8}, {3.2, 14.8}});
    pen.stroke({{12.8, 14.8}, {14.8, 14.8}, {14.8, 11.8}});
}

// An arrow from edge to edge.
void pageWidth(IconPen& pen) {
    pen.block(1, 2, 1.2, 12);
    pen.block(13.8, 2, 1.2, 12);
    pen.weight(1.3);
    pen.stroke({{3.6, 8}, {12.4, 8}}, Tone::Accent);
    pen.stroke({{6.2, 5.4}, {3.6, 8}, {6.2, 10.6}}, Tone::Accent);
    pen.stroke({{9.8, 5.4}, {12.4, 8}, {9.8, 10.6}}, Tone::Accent);
}

// A sheet upright and one that lies.
void turnedSheet(IconPen& pen) {
    pen.frame(1.5, 1.5, 7, 10);
    pen.frame(4.5, 7.5, 10, 7, Tone::Accent);
}

void neutral(IconPen& pen) {
    pen.frame(3, 3, 10, 10);
    pen.disc({8, 8}, 2, Tone::Accent);
}

struct Icon {
    std::string_view key;
    void (*draw)(IconPen&);
};

constexpr Icon icons[] = {
    {"Apri", selection},
    {"Facilitata", easyReading},
    {"Modifica", pencil},
    {"Drop", funnel},
    {"Taglia", scissors},
    {"copia", worksheetToClipboard},
    {"copiaclip", twoSheets},
    {"excel", tablePage},
    {"HTML", markupPage},
    {"Stampa", printer},
    {"primo", first},
    {"indietro", previous},
    {"avanti", next},
    {"ultimo", last},
    {"Aggiorna", refresh},
    {"configura", settings},
    {"Chiudi", closeWindow},
    {"nuovo", columns},
    {"vista", eye},
    {"ordine", brush},
    {"salva", diskette},
    {"nota", note},
    {"rimpicciolisci", smaller},
    {"ingrandisci", larger},
    {"pagina", wholePage},
    {"larghezza", pageWidth},
    {"orientamento", turnedSheet},
};

// Rec. 709 luma, 0 to 1.
double brightness(const wxColour& colour) {
    return (0.2126 * colour.Red() + 0.7152 * colour.Green() + 0.0722 * colour.Blue()) / 255;
}

} // namespace

bool isDark(const wxColour& background) {
    return brightness(background) < 0.5;
}

wxColour blend(const wxColour& a, const wxColour& b, double share) {
    const auto mix = [share](unsigned char from, unsigned char to) {
        return static_cast<unsigned char>(std::lround(from + (to - from) * share));
    };
    return {mix(a.Red(), b.Red()), mix(a.Green(), b.Green()), mix(a.Blue(), b.Blue())};
}

IconColours iconColours(const wxColour& background, const wxColour& text, bool enabled) {
    const bool dark = isDark(background);
    if (!enabled) {
        const wxColour pale = blend(background, text, 0.32);
        return {pale, blend(background, text, 0.24), background};
    }
    const wxColour accent = dark ? wxColour(0x6C, 0xB0, 0xF5) : wxColour(0x1A, 0x67, 0xC4);
    return {blend(background, text, 0.82), accent, dark ? wxColour(0x14, 0x1C, 0x26) : *wxWHITE};
}

void drawIcon(wxGraphicsContext& context, std::string_view key, const wxRect2DDouble& where,
              const IconColours& colours, double deviceScale) {
    const auto* const found =
        std::ranges::find_if(icons, [&](const Icon& icon) { return equalsText(icon.key, key); });
    context.PushState();
    context.Clip(where.m_x, where.m_y, where.m_width, where.m_height); // GDI+ smooths beyond edges
    context.DisableOffset(); // the pen puts its strokes on pixels by itself
    IconPen pen(context, where, colours, deviceScale);
    (found != std::end(icons) ? found->draw : neutral)(pen);
    context.PopState();
}

std::vector<std::string_view> iconKeys() {
    std::vector<std::string_view> keys;
    for (const Icon& icon : icons)
        keys.push_back(icon.key);
    return keys;
}

} // namespace norvel::controls
