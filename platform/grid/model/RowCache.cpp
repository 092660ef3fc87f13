#include "platform/grid/model/RowCache.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

namespace {

// About what a column of a block takes in memory.
std::size_t weight(const std::vector<std::string>& column) {
    std::size_t bytes = 0;
    for (const std::string& text : column)
        bytes += sizeof(std::string) + text.size();
    return bytes;
}

} // namespace

std::vector<RowCache::Gap> RowCache::Missing(RowCount first, RowCount count,
                                             const std::vector<int>& fields, RowCount rows) {
    ++clock_;
    std::vector<Gap> gaps;
    const RowCount end = std::min(first + count, rows);
    if (first < 0 || first >= end) return gaps;
    for (RowCount number = first / blockRows; number * blockRows < end; ++number) {
        Gap gap{number * blockRows, std::min(blockRows, rows - number * blockRows), {}};
        const auto needed = static_cast<std::size_t>(std::min(end - gap.first, gap.count));
        const auto block = blocks_.find(number);
        for (const int field : fields) {
            if (block != blocks_.end()) {
                const auto held = block->second.fields.find(field);
                if (held != block->second.fields.end() && held->second.size() >= needed) continue;
            }
            gap.fields.push_back(field);
        }
        if (block != blocks_.end()) block->second.used = clock_;
        if (gap.fields.empty()) continue;
        std::ranges::sort(gap.fields);
        gaps.push_back(std::move(gap));
    }
    return gaps;
}

void RowCache::Store(const Gap& gap, std::vector<std::vector<std::string>> texts,
                     std::vector<Variant> bookmarks) {
    Block& block = blocks_[gap.first / blockRows];
    block.used = clock_;
    bytes_ -= block.bytes;
    for (std::size_t i = 0; i < gap.fields.size() && i < texts.size(); ++i) {
        auto& column = block.fields[gap.fields[i]];
        block.bytes -= weight(column);
        column = std::move(texts[i]);
        block.bytes += weight(column);
    }
    bytes_ += block.bytes;
    if (bookmarks.size() >= block.bookmarks.size()) block.bookmarks = std::move(bookmarks);
    drop();
}

void RowCache::Clear() {
    blocks_.clear();
    bytes_ = 0;
}

// A block of the request that is being answered bears the present time and stays.
void RowCache::drop() {
    while (bytes_ > maxBytes_) {
        const auto oldest = std::ranges::min_element(
            blocks_, {}, [](const auto& entry) { return entry.second.used; });
        if (oldest->second.used == clock_) return;
        bytes_ -= oldest->second.bytes;
        blocks_.erase(oldest);
    }
}

const std::string* RowCache::Text(RowCount row, int field) const {
    if (row < 0) return nullptr;
    const auto block = blocks_.find(row / blockRows);
    if (block == blocks_.end()) return nullptr;
    const auto held = block->second.fields.find(field);
    const auto at = static_cast<std::size_t>(row % blockRows);
    if (held == block->second.fields.end() || at >= held->second.size()) return nullptr;
    return &held->second[at];
}

const Variant* RowCache::Bookmark(RowCount row) const {
    if (row < 0) return nullptr;
    const auto block = blocks_.find(row / blockRows);
    const auto at = static_cast<std::size_t>(row % blockRows);
    if (block == blocks_.end() || at >= block->second.bookmarks.size()) return nullptr;
    return &block->second.bookmarks[at];
}

} // namespace norvel::grid
