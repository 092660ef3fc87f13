#include "platform/runtime/OpenDocumentSystem.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace norvel {

namespace {

// Its own input and output lead nowhere: the application has nothing to say on the host's terminal.
class Quiet {
  public:
    Quiet() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~Quiet() { posix_spawn_file_actions_destroy(&actions_); }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

} // namespace

// A shell starts the opener in the background, in a session of its own, and ends at once: it is
// waited for here, and whoever opens the document is then the system's child and not ours, so that
// nothing of it stays when it ends. The file's name is a parameter of the shell's, never its text;
// it is absolute, so it cannot be taken for an option.
void openBySystem(const std::filesystem::path& file, void*) {
    std::error_code error;
    std::string path = std::filesystem::absolute(file, error).string();
    if (error) return;
    std::string shell = "sh";
    std::string option = "-c";
    std::string script = "setsid xdg-open \"$1\" &";
    std::string name = "norvelricerca";
    std::array<char*, 6> arguments = {shell.data(), option.data(), script.data(),
                                      name.data(),  path.data(),   nullptr};
    const Quiet quiet;
    pid_t child = 0;
    if (posix_spawn(&child, "/bin/sh", quiet.get(), nullptr, arguments.data(), environ) != 0)
        return;
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace norvel
