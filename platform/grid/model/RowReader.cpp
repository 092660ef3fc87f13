#include "platform/grid/model/RowReader.h"

#include "platform/grid/model/CellText.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using namespace adodb;

namespace {

constexpr RowCount firstChunk = 4;
constexpr std::size_t heavyChunk = 1 << 20; // bytes

// A clone is made without the host's filter and order; both are given to it here, and only where
// there is something to give.
bool hasFilter(const Variant& filter) {
    if (filter.isText()) return !filter.text().empty();
    if (filter.type() == VarType::Array) return true;
    return !filter.isEmpty() && !filter.isNull() && filter.toI4() != adFilterNone;
}

std::size_t weight(const Variant& value) {
    if (value.isText()) return value.text().size();
    if (value.type() == VarType::Bytes) return value.bytes().size();
    return 0;
}

} // namespace

RecordsetRef cloneOfView(Recordset& host, const std::string& sort) {
    RecordsetRef clone = host.Clone(adLockReadOnly);
    const Variant filter = host.Filter();
    if (!sort.empty()) clone->SetSort(sort);
    if (hasFilter(filter)) clone->SetFilter(filter);
    return clone;
}

RowReader::RowReader(Recordset& host)
    : clone_(cloneOfView(host, host.Sort())), filter_(host.Filter()), sort_(host.Sort()) {
    Fields& fields = clone_->Fields();
    for (int i = 0; i < fields.Count(); ++i) {
        fieldTypes_.push_back(fields(i).Type());
        fieldNumbers_.emplace(foldText(fields(i).Name()), i);
    }
}

RowCount RowReader::Rows() const {
    return std::max<RowCount>(0, clone_->RecordCount());
}

Variant RowReader::BookmarkAt(RowCount row) {
    clone_->SetAbsolutePosition(row + 1);
    return clone_->Bookmark();
}

std::optional<RowCount> RowReader::RowOf(const Variant& bookmark) {
    try {
        clone_->SetBookmark(bookmark);
    } catch (const Errore&) { // the row is not in this view
        return std::nullopt;
    }
    const RowCount position = clone_->AbsolutePosition();
    if (position < 1) return std::nullopt;
    return position - 1;
}

// Rows that arrive while an order is in force go between those that are there; without one they
// come behind them.
std::shared_ptr<RowIds> RowReader::StableView() {
    if (sort_.empty() || !(clone_->State() & adStateFetching)) return nullptr;
    if (!stable_) {
        std::shared_ptr<RowReader> plain(new RowReader());
        plain->clone_ = clone_->Clone(adLockReadOnly);
        stable_ = plain;
    }
    return stable_;
}

int RowReader::FieldIndex(std::string_view name) const {
    const auto found = fieldNumbers_.find(foldText(name));
    return found == fieldNumbers_.end() ? -1 : found->second;
}

void RowReader::Fill(RowCache& cache, RowCount first, RowCount count,
                     const std::vector<int>& fields) {
    if (fields.empty()) return;
    const RowCount rows = Rows();
    if (Shifts() && std::exchange(filledFrom_, rows) != rows) cache.Clear();
    for (const RowCache::Gap& gap : cache.Missing(first, count, fields, rows))
        read(cache, gap);
}

// Values are read in growing chunks, and one by one where they are heavy, so that a block of long
// texts is never in memory at once: only its cells are kept.
void RowReader::read(RowCache& cache, const RowCache::Gap& gap) {
    const std::vector<Variant> fields(gap.fields.begin(), gap.fields.end());
    std::vector<std::vector<std::string>> texts(fields.size());
    std::vector<Variant> bookmarks;
    RowCount chunk = firstChunk;
    for (RowCount done = 0; done < gap.count;) {
        const RowCount wanted = std::min(chunk, gap.count - done);
        RowBlock block = readBlock(gap.first + done, wanted, fields);
        if (block.rows == 0) break;
        std::size_t bytes = 0;
        for (std::size_t f = 0; f < block.values.size(); ++f) {
            for (const Variant& value : block.values[f]) {
                bytes += weight(value);
                texts[f].push_back(cellText(value));
            }
        }
        std::ranges::move(block.bookmarks, std::back_inserter(bookmarks));
        done += block.rows;
        chunk = bytes > heavyChunk ? 1 : chunk * 4;
    }
    cache.Store(gap, std::move(texts), std::move(bookmarks));
}

RowBlock RowReader::Values(RowCount first, RowCount count, const std::vector<int>& fields) {
    if (fields.empty()) { // GetRows would read them all
        RowBlock block;
        block.rows = count;
        return block;
    }
    return readBlock(first, count, {fields.begin(), fields.end()});
}

// GetRows goes on behind the last row it reads. Where more rows are to come that would wait for
// them, and where a fetch broke off it would fail: there the last row is read by itself.
RowBlock RowReader::readBlock(RowCount first, RowCount count, const std::vector<Variant>& fields) {
    const bool open = (clone_->State() & (adStateFetching | adStateFetchBroken)) != 0;
    if (open && first + count >= Rows()) count = Rows() - first - 1;
    clone_->SetAbsolutePosition(first + 1);
    if (count > 0) return clone_->GetRows(count, {}, fields);
    RowBlock block;
    block.rows = 1;
    for (const Variant& field : fields)
        block.values.push_back({clone_->Fields()(field).Value()});
    block.bookmarks.push_back(clone_->Bookmark());
    return block;
}

} // namespace norvel::grid
