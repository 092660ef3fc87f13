// Which cells are at hand and which must be read: plain data, without a recordset.
#pragma once

#include "platform/adodb/Recordset.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace norvel::grid {

// Cells in blocks of rows; a block holds only the columns that were asked of it, so that a
// recordset of a thousand columns costs what is seen of it. Blocks used least recently go first.
class NR_API RowCache {
  public:
    static constexpr adodb::RowCount blockRows = 64;

    // maxBytes: how much is kept; more only while one request needs more.
    explicit RowCache(std::size_t maxBytes = std::size_t{16} << 20) : maxBytes_(maxBytes) {}

    // Rows [first, first + count) of the given fields, as one read would bring them.
    struct Gap {
        adodb::RowCount first = 0, count = 0;
        std::vector<int> fields; // indexes, ascending
        bool operator==(const Gap&) const = default;
    };
    // What must be read before the rows [first, first + count) of the fields are all at hand, in
    // ascending order, whole blocks up to the end of the rows.
    std::vector<Gap> Missing(adodb::RowCount first, adodb::RowCount count,
                             const std::vector<int>& fields, adodb::RowCount rows);
    // Keeps what a read brought: texts[i] are those of gap.fields[i]; fewer rows than the gap
    // asked are kept as they are.
    void Store(const Gap& gap, std::vector<std::vector<std::string>> texts,
               std::vector<Variant> bookmarks);

    // Null when it is not at hand.
    const std::string* Text(adodb::RowCount row, int field) const;
    const Variant* Bookmark(adodb::RowCount row) const;

    void Clear();
    std::size_t Bytes() const { return bytes_; }

  private:
    struct Block {
        std::unordered_map<int, std::vector<std::string>> fields;
        std::vector<Variant> bookmarks;
        std::size_t bytes = 0;
        std::uint64_t used = 0;
    };
    void drop();
    std::unordered_map<adodb::RowCount, Block> blocks_; // by number: row / blockRows
    std::size_t maxBytes_;
    std::size_t bytes_ = 0;
    std::uint64_t clock_ = 0;
};

} // namespace norvel::grid
