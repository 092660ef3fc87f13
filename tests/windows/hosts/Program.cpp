#include "tests/windows/hosts/Program.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace norvel::tests {

namespace fs = std::filesystem;

namespace {

HANDLE writable(const fs::path& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::wstring commandLine(const std::vector<std::wstring>& command) {
    std::wstring line;
    for (const std::wstring& word : command) {
        if (!line.empty()) line += L' ';
        line += word.empty() || word.find(L' ') != std::wstring::npos ? L'"' + word + L'"' : word;
    }
    return line;
}

std::wstring contents(const fs::path& path, UINT codePage) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    std::string text = bytes.str();
    std::erase(text, '\r');
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                            static_cast<int>(wide.size()))));
    return wide;
}

// A name that no other run of this program has.
fs::path newFile(const wchar_t* ending) {
    static int number = 0;
    return scratchFolder() / (std::to_wstring(++number) + ending);
}

} // namespace

fs::path windowsPath(const char* path) {
    fs::path given = path;
    return (given.has_root_name() ? given : fs::path("Z:") += given).make_preferred();
}

const fs::path& scratchFolder() {
    struct Folder {
        fs::path path =
            fs::temp_directory_path() / ("ospiti " + std::to_string(GetCurrentProcessId()));
        Folder() { fs::create_directories(path); }
        ~Folder() {
            std::error_code kept; // a DLL that stays loaded keeps its file
            fs::remove_all(path, kept);
        }
    };
    static const Folder folder;
    return folder.path;
}

Program::Program(const std::vector<std::wstring>& command)
    : output_(newFile(L".out")), errors_(newFile(L".err")) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = INVALID_HANDLE_VALUE;
    start.hStdOutput = writable(output_);
    start.hStdError = writable(errors_);
    PROCESS_INFORMATION made{};
    std::wstring line = commandLine(command);
    const BOOL begun = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                      nullptr, &start, &made);
    CloseHandle(start.hStdOutput);
    CloseHandle(start.hStdError);
    if (begun == 0) throw std::runtime_error("a program could not be started");
    CloseHandle(made.hThread);
    process_ = made.hProcess;
}

Program::~Program() {
    if (!ended()) TerminateProcess(process_, 1);
    WaitForSingleObject(process_, INFINITE);
    CloseHandle(process_);
}

bool Program::ended() const {
    return WaitForSingleObject(process_, 0) == WAIT_OBJECT_0;
}

Shown Program::window(const std::wstring& title) const {
    return Shown::titled(title, [this] {
        if (ended()) throw std::runtime_error("the program ended without the window");
    });
}

DWORD Program::end() {
    waitUntil("the program has not ended", [this] { return ended(); });
    DWORD status = 0;
    GetExitCodeProcess(process_, &status);
    return status;
}

std::wstring Program::output(UINT codePage) const {
    return contents(output_, codePage);
}
std::wstring Program::errors(UINT codePage) const {
    return contents(errors_, codePage);
}

DWORD run(const std::vector<std::wstring>& command) {
    return Program(command).end();
}

void prepareMachine() {
    const std::wstring component = windowsPath(NR_DLL).wstring();
    const std::wstring recordsets = windowsPath(NR_PROVA).wstring();
    for (const auto& command : {std::vector<std::wstring>{L"regsvr32", L"/s", component},
                                {L"regsvr32", L"/s", recordsets},
                                {L"regsvr32", L"/s", L"/n", L"/i:ADODB", recordsets}})
        if (run(command) != 0) throw std::runtime_error("regsvr32 failed");
}

} // namespace norvel::tests
