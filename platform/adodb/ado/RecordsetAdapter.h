// The adapter over a host's recordset.
#pragma once

#include "platform/adodb/ado/AdoFields.h"
#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/adodb/ado/EventSink.h"
#include "platform/adodb/ado/Mirror.h"

#include <memory>
#include <optional>

namespace norvel::adodb {

class AdoRecordset : public Recordset,
                     public com::ComBacked,
                     public std::enable_shared_from_this<AdoRecordset> {
  public:
    // own: a clone that this system made, which nobody else moves or listens to.
    AdoRecordset(com::DispatchObject object, bool own);
    ~AdoRecordset() override;
    AdoRecordset(const AdoRecordset&) = delete;
    AdoRecordset& operator=(const AdoRecordset&) = delete;

    void Open(const Variant& source, const Variant& connection, CursorTypeEnum cursorType,
              LockTypeEnum lockType, int options) override;
    void Close() override;
    void Requery(int options) override;
    void Cancel() override;
    int State() const override;
    RecordsetRef Clone(LockTypeEnum lockType) override;

    Variant ActiveConnection() const override;
    void SetActiveConnection(const Variant& connectionOrText) override;
    Variant ActiveCommand() const override;
    std::string Source() const override;
    void SetSource(const Variant& textOrCommand) override;
    CursorTypeEnum CursorType() const override;
    void SetCursorType(CursorTypeEnum type) override;
    LockTypeEnum LockType() const override;
    void SetLockType(LockTypeEnum type) override;
    CursorLocationEnum CursorLocation() const override;
    void SetCursorLocation(CursorLocationEnum location) override;

    adodb::Fields& Fields() override { return fields_; }
    RowCount RecordCount() const override;
    bool BOF() const override;
    bool EOF_() const override;
    RowCount AbsolutePosition() const override;
    void SetAbsolutePosition(RowCount position) override;
    Variant Bookmark() const override;
    void SetBookmark(const Variant& bookmark) override;
    CompareEnum CompareBookmarks(const Variant& a, const Variant& b) const override;

    void Move(RowCount rows, const Variant& start) override;
    void MoveFirst() override;
    void MoveLast() override;
    void MoveNext() override;
    void MovePrevious() override;
    RowBlock GetRows(RowCount rows, const Variant& start,
                     const std::vector<Variant>& fields) override;

    Variant Filter() const override;
    void SetFilter(const Variant& criteria) override;
    std::string Sort() const override;
    void SetSort(const std::string& criteria) override;

    EditModeEnum EditMode() const override;
    void AddNew(const std::vector<Variant>& fields, const std::vector<Variant>& values) override;
    void Update() override;
    void CancelUpdate() override;
    void Delete(AffectEnum affect) override;
    bool Supports(int cursorOptions) const override;

    std::optional<Errore> FetchError() const override { return fetchError_; }
    // Over a host's recordset the messages of the calling thread are dispatched meanwhile: ADO
    // delivers its rows by them.
    bool WaitFetch(int milliseconds) override;

    void Subscribe(RecordsetEvents* sink) override;
    void Unsubscribe(RecordsetEvents* sink) override;

    IDispatch* dispatch() const override { return object_.get(); }

  private:
    // What the host's object tells on its own: kept account of, then passed on.
    class HostTold : public RecordsetEvents {
      public:
        explicit HostTold(AdoRecordset& adapter) : adapter_(adapter) {}
        void WillMove(EventReasonEnum, EventStatusEnum&, Recordset&) override;
        void MoveComplete(EventReasonEnum, const Errore*, EventStatusEnum, Recordset&) override;
        void WillChangeField(int, const std::vector<Field*>&, EventStatusEnum&,
                             Recordset&) override;
        void FieldChangeComplete(int, const std::vector<Field*>&, const Errore*, EventStatusEnum,
                                 Recordset&) override;
        void WillChangeRecord(EventReasonEnum, int, EventStatusEnum&, Recordset&) override;
        void RecordChangeComplete(EventReasonEnum, int, const Errore*, EventStatusEnum,
                                  Recordset&) override;
        void WillChangeRecordset(EventReasonEnum, EventStatusEnum&, Recordset&) override;
        void RecordsetChangeComplete(EventReasonEnum, const Errore*, EventStatusEnum,
                                     Recordset&) override;
        void EndOfRecordset(bool&, EventStatusEnum&, Recordset&) override;
        void FetchProgress(RowCount, RowCount, EventStatusEnum, Recordset&) override;
        void FetchComplete(const Errore*, EventStatusEnum, Recordset&) override;

      private:
        AdoRecordset& adapter_;
    };

    bool hasBookmarks() const;
    bool seek(RowCount position);
    std::vector<Variant> blockBookmarks(const Variant& first, RowCount rows);

    struct View {
        Variant filter;
        std::string sort;
        bool operator==(const View&) const = default;
    };
    std::optional<View> readView() const;
    // ViewChanged, where the host set another filter or order by itself.
    void noteView();
    void tellViewChanged();
    // Runs a change of the view; ViewChanged follows once, whoever tells it.
    template <class Action>
    void changeView(Action action) {
        const auto told = viewsTold_;
        action();
        if (told == viewsTold_) tellViewChanged();
    }

    com::DispatchObject object_;
    bool own_;
    EventRelay relay_;
    AdoFields fields_;
    mutable Mirror mirror_;
    HostTold hostTold_;
    EventConnection connection_;
    std::optional<Errore> fetchError_;
    std::optional<View> view_; // as last told; nothing while nobody listens
    unsigned viewsTold_ = 0;
};

} // namespace norvel::adodb
