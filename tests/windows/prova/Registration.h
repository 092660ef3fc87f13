// The classes that the test server offers, and where they are registered.
#pragma once

#include "platform/adodb/ado/Com.h"
#include "platform/runtime/Variant.h"

#include <span>
#include <string>

namespace norvel::prova {

struct ServedClass {
    CLSID clsid;
    const wchar_t* progId; // NorvelProva.Recordset…
    const wchar_t* adoId;  // ADO's own name for it
    CLSID adoClsid;        // ADO's own class
    ObjectRef (*make)();
};
std::span<const ServedClass> servedClasses();

HRESULT classObject(REFCLSID clsid, REFIID iid, void** out);
bool mayUnload();

// For the machine, for the user alone where there are no rights to the machine. module: the
// library's file.
HRESULT registerClasses(const std::wstring& module);
HRESULT unregisterClasses();
// ADO's names for these classes, so that who creates "ADODB.Recordset" gets one of ours; or back to
// ADO. Only under Wine: a Windows keeps its ADO (E_ACCESSDENIED).
HRESULT takeAdoNames(bool take);

} // namespace norvel::prova
