#include "tests/platform/grid/data/GeneratedRecordset.h"

#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::tests {

using namespace adodb;

namespace {

Errore noCurrent() {
    return {3021, "BOF o EOF: nessun record corrente"};
}
Errore notOffered() {
    return {3251, "Operazione non offerta da questo recordset"};
}

} // namespace

class GeneratedRecordset::OneField : public Field {
  public:
    OneField(GeneratedRecordset& owner, int index) : owner_(owner), index_(index) {}
    std::string Name() const override { return column().name; }
    DataTypeEnum Type() const override { return column().type; }
    std::int64_t DefinedSize() const override { return column().size; }
    std::int64_t ActualSize() const override { return column().size; }
    int Attributes() const override { return 0; }
    int Precision() const override { return 0; }
    int NumericScale() const override { return 0; }
    Variant Value() const override {
        if (owner_.BOF() || owner_.EOF_()) throw noCurrent();
        return column().value(owner_.naturalRow(owner_.position_));
    }
    void SetValue(const Variant&) override { throw notOffered(); }
    Variant OriginalValue() const override { return Value(); }
    Variant UnderlyingValue() const override { return Value(); }

  private:
    const GeneratedColumn& column() const {
        return owner_.shared_->columns[static_cast<std::size_t>(index_)];
    }
    GeneratedRecordset& owner_;
    int index_;
};

class GeneratedRecordset::FieldList : public adodb::Fields {
  public:
    explicit FieldList(GeneratedRecordset& owner) : owner_(owner) {
        const int count = static_cast<int>(owner.shared_->columns.size());
        for (int i = 0; i < count; ++i)
            items_.push_back(std::make_unique<OneField>(owner, i));
    }
    int Count() const override { return static_cast<int>(owner_.shared_->columns.size()); }
    Field& Item(const Variant& nameOrIndex) override {
        return *items_[static_cast<std::size_t>(owner_.fieldIndex(nameOrIndex))];
    }
    void Append(const std::string&, DataTypeEnum, std::int64_t, int) override {
        throw notOffered();
    }
    void Delete(const Variant&) override { throw notOffered(); }

  private:
    GeneratedRecordset& owner_;
    std::vector<std::unique_ptr<OneField>> items_;
};

std::shared_ptr<GeneratedRecordset> GeneratedRecordset::make(std::vector<GeneratedColumn> columns,
                                                             RowCount rows) {
    std::shared_ptr<GeneratedRecordset> made(new GeneratedRecordset());
    made->shared_ = std::make_shared<Shared>();
    made->shared_->columns = std::move(columns);
    made->shared_->rows = rows;
    made->fields_ = std::make_shared<FieldList>(*made);
    return made;
}

template <class Call>
void GeneratedRecordset::tell(Call call) {
    const auto told = sinks_;
    for (RecordsetEvents* sink : told)
        if (sinks_.contains(sink)) call(*sink);
}

// --- what a test does ---

void GeneratedRecordset::arrive(RowCount rows, bool last) {
    shared_->rows += rows;
    shared_->fetching = !last;
    tell([&](RecordsetEvents& s) {
        s.FetchProgress(shared_->rows, shared_->rows, adStatusOK, *this);
        if (last) s.FetchComplete(nullptr, adStatusOK, *this);
    });
}

void GeneratedRecordset::changeValues(int field, std::function<Variant(RowCount)> value) {
    shared_->columns[static_cast<std::size_t>(field)].value = std::move(value);
    tell([&](RecordsetEvents& s) {
        s.FieldChangeComplete(1, {&fields_->Item(field)}, nullptr, adStatusOK, *this);
    });
}

// --- life ---

void GeneratedRecordset::Open(const Variant&, const Variant&, CursorTypeEnum, LockTypeEnum, int) {
    throw notOffered();
}

void GeneratedRecordset::Close() {
    open_ = false;
    tell([&](RecordsetEvents& s) {
        s.RecordsetChangeComplete(adRsnClose, nullptr, adStatusOK, *this);
        s.ViewChanged(*this);
    });
}

void GeneratedRecordset::Requery(int) {
    position_ = 1;
    tell([&](RecordsetEvents& s) {
        s.RecordsetChangeComplete(adRsnRequery, nullptr, adStatusOK, *this);
        s.MoveComplete(adRsnRequery, nullptr, adStatusOK, *this);
        s.ViewChanged(*this);
    });
}

int GeneratedRecordset::State() const {
    if (!open_) return adStateClosed;
    return adStateOpen | (shared_->fetching ? adStateFetching : 0);
}

RecordsetRef GeneratedRecordset::Clone(LockTypeEnum) {
    if (shared_->cloneError) throw *shared_->cloneError;
    std::shared_ptr<GeneratedRecordset> made(new GeneratedRecordset());
    made->shared_ = shared_;
    made->fields_ = std::make_shared<FieldList>(*made);
    ++shared_->clones;
    return made;
}

void GeneratedRecordset::SetActiveConnection(const Variant&) {
    throw notOffered();
}
void GeneratedRecordset::SetSource(const Variant&) {
    throw notOffered();
}
adodb::Fields& GeneratedRecordset::Fields() {
    return *fields_;
}

int GeneratedRecordset::fieldIndex(const Variant& nameOrIndex) const {
    const auto& columns = shared_->columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool found = nameOrIndex.isText() ? equalsText(columns[i].name, nameOrIndex.text())
                                                : nameOrIndex.toI4() == static_cast<int>(i);
        if (found) return static_cast<int>(i);
    }
    throw Errore(3265, "Elemento non trovato nell'insieme");
}

// --- rows ---

RowCount GeneratedRecordset::RecordCount() const {
    if (!open_) throw Errore(3704, "Operazione non consentita se l'oggetto è chiuso");
    return (shared_->rows + every_ - 1) / every_;
}

RowCount GeneratedRecordset::naturalRow(RowCount position) const {
    const RowCount place = sort_.ends_with("desc") ? RecordCount() - position : position - 1;
    return place * every_;
}

RowCount GeneratedRecordset::AbsolutePosition() const {
    if (RecordCount() == 0) return adPosUnknown;
    if (position_ < 1) return adPosBOF;
    return position_ > RecordCount() ? RowCount{adPosEOF} : position_;
}

void GeneratedRecordset::moveTo(RowCount position, EventReasonEnum reason) {
    if (refuseMoves) throw Errore(3712, "Operazione annullata dall'utente");
    position_ = std::clamp<RowCount>(position, 0, RecordCount() + 1);
    ++moves_;
    tell([&](RecordsetEvents& s) { s.MoveComplete(reason, nullptr, adStatusOK, *this); });
}

void GeneratedRecordset::SetAbsolutePosition(RowCount position) {
    if (position < 1 || position > RecordCount()) throw Errore(3001, "Argomento non valido");
    moveTo(position, adRsnMove);
}

Variant GeneratedRecordset::Bookmark() const {
    if (BOF() || EOF_()) throw noCurrent();
    return Variant(static_cast<double>(naturalRow(position_) + 1));
}

void GeneratedRecordset::SetBookmark(const Variant& bookmark) {
    const auto natural = static_cast<RowCount>(bookmark.toDouble()) - 1;
    if (natural < 0 || natural >= shared_->rows || natural % every_ != 0) throw noCurrent();
    const RowCount place = natural / every_;
    moveTo(sort_.ends_with("desc") ? RecordCount() - place : place + 1, adRsnMove);
}

CompareEnum GeneratedRecordset::CompareBookmarks(const Variant& a, const Variant& b) const {
    if (a.toDouble() == b.toDouble()) return adCompareEqual;
    return a.toDouble() < b.toDouble() ? adCompareLessThan : adCompareGreaterThan;
}

void GeneratedRecordset::Move(RowCount rows, const Variant&) {
    moveTo(position_ + rows, adRsnMove);
}

void GeneratedRecordset::MoveFirst() {
    if (RecordCount() == 0) throw noCurrent();
    moveTo(1, adRsnMoveFirst);
}

void GeneratedRecordset::MoveLast() {
    if (RecordCount() == 0) throw noCurrent();
    moveTo(RecordCount(), adRsnMoveLast);
}

void GeneratedRecordset::MoveNext() {
    if (EOF_()) throw noCurrent();
    moveTo(position_ + 1, adRsnMoveNext);
}

void GeneratedRecordset::MovePrevious() {
    if (BOF()) throw noCurrent();
    moveTo(position_ - 1, adRsnMovePrevious);
}

RowBlock GeneratedRecordset::GetRows(RowCount rows, const Variant&,
                                     const std::vector<Variant>& fields) {
    if (shared_->readError) throw *shared_->readError;
    RowBlock block;
    const RowCount remain = RecordCount() - position_ + 1;
    block.rows = rows < 0 ? remain : std::min(rows, remain);
    if (shared_->fetching && block.rows == remain) ++shared_->waits;
    for (const Variant& field : fields) {
        const auto& column = shared_->columns[static_cast<std::size_t>(fieldIndex(field))];
        std::vector<Variant> values;
        for (RowCount i = 0; i < block.rows; ++i)
            values.push_back(column.value(naturalRow(position_ + i)));
        block.values.push_back(std::move(values));
    }
    for (RowCount i = 0; i < block.rows; ++i)
        block.bookmarks.emplace_back(static_cast<double>(naturalRow(position_ + i) + 1));
    position_ += block.rows;
    shared_->rowsRead += block.rows;
    shared_->valuesRead += block.rows * static_cast<std::int64_t>(fields.size());
    shared_->largestRead = std::max(shared_->largestRead, block.rows);
    return block;
}

// --- view ---

Variant GeneratedRecordset::Filter() const {
    return filter_.empty() ? Variant(std::int32_t{0}) : Variant(filter_);
}

void GeneratedRecordset::SetFilter(const Variant& criteria) {
    filter_ = criteria.isText() ? criteria.text() : std::string();
    every_ = filter_.empty() ? 1 : std::stoll(filter_.substr(filter_.find(' ') + 1));
    position_ = 1;
    tell([&](RecordsetEvents& s) {
        s.MoveComplete(adRsnMove, nullptr, adStatusOK, *this);
        s.ViewChanged(*this);
    });
}

Grouping GeneratedRecordset::GroupBy(const std::vector<std::string>& fields) {
    if (!shared_->groups) throw Errore(3251, "Operazione non disponibile");
    return Recordset::GroupBy(fields);
}

void GeneratedRecordset::SetSort(const std::string& criteria) {
    const bool had = !BOF() && !EOF_();
    const RowCount natural = had ? naturalRow(position_) : 0;
    sort_ = criteria;
    const RowCount place = natural / every_;
    if (had) position_ = sort_.ends_with("desc") ? RecordCount() - place : place + 1;
    tell([&](RecordsetEvents& s) { s.ViewChanged(*this); });
}

// --- edits ---

void GeneratedRecordset::AddNew(const std::vector<Variant>&, const std::vector<Variant>&) {
    throw notOffered();
}

void GeneratedRecordset::Delete(AffectEnum) {
    --shared_->rows;
    position_ = std::min(position_, RecordCount());
    tell([&](RecordsetEvents& s) {
        s.RecordChangeComplete(adRsnDelete, 1, nullptr, adStatusOK, *this);
    });
}

} // namespace norvel::tests
