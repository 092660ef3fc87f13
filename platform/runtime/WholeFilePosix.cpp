#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <random>
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
    case EFBIG: // no room for it here
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

// What is behind links: the links stay, and what they name is replaced.
std::filesystem::path behindLinks(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_symlink(path, error)) return path;
    const auto target = std::filesystem::canonical(path, error);
    return error ? path : target;
}

// A device, a pipe: nothing can take its place, it is written itself.
bool isWrittenItself(const std::filesystem::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) &&
           !S_ISDIR(status.st_mode);
}

// The rights of the file that is there, which go on in the one that takes its place.
std::optional<mode_t> rightsOf(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return status.st_mode & 07777U;
}

// A file of this name may be there and protected: it is as if it were opened to be written.
void mayBeReplaced(const std::filesystem::path& path) {
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT)
        fail(errno, path);
}

// A number that another process, on another machine of the same folder, hardly has as well.
std::string temporaryName(const std::filesystem::path& path) {
    static std::random_device random;
    static std::mutex mutex;
    const std::scoped_lock lock(mutex);
    return path.string() + "." + std::to_string(random()) + ".tmp";
}

} // namespace

struct NewFile::Open {
    std::filesystem::path asked;  // as it was named: failures say so
    std::filesystem::path path;   // behind links
    std::string temporary;        // "": the file is written itself
    std::optional<mode_t> rights; // of the file that it replaces
    int descriptor = -1;
    std::int64_t size = 0;

    Open() = default;
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    ~Open() {
        if (descriptor >= 0) ::close(descriptor);
        if (!temporary.empty()) ::unlink(temporary.c_str());
    }

    // With no more rights than what it replaces; a new file's are the system's business.
    void createBeside() {
        rights = rightsOf(path);
        constexpr int attempts = 100;
        for (int i = 0; i < attempts && descriptor < 0; ++i) {
            temporary = temporaryName(path);
            descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                rights ? *rights & 0777U : 0666U);
            if (descriptor < 0 && errno != EEXIST) break;
        }
        if (descriptor < 0) temporary.clear(); // another's
    }
    // A file system that keeps no rights, or not these, gives every file its own: so it is with the
    // file that is replaced.
    void keepRights() const {
        struct stat status {};
        if (!rights || ::fstat(descriptor, &status) != 0) return;
        if ((status.st_mode & 07777U) == *rights || ::fchmod(descriptor, *rights) == 0) return;
        if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS) fail(errno, asked);
    }

    // A device takes what comes; it has no places.
    void write(std::int64_t offset, std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = temporary.empty()
                                        ? ::write(descriptor, bytes.data(), bytes.size())
                                        : ::pwrite(descriptor, bytes.data(), bytes.size(), offset);
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) fail(errno, asked);
            bytes.remove_prefix(static_cast<std::size_t>(written));
            offset += written;
        }
    }

    // So that the new name survives a power cut, too; a system that cannot do it has done its best.
    void flushFolder() const {
        const auto folder =
            path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
        const int number = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (number < 0) return;
        ::fsync(number);
        ::close(number);
    }
};

NewFile::NewFile(const std::filesystem::path& path) : open_(std::make_unique<Open>()) {
    open_->asked = path;
    open_->path = behindLinks(path);
    mayBeReplaced(open_->path);
    if (isWrittenItself(open_->path))
        open_->descriptor = ::open(open_->path.c_str(), O_WRONLY | O_CLOEXEC);
    else
        open_->createBeside();
    if (open_->descriptor < 0) fail(errno, path);
}

NewFile::NewFile(NewFile&&) noexcept = default;
NewFile& NewFile::operator=(NewFile&&) noexcept = default;
NewFile::~NewFile() = default;

void NewFile::append(std::string_view bytes) {
    open_->write(open_->size, bytes);
    open_->size += static_cast<std::int64_t>(bytes.size());
}

void NewFile::overwrite(std::int64_t offset, std::string_view bytes) {
    open_->write(offset, bytes);
}

void NewFile::commit(bool durable) {
    Open& file = *open_;
    const bool temporary = !file.temporary.empty();
    if (temporary) file.keepRights();
    if (temporary && durable && ::fsync(file.descriptor) != 0) fail(errno, file.asked);
    // What was written may fail as late as here.
    if (::close(std::exchange(file.descriptor, -1)) != 0) fail(errno, file.asked);
    if (!temporary) return;
    if (::rename(file.temporary.c_str(), file.path.c_str()) != 0) fail(errno, file.asked);
    file.temporary.clear();
    if (durable) file.flushFolder();
}

} // namespace norvel
