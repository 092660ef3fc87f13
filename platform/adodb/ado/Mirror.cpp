#include "platform/adodb/ado/Mirror.h"

#include "platform/adodb/Errors.h"

#include <algorithm>
#include <iterator>

namespace norvel::adodb {

using com::DispatchObject;
using com::fromVariant;
using com::toVariant;

namespace {

constexpr auto noBookmarks =
    "Il recordset del programma chiamante non ha segnalibri: va aperto con CursorLocation = "
    "adUseClient, oppure con un cursore adOpenStatic o adOpenKeyset.";

} // namespace

bool hasFilter(const Variant& filter) {
    if (filter.isText()) return !filter.text().empty();
    if (filter.type() == VarType::Array) return true;
    return filter.isNumeric() && filter.toI4() != adFilterNone;
}

DispatchObject cloneOf(const DispatchObject& recordset, LockTypeEnum lockType) {
    if (!fromVariant(recordset.call(L"Supports", {com::numberArgument(adBookmark)}).get())
             .toBoolean())
        throw adoError(adErrFeatureNotAvailable, noBookmarks);
    return DispatchObject::in(recordset.call(L"Clone", {com::numberArgument(lockType)}).get());
}

std::vector<Variant> walkBookmarks(const DispatchObject& recordset, RowCount count) {
    std::vector<Variant> bookmarks;
    bookmarks.reserve(static_cast<std::size_t>(std::max<RowCount>(0, count)));
    for (RowCount i = 0; i < count; ++i) {
        bookmarks.push_back(fromVariant(recordset.get(L"Bookmark").get()));
        recordset.call(L"MoveNext");
    }
    return bookmarks;
}

void Mirror::Renew() {
    clone_ = {};
    rows_.clear();
    complete_ = false;
}

const DispatchObject& Mirror::clone() {
    Variant filter = fromVariant(origin_.get(L"Filter").get());
    std::string sort = origin_.text(L"Sort");
    if (clone_ && filter == filter_ && sort == sort_) return clone_;
    Renew();
    DispatchObject made = cloneOf(origin_, adLockReadOnly);
    if (!sort.empty()) made.putText(L"Sort", sort);
    if (hasFilter(filter)) made.put(L"Filter", toVariant(filter));
    clone_ = std::move(made);
    filter_ = std::move(filter);
    sort_ = std::move(sort);
    return clone_;
}

// Walks on from the last row that is known.
void Mirror::extend(RowCount rows) {
    const DispatchObject& walker = clone();
    if (complete_ || static_cast<RowCount>(rows_.size()) >= rows) return;
    if (rows_.empty()) {
        complete_ = walker.flag(L"BOF") && walker.flag(L"EOF");
        if (!complete_) walker.call(L"MoveFirst");
    } else {
        walker.put(L"Bookmark", toVariant(rows_.back()));
        walker.call(L"MoveNext");
    }
    while (!complete_ && static_cast<RowCount>(rows_.size()) < rows) {
        complete_ = walker.flag(L"EOF");
        if (complete_) return;
        rows_.push_back(fromVariant(walker.get(L"Bookmark").get()));
        walker.call(L"MoveNext");
    }
}

std::optional<Variant> Mirror::BookmarkAt(RowCount position) {
    extend(position);
    if (position < 1 || position > static_cast<RowCount>(rows_.size())) return std::nullopt;
    return rows_[static_cast<std::size_t>(position) - 1];
}

RowCount Mirror::PositionOf(const Variant& bookmark) {
    constexpr RowCount stretch = 1024; // rows walked before looking at them
    for (RowCount from = 0;; from += stretch) {
        extend(from + stretch);
        const DispatchObject& judge = clone();
        const RowCount end = std::min<RowCount>(from + stretch, std::ssize(rows_));
        for (RowCount i = from; i < end; ++i) {
            const Variant& known = rows_[static_cast<std::size_t>(i)];
            if (known == bookmark) return i + 1;
            // Bookmarks are not comparable by value: equal ones may differ, so the recordset
            // judges.
            if (known.type() == VarType::Bytes &&
                fromVariant(
                    judge.call(L"CompareBookmarks", {toVariant(known), toVariant(bookmark)}).get())
                        .toI4() == adCompareEqual)
                return i + 1;
        }
        if (complete_ && end == std::ssize(rows_)) return adPosUnknown;
    }
}

RowCount Mirror::Count() {
    constexpr RowCount stretch = 1 << 16;
    RowCount rows = 0;
    do
        extend(rows += stretch);
    while (!complete_);
    return std::ssize(rows_);
}

std::vector<Variant> Mirror::BookmarksFrom(const Variant& start, RowCount count) {
    clone().put(L"Bookmark", toVariant(start));
    return walkBookmarks(clone_, count);
}

} // namespace norvel::adodb
