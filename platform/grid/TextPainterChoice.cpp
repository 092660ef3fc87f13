#include "platform/grid/TextPainter.h"

namespace norvel::grid {

std::unique_ptr<TextPainter> makeTextPainter() {
    return makePlainTextPainter();
}

} // namespace norvel::grid
