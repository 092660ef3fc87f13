#include "platform/adodb/client/RowSet.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
#include "platform/adodb/client/View.h"
#include "platform/adodb/fetch/Retire.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <iterator>
#include <utility>

namespace norvel::adodb {

namespace {

// A Double holds 53 bits exactly: 40 for the row, 13 for the generation, which is never 0.
constexpr double rowsPerGeneration = 1099511627776.0; // 2^40
constexpr std::uint32_t generations = 8191;

std::uint32_t nextGeneration() {
    static std::atomic<std::uint32_t> last{0};
    return last.fetch_add(1) % generations + 1;
}

} // namespace

RowSet::RowSet(std::unique_ptr<Fetch> fetch, bool waits)
    : fetch_(std::move(fetch)), store_(fetch_->store()), identity_(fetch_->identity()),
      generation_(nextGeneration()), waits_(waits) {}

RowSet::RowSet(std::shared_ptr<ColumnStore> store)
    : store_(std::move(store)), generation_(nextGeneration()), waits_(true) {}

RowSet::~RowSet() {
    retire(std::move(fetch_));
}

void RowSet::cancel() noexcept {
    if (fetch_) fetch_->cancel();
}

std::optional<Errore> RowSet::error() const {
    return fetch_ && !fetch_->running() ? fetch_->error() : std::nullopt;
}

bool RowSet::waitForEnd(int milliseconds) const {
    if (!fetch_) return true;
    return fetch_->waitForEnd(std::chrono::milliseconds(milliseconds));
}

RowCount RowSet::reach(RowCount wanted) const {
    if (rows() >= wanted) return rows();
    if (fetching() && waits_) fetch_->waitForRows(wanted);
    const bool ended = !fetching(); // looked at before the rows: they are final then
    const RowCount have = rows();
    if (have < wanted && ended)
        if (const auto broken = error()) throw *broken;
    return have;
}

// --- who shows the rows ---

void RowSet::share(const std::weak_ptr<ClientRecordset>& recordset) {
    std::erase_if(sharers_, [](const auto& each) { return each.expired(); });
    sharers_.push_back(recordset);
}

std::vector<std::shared_ptr<ClientRecordset>> RowSet::sharers() {
    std::vector<std::shared_ptr<ClientRecordset>> found;
    for (const auto& each : sharers_)
        if (auto recordset = each.lock())
            if (recordset->shows(*this)) found.push_back(std::move(recordset));
    return found;
}

// --- changes ---

void RowSet::append(const std::vector<Variant>& row) {
    if (!appender_) appender_ = std::make_unique<GroupBuilder>(store_);
    appender_->append(row);
}

namespace {

// The views around a change of one row; they have it back, too, where the change comes to nothing.
template <class Change>
void changeRow(const ViewRegistry& registry, RowNumber row, Change change) {
    auto all = registry.all();
    std::vector<std::pair<std::shared_ptr<View>, bool>> views;
    views.reserve(all.size());
    const auto putBack = [&] {
        for (const auto& [view, showed] : views)
            view->put(row, showed);
    };
    try {
        for (auto& view : all) {
            const bool showed = view->take(row);
            views.emplace_back(std::move(view), showed);
        }
        change();
    } catch (...) {
        putBack();
        throw;
    }
    putBack();
}

} // namespace

void RowSet::edit(RowCount row, const std::vector<std::pair<int, Variant>>& cells) {
    changeRow(views_, static_cast<RowNumber>(row), [&] {
        for (const auto& [column, value] : cells)
            store_->change(column, row, value);
    });
}

void RowSet::remove(RowCount row) {
    const auto number = static_cast<RowNumber>(row);
    if (isDeleted(row)) return;
    changeRow(views_, number,
              [&] { deleted_.insert(std::ranges::lower_bound(deleted_, number), number); });
}

bool RowSet::isDeleted(RowCount row) const {
    return !deleted_.empty() && std::ranges::binary_search(deleted_, row);
}

void RowSet::leaveOutDeleted(RowList& rows) const {
    if (deleted_.empty()) return;
    RowList left;
    left.reserve(rows.size());
    std::ranges::set_difference(rows, deleted_, std::back_inserter(left));
    rows = std::move(left);
}

// As many rows are skipped as were deleted up to the one looked for.
RowCount RowSet::livingRow(RowCount position) const {
    std::size_t low = 0;
    std::size_t high = deleted_.size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (static_cast<RowCount>(deleted_[middle]) - static_cast<RowCount>(middle) <= position)
            low = middle + 1;
        else
            high = middle;
    }
    return position + static_cast<RowCount>(low);
}

RowCount RowSet::livingBefore(RowCount row) const {
    return row - (std::ranges::lower_bound(deleted_, row) - deleted_.begin());
}

// --- views ---

void ViewRegistry::add(const std::string& key, const std::shared_ptr<View>& view) {
    std::erase_if(views_, [](const auto& entry) { return entry.second.expired(); });
    views_.emplace_back(key, view);
}

std::shared_ptr<View> ViewRegistry::find(const std::string& key) const {
    for (const auto& [known, view] : views_)
        if (known == key && !key.empty())
            if (auto found = view.lock()) return found;
    return nullptr;
}

std::vector<std::shared_ptr<View>> ViewRegistry::all() const {
    std::vector<std::shared_ptr<View>> found;
    for (const auto& [key, weak] : views_)
        if (auto view = weak.lock()) found.push_back(std::move(view));
    return found;
}

Variant makeBookmark(std::uint32_t generation, RowCount row) {
    return static_cast<double>(generation) * rowsPerGeneration + static_cast<double>(row);
}

BookmarkParts readBookmark(const Variant& bookmark) {
    if (bookmark.type() != VarType::R8) throw adoError(adErrInvalidArgument);
    const double value = bookmark.toDouble();
    if (!(value >= rowsPerGeneration) || value >= rowsPerGeneration * (generations + 1.0) ||
        value != std::floor(value))
        throw adoError(dbBadBookmark);
    const double generation = std::floor(value / rowsPerGeneration);
    return {static_cast<std::uint32_t>(generation),
            static_cast<RowCount>(value - generation * rowsPerGeneration)};
}

} // namespace norvel::adodb
