#include "platform/adodb/odbc/NeutralTokens.h"

#include "platform/adodb/sqlite/AccessNotation.h"

#include <algorithm>
#include <utility>

namespace norvel::adodb {

namespace {

using Kind = NeutralToken::Kind;

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class Lexer {
  public:
    explicit Lexer(std::string_view sql) : sql_(sql) {}

    std::vector<NeutralToken> read() {
        while (at_ < sql_.size())
            tokens_.push_back(next());
        return std::move(tokens_);
    }

  private:
    NeutralToken next() {
        const char c = sql_[at_];
        if (isSpace(c)) return take(Kind::Blank, run(isSpace));
        if (rest().starts_with("--")) return take(Kind::Blank, through("\n", 2));
        if (rest().starts_with("/*")) return take(Kind::Blank, through("*/", 2));
        if (c == '\'') return quoted(Kind::Text);
        if (c == '"' || c == '`') return quoted(Kind::Quoted);
        if (c == '[') return bracket();
        if (c == '#') return date();
        if (isLetter(c))
            return take(Kind::Word,
                        run([](char l) { return isLetter(l) || isDigit(l) || l == '$'; }));
        if (isDigit(c))
            return take(Kind::Number,
                        run([](char l) { return isLetter(l) || isDigit(l) || l == '.'; }));
        const std::string_view two = rest().substr(0, 2);
        return take(Kind::Sign, two == "<>" || two == "<=" || two == ">=" || two == "!=" ? 2 : 1);
    }

    std::string_view rest() const { return sql_.substr(at_); }
    NeutralToken take(Kind kind, std::size_t length, std::string value = {}) {
        NeutralToken token{kind, sql_.substr(at_, length), std::move(value)};
        at_ += token.text.size();
        return token;
    }
    template <class Test>
    std::size_t run(Test test) const {
        std::size_t end = at_;
        while (end < sql_.size() && test(sql_[end]))
            ++end;
        return end - at_;
    }
    std::size_t through(std::string_view end, std::size_t skip) const {
        const std::size_t found = sql_.find(end, at_ + skip);
        return found == std::string_view::npos ? sql_.size() - at_ : found + end.size() - at_;
    }
    NeutralToken quoted(Kind kind) {
        const char quote = sql_[at_];
        for (std::size_t end = at_ + 1; end < sql_.size(); ++end) {
            if (sql_[end] != quote) continue;
            if (end + 1 >= sql_.size() || sql_[end + 1] != quote) return take(kind, end + 1 - at_);
            ++end;
        }
        return take(Kind::Sign, 1);
    }
    NeutralToken bracket() {
        const std::size_t end = sql_.find(']', at_);
        if (end == std::string_view::npos || end == at_ + 1) return take(Kind::Sign, 1);
        return take(Kind::Bracket, end + 1 - at_, std::string(sql_.substr(at_ + 1, end - at_ - 1)));
    }
    NeutralToken date() {
        const std::size_t end = sql_.find('#', at_ + 1);
        const auto iso = end == std::string_view::npos
                             ? std::nullopt
                             : isoOfDateLiteral(sql_.substr(at_ + 1, end - at_ - 1));
        return iso ? take(Kind::Date, end + 1 - at_, *iso) : take(Kind::Sign, 1);
    }

    std::string_view sql_;
    std::size_t at_ = 0;
    std::vector<NeutralToken> tokens_;
};

} // namespace

std::vector<NeutralToken> neutralTokens(std::string_view statement) {
    return Lexer(statement).read();
}

} // namespace norvel::adodb
