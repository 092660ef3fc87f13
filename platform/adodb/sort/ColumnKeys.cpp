#include "platform/adodb/sort/ColumnKeys.h"

#include "platform/adodb/store/RawConversion.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

namespace norvel::adodb {

namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

bool isDictionary(const Segment& segment) {
    return segment.storage == Storage::Dictionary8 || segment.storage == Storage::Dictionary16;
}

// The number times 10^scale, where that is whole and of 63 bits at most.
std::optional<std::int64_t> atScale(const Decimal& number, unsigned scale) {
    if (number.high() != 0 || number.scale() > scale) return std::nullopt;
    const std::int64_t factor = powerOfTen(scale - number.scale());
    const std::int64_t most = std::numeric_limits<std::int64_t>::max() / factor;
    if (number.low() > static_cast<std::uint64_t>(most)) return std::nullopt;
    const std::int64_t size = static_cast<std::int64_t>(number.low()) * factor;
    return number.negative() ? -size : size;
}

// Of one value that stands among the exceptions of a column that has this form so far.
NumberForm formOf(const Variant& number, const std::optional<NumberForm>& column) {
    switch (number.type()) {
    case VarType::R4:
    case VarType::R8:
        return {NumberForm::Kind::Real};
    case VarType::Currency:
    case VarType::Decimal:
        if (column && column->kind == NumberForm::Kind::Scaled &&
            atScale(number.toDecimal(), column->scale))
            return *column;
        return {NumberForm::Kind::Exact};
    case VarType::UI8:
        return {NumberForm::Kind::Exact};
    default:
        return {NumberForm::Kind::Whole};
    }
}

std::optional<NumberForm> formOfPlain(const Segment& segment) {
    switch (segment.storage) {
    case Storage::Boolean:
    case Storage::Int32:
    case Storage::Int64:
        return NumberForm{NumberForm::Kind::Whole};
    case Storage::Double:
        return NumberForm{NumberForm::Kind::Real};
    case Storage::Scaled32:
    case Storage::Scaled:
        return NumberForm{NumberForm::Kind::Scaled, segment.scale};
    default:
        return std::nullopt;
    }
}

// Makes the keys of one piece.
class Extraction {
  public:
    Extraction(KeyPiece& piece, std::span<const RowNumber> rows, DataTypeEnum type, NumberForm form,
               bool sharedTexts)
        : piece_(piece), rows_(rows), form_(form), single_(type == adSingle),
          sharedTexts_(sharedTexts) {}

    void run() {
        makeRoom();
        for (const Slice& slice : piece_.slices) {
            slice_ = &slice;
            segment_ = slice.segment;
            takeSlice();
        }
    }

  private:
    bool exact() const { return form_.kind == NumberForm::Kind::Exact; }

    // For what will probably come.
    void makeRoom() {
        const std::size_t rows = piece_.slices.back().end - piece_.slices.front().begin;
        if (formOfPlain(*piece_.slices.front().segment) && !exact()) piece_.numbers.reserve(rows);
        std::size_t texts = 0;
        std::size_t bytes = 0;
        for (const Slice& slice : piece_.slices) {
            const Segment& segment = *slice.segment;
            if (segment.storage != Storage::Text || slice.end - slice.begin < segment.rows)
                continue;
            texts += segment.rows;
            bytes += segment.ends[segment.rows] - segment.ends[0];
        }
        // a key is a little longer than its text, and ends with about half a word of zeros
        if (texts > 0) piece_.texts.reserve(texts, bytes + bytes / 8 + texts * 6);
    }

    void takeSlice() {
        switch (segment_->storage) {
        case Storage::Boolean:
            return eachRow([&, v = values<std::uint8_t>()](RowNumber row, Place at) {
                whole(v[row] != 0 ? -1 : 0, at);
            });
        case Storage::Int32:
            return takeWhole<std::int32_t>();
        case Storage::Int64:
            return takeWhole<std::int64_t>();
        case Storage::Scaled32:
            return takeScaled<std::int32_t>();
        case Storage::Scaled:
            return takeScaled<std::int64_t>();
        case Storage::Double:
            return eachRow([&, v = values<double>()](RowNumber row, Place at) {
                real(single_ ? static_cast<float>(v[row]) : v[row], at);
            });
        case Storage::Days:
            return eachRow(
                [&, v = values<std::int32_t>()](RowNumber row, Place at) { date(v[row], at); });
        case Storage::Date:
            return eachRow(
                [&, v = values<double>()](RowNumber row, Place at) { date(v[row], at); });
        case Storage::Text:
            return eachRow([&](RowNumber row, Place at) { text(segment_->run(row), at); });
        case Storage::Dictionary8:
            return takeEntries<std::uint8_t>();
        case Storage::Dictionary16:
            return takeEntries<std::uint16_t>();
        case Storage::Bytes:
            return eachRow([&](RowNumber row, Place at) { bytes(segment_->run(row), at); });
        case Storage::Null:
        case Storage::Mixed:
            return eachRow([](RowNumber, Place) {});
        }
    }

    template <class T>
    const T* values() const {
        return segment_->values<T>().data();
    }
    template <class T>
    void takeWhole() {
        eachRow([&, v = values<T>()](RowNumber row, Place at) { whole(v[row], at); });
    }
    template <class T>
    void takeScaled() {
        eachRow([&, v = values<T>()](RowNumber row, Place at) {
            if (exact())
                exactly(numberKey(Decimal::fromScaled(v[row], segment_->scale)), at);
            else
                piece_.numbers.push_back(keyed(wholeKey(v[row]), at));
        });
    }
    template <class T>
    void takeEntries() {
        entries_.assign(segment_->entries, none);
        eachRow([&, v = values<T>()](RowNumber row, Place at) {
            std::uint32_t& key = entries_[v[row]];
            if (key == none) key = sharedText(segment_->run(v[row]));
            piece_.uses.push_back({at, key});
        });
    }

    // Plain values one by one; NULLs and values of other types go where they belong.
    template <class Plain>
    void eachRow(Plain plain) {
        if (segment_->exceptions.empty() && segment_->nulls == nullptr &&
            segment_->storage != Storage::Null) {
            for (Place at = slice_->begin; at < slice_->end; ++at)
                plain(rows_[at] - slice_->firstRow, at);
            return;
        }
        const auto end = segment_->exceptions.end();
        auto exception = std::ranges::lower_bound(
            segment_->exceptions, rows_[slice_->begin] - slice_->firstRow, {}, &Exceptional::row);
        for (Place at = slice_->begin; at < slice_->end; ++at) {
            const RowNumber row = rows_[at] - slice_->firstRow;
            while (exception != end && exception->row < row)
                ++exception;
            if (segment_->isNull(row))
                piece_.nulls.push_back(at);
            else if (exception != end && exception->row == row)
                value(exception->value, at);
            else
                plain(row, at);
        }
    }

    void value(const Variant& value, Place at) {
        switch (cellKind(value)) {
        case CellKind::Null:
            piece_.nulls.push_back(at);
            return;
        case CellKind::Number:
            return number(value, at);
        case CellKind::Date:
            return date(value.toDate().days, at);
        case CellKind::Text:
            return text(value.text(), at);
        case CellKind::Bytes: {
            const auto* first = reinterpret_cast<const char*>(value.bytes().data());
            return bytes({first, value.bytes().size()}, at);
        }
        case CellKind::Other:
            piece_.others.push_back(at);
        }
    }
    void number(const Variant& value, Place at) {
        if (exact())
            exactly(numberKey(value), at);
        else if (form_.kind == NumberForm::Kind::Real)
            real(value.toDouble(), at);
        else if (form_.kind == NumberForm::Kind::Scaled)
            piece_.numbers.push_back(keyed(wholeKey(*atScale(value.toDecimal(), form_.scale)), at));
        else
            whole(value.toI8(), at); // True is -1
    }
    void exactly(const NumberKey& key, Place at) { piece_.exact.push_back({key, at}); }
    void whole(std::int64_t value, Place at) {
        if (exact())
            exactly(numberKey(Decimal(value)), at);
        else
            piece_.numbers.push_back(keyed(wholeKey(value), at));
    }
    void real(double value, Place at) {
        if (exact())
            exactly(numberKey(value), at);
        else
            piece_.numbers.push_back(keyed(realKey(value), at));
    }
    void date(double days, Place at) { piece_.dates.push_back(keyed(realKey(days), at)); }
    void bytes(std::string_view bytes, Place at) { piece_.bytes.addBytes(at, bytes); }
    void text(std::string_view text, Place at) {
        if (sharedTexts_) {
            piece_.uses.push_back({at, sharedText(text)});
        } else {
            keyOf(text);
            piece_.texts.add(at, key_);
        }
    }
    std::uint32_t sharedText(std::string_view text) {
        const auto number = static_cast<std::uint32_t>(piece_.texts.size());
        keyOf(text);
        piece_.texts.add(number, key_);
        return number;
    }
    void keyOf(std::string_view text) {
        key_.clear();
        appendCollationKey(key_, text);
    }

    KeyPiece& piece_;
    const Slice* slice_ = nullptr;
    const Segment* segment_ = nullptr;
    std::span<const RowNumber> rows_;
    NumberForm form_;
    bool single_;
    bool sharedTexts_;
    std::string key_;
    std::vector<std::uint32_t> entries_; // the key of each entry of the dictionary
};

} // namespace

ColumnKeys::ColumnKeys(const ColumnStore& store, int column, std::span<const RowNumber> rows,
                       unsigned threads) {
    slice(store, column, rows);
    const NumberForm form = numberForm();
    const DataTypeEnum type = store.columns()[static_cast<std::size_t>(column)].type;
    runParallel(
        pieces_.size(),
        [&](std::size_t i) { Extraction(pieces_[i], rows, type, form, sharedTexts_).run(); },
        threads);
}

void ColumnKeys::slice(const ColumnStore& store, int column, std::span<const RowNumber> rows) {
    const std::size_t groups = store.groups();
    std::size_t group = 0;
    for (std::size_t at = 0; at < rows.size();) {
        while (group + 1 < groups && store.firstRow(group + 1) <= rows[at])
            ++group;
        const RowGroup& found = store.group(group);
        const auto first = static_cast<RowNumber>(store.firstRow(group));
        const auto from = rows.begin() + static_cast<std::ptrdiff_t>(at);
        const auto most =
            static_cast<std::ptrdiff_t>(std::min<std::size_t>(found.rows(), rows.size() - at));
        const auto behind = std::lower_bound(from, from + most, first + found.rows());
        const auto end = static_cast<std::size_t>(behind - rows.begin());
        const Segment& segment = found.segment(column);
        sharedTexts_ = sharedTexts_ || isDictionary(segment);
        slices_.push_back({&segment, first, static_cast<Place>(at), static_cast<Place>(end)});
        at = end;
    }
    std::size_t begin = 0;
    for (std::size_t i = 1; i <= slices_.size(); ++i) {
        const bool last = i == slices_.size();
        if (!last && slices_[i].end - slices_[begin].begin <= itemsAPiece) continue;
        pieces_.emplace_back().slices = std::span(slices_).subspan(begin, i - begin);
        begin = i;
    }
}

NumberForm ColumnKeys::numberForm() const {
    std::optional<NumberForm> form;
    const auto differs = [&](NumberForm own) {
        if (!form) form = own;
        return own != *form || own.kind == NumberForm::Kind::Exact;
    };
    for (const Slice& slice : slices_) {
        const auto plain = formOfPlain(*slice.segment);
        if (plain && differs(*plain)) return {NumberForm::Kind::Exact};
        for (const Exceptional& each : slice.segment->exceptions)
            if (cellKind(each.value) == CellKind::Number && differs(formOf(each.value, form)))
                return {NumberForm::Kind::Exact};
    }
    return form.value_or(NumberForm{});
}

} // namespace norvel::adodb
