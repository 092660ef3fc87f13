#include "platform/adodb/sqlite/SqliteErrors.h"

#include "platform/adodb/Errors.h"

#include <sqlite3.h>

#include <string_view>

namespace norvel::adodb {

namespace {

// SQLite's wording of a faulty statement and ours; what follows the prefix is the culprit.
struct Wording {
    std::string_view prefix;
    ErrorNumber number;
    std::string_view italian;
};

constexpr Wording wordings[] = {
    {"no such table: ", dbNoTable, "Non c'è la tabella o la vista"},
    {"no such column: ", dbErrorsInCommand, "Non c'è il campo"},
    {"ambiguous column name: ", dbErrorsInCommand, "Più tabelle hanno il campo"},
    {"no such function: ", dbErrorsInCommand, "Non c'è la funzione"},
    {"unrecognized token: ", dbErrorsInCommand, "Il testo non è comprensibile da"},
    {"wrong number of arguments to function ", dbErrorsInCommand,
     "Numero di argomenti errato per la funzione"},
};

std::string unquoted(std::string_view culprit) {
    if (culprit.size() >= 2 && culprit.front() == '"' && culprit.back() == '"')
        culprit = culprit.substr(1, culprit.size() - 2);
    return std::string(culprit);
}

Errore statementError(std::string_view message) {
    for (const Wording& w : wordings)
        if (message.starts_with(w.prefix))
            return adoError(w.number, std::string(w.italian) + " «" +
                                          unquoted(message.substr(w.prefix.size())) + "».");
    constexpr std::string_view syntax = ": syntax error";
    if (message.starts_with("near ") && message.ends_with(syntax)) {
        const auto culprit = message.substr(5, message.size() - 5 - syntax.size());
        return adoError(dbErrorsInCommand,
                        "Errore di sintassi vicino a «" + unquoted(culprit) + "».");
    }
    if (message == "incomplete input")
        return adoError(dbErrorsInCommand, "Il testo della query non è completo.");
    return adoError(dbErrorsInCommand, message);
}

} // namespace

Errore sqliteError(sqlite3* db, int result, const std::string& path) {
    const char* words = db ? sqlite3_errmsg(db) : sqlite3_errstr(result);
    const std::string file = "Il database «" + path + "»";
    switch (result & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {oleFail, file + " è bloccato da un altro programma. Riprovare tra poco."};
    case SQLITE_NOTADB:
        return {oleFail, "Il file «" + path + "» non è un database SQLite."};
    case SQLITE_CORRUPT:
        return {oleFail, file + " è danneggiato o incompleto."};
    case SQLITE_CANTOPEN:
        return {oleFail, "Impossibile aprire il database «" + path + "»."};
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return {oleFail, "Accesso negato al database «" + path + "»."};
    case SQLITE_READONLY:
        return {oleFail, file + " è di sola lettura."};
    case SQLITE_FULL:
        return {oleFail, "Il disco del database «" + path + "» è pieno."};
    case SQLITE_IOERR:
        return {oleFail, "Errore di lettura o scrittura del database «" + path + "»."};
    case SQLITE_NOMEM:
        return adoError(oleOutOfMemory);
    case SQLITE_INTERRUPT:
        return adoError(adErrOperationCancelled);
    case SQLITE_CONSTRAINT:
        return adoError(dbIntegrityViolation, std::string("(") + words + ")");
    case SQLITE_ERROR:
        return statementError(words);
    default:
        return adoError(oleFail, words);
    }
}

} // namespace norvel::adodb
