// The filter and the order of a ClientRecordset.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
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
        only.erase(std::ranges::unique(only).begin(), only.end());
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

std::shared_ptr<View> ClientRecordset::viewOf(const Variant& criteria) const {
    View::Rules rules = rulesOf(criteria);
    const bool sharable = criteria.isText() || rules.plain();
    if (!sharable) return std::make_shared<View>(rows_, std::move(rules), nullptr);
    const std::string key = rules.filter ? criteria.text() : std::string();
    return View::shared(rows_, key, std::move(rules), view_.get());
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
    commitPending();
    auto view = viewOf(wanted);
    const bool same = view == view_;
    if (same && shownRows() == 0) {
        filter_ = wanted;
        return;
    }
    moveTo(adRsnMove, [&] {
        filter_ = wanted;
        view_ = std::move(view);
        toStart();
        if (!same) sinks_.tell([&](auto& sink) { sink.ViewChanged(*this); });
    });
}

// Of rows newly shown: the filter stays in force where it can. Bookmarks are of the rows that are
// gone, and a column may be gone, too.
void ClientRecordset::showThroughFilter() {
    if (!filter_.isText()) filter_ = noFilter;
    try {
        view_ = viewOf(filter_);
    } catch (const Errore&) {
        filter_ = noFilter;
        view_ = viewOf(filter_);
    }
}

std::string ClientRecordset::Sort() const {
    return {};
}

void ClientRecordset::SetSort(const std::string& criteria) {
    refuseInEvent();
    if (!criteria.empty())
        throw adoError(adErrFeatureNotAvailable,
                       "Su questo recordset non si può cambiare l'ordinamento.");
}

} // namespace norvel::adodb
