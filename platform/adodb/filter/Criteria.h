// A filter text as a tree: ADO's criteria language, strictly.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

enum class FilterOperator { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual, Like };

// How the value was written; what it means depends on the column that it is compared with.
struct FilterValue {
    enum class Kind { Null, Number, Quoted, Hashed, Bare }; // Bare: True, False
    Kind kind = Kind::Null;
    std::string text; // without its quotes or hashes, doubled quotes single
};

struct FilterClause {
    std::string name; // of the column, without brackets
    FilterOperator op = FilterOperator::Equal;
    FilterValue value;
};

// Alternatives of clauses that hold together: a row is kept where every clause of one group holds.
// No group: no filter.
struct Criteria {
    std::vector<std::vector<FilterClause>> groups;
};

// Raises 3001 where the text breaks the grammar: a group of alternatives beside another condition,
// a wildcard at the beginning alone or in the middle, NOT, a missing quote. An empty text (blanks
// included) is no filter. Nested parentheses cost no stack.
Criteria parseFilter(std::string_view text);

} // namespace norvel::adodb
