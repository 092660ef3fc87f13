#include "platform/grid/model/TextRoom.h"

namespace norvel::grid {

bool isTextCut(int textWidth, const Span& box, Alignment align, const Span& pane) {
    const int spare = box.length - textWidth;
    if (spare < 0) return true;
    int from = box.from;
    if (align == Alignment::Right) from += spare;
    if (align == Alignment::Center) from += spare / 2;
    return from < pane.from || from + textWidth > pane.from + pane.length;
}

} // namespace norvel::grid
