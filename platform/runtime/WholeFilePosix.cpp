#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace norvel {

namespace {

[[noreturn]] void fail(int code, const std::filesystem::path& path) {
    const std::string name = " «" + path.string() + "»";
    switch (code) {
    case ENOSPC:
    case EDQUOT:
        throw Errore(61, "Disco pieno:" + name);
    case EACCES:
    case EPERM:
    case EROFS:
        throw Errore(70, "Autorizzazione negata:" + name);
    case ENOENT:
    case ENOTDIR:
        throw Errore(76, "Impossibile trovare il percorso:" + name);
    default:
        throw Errore(75, "Errore di accesso al file:" + name);
    }
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }
    // What was written may fail as late as here.
    int close() { return ::close(std::exchange(number_, -1)); }

  private:
    int number_;
};

int writeAll(int descriptor, std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = ::write(descriptor, contents.data(), contents.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

// The rights of a file that is replaced go on; a new one gets those of new files.
mode_t rightsFor(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) return status.st_mode & 07777U;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

int fill(int number, std::string_view contents, mode_t rights) {
    Descriptor file(number);
    if (const int code = writeAll(file.get(), contents); code != 0) return code;
    if (::fchmod(file.get(), rights) != 0 || ::fsync(file.get()) != 0) return errno;
    return file.close() != 0 ? errno : 0;
}

} // namespace

void writeWholeFile(const std::filesystem::path& path, std::string_view contents) {
    const std::filesystem::path folder =
        path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
    std::string temporary = path.string() + ".XXXXXX.tmp";
    const int number = ::mkostemps(temporary.data(), 4, O_CLOEXEC);
    if (number < 0) fail(errno, path);
    int code = fill(number, contents, rightsFor(path));
    if (code == 0 && ::rename(temporary.c_str(), path.c_str()) != 0) code = errno;
    if (code != 0) {
        ::unlink(temporary.c_str());
        fail(code, path);
    }
    // So that the new name survives a power cut, too; a system that cannot do it has done its best.
    const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() >= 0) ::fsync(directory.get());
}

} // namespace norvel
