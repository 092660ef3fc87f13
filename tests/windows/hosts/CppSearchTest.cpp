// Searches of a host in C++: bound early, with windows and threads of its own.
#include "tests/windows/hosts/CppHost.h"

#include <thread>

namespace norvel::tests {
namespace {

using com::ComPtr;
using com::DispatchObject;

class CppSearch : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(ricerca_ = createRicerca());
        prepare(*ricerca_.get(), clients(100));
    }
    // The session keeps nothing for the next test.
    void TearDown() override {
        const ComPtr<_Ricerca> last = createRicerca();
        last->putref_Recordset(nullptr);
        last->putref_RecordsetOperatori(nullptr);
        last->putref_RecordsetViste(nullptr);
    }
    HRESULT search(const std::function<void()>& steps) {
        return tests::search(*ricerca_.get(), steps);
    }

    ComPtr<_Ricerca> ricerca_;
};

void chooseSecondRow() {
    const Shown window = Shown::titled(caption);
    press(VK_DOWN);
    window.chooseByEnter();
}

TEST_F(CppSearch, ChoosesARowByTheInterface) {
    EXPECT_EQ(search(chooseSecondRow), S_OK);
    EXPECT_EQ(answerOf(*ricerca_.get()), L"2");
}

TEST_F(CppSearch, SeveralRowsByTheInterface) {
    EXPECT_EQ(ricerca_->put_SelezioneMultipla(VARIANT_TRUE), S_OK);
    EXPECT_EQ(search([] {
                  const Shown window = Shown::titled(caption);
                  for (const WORD key : {VK_SPACE, VK_DOWN, VK_SPACE})
                      pressHolding(VK_CONTROL, key);
                  window.chooseByEnter();
              }),
              S_OK);
    EXPECT_EQ(answerOf(*ricerca_.get()), L"1|2|");
}

struct Placement {
    const wchar_t* state;
    const wchar_t* left;
    const wchar_t* top;
    const wchar_t* width;
    const wchar_t* height;
    RECT expected; // pixels of 15 twips
};

RECT screenMiddle(LONG width, LONG height) {
    const LONG left = (GetSystemMetrics(SM_CXSCREEN) - width) / 2;
    const LONG top = (GetSystemMetrics(SM_CYSCREEN) - height) / 2;
    return {left, top, left + width, top + height};
}

TEST_F(CppSearch, WindowStandsWhereTheSessionSays) {
    const Placement placements[] = {
        {L"1", L"3000", L"1500", L"0", L"0", screenMiddle(757, 467)},
        {L"0", L"3000", L"1500", L"9000", L"6000", {200, 100, 800, 500}},
        {L"3", L"0", L"0", L"7500", L"6000", {0, 0, 500, 400}},
    };
    for (const Placement& each : placements) {
        ricerca_->put_WindowsState(Text(each.state));
        ricerca_->put_Left(Text(each.left));
        ricerca_->put_Top(Text(each.top));
        ricerca_->put_Width(Text(each.width));
        ricerca_->put_Height(Text(each.height));
        RECT seen{};
        EXPECT_EQ(search([&seen] {
                      const Shown window = Shown::titled(caption);
                      GetWindowRect(window.handle(), &seen);
                      window.close();
                  }),
                  S_OK);
        EXPECT_NEAR(seen.left, each.expected.left, 1) << "state '" << each.state << "'";
        EXPECT_NEAR(seen.top, each.expected.top, 1);
        EXPECT_NEAR(seen.right, each.expected.right, 2);
        EXPECT_NEAR(seen.bottom, each.expected.bottom, 2);
    }
}

TEST_F(CppSearch, WindowsStateTwoFillsTheScreenAndTheSizeUnsetReadsBack) {
    ricerca_->put_WindowsState(Text(L"2"));
    bool zoomed = false;
    EXPECT_EQ(search([&zoomed] {
                  const Shown window = Shown::titled(caption);
                  zoomed = IsZoomed(window.handle()) != 0;
                  window.close();
              }),
              S_OK);
    EXPECT_TRUE(zoomed);
    BSTR text = nullptr;
    HRESULT result = ricerca_->get_Width(&text);
    EXPECT_EQ(taken(result, text), L"11355");
    result = ricerca_->get_Height(&text);
    EXPECT_EQ(taken(result, text), L"7000");
}

// "0" shows the toolbar and hides the status bar, which leaves 50 twips below the rows.
TEST_F(CppSearch, ToolbarZeroShowsItAndStatusBarZeroHidesIt) {
    ricerca_->put_Toolbar(Text(L"0"));
    long below[2] = {};
    for (const int bar : {0, 1}) {
        ricerca_->put_StatusBar(Text(std::to_wstring(bar)));
        EXPECT_EQ(search([&below, bar] {
                      const Shown window = Shown::titled(caption);
                      window.toolbar(); // throws where there is none
                      below[bar] = window.spaceBelowRows();
                      window.close();
                  }),
                  S_OK);
    }
    EXPECT_NEAR(below[0], 3, 1);
    EXPECT_GT(below[1], 15);
}

TEST_F(CppSearch, HostsWindowRestsButItsTimersRunAndTheFocusComesBack) {
    const HostWindow host;
    SetFocus(host.handle());
    bool rested = false;
    EXPECT_EQ(search([&] {
                  const Shown window = Shown::titled(caption);
                  rested = IsWindowEnabled(host.handle()) == 0;
                  const int before = host.ticks();
                  waitUntil("the host's timer stands still",
                            [&] { return host.ticks() > before + 3; });
                  window.close();
              }),
              S_OK);
    EXPECT_TRUE(rested);
    EXPECT_TRUE(IsWindowEnabled(host.handle()));
    HostWindow::pumpUntil("the host's window is not in front again",
                          [&] { return GetForegroundWindow() == host.handle(); });
    EXPECT_EQ(GetFocus(), host.handle());
}

// From the host's timer, which runs inside the modal call.
TEST_F(CppSearch, ASecondRicercaWhileTheWindowIsShownReturnsAtOnceAndTheWindowStays) {
    HRESULT second = E_PENDING;
    const HostWindow host([&second] {
        if (second != E_PENDING || !Shown::isThere(caption)) return;
        second = E_FAIL;
        second = createRicerca()->Ricerca(nullptr);
    });
    EXPECT_EQ(search([&second] {
                  const Shown window = Shown::titled(caption);
                  waitUntil("the second call does not return", [&] { return second == S_OK; });
                  window.chooseByEnter();
              }),
              S_OK);
    EXPECT_EQ(answerOf(*ricerca_.get()), L"1");
}

TEST_F(CppSearch, EverythingReleasedDuringTheSearchLivesUntilItsEnd) {
    bool released = false;
    const HostWindow host([&] {
        if (released || !Shown::isThere(caption)) return;
        EXPECT_GT(ricerca_.detach()->Release(), 0U); // the call in progress holds it
        released = true;
    });
    _Ricerca& running = *ricerca_.get();
    EXPECT_EQ(tests::search(running,
                            [&released] {
                                const Shown window = Shown::titled(caption);
                                waitUntil("nothing is released", [&] { return released; });
                                window.chooseByEnter();
                            }),
              S_OK);
    EXPECT_EQ(answerOf(*createRicerca().get()), L"1");
}

TEST_F(CppSearch, HostThatLeavesComDuringTheSearchStillGetsItsAnswer) {
    const HMODULE kept = LoadLibraryW(windowsPath(NR_PROVA).c_str()); // its objects are in use
    bool left = false;
    const HostWindow host([&left] {
        if (left || !Shown::isThere(caption)) return;
        CoUninitialize();
        left = true;
    });
    EXPECT_EQ(search([&left] {
                  const Shown window = Shown::titled(caption);
                  waitUntil("the host does not leave", [&] { return left; });
                  press(VK_DOWN);
                  window.chooseByEnter();
              }),
              S_OK);
    EXPECT_EQ(answerOf(*ricerca_.get()), L"2");
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    FreeLibrary(kept);
}

TEST_F(CppSearch, ACallFromAnotherThreadMeanwhileIsError430) {
    HRESULT other = S_OK;
    std::string words;
    EXPECT_EQ(search([&] {
                  const Shown window = Shown::titled(caption);
                  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
                  other = createRicerca()->Ricerca(nullptr);
                  ComPtr<IErrorInfo> information;
                  BSTR text = nullptr;
                  if (GetErrorInfo(0, information.put()) == S_OK)
                      information->GetDescription(&text);
                  words = com::textOf(text);
                  SysFreeString(text);
                  information = {};
                  CoUninitialize();
                  window.close();
              }),
              S_OK);
    EXPECT_EQ(other, static_cast<HRESULT>(0x800A01AE));
    EXPECT_EQ(words, "La finestra di ricerca è aperta in un altro thread");
}

} // namespace
} // namespace norvel::tests
