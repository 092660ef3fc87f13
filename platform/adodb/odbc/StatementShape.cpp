#include "platform/adodb/odbc/StatementShape.h"

#include "platform/runtime/Text.h"

#include <algorithm>
#include <initializer_list>

namespace norvel::adodb {

namespace {

bool isWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || c == '@' || c == '#' || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

bool among(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::ranges::any_of(words,
                               [&](std::string_view each) { return equalsText(each, word); });
}

// Words by which a reading statement asks for, or leaves, something of the connection's own.
bool isOwn(std::string_view word) {
    return word.front() == '@' || word.front() == '#' ||
           among(word,
                 {"into", "update", "share", "last_insert_id", "lastval", "currval",
                  "connection_id", "pg_backend_pid", "found_rows", "row_count", "pg_temp",
                  "scope_identity", "current_setting", "set_config", "get_lock", "release_lock"});
}

} // namespace

std::vector<std::string_view> statementTokens(std::string_view sql) {
    std::vector<std::string_view> found;
    std::size_t at = 0;
    const auto skipTo = [&](std::string_view end) {
        const std::size_t stop = sql.find(end, at);
        at = stop == std::string_view::npos ? sql.size() : stop + end.size();
    };
    while (at < sql.size()) {
        const char c = sql[at];
        const std::size_t start = at;
        if (c == '\'' || c == '"' || c == '`' || c == '[') {
            const char close = c == '[' ? ']' : c;
            ++at;
            skipTo(std::string_view(&close, 1));
            found.push_back(sql.substr(start, c == '\'' ? 1 : at - start));
        } else if (sql.substr(at, 2) == "--") {
            skipTo("\n");
        } else if (sql.substr(at, 2) == "/*") {
            skipTo("*/");
        } else if (isWord(c)) {
            while (at < sql.size() && isWord(sql[at]))
                ++at;
            found.push_back(sql.substr(start, at - start));
        } else {
            ++at;
            if (c != ' ' && c != '\t' && c != '\r' && c != '\n')
                found.push_back(sql.substr(start, 1));
        }
    }
    return found;
}

StatementKind kindOfStatement(std::string_view sql) {
    const auto words = statementTokens(sql);
    const auto first =
        std::ranges::find_if(words, [](std::string_view word) { return word != "("; });
    if (first == words.end()) return StatementKind::Own;
    const auto anyAfter = [&](auto test) { return std::any_of(first + 1, words.end(), test); };
    if (among(*first, {"select", "with", "values", "table", "show", "describe", "explain"})) {
        const bool changes = equalsText(*first, "with") && anyAfter([](std::string_view word) {
                                 return among(word, {"insert", "delete"});
                             });
        return changes || anyAfter(isOwn) ? StatementKind::Own : StatementKind::Reads;
    }
    if (among(*first, {"insert", "update", "delete", "replace", "merge"}))
        return StatementKind::Writes;
    const bool definition = among(*first, {"create", "drop", "alter", "truncate"});
    const bool temporary = anyAfter([](std::string_view word) {
        return word.front() == '#' || among(word, {"temporary", "temp"});
    });
    return definition && !temporary ? StatementKind::Writes : StatementKind::Own;
}

bool readsOneTable(std::string_view sql) {
    const auto words = statementTokens(sql);
    if (words.empty() || !equalsText(words.front(), "select")) return false;
    const auto counted = [&](std::string_view word) {
        return std::ranges::count_if(words,
                                     [&](std::string_view w) { return equalsText(w, word); });
    };
    if (counted("select") != 1 || counted("from") != 1) return false;
    for (const auto* word : {"join", "union", "intersect", "except", "minus", "apply"})
        if (counted(word) != 0) return false;
    auto at = std::ranges::find_if(words, [](std::string_view w) { return equalsText(w, "from"); });
    for (++at; at != words.end() && !equalsText(*at, "where"); ++at) {
        if (equalsText(*at, "group") || equalsText(*at, "order")) break;
        if (*at == "," || *at == "(") return false;
    }
    return true;
}

} // namespace norvel::adodb
