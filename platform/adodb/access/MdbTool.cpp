#include "platform/adodb/access/MdbTool.h"

#include "platform/adodb/Errors.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace norvel::adodb {

namespace {

constexpr int lookInterval = 20;               // ms, at what may end the program
constexpr std::size_t longestComplaint = 2000; // bytes; the rest is read and dropped

// The two ends of a pipe, closed with the object and never inherited by accident.
class Pipe {
  public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0)
            throw Errore(oleFail, std::generic_category().message(errno));
    }
    ~Pipe() {
        closeRead();
        closeWrite();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    int readEnd() const { return ends_[0]; }
    int writeEnd() const { return ends_[1]; }
    void closeRead() { close(ends_[0]); }
    void closeWrite() { close(ends_[1]); }

  private:
    static void close(int& end) {
        if (end >= 0) ::close(end);
        end = -1;
    }
    std::array<int, 2> ends_{-1, -1};
};

// A program that is ended, if it still runs, and waited for with the object.
class Child {
  public:
    explicit Child(pid_t pid) : pid_(pid) {}
    ~Child() {
        if (pid_ <= 0) return;
        kill(pid_, SIGKILL);
        wait();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    // True where it ended by itself and with success; also where the host waits for every child of
    // the process itself: what came of it must tell then.
    bool wait() {
        int status = 0;
        while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
        pid_ = 0;
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

  private:
    pid_t pid_;
};

// The process's own variables, without those that change what the programs write.
std::vector<std::string> toolEnvironment() {
    std::vector<std::string> variables;
    for (char** each = environ; *each; ++each) {
        const std::string_view variable = *each;
        const bool ours = variable.starts_with("LC_") || variable.starts_with("LANG") ||
                          variable.starts_with("MDBOPTS=") || variable.starts_with("MDBICONV=") ||
                          variable.starts_with("MDB_JET3_CHARSET=");
        if (!ours) variables.emplace_back(variable);
    }
    variables.insert(variables.end(), {"LC_ALL=C.UTF-8", "MDBICONV=UTF-8"});
    return variables;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> found;
    found.reserve(texts.size() + 1);
    for (std::string& text : texts)
        found.push_back(text.data());
    found.push_back(nullptr);
    return found;
}

pid_t start(std::vector<std::string> command, const Pipe& out, const Pipe& complaints) {
    std::vector<std::string> environment = toolEnvironment();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.writeEnd(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, complaints.writeEnd(), STDERR_FILENO);
    pid_t pid = 0;
    const int failed = posix_spawnp(&pid, command.front().c_str(), &actions, nullptr,
                                    pointers(command).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failed == ENOENT)
        throw Errore(oleFail, "Per leggere i file di Access occorre il pacchetto «mdbtools», che "
                              "non è installato.");
    if (failed != 0)
        throw Errore(oleFail, "Impossibile avviare «" + command.front() +
                                  "»: " + std::generic_category().message(failed) + ".");
    return pid;
}

// Hands on what has come; false at the end.
bool readSome(int from, const std::function<void(std::string_view)>& take) {
    std::array<char, 65536> buffer;
    const ssize_t length = read(from, buffer.data(), buffer.size());
    if (length < 0) return errno == EINTR || errno == EAGAIN;
    if (length > 0) take({buffer.data(), static_cast<std::size_t>(length)});
    return length > 0;
}

} // namespace

MdbToolEnd runMdbTool(const std::vector<std::string>& command, const Stop& stop,
                      const std::function<void(std::string_view)>& take) {
    Pipe out;
    Pipe complaints;
    Child child(start(command, out, complaints));
    out.closeWrite();
    complaints.closeWrite();
    MdbToolEnd end;
    const auto note = [&](std::string_view words) {
        end.complaint.append(words.substr(0, longestComplaint - end.complaint.size()));
    };
    std::array<pollfd, 2> sources{{{out.readEnd(), POLLIN, 0}, {complaints.readEnd(), POLLIN, 0}}};
    while (sources[0].fd >= 0 || sources[1].fd >= 0) {
        if (stop.due()) throw adoError(stop.asked() ? adErrOperationCancelled : dbCommandTimeout);
        if (poll(sources.data(), sources.size(), lookInterval) <= 0) continue;
        if (sources[0].revents != 0 && !readSome(sources[0].fd, take)) sources[0].fd = -1;
        if (sources[1].revents != 0 && !readSome(sources[1].fd, note)) sources[1].fd = -1;
    }
    end.well = child.wait();
    return end;
}

} // namespace norvel::adodb
