#include "platform/adodb/odbc/OdbcTarget.h"

#include "platform/adodb/provider/Dialetto.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <utility>

namespace norvel::adodb {

namespace {

using Words = std::span<const std::string_view>;

struct Sign {
    std::string_view part;
    ServerKind kind;
};

// Parts of the names of providers, drivers, libraries and products.
constexpr Sign signs[] = {
    {"mysql", ServerKind::MySql},          {"maria", ServerKind::MySql},
    {"maodbc", ServerKind::MySql},         {"postgre", ServerKind::PostgreSql},
    {"psqlodbc", ServerKind::PostgreSql},  {"pgnp", ServerKind::PostgreSql},
    {"sqloledb", ServerKind::SqlServer},   {"msoledbsql", ServerKind::SqlServer},
    {"sqlncli", ServerKind::SqlServer},    {"sql native client", ServerKind::SqlServer},
    {"sql server", ServerKind::SqlServer}, {"freetds", ServerKind::SqlServer},
    {"tdsodbc", ServerKind::SqlServer},    {"access", ServerKind::Access},
    {"jet.oledb", ServerKind::Access},     {"ace.oledb", ServerKind::Access},
    {"mdbtools", ServerKind::Access},      {"mdbodbc", ServerKind::Access},
};

// What each meaning is called in hosts' strings; the first of the driver's own list is the word
// that the driver is given.
constexpr std::string_view serverWords[] = {"Server",  "Servername", "Data Source",    "Host",
                                            "Address", "Addr",       "Network Address"};
constexpr std::string_view databaseWords[] = {"Database", "Initial Catalog", "DB"};
constexpr std::string_view userWords[] = {"UID", "User ID", "User", "Username", "User Name"};
constexpr std::string_view passwordWords[] = {"PWD", "Password"};
constexpr std::string_view fileWords[] = {"DBQ", "Data Source", "Database", "DefaultDir"};
// Windows' own, which no driver of here knows.
constexpr std::string_view windowsWords[] = {"Provider",
                                             "Driver",
                                             "DSN",
                                             "Extended Properties",
                                             "Persist Security Info",
                                             "Integrated Security",
                                             "Application Name",
                                             "APP",
                                             "Workstation ID",
                                             "WSID",
                                             "Use Procedure for Prepare",
                                             "Auto Translate",
                                             "Packet Size",
                                             "Use Encryption for Data",
                                             "Tag with column collation when possible",
                                             "Mode",
                                             "Locale Identifier",
                                             "Connect Timeout",
                                             "Trusted_Connection",
                                             "DataTypeCompatibility",
                                             "MARS Connection",
                                             "MultipleActiveResultSets",
                                             "OLE DB Services",
                                             "FIL",
                                             "DriverId",
                                             "MaxBufferSize",
                                             "PageTimeout",
                                             "Jet OLEDB:Database Password",
                                             "Jet OLEDB:System database"};

// A bit of the MySQL drivers' OPTION: rows affected are those found, not those changed.
constexpr int foundRows = 2;

constexpr std::string_view debianDriver(ServerKind kind) {
    switch (kind) {
    case ServerKind::MySql:
        return "MariaDB Unicode";
    case ServerKind::PostgreSql:
        return "PostgreSQL ANSI";
    case ServerKind::SqlServer:
        return "FreeTDS";
    case ServerKind::Access:
        return "MDBTools";
    case ServerKind::Other:
        break;
    }
    return {};
}

bool among(Words words, std::string_view word) {
    return std::ranges::any_of(words,
                               [&](std::string_view each) { return equalsText(each, word); });
}

class Translator {
  public:
    Translator(const ConnectionString& connection, const std::vector<OdbcEntry>& drivers,
               const std::vector<OdbcEntry>& sources)
        : pairs_(connection.pairs()), drivers_(drivers), sources_(sources) {
        const Dialetto dialetto = riconosciDialetto(connection.text());
        target_.neutral = dialetto == Dialetto::Nessuno || dialetto == Dialetto::Access;
    }

    std::optional<OdbcTarget> translate() {
        openExtendedProperties();
        if (!findDriver()) return std::nullopt;
        target_.user = valueOf(userWords);
        target_.password = valueOf(passwordWords);
        if (!dsn_.empty())
            addForSource();
        else if (target_.kind == ServerKind::Access)
            addForFile();
        else
            addForServer();
        return target_;
    }

  private:
    // MSDASQL's way to pass an ODBC string through; the pairs outside win.
    void openExtendedProperties() {
        const auto found = pairs_.find("Extended Properties");
        if (found == pairs_.end()) return;
        for (auto& [keyword, value] : ConnectionString(found->second).pairs())
            pairs_.try_emplace(keyword, value);
    }

    std::string valueOf(Words words) const {
        for (const std::string_view word : words)
            if (const auto found = pairs_.find(word); found != pairs_.end()) return found->second;
        return {};
    }
    std::string named(std::string_view word) const { return valueOf(Words(&word, 1)); }

    bool findDriver() {
        const std::string provider = named("Provider");
        const std::string driver = named("Driver");
        const bool throughOdbc = provider.empty() || findText(provider, "MSDASQL") == 0;
        if (!throughOdbc) return takeKind(kindOfName(provider));
        if (!driver.empty()) return takeDriver(driver);
        dsn_ = named("DSN");
        if (dsn_.empty() && !provider.empty()) dsn_ = named("Data Source");
        if (dsn_.empty()) return false;
        for (const OdbcEntry& source : sources_)
            if (equalsText(source.name, dsn_)) {
                target_.kind = kindOfName(source.driver);
                target_.narrow = findText(source.driver, "psqlodbca") != std::string::npos ||
                                 findText(source.driver, "ANSI") != std::string::npos;
            }
        return true;
    }
    bool takeDriver(const std::string& driver) {
        const bool path = driver.find('/') != std::string::npos;
        for (const OdbcEntry& entry : drivers_)
            if (path || equalsText(entry.name, driver)) {
                target_.kind = kindOfName(driver);
                driver_ = driver;
                // The one in UTF-16 is slower, and its texts follow the process's locale.
                if (equalsText(driver, "PostgreSQL Unicode")) break;
                target_.narrow = findText(driver, "ANSI") != std::string::npos ||
                                 findText(driver, "psqlodbca") != std::string::npos;
                return true;
            }
        return takeKind(kindOfName(driver));
    }
    bool takeKind(ServerKind kind) {
        if (kind == ServerKind::Other) return false;
        target_.kind = kind;
        driver_ = debianDriver(kind);
        return true;
    }

    void add(std::string_view keyword, std::string value) {
        if (!value.empty()) target_.pairs.emplace_back(keyword, std::move(value));
    }
    // What the host's string says beyond the meanings above, as it is.
    void addRest() {
        for (const auto& [keyword, value] : pairs_) {
            const bool known = among(serverWords, keyword) || among(databaseWords, keyword) ||
                               among(userWords, keyword) || among(passwordWords, keyword) ||
                               among(windowsWords, keyword) || equalsText(keyword, "Port");
            const bool given = std::ranges::any_of(target_.pairs, [&, k = &keyword](const auto& p) {
                return equalsText(p.first, *k);
            });
            if (!known && !given) add(keyword, value);
        }
    }

    void addForSource() {
        target_.place = dsn_;
        add("DSN", dsn_);
        add("UID", target_.user);
        add("PWD", target_.password);
        add("DATABASE", valueOf(databaseWords));
        addOwnSettings();
        addRest();
    }
    void addForFile() {
        target_.place = valueOf(fileWords);
        target_.pairs = {{"DRIVER", driver_}, {"DBQ", target_.place}};
    }
    void addForServer() {
        std::string server = valueOf(serverWords);
        std::string port = named("Port");
        if (target_.kind == ServerKind::SqlServer) splitServer(server, port);
        if (server.empty() || server == "." || equalsText(server, "(local)")) server = "localhost";
        const std::string database = valueOf(databaseWords);
        target_.place = server + (database.empty() ? "" : "/" + database);
        add("DRIVER", driver_);
        add(target_.kind == ServerKind::PostgreSql ? "SERVERNAME" : "SERVER", server);
        if (port.empty() && target_.kind == ServerKind::SqlServer &&
            server.find('\\') == std::string::npos)
            port = "1433";
        if (port.empty() && target_.kind == ServerKind::PostgreSql) port = "5432";
        add("PORT", port);
        add("DATABASE", database);
        add("UID", target_.user);
        add("PWD", target_.password);
        addOwnSettings();
        addRest();
    }
    // "tcp:host,port" as SQL Server's tools write it.
    static void splitServer(std::string& server, std::string& port) {
        if (findText(server, "tcp:") == 0) server.erase(0, 4);
        const std::size_t comma = server.find(',');
        if (comma == std::string::npos) return;
        port = trimText(std::string_view(server).substr(comma + 1));
        server = trimText(std::string_view(server).substr(0, comma));
    }
    // How the driver must behave for this provider, whatever the host says of the same.
    void addOwnSettings() {
        switch (target_.kind) {
        case ServerKind::MySql:
            add("CHARSET", "utf8mb4");
            add("OPTION", std::to_string(std::atoi(named("OPTION").c_str()) | foundRows));
            if (named("CONN_TIMEOUT").empty()) add("CONN_TIMEOUT", "15");
            break;
        case ServerKind::PostgreSql:
            target_.narrow = target_.narrow || driver_ == debianDriver(ServerKind::PostgreSql);
            add("BoolsAsChar", "0");
            add("UseDeclareFetch", "1"); // rows in portions: never the whole result in memory
            if (named("Fetch").empty()) add("Fetch", "2000");
            add("ByteaAsLongVarBinary", "1");
            add("Protocol", "7.4-2"); // a refused statement leaves the transaction as it was
            add("ConnSettings", "SET client_encoding TO 'UTF8'");
            break;
        case ServerKind::SqlServer:
            add("ClientCharset", "UTF-8");
            break;
        case ServerKind::Access:
        case ServerKind::Other:
            break;
        }
    }

    decltype(std::declval<ConnectionString>().pairs()) pairs_;
    const std::vector<OdbcEntry>& drivers_;
    const std::vector<OdbcEntry>& sources_;
    std::string driver_;
    std::string dsn_;
    OdbcTarget target_;
};

std::string braced(const std::string& value) {
    if (value.find_first_of("[]{}(),;?*=!@ ") == std::string::npos) return value;
    return "{" + replaceText(value, "}", "}}") + "}";
}

} // namespace

ServerKind kindOfName(std::string_view name) {
    for (const Sign& sign : signs)
        if (findText(name, sign.part) != std::string_view::npos) return sign.kind;
    return ServerKind::Other;
}

std::optional<OdbcTarget> odbcTarget(const ConnectionString& connection,
                                     const std::vector<OdbcEntry>& drivers,
                                     const std::vector<OdbcEntry>& sources) {
    return Translator(connection, drivers, sources).translate();
}

std::string driverString(const OdbcTarget& target) {
    std::string text;
    for (const auto& [keyword, value] : target.pairs)
        text += keyword + "=" + (keyword == "DRIVER" ? "{" + value + "}" : braced(value)) + ";";
    return text;
}

} // namespace norvel::adodb
