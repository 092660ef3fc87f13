// A host of the multithreaded apartment: COM makes an apartment of its own for the component, and
// hands the host a proxy by the type library. Searches a hundred rows and writes the answer. Exit
// status: 0, or 1 where a call failed.
#include "tests/windows/hosts/CppHost.h"

#include <cstdio>
#include <objbase.h>

namespace {

using namespace norvel;

int searchOnce() {
    const com::ComPtr<_Ricerca> ricerca = tests::createRicerca();
    if (!ricerca) return 1;
    tests::prepare(*ricerca.get(), tests::clients(100));
    VARIANT result;
    VariantInit(&result);
    if (FAILED(ricerca->Ricerca(&result))) return 1;
    std::printf("%ls\n", tests::answerOf(*ricerca.get()).c_str());
    ricerca->putref_Recordset(nullptr);
    ricerca->putref_RecordsetOperatori(nullptr);
    ricerca->putref_RecordsetViste(nullptr);
    return V_VT(&result) == VT_EMPTY ? 0 : 1;
}

} // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const int status = searchOnce();
    CoUninitialize();
    return status;
}
