// What a clause means for its column.
#include "platform/adodb/Errors.h"
#include "platform/adodb/filter/FilterDate.h"
#include "platform/adodb/filter/NumberTest.h"
#include "platform/adodb/filter/TextTest.h"
#include "platform/runtime/Formats.h"

#include <algorithm>
#include <string>

namespace norvel::adodb {

namespace {

[[noreturn]] void refuse(const ColumnInfo& column, std::string_view why) {
    throw adoError(adErrInvalidArgument,
                   std::string("Il campo «").append(column.name).append("» ").append(why));
}

ColumnTestRef textTest(FilterOperator op, const std::string& text) {
    if (op == FilterOperator::Equal) return std::make_shared<TextTest>(TextMode::Equal, text);
    if (op == FilterOperator::NotEqual) return std::make_shared<TextTest>(TextMode::NotEqual, text);
    return std::make_shared<CollationTest>(op, text);
}

ColumnTestRef likeTest(std::string_view pattern) {
    const auto wild = [](char c) { return c == '*' || c == '%'; };
    if (pattern.empty() || !wild(pattern.back()))
        return textTest(FilterOperator::Equal, std::string(pattern));
    pattern.remove_suffix(1);
    const bool contains = !pattern.empty() && wild(pattern.front());
    if (contains) pattern.remove_prefix(1);
    return std::make_shared<TextTest>(contains ? TextMode::Contains : TextMode::Begins,
                                      std::string(pattern));
}

ColumnTestRef numberTest(FilterOperator op, std::string_view literal, const ColumnInfo& column) {
    if (auto made = NumberTest::ofLiteral(op, literal)) return made;
    refuse(column, "non si può confrontare con un numero così grande.");
}

bool equality(FilterOperator op) {
    return op == FilterOperator::Equal || op == FilterOperator::NotEqual;
}

ColumnTestRef booleanTest(const FilterClause& clause, bool truth, const ColumnInfo& column) {
    if (!equality(clause.op)) refuse(column, "ammette solo i confronti = e <>.");
    return std::make_shared<BooleanTest>(truth == (clause.op == FilterOperator::Equal));
}

bool truthOf(const FilterValue& value) {
    if (value.kind == FilterValue::Kind::Bare) return value.text == "True";
    return std::ranges::any_of(value.text.substr(0, value.text.find_first_of("eE")),
                               [](char c) { return c >= '1' && c <= '9'; });
}

ColumnTestRef unquotedTest(const FilterClause& clause, const ColumnInfo& column,
                           StorageClass kind) {
    if (kind == StorageClass::Boolean) return booleanTest(clause, truthOf(clause.value), column);
    if (kind == StorageClass::Text) return textTest(clause.op, clause.value.text);
    if (clause.value.kind == FilterValue::Kind::Bare)
        return numberTest(clause.op, truthOf(clause.value) ? "-1" : "0", column);
    return numberTest(clause.op, clause.value.text, column);
}

ColumnTestRef hashedTest(const FilterClause& clause, const ColumnInfo& column, StorageClass kind) {
    const auto date = filterDate(clause.value.text);
    if (date && (kind == StorageClass::Date || kind == StorageClass::Mixed))
        return std::make_shared<NumberTest>(clause.op, *date, std::nullopt);
    if (kind != StorageClass::Text)
        refuse(column, "non si può confrontare con questo valore tra #.");
    return textTest(clause.op, clause.value.text);
}

ColumnTestRef quotedTest(const FilterClause& clause, const ColumnInfo& column, StorageClass kind) {
    const std::string& text = clause.value.text;
    if (kind == StorageClass::Text || kind == StorageClass::Mixed || equality(clause.op))
        return textTest(clause.op, text);
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

ColumnTestRef ColumnTest::make(const FilterClause& clause, const ColumnInfo& column) {
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

} // namespace norvel::adodb
