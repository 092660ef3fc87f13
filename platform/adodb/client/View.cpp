#include "platform/adodb/client/View.h"

#include "platform/adodb/Errors.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <ranges>

namespace norvel::adodb {

View::View(std::shared_ptr<RowSet> rows, Rules rules, View* previous)
    : rows_(std::move(rows)), rules_(std::move(rules)), list_(std::make_shared<RowList>()) {
    if (rules_.only) {
        *list_ = *rules_.only;
        rows_->leaveOutDeleted(*list_);
        if (rules_.order) rules_.order->sort(rows_->store(), *list_);
    } else if (previous && previous->rows_ == rows_ && !previous->rules_.only) {
        if (!takeOverFilter(*previous)) takeOverOrder(*previous);
    }
}

View::View(std::shared_ptr<RowSet> rows, RowList list, std::shared_ptr<const SortOrder> order)
    : rows_(std::move(rows)), list_(std::make_shared<RowList>(std::move(list))) {
    rules_.only.emplace();
    rules_.order = std::move(order);
    rules_.order->sort(rows_->store(), *list_);
}

RowList View::list() {
    if (!rules_.plain()) {
        update();
        return *list_;
    }
    RowList all(static_cast<std::size_t>(rows_->rows()));
    std::iota(all.begin(), all.end(), RowNumber{0});
    rows_->leaveOutDeleted(all);
    return all;
}

std::shared_ptr<View> View::shared(const std::shared_ptr<RowSet>& rows, const std::string& key,
                                   Rules rules, View* previous) {
    if (auto found = rows->views().find(key)) return found;
    auto made = std::make_shared<View>(rows, std::move(rules), previous);
    rows->views().add(key, made);
    return made;
}

// Rows that the previous filter kept, in the same order: those that the new one keeps are found
// among them.
bool View::takeOverFilter(const View& previous) {
    const Rules& old = previous.rules_;
    if (!rules_.filter || !old.filter || old.order != rules_.order) return false;
    if (!rules_.filter->narrows(*old.filter)) return false;
    rules_.filter->runOver(rows_->store(), *previous.list_, *list_);
    examined_ = previous.examined_;
    turned_ = previous.turned_;
    return true;
}

// The same rows in another order.
bool View::takeOverOrder(View& previous) {
    const Rules& old = previous.rules_;
    if (!rules_.order || old.filter != rules_.filter) return false;
    if (old.plain()) return false;
    previous.update();
    examined_ = previous.examined_;
    if (old.order && rules_.order->reverses(*old.order)) {
        list_ = previous.list_;
        turned_ = !previous.turned_;
        return true;
    }
    *list_ = *previous.list_;
    rules_.order->sort(rows_->store(), *list_);
    return true;
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
    rows_->leaveOutDeleted(hits);
    add(std::move(hits));
}

void View::add(RowList hits) {
    if (hits.empty()) return;
    if (!rules_.order) {
        RowList& list = changeable();
        if (list.empty())
            list = std::move(hits);
        else
            list.insert(list.end(), hits.begin(), hits.end());
        return;
    }
    rules_.order->sort(rows_->store(), hits);
    straighten();
    RowList& list = changeable();
    list = list.empty() ? std::move(hits) : rules_.order->merge(rows_->store(), list, hits);
    ++version_;
}

// What is known of it holds no more.
void View::listChanged() {
    run_ = {};
    indexes_ = {};
    lookedFor_ = 0;
}

// The list, this view's alone from now on.
RowList& View::changeable() {
    listChanged();
    if (list_.use_count() > 1) list_ = std::make_shared<RowList>(*list_);
    return *list_;
}

// Brings a turned list into this view's own order.
void View::straighten() {
    if (!turned_) return;
    auto straight = std::make_shared<RowList>();
    straight->reserve(list_->size());
    for (std::size_t end = list_->size(); end > 0;) {
        std::size_t begin = end - 1;
        while (begin > 0 &&
               rules_.order->compare(rows_->store(), (*list_)[begin - 1], (*list_)[end - 1]) == 0)
            --begin;
        straight->insert(straight->end(), list_->begin() + static_cast<std::ptrdiff_t>(begin),
                         list_->begin() + static_cast<std::ptrdiff_t>(end));
        end = begin;
    }
    listChanged();
    list_ = std::move(straight);
    turned_ = false;
}

RowCount View::rows() {
    if (rules_.plain()) return rows_->rows() - rows_->deletedRows();
    update();
    return static_cast<RowCount>(list_->size());
}

RowCount View::reach(RowCount wanted) {
    for (;;) {
        const bool ended = !rows_->fetching(); // looked at before the rows: they are final then
        const RowCount have = rows();
        if (have >= wanted || rules_.only) return have;
        if (ended) {
            if (const auto broken = rows_->error()) throw *broken;
            return have;
        }
        if (!rows_->waits()) return have;
        rows_->reach(rules_.plain() ? wanted + rows_->deletedRows() : RowCount{examined_} + 1);
    }
}

// The rows of the list, in its own order, that equal the one at index: nearly always few.
View::Run View::equalsAround(std::size_t index) const {
    const ColumnStore& store = rows_->store();
    const RowNumber row = (*list_)[index];
    const auto equal = [&](std::size_t i) {
        return rules_.order->compare(store, (*list_)[i], row) == 0;
    };
    // Steps that double until they are out, then halves.
    const auto reaches = [&](std::size_t most, auto at) {
        std::size_t inside = 0;
        std::size_t step = 1;
        while (inside + step <= most && equal(at(inside + step))) {
            inside += step;
            step *= 2;
        }
        for (step = std::min(step, most - inside); step > 0; step /= 2)
            while (inside + step <= most && equal(at(inside + step)))
                inside += step;
        return inside;
    };
    const std::size_t back = reaches(index, [&](std::size_t n) { return index - n; });
    const std::size_t on =
        reaches(list_->size() - 1 - index, [&](std::size_t n) { return index + n; });
    return {index - back, index + on + 1};
}

RowCount View::rowAt(RowCount position) const {
    const auto at = static_cast<std::size_t>(position);
    if (rules_.plain()) return rows_->livingRow(position);
    if (!turned_) return (*list_)[at];
    const std::size_t mirrored = list_->size() - 1 - at;
    if (mirrored < run_.first || mirrored >= run_.second) run_ = equalsAround(mirrored);
    return (*list_)[run_.first + (run_.second - 1 - mirrored)];
}

// As this list's order has it; equal rows by their numbers.
bool View::before(RowNumber a, RowNumber b) const {
    if (!rules_.order) return a < b;
    const int order = rules_.order->compare(rows_->store(), a, b);
    if (order != 0) return turned_ ? order > 0 : order < 0;
    return a < b;
}

// Where the row stands in the list, or would stand.
std::size_t View::indexFor(RowNumber row) const {
    const auto place = std::lower_bound(list_->begin(), list_->end(), row,
                                        [&](RowNumber a, RowNumber b) { return before(a, b); });
    return static_cast<std::size_t>(place - list_->begin());
}

// Looking for a row in an order compares texts. Who walks over the rows in another order looks for
// each of them.
std::optional<std::size_t> View::indexOf(RowNumber row) {
    constexpr RowNumber nowhere = std::numeric_limits<RowNumber>::max();
    const std::size_t worthIt = std::max<std::size_t>(256, list_->size() / 256);
    if (rules_.order && indexes_.empty() && ++lookedFor_ > worthIt) {
        const auto last = std::ranges::max_element(*list_);
        indexes_.assign(last == list_->end() ? 1 : std::size_t{*last} + 1, nowhere);
        for (std::size_t i = 0; i < list_->size(); ++i)
            indexes_[(*list_)[i]] = static_cast<RowNumber>(i);
    }
    if (!indexes_.empty()) {
        if (row >= indexes_.size() || indexes_[row] == nowhere) return std::nullopt;
        return indexes_[row];
    }
    const std::size_t index = indexFor(row);
    if (index == list_->size() || (*list_)[index] != row) return std::nullopt;
    return index;
}

std::optional<RowCount> View::positionOf(RowCount row) {
    if (rows_->isDeleted(row)) return std::nullopt;
    if (rules_.plain()) return rows_->livingBefore(row);
    update();
    if (row >= rows_->rows()) return std::nullopt;
    const auto index = indexOf(static_cast<RowNumber>(row));
    if (!index) return std::nullopt;
    if (!turned_) return static_cast<RowCount>(*index);
    if (*index < run_.first || *index >= run_.second) run_ = equalsAround(*index);
    return static_cast<RowCount>(list_->size() - run_.second + (*index - run_.first));
}

RowCount View::placeOf(RowNumber row) {
    if (rules_.plain()) return rows_->livingBefore(row);
    update();
    const std::size_t index = indexFor(row);
    if (!turned_) return static_cast<RowCount>(index);
    // The run of its equals, by their numbers forwards, what lies behind it before it.
    const auto ordered = [&](int least) {
        return std::ranges::partition_point(*list_,
                                            [&](RowNumber other) {
                                                return rules_.order->compare(rows_->store(), other,
                                                                             row) >= least;
                                            }) -
               list_->begin();
    };
    const auto before = static_cast<std::ptrdiff_t>(index) - ordered(1);
    return static_cast<RowCount>(list_->size()) - ordered(0) + before;
}

bool View::take(RowNumber row) {
    if (rules_.plain()) return true;
    if (row >= examined_ && !rules_.only) return false;
    const auto index = indexOf(row);
    if (!index) return false;
    RowList& list = changeable();
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(*index));
    return true;
}

void View::put(RowNumber row, bool showed) {
    ++version_;
    if (rules_.plain() || (row >= examined_ && !rules_.only)) return;
    const bool shows =
        !rows_->isDeleted(row) && (rules_.filter ? rules_.filter->matches(rows_->store(), row)
                                   : rules_.only ? showed
                                                 : true);
    if (!shows) return;
    const std::size_t index = indexFor(row);
    RowList& list = changeable();
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(index), row);
}

} // namespace norvel::adodb
