#include "platform/adodb/filter/Criteria.h"

#include "platform/adodb/Errors.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace norvel::adodb {

namespace {

using Groups = std::vector<std::vector<FilterClause>>;

[[noreturn]] void refuse(std::string_view why) {
    throw adoError(adErrInvalidArgument, std::string("Il filtro non si può leggere: ").append(why));
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// What a name without brackets is made of, and what ends a number or a word.
bool isNameByte(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
           c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

// A BEGINSWITH or a CONTAINS is all that LIKE offers: one wildcard at the end, or one at both ends.
void checkPattern(std::string_view pattern) {
    const auto wild = [](char c) { return c == '*' || c == '%'; };
    const bool begins = !pattern.empty() && wild(pattern.front());
    const bool ends = !pattern.empty() && wild(pattern.back());
    if (begins && !ends) refuse("un carattere jolly sta solo all'inizio del valore");
    if (ends) pattern.remove_suffix(1);
    if (begins && !pattern.empty()) pattern.remove_prefix(1);
    if (std::ranges::any_of(pattern, wild)) refuse("un carattere jolly sta in mezzo al valore");
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    void skipBlanks() {
        while (!atEnd() && (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\r' ||
                            text_[at_] == '\n'))
            ++at_;
    }
    bool atEnd() const { return at_ >= text_.size(); }
    bool skip(char c) {
        skipBlanks();
        if (atEnd() || text_[at_] != c) return false;
        ++at_;
        return true;
    }
    // A word in any case, with no letter behind it.
    bool skipWord(std::string_view word) {
        skipBlanks();
        if (text_.size() - at_ < word.size() || !equalsText(text_.substr(at_, word.size()), word))
            return false;
        const std::size_t behind = at_ + word.size();
        if (behind < text_.size() && isNameByte(text_[behind])) return false;
        at_ = behind;
        return true;
    }

    FilterClause clause() {
        FilterClause clause;
        clause.name = name();
        clause.op = comparison();
        clause.value = value();
        checkClause(clause);
        return clause;
    }

  private:
    std::string name() {
        if (skip('[')) return enclosed(']', "manca la parentesi quadra che chiude il nome");
        skipBlanks();
        const std::size_t begin = at_;
        while (!atEnd() && isNameByte(text_[at_]))
            ++at_;
        const std::string_view found = text_.substr(begin, at_ - begin);
        if (found.empty()) refuse("manca il nome di un campo");
        for (const std::string_view word : {"AND", "OR", "LIKE", "NOT"})
            if (equalsText(found, word))
                refuse("una parola del linguaggio sta al posto di un campo");
        return std::string(found);
    }

    FilterOperator comparison() {
        if (skipWord("LIKE")) return FilterOperator::Like;
        skipBlanks();
        const auto two = text_.substr(std::min(at_, text_.size()), 2);
        using enum FilterOperator;
        constexpr std::pair<std::string_view, FilterOperator> signs[] = {
            {"<>", NotEqual}, {"<=", LessOrEqual}, {">=", GreaterOrEqual},
            {"=", Equal},     {"<", Less},         {">", Greater}};
        for (const auto& [sign, op] : signs)
            if (two.starts_with(sign)) {
                at_ += sign.size();
                return op;
            }
        refuse("dopo il campo manca un confronto");
    }

    FilterValue value() {
        using enum FilterValue::Kind;
        if (skip('\'')) return {Quoted, enclosed('\'', "manca l'apice che chiude il valore")};
        if (skip('#')) return {Hashed, hashed()};
        if (skipWord("NULL")) return {Null, {}};
        for (const std::string_view word : {"True", "False"})
            if (skipWord(word)) return {Bare, std::string(word)};
        return {Number, number()};
    }

    // Up to the sign that closes; doubled it stands for itself.
    std::string enclosed(char close, std::string_view missing) {
        std::string found;
        for (; !atEnd(); ++at_) {
            if (text_[at_] == close) {
                ++at_;
                if (atEnd() || text_[at_] != close) return found;
            }
            found += text_[at_];
        }
        refuse(missing);
    }
    // Up to the next '#'; quotes inside belong to the value.
    std::string hashed() {
        const std::size_t end = text_.find('#', at_);
        if (end == std::string_view::npos) refuse("manca il # che chiude il valore");
        std::string_view found = text_.substr(at_, end - at_);
        at_ = end + 1;
        return std::string(found);
    }
    // [sign] [$] digits [. digits] [E [sign] digits], without the $.
    std::string number() {
        std::string found;
        const auto sign = [&] {
            if (!atEnd() && (text_[at_] == '-' || text_[at_] == '+')) found += text_[at_++];
        };
        const auto digits = [&] {
            const std::size_t begin = at_;
            while (!atEnd() && isDigit(text_[at_]))
                found += text_[at_++];
            return at_ - begin;
        };
        sign();
        if (!atEnd() && text_[at_] == '$') ++at_;
        std::size_t count = digits();
        if (!atEnd() && text_[at_] == '.') {
            found += text_[at_++];
            count += digits();
        }
        if (count == 0) refuse("manca il valore di un confronto");
        if (!atEnd() && (text_[at_] == 'e' || text_[at_] == 'E')) {
            found += text_[at_++];
            sign();
            if (digits() == 0) refuse("un numero non è scritto bene");
        }
        if (!atEnd() && isNameByte(text_[at_])) refuse("un numero non è scritto bene");
        return found;
    }

    static void checkClause(const FilterClause& clause) {
        using enum FilterValue::Kind;
        const bool equality =
            clause.op == FilterOperator::Equal || clause.op == FilterOperator::NotEqual;
        if (clause.value.kind == Null && !equality) refuse("NULL si confronta solo con = e <>");
        if (clause.op != FilterOperator::Like) return;
        if (clause.value.kind != Quoted && clause.value.kind != Hashed)
            refuse("dopo LIKE manca un testo tra apici");
        checkPattern(clause.value.text);
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

// Operands and operators that wait, AND before OR: no recursion, so that no text is too deep.
class Builder {
  public:
    void operand(FilterClause clause) {
        operands_.emplace_back();
        operands_.back().emplace_back().push_back(std::move(clause));
    }
    void open() { waiting_.push_back('('); }
    void combine(char op) { // '&', '|'
        while (!waiting_.empty() && (waiting_.back() == '&' || waiting_.back() == op))
            apply();
        waiting_.push_back(op);
    }
    bool close() {
        while (!waiting_.empty() && waiting_.back() != '(')
            apply();
        if (waiting_.empty()) return false;
        waiting_.pop_back();
        return true;
    }
    Groups finish() {
        while (!waiting_.empty()) {
            if (waiting_.back() == '(') refuse("manca una parentesi che chiude");
            apply();
        }
        return std::move(operands_.back());
    }

  private:
    // What holds more takes in what holds less, so that long texts cost no more than their length.
    template <class List>
    static void join(List& left, List& right) {
        if (left.size() < right.size()) std::swap(left, right);
        std::ranges::move(right, std::back_inserter(left));
    }

    void apply() {
        Groups right = std::move(operands_.back());
        operands_.pop_back();
        Groups& left = operands_.back();
        if (waiting_.back() == '|') {
            join(left, right);
        } else {
            if (left.size() > 1 || right.size() > 1)
                refuse("un gruppo di alternative (OR) è unito con AND a un'altra condizione");
            join(left.front(), right.front());
        }
        waiting_.pop_back();
    }

    std::vector<Groups> operands_;
    std::vector<char> waiting_;
};

} // namespace

Criteria parseFilter(std::string_view text) {
    Reader reader(text);
    reader.skipBlanks();
    if (reader.atEnd()) return {};
    Builder builder;
    for (;;) {
        while (reader.skip('('))
            builder.open();
        builder.operand(reader.clause());
        while (reader.skip(')'))
            if (!builder.close()) refuse("c'è una parentesi che chiude di troppo");
        reader.skipBlanks();
        if (reader.atEnd()) break;
        if (reader.skipWord("AND"))
            builder.combine('&');
        else if (reader.skipWord("OR"))
            builder.combine('|');
        else
            refuse("tra due condizioni manca AND oppure OR");
    }
    return {builder.finish()};
}

} // namespace norvel::adodb
