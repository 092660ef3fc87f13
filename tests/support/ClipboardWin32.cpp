#include "platform/runtime/WideText.h"
#include "tests/support/Clipboard.h"

#include <windows.h>

namespace norvel::tests {

std::string clipboardText() {
    if (OpenClipboard(nullptr) == 0) return {};
    std::string text;
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    if (const auto* units = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr) {
        text = narrowText(units);
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

} // namespace norvel::tests
