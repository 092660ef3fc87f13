// Conditions that hold together, and alternatives of them, put into the form that runs fastest.
#pragma once

#include "platform/adodb/filter/ColumnTest.h"

#include <string>
#include <vector>

namespace norvel::adodb {

struct Condition {
    int column = 0;
    ColumnTestRef test;

    bool implies(const Condition& other) const {
        return column == other.column && test->implies(*other.test);
    }
    std::string key() const { return std::to_string(column) + ":" + test->key(); }
};

using Conditions = std::vector<Condition>;

// Alternatives that keep the same rows: each condition once, the cheap ones first; values of one
// column that a multiple choice has written out one by one (x=1 OR x=2, with the same further
// conditions or none; x<>1 AND x<>2) as one set.
std::vector<Conditions> simplified(std::vector<Conditions> alternatives);

} // namespace norvel::adodb
