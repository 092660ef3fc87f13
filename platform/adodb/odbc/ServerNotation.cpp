#include "platform/adodb/odbc/ServerNotation.h"

#include "platform/adodb/odbc/NeutralTokens.h"
#include "platform/adodb/odbc/OdbcIdentity.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace norvel::adodb {

namespace {

using Kind = NeutralToken::Kind;

struct Interval {
    std::string_view name;
    // The difference of $a and $b on each server; "": the server has none of its own.
    std::string_view mySql;
    std::string_view postgreSql;
    std::string_view sqlServer;
};

// Borders of the interval between two moments, as Access counts them.
constexpr Interval intervals[] = {
    {"d", "DATEDIFF($b, $a)", "(CAST($b AS date) - CAST($a AS date))", "DATEDIFF(day, $a, $b)"},
    {"y", "DATEDIFF($b, $a)", "(CAST($b AS date) - CAST($a AS date))", "DATEDIFF(day, $a, $b)"},
    {"yyyy", "(YEAR($b) - YEAR($a))",
     "CAST(EXTRACT(year FROM CAST($b AS timestamp)) - EXTRACT(year FROM CAST($a AS timestamp)) AS "
     "integer)",
     "DATEDIFF(year, $a, $b)"},
    {"q", "(YEAR($b) * 4 + QUARTER($b) - YEAR($a) * 4 - QUARTER($a))",
     "CAST((EXTRACT(year FROM CAST($b AS timestamp)) - EXTRACT(year FROM CAST($a AS timestamp))) * "
     "4 + EXTRACT(quarter FROM CAST($b AS timestamp)) - EXTRACT(quarter FROM CAST($a AS "
     "timestamp)) AS integer)",
     "DATEDIFF(quarter, $a, $b)"},
    {"m", "(YEAR($b) * 12 + MONTH($b) - YEAR($a) * 12 - MONTH($a))",
     "CAST((EXTRACT(year FROM CAST($b AS timestamp)) - EXTRACT(year FROM CAST($a AS timestamp))) * "
     "12 + EXTRACT(month FROM CAST($b AS timestamp)) - EXTRACT(month FROM CAST($a AS timestamp)) "
     "AS integer)",
     "DATEDIFF(month, $a, $b)"},
    {"h", "(TO_SECONDS($b) DIV 3600 - TO_SECONDS($a) DIV 3600)",
     "CAST(EXTRACT(epoch FROM date_trunc('hour', CAST($b AS timestamp)) - date_trunc('hour', "
     "CAST($a AS timestamp))) / 3600 AS integer)",
     "DATEDIFF(hour, $a, $b)"},
    {"n", "(TO_SECONDS($b) DIV 60 - TO_SECONDS($a) DIV 60)",
     "CAST(EXTRACT(epoch FROM date_trunc('minute', CAST($b AS timestamp)) - date_trunc('minute', "
     "CAST($a AS timestamp))) / 60 AS integer)",
     "DATEDIFF(minute, $a, $b)"},
    {"s", "(TO_SECONDS($b) - TO_SECONDS($a))",
     "CAST(EXTRACT(epoch FROM date_trunc('second', CAST($b AS timestamp)) - date_trunc('second', "
     "CAST($a AS timestamp))) AS integer)",
     "DATEDIFF(second, $a, $b)"},
    {"ww", "", "", "DATEDIFF(week, $a, $b)"},
};

std::string_view formOf(const Interval& interval, ServerKind kind) {
    if (kind == ServerKind::MySql) return interval.mySql;
    return kind == ServerKind::PostgreSql ? interval.postgreSql : interval.sqlServer;
}

std::string dateText(const std::string& iso, ServerKind kind) {
    const bool time = iso.find(':') != std::string::npos;
    const bool date = iso.find('-') != std::string::npos;
    if (kind == ServerKind::MySql || kind == ServerKind::PostgreSql)
        return (time && date ? "TIMESTAMP '" : time ? "TIME '" : "DATE '") + iso + "'";
    const std::string moment = date && !time ? iso + " 00:00:00" : iso;
    return "CONVERT(DATETIME, '" + moment + "', 120)";
}

class Writer {
  public:
    Writer(std::string_view statement, ServerKind kind, const NameSet& booleans)
        : tokens_(neutralTokens(statement)), kind_(kind), booleans_(booleans) {}

    std::string write() { return write(0, tokens_.size()); }

  private:
    using Range = std::pair<std::size_t, std::size_t>;

    std::string write(std::size_t from, std::size_t to) {
        std::string out;
        for (std::size_t at = from; at < to;)
            at = writeOne(out, at, to);
        return out;
    }

    // Writes the token, and those that belong to it; the place behind them.
    std::size_t writeOne(std::string& out, std::size_t at, std::size_t to) {
        const NeutralToken& token = tokens_[at];
        if (kind_ == ServerKind::Access && token.kind != Kind::Word && token.kind != Kind::Number) {
            out += token.text;
            return at + 1;
        }
        switch (token.kind) {
        case Kind::Word:
            return writeWord(out, at, to);
        case Kind::Number:
            return writeNumber(out, at, to);
        case Kind::Bracket:
            out += bracketed(token.value);
            return at + 1;
        case Kind::Date:
            out += dateText(token.value, kind_);
            return at + 1;
        case Kind::Text:
            out += kind_ == ServerKind::MySql ? replaceText(token.text, "\\", "\\\\")
                                              : std::string(token.text);
            return at + 1;
        default:
            out += token.text;
            return at + 1;
        }
    }

    std::string bracketed(const std::string& name) const {
        if (kind_ == ServerKind::PostgreSql && isPlainName(name))
            return quotedName(kind_, foldText(name));
        return quotedName(kind_, name);
    }

    std::size_t writeWord(std::string& out, std::size_t at, std::size_t to) {
        const std::string_view word = tokens_[at].text;
        if ((kind_ == ServerKind::SqlServer || kind_ == ServerKind::Access) &&
            (equalsText(word, "True") || equalsText(word, "False"))) {
            out += numberOf(equalsText(word, "True"));
            return at + 1;
        }
        if (kind_ != ServerKind::Access)
            if (const auto end = writeCall(out, word, at, to)) return *end;
        if (kind_ == ServerKind::PostgreSql)
            if (const auto end = writeLike(out, at, to)) return *end;
        if (const auto end = writeBoolean(out, at, to)) return *end;
        out += word;
        return at + 1;
    }

    std::string_view numberOf(bool truth) const {
        if (!truth) return "0";
        return kind_ == ServerKind::Access ? "-1" : "1";
    }

    // --- calls ---

    std::optional<std::size_t> writeCall(std::string& out, std::string_view word, std::size_t at,
                                         std::size_t to) {
        const bool iif = equalsText(word, "iif");
        const bool difference = equalsText(word, "datediff");
        const bool trims = kind_ == ServerKind::PostgreSql && equalsText(word, "rtrim");
        if (!iif && !difference && !trims) return std::nullopt;
        const std::size_t open = after(at, to);
        if (open >= to || tokens_[open].text != "(") return std::nullopt;
        std::size_t close = open;
        const std::vector<Range> arguments = argumentsOf(open, to, iif, close);
        if (close >= to) return std::nullopt;
        const bool written = iif          ? writeIif(out, arguments)
                             : difference ? writeDifference(out, arguments)
                                          : writeTrim(out, arguments);
        return written ? std::optional(close + 1) : std::nullopt;
    }

    std::string argument(Range range) { return trimText(write(range.first, range.second)); }

    bool writeIif(std::string& out, const std::vector<Range>& a) {
        if (a.size() != 3) return false;
        if (kind_ == ServerKind::MySql)
            out += "IF(" + argument(a[0]) + ", " + argument(a[1]) + ", " + argument(a[2]) + ")";
        else
            out += "CASE WHEN " + argument(a[0]) + " THEN " + argument(a[1]) + " ELSE " +
                   argument(a[2]) + " END";
        return true;
    }
    bool writeDifference(std::string& out, const std::vector<Range>& a) {
        if (a.size() != 3) return false;
        const std::string name = argument(a[0]);
        const auto* found = std::ranges::find_if(intervals, [&](const Interval& interval) {
            return equalsText(name, "'" + std::string(interval.name) + "'");
        });
        if (found == std::end(intervals) || formOf(*found, kind_).empty()) return false;
        const std::string first = argument(a[1]);
        const std::string second = argument(a[2]);
        for (std::string_view form = formOf(*found, kind_); !form.empty();) {
            const std::size_t place = std::min(form.find('$'), form.size());
            out += form.substr(0, place);
            if (place == form.size()) break;
            out += form[place + 1] == 'a' ? first : second;
            form.remove_prefix(place + 2);
        }
        return true;
    }
    bool writeTrim(std::string& out, const std::vector<Range>& a) {
        if (a.size() != 1) return false;
        out += "rtrim((" + argument(a[0]) + ")::text)";
        return true;
    }

    // The arguments between the parenthesis at open and its fellow, whose place goes to close. An
    // iif's may be separated by ';', and its last one followed by one.
    std::vector<Range> argumentsOf(std::size_t open, std::size_t to, bool iif, std::size_t& close) {
        std::vector<Range> arguments;
        std::size_t start = open + 1;
        int depth = 0;
        for (close = open; close < to; ++close) {
            const NeutralToken& token = tokens_[close];
            if (token.kind != Kind::Sign) continue;
            if (token.text == "(") ++depth;
            if (token.text == ")" && --depth == 0) break;
            if (depth == 1 && (token.text == "," || (iif && token.text == ";"))) {
                arguments.emplace_back(start, close);
                start = close + 1;
            }
        }
        if (!iif || !blank(start, close)) arguments.emplace_back(start, close);
        return arguments;
    }

    // --- what PostgreSQL, and in part Access, has otherwise ---

    std::optional<std::size_t> writeLike(std::string& out, std::size_t at, std::size_t to) {
        std::size_t like = at;
        const bool negated = equalsText(tokens_[at].text, "not");
        if (negated) like = after(at, to);
        if (like >= to || !equalsText(tokens_[like].text, "like")) return std::nullopt;
        while (!out.empty() && out.back() == ' ')
            out.pop_back();
        out += negated ? "::text NOT ILIKE " : "::text ILIKE ";
        const std::size_t pattern = after(like, to);
        if (pattern >= to || tokens_[pattern].kind != Kind::Text) return like + 1;
        out += tokens_[pattern].text;
        const std::size_t next = after(pattern, to);
        if (next >= to || !equalsText(tokens_[next].text, "escape")) out += " ESCAPE ''";
        return pattern + 1;
    }

    bool isBoolean(std::size_t at) const {
        return !booleans_.empty() && booleans_.contains(std::string(tokens_[at].text));
    }
    bool comparison(std::size_t at, std::size_t to) const {
        return at < to && (tokens_[at].text == "=" || tokens_[at].text == "<>");
    }
    // column = number
    std::optional<std::size_t> writeBoolean(std::string& out, std::size_t at, std::size_t to) {
        if (!isBoolean(at)) return std::nullopt;
        const std::size_t sign = after(at, to);
        if (!comparison(sign, to)) return std::nullopt;
        std::size_t number = after(sign, to);
        if (number < to && tokens_[number].text == "-") number = after(number, to);
        if (number >= to || tokens_[number].kind != Kind::Number) return std::nullopt;
        out.append(tokens_[at].text).append(tokens_[sign].text).append(truth(number));
        return number + 1;
    }
    // number = column
    std::size_t writeNumber(std::string& out, std::size_t at, std::size_t to) {
        const std::size_t sign = after(at, to);
        std::size_t name = comparison(sign, to) ? after(sign, to) : to;
        while (name + 2 < to && tokens_[name].kind == Kind::Word && tokens_[name + 1].text == ".")
            name += 2;
        if (name < to && tokens_[name].kind == Kind::Word && isBoolean(name)) {
            if (out.ends_with('-')) out.pop_back();
            out += truth(at);
        } else {
            out += tokens_[at].text;
        }
        return at + 1;
    }
    std::string_view truth(std::size_t number) const {
        const bool zero = tokens_[number].text.find_first_not_of("0.") == std::string_view::npos;
        if (kind_ == ServerKind::Access) return numberOf(!zero);
        return zero ? "FALSE" : "TRUE";
    }

    // --- places ---

    std::size_t after(std::size_t at, std::size_t to) const {
        for (++at; at < to && tokens_[at].kind == Kind::Blank;)
            ++at;
        return at;
    }
    bool blank(std::size_t from, std::size_t to) const {
        for (; from < to; ++from)
            if (tokens_[from].kind != Kind::Blank) return false;
        return true;
    }

    std::vector<NeutralToken> tokens_;
    ServerKind kind_;
    const NameSet& booleans_;
};

} // namespace

std::string serverNotation(std::string_view statement, ServerKind kind, const NameSet& booleans) {
    if (kind == ServerKind::Other) return std::string(statement);
    return Writer(statement, kind, booleans).write();
}

std::string serverNames(std::string_view text, ServerKind kind) {
    std::string out;
    for (const NeutralToken& token : neutralTokens(text))
        out +=
            token.kind == Kind::Bracket ? quotedName(kind, token.value) : std::string(token.text);
    return out;
}

bool isPlainName(std::string_view name) {
    if (name.empty() || (name.front() >= '0' && name.front() <= '9')) return false;
    return std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_';
    });
}

std::vector<std::string> plainWords(std::string_view statement) {
    NameSet words;
    for (const NeutralToken& token : neutralTokens(statement)) {
        if (token.kind == Kind::Word && isPlainName(token.text))
            words.insert(std::string(token.text));
        if (token.kind == Kind::Bracket && isPlainName(token.value)) words.insert(token.value);
    }
    return {words.begin(), words.end()};
}

} // namespace norvel::adodb
