#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <algorithm>
#include <string>
#include <utility>
#include <windows.h>

namespace norvel {

namespace {

constexpr DWORD diskQuotaExceeded = 1295; // which not every header names

[[noreturn]] void fail(DWORD code, const std::filesystem::path& path) {
    const auto utf8 = path.u8string();
    const std::string name = " «" + std::string(utf8.begin(), utf8.end()) + "»";
    switch (code) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case diskQuotaExceeded:
        throw Errore(61, "Disco pieno:" + name);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_WRITE_PROTECT:
        throw Errore(70, "Autorizzazione negata:" + name);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY: // a drive without a medium
        throw Errore(76, "Impossibile trovare il percorso:" + name);
    default:
        throw Errore(75, "Errore di accesso al file:" + name);
    }
}

std::wstring temporaryName(const std::filesystem::path& path) {
    static volatile LONG count = 0;
    return path.wstring() + L"." + std::to_wstring(GetCurrentProcessId()) + L"." +
           std::to_wstring(InterlockedIncrement(&count)) + L".tmp";
}

bool has(const std::filesystem::path& path, DWORD attribute) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

// Another program may hold the file for a moment only: one that looks for viruses, an indexer. A
// folder stays one.
bool heldForAMoment(DWORD code, const std::filesystem::path& path) {
    if (code == ERROR_SHARING_VIOLATION || code == ERROR_USER_MAPPED_FILE) return true;
    return code == ERROR_ACCESS_DENIED && !has(path, FILE_ATTRIBUTE_DIRECTORY);
}

void replace(const std::wstring& temporary, const std::filesystem::path& path, DWORD how) {
    constexpr int attempts = 10;
    constexpr DWORD pause = 50; // milliseconds
    for (int i = 1; !MoveFileExW(temporary.c_str(), path.c_str(), how); ++i) {
        const DWORD code = GetLastError();
        if (i == attempts || !heldForAMoment(code, path)) fail(code, path);
        Sleep(pause);
    }
}

} // namespace

struct NewFile::Open {
    std::filesystem::path path;
    std::wstring temporary;
    HANDLE file = INVALID_HANDLE_VALUE;

    Open() = default;
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    ~Open() {
        close();
        if (!temporary.empty()) DeleteFileW(temporary.c_str());
    }
    // A name that is taken is another machine's in the same folder, or was left by a kill.
    void createBeside() {
        constexpr int attempts = 100;
        for (int i = 1;; ++i) {
            const std::wstring name = temporaryName(path);
            file = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
            if (file != INVALID_HANDLE_VALUE) {
                temporary = name;
                return;
            }
            const DWORD code = GetLastError();
            if (code != ERROR_FILE_EXISTS || i == attempts) fail(code, path);
        }
    }
    void close() {
        if (file != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(file, INVALID_HANDLE_VALUE));
    }
    void seek(std::int64_t offset, DWORD from) const {
        LARGE_INTEGER to;
        to.QuadPart = offset;
        if (!SetFilePointerEx(file, to, nullptr, from)) fail(GetLastError(), path);
    }
    void write(std::string_view bytes) const {
        constexpr std::size_t most = std::size_t{1} << 30U;
        while (!bytes.empty()) {
            const auto part = static_cast<DWORD>(std::min(bytes.size(), most));
            DWORD written = 0;
            if (!WriteFile(file, bytes.data(), part, &written, nullptr)) fail(GetLastError(), path);
            bytes.remove_prefix(written);
        }
    }
};

NewFile::NewFile(const std::filesystem::path& path) : open_(std::make_unique<Open>()) {
    open_->path = path;
    if (has(path, FILE_ATTRIBUTE_READONLY)) fail(ERROR_ACCESS_DENIED, path);
    open_->createBeside();
}

NewFile::NewFile(NewFile&&) noexcept = default;
NewFile& NewFile::operator=(NewFile&&) noexcept = default;
NewFile::~NewFile() = default;

void NewFile::append(std::string_view bytes) {
    open_->write(bytes);
}

void NewFile::overwrite(std::int64_t offset, std::string_view bytes) {
    open_->seek(offset, FILE_BEGIN);
    open_->write(bytes);
    open_->seek(0, FILE_END);
}

void NewFile::commit(bool durable) {
    Open& file = *open_;
    if (durable && !FlushFileBuffers(file.file)) fail(GetLastError(), file.path);
    file.close();
    const DWORD how = MOVEFILE_REPLACE_EXISTING | (durable ? MOVEFILE_WRITE_THROUGH : 0);
    replace(file.temporary, file.path, how);
    file.temporary.clear();
}

} // namespace norvel
