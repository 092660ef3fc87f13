#include "platform/adodb/provider/Provider.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/provider/Foreign.h"
#include "platform/adodb/sqlite/SqliteSession.h"
#include "platform/runtime/Text.h"

#include <map>
#include <utility>

namespace norvel::adodb {

namespace {

using Providers = std::map<std::string, SessionFactory, LessText>;

Providers& providers() {
    static Providers table{{"SQLite", openSqliteSession}};
    return table;
}

constexpr std::string_view example = "Provider=SQLite;Data Source=percorso del file";

// The provider as a message names it, from the keywords that can name one.
std::string nameOf(const ConnectionString& connection) {
    if (const auto provider = connection.value("Provider")) return "«" + *provider + "»";
    if (const auto driver = connection.value("Driver"))
        return "ODBC con il driver «" + *driver + "»";
    if (const auto dsn = connection.value("DSN")) return "ODBC con l'origine dati «" + *dsn + "»";
    return {};
}

} // namespace

RowSource::~RowSource() = default;
Session::~Session() = default;

std::vector<Variant> Session::change(const RowChange&) {
    throw adoError(adErrFeatureNotAvailable, "Questo database si può solo leggere.");
}

void registerProvider(const std::string& name, SessionFactory factory) {
    if (factory)
        providers()[name] = std::move(factory);
    else
        providers().erase(name);
}

std::shared_ptr<Session> openSession(const std::string& connectionString) {
    const ConnectionString connection(connectionString);
    const auto provider = connection.value("Provider");
    if (provider) {
        const auto found = providers().find(trimText(*provider));
        if (found != providers().end()) return found->second(connection);
    }
    if (auto session = openForeignSession(connection)) return session;
    const std::string name = nameOf(connection);
    if (name.empty())
        throw adoError(adErrProviderNotFound,
                       "La stringa di connessione non ne indica nessuno: un esempio è «" +
                           std::string(example) + "».");
    throw adoError(adErrProviderNotFound,
                   "Il provider " + name + " non è disponibile su questo sistema.");
}

} // namespace norvel::adodb
