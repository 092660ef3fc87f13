// Conditions on numbers, dates and Booleans.
#pragma once

#include "platform/adodb/filter/ColumnTest.h"
#include "platform/runtime/Decimal.h"

#include <optional>
#include <string_view>

namespace norvel::adodb {

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

class NullTest : public ColumnTest {
  public:
    explicit NullTest(bool wanted) : wanted_(wanted) {}
    std::size_t select(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                       RowNumber* rows) const override;
    std::size_t refine(const Cells& cells, RowNumber* rows, std::size_t count) const override;
    bool value(const Variant&) const override { return !wanted_; }
    bool implies(const ColumnTest& other) const override;
    std::string key() const override { return wanted_ ? "null" : "not null"; }
    Cost cost() const override { return Cost::Number; }
    bool wanted() const { return wanted_; }

  protected:
    bool null() const override { return wanted_; }

  private:
    bool wanted_;
};

class Members;

// What every test of values shares: one that passes is not NULL.
class ValueTest : public ColumnTest {
  public:
    bool implies(const ColumnTest& other) const override;
    // Those of a test that stands for many; else null.
    virtual const Members* members() const { return nullptr; }

  protected:
    virtual bool impliesValue(const ColumnTest& other) const = 0;
};

// Integers from first to last, both of them included.
struct IntegerRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

class NumberTest : public ValueTest {
  public:
    // exact: where the number is a decimal. Whole numbers of 64 bits and decimals are compared with
    // that, others with the double.
    NumberTest(FilterOperator op, double number, std::optional<Decimal> exact)
        : op_(op), number_(number), exact_(exact) {}
    // The notation of a filter's number, [sign] digits [. digits] [E [sign] digits]. Null where it
    // is too large for a double; what is too small for one is 0.
    static std::shared_ptr<const NumberTest> ofLiteral(FilterOperator op, std::string_view literal);

    bool value(const Variant& value) const override;
    std::string key() const override;
    Cost cost() const override { return Cost::Number; }

    FilterOperator op() const { return op_; }
    double number() const { return number_; }
    // The integers that pass of a segment of integers, scaled ones included; for NotEqual, those
    // that do not. nullopt: none.
    std::optional<IntegerRange> passing(const Segment& segment, DataTypeEnum type) const;

  protected:
    bool impliesValue(const ColumnTest& other) const override;
    std::size_t selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                            RowNumber* rows) const override;
    std::size_t refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const override;

  private:
    template <class Run>
    std::size_t typed(const Cells& cells, Run run) const;
    template <class T, class Run>
    std::size_t integers(const Cells& cells, Run run) const;
    template <class Read, class Run>
    std::size_t doubles(Read read, Run run) const;
    // <0, 0, >0: an integer of the segment against the number.
    int order(std::int64_t integer, const Segment& segment, DataTypeEnum type) const;
    std::optional<IntegerRange> equalsAtOnce(const Segment& segment, DataTypeEnum type) const;
    std::optional<IntegerRange> greater(const Segment& segment, DataTypeEnum type, int least) const;
    bool under(const NumberTest& other) const;
    bool same(const NumberTest& other) const;

    FilterOperator op_;
    double number_;
    std::optional<Decimal> exact_;
};

class BooleanTest : public ValueTest {
  public:
    explicit BooleanTest(bool wanted) : wanted_(wanted) {}
    bool value(const Variant& value) const override;
    std::string key() const override { return wanted_ ? "true" : "false"; }
    Cost cost() const override { return Cost::Number; }

  protected:
    bool impliesValue(const ColumnTest& other) const override;
    std::size_t selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                            RowNumber* rows) const override;
    std::size_t refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const override;

  private:
    bool wanted_;
};

} // namespace norvel::adodb
