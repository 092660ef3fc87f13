#include "platform/adodb/filter/NumberTest.h"

#include "platform/adodb/filter/SetTest.h"
#include "platform/adodb/store/RawConversion.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <type_traits>

namespace norvel::adodb {

namespace {

using Integers = std::numeric_limits<std::int64_t>;

// 2^53: up to it every whole number is a double.
constexpr std::uint64_t widestWhole = std::uint64_t{1} << 53U;

bool isScaled(Storage storage) {
    return storage == Storage::Scaled || storage == Storage::Scaled32;
}

// The first of all integers that passes; those behind it pass, too. nullopt: none.
template <class Test>
std::optional<std::int64_t> firstWhere(Test test) {
    std::int64_t from = Integers::min();
    std::int64_t to = Integers::max();
    if (!test(to)) return std::nullopt;
    while (from < to) {
        const auto width = static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
        const auto middle = static_cast<std::int64_t>(static_cast<std::uint64_t>(from) + width / 2);
        if (test(middle))
            to = middle;
        else
            from = middle + 1;
    }
    return from;
}

// True where a number's notation has its first digit other than 0 behind the decimal point, the
// exponent counted in: what is out of a double's range is too small then, not too large.
bool isBelowOne(std::string_view literal) {
    const std::size_t mantissaEnd = std::min(literal.find_first_of("eE"), literal.size());
    const std::string_view mantissa = literal.substr(0, mantissaEnd);
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) return true;
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    // Of the first digit: 1 for units, 0 for tenths.
    const auto place = first < point ? static_cast<std::int64_t>(point - first)
                                     : -static_cast<std::int64_t>(first - point - 1);
    if (mantissaEnd == literal.size()) return place <= 0;
    std::string_view digits = literal.substr(mantissaEnd + 1);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    std::int64_t exponent = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (read.ec == std::errc::result_out_of_range) return digits.starts_with('-');
    return exponent <= -place;
}

} // namespace

// --- NULL ---

std::size_t NullTest::select(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                             RowNumber* rows) const {
    return selectWhere(begin, end, rows,
                       [&](RowNumber row) { return cells.segment.isNull(row) == wanted_; });
}

std::size_t NullTest::refine(const Cells& cells, RowNumber* rows, std::size_t count) const {
    return refineWhere(rows, count,
                       [&](RowNumber row) { return cells.segment.isNull(row) == wanted_; });
}

bool NullTest::implies(const ColumnTest& other) const {
    const auto* same = dynamic_cast<const NullTest*>(&other);
    return same && same->wanted_ == wanted_;
}

bool ValueTest::implies(const ColumnTest& other) const {
    if (const auto* nulls = dynamic_cast<const NullTest*>(&other)) return !nulls->wanted();
    const auto* values = dynamic_cast<const ValueTest*>(&other);
    if (values && values->members()) return values->members()->impliedBy(*this);
    return impliesValue(other);
}

// --- numbers ---

std::shared_ptr<const NumberTest> NumberTest::ofLiteral(FilterOperator op,
                                                        std::string_view literal) {
    if (literal.starts_with('+')) literal.remove_prefix(1);
    double number = 0;
    const auto read = std::from_chars(literal.data(), literal.data() + literal.size(), number);
    if (read.ec == std::errc::result_out_of_range) {
        if (!isBelowOne(literal)) return nullptr;
        return std::make_shared<NumberTest>(op, 0.0, Decimal());
    }
    return std::make_shared<NumberTest>(op, number, Decimal::fromText(literal));
}

bool NumberTest::value(const Variant& value) const {
    if (!value.isNumeric() && value.type() != VarType::Date) return false;
    const bool decimal = value.type() == VarType::Decimal || value.type() == VarType::Currency ||
                         value.type() == VarType::I8 || value.type() == VarType::UI8;
    if (decimal && exact_) return compares(op_, value.toDecimal(), *exact_);
    if (value.type() == VarType::Date) return compares(op_, value.toDate().days, number_);
    return compares(op_, value.toDouble(), number_);
}

std::string NumberTest::key() const {
    char digits[32];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number_ + 0.0);
    return "number" + std::to_string(static_cast<int>(op_)) + " " + std::string(digits, end) +
           (exact_ ? " " + exact_->toText() : "");
}

// By both readings of the numbers.
bool NumberTest::under(const NumberTest& other) const {
    return number_ < other.number_ && exact_.has_value() == other.exact_.has_value() &&
           (!exact_ || *exact_ < *other.exact_);
}

bool NumberTest::same(const NumberTest& other) const {
    return number_ == other.number_ && exact_ == other.exact_;
}

bool NumberTest::impliesValue(const ColumnTest& other) const {
    const auto* wider = dynamic_cast<const NumberTest*>(&other);
    if (!wider) return false;
    const bool equal = same(*wider);
    if (equal && op_ == wider->op_) return true;
    using enum FilterOperator;
    const bool less = under(*wider); // this number is the smaller one
    const bool greater = wider->under(*this);
    const bool strict = op_ == Less || op_ == Greater; // the number itself does not pass this
    const bool upTo = op_ == Less || op_ == LessOrEqual || op_ == Equal;
    const bool downTo = op_ == Greater || op_ == GreaterOrEqual || op_ == Equal;
    switch (wider->op_) {
    case Less:
        return upTo && (less || (equal && strict));
    case LessOrEqual:
        return upTo && (less || equal);
    case Greater:
        return downTo && (greater || (equal && strict));
    case GreaterOrEqual:
        return downTo && (greater || equal);
    case NotEqual:
        return (upTo && less) || (downTo && greater) || (equal && strict);
    default:
        return false;
    }
}

int NumberTest::order(std::int64_t integer, const Segment& segment, DataTypeEnum type) const {
    const auto three = [](const auto& a, const auto& b) { return a < b ? -1 : b < a ? 1 : 0; };
    if (segment.storage == Storage::Days) return three(static_cast<double>(integer), number_);
    if (isScaled(segment.storage)) {
        const Decimal own = Decimal::fromScaled(integer, segment.scale);
        return exact_ ? three(own, *exact_) : three(own.toDouble(), number_);
    }
    const VarType read = integerVariant(integer, type).type();
    if (exact_ && (read == VarType::I8 || read == VarType::UI8))
        return three(Decimal(integer), *exact_);
    return three(static_cast<double>(integer), number_);
}

// Without a search: whole numbers, and decimals of no more decimals than the segment's.
std::optional<IntegerRange> NumberTest::equalsAtOnce(const Segment& segment,
                                                     DataTypeEnum type) const {
    if (!exact_ || exact_->high() != 0 || exact_->low() > widestWhole) return std::nullopt;
    const unsigned scale = isScaled(segment.storage) ? segment.scale : 0;
    if (exact_->scale() > scale) return std::nullopt;
    const auto mantissa = static_cast<std::int64_t>(exact_->low());
    const std::int64_t factor = powerOfTen(scale - exact_->scale());
    if (mantissa > widestScaled / factor) return std::nullopt;
    const std::int64_t integer = (exact_->negative() ? -mantissa : mantissa) * factor;
    if (order(integer, segment, type) != 0) return std::nullopt;
    return IntegerRange{integer, integer};
}

// Those whose order is least (0 or 1) or greater.
std::optional<IntegerRange> NumberTest::greater(const Segment& segment, DataTypeEnum type,
                                                int least) const {
    const auto first = firstWhere([&](std::int64_t i) { return order(i, segment, type) >= least; });
    return first ? std::optional(IntegerRange{*first, Integers::max()}) : std::nullopt;
}

std::optional<IntegerRange> NumberTest::passing(const Segment& segment, DataTypeEnum type) const {
    // What is left below a range.
    const auto below = [](std::optional<IntegerRange> range) -> std::optional<IntegerRange> {
        if (!range) return IntegerRange{Integers::min(), Integers::max()};
        if (range->first == Integers::min()) return std::nullopt;
        return IntegerRange{Integers::min(), range->first - 1};
    };
    switch (op_) {
    case FilterOperator::Less:
        return below(greater(segment, type, 0));
    case FilterOperator::LessOrEqual:
        return below(greater(segment, type, 1));
    case FilterOperator::Greater:
        return greater(segment, type, 1);
    case FilterOperator::GreaterOrEqual:
        return greater(segment, type, 0);
    default:
        break;
    }
    if (const auto quick = equalsAtOnce(segment, type)) return quick;
    const auto from = greater(segment, type, 0);
    const auto to = below(greater(segment, type, 1));
    if (!from || !to || from->first > to->last) return std::nullopt;
    return IntegerRange{from->first, to->last};
}

// Every comparison of integers asks whether they lie in a range, or outside.
template <class T, class Run>
std::size_t NumberTest::integers(const Cells& cells, Run run) const {
    using Word = std::make_unsigned_t<T>;
    const auto range = passing(cells.segment, cells.type);
    const bool outside = op_ == FilterOperator::NotEqual;
    const std::int64_t least = std::numeric_limits<T>::min();
    const std::int64_t most = std::numeric_limits<T>::max();
    if (!range || range->first > most || range->last < least)
        return run([=](RowNumber) { return outside; });
    const auto from = static_cast<Word>(std::max(range->first, least));
    const auto width = static_cast<Word>(static_cast<Word>(std::min(range->last, most)) - from);
    const T* values = cells.segment.values<T>().data();
    if (outside)
        return run([=](RowNumber row) {
            return static_cast<Word>(static_cast<Word>(values[row]) - from) > width;
        });
    return run([=](RowNumber row) {
        return static_cast<Word>(static_cast<Word>(values[row]) - from) <= width;
    });
}

template <class Read, class Run>
std::size_t NumberTest::doubles(Read read, Run run) const {
    const double number = number_;
    switch (op_) {
    case FilterOperator::Equal:
        return run([=](RowNumber row) { return read(row) == number; });
    case FilterOperator::NotEqual:
        return run([=](RowNumber row) { return read(row) != number; });
    case FilterOperator::Less:
        return run([=](RowNumber row) { return read(row) < number; });
    case FilterOperator::LessOrEqual:
        return run([=](RowNumber row) { return read(row) <= number; });
    case FilterOperator::Greater:
        return run([=](RowNumber row) { return read(row) > number; });
    default:
        return run([=](RowNumber row) { return read(row) >= number; });
    }
}

// run is given a question about a row's number.
template <class Run>
std::size_t NumberTest::typed(const Cells& cells, Run run) const {
    switch (cells.segment.storage) {
    case Storage::Int32:
    case Storage::Days:
    case Storage::Scaled32:
        return integers<std::int32_t>(cells, run);
    case Storage::Int64:
    case Storage::Scaled:
        return integers<std::int64_t>(cells, run);
    default:
        break;
    }
    const double* values = cells.segment.values<double>().data();
    if (cells.segment.storage == Storage::Double && cells.type == adSingle)
        return doubles(
            [=](RowNumber row) { return static_cast<double>(static_cast<float>(values[row])); },
            run);
    return doubles([=](RowNumber row) { return values[row]; }, run);
}

std::size_t NumberTest::selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                    RowNumber* rows) const {
    const Storage storage = cells.segment.storage;
    if (storage != Storage::Double && storage != Storage::Date && storage != Storage::Int32 &&
        storage != Storage::Int64 && storage != Storage::Days && !isScaled(storage))
        return ColumnTest::selectPlain(cells, begin, end, rows);
    return typed(cells, [=](auto test) { return selectWhere(begin, end, rows, test); });
}

std::size_t NumberTest::refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const {
    const Storage storage = cells.segment.storage;
    const bool integral = storage == Storage::Int32 || storage == Storage::Int64 ||
                          storage == Storage::Days || isScaled(storage);
    // Few rows are compared before the integers are found.
    constexpr std::size_t few = 64;
    if (!integral && storage != Storage::Double && storage != Storage::Date)
        return ColumnTest::refinePlain(cells, rows, count);
    if (integral && count < few) return ColumnTest::refinePlain(cells, rows, count);
    return typed(cells, [=](auto test) { return refineWhere(rows, count, test); });
}

// --- Booleans ---

bool BooleanTest::value(const Variant& value) const {
    return value.isNumeric() && (value.toDouble() != 0) == wanted_;
}

bool BooleanTest::impliesValue(const ColumnTest& other) const {
    const auto* same = dynamic_cast<const BooleanTest*>(&other);
    return same && same->wanted_ == wanted_;
}

std::size_t BooleanTest::selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                     RowNumber* rows) const {
    if (cells.segment.storage != Storage::Boolean)
        return ColumnTest::selectPlain(cells, begin, end, rows);
    const std::uint8_t* values = cells.segment.values<std::uint8_t>().data();
    return selectWhere(begin, end, rows, [=, wanted = std::uint8_t{wanted_}](RowNumber row) {
        return values[row] == wanted;
    });
}

std::size_t BooleanTest::refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const {
    if (cells.segment.storage != Storage::Boolean)
        return ColumnTest::refinePlain(cells, rows, count);
    const std::uint8_t* values = cells.segment.values<std::uint8_t>().data();
    return refineWhere(rows, count, [=, wanted = std::uint8_t{wanted_}](RowNumber row) {
        return values[row] == wanted;
    });
}

} // namespace norvel::adodb
