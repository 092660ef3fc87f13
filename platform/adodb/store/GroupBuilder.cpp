#include "platform/adodb/store/GroupBuilder.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace norvel::adodb {

GroupBuilder::GroupBuilder(std::shared_ptr<ColumnStore> store) : store_(std::move(store)) {
    columns_.reserve(store_->columns().size());
    for (const ColumnInfo& column : store_->columns())
        columns_.emplace_back(column.type);
    const auto count = static_cast<std::uint32_t>(std::max(store_->columnCount(), 1));
    rowLimit_ = std::clamp(fullCells / count, 256U, fullRows);
}

int GroupBuilder::take(Batch& batch) {
    int published = 0;
    const std::uint32_t ready = batch.ready();
    while (batch.taken < ready) {
        const std::uint32_t to = batch.taken + std::min(ready - batch.taken, rowLimit_ - gathered_);
        for (std::size_t i = 0; i < columns_.size(); ++i)
            columns_[i].append(batch, static_cast<int>(i), batch.taken, to);
        gathered_ += to - batch.taken;
        batch.taken = to;
        if (gathered_ == rowLimit_ || weight() >= fullBytes) published += publish() ? 1 : 0;
    }
    return published;
}

void GroupBuilder::append(const std::vector<Variant>& values) {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        columns_[i].append(values[i]);
    ++gathered_;
    publish();
}

std::size_t GroupBuilder::weight() const {
    std::size_t bytes = 0;
    for (const SegmentBuilder& column : columns_)
        bytes += column.weight();
    return bytes;
}

bool GroupBuilder::publish() {
    if (gathered_ == 0) return false;
    std::vector<std::size_t> sizes;
    sizes.reserve(columns_.size());
    for (SegmentBuilder& column : columns_)
        sizes.push_back(column.prepare());
    Slab slab(std::accumulate(sizes.begin(), sizes.end(), std::size_t{0}));
    std::vector<Segment> segments;
    segments.reserve(columns_.size());
    std::size_t at = 0;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        segments.push_back(columns_[i].finish(slab.data() + at));
        at += sizes[i];
    }
    store_->publish(std::make_unique<RowGroup>(gathered_, std::move(slab), std::move(segments)));
    gathered_ = 0;
    return true;
}

} // namespace norvel::adodb
