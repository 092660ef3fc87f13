#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <algorithm>
#include <string>
#include <windows.h>

namespace norvel {

namespace {

[[noreturn]] void fail(DWORD code, const std::filesystem::path& path) {
    const auto utf8 = path.u8string();
    const std::string name = " «" + std::string(utf8.begin(), utf8.end()) + "»";
    switch (code) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        throw Errore(61, "Disco pieno:" + name);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_WRITE_PROTECT:
        throw Errore(70, "Autorizzazione negata:" + name);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_NOT_FOUND:
    case ERROR_INVALID_NAME:
        throw Errore(76, "Impossibile trovare il percorso:" + name);
    default:
        throw Errore(75, "Errore di accesso al file:" + name);
    }
}

DWORD writeAll(HANDLE file, std::string_view contents) {
    constexpr std::size_t most = std::size_t{1} << 30U;
    while (!contents.empty()) {
        const auto part = static_cast<DWORD>(std::min(contents.size(), most));
        DWORD written = 0;
        if (!WriteFile(file, contents.data(), part, &written, nullptr)) return GetLastError();
        contents.remove_prefix(written);
    }
    return FlushFileBuffers(file) ? ERROR_SUCCESS : GetLastError();
}

} // namespace

void writeWholeFile(const std::filesystem::path& path, std::string_view contents) {
    static volatile LONG count = 0;
    const std::wstring temporary = path.wstring() + L"." + std::to_wstring(GetCurrentProcessId()) +
                                   L"." + std::to_wstring(InterlockedIncrement(&count)) + L".tmp";
    const HANDLE file = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) fail(GetLastError(), path);
    DWORD code = writeAll(file, contents);
    CloseHandle(file);
    if (code == ERROR_SUCCESS && !MoveFileExW(temporary.c_str(), path.c_str(),
                                              MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        code = GetLastError();
    if (code == ERROR_SUCCESS) return;
    DeleteFileW(temporary.c_str());
    fail(code, path);
}

} // namespace norvel
