#include "platform/spreadsheet/CompoundFile.h"

#include "platform/runtime/Errore.h"
#include "platform/spreadsheet/Bytes.h"

#include <algorithm>
#include <string_view>

namespace norvel::spreadsheet {

namespace {

constexpr std::int64_t sectorBytes = 512;
constexpr std::int64_t entriesPerSector = sectorBytes / 4;
constexpr std::int64_t shortStreamLimit = 4096; // shorter streams would lie elsewhere
constexpr std::int64_t streamLimit = (std::int64_t{1} << 31) - (1 << 20);
constexpr std::size_t headerTableEntries = 109; // allocation sectors that the header itself names

constexpr std::uint32_t freeSector = 0xFFFFFFFF;
constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t tableSector = 0xFFFFFFFD;
constexpr std::uint32_t tableOfTablesSector = 0xFFFFFFFC;
constexpr std::uint32_t noEntry = 0xFFFFFFFF;

constexpr int outOfMemoryForFile = 14;

std::string_view textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::int64_t inSectors(std::int64_t count, std::int64_t each) {
    return (count + each - 1) / each;
}

} // namespace

// Where everything lies, in sectors from the end of the header: stream, directory, allocation
// tables, tables of tables.
struct CompoundFile::Tables {
    std::int64_t streamSectors = 0;
    std::int64_t directory = 0;
    std::int64_t firstTable = 0;
    std::int64_t tables = 0;
    std::int64_t firstTableOfTables = 0;
    std::int64_t tablesOfTables = 0;

    explicit Tables(std::int64_t streamSectorCount)
        : streamSectors(streamSectorCount), directory(streamSectorCount),
          firstTable(streamSectorCount + 1) {
        // The tables describe themselves, too: their number is found by growing it.
        for (;;) {
            const auto beyond =
                std::max<std::int64_t>(0, tables - static_cast<std::int64_t>(headerTableEntries));
            tablesOfTables = inSectors(beyond, entriesPerSector - 1);
            const auto needed =
                inSectors(streamSectors + 1 + tables + tablesOfTables, entriesPerSector);
            if (needed <= tables) break;
            tables = needed;
        }
        firstTableOfTables = firstTable + tables;
    }
};

CompoundFile::CompoundFile(const std::filesystem::path& path, std::string streamName)
    : streamName_(std::move(streamName)), file_(path) {
    Bytes header;
    header.zeros(sectorBytes);
    write(header.all());
}

void CompoundFile::write(std::span<const std::byte> bytes) {
    file_.append(textOf(bytes));
}

void CompoundFile::append(std::span<const std::byte> bytes) {
    size_ += static_cast<std::int64_t>(bytes.size());
    if (size_ > streamLimit)
        throw Errore(outOfMemoryForFile,
                     "I dati sono più di quanti un file di questo formato possa contenere (2 GB)");
    write(bytes);
}

void CompoundFile::replaceLater(std::int64_t offset, std::vector<std::byte> bytes) {
    replacements_.emplace_back(offset, std::move(bytes));
}

void CompoundFile::padStream() {
    const std::int64_t whole =
        std::max(shortStreamLimit, inSectors(size_, sectorBytes) * sectorBytes);
    Bytes padding;
    padding.zeros(static_cast<std::size_t>(whole - size_));
    append(padding.all());
}

// The root and the stream; two empty entries fill the sector. [MS-CFB] 2.6.
void CompoundFile::writeDirectory() {
    Bytes sector;
    const auto entry = [&](const std::string& name, unsigned type, std::uint32_t child,
                           std::uint32_t start, std::int64_t bytes) {
        const std::size_t begin = sector.size();
        for (const char c : name)
            sector.put16(static_cast<unsigned char>(c));
        sector.zeros(64 - (sector.size() - begin));
        sector.put16(name.empty() ? 0 : static_cast<unsigned>(name.size() + 1) * 2);
        sector.put8(type);
        sector.put8(name.empty() ? 0 : 1); // black
        sector.put32(noEntry);
        sector.put32(noEntry);
        sector.put32(child);
        sector.zeros(16 + 4 + 8 + 8); // class, state, times
        sector.put32(start);
        sector.put(bytes);
    };
    entry("Root Entry", 5, 1, endOfChain, 0);
    entry(streamName_, 2, noEntry, 0, size_);
    entry("", 0, noEntry, 0, 0);
    entry("", 0, noEntry, 0, 0);
    write(sector.all());
}

// The allocation tables, and the tables that say where those beyond the header's lie.
void CompoundFile::writeTables(Tables& tables) {
    Bytes out;
    for (std::int64_t i = 1; i < tables.streamSectors; ++i)
        out.put32(static_cast<std::uint32_t>(i));
    out.put32(endOfChain); // of the stream
    out.put32(endOfChain); // of the directory
    for (std::int64_t i = 0; i < tables.tables; ++i)
        out.put32(tableSector);
    for (std::int64_t i = 0; i < tables.tablesOfTables; ++i)
        out.put32(tableOfTablesSector);
    while (out.size() < static_cast<std::size_t>(tables.tables * sectorBytes))
        out.put32(freeSector);
    auto next = static_cast<std::int64_t>(headerTableEntries);
    for (std::int64_t i = 0; i < tables.tablesOfTables; ++i) {
        for (std::int64_t k = 0; k < entriesPerSector - 1; ++k, ++next)
            out.put32(next < tables.tables ? static_cast<std::uint32_t>(tables.firstTable + next)
                                           : freeSector);
        out.put32(i + 1 < tables.tablesOfTables
                      ? static_cast<std::uint32_t>(tables.firstTableOfTables + i + 1)
                      : endOfChain);
    }
    write(out.all());
}

// [MS-CFB] 2.2.
void CompoundFile::writeHeader(const Tables& tables) {
    Bytes out;
    for (const unsigned byte : {0xD0U, 0xCFU, 0x11U, 0xE0U, 0xA1U, 0xB1U, 0x1AU, 0xE1U})
        out.put8(byte);
    out.zeros(16);
    out.put16(0x003E); // minor version
    out.put16(3);      // major version
    out.put16(0xFFFE); // little-endian
    out.put16(9);      // sectors of 2^9 bytes
    out.put16(6);      // short sectors of 2^6
    out.zeros(6 + 4);
    out.put32(static_cast<std::uint32_t>(tables.tables));
    out.put32(static_cast<std::uint32_t>(tables.directory));
    out.put32(0);
    out.put32(shortStreamLimit);
    out.put32(endOfChain); // no short streams
    out.put32(0);
    out.put32(tables.tablesOfTables > 0 ? static_cast<std::uint32_t>(tables.firstTableOfTables)
                                        : endOfChain);
    out.put32(static_cast<std::uint32_t>(tables.tablesOfTables));
    for (std::size_t i = 0; i < headerTableEntries; ++i)
        out.put32(static_cast<std::int64_t>(i) < tables.tables
                      ? static_cast<std::uint32_t>(tables.firstTable + static_cast<std::int64_t>(i))
                      : freeSector);
    file_.overwrite(0, textOf(out.all()));
}

void CompoundFile::finish() {
    padStream();
    Tables tables(size_ / sectorBytes);
    writeDirectory();
    writeTables(tables);
    for (const auto& [offset, bytes] : replacements_)
        file_.overwrite(sectorBytes + offset, textOf(bytes));
    writeHeader(tables);
    file_.commit(false);
}

} // namespace norvel::spreadsheet
