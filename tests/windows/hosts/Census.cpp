#include "tests/windows/hosts/Census.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <tlhelp32.h>
#include <winternl.h>

namespace norvel::tests {

namespace {

BOOL CALLBACK count(HWND window, LPARAM pointer) {
    auto& census = *reinterpret_cast<Census*>(pointer); // NOLINT(performance-no-int-to-ptr)
    ++census.windows;
    if (IsWindowEnabled(window) == 0) ++census.disabled;
    return TRUE;
}

BOOL CALLBACK countWithParts(HWND window, LPARAM pointer) {
    count(window, pointer);
    EnumChildWindows(window, count, pointer);
    return TRUE;
}

long messageOnlyWindows() {
    long found = 0;
    for (HWND window = nullptr;
         (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
        if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) ++found;
    return found;
}

long threadsOfProcess() {
    long found = 0;
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(list, &entry); more != 0; more = Thread32Next(list, &entry))
        if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++found;
    CloseHandle(list);
    return found;
}

// An entry of the table of GDI objects that every process sees (ReactOS's and Wine's headers agree
// on it, ntgdihdl.h and ntgdi.h): read where the system counts none, as Wine 8 does.
struct GraphicsEntry {
    ULONG64 object; // 64 bits wide under Wine in both widths
    ULONG owner;
    USHORT unique;
    UCHAR type;
    UCHAR flags;
    ULONG64 userPointer;
};

long graphicsOfTable() {
    constexpr std::size_t entries = 16384;
#ifdef _WIN64
    constexpr std::size_t placeInPeb = 0xf8;
    const auto* peb =
        reinterpret_cast<const char*>(__readgsqword(0x60)); // NOLINT(performance-no-int-to-ptr)
#else
    constexpr std::size_t placeInPeb = 0x94;
    const auto* peb =
        reinterpret_cast<const char*>(__readfsdword(0x30)); // NOLINT(performance-no-int-to-ptr)
#endif
    const auto* table = *reinterpret_cast<const GraphicsEntry* const*>(peb + placeInPeb);
    return static_cast<long>(std::count_if(
        table, table + entries, [](const GraphicsEntry& entry) { return entry.type != 0; }));
}

// Places are given anew last in, first out: many new objects show how far up the table is in use.
long highestUserPlace() {
    constexpr std::size_t many = 200;
    std::array<HMENU, many> menus{};
    long highest = 0;
    for (HMENU& menu : menus) {
        menu = CreateMenu();
        highest = std::max<long>(highest, LOWORD(reinterpret_cast<ULONG_PTR>(menu)));
    }
    for (HMENU menu : menus)
        DestroyMenu(menu);
    return highest;
}

} // namespace

Census Census::taken() {
    Census census;
    EnumThreadWindows(GetCurrentThreadId(), countWithParts, reinterpret_cast<LPARAM>(&census));
    census.messageOnly = messageOnlyWindows();
    const HANDLE process = GetCurrentProcess();
    census.graphics = static_cast<long>(GetGuiResources(process, GR_GDIOBJECTS));
    census.user = static_cast<long>(GetGuiResources(process, GR_USEROBJECTS));
    if (census.graphics == 0) census.graphics = graphicsOfTable();
    if (census.user == 0) census.user = highestUserPlace();
    census.threads = threadsOfProcess();
    return census;
}

std::ostream& operator<<(std::ostream& out, const Census& census) {
    return out << census.windows << " windows (" << census.disabled << " disabled), "
               << census.messageOnly << " message-only, " << census.graphics << " graphics, "
               << census.user << " user, " << census.threads << " threads";
}

} // namespace norvel::tests
