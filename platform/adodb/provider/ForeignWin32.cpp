#include "platform/adodb/provider/Foreign.h"

namespace norvel::adodb {

std::shared_ptr<Session> openForeignSession(const ConnectionString& /*connection*/) {
    return nullptr;
}

} // namespace norvel::adodb
