// A program that the tests start: its output, and how it ends.
#pragma once

#include "tests/windows/hosts/Operator.h"

#include <filesystem>
#include <string>
#include <vector>

namespace norvel::tests {

// A path of the build as a Windows program knows it; Wine has the file system's root as drive Z.
std::filesystem::path windowsPath(const char* path);
// A folder of the tests' own, removed when they end.
const std::filesystem::path& scratchFolder();

class Program {
  public:
    // The arguments are quoted where they hold blanks.
    explicit Program(const std::vector<std::wstring>& command);
    ~Program(); // ends it where it still runs
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Waits for a window of that title; throws where the program ends without it.
    Shown window(const std::wstring& title) const;
    // Waits for its end; the exit status.
    DWORD end();
    // What it wrote, without carriage returns. cscript writes in the console's code page.
    std::wstring output(UINT codePage = CP_OEMCP) const;
    std::wstring errors(UINT codePage = CP_OEMCP) const;

  private:
    bool ended() const;
    std::filesystem::path output_;
    std::filesystem::path errors_;
    HANDLE process_ = nullptr;
};

// The exit status of a program that writes nothing of interest.
DWORD run(const std::vector<std::wstring>& command);

// Registers the component and, under ADO's names, the tests' recordsets: what a machine needs for a
// host to run. Throws where that fails.
void prepareMachine();

} // namespace norvel::tests
