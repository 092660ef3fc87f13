// Who holds what: references over many searches, the component's stay in the process, other
// apartments.
#include "tests/windows/hosts/CppHost.h"

#include <thread>

namespace norvel::tests {
namespace {

using com::ComPtr;
using com::DispatchObject;

HRESULT maySayFarewell(const char* path) {
    const HMODULE module = GetModuleHandleW(windowsPath(path).c_str());
    const auto function = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    return function == nullptr ? E_NOTIMPL : function();
}

void letGoOfRows(_Ricerca& ricerca) {
    EXPECT_EQ(ricerca.putref_Recordset(nullptr), S_OK);
    EXPECT_EQ(ricerca.putref_RecordsetOperatori(nullptr), S_OK);
    EXPECT_EQ(ricerca.putref_RecordsetViste(nullptr), S_OK);
}

// A double-click chooses without waiting for the window to take Enter.
void chooseSomeRow() {
    Shown::titled(caption).chooseByDoubleClick();
}

// The recordsets' server may go when no object of it is held: no recordset, clone, field,
// connection.
TEST(CppObjects, NothingOfAHostsRecordsetsIsHeldOnceTheyAreSetToNothing) {
    const HMODULE server = LoadLibraryW(windowsPath(NR_PROVA).c_str());
    ComPtr<_Ricerca> ricerca = createRicerca();
    letGoOfRows(*ricerca.get());
    ASSERT_EQ(maySayFarewell(NR_PROVA), S_OK);
    {
        const DispatchObject rows = clients(200);
        prepare(*ricerca.get(), rows);
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(search(*ricerca.get(), chooseSomeRow), S_OK);
        prepare(*ricerca.get(), clients(300)); // and rows that take the place of others
        EXPECT_EQ(search(*ricerca.get(), chooseSomeRow), S_OK);
    }
    EXPECT_EQ(maySayFarewell(NR_PROVA), S_FALSE); // the session holds the last ones
    letGoOfRows(*ricerca.get());
    EXPECT_EQ(maySayFarewell(NR_PROVA), S_OK);
    EXPECT_EQ(ricerca.detach()->Release(), 0U);
    FreeLibrary(server);
}

TEST(CppObjects, ComponentStaysInTheProcessAfterASearchWhateverTheHostReleases) {
    ComPtr<_Ricerca> ricerca = createRicerca();
    prepare(*ricerca.get(), clients(50));
    EXPECT_EQ(search(*ricerca.get(), chooseSomeRow), S_OK);
    const std::wstring answer = answerOf(*ricerca.get());
    EXPECT_FALSE(answer.empty());
    letGoOfRows(*ricerca.get());
    ricerca = {};
    EXPECT_EQ(maySayFarewell(NR_DLL), S_FALSE);
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    CoUninitialize();
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    EXPECT_EQ(answerOf(*createRicerca().get()), answer);
}

// A search on a thread of its own, with keys and with the timer after which Enter counts.
std::wstring searchOnAnotherThread() {
    std::wstring answer;
    std::thread host([&answer] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        if (const ComPtr<_Ricerca> ricerca = createRicerca()) {
            prepare(*ricerca.get(), clients(50));
            EXPECT_EQ(search(*ricerca.get(),
                             [] {
                                 const Shown window = Shown::titled(caption);
                                 press(VK_DOWN, 2);
                                 window.chooseByEnter();
                             }),
                      S_OK);
            answer = answerOf(*ricerca.get());
            letGoOfRows(*ricerca.get());
        }
        CoUninitialize();
    });
    host.join();
    return answer;
}

TEST(CppObjects, SearchesMoveFromThreadToThreadAlsoFromOneThatHasEnded) {
    EXPECT_EQ(searchOnAnotherThread(), L"3");
    EXPECT_EQ(searchOnAnotherThread(), L"3");
    const ComPtr<_Ricerca> ricerca = createRicerca();
    prepare(*ricerca.get(), clients(50));
    EXPECT_EQ(search(*ricerca.get(), [] { Shown::titled(caption).chooseByEnter(); }), S_OK);
    EXPECT_EQ(answerOf(*ricerca.get()), L"1");
    letGoOfRows(*ricerca.get());
}

TEST(CppObjects, HostOfTheMultithreadedApartmentGetsItsAnswerThroughAProxy) {
    Program host({windowsPath(NR_MULTITHREADED).wstring()});
    const Shown window = host.window(caption);
    press(VK_DOWN);
    window.chooseByEnter();
    EXPECT_EQ(host.end(), 0U);
    EXPECT_EQ(host.output(), L"2\n");
}

} // namespace
} // namespace norvel::tests
