#include "platform/adodb/ado/Com.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/WideText.h"

namespace norvel::com {

std::string textOf(BSTR text) {
    return text ? narrowText(std::wstring_view(text, SysStringLen(text))) : std::string();
}

BSTR newBstr(std::string_view text) {
    const std::wstring wide = wideText(toValidUtf8(text));
    BSTR made = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (!made) throw Errore(7, "Memoria esaurita");
    return made;
}

} // namespace norvel::com
