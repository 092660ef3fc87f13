// Files written whole or not at all.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace norvel {

// Puts contents into the file, in the place of what it held. Whatever happens meanwhile, the
// process killed included, the file holds either what it held or the new contents; a failure leaves
// no other file behind, a kill may leave one whose name begins with the file's and ends in ".tmp".
// A file that is protected is refused, and on Windows one that another program keeps open. The
// rights of the file that is replaced go on where the file system has any. Raises Errore by the
// numbers that hosts know: 61 disk full, 70 permission denied, 76 no such folder, 75 anything else.
NR_API void writeWholeFile(const std::filesystem::path& path, std::string_view contents);

// The same for contents that come bit by bit: they go to a file beside the one that is meant, which
// takes its place by commit(). Without commit() nothing stays of it. Raises as writeWholeFile.
class NR_API NewFile {
  public:
    explicit NewFile(const std::filesystem::path& path);
    ~NewFile();
    NewFile(NewFile&&) noexcept;
    NewFile& operator=(NewFile&&) noexcept;

    void append(std::string_view bytes);
    // Over bytes that were appended.
    void overwrite(std::int64_t offset, std::string_view bytes);
    // durable: what was written has reached the disk, not the system only. Then the file is there.
    void commit(bool durable);

  private:
    struct Open; // the system's own
    std::unique_ptr<Open> open_;
};

// The whole file; at most longest bytes. Raises 53 where there is none, 7 where it is longer, 70,
// 75.
NR_API std::string readWholeFile(const std::filesystem::path& path, std::size_t longest);

} // namespace norvel
