#include "platform/adodb/client/CommandKind.h"

#include "platform/adodb/Errors.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <iterator>

namespace norvel::adodb {

namespace {

constexpr std::string_view wordStatements[] = {"begin",  "commit",  "end",     "rollback",
                                               "vacuum", "analyze", "reindex", "values"};

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

// Takes one name off the front; false where there is none.
bool takeName(std::string_view& text) {
    if (text.empty()) return false;
    const char first = text.front();
    if (first == '[' || first == '"' || first == '`') {
        const std::size_t end = text.find(first == '[' ? ']' : first, 1);
        if (end == std::string_view::npos || end == 1) return false;
        text.remove_prefix(end + 1);
        return true;
    }
    const auto* end = std::ranges::find_if_not(text, isNameCharacter);
    if (end == text.begin()) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return true;
}

} // namespace

bool isTableName(std::string_view text) {
    const std::string trimmed = trimText(text);
    const bool statement = std::ranges::any_of(
        wordStatements, [&](std::string_view word) { return equalsText(word, trimmed); });
    if (statement) return false;
    std::string_view rest = trimmed;
    while (takeName(rest)) {
        if (rest.empty()) return true;
        if (rest.front() != '.') return false;
        rest.remove_prefix(1);
    }
    return false;
}

std::string statementFor(const Session& session, const std::string& text, CommandTypeEnum type) {
    if (trimText(text).empty()) throw adoError(dbNoCommand);
    switch (type) {
    case adCmdText:
        return text;
    case adCmdTable:
    case adCmdTableDirect:
        return session.tableQuery(text);
    case adCmdUnknown:
    case adCmdUnspecified:
        return isTableName(text) ? session.tableQuery(text) : text;
    case adCmdStoredProc:
        throw adoError(adErrFeatureNotAvailable, "Il provider non ha procedure memorizzate.");
    case adCmdFile:
        break;
    }
    throw adoError(adErrFeatureNotAvailable, "Un recordset non si può aprire da un file.");
}

} // namespace norvel::adodb
