#include "platform/adodb/filter/ColumnTest.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/filter/FilterDate.h"
#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace norvel::adodb {

namespace {

template <class T>
bool compares(FilterOperator op, const T& a, const T& b) {
    switch (op) {
    case FilterOperator::Equal:
        return a == b;
    case FilterOperator::NotEqual:
        return a != b;
    case FilterOperator::Less:
        return a < b;
    case FilterOperator::LessOrEqual:
        return a <= b;
    case FilterOperator::Greater:
        return a > b;
    default:
        return a >= b;
    }
}

[[noreturn]] void refuse(const ColumnInfo& column, std::string_view why) {
    throw adoError(adErrInvalidArgument,
                   std::string("Il campo «").append(column.name).append("» ").append(why));
}

class NullTest : public ColumnTest {
  public:
    explicit NullTest(bool wanted) : wanted_(wanted) {}
    bool null() const override { return wanted_; }
    bool value(const Variant&) const override { return !wanted_; }
    bool implies(const ColumnTest& other) const override {
        const auto* same = dynamic_cast<const NullTest*>(&other);
        return same && same->wanted_ == wanted_;
    }

  protected:
    void plain(const Segment&, DataTypeEnum, std::span<std::uint8_t> matches) const override {
        std::ranges::fill(matches, wanted_ ? 0 : 1);
    }

  private:
    bool wanted_;
};

// What every test of values shares: one that passes is not NULL.
class ValueTest : public ColumnTest {
  public:
    bool implies(const ColumnTest& other) const override {
        if (const auto* nulls = dynamic_cast<const NullTest*>(&other)) return !nulls->null();
        return impliesValue(other);
    }

  protected:
    virtual bool impliesValue(const ColumnTest& other) const = 0;
};

// --- numbers and dates ---

class NumberTest : public ValueTest {
  public:
    NumberTest(FilterOperator op, double number, std::optional<Decimal> exact)
        : op_(op), number_(number), exact_(exact) {}

    bool value(const Variant& value) const override {
        if (!value.isNumeric() && value.type() != VarType::Date) return false;
        const bool decimal = value.type() == VarType::Decimal ||
                             value.type() == VarType::Currency || value.type() == VarType::I8 ||
                             value.type() == VarType::UI8;
        if (decimal && exact_) return compares(op_, value.toDecimal(), *exact_);
        if (value.type() == VarType::Date) return compares(op_, value.toDate().days, number_);
        return compares(op_, value.toDouble(), number_);
    }

  protected:
    bool impliesValue(const ColumnTest& other) const override {
        const auto* same = dynamic_cast<const NumberTest*>(&other);
        return same && same->op_ == op_ && same->number_ == number_ && same->exact_ == exact_;
    }
    void plain(const Segment& segment, DataTypeEnum type,
               std::span<std::uint8_t> matches) const override {
        switch (segment.storage) {
        case Storage::Int32:
        case Storage::Days:
            return each<std::int32_t>(segment, matches);
        case Storage::Double:
        case Storage::Date:
            return each<double>(segment, matches);
        default:
            return ColumnTest::plain(segment, type, matches);
        }
    }

  private:
    template <class T>
    void each(const Segment& segment, std::span<std::uint8_t> matches) const {
        const auto values = segment.values<T>();
        const auto fill = [&](auto test) {
            for (std::size_t row = 0; row < matches.size(); ++row)
                matches[row] = test(static_cast<double>(values[row])) ? 1 : 0;
        };
        const double number = number_;
        switch (op_) {
        case FilterOperator::Equal:
            return fill([=](double value) { return value == number; });
        case FilterOperator::NotEqual:
            return fill([=](double value) { return value != number; });
        case FilterOperator::Less:
            return fill([=](double value) { return value < number; });
        case FilterOperator::LessOrEqual:
            return fill([=](double value) { return value <= number; });
        case FilterOperator::Greater:
            return fill([=](double value) { return value > number; });
        default:
            return fill([=](double value) { return value >= number; });
        }
    }

    FilterOperator op_;
    double number_;
    std::optional<Decimal> exact_; // where the literal is one
};

class BooleanTest : public ValueTest {
  public:
    explicit BooleanTest(bool wanted) : wanted_(wanted) {}
    bool value(const Variant& value) const override {
        return value.isNumeric() && (value.toDouble() != 0) == wanted_;
    }

  protected:
    bool impliesValue(const ColumnTest& other) const override {
        const auto* same = dynamic_cast<const BooleanTest*>(&other);
        return same && same->wanted_ == wanted_;
    }

  private:
    bool wanted_;
};

// --- texts ---

enum class TextMode { Compare, Begins, Contains };

class TextTest : public ValueTest {
  public:
    TextTest(TextMode mode, FilterOperator op, std::string text)
        : mode_(mode), op_(op), text_(std::move(text)) {}

    bool value(const Variant& value) const override {
        if (value.isText()) return passes(value.text());
        if (value.type() == VarType::Bytes) return false;
        return passes(value.toDisplay());
    }

  protected:
    bool impliesValue(const ColumnTest& other) const override {
        const auto* same = dynamic_cast<const TextTest*>(&other);
        if (!same) return false;
        if (same->mode_ == mode_ && same->op_ == op_ && equalsText(same->text_, text_)) return true;
        const bool known = mode_ != TextMode::Compare || op_ == FilterOperator::Equal;
        if (!known) return false;
        if (same->mode_ == TextMode::Contains) return findText(text_, same->text_) != none;
        return same->mode_ == TextMode::Begins && mode_ != TextMode::Contains &&
               matchText(text_, same->text_).position == 0;
    }
    // Each text of a dictionary is looked at once.
    void plain(const Segment& segment, DataTypeEnum type,
               std::span<std::uint8_t> matches) const override {
        if (segment.storage == Storage::Dictionary8)
            return numbered<std::uint8_t>(segment, matches);
        if (segment.storage == Storage::Dictionary16)
            return numbered<std::uint16_t>(segment, matches);
        if (segment.storage != Storage::Text) return ColumnTest::plain(segment, type, matches);
        for (std::uint32_t row = 0; row < matches.size(); ++row)
            if (matches[row] != 0) matches[row] = passes(segment.run(row)) ? 1 : 0;
    }
    bool plainRow(const Segment& segment, DataTypeEnum type, std::uint32_t row) const override {
        const bool text = segment.storage == Storage::Text ||
                          segment.storage == Storage::Dictionary8 ||
                          segment.storage == Storage::Dictionary16;
        return text ? passes(segment.text(row)) : ColumnTest::plainRow(segment, type, row);
    }

  private:
    static constexpr std::size_t none = std::string::npos;

    bool passes(std::string_view text) const {
        switch (mode_) {
        case TextMode::Contains:
            return findText(text, text_) != none;
        case TextMode::Begins:
            return matchText(text, text_).position == 0;
        case TextMode::Compare:
            break;
        }
        if (op_ == FilterOperator::Equal) return equalsText(text, text_);
        if (op_ == FilterOperator::NotEqual) return !equalsText(text, text_);
        return compares(op_, collateText(text, text_), 0);
    }
    template <class T>
    void numbered(const Segment& segment, std::span<std::uint8_t> matches) const {
        std::vector<std::uint8_t> entries(segment.entries);
        for (std::uint32_t i = 0; i < segment.entries; ++i)
            entries[i] = passes(segment.run(i)) ? 1 : 0;
        const auto numbers = segment.values<T>();
        for (std::size_t row = 0; row < matches.size(); ++row)
            matches[row] = entries[numbers[row]];
    }

    TextMode mode_;
    FilterOperator op_;
    std::string text_;
};

// --- making them ---

using Made = std::shared_ptr<const ColumnTest>;

Made likeTest(std::string_view pattern) {
    const auto wild = [](char c) { return c == '*' || c == '%'; };
    if (pattern.empty() || !wild(pattern.back()))
        return std::make_shared<TextTest>(TextMode::Compare, FilterOperator::Equal,
                                          std::string(pattern));
    pattern.remove_suffix(1);
    const bool contains = !pattern.empty() && wild(pattern.front());
    if (contains) pattern.remove_prefix(1);
    return std::make_shared<TextTest>(contains ? TextMode::Contains : TextMode::Begins,
                                      FilterOperator::Equal, std::string(pattern));
}

Made numberTest(FilterOperator op, std::string_view literal, const ColumnInfo& column) {
    const std::string text(literal.starts_with('+') ? literal.substr(1) : literal);
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec == std::errc::result_out_of_range)
        refuse(column, "non si può confrontare con un numero così grande.");
    return std::make_shared<NumberTest>(op, number, Decimal::fromText(text));
}

bool equality(FilterOperator op) {
    return op == FilterOperator::Equal || op == FilterOperator::NotEqual;
}

Made booleanTest(const FilterClause& clause, bool truth, const ColumnInfo& column) {
    if (!equality(clause.op)) refuse(column, "ammette solo i confronti = e <>.");
    return std::make_shared<BooleanTest>(truth == (clause.op == FilterOperator::Equal));
}

bool truthOf(const FilterValue& value) {
    if (value.kind == FilterValue::Kind::Bare) return value.text == "True";
    return std::ranges::any_of(value.text.substr(0, value.text.find_first_of("eE")),
                               [](char c) { return c >= '1' && c <= '9'; });
}

Made unquotedTest(const FilterClause& clause, const ColumnInfo& column, StorageClass kind) {
    if (kind == StorageClass::Boolean) return booleanTest(clause, truthOf(clause.value), column);
    if (kind == StorageClass::Text)
        return std::make_shared<TextTest>(TextMode::Compare, clause.op, clause.value.text);
    if (clause.value.kind == FilterValue::Kind::Bare)
        return numberTest(clause.op, truthOf(clause.value) ? "-1" : "0", column);
    return numberTest(clause.op, clause.value.text, column);
}

Made hashedTest(const FilterClause& clause, const ColumnInfo& column, StorageClass kind) {
    const auto date = filterDate(clause.value.text);
    if (date && (kind == StorageClass::Date || kind == StorageClass::Mixed))
        return std::make_shared<NumberTest>(clause.op, *date, std::nullopt);
    if (kind != StorageClass::Text)
        refuse(column, "non si può confrontare con questo valore tra #.");
    return std::make_shared<TextTest>(TextMode::Compare, clause.op, clause.value.text);
}

Made quotedTest(const FilterClause& clause, const ColumnInfo& column, StorageClass kind) {
    const std::string& text = clause.value.text;
    if (kind == StorageClass::Text || kind == StorageClass::Mixed || equality(clause.op))
        return std::make_shared<TextTest>(TextMode::Compare, clause.op, text);
    if (kind == StorageClass::Boolean) refuse(column, "ammette solo i confronti = e <>.");
    if (kind == StorageClass::Date) {
        if (const auto date = textToDate(text))
            return std::make_shared<NumberTest>(clause.op, date->days, std::nullopt);
        refuse(column, "non si può confrontare con un testo che non è una data.");
    }
    if (const auto number = textToNumber(text))
        return std::make_shared<NumberTest>(clause.op, *number, Decimal::fromDouble(*number));
    refuse(column, "non si può confrontare con un testo che non è un numero.");
}

} // namespace

ColumnTest::~ColumnTest() = default;

Made ColumnTest::make(const FilterClause& clause, const ColumnInfo& column) {
    using enum FilterValue::Kind;
    const StorageClass kind = storageClass(column.type);
    if (clause.value.kind == Null)
        return std::make_shared<NullTest>(clause.op == FilterOperator::Equal);
    if (kind == StorageClass::Bytes) refuse(column, "si può confrontare solo con NULL.");
    if (clause.op == FilterOperator::Like) return likeTest(clause.value.text);
    if (clause.value.kind == Quoted) return quotedTest(clause, column, kind);
    if (clause.value.kind == Hashed) return hashedTest(clause, column, kind);
    return unquotedTest(clause, column, kind);
}

void ColumnTest::narrow(const Segment& segment, DataTypeEnum type,
                        std::span<std::uint8_t> matches) const {
    std::vector<std::uint8_t> own(matches.begin(), matches.end());
    if (segment.storage == Storage::Null)
        std::ranges::fill(own, null() ? 1 : 0);
    else
        plain(segment, type, own);
    if (segment.nulls)
        for (std::uint32_t row = 0; row < own.size(); ++row)
            if (segment.isNull(row)) own[row] = null() ? 1 : 0;
    for (const Exceptional& other : segment.exceptions)
        if (other.row < own.size()) own[other.row] = value(other.value) ? 1 : 0;
    for (std::size_t row = 0; row < matches.size(); ++row)
        matches[row] &= own[row];
}

bool ColumnTest::row(const Segment& segment, DataTypeEnum type, std::uint32_t row) const {
    if (segment.isNull(row)) return null();
    if (const Variant* other = segment.exception(row)) return value(*other);
    return plainRow(segment, type, row);
}

void ColumnTest::plain(const Segment& segment, DataTypeEnum type,
                       std::span<std::uint8_t> matches) const {
    for (std::uint32_t row = 0; row < matches.size(); ++row)
        if (matches[row] != 0 && !segment.isNull(row) && !segment.exception(row))
            matches[row] = value(segment.value(row, type)) ? 1 : 0;
}

bool ColumnTest::plainRow(const Segment& segment, DataTypeEnum type, std::uint32_t row) const {
    return value(segment.value(row, type));
}

} // namespace norvel::adodb
