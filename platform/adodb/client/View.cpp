#include "platform/adodb/client/View.h"

#include "platform/adodb/Errors.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr RowNumber nowhere = std::numeric_limits<RowNumber>::max();

} // namespace

View::View(std::shared_ptr<RowSet> rows, Rules rules, const View* previous)
    : rows_(std::move(rows)), rules_(std::move(rules)) {
    if (rules_.only) {
        list_ = *rules_.only;
        if (rules_.order) rules_.order->sort(rows_->store(), list_);
    } else if (previous && previous->rows_ == rows_) {
        takeOver(*previous);
    }
}

std::shared_ptr<View> View::shared(const std::shared_ptr<RowSet>& rows, const std::string& key,
                                   Rules rules, const View* previous) {
    auto& kept = rows->views();
    std::erase_if(kept, [](const auto& entry) { return entry.second.expired(); });
    if (auto found = kept[key].lock()) return std::static_pointer_cast<View>(found);
    auto made = std::make_shared<View>(rows, std::move(rules), previous);
    kept[key] = made;
    return made;
}

// Rows that the previous filter kept, in the same order: those that the new one keeps are found
// among them.
void View::takeOver(const View& previous) {
    const Rules& old = previous.rules_;
    if (!rules_.filter || !old.filter || old.order != rules_.order) return;
    if (!rules_.filter->narrows(*old.filter)) return;
    rules_.filter->runOver(rows_->store(), previous.list_, list_);
    examined_ = previous.examined_;
}

// The rows that came since the last look.
void View::update() {
    if (rules_.plain() || rules_.only) return;
    const RowCount known = rows_->rows();
    if (known > std::numeric_limits<RowNumber>::max()) throw adoError(oleOutOfMemory);
    const auto now = static_cast<RowNumber>(known);
    if (now == examined_) return;
    RowList hits;
    if (rules_.filter) {
        rules_.filter->run(rows_->store(), examined_, now, hits);
    } else {
        hits.resize(now - examined_);
        std::iota(hits.begin(), hits.end(), examined_);
    }
    examined_ = now;
    add(std::move(hits));
}

void View::add(RowList hits) {
    if (hits.empty()) return;
    if (!rules_.order) {
        if (list_.empty())
            list_ = std::move(hits);
        else
            list_.insert(list_.end(), hits.begin(), hits.end());
        return;
    }
    rules_.order->sort(rows_->store(), hits);
    list_ = list_.empty() ? std::move(hits) : rules_.order->merge(rows_->store(), list_, hits);
    ++version_;
}

RowCount View::rows() {
    if (rules_.plain()) return rows_->rows();
    update();
    return static_cast<RowCount>(list_.size());
}

RowCount View::reach(RowCount wanted) {
    if (rules_.plain()) return rows_->reach(wanted);
    for (;;) {
        const bool ended = !rows_->fetching(); // looked at before the rows: they are final then
        const RowCount have = rows();
        if (have >= wanted || rules_.only) return have;
        if (ended) {
            if (const auto broken = rows_->error()) throw *broken;
            return have;
        }
        if (!rows_->waits()) return have;
        rows_->reach(RowCount{examined_} + 1);
    }
}

RowCount View::rowAt(RowCount position) const {
    return rules_.plain() ? position : list_[static_cast<std::size_t>(position)];
}

std::optional<RowCount> View::positionOf(RowCount row) {
    if (rules_.plain()) return row;
    update();
    if (!rules_.order) {
        const auto found = std::ranges::lower_bound(list_, static_cast<RowNumber>(row));
        if (found == list_.end() || *found != row) return std::nullopt;
        return found - list_.begin();
    }
    if (positionsOf_ != version_ || positionsCount_ != list_.size() || positions_.empty()) {
        positions_.assign(static_cast<std::size_t>(rows_->rows()), nowhere);
        for (std::size_t i = 0; i < list_.size(); ++i)
            positions_[list_[i]] = static_cast<RowNumber>(i);
        positionsOf_ = version_;
        positionsCount_ = list_.size();
    }
    const auto at = static_cast<std::size_t>(row);
    if (at >= positions_.size() || positions_[at] == nowhere) return std::nullopt;
    return positions_[at];
}

} // namespace norvel::adodb
