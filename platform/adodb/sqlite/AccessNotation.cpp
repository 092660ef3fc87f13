#include "platform/adodb/sqlite/AccessNotation.h"

#include "platform/adodb/store/IsoDate.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <vector>

namespace norvel::adodb {

namespace {

bool isWordStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Copies a statement token by token.
class Translator {
  public:
    explicit Translator(std::string_view sql) : sql_(sql) { out_.reserve(sql.size() + 32); }

    std::string translate() {
        while (at_ < sql_.size())
            token();
        return std::move(out_);
    }

  private:
    void token() {
        const char c = sql_[at_];
        if (c == '\'' || c == '"' || c == '`')
            copyQuoted(c);
        else if (c == '[')
            copyThrough("]", 1);
        else if (sql_.substr(at_, 2) == "--")
            copyThrough("\n", 2);
        else if (sql_.substr(at_, 2) == "/*")
            copyThrough("*/", 2);
        else if (c == '#')
            dateLiteral();
        else if (isWordStart(c))
            word();
        else if (isDigit(c))
            number();
        else
            sign(c);
    }

    void copy(std::size_t length) {
        out_.append(sql_.substr(at_, length));
        at_ += std::min(length, sql_.size() - at_);
    }
    void copyQuoted(char quote) {
        std::size_t end = at_ + 1;
        for (; end < sql_.size(); ++end) {
            if (sql_[end] != quote) continue;
            if (end + 1 >= sql_.size() || sql_[end + 1] != quote) break;
            ++end;
        }
        copy(end + 1 - at_);
    }
    void copyThrough(std::string_view end, std::size_t skip) {
        const std::size_t found = sql_.find(end, at_ + skip);
        copy(found == std::string_view::npos ? sql_.size() - at_ : found + end.size() - at_);
    }
    void dateLiteral() {
        const std::size_t end = sql_.find('#', at_ + 1);
        const auto iso = end == std::string_view::npos
                             ? std::nullopt
                             : isoOfDateLiteral(sql_.substr(at_ + 1, end - at_ - 1));
        if (!iso) {
            copy(1);
            return;
        }
        out_.append("'").append(*iso).append("'");
        if (!defines_) out_.append(" COLLATE ").append(dateCollation);
        at_ = end + 1;
    }
    void word() {
        std::size_t end = at_;
        while (end < sql_.size() &&
               (isWordStart(sql_[end]) || isDigit(sql_[end]) || sql_[end] == '$'))
            ++end;
        const std::string_view text = sql_.substr(at_, end - at_);
        if (!started_) defines_ = equalsText(text, "create") || equalsText(text, "alter");
        started_ = true;
        copy(text.size());
        if (equalsText(text, "iif")) openIif();
    }
    void openIif() {
        const std::size_t open = sql_.find_first_not_of(" \t\r\n", at_);
        if (open == std::string_view::npos || sql_[open] != '(') return;
        copy(open + 1 - at_);
        iifOpen_.push_back(true);
    }
    void number() {
        std::size_t end = at_;
        while (end < sql_.size() && (isDigit(sql_[end]) || isWordStart(sql_[end])))
            ++end;
        copy(end - at_);
    }
    void sign(char c) {
        if (c == '(') iifOpen_.push_back(false);
        if (c == ')' && !iifOpen_.empty()) iifOpen_.pop_back();
        if (c == ';' && !iifOpen_.empty() && iifOpen_.back()) {
            separator();
            return;
        }
        copy(1);
    }
    void separator() {
        ++at_;
        const std::size_t next = sql_.find_first_not_of(" \t\r\n", at_);
        if (next == std::string_view::npos || sql_[next] != ')') out_.append(",");
    }

    std::string_view sql_;
    std::string out_;
    std::size_t at_ = 0;
    bool started_ = false;
    bool defines_ = false;      // CREATE, ALTER: texts stay in the schema
    std::vector<bool> iifOpen_; // one an open parenthesis: is it an iif's
};

// Three numbers between two equal separators.
struct Triple {
    std::array<int, 3> numbers{};
    std::array<std::size_t, 3> digits{};
    char separator = '\0';
};

std::optional<Triple> readTriple(std::string_view text) {
    Triple t;
    for (std::size_t i = 0; i < 3; ++i) {
        const char* const end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data(), end, t.numbers[i]);
        t.digits[i] = static_cast<std::size_t>(rest - text.data());
        if (error != std::errc() || !isDigit(text.front()) || t.digits[i] > 4) return std::nullopt;
        text.remove_prefix(t.digits[i]);
        if (i == 2) break;
        if (text.empty() || (text[0] != '/' && text[0] != '-')) return std::nullopt;
        if (i == 1 && text[0] != t.separator) return std::nullopt;
        t.separator = text[0];
        text.remove_prefix(1);
        if (text.empty()) return std::nullopt;
    }
    return text.empty() ? std::optional(t) : std::nullopt;
}

std::string isoDate(int year, int month, int day) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, day);
    return text.data();
}

std::optional<std::string> readDate(std::string_view text) {
    const auto t = readTriple(text);
    if (!t) return std::nullopt;
    auto [a, b, c] = t->numbers;
    if (t->digits[0] == 4) {
        const std::string iso = isoDate(a, b, c);
        return parseIsoDate(iso) ? std::optional(iso) : std::nullopt;
    }
    int month = t->separator == '/' ? a : b;
    int day = t->separator == '/' ? b : a;
    if (month > 12) std::swap(month, day);
    if (t->digits[2] <= 2) c += c < 30 ? 2000 : 1900;
    const std::string iso = isoDate(c, month, day);
    return parseIsoDate(iso) ? std::optional(iso) : std::nullopt;
}

// "h:mm[:ss]", with AM or PM behind it where the clock has twelve hours.
std::optional<std::string> readTime(std::string_view text) {
    const bool pm = text.size() > 2 && equalsText(text.substr(text.size() - 2), "PM");
    const bool am = text.size() > 2 && equalsText(text.substr(text.size() - 2), "AM");
    std::string digits = trimText(am || pm ? text.substr(0, text.size() - 2) : text);
    const std::size_t colon = digits.find(':');
    if (colon == std::string::npos || colon == 0 || colon > 2) return std::nullopt;
    int hour = 0;
    const auto end = std::from_chars(digits.data(), digits.data() + colon, hour).ptr;
    if (end != digits.data() + colon || hour < 0) return std::nullopt;
    if ((am || pm) && (hour < 1 || hour > 12)) return std::nullopt;
    if (am || pm) hour = hour % 12 + (pm ? 12 : 0);
    std::string iso = hour < 10 ? "0" : "";
    iso.append(std::to_string(hour)).append(digits.substr(colon));
    if (iso.size() == 5) iso += ":00";
    return iso.size() == 8 && parseIsoDate(iso) ? std::optional(iso) : std::nullopt;
}

} // namespace

std::optional<std::string> isoOfDateLiteral(std::string_view literal) {
    const std::string text = trimText(literal);
    if (text.empty() || text.size() > 30) return std::nullopt;
    const std::size_t blank = text.find(' ');
    if (auto date = readDate(std::string_view(text).substr(0, blank))) {
        if (blank == std::string::npos) return date;
        const auto time = readTime(trimText(std::string_view(text).substr(blank)));
        return time ? std::optional(*date + " " + *time) : std::nullopt;
    }
    return readTime(text);
}

std::string translateAccessNotation(std::string_view statement) {
    return Translator(statement).translate();
}

} // namespace norvel::adodb
