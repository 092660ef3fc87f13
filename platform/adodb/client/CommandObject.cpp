#include "platform/adodb/client/CommandObject.h"

#include "platform/adodb/Errors.h"

#include <memory>

namespace norvel::adodb {

ConnectionRef connectionOf(const Variant& value) {
    if (value.isNull()) return nullptr;
    if (!value.isObject()) throw adoError(adErrInvalidArgument);
    if (!value.object()) return nullptr;
    auto connection = std::dynamic_pointer_cast<Connection>(value.object());
    if (!connection) throw adoError(adErrInvalidArgument);
    return connection;
}

void CommandObject::SetCommandType(CommandTypeEnum type) {
    switch (type) {
    case adCmdUnspecified:
    case adCmdText:
    case adCmdTable:
    case adCmdStoredProc:
    case adCmdUnknown:
    case adCmdFile:
    case adCmdTableDirect:
        type_ = type == adCmdUnspecified ? adCmdUnknown : type;
        return;
    }
    throw adoError(adErrInvalidArgument);
}

void CommandObject::SetActiveConnection(const Variant& connectionOrText) {
    if (!connectionOrText.isText()) {
        connection_ = connectionOf(connectionOrText);
        return;
    }
    ConnectionRef own = makeConnection();
    own->Open(connectionOrText.text());
    connection_ = std::move(own);
}

CommandRef makeCommand() {
    return std::make_shared<CommandObject>();
}

} // namespace norvel::adodb
