#include "platform/adodb/client/RowSet.h"

#include "platform/adodb/Errors.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
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
    : fetch_(std::move(fetch)), store_(fetch_->store()), generation_(nextGeneration()),
      waits_(waits) {}

RowSet::RowSet(std::shared_ptr<ColumnStore> store)
    : store_(std::move(store)), generation_(nextGeneration()), waits_(true) {}

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
