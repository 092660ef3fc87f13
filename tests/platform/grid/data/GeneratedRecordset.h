// A recordset of any length whose values are computed when they are read: for the grid's tests and
// its benchmark. It moves, filters, sorts, clones and tells as a recordset does; what the grid
// never asks of one raises 3251.
#pragma once

#include "platform/adodb/Recordset.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace norvel::tests {

struct GeneratedColumn {
    std::string name;
    adodb::DataTypeEnum type = adodb::adVarWChar;
    std::function<Variant(adodb::RowCount row)> value; // of a row of the unfiltered order, from 0
    std::int64_t size = 50;
};

// Customers of a made-up firm: codice, ragione_sociale, citta, provincia, indirizzo, data_nascita,
// fatturato, attivo, note.
std::vector<GeneratedColumn> customerColumns();

class GeneratedRecordset : public adodb::Recordset,
                           public std::enable_shared_from_this<GeneratedRecordset> {
  public:
    static std::shared_ptr<GeneratedRecordset> make(std::vector<GeneratedColumn> columns,
                                                    adodb::RowCount rows);

    // --- what a test does to it ---
    // More rows arrive, as from a running fetch; last: the fetch is complete with them.
    void arrive(adodb::RowCount rows, bool last);
    void beginFetch() { shared_->fetching = true; }
    // Every read from now on raises this.
    void failReads(const Errore& error) { shared_->readError = error; }
    void healReads() { shared_->readError.reset(); }
    // Every Clone from now on raises this.
    void failClones(const Errore& error) { shared_->cloneError = error; }
    // Rows and values that GetRows handed out, of this recordset and its clones.
    adodb::RowCount rowsRead() const { return shared_->rowsRead; }
    std::int64_t valuesRead() const { return shared_->valuesRead; }
    adodb::RowCount largestRead() const { return shared_->largestRead; }
    int moves() const { return moves_; } // of this recordset, not of its clones
    int clones() const { return shared_->clones; }
    // Reads that would have had to wait for rows still to come.
    int waits() const { return shared_->waits; }
    // A value of the field in every row reads otherwise from now on, and the recordset tells so.
    void changeValues(int field, std::function<Variant(adodb::RowCount)> value);
    // Rows of equal values stand together as they are: they can be grouped.
    void letGroup() { shared_->groups = true; }
    bool refuseMoves = false; // a WillMove handler that cancels: 3712

    // --- Recordset ---
    void Open(const Variant&, const Variant&, adodb::CursorTypeEnum, adodb::LockTypeEnum,
              int) override;
    void Close() override;
    void Requery(int options) override;
    void Cancel() override {}
    int State() const override;
    adodb::RecordsetRef Clone(adodb::LockTypeEnum) override;
    Variant ActiveConnection() const override { return Variant(ObjectRef()); }
    void SetActiveConnection(const Variant&) override;
    Variant ActiveCommand() const override { return Variant(ObjectRef()); }
    std::string Source() const override { return {}; }
    void SetSource(const Variant&) override;
    adodb::CursorTypeEnum CursorType() const override { return adodb::adOpenStatic; }
    void SetCursorType(adodb::CursorTypeEnum) override {}
    adodb::LockTypeEnum LockType() const override { return adodb::adLockReadOnly; }
    void SetLockType(adodb::LockTypeEnum) override {}
    adodb::CursorLocationEnum CursorLocation() const override { return adodb::adUseClient; }
    void SetCursorLocation(adodb::CursorLocationEnum) override {}
    adodb::Fields& Fields() override;
    adodb::RowCount RecordCount() const override;
    bool BOF() const override { return position_ < 1; }
    bool EOF_() const override { return position_ > RecordCount(); }
    adodb::RowCount AbsolutePosition() const override;
    void SetAbsolutePosition(adodb::RowCount position) override;
    Variant Bookmark() const override;
    void SetBookmark(const Variant& bookmark) override;
    adodb::CompareEnum CompareBookmarks(const Variant& a, const Variant& b) const override;
    void Move(adodb::RowCount rows, const Variant& start) override;
    void MoveFirst() override;
    void MoveLast() override;
    void MoveNext() override;
    void MovePrevious() override;
    adodb::RowBlock GetRows(adodb::RowCount rows, const Variant& start,
                            const std::vector<Variant>& fields) override;
    Variant Filter() const override;
    // "ogni N": every Nth row; "" or 0: all.
    void SetFilter(const Variant& criteria) override;
    std::string Sort() const override { return sort_; }
    // A text that ends in "desc": the last row first.
    void SetSort(const std::string& criteria) override;
    // 3251: its values are in no order, unless letGroup says so.
    adodb::Grouping GroupBy(const std::vector<std::string>& fields) override;
    adodb::EditModeEnum EditMode() const override { return adodb::adEditNone; }
    void AddNew(const std::vector<Variant>&, const std::vector<Variant>&) override;
    void Update() override {}
    void CancelUpdate() override {}
    void Delete(adodb::AffectEnum affect) override; // the last row of the unfiltered order
    bool Supports(int) const override { return false; }
    std::optional<Errore> FetchError() const override { return std::nullopt; }
    bool WaitFetch(int) override { return !shared_->fetching; }
    void Subscribe(adodb::RecordsetEvents* sink) override { sinks_.insert(sink); }
    void Unsubscribe(adodb::RecordsetEvents* sink) override { sinks_.erase(sink); }

  private:
    struct Shared {
        std::vector<GeneratedColumn> columns;
        adodb::RowCount rows = 0;
        bool fetching = false;
        bool groups = false;
        std::optional<Errore> readError, cloneError;
        adodb::RowCount rowsRead = 0, largestRead = 0;
        std::int64_t valuesRead = 0;
        int clones = 0;
        int waits = 0;
    };
    class FieldList;
    class OneField;
    GeneratedRecordset() = default;
    adodb::RowCount naturalRow(adodb::RowCount position) const; // from 0, of a position from 1
    void moveTo(adodb::RowCount position, adodb::EventReasonEnum reason);
    template <class Call>
    void tell(Call call);
    int fieldIndex(const Variant& nameOrIndex) const;

    std::shared_ptr<Shared> shared_;
    std::shared_ptr<FieldList> fields_;
    adodb::RowCount position_ = 1; // 0: BOF, RecordCount() + 1: EOF
    adodb::RowCount every_ = 1;
    std::string filter_, sort_;
    bool open_ = true;
    int moves_ = 0;
    std::set<adodb::RecordsetEvents*> sinks_;
};

} // namespace norvel::tests
