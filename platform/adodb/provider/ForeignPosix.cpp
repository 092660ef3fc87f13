#include "platform/adodb/odbc/OdbcSession.h"
#include "platform/adodb/provider/Foreign.h"

namespace norvel::adodb {

std::shared_ptr<Session> openForeignSession(const ConnectionString& connection) {
    return openOdbcSession(connection);
}

} // namespace norvel::adodb
