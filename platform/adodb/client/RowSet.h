// The rows that a recordset and its clones share.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/fetch/Fetch.h"
#include "platform/adodb/store/ColumnStore.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace norvel::adodb {

// Lives as long as one recordset shows it; the last one to let go ends a running fetch.
class RowSet {
  public:
    // A fetch whose first block is read, or a store that the owner fills itself. waits: whether
    // a move to a row that is still to come waits for it.
    RowSet(std::unique_ptr<Fetch> fetch, bool waits);
    explicit RowSet(std::shared_ptr<ColumnStore> store);

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
    // The views that recordsets have on these rows, by what tells them apart (View::shared).
    std::map<std::string, std::weak_ptr<void>>& views() { return views_; }

    RowCount rows() const { return store_->rows(); }
    // Rows that are there once wanted rows are, waiting for them where this set waits. Fewer than
    // wanted only where there are no more, or where it does not wait. Raises the fetch's error
    // where it broke off before them.
    RowCount reach(RowCount wanted) const;

  private:
    std::unique_ptr<Fetch> fetch_; // null: no source
    std::shared_ptr<ColumnStore> store_;
    std::uint32_t generation_;
    bool waits_;
    std::map<std::string, std::weak_ptr<void>> views_;
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
