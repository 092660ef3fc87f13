#include "platform/adodb/odbc/OdbcConnection.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/odbc/OdbcText.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <odbcinst.h>
#include <optional>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr SQLSMALLINT textSize = 2048; // of names and messages, characters

// An environment for as long as the object lives.
class Environment {
  public:
    Environment() {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle_);
        SQLSetEnvAttr(handle_, SQL_ATTR_ODBC_VERSION, odbcNumber(SQL_OV_ODBC3), 0);
    }
    ~Environment() { SQLFreeHandle(SQL_HANDLE_ENV, handle_); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    SQLHENV get() const { return handle_; }

  private:
    SQLHENV handle_ = SQL_NULL_HENV;
};

// What SQLDrivers and SQLDataSources list, by their common shape.
template <class List>
std::vector<OdbcEntry> entries(List list) {
    const Environment environment;
    std::vector<OdbcEntry> found;
    std::array<SQLCHAR, textSize> name{};
    std::array<SQLCHAR, textSize> driver{};
    SQLSMALLINT lengths[2] = {};
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (succeeded(list(environment.get(), direction, name.data(), textSize, &lengths[0],
                          driver.data(), textSize, &lengths[1]))) {
        found.push_back({reinterpret_cast<const char*>(name.data()),
                         reinterpret_cast<const char*>(driver.data())});
        direction = SQL_FETCH_NEXT;
    }
    return found;
}

// "10.11.000019" is 10.11.
bool reaches(const std::string& version, int major, int minor) {
    int parts[2] = {};
    const char* at = version.data();
    const char* const end = at + version.size();
    for (int& part : parts) {
        const auto read = std::from_chars(at, end, part);
        if (read.ec != std::errc()) return false;
        at = std::min(read.ptr + 1, end);
    }
    return std::pair(parts[0], parts[1]) >= std::pair(major, minor);
}

} // namespace

std::vector<OdbcEntry> odbcDrivers() {
    return entries(SQLDrivers);
}

std::vector<OdbcEntry> odbcSources() {
    return entries(SQLDataSources);
}

std::string odbcSourceSetting(const std::string& source, const std::string& keyword) {
    std::array<char, 4096> value{};
    SQLGetPrivateProfileString(source.c_str(), keyword.c_str(), "", value.data(), value.size(),
                               "odbc.ini");
    return value.data();
}

std::shared_ptr<OdbcConnection> OdbcConnection::open(const OdbcTarget& target) {
    std::shared_ptr<OdbcConnection> connection(new OdbcConnection(target));
    connection->connect();
    return connection;
}

void OdbcConnection::connect() {
    if (!succeeded(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env_)))
        throw adoError(oleOutOfMemory);
    SQLSetEnvAttr(env_, SQL_ATTR_ODBC_VERSION, odbcNumber(SQL_OV_ODBC3), 0);
    if (!succeeded(SQLAllocHandle(SQL_HANDLE_DBC, env_, &dbc_))) throw adoError(oleOutOfMemory);
    SQLSetConnectAttr(dbc_, SQL_ATTR_LOGIN_TIMEOUT, odbcNumber(15), 0);
    std::string text = driverString(target_);
    SQLRETURN result = SQL_ERROR;
    if (target_.narrow) {
        result = SQLDriverConnect(dbc_, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                                  nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    } else {
        std::vector<SQLWCHAR> wide = odbcWide(text);
        result = SQLDriverConnectW(dbc_, nullptr, wide.data(), SQL_NTS, nullptr, 0, nullptr,
                                   SQL_DRIVER_NOPROMPT);
    }
    if (!succeeded(result)) throw error(SQL_HANDLE_DBC, dbc_);
    connected_ = true;
    const std::string name = info(SQL_DBMS_NAME);
    const ServerKind told = kindOfName(name);
    if (told != ServerKind::Other) target_.kind = told;
    returnsInserted_ =
        kind() == ServerKind::PostgreSql || (findText(name, "maria") != std::string::npos &&
                                             reaches(info(SQL_DBMS_VER), 10, 5)); // MySQL cannot
    if (kind() == ServerKind::PostgreSql) backend_ = number("SELECT pg_backend_pid()");
}

// The first value of a query; 0 where it has none.
std::int64_t OdbcConnection::number(const char* query) const {
    SQLHSTMT statement = SQL_NULL_HSTMT;
    if (!succeeded(SQLAllocHandle(SQL_HANDLE_STMT, dbc_, &statement))) return 0;
    std::int64_t value = 0;
    SQLLEN length = 0;
    std::string text = query;
    const bool got =
        succeeded(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS)) &&
        succeeded(SQLFetch(statement)) &&
        succeeded(SQLGetData(statement, 1, SQL_C_SBIGINT, &value, sizeof value, &length)) &&
        length != SQL_NULL_DATA;
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    return got ? value : 0;
}

void OdbcConnection::cancelBeside() const noexcept {
    if (backend_ == 0) return;
    try {
        open(target_)->number(
            ("SELECT pg_cancel_backend(" + std::to_string(backend_) + ")").c_str());
    } catch (...) { // the server takes no other connection: whoever waits goes on waiting
        return;
    }
}

OdbcConnection::~OdbcConnection() {
    if (connected_) SQLDisconnect(dbc_);
    if (dbc_) SQLFreeHandle(SQL_HANDLE_DBC, dbc_);
    if (env_) SQLFreeHandle(SQL_HANDLE_ENV, env_);
}

std::vector<OdbcDiagnostic> OdbcConnection::diagnostics(SQLSMALLINT type, SQLHANDLE handle) const {
    std::vector<OdbcDiagnostic> found;
    for (SQLSMALLINT record = 1;; ++record) {
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        OdbcDiagnostic diagnostic;
        if (target_.narrow) {
            std::array<SQLCHAR, 6> state{};
            std::array<SQLCHAR, textSize> text{};
            if (!succeeded(SQLGetDiagRec(type, handle, record, state.data(), &native, text.data(),
                                         textSize, &length)))
                return found;
            diagnostic.state = reinterpret_cast<const char*>(state.data());
            diagnostic.text = reinterpret_cast<const char*>(text.data());
        } else {
            std::array<SQLWCHAR, 6> state{};
            std::array<SQLWCHAR, textSize> text{};
            if (!succeeded(SQLGetDiagRecW(type, handle, record, state.data(), &native, text.data(),
                                          textSize, &length)))
                return found;
            diagnostic.state = odbcNarrow(state.data(), 5);
            diagnostic.text = odbcNarrow(
                text.data(), static_cast<std::size_t>(std::min<int>(length, textSize - 1)));
        }
        diagnostic.native = native;
        found.push_back(std::move(diagnostic));
    }
}

// The record that says most: a lost connection, or the first that is no mere warning.
Errore OdbcConnection::error(SQLSMALLINT type, SQLHANDLE handle) {
    const auto records = diagnostics(type, handle);
    if (records.empty()) return adoError(oleFail, "(il driver ODBC non dice altro)");
    const OdbcDiagnostic* first = nullptr;
    for (const OdbcDiagnostic& record : records) {
        if (record.linkBroken()) broken_ = true;
        if (!first && !record.state.starts_with("01")) first = &record;
    }
    return odbcError(first ? *first : records.front(), target_.place, target_.password);
}

std::string OdbcConnection::info(SQLUSMALLINT what) const {
    std::array<SQLCHAR, textSize> text{};
    SQLSMALLINT length = 0;
    if (!succeeded(SQLGetInfo(dbc_, what, text.data(), textSize, &length))) return {};
    return reinterpret_cast<const char*>(text.data());
}

void OdbcConnection::setAutocommit(bool on) {
    const auto value = odbcNumber(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF);
    if (!succeeded(SQLSetConnectAttr(dbc_, SQL_ATTR_AUTOCOMMIT, value, SQL_IS_UINTEGER)))
        throw error(SQL_HANDLE_DBC, dbc_);
}

void OdbcConnection::beginTransaction() {
    setAutocommit(false);
}

void OdbcConnection::endTransaction(bool commit) {
    try {
        if (!succeeded(SQLEndTran(SQL_HANDLE_DBC, dbc_, commit ? SQL_COMMIT : SQL_ROLLBACK)))
            throw error(SQL_HANDLE_DBC, dbc_);
    } catch (const Errore&) {
        if (!commit) broken_ = true;
        throw;
    }
    try {
        setAutocommit(true);
        if (!commit && kind() == ServerKind::PostgreSql) rollBackByWord();
    } catch (const Errore&) { // what was committed stays so: the connection alone is of no use
        broken_ = true;
        if (!commit) throw;
    }
}

// PostgreSQL's driver at times takes a transaction in which a statement failed for one that has
// ended, and does nothing: the server would refuse every statement to come. A word too many only
// makes the server warn.
void OdbcConnection::rollBackByWord() {
    SQLHSTMT statement = SQL_NULL_HSTMT;
    if (!succeeded(SQLAllocHandle(SQL_HANDLE_STMT, dbc_, &statement)))
        throw error(SQL_HANDLE_DBC, dbc_);
    SQLCHAR word[] = "ROLLBACK";
    const bool done = succeeded(SQLExecDirect(statement, word, SQL_NTS));
    std::optional<Errore> failure;
    if (!done) failure = error(SQL_HANDLE_STMT, statement);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    if (failure) throw Errore(*failure);
}

} // namespace norvel::adodb
