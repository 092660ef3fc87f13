#include "platform/controls/ClipboardData.h"
#include "platform/controls/WxText.h"

namespace norvel::controls {

// By value, as where the text itself is kept.
wxDataObject* clipboardData(std::string text) { // NOLINT(performance-unnecessary-value-param)
    return new wxTextDataObject(toWx(text));
}

} // namespace norvel::controls
