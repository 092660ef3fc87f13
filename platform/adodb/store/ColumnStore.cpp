#include "platform/adodb/store/ColumnStore.h"

#include <utility>

namespace norvel::adodb {

ColumnStore::ColumnStore(std::vector<ColumnInfo> columns) : columns_(std::move(columns)) {}

ColumnStore::~ColumnStore() = default;

ColumnStore::Position ColumnStore::position(std::size_t index) {
    std::size_t chunk = 0;
    std::size_t first = 0;
    for (std::size_t size = firstChunk; index - first >= size; size *= 2, ++chunk)
        first += size;
    return {chunk, index - first};
}

void ColumnStore::publish(std::unique_ptr<RowGroup> group) {
    const std::size_t index = groups_.load(std::memory_order_relaxed);
    const std::int64_t first = rows_.load(std::memory_order_relaxed);
    const Position p = position(index);
    if (!chunks_[p.chunk]) chunks_[p.chunk] = std::make_unique<Slot[]>(firstChunk << p.chunk);
    const std::int64_t rows = group->rows();
    bytes_.fetch_add(group->bytes(), std::memory_order_relaxed);
    chunks_[p.chunk][p.slot] = {std::move(group), first};
    // The groups first: whoever sees the rows sees the groups that hold them.
    groups_.store(index + 1, std::memory_order_release);
    rows_.store(first + rows, std::memory_order_release);
}

std::size_t ColumnStore::groupOf(std::int64_t row) const {
    std::size_t low = 0;
    std::size_t high = groups();
    while (high - low > 1) {
        const std::size_t middle = low + (high - low) / 2;
        (firstRow(middle) <= row ? low : high) = middle;
    }
    return low;
}

ColumnStore::Place ColumnStore::find(std::int64_t row) const {
    const std::size_t index = groupOf(row);
    return {&group(index), static_cast<std::uint32_t>(row - firstRow(index))};
}

Variant ColumnStore::value(int column, std::int64_t row) const {
    const Place place = find(row);
    return place.group->segment(column).value(place.row,
                                              columns_[static_cast<std::size_t>(column)].type);
}

void ColumnStore::change(int column, std::int64_t row, const Variant& value) {
    const std::size_t index = groupOf(row);
    slot(index).group->change(column, static_cast<std::uint32_t>(row - firstRow(index)), value);
    derived_.forget(column);
}

} // namespace norvel::adodb
