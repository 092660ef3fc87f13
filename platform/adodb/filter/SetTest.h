// Many values of one column asked for at once: one of them, or none of them.
#pragma once

#include "platform/adodb/filter/TextTest.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace norvel::adodb {

// The tests that a set stands for: of equality, or all of difference.
class Members {
  public:
    // none: tests of difference, all of which hold together; else alternatives.
    Members(std::vector<ColumnTestRef> tests, bool none);

    bool none() const { return none_; }
    const std::vector<ColumnTestRef>& tests() const { return tests_; }
    bool impliedBy(const ColumnTest& test) const;
    bool imply(const ColumnTest& other) const;
    bool pass(const Variant& value) const;
    std::string key() const;

  private:
    std::vector<ColumnTestRef> tests_;
    bool none_;
    std::unordered_set<std::string> keys_;
};

// One test in place of many; null where these cannot be gathered. They are TextTests or
// NumberTests, all of equality or all of difference.
ColumnTestRef makeSet(const std::vector<ColumnTestRef>& tests);
// Whether a test can be one of a set's alternatives, or one of those that a set of none stands for.
bool isAlternative(const ColumnTest& test);
bool isDifference(const ColumnTest& test);

} // namespace norvel::adodb
