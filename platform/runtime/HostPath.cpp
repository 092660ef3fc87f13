#include "platform/runtime/HostPath.h"

#include "platform/runtime/Text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <system_error>

namespace norvel {

namespace fs = std::filesystem;

#if defined(_WIN32)

// The system reads the host's notation itself.
fs::path percorsoSistema(std::string_view percorsoHost) {
    return fs::path(std::u8string(percorsoHost.begin(), percorsoHost.end()));
}

#else // POSIX: separators, drive letters and case are ours to resolve.

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error)); // a dangling link is something, too
}

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

// Names on disk are bytes; those of old disks are Windows-1252.
bool sameName(const std::string& onDisk, const std::string& wanted) {
    return equalsText(onDisk, wanted) || equalsText(toValidUtf8(onDisk), wanted);
}

// The entry of folder that stands for name: the first in byte order that differs in case only.
std::optional<std::string> entryIgnoringCase(const fs::path& folder, const std::string& name,
                                             bool mustBeFolder) {
    std::optional<std::string> best;
    std::error_code error;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string found = entry->path().filename().string();
        if (best && found >= *best) continue;
        if (sameName(found, name) && (!mustBeFolder || isFolder(entry->path()))) best = found;
    }
    return best;
}

// The component as it is called on disk, or as written if nothing on disk answers to it.
std::string nameOnDisk(const fs::path& folder, const std::string& name, bool mustBeFolder) {
    if (name == "." || name == "..") return name;
    const fs::path asWritten = folder / name;
    if (mustBeFolder ? isFolder(asWritten) : isThere(asWritten)) return name;
    return entryIgnoringCase(folder, name, mustBeFolder).value_or(name);
}

} // namespace

fs::path percorsoSistema(std::string_view percorsoHost) {
    const bool drive =
        percorsoHost.size() >= 2 && isLetter(percorsoHost[0]) && percorsoHost[1] == ':';
    std::string text(drive ? percorsoHost.substr(2) : percorsoHost);
    std::replace(text.begin(), text.end(), '\\', '/');
    fs::path result(text.starts_with('/') ? "/" : "");
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find('/', at), text.size());
        const bool more = end < text.size();
        if (end > at) result /= nameOnDisk(result, text.substr(at, end - at), more);
        at = end + 1;
    }
    if (drive && text.empty()) return "."; // the drive's current folder
    if (text.ends_with('/') && result.has_filename()) result /= "";
    return result;
}

#endif

} // namespace norvel
