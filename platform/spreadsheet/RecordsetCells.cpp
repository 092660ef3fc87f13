#include "platform/spreadsheet/RecordsetCells.h"

#include "platform/adodb/Errors.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Formats.h"

#include <algorithm>
#include <deque>
#include <string>

namespace norvel::spreadsheet {

using namespace adodb;

namespace {

constexpr std::int64_t widestNumber = 999'999'999'999'999; // 15 digits

struct Place {
    const RowGroup* group = nullptr;
    std::uint32_t row = 0;
};

double powerOfTen(unsigned exponent) {
    double power = 1;
    for (unsigned i = 0; i < exponent; ++i)
        power *= 10;
    return power;
}

// A date that is none is the number that it is.
Cell dateCell(double days) {
    if (!isValidDate(Date{days})) return {CellKind::Number, days, {}};
    if (days >= 0 && days < 1) return {CellKind::Time, days, {}};
    return {CellKind::Date, days, {}};
}

bool fitsNumber(std::int64_t value) {
    return value >= -widestNumber && value <= widestNumber;
}

} // namespace

// Keeps the texts that are made for a block of cells until the next one.
class RecordsetCells::Reader : public CellReader {
  public:
    explicit Reader(const RecordsetCells& source)
        : source_(source), store_(source.rows_->store()) {}

    std::span<const Cell> read(std::int64_t first, std::size_t count) override {
        const auto rows = static_cast<std::size_t>(std::max<std::int64_t>(
            0, std::min(static_cast<std::int64_t>(count), source_.count_ - first)));
        const auto width = static_cast<std::size_t>(source_.columns());
        cells_.resize(rows * width);
        texts_.clear();
        find(first, rows);
        for (std::size_t c = 0; c < width; ++c)
            readColumn(static_cast<int>(c), cells_.data() + c, width);
        return cells_;
    }

  private:
    void find(std::int64_t first, std::size_t rows) {
        places_.clear();
        const RowGroup* group = nullptr;
        std::int64_t begin = 0;
        for (std::size_t i = 0; i < rows; ++i) {
            const std::int64_t number = source_.rowAt(first + static_cast<std::int64_t>(i));
            if (!group || number < begin || number >= begin + group->rows()) {
                const ColumnStore::Place place = store_.find(number);
                group = place.group;
                begin = number - place.row;
            }
            places_.push_back({group, static_cast<std::uint32_t>(number - begin)});
        }
    }

    void readColumn(int column, Cell* cell, std::size_t step) {
        const DataTypeEnum type = store_.columns()[static_cast<std::size_t>(column)].type;
        for (const Place& place : places_) {
            *cell = cellOf(place.group->segment(column), place.row, type);
            cell += step;
        }
    }

    Cell cellOf(const Segment& segment, std::uint32_t row, DataTypeEnum type) {
        if (segment.isNull(row)) return {};
        if (segment.exception(row) != nullptr) return ofValue(segment.value(row, type));
        switch (segment.storage) {
        case Storage::Boolean:
            return {CellKind::Boolean, segment.values<std::uint8_t>()[row] != 0 ? 1.0 : 0.0, {}};
        case Storage::Int32:
            return number(segment.values<std::int32_t>()[row]);
        case Storage::Int64:
            if (!fitsNumber(segment.values<std::int64_t>()[row])) break;
            return number(static_cast<double>(segment.values<std::int64_t>()[row]));
        case Storage::Double:
            return number(segment.values<double>()[row]);
        case Storage::Days:
            return dateCell(segment.values<std::int32_t>()[row]);
        case Storage::Date:
            return dateCell(segment.values<double>()[row]);
        case Storage::Scaled32:
            return number(segment.values<std::int32_t>()[row] / powerOfTen(segment.scale));
        case Storage::Scaled:
            if (!fitsNumber(segment.values<std::int64_t>()[row])) break;
            return number(static_cast<double>(segment.values<std::int64_t>()[row]) /
                          powerOfTen(segment.scale));
        case Storage::Text:
        case Storage::Dictionary8:
        case Storage::Dictionary16:
            return {CellKind::Text, 0, segment.text(row)};
        default:
            break;
        }
        return ofValue(segment.value(row, type));
    }

    static Cell number(double value) { return {CellKind::Number, value, {}}; }

    Cell text(std::string text) {
        texts_.push_back(std::move(text));
        return {CellKind::Text, 0, texts_.back()};
    }

    // A value that is not as its column's others.
    Cell ofValue(const Variant& value) {
        switch (value.type()) {
        case VarType::Empty:
        case VarType::Null:
            return {};
        case VarType::Boolean:
            return {CellKind::Boolean, value.toBoolean() ? 1.0 : 0.0, {}};
        case VarType::Date:
            return dateCell(value.toDate().days);
        case VarType::R4:
        case VarType::R8:
            return number(value.toDouble());
        case VarType::String:
            return text(value.text());
        case VarType::Bytes:
            return text("(binario)");
        case VarType::Object:
        case VarType::Array:
            return {};
        default:
            break;
        }
        std::string digits = value.toText();
        const auto count =
            std::ranges::count_if(digits, [](char c) { return c >= '0' && c <= '9'; });
        return count > 15 ? text(std::move(digits)) : number(value.toDouble());
    }

    const RecordsetCells& source_;
    const ColumnStore& store_;
    std::vector<Place> places_;
    std::vector<Cell> cells_;
    std::deque<std::string> texts_;
};

RecordsetCells::RecordsetCells(const Recordset& recordset) : rows_(ColumnRows::of(recordset)) {
    if ((recordset.State() & adStateOpen) == 0) throw adoError(adErrObjectClosed);
    if (!rows_) throw erroreTipoNonCorrispondente();
    if (const auto broken = recordset.FetchError()) throw *broken;
    const RowCount position = recordset.AbsolutePosition();
    first_ = position > 0 ? position - 1 : rows_->count();
    count_ = rows_->count() - first_;
    if (!rows_->inStoreOrder()) rows_->numbers(first_, count_, numbers_.emplace());
}

RowNumber RecordsetCells::rowAt(std::int64_t row) const {
    return numbers_ ? (*numbers_)[static_cast<std::size_t>(row)]
                    : static_cast<RowNumber>(first_ + row);
}

CellKind RecordsetCells::columnKind(int column) const {
    const ColumnInfo& info = rows_->store().columns()[static_cast<std::size_t>(column)];
    switch (storageClass(info.type)) {
    case StorageClass::Boolean:
        return CellKind::Boolean;
    case StorageClass::Date:
        return info.type == adDBTime ? CellKind::Time : CellKind::Date;
    case StorageClass::Text:
        return CellKind::Text;
    case StorageClass::Integer:
    case StorageClass::Double:
    case StorageClass::Scaled:
        return CellKind::Number;
    default:
        return CellKind::Blank;
    }
}

std::unique_ptr<CellReader> RecordsetCells::reader() const {
    return std::make_unique<Reader>(*this);
}

} // namespace norvel::spreadsheet
