#include "platform/adodb/filter/FilterProgram.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/filter/Conditions.h"
#include "platform/adodb/filter/FilterRun.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::adodb {

namespace {

class Program : public FilterProgram {
  public:
    explicit Program(std::vector<Conditions> alternatives)
        : alternatives_(std::move(alternatives)) {}

    void run(const ColumnStore& store, RowNumber first, RowNumber last, RowList& hits,
             unsigned threads) const override {
        runFilter(store, alternatives_, first, last, hits, threads);
    }

    void runOver(const ColumnStore& store, const RowList& rows, RowList& hits,
                 unsigned threads) const override {
        runFilterOver(store, alternatives_, rows, hits, threads);
    }

    bool matches(const ColumnStore& store, RowNumber row) const override {
        return rowMatches(store, alternatives_, row);
    }

    bool narrows(const FilterProgram& otherProgram) const override {
        const auto* other = dynamic_cast<const Program*>(&otherProgram);
        if (!other) return false;
        if (other->alternatives_.empty()) return true;
        if (alternatives_.empty()) return false;
        return std::ranges::all_of(alternatives_, [&](const Conditions& own) {
            return std::ranges::any_of(other->alternatives_, [&](const Conditions& wider) {
                return impliesAll(own, wider);
            });
        });
    }

  private:
    static bool impliesAll(const Conditions& own, const Conditions& wider) {
        return std::ranges::all_of(wider, [&](const Condition& wanted) {
            return std::ranges::any_of(own,
                                       [&](const Condition& has) { return has.implies(wanted); });
        });
    }

    std::vector<Conditions> alternatives_; // none: every row
};

int columnNamed(const std::string& name, const std::vector<ColumnInfo>& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (equalsText(columns[i].name, name)) return static_cast<int>(i);
    throw adoError(adErrItemNotFound, "Il filtro nomina il campo «" + name + "».");
}

} // namespace

FilterProgram::~FilterProgram() = default;

std::shared_ptr<const FilterProgram>
FilterProgram::compile(const Criteria& criteria, const std::vector<ColumnInfo>& columns) {
    std::vector<Conditions> alternatives;
    for (const auto& clauses : criteria.groups) {
        Conditions& conditions = alternatives.emplace_back();
        for (const FilterClause& clause : clauses) {
            const int column = columnNamed(clause.name, columns);
            const ColumnInfo& info = columns[static_cast<std::size_t>(column)];
            conditions.push_back({column, ColumnTest::make(clause, info)});
        }
    }
    return std::make_shared<Program>(simplified(std::move(alternatives)));
}

} // namespace norvel::adodb
