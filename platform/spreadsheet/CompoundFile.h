// A compound file that holds one stream, written from front to back.
#pragma once

#include "platform/runtime/WholeFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace norvel::spreadsheet {

// Version 3, sectors of 512 bytes: [MS-CFB] "Compound File Binary File Format". The stream's
// sectors lie in their order behind the header; directory and allocation tables follow them.
//
// The file takes the place of what it replaces with finish(), and nothing of it stays without.
// Raises what NewFile raises, and 14 when the stream would pass the format's 2 GB.
class CompoundFile {
  public:
    // streamName: at most 31 characters of ASCII.
    CompoundFile(const std::filesystem::path& path, std::string streamName);
    CompoundFile(const CompoundFile&) = delete;
    CompoundFile& operator=(const CompoundFile&) = delete;

    void append(std::span<const std::byte> bytes);
    // Bytes of the stream so far.
    std::int64_t size() const { return size_; }
    // Replaces bytes that were appended; they go to disk with finish().
    void replaceLater(std::int64_t offset, std::vector<std::byte> bytes);
    // Writes what makes the file whole, and puts it in its place.
    void finish();

  private:
    struct Tables;
    void write(std::span<const std::byte> bytes);
    void padStream();
    void writeDirectory();
    void writeTables(Tables& tables);
    void writeHeader(const Tables& tables);

    std::string streamName_;
    NewFile file_;
    std::int64_t size_ = 0;
    std::vector<std::pair<std::int64_t, std::vector<std::byte>>> replacements_;
};

} // namespace norvel::spreadsheet
