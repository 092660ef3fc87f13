#include "platform/grid/preview/Printers.h"

namespace norvel::grid {

bool printerAvailable() {
    return true;
}

} // namespace norvel::grid
