#include "platform/runtime/OpenDocumentSystem.h"

#include <optional>
#include <string>
#undef WIN32_LEAN_AND_MEAN // leaves out the shell
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

namespace norvel {

namespace {

// The path in the machine's code page; nullopt where it does not hold every character.
std::optional<std::string> inCodePage(const std::wstring& path) {
    const bool everything = GetACP() == CP_UTF8; // which takes neither flags nor questions
    const DWORD flags = everything ? 0 : WC_NO_BEST_FIT_CHARS;
    const int length = static_cast<int>(path.size());
    const int bytes =
        WideCharToMultiByte(CP_ACP, flags, path.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(bytes), '\0');
    BOOL lost = FALSE;
    WideCharToMultiByte(CP_ACP, flags, path.data(), length, text.data(), bytes, nullptr,
                        everything ? nullptr : &lost);
    if (lost) return std::nullopt;
    return text;
}

} // namespace

// No verb, no parameters, an ordinary window.
void openBySystem(const std::filesystem::path& file, void* owner) {
    const std::wstring path = file.wstring();
    if (const auto text = inCodePage(path))
        ShellExecuteA(static_cast<HWND>(owner), nullptr, text->c_str(), nullptr, "C:\\",
                      SW_SHOWNORMAL);
    else
        ShellExecuteW(static_cast<HWND>(owner), nullptr, path.c_str(), nullptr, L"C:\\",
                      SW_SHOWNORMAL);
}

} // namespace norvel
