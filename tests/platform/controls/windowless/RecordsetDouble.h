// A recordset that does nothing but keep its subscribers, so that a test fires the events itself.
#pragma once

#include "platform/adodb/Recordset.h"

#include <vector>

namespace norvel::tests {

class RecordsetDouble : public adodb::Recordset {
  public:
    std::vector<adodb::RecordsetEvents*> sinks;
    int closed = 0; // how often somebody closed it

    void Subscribe(adodb::RecordsetEvents* sink) override { sinks.push_back(sink); }
    void Unsubscribe(adodb::RecordsetEvents* sink) override { std::erase(sinks, sink); }
    void Close() override { ++closed; }

    void Open(const Variant&, const Variant&, adodb::CursorTypeEnum, adodb::LockTypeEnum,
              int) override {
        notHere();
    }
    void Requery(int) override { notHere(); }
    void Cancel() override { notHere(); }
    int State() const override { return adodb::adStateOpen; }
    adodb::RecordsetRef Clone(adodb::LockTypeEnum) override { notHere(); }
    Variant ActiveConnection() const override { notHere(); }
    void SetActiveConnection(const Variant&) override { notHere(); }
    Variant ActiveCommand() const override { notHere(); }
    std::string Source() const override { notHere(); }
    void SetSource(const Variant&) override { notHere(); }
    adodb::CursorTypeEnum CursorType() const override { notHere(); }
    void SetCursorType(adodb::CursorTypeEnum) override { notHere(); }
    adodb::LockTypeEnum LockType() const override { notHere(); }
    void SetLockType(adodb::LockTypeEnum) override { notHere(); }
    adodb::CursorLocationEnum CursorLocation() const override { notHere(); }
    void SetCursorLocation(adodb::CursorLocationEnum) override { notHere(); }
    adodb::Fields& Fields() override { notHere(); }
    adodb::RowCount RecordCount() const override { notHere(); }
    bool BOF() const override { notHere(); }
    bool EOF_() const override { notHere(); }
    adodb::RowCount AbsolutePosition() const override { notHere(); }
    void SetAbsolutePosition(adodb::RowCount) override { notHere(); }
    Variant Bookmark() const override { notHere(); }
    void SetBookmark(const Variant&) override { notHere(); }
    adodb::CompareEnum CompareBookmarks(const Variant&, const Variant&) const override {
        notHere();
    }
    void Move(adodb::RowCount, const Variant&) override { notHere(); }
    void MoveFirst() override { notHere(); }
    void MoveLast() override { notHere(); }
    void MoveNext() override { notHere(); }
    void MovePrevious() override { notHere(); }
    adodb::RowBlock GetRows(adodb::RowCount, const Variant&, const std::vector<Variant>&) override {
        notHere();
    }
    Variant Filter() const override { notHere(); }
    void SetFilter(const Variant&) override { notHere(); }
    std::string Sort() const override { notHere(); }
    void SetSort(const std::string&) override { notHere(); }
    adodb::EditModeEnum EditMode() const override { notHere(); }
    void AddNew(const std::vector<Variant>&, const std::vector<Variant>&) override { notHere(); }
    void Update() override { notHere(); }
    void CancelUpdate() override { notHere(); }
    void Delete(adodb::AffectEnum) override { notHere(); }
    bool Supports(int) const override { notHere(); }
    std::optional<Errore> FetchError() const override { notHere(); }
    bool WaitFetch(int) override { notHere(); }

  private:
    // The data control has no business with it.
    [[noreturn]] static void notHere() {
        throw Errore(3251, "Il test non prevede questa operazione");
    }
};

} // namespace norvel::tests
