// The filter and the order of a ClientRecordset.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
#include "platform/adodb/group/GroupRows.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::adodb {

namespace {

const Variant noFilter = std::int32_t{adFilterNone};

bool isNoFilter(const Variant& criteria) {
    if (criteria.isText()) return trimText(criteria.text()).empty();
    return criteria.isNumeric() && criteria.toI8() == adFilterNone;
}

} // namespace

// What the criteria mean for the rows on show. Raises what the criteria language refuses; a row of
// another set is a bad bookmark.
View::Rules ClientRecordset::rulesOf(const Variant& criteria) const {
    View::Rules rules;
    if (isNoFilter(criteria)) return rules;
    if (criteria.isText()) {
        const bool inForce = view_ && filter_.isText() && filter_.text() == criteria.text();
        if (inForce) {
            rules.filter = view_->rules().filter;
            return rules;
        }
        rules.filter =
            FilterProgram::compile(parseFilter(criteria.text()), rows_->store().columns());
        return rules;
    }
    if (criteria.type() == VarType::Array) {
        RowList only;
        for (const Variant& bookmark : criteria.array()) {
            const BookmarkParts parts = readBookmark(bookmark);
            if (parts.generation != rows_->generation() || parts.row >= rows_->rows())
                throw adoError(dbBadBookmark);
            only.push_back(static_cast<RowNumber>(parts.row));
        }
        std::ranges::sort(only);
        only.erase(std::unique(only.begin(), only.end()), only.end());
        rules.only = std::move(only);
        return rules;
    }
    if (!criteria.isNumeric()) throw adoError(adErrInvalidArgument);
    const std::int64_t group = criteria.toI8();
    if (group == adFilterFetchedRecords) return rules; // the cache holds every row
    const bool known = group == adFilterPendingRecords || group == adFilterAffectedRecords ||
                       group == adFilterConflictingRecords;
    if (!known) throw adoError(adErrInvalidArgument);
    rules.only.emplace(); // changes are sent one by one: none waits, none conflicts
    return rules;
}

// Raises what the sort language refuses, 3265, DB_E_CANTORDER; null: no order.
ClientRecordset::Order ClientRecordset::orderOf(const std::string& criteria) const {
    const auto keys = parseSort(criteria);
    return keys.empty() ? nullptr : SortOrder::make(keys, rows_->store().columns());
}

std::shared_ptr<View> ClientRecordset::viewOf(const Variant& criteria, const std::string& sort,
                                              const Order& order) const {
    View::Rules rules = rulesOf(criteria);
    rules.order = order;
    if (rules.only) {
        auto made = std::make_shared<View>(rows_, std::move(rules), nullptr);
        rows_->views().add({}, made);
        return made;
    }
    const std::string filter = rules.filter ? criteria.text() : std::string();
    const std::string key = std::to_string(filter.size()) + ':' + filter + sort;
    return View::shared(rows_, key, std::move(rules), view_.get());
}

// The order is that of the view, which may be shared: views tell orders apart by identity.
void ClientRecordset::useView(std::shared_ptr<View> view) {
    view_ = std::move(view);
    order_ = view_->rules().order;
}

Variant ClientRecordset::Filter() const {
    return filter_;
}

// A filter is asked for the rows that are there already; while the fetch goes on it holds for those
// that come. Nothing waits here: where no row matches so far the recordset is empty, and the first
// row that comes becomes the current one.
void ClientRecordset::SetFilter(const Variant& criteria) {
    refuseInEvent();
    if (criteria.isEmpty() || criteria.isNull()) throw adoError(adErrInvalidArgument);
    const Variant wanted = isNoFilter(criteria) ? noFilter : criteria;
    if (!rows_) {
        filter_ = wanted;
        return;
    }
    const auto self = shared_from_this();
    commitPending();
    auto view = viewOf(wanted, sort_, order_);
    const bool same = view == view_;
    if (same && shownRows() == 0) {
        filter_ = wanted;
        return;
    }
    moveTo(adRsnMove, [&] {
        filter_ = wanted;
        useView(std::move(view));
        toStart();
        if (!same) sinks_.tell([&](auto& sink) { sink.ViewChanged(*this); });
    });
}

// Of rows newly shown: filter and sort stay in force where they can. Bookmarks are of the rows that
// are gone, and a column may be gone, too.
void ClientRecordset::showThroughFilter() {
    if (!filter_.isText()) filter_ = noFilter;
    view_.reset();
    try {
        order_ = orderOf(sort_);
    } catch (const Errore&) {
        order_.reset();
        sort_.clear();
    }
    try {
        useView(viewOf(filter_, sort_, order_));
    } catch (const Errore&) {
        filter_ = noFilter;
        useView(viewOf(filter_, sort_, order_));
    }
}

std::string ClientRecordset::Sort() const {
    return sort_;
}

void ClientRecordset::SetSort(const std::string& criteria) {
    refuseInEvent();
    const std::string wanted = trimText(criteria).empty() ? std::string() : criteria;
    if (!rows_) {
        sort_ = wanted;
        return;
    }
    const auto self = shared_from_this();
    Order order = orderOf(wanted);
    commitPending();
    reorder(viewOf(filter_, wanted, order), wanted);
}

// The same rows in another order.
void ClientRecordset::reorder(std::shared_ptr<View> view, const std::string& sort) {
    cursor(); // its row, for the last time in the old order
    sort_ = sort;
    useView(std::move(view));
    cursor_.version = view_->version() - 1; // its position is looked up again
    sinks_.tell([&](auto& sink) { sink.ViewChanged(*this); });
}

// The view is this recordset's own: it holds the rows that are there by now, so that the groups
// that are told here stay where they are.
Grouping ClientRecordset::GroupBy(const std::vector<std::string>& fields) {
    refuseInEvent();
    requireOpen();
    const auto self = shared_from_this();
    const auto keys = groupKeys(fields, parseSort(sort_));
    const auto order = SortOrder::make(keys, rows_->store().columns());
    std::vector<int> columns;
    columns.reserve(fields.size());
    for (const std::string& field : fields)
        columns.push_back(static_cast<int>(fields_.indexOf(field)));
    commitPending();
    auto view = std::make_shared<View>(rows_, view_->list(), order);
    rows_->views().add({}, view);
    reorder(view, sortText(keys));
    return groupsOf(rows_->store(), view->ordered(), columns);
}

} // namespace norvel::adodb
