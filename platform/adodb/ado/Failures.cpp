#include "platform/adodb/ado/Failures.h"

#include "platform/runtime/WideText.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace norvel::com {

namespace {

constexpr std::uint32_t controlFacility = 0x800A0000U;

// Automation's own codes, with the numbers and texts that automation hosts show for them.
struct Known {
    HRESULT code;
    int number;
    const char* text;
};
constexpr Known knownCodes[] = {
    {DISP_E_UNKNOWNNAME, 438, "Proprietà o metodo non supportati dall'oggetto"},
    {DISP_E_MEMBERNOTFOUND, 438, "Proprietà o metodo non supportati dall'oggetto"},
    {DISP_E_TYPEMISMATCH, 13, "Tipo non corrispondente"},
    {DISP_E_OVERFLOW, 6, "Overflow"},
    {DISP_E_BADINDEX, 9, "Indice non compreso nell'intervallo"},
    {DISP_E_BADPARAMCOUNT, 450,
     "Numero di argomenti errato o assegnazione di proprietà non valida"},
    {DISP_E_PARAMNOTOPTIONAL, 449, "Argomento non facoltativo"},
    {DISP_E_NONAMEDARGS, 446, "Argomenti predefiniti non supportati dall'oggetto"},
    {DISP_E_BADVARTYPE, 458, "Variabile con un tipo di automazione non supportato"},
};

const Known* known(HRESULT code) {
    const auto* found = std::ranges::find(knownCodes, code, &Known::code);
    return found == std::end(knownCodes) ? nullptr : found;
}

// The system's own words for a code; empty where it has none.
std::string systemText(HRESULT code) {
    wchar_t* text = nullptr;
    const DWORD units = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::string narrow = units ? narrowText(std::wstring_view(text, units)) : std::string();
    LocalFree(text);
    narrow.erase(narrow.find_last_not_of("\r\n ") + 1);
    return narrow;
}

std::string wordsFor(HRESULT code, std::wstring_view member) {
    const Known* row = known(code);
    std::string text = row ? row->text : systemText(code);
    if (text.empty()) text = "Errore di automazione";
    if (row && !member.empty()) text.append(": ").append(narrowText(member));
    return text;
}

// What the object called left with the thread; empty where it left nothing.
std::string threadText() {
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK || !info) return {};
    BSTR text = nullptr;
    if (FAILED(info->GetDescription(&text))) return {};
    std::string narrow = textOf(text);
    SysFreeString(text);
    return narrow;
}

struct Thrown {
    HRESULT code = 0;
    std::string text;
};

Thrown takeException(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    Thrown thrown;
    thrown.code = exception.scode;
    if (!thrown.code && exception.wCode)
        thrown.code = static_cast<HRESULT>(controlFacility | exception.wCode);
    thrown.text = textOf(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    exception = {};
    return thrown;
}

} // namespace

std::int64_t numberOf(HRESULT code) {
    const auto bits = static_cast<std::uint32_t>(code);
    if ((bits & 0xFFFF0000U) == controlFacility) return bits & 0xFFFFU;
    return code;
}

HRESULT codeOf(std::int64_t number) {
    if (number > 0 && number <= 0xFFFF)
        return static_cast<HRESULT>(controlFacility | static_cast<std::uint32_t>(number));
    if (number < 0 && number >= INT32_MIN) return static_cast<HRESULT>(number);
    return E_FAIL;
}

Errore failure(HRESULT code, std::wstring_view member, EXCEPINFO* exception) {
    if (code == DISP_E_EXCEPTION && exception) {
        Thrown thrown = takeException(*exception);
        if (!thrown.code) thrown.code = E_FAIL;
        if (thrown.text.empty()) thrown.text = wordsFor(thrown.code, member);
        return {numberOf(thrown.code), thrown.text};
    }
    if (const Known* row = known(code)) return {row->number, wordsFor(code, member)};
    std::string text = threadText();
    return {numberOf(code), text.empty() ? wordsFor(code, member) : text};
}

HRESULT raise(const Errore& error, EXCEPINFO* exception, std::string_view source) {
    if (exception) {
        *exception = {};
        exception->scode = codeOf(error.numero());
        exception->bstrSource = newBstr(source);
        exception->bstrDescription = newBstr(error.descrizione());
    }
    return DISP_E_EXCEPTION;
}

} // namespace norvel::com
