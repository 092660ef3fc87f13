#include "platform/grid/model/SelBookmarks.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

RowIds::~RowIds() = default;

namespace {

Errore badIndex() {
    return {9, "Indice non incluso nell'intervallo"};
}
Errore noRow() {
    return {3021, "Nessun record corrente: il segnalibro non è tra i record visualizzati"};
}

} // namespace

void SelBookmarks::changed() {
    last_ = {};
    if (OnChange) OnChange();
}

void SelBookmarks::Clear() {
    const bool had = count_ > 0;
    order_.clear();
    intervals_.clear();
    count_ = 0;
    source_ = view_;
    if (had) changed();
}

void SelBookmarks::SetView(std::shared_ptr<RowIds> view, bool keep) {
    view_ = std::move(view);
    if (!keep || !view_ || count_ == 0) Clear();
}

// The first row to be selected decides what places mean from now on.
void SelBookmarks::startSource() {
    if (count_ > 0) return;
    const auto stable = view_ ? view_->StableView() : nullptr;
    source_ = stable ? stable : view_;
}

std::optional<RowCount> SelBookmarks::toSource(RowCount row) const {
    if (!view_ || row < 0 || row >= view_->Rows()) return std::nullopt;
    if (source_ == view_) return row;
    return source_->RowOf(view_->BookmarkAt(row));
}

bool SelBookmarks::holds(RowCount place) const {
    const auto after = intervals_.upper_bound(place);
    return after != intervals_.begin() && std::prev(after)->second >= place;
}

bool SelBookmarks::Contains(RowCount row) const {
    if (count_ == 0) return false;
    const auto place = toSource(row);
    return place && holds(*place);
}

bool SelBookmarks::ContainsAll(RowCount first, RowCount last) const {
    constexpr RowCount screen = 64;
    const RowCount rows = last - first + 1;
    if (count_ < rows || rows < 1) return false;
    if (source_ == view_) {
        const auto after = intervals_.upper_bound(first);
        return after != intervals_.begin() && std::prev(after)->second >= last;
    }
    if (count_ == view_->Rows()) return true;
    if (rows > screen) return false;
    while (first <= last && Contains(first))
        ++first;
    return first > last;
}

std::vector<std::pair<RowCount, RowCount>> SelBookmarks::Ranges() const {
    if (!view_ || source_ == view_) return {intervals_.begin(), intervals_.end()};
    if (count_ == view_->Rows()) return {{0, count_ - 1}}; // all of them, in whatever order
    std::vector<std::pair<RowCount, RowCount>> ranges;
    for (const RowCount row : rowsOnShow()) {
        if (!ranges.empty() && ranges.back().second + 1 == row)
            ranges.back().second = row;
        else
            ranges.emplace_back(row, row);
    }
    return ranges;
}

// The selected rows, ascending, where places mean another view than the one on show. A few are
// looked for one by one; of many it is quicker to go through the bookmarks of both views, as long
// as those can be compared.
std::vector<RowCount> SelBookmarks::rowsOnShow() const {
    constexpr RowCount few = 256;
    std::vector<RowCount> rows;
    if (count_ > few) {
        if (const auto bookmarks = numericBookmarks()) {
            for (RowCount row = 0; row < view_->Rows(); ++row)
                if (bookmarks->contains(view_->BookmarkAt(row).toDouble())) rows.push_back(row);
            return rows;
        }
    }
    for (const auto& [low, high] : intervals_)
        for (RowCount place = low; place <= high; ++place)
            if (const auto row = view_->RowOf(source_->BookmarkAt(place))) rows.push_back(*row);
    std::ranges::sort(rows);
    return rows;
}

// The bookmarks of the selected rows, where they are numbers that a double tells apart.
std::optional<std::unordered_set<double>> SelBookmarks::numericBookmarks() const {
    std::unordered_set<double> bookmarks;
    bookmarks.reserve(static_cast<std::size_t>(count_));
    for (const auto& [low, high] : intervals_)
        for (RowCount place = low; place <= high; ++place) {
            const Variant bookmark = source_->BookmarkAt(place);
            if (bookmark.type() != VarType::R8 && bookmark.type() != VarType::I4)
                return std::nullopt;
            bookmarks.insert(bookmark.toDouble());
        }
    return bookmarks;
}

// --- reading ---

SelBookmarks::Found SelBookmarks::find(RowCount index) {
    if (index < 0 || index >= count_) throw badIndex();
    if (index < last_.start) last_ = {};
    while (index >= last_.start + order_[last_.span].Count()) {
        last_.start += order_[last_.span].Count();
        ++last_.span;
    }
    return last_;
}

Variant SelBookmarks::Item(RowCount index) {
    const Found found = find(index);
    return source_->BookmarkAt(order_[found.span].At(index - found.start));
}

// --- adding ---

void SelBookmarks::Add(const Variant& bookmark) {
    if (!view_) throw noRow();
    const auto row = view_->RowOf(bookmark);
    if (!row) throw noRow();
    AddRows(*row, *row);
}

void SelBookmarks::AddRows(RowCount first, RowCount last) {
    if (!view_ || view_->Rows() == 0) return;
    const RowCount end = view_->Rows() - 1;
    first = std::clamp<RowCount>(first, 0, end);
    last = std::clamp<RowCount>(last, 0, end);
    const RowCount before = count_;
    startSource();
    if (source_ == view_) {
        addPlaces(first, last);
    } else {
        const RowCount step = first <= last ? 1 : -1;
        for (RowCount row = first; row != last + step; row += step)
            if (const auto place = toSource(row)) addPlaces(*place, *place);
    }
    if (count_ != before) changed();
}

// Only what is not selected yet is appended, in the direction asked.
void SelBookmarks::addPlaces(RowCount first, RowCount last) {
    const RowCount low = std::min(first, last);
    const RowCount high = std::max(first, last);
    std::vector<Span> fresh;
    RowCount from = low;
    auto interval = intervals_.upper_bound(low);
    if (interval != intervals_.begin() && std::prev(interval)->second >= low) --interval;
    for (; interval != intervals_.end() && interval->first <= high; ++interval) {
        if (interval->first > from) fresh.push_back({from, interval->first - 1});
        from = interval->second + 1;
    }
    if (from <= high) fresh.push_back({from, high});
    if (fresh.empty()) return;
    if (first > last) {
        std::ranges::reverse(fresh);
        for (Span& span : fresh)
            std::swap(span.first, span.last);
    }
    for (const Span& span : fresh)
        append(span);
    insertInterval(low, high);
}

// Rows picked one after the other become one span.
void SelBookmarks::append(Span span) {
    count_ += span.Count();
    if (!order_.empty()) {
        Span& back = order_.back();
        const bool bothDown = back.first <= back.last && span.first <= span.last;
        const bool bothUp = back.first >= back.last && span.first >= span.last;
        if ((bothDown && span.first == back.last + 1) || (bothUp && span.first == back.last - 1)) {
            back.last = span.last;
            return;
        }
    }
    order_.push_back(span);
}

void SelBookmarks::insertInterval(RowCount low, RowCount high) {
    auto next = intervals_.lower_bound(low);
    if (next != intervals_.begin() && std::prev(next)->second >= low - 1) {
        --next;
        low = next->first;
    }
    while (next != intervals_.end() && next->first <= high + 1) {
        high = std::max(high, next->second);
        next = intervals_.erase(next);
    }
    intervals_.emplace_hint(next, low, high);
}

// --- removing ---

void SelBookmarks::Remove(RowCount index) {
    const Found found = find(index);
    const RowCount offset = index - found.start;
    eraseFromInterval(order_[found.span].At(offset));
    cut(found.span, offset);
    changed();
}

void SelBookmarks::RemoveRow(RowCount row) {
    const auto place = toSource(row);
    if (!place || !holds(*place)) return;
    removePlace(*place);
    changed();
}

void SelBookmarks::ToggleRow(RowCount row) {
    if (Contains(row))
        RemoveRow(row);
    else
        AddRows(row, row);
}

void SelBookmarks::removePlace(RowCount place) {
    const auto span = std::ranges::find_if(order_, [&](const Span& s) {
        return std::min(s.first, s.last) <= place && place <= std::max(s.first, s.last);
    });
    eraseFromInterval(place);
    cut(static_cast<std::size_t>(span - order_.begin()),
        span->first <= span->last ? place - span->first : span->first - place);
}

// Takes one row out of a span; at its ends that costs nothing, so emptying the set from the front
// is linear.
void SelBookmarks::cut(std::size_t index, RowCount offset) {
    Span& span = order_[index];
    const RowCount step = span.first <= span.last ? 1 : -1;
    const auto at = order_.begin() + static_cast<std::ptrdiff_t>(index);
    --count_;
    if (span.first == span.last) {
        order_.erase(at);
    } else if (offset == 0) {
        span.first += step;
    } else if (offset == span.Count() - 1) {
        span.last -= step;
    } else {
        const Span rest{span.At(offset + 1), span.last};
        span.last = span.At(offset - 1);
        order_.insert(at + 1, rest);
    }
}

void SelBookmarks::eraseFromInterval(RowCount place) {
    const auto found = std::prev(intervals_.upper_bound(place));
    const RowCount high = found->second;
    if (found->first == place) {
        const auto next = std::next(found);
        auto node = intervals_.extract(found);
        if (high == place) return;
        node.key() = place + 1;
        intervals_.insert(next, std::move(node));
        return;
    }
    found->second = place - 1;
    if (high > place) intervals_.emplace_hint(std::next(found), place + 1, high);
}

} // namespace norvel::grid
