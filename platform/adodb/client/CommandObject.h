#pragma once

#include "platform/adodb/Recordset.h"

#include <string>
#include <utility>

namespace norvel::adodb {

// A command: text, kind of text, connection.
class CommandObject final : public Command {
  public:
    std::string CommandText() const override { return text_; }
    void SetCommandText(const std::string& text) override { text_ = text; }
    CommandTypeEnum CommandType() const override { return type_; }
    void SetCommandType(CommandTypeEnum type) override;
    Variant ActiveConnection() const override { return ObjectRef(connection_); }
    // A connection string opens a connection of the command's own.
    void SetActiveConnection(const Variant& connectionOrText) override;

    const ConnectionRef& connection() const { return connection_; }
    void attach(ConnectionRef connection) { connection_ = std::move(connection); }

  private:
    std::string text_;
    CommandTypeEnum type_ = adCmdUnknown;
    ConnectionRef connection_;
};

// The Connection that an argument holds: null for Nothing and Null. Raises 3001 on anything else.
ConnectionRef connectionOf(const Variant& value);

} // namespace norvel::adodb
