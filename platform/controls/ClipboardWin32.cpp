#include "platform/controls/ClipboardData.h"
#include "platform/controls/WxText.h"

namespace norvel::controls {

wxDataObject* clipboardData(std::string text) {
    return new wxTextDataObject(toWx(text));
}

} // namespace norvel::controls
