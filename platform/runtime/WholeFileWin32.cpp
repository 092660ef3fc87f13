#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <algorithm>
#include <string>
#include <utility>
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

std::wstring temporaryName(const std::filesystem::path& path) {
    static volatile LONG count = 0;
    return path.wstring() + L"." + std::to_wstring(GetCurrentProcessId()) + L"." +
           std::to_wstring(InterlockedIncrement(&count)) + L".tmp";
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
    const std::wstring name = temporaryName(path);
    open_->file = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (open_->file == INVALID_HANDLE_VALUE) fail(GetLastError(), path);
    open_->temporary = name;
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
    if (!MoveFileExW(file.temporary.c_str(), file.path.c_str(), how))
        fail(GetLastError(), file.path);
    file.temporary.clear();
}

} // namespace norvel
