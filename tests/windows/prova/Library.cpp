// What regsvr32 and COM call.
#include "tests/windows/prova/Registration.h"

#include <cwchar>

namespace {

std::wstring modulePath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&modulePath), &module);
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

} // namespace

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) {
    return norvel::prova::classObject(clsid, iid, out);
}
HRESULT WINAPI DllCanUnloadNow() {
    return norvel::prova::mayUnload() ? S_OK : S_FALSE;
}
HRESULT WINAPI DllRegisterServer() {
    return norvel::prova::registerClasses(modulePath());
}
HRESULT WINAPI DllUnregisterServer() {
    return norvel::prova::unregisterClasses();
}
// regsvr32 /n /i:ADODB, and /u /n /i:ADODB to undo it.
HRESULT WINAPI DllInstall(BOOL install, const wchar_t* what) {
    if (!what || _wcsicmp(what, L"ADODB") != 0) return E_INVALIDARG;
    return norvel::prova::takeAdoNames(install != FALSE);
}

} // extern "C"
