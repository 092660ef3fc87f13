#include "search_window/Misure.h"

namespace norvel::search_window {

MisureFinestra& misureFinestra() {
    static MisureFinestra misure;
    return misure;
}

} // namespace norvel::search_window
