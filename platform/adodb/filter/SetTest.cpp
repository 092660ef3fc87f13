#include "platform/adodb/filter/SetTest.h"

#include "platform/runtime/Text.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace norvel::adodb {

namespace {

// Numbers of 64 bits, looked up fast.
class Words {
  public:
    explicit Words(const std::vector<std::uint64_t>& words)
        : slots_(std::bit_ceil(words.size() * 4 + 4)),
          shift_(64U - static_cast<unsigned>(std::countr_zero(slots_.size()))) {
        for (const std::uint64_t word : words) {
            std::size_t at = place(word);
            while (slots_[at] != 0 && slots_[at] != word)
                at = next(at);
            slots_[at] = word;
            zero_ = zero_ || word == 0;
        }
    }
    bool contain(std::uint64_t word) const {
        if (word == 0) return zero_;
        std::size_t at = place(word);
        while (slots_[at] != 0 && slots_[at] != word)
            at = next(at);
        return slots_[at] == word;
    }

  private:
    std::size_t place(std::uint64_t word) const { return (word * 0x9E3779B97F4A7C15U) >> shift_; }
    std::size_t next(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }

    std::vector<std::uint64_t> slots_; // 0: free
    unsigned shift_;
    bool zero_ = false;
};

// Texts, looked up by length and by their ends before anything else.
class Texts {
  public:
    explicit Texts(std::vector<std::string> texts) : texts_(std::move(texts)), brief_(briefs()) {
        for (const std::string& text : texts_)
            set_.insert(text);
    }
    bool contain(std::string_view text) const {
        return brief_.contain(brief(text)) && set_.contains(text);
    }

  private:
    // The length, and up to four bytes from either end.
    static std::uint64_t brief(std::string_view text) {
        const std::size_t size = std::min<std::size_t>(text.size(), 4);
        std::uint32_t head = 0;
        std::uint32_t tail = 0;
        if (size == 4) { // the usual case, of a size that is known
            std::memcpy(&head, text.data(), 4);
            std::memcpy(&tail, text.data() + text.size() - 4, 4);
        } else if (size > 0) {
            std::memcpy(&head, text.data(), size);
        }
        return ((std::uint64_t{head} << 32U) | tail) + text.size() * 0xD6E8FEB86659FD93U + 1;
    }
    std::vector<std::uint64_t> briefs() const {
        std::vector<std::uint64_t> all;
        all.reserve(texts_.size());
        for (const std::string& text : texts_)
            all.push_back(brief(text));
        return all;
    }

    std::vector<std::string> texts_;
    Words brief_;
    std::unordered_set<std::string_view> set_; // into texts_
};

class TextSet : public FoldedTest {
  public:
    TextSet(Members members, std::vector<std::string> folded)
        : members_(std::move(members)), texts_(std::move(folded)) {}
    std::string key() const override { return members_.key(); }
    Cost cost() const override { return Cost::Text; }
    const Members* members() const override { return &members_; }
    bool implies(const ColumnTest& other) const override {
        return members_.none() ? FoldedTest::implies(other) : members_.imply(other);
    }

  protected:
    bool impliesValue(const ColumnTest& other) const override { return members_.imply(other); }
    bool passes(std::string_view text) const override {
        return texts_.contain(foldText(text)) != members_.none();
    }
    std::size_t selectRuns(const Runs& runs, std::uint32_t begin, std::uint32_t end,
                           RowNumber* found) const override {
        const bool none = members_.none();
        return selectWhere(begin, end, found,
                           [&](RowNumber run) { return texts_.contain(runs[run]) != none; });
    }
    std::size_t refineRuns(const Runs& runs, RowNumber* these, std::size_t count) const override {
        const bool none = members_.none();
        return refineWhere(these, count,
                           [&](RowNumber run) { return texts_.contain(runs[run]) != none; });
    }

  private:
    Members members_;
    Texts texts_;
};

class NumberSet : public ValueTest {
  public:
    explicit NumberSet(Members members) : members_(std::move(members)) {}
    bool value(const Variant& value) const override {
        return (value.isNumeric() || value.type() == VarType::Date) && members_.pass(value);
    }
    std::string key() const override { return members_.key(); }
    Cost cost() const override { return Cost::Number; }
    const Members* members() const override { return &members_; }
    bool implies(const ColumnTest& other) const override {
        return members_.none() ? ValueTest::implies(other) : members_.imply(other);
    }

  protected:
    bool impliesValue(const ColumnTest& other) const override { return members_.imply(other); }
    std::size_t selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                            RowNumber* rows) const override {
        std::size_t count = 0;
        const auto run = [&](auto test) { count = selectWhere(begin, end, rows, test); };
        return typed(cells, run) ? count : ValueTest::selectPlain(cells, begin, end, rows);
    }
    std::size_t refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const override {
        const auto run = [&](auto test) { count = refineWhere(rows, count, test); };
        return typed(cells, run) ? count : ValueTest::refinePlain(cells, rows, count);
    }

  private:
    // run is given a question about a row's number. False where the rows are to be looked at one by
    // one.
    template <class Run>
    bool typed(const Cells& cells, Run run) const {
        switch (cells.segment.storage) {
        case Storage::Int32:
        case Storage::Days:
        case Storage::Scaled32:
            return integers<std::int32_t>(cells, run);
        case Storage::Int64:
        case Storage::Scaled:
            return integers<std::int64_t>(cells, run);
        case Storage::Double:
        case Storage::Date:
            return doubles(cells, run);
        default:
            return false;
        }
    }
    template <class T, class Run>
    bool integers(const Cells& cells, Run run) const {
        std::vector<std::uint64_t> words;
        for (const ColumnTestRef& test : members_.tests()) {
            const auto& number = static_cast<const NumberTest&>(*test);
            const auto range = number.passing(cells.segment, cells.type);
            if (range && range->first != range->last) return false;
            if (range) words.push_back(static_cast<std::uint64_t>(range->first));
        }
        run([words = Words(words), values = cells.segment.values<T>().data(),
             none = members_.none()](RowNumber row) {
            return words.contain(static_cast<std::uint64_t>(std::int64_t{values[row]})) != none;
        });
        return true;
    }
    template <class Run>
    bool doubles(const Cells& cells, Run run) const {
        const auto word = [](double value) { return std::bit_cast<std::uint64_t>(value + 0.0); };
        std::vector<std::uint64_t> words;
        for (const ColumnTestRef& test : members_.tests())
            words.push_back(word(static_cast<const NumberTest&>(*test).number()));
        const double* values = cells.segment.values<double>().data();
        const bool single = cells.type == adSingle && cells.segment.storage == Storage::Double;
        run([words = Words(words), word, values, single, none = members_.none()](RowNumber row) {
            const double value =
                single ? static_cast<double>(static_cast<float>(values[row])) : values[row];
            return words.contain(word(value)) != none;
        });
        return true;
    }

    Members members_;
};

template <class Wanted>
bool all(const std::vector<ColumnTestRef>& tests, Wanted wanted) {
    return std::ranges::all_of(tests, [&](const ColumnTestRef& test) { return wanted(*test); });
}

} // namespace

Members::Members(std::vector<ColumnTestRef> tests, bool none)
    : tests_(std::move(tests)), none_(none) {
    for (const ColumnTestRef& test : tests_)
        keys_.insert(test->key());
}

bool Members::impliedBy(const ColumnTest& test) const {
    if (!none_) return keys_.contains(test.key());
    return all(tests_, [&](const ColumnTest& each) { return test.implies(each); });
}

bool Members::imply(const ColumnTest& other) const {
    if (none_) return keys_.contains(other.key());
    return all(tests_, [&](const ColumnTest& each) { return each.implies(other); });
}

bool Members::pass(const Variant& value) const {
    const auto passes = [&](const ColumnTestRef& test) { return test->value(value); };
    return none_ ? std::ranges::all_of(tests_, passes) : std::ranges::any_of(tests_, passes);
}

std::string Members::key() const {
    std::vector<std::string> sorted(keys_.begin(), keys_.end());
    std::ranges::sort(sorted);
    std::string all = none_ ? "none" : "any";
    for (const std::string& key : sorted)
        all += " " + std::to_string(key.size()) + " " + key;
    return all;
}

bool isAlternative(const ColumnTest& test) {
    if (const auto* text = dynamic_cast<const TextTest*>(&test))
        return text->mode() == TextMode::Equal;
    const auto* number = dynamic_cast<const NumberTest*>(&test);
    return number && number->op() == FilterOperator::Equal;
}

bool isDifference(const ColumnTest& test) {
    if (const auto* text = dynamic_cast<const TextTest*>(&test))
        return text->mode() == TextMode::NotEqual;
    const auto* number = dynamic_cast<const NumberTest*>(&test);
    return number && number->op() == FilterOperator::NotEqual;
}

ColumnTestRef makeSet(const std::vector<ColumnTestRef>& tests) {
    if (tests.size() < 2) return nullptr;
    const bool none = all(tests, isDifference);
    if (!none && !all(tests, isAlternative)) return nullptr;
    std::vector<std::string> folded;
    for (const ColumnTestRef& test : tests)
        if (const auto* text = dynamic_cast<const TextTest*>(test.get()))
            folded.push_back(text->folded());
    if (folded.empty()) return std::make_shared<NumberSet>(Members(tests, none));
    if (folded.size() < tests.size()) return nullptr; // both kinds
    return std::make_shared<TextSet>(Members(tests, none), std::move(folded));
}

} // namespace norvel::adodb
