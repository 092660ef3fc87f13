// The rows that a recordset and its clones share.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/fetch/Fetch.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace norvel::adodb {

class ClientRecordset;
class View;

// The views that recordsets have on the same rows, while somebody holds them.
class ViewRegistry {
  public:
    // key tells the rules of a view apart; "" is for one that is not to be found again.
    void add(const std::string& key, const std::shared_ptr<View>& view);
    std::shared_ptr<View> find(const std::string& key) const; // null: none
    std::vector<std::shared_ptr<View>> all() const;

  private:
    std::vector<std::pair<std::string, std::weak_ptr<View>>> views_;
};

// Lives as long as one recordset shows it; the last one to let go ends a running fetch.
class RowSet {
  public:
    // A fetch whose first block is read, or a store that the owner fills itself. waits: whether
    // a move to a row that is still to come waits for it.
    RowSet(std::unique_ptr<Fetch> fetch, bool waits);
    explicit RowSet(std::shared_ptr<ColumnStore> store);
    ~RowSet();
    RowSet(const RowSet&) = delete;
    RowSet& operator=(const RowSet&) = delete;

    ColumnStore& store() const { return *store_; }
    const std::shared_ptr<ColumnStore>& sharedStore() const { return store_; }
    // Tells the bookmarks of this set from those of every other, one of before a Requery included.
    std::uint32_t generation() const { return generation_; }

    void start(Fetch::Listener listener) { fetch_->start(std::move(listener)); }
    void cancel() noexcept;
    bool fetching() const { return fetch_ && fetch_->running(); }
    bool waits() const { return waits_; }
    std::optional<Errore> error() const;
    bool waitForEnd(int milliseconds) const;
    const RowIdentity& identity() const { return identity_; }
    // The recordsets that show these rows.
    void share(const std::weak_ptr<ClientRecordset>& recordset);
    std::vector<std::shared_ptr<ClientRecordset>> sharers();
    ViewRegistry& views() { return views_; }

    // Deleted rows keep their numbers. Changes go through here, so that every view hears of them.
    void append(const std::vector<Variant>& row); // no fetch runs
    void edit(RowCount row, const std::vector<std::pair<int, Variant>>& cells);
    void remove(RowCount row);
    bool isDeleted(RowCount row) const;
    RowCount deletedRows() const { return static_cast<RowCount>(deleted_.size()); }
    void leaveOutDeleted(RowList& rows) const; // ascending
    // The row that stands at this place among those not deleted, and back.
    RowCount livingRow(RowCount position) const;
    RowCount livingBefore(RowCount row) const;

    RowCount rows() const { return store_->rows(); }
    // Rows that are there once wanted rows are, waiting for them where this set waits. Fewer than
    // wanted only where there are no more, or where it does not wait. Raises the fetch's error
    // where it broke off before them.
    RowCount reach(RowCount wanted) const;

  private:
    std::unique_ptr<Fetch> fetch_; // null: no source
    std::shared_ptr<ColumnStore> store_;
    RowIdentity identity_; // of a recordset without a source: nothing
    std::uint32_t generation_;
    bool waits_;
    std::unique_ptr<GroupBuilder> appender_; // made when the first row is added
    std::vector<std::weak_ptr<ClientRecordset>> sharers_;
    ViewRegistry views_;
    RowList deleted_; // ascending
};

// A bookmark: a Double, as ADO's client cursor has it, that holds generation and row. A host only
// hands it back.
Variant makeBookmark(std::uint32_t generation, RowCount row);
struct BookmarkParts {
    std::uint32_t generation = 0;
    RowCount row = 0;
};
// Raises 3001 where the value is no bookmark by its type, DB_E_BADBOOKMARK by its content.
BookmarkParts readBookmark(const Variant& bookmark);

} // namespace norvel::adodb
