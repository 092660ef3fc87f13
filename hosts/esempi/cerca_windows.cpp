// A host in C++ for Windows, bound to the type library: opens the search over a table and prints
// the chosen value.
//
//     esempio_windows CONNECTION [TABLE [FIELD]]
//
// CONNECTION is an ADO connection string: "Provider=Microsoft.ACE.OLEDB.12.0;Data
// Source=C:\dati\clienti.accdb". Exit status: 0 a row was chosen, 1 none was, 2 the component or
// the data could not be opened.
#include <algorithm>
#include <clocale>
#include <comdef.h>
#include <cstdio>
#include <string>
#include <vector>
#ifdef _MSC_VER
#import "NorvelRicerca.dll" no_namespace raw_interfaces_only
#else
#include "NorvelRicercaCom.h" // x86_64-w64-mingw32-widl -h -H NorvelRicercaCom.h NorvelRicerca.idl
#endif

namespace {

enum AdoConstant : long {
    adUseClient = 3,
    adOpenStatic = 3,
    adLockReadOnly = 1,
    adBoolean = 11,
    adVarWChar = 202
};

template <class Interface>
using Counted = _com_ptr_t<_com_IIID<Interface, &__uuidof(Interface)>>;
using Object = Counted<IDispatch>;

struct Failure {
    HRESULT code;
    std::wstring text;
};

_bstr_t bstr(const std::wstring& text) {
    return _bstr_t(text.c_str());
}

// A text that a call handed out.
std::wstring taken(BSTR text) {
    std::wstring out(text != nullptr ? text : L"", SysStringLen(text));
    SysFreeString(text);
    return out;
}

void check(HRESULT code) {
    if (FAILED(code)) throw Failure{code, _com_error(code).ErrorMessage()};
}

// --- ADO, by its members' names: any version of it serves ---

_variant_t invoke(IDispatch* object, const wchar_t* name, WORD kind,
                  std::vector<_variant_t> arguments = {}) {
    auto* member = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    check(object->GetIDsOfNames(IID_NULL, &member, 1, LOCALE_USER_DEFAULT, &id));
    std::reverse(arguments.begin(), arguments.end()); // the last comes first
    const bool put = kind == DISPATCH_PROPERTYPUT;
    DISPID newValue = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{arguments.data(), put ? &newValue : nullptr,
                          static_cast<UINT>(arguments.size()), put ? 1U : 0U};
    _variant_t result;
    EXCEPINFO exception{};
    const HRESULT code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                        &result, &exception, nullptr);
    taken(exception.bstrSource);
    taken(exception.bstrHelpFile);
    const std::wstring said = taken(exception.bstrDescription);
    if (code == DISP_E_EXCEPTION) throw Failure{exception.scode, said};
    check(code);
    return result;
}

Object clientRecordset() {
    Object rows;
    check(rows.CreateInstance(L"ADODB.Recordset"));
    invoke(rows, L"CursorLocation", DISPATCH_PROPERTYPUT,
           {long{adUseClient}}); // to filter and sort in memory
    return rows;
}

Object openRows(const _bstr_t& query, const wchar_t* connection) {
    Object rows = clientRecordset();
    invoke(rows, L"Open", DISPATCH_METHOD,
           {query, connection, long{adOpenStatic}, long{adLockReadOnly}});
    return rows;
}

// An open recordset without rows, for a host without personal views; the last field is a Boolean.
Object noRows(const std::vector<const wchar_t*>& fields) {
    Object rows = clientRecordset();
    const Object list = invoke(rows, L"Fields", DISPATCH_PROPERTYGET);
    for (const wchar_t* field : fields)
        invoke(list, L"Append", DISPATCH_METHOD,
               {field, long{field == fields.back() ? adBoolean : adVarWChar}, 50L});
    invoke(rows, L"Open", DISPATCH_METHOD);
    return rows;
}

// --- the search, by its interface ---

std::wstring search(const wchar_t* connection, const std::wstring& table,
                    const std::wstring& field) {
    const _bstr_t query = bstr(L"SELECT * FROM " + table);
    const Object rows = openRows(query, connection);

    Counted<_Ricerca> ricerca;
    check(ricerca.CreateInstance(__uuidof(Ricerca)));
    check(ricerca->put_Caption(bstr(L"Ricerca in " + table)));
    check(ricerca->put_WindowsState(bstr(L"1"))); // centred
    check(ricerca->put_StatusBar(bstr(L"1")));
    check(ricerca->put_FilterBar(bstr(L"1")));
    check(ricerca->put_CampoRicerca(bstr(field))); // what is handed back
    check(ricerca->put_QueryBase(query));
    check(ricerca->putref_Recordset(rows));
    check(ricerca->putref_RecordsetOperatori(
        noRows({L"codiceutente", L"ricerchepers"}))); // none of its own
    check(ricerca->putref_RecordsetViste(
        noRows({L"codiceoperatore", L"codicericerca", L"NomeVista", L"preferito"})));
    _variant_t nothing;
    check(ricerca->Ricerca(&nothing)); // returns when the window is closed

    BSTR answer = nullptr;
    check(ricerca->get_Risposta(&answer));
    std::wstring chosen = taken(answer);
    check(ricerca->putref_Recordset(nullptr)); // the session would keep it
    invoke(rows, L"Close", DISPATCH_METHOD);
    return chosen;
}

int run(int argc, wchar_t** argv) {
    try {
        const std::wstring answer =
            search(argv[1], argc > 2 ? argv[2] : L"clienti", argc > 3 ? argv[3] : L"codice");
        if (answer.empty()) return 1;
        std::printf("%ls\n", answer.c_str());
        return 0;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%ls: 0x%08lX - %ls\n", argv[0],
                     static_cast<unsigned long>(failure.code), failure.text.c_str());
        return 2;
    }
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    std::setlocale(LC_ALL, ""); // texts are written as the console shows them
    if (argc < 2 || argc > 4) {
        std::fprintf(stderr, "usage: %ls CONNECTION [TABLE [FIELD]]\n", argv[0]);
        return 2;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); // a thread with windows
    const int status = run(argc, argv);
    CoUninitialize();
    return status;
}
