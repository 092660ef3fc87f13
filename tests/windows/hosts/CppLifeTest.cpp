// Living in a host for long: what a thousand searches leave behind, hosts' windows that rest or go,
// hosts that end, hosts of any awareness of the screen's resolution.
#include "tests/windows/hosts/Census.h"
#include "tests/windows/hosts/CppHost.h"

#include <algorithm>
#include <thread>

namespace norvel::tests {
namespace {

using com::ComPtr;

// As quick as it goes: messages in place of keys, no wait for the window to be in front.
HWND waitForWindow() {
    HWND window = nullptr;
    waitUntil("no search window", [&window] {
        window = FindWindowW(nullptr, caption.c_str());
        return window != nullptr && IsWindowVisible(window) != 0;
    });
    return window;
}

void closeByMessage() {
    const HWND window = waitForWindow();
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    waitUntil("the window is still open", [window] { return IsWindowVisible(window) == 0; });
}

// The mouse over every part and a click into its middle: tips, the filter bar's editor, rows.
BOOL CALLBACK click(HWND part, LPARAM) {
    RECT place{};
    GetClientRect(part, &place);
    const LPARAM middle = MAKELPARAM(place.right / 2, place.bottom / 2);
    const LPARAM corner = MAKELPARAM(place.right / 2, 30);
    for (const LPARAM where : {middle, corner})
        for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP})
            PostMessageW(part, message, 0, where);
    return TRUE;
}

void clickAroundAndClose() {
    EnumChildWindows(waitForWindow(), click, 0);
    closeByMessage();
}

// Every place that the census looks at, by things made on purpose.
TEST(CppLife, CensusSeesWhatIsLeftBehind) {
    constexpr int made = 300;
    const HostWindow first; // brings the thread's input window, which the system makes, with it
    const Census before = Census::taken();
    const HWND window = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_DISABLED, 0, 0, 50,
                                      50, nullptr, nullptr, nullptr, nullptr);
    const HWND hidden =
        CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    std::vector<HBRUSH> brushes;
    std::vector<HMENU> menus;
    for (int i = 0; i < made; ++i) {
        brushes.push_back(CreateSolidBrush(static_cast<COLORREF>(i)));
        menus.push_back(CreateMenu());
    }
    std::atomic<bool> over = false;
    std::thread another([&over] { over.wait(false); });
    const Census seen = Census::taken();
    over = true;
    over.notify_all();
    another.join();
    std::ranges::for_each(brushes, DeleteObject);
    std::ranges::for_each(menus, DestroyMenu);
    DestroyWindow(hidden);
    DestroyWindow(window);
    EXPECT_EQ(seen.windows, before.windows + 1);
    EXPECT_EQ(seen.disabled, before.disabled + 1);
    EXPECT_EQ(seen.messageOnly, before.messageOnly + 1);
    EXPECT_GE(seen.graphics, before.graphics + made);
    EXPECT_GE(seen.user, before.user + made / 2);
    EXPECT_EQ(seen.threads, before.threads + 1);
}

TEST(CppLife, AThousandSearchesLeaveNothingBehind) {
    constexpr int warmUp = 10;
    constexpr int searches = 1000;
    const HostWindow host;
    const ComPtr<_Ricerca> ricerca = createRicerca();
    prepare(*ricerca.get(), clients(50));
    Census before;
    for (int i = 0; i < warmUp + searches; ++i) {
        if (i == warmUp) before = Census::taken();
        ASSERT_EQ(search(*ricerca.get(), i % 10 == 0 ? clickAroundAndClose : closeByMessage), S_OK);
    }
    Census after;
    waitUntil("threads go on", [&] { // a thread that was joined may take a moment to go
        after = Census::taken();
        return after.threads <= before.threads;
    });
    const testing::Message both = testing::Message() << before << "\nbecame\n" << after;
    EXPECT_EQ(after.windows, before.windows) << both;
    EXPECT_EQ(after.disabled, before.disabled) << both;
    EXPECT_EQ(after.messageOnly, before.messageOnly) << both;
    // The system keeps some for itself now and then; one a search would be a thousand.
    constexpr long few = searches / 20;
    EXPECT_LE(after.graphics, before.graphics + few) << both;
    EXPECT_LE(after.user, before.user + few) << both;
}

TEST(CppLife, HostsWindowsThatRestedBeforeRestAfterwards) {
    const HostWindow resting;
    const HostWindow host;
    EnableWindow(resting.handle(), FALSE);
    const ComPtr<_Ricerca> ricerca = createRicerca();
    prepare(*ricerca.get(), clients(50));
    EXPECT_EQ(search(*ricerca.get(), closeByMessage), S_OK);
    EXPECT_FALSE(IsWindowEnabled(resting.handle()));
    EXPECT_TRUE(IsWindowEnabled(host.handle()));
}

// The host's window takes the focus and the search with it nowhere: the operator goes on choosing.
TEST(CppLife, HostsWindowThatIsDestroyedMeanwhileLeavesTheSearchToTheOperator) {
    Program host({windowsPath(NR_LIFE).wstring(), L"unaware", L"window"});
    const Shown window = host.window(caption);
    waitUntil("the host's window stays", [] { return !Shown::isThere(L"Gestionale"); });
    press(VK_DOWN);
    window.chooseByEnter();
    EXPECT_EQ(host.end(), 0U);
    EXPECT_EQ(host.output(), L"757x467\n2\n");
}

// The window goes, nothing is chosen, and the host's own loop hears of it.
TEST(CppLife, HostThatIsToldToQuitMeanwhileGetsTheCallAndTheWordBack) {
    Program host({windowsPath(NR_LIFE).wstring(), L"unaware", L"quit"});
    EXPECT_EQ(host.end(), 0U);
    EXPECT_EQ(host.output(), L"757x467\n\nquit 5\n");
}

TEST(CppLife, HostThatEndsWhileTheWindowIsOpenEndsAsItMeant) {
    for (const wchar_t* end : {L"exit", L"process", L"terminate"}) {
        Program host({windowsPath(NR_LIFE).wstring(), L"unaware", end});
        EXPECT_EQ(host.end(), 7U) << "by " << end;
        EXPECT_EQ(host.errors(), L"");
    }
}

// The resolution that programs find when they start.
class Resolution {
  public:
    explicit Resolution(DWORD dotsPerInch) { set(dotsPerInch); }
    ~Resolution() { set(96); }
    Resolution(const Resolution&) = delete;
    Resolution& operator=(const Resolution&) = delete;

  private:
    static void set(DWORD dotsPerInch) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels",
                                  REG_DWORD, &dotsPerInch, sizeof dotsPerInch),
                  ERROR_SUCCESS);
    }
};

// Pixels are the host's: where it knows nothing of the resolution the system magnifies its windows.
void searchAtResolution(DWORD dotsPerInch, const wchar_t* awareness, const std::wstring& size) {
    Program host({windowsPath(NR_LIFE).wstring(), awareness});
    const Shown window = host.window(caption);
    press(VK_DOWN);
    window.chooseByEnter();
    EXPECT_EQ(host.end(), 0U) << dotsPerInch << ' ' << awareness;
    EXPECT_EQ(host.output(), size + L"\n2\n") << dotsPerInch << ' ' << awareness;
}

TEST(CppLife, HostOfAnyAwarenessOfTheResolutionGetsAWindowOfTheSameSizeOnTheScreen) {
    for (const wchar_t* awareness : {L"unaware", L"system", L"monitor"})
        searchAtResolution(96, awareness, L"757x467");
    const Resolution twice(192);
    searchAtResolution(192, L"unaware", L"757x467");
    for (const wchar_t* awareness : {L"system", L"monitor"})
        searchAtResolution(192, awareness, L"1514x933");
}

} // namespace
} // namespace norvel::tests
