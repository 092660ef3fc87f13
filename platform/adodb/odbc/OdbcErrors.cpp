#include "platform/adodb/odbc/OdbcErrors.h"

#include "platform/adodb/Errors.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <string_view>

namespace norvel::adodb {

namespace {

enum class Meaning {
    NoDriver,
    Refused,
    Broken,
    Cancelled,
    Timeout,
    Locked,
    Integrity,
    NoTable,
    Statement
};

struct Code {
    std::string_view state; // the beginning of an SQLSTATE; "": any
    long native;            // 0: any
    Meaning meaning;
};

// The first that fits counts. Sources: the SQLSTATEs of ODBC's appendix A and of PostgreSQL's
// appendix A, the error numbers of MariaDB's and SQL Server's references.
constexpr Code codes[] = {
    {"IM", 0, Meaning::NoDriver},     {"28", 0, Meaning::Refused},
    {"", 1045, Meaning::Refused},     {"", 18456, Meaning::Refused},
    {"08", 0, Meaning::Broken},       {"57P", 0, Meaning::Broken},
    {"", 2002, Meaning::Broken},      {"", 2005, Meaning::Broken},
    {"", 2003, Meaning::Broken},      {"", 2006, Meaning::Broken},
    {"", 2013, Meaning::Broken},      {"", 2055, Meaning::Broken},
    {"", 1927, Meaning::Broken},      {"", 20003, Meaning::Timeout},
    {"", 20004, Meaning::Broken},     {"", 20006, Meaning::Broken},
    {"HY008", 0, Meaning::Cancelled}, {"HY018", 0, Meaning::Cancelled},
    {"57014", 0, Meaning::Cancelled}, {"", 1317, Meaning::Cancelled},
    {"HYT0", 0, Meaning::Timeout},    {"", 1205, Meaning::Locked},
    {"", 1213, Meaning::Locked},      {"55P03", 0, Meaning::Locked},
    {"40", 0, Meaning::Locked},       {"23", 0, Meaning::Integrity},
    {"42S02", 0, Meaning::NoTable},   {"42P01", 0, Meaning::NoTable},
    {"", 1146, Meaning::NoTable},     {"42", 0, Meaning::Statement},
    {"37", 0, Meaning::Statement},    {"22", 0, Meaning::Statement},
};

// What drivers say of a lost connection under a code for anything.
constexpr std::string_view lostTexts[] = {
    "reset by peer",
    "broken pipe",
    "gone away",
    "lost connection",
    "server closed the",
    "no connection to the server",
    "terminating connection",
    "could not receive data",
    "could not send data",
};

bool tellsLost(const std::string& text) {
    return std::ranges::any_of(lostTexts, [&](std::string_view words) {
        return findText(text, words) != std::string::npos;
    });
}

const Code* meaningOf(const OdbcDiagnostic& diagnostic) {
    static constexpr Code refused{"", 0, Meaning::Refused};
    static constexpr Code lost{"", 0, Meaning::Broken};
    if (tellsLost(diagnostic.text)) return &lost;
    if (findText(diagnostic.text, "password authentication failed") != std::string::npos)
        return &refused; // PostgreSQL's driver tells only that it did not connect
    const auto* found = std::ranges::find_if(codes, [&](const Code& code) {
        return diagnostic.state.starts_with(code.state) &&
               (code.native == 0 || code.native == diagnostic.native);
    });
    return found == std::end(codes) ? nullptr : found;
}

// A line's end, with the tabs that set the next one in, is one blank.
std::string inOneLine(const std::string& text) {
    std::string line;
    bool broken = false;
    for (const char c : text) {
        const bool breaks = c == '\r' || c == '\n' || c == '\t';
        if (breaks && !broken && !line.ends_with(' ')) line += ' ';
        if (!breaks && !(broken && c == ' ')) line += c;
        broken = breaks || (broken && c == ' ');
    }
    return line;
}

void cutFront(std::string& text, std::string_view word) {
    if (text.starts_with(word)) text = trimText(std::string_view(text).substr(word.size()));
}

void hide(std::string& text, const std::string& secret) {
    for (std::size_t at = text.find(secret); at != std::string::npos;
         at = text.find(secret, at + 3))
        text.replace(at, secret.size(), "***");
}

// As it is, as a connection string has it between braces, and as a literal.
std::string withoutSecret(std::string text, const std::string& secret) {
    if (secret.empty()) return text;
    hide(text, replaceText(secret, "}", "}}"));
    hide(text, replaceText(secret, "'", "''"));
    hide(text, secret);
    return text;
}

} // namespace

bool OdbcDiagnostic::linkBroken() const {
    const Code* code = meaningOf(*this);
    return code && code->meaning == Meaning::Broken;
}

std::string plainText(const std::string& driverText) {
    std::string text = trimText(driverText);
    while (text.starts_with('[')) {
        const std::size_t end = text.find(']');
        if (end == std::string::npos) break;
        text = trimText(std::string_view(text).substr(end + 1));
    }
    cutFront(text, "ERROR:");
    cutFront(text, "FATAL:");
    text = trimText(replaceText(text, ";\nError while executing the query", ""));
    return trimText(inOneLine(text));
}

Errore odbcError(const OdbcDiagnostic& diagnostic, const std::string& place,
                 const std::string& secret) {
    const std::string text = withoutSecret(plainText(diagnostic.text), secret);
    const std::string detail = "(" + text + ")";
    const Code* code = meaningOf(diagnostic);
    if (!code) return adoError(oleFail, text);
    switch (code->meaning) {
    case Meaning::NoDriver:
        return adoError(adErrProviderNotFound, "Il driver ODBC di «" + place +
                                                   "» non si trova su questo sistema. " + detail);
    case Meaning::Refused:
        return adoError(dbAuthFailed, detail);
    case Meaning::Broken:
        return {oleFail, "La connessione con «" + place + "» non c'è o si è interrotta. " + detail};
    case Meaning::Cancelled:
        return adoError(adErrOperationCancelled);
    case Meaning::Timeout:
        return adoError(dbCommandTimeout);
    case Meaning::Locked:
        return {oleFail, "Il database «" + place +
                             "» ha i dati bloccati da altri. Riprovare tra poco. " + detail};
    case Meaning::Integrity:
        return adoError(dbIntegrityViolation, detail);
    case Meaning::NoTable:
        return adoError(dbNoTable, detail);
    case Meaning::Statement:
        break;
    }
    return adoError(dbErrorsInCommand, text);
}

} // namespace norvel::adodb
