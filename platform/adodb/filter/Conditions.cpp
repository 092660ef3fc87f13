#include "platform/adodb/filter/Conditions.h"

#include "platform/adodb/filter/SetTest.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace norvel::adodb {

namespace {

// Tests that one set may stand for are of one kind.
using Kind = std::pair<int, bool>; // the column, and whether it is asked for a text

Kind kindOf(const Condition& condition) {
    return {condition.column, dynamic_cast<const TextTest*>(condition.test.get()) != nullptr};
}

std::string joined(std::vector<std::string> keys) {
    std::ranges::sort(keys);
    std::string all;
    for (const std::string& key : keys)
        all.append(std::to_string(key.size())).append(" ").append(key);
    return all;
}

std::string keyOf(const Conditions& conditions) {
    std::vector<std::string> keys;
    for (const Condition& each : conditions)
        keys.push_back(each.key());
    return joined(std::move(keys));
}

// x<>1 AND x<>2: neither.
void gatherDifferences(Conditions& conditions) {
    std::map<Kind, std::vector<ColumnTestRef>> differences;
    for (const Condition& each : conditions)
        if (isDifference(*each.test)) differences[kindOf(each)].push_back(each.test);
    for (const auto& difference : differences) {
        const ColumnTestRef set = makeSet(difference.second);
        if (!set) continue;
        std::erase_if(conditions, [&](const Condition& each) {
            return isDifference(*each.test) && kindOf(each) == difference.first;
        });
        conditions.push_back({difference.first.first, set});
    }
}

void tidy(Conditions& conditions) {
    if (conditions.size() > 1) {
        std::unordered_set<std::string> seen;
        std::erase_if(conditions,
                      [&](const Condition& each) { return !seen.insert(each.key()).second; });
        gatherDifferences(conditions);
    }
    std::ranges::stable_sort(conditions, {},
                             [](const Condition& each) { return each.test->cost(); });
}

// The only condition that asks this column for one value; its index.
std::optional<std::size_t> onlyChoice(const Conditions& conditions, Kind kind) {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        if (!isAlternative(*conditions[i].test) || kindOf(conditions[i]) != kind) continue;
        if (found) return std::nullopt;
        found = i;
    }
    return found;
}

// What alternatives share that differ in the value of one column only.
struct Choice {
    std::size_t at = 0; // in the result; its condition
    std::size_t condition = 0;
    std::vector<ColumnTestRef> tests;
};

void gatherChoices(std::vector<Conditions>& alternatives, Kind kind) {
    std::vector<Conditions> result;
    std::unordered_map<std::string, Choice> choices;
    for (Conditions& conditions : alternatives) {
        const auto choice = onlyChoice(conditions, kind);
        if (choice) {
            std::vector<std::string> keys;
            for (std::size_t i = 0; i < conditions.size(); ++i)
                if (i != *choice) keys.push_back(conditions[i].key());
            Choice& shared = choices[joined(std::move(keys))];
            shared.tests.push_back(conditions[*choice].test);
            if (shared.tests.size() > 1) continue;
            shared.at = result.size();
            shared.condition = *choice;
        }
        result.push_back(std::move(conditions));
    }
    for (const auto& [key, choice] : choices)
        if (const ColumnTestRef set = makeSet(choice.tests))
            result[choice.at][choice.condition].test = set;
    alternatives = std::move(result);
}

} // namespace

std::vector<Conditions> simplified(std::vector<Conditions> alternatives) {
    for (Conditions& conditions : alternatives)
        tidy(conditions);
    if (alternatives.size() < 2) return alternatives;
    std::unordered_set<std::string> seen;
    std::erase_if(alternatives, [&](const Conditions& conditions) {
        return !seen.insert(keyOf(conditions)).second;
    });
    std::set<Kind> kinds;
    for (const Conditions& conditions : alternatives)
        for (const Condition& each : conditions)
            if (isAlternative(*each.test)) kinds.insert(kindOf(each));
    for (const Kind& kind : kinds)
        gatherChoices(alternatives, kind);
    return alternatives;
}

} // namespace norvel::adodb
