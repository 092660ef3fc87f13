// A compound file that holds one stream, written from front to back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace norvel::spreadsheet {

// Version 3, sectors of 512 bytes: [MS-CFB] "Compound File Binary File Format". The stream's
// sectors lie in their order behind the header; directory and allocation tables follow them.
//
// Raises Errore (71, "Disco non pronto o pieno", with the file's name) when the file cannot be
// written, and 14 when the stream would pass the format's 2 GB.
class CompoundFile {
  public:
    // Makes the file, or empties it. streamName: at most 31 characters of ASCII.
    CompoundFile(const std::filesystem::path& path, std::string streamName);
    CompoundFile(const CompoundFile&) = delete;
    CompoundFile& operator=(const CompoundFile&) = delete;

    void append(std::span<const std::byte> bytes);
    // Bytes of the stream so far.
    std::int64_t size() const { return size_; }
    // Replaces bytes that were appended; they go to disk with finish().
    void replaceLater(std::int64_t offset, std::vector<std::byte> bytes);
    // Writes what makes the file whole, and closes it.
    void finish();

  private:
    struct Tables;
    void write(std::span<const std::byte> bytes);
    void padStream();
    void writeDirectory();
    void writeTables(Tables& tables);
    void writeHeader(const Tables& tables);
    void check();

    std::filesystem::path path_;
    std::string streamName_;
    std::ofstream file_;
    std::int64_t size_ = 0;
    std::vector<std::pair<std::int64_t, std::vector<std::byte>>> replacements_;
};

} // namespace norvel::spreadsheet
