#include "tests/windows/prova/Registration.h"

#include "platform/adodb/Recordset.h"

#include <vector>

namespace norvel::prova {

namespace {

constexpr CLSID adoClass(unsigned long first) {
    return {first, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
}

const ServedClass classes[] = {
    {{0xe5be9cec, 0x6e06, 0x4d06, {0xba, 0x17, 0x83, 0x95, 0xb9, 0x85, 0xc6, 0x7a}},
     L"NorvelProva.Recordset",
     L"ADODB.Recordset",
     adoClass(0x535),
     []() -> ObjectRef { return adodb::makeClientRecordset(); }},
    {{0x4bbbc6a1, 0xaad0, 0x43c7, {0xb8, 0x28, 0x55, 0xc5, 0x34, 0x19, 0x61, 0xd1}},
     L"NorvelProva.Connection",
     L"ADODB.Connection",
     adoClass(0x514),
     []() -> ObjectRef { return adodb::makeConnection(); }},
    {{0x21cf6ab8, 0xda85, 0x4b95, {0xb0, 0x3c, 0x2e, 0x58, 0xc4, 0x61, 0x72, 0x1a}},
     L"NorvelProva.Command",
     L"ADODB.Command",
     adoClass(0x507),
     []() -> ObjectRef { return adodb::makeCommand(); }},
};

std::wstring text(REFCLSID clsid) {
    wchar_t buffer[40];
    StringFromGUID2(clsid, buffer, 40);
    return buffer;
}

// A value of the registry; the key's default where it has no name.
struct Row {
    std::wstring key; // under Software\Classes
    std::wstring name;
    std::wstring value;
};

std::vector<Row> rowsOf(const ServedClass& served, const std::wstring& module) {
    const std::wstring id = L"CLSID\\" + text(served.clsid);
    return {
        {served.progId, L"", served.progId},
        {std::wstring(served.progId) + L"\\CLSID", L"", text(served.clsid)},
        {id, L"", served.progId},
        {id + L"\\ProgID", L"", served.progId},
        {id + L"\\InprocServer32", L"", module},
        {id + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
    };
}

std::wstring classKey(const std::wstring& key) {
    return L"Software\\Classes\\" + key;
}

HRESULT write(HKEY root, const Row& row) {
    HKEY key = nullptr;
    LSTATUS status = RegCreateKeyExW(root, classKey(row.key).c_str(), 0, nullptr, 0, KEY_WRITE,
                                     nullptr, &key, nullptr);
    if (status == ERROR_SUCCESS) {
        status = RegSetValueExW(key, row.name.c_str(), 0, REG_SZ,
                                reinterpret_cast<const BYTE*>(row.value.c_str()),
                                static_cast<DWORD>((row.value.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
    }
    return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

HRESULT writeAll(HKEY root, const std::vector<Row>& rows) {
    for (const Row& row : rows)
        if (const HRESULT result = write(root, row); FAILED(result)) return result;
    return S_OK;
}

bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

const HKEY roots[] = {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER};

HRESULT writeSomewhere(const std::vector<Row>& rows) {
    HRESULT result = E_FAIL;
    for (const HKEY root : roots)
        if (SUCCEEDED(result = writeAll(root, rows))) return S_OK;
    return result;
}

} // namespace

std::span<const ServedClass> servedClasses() {
    return classes;
}

HRESULT registerClasses(const std::wstring& module) {
    for (const ServedClass& served : classes)
        if (const HRESULT result = writeSomewhere(rowsOf(served, module)); FAILED(result))
            return result;
    return S_OK;
}

HRESULT unregisterClasses() {
    for (const HKEY root : roots) {
        for (const ServedClass& served : classes) {
            RegDeleteTreeW(root, classKey(served.progId).c_str());
            RegDeleteTreeW(root, classKey(L"CLSID\\" + text(served.clsid)).c_str());
        }
    }
    return S_OK;
}

HRESULT takeAdoNames(bool take) {
    if (!underWine()) return E_ACCESSDENIED;
    for (const ServedClass& served : classes) {
        const Row row{std::wstring(served.adoId) + L"\\CLSID", L"",
                      text(take ? served.clsid : served.adoClsid)};
        if (const HRESULT result = writeSomewhere({row}); FAILED(result)) return result;
    }
    return S_OK;
}

} // namespace norvel::prova
