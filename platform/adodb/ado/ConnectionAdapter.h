// The adapters over a host's connection and command.
#pragma once

#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/adodb/ado/Dispatch.h"

namespace norvel::adodb {

class AdoConnection : public Connection, public com::ComBacked {
  public:
    explicit AdoConnection(com::DispatchObject object) : object_(std::move(object)) {}

    std::string ConnectionString() const override;
    void SetConnectionString(const std::string& text) override;
    void Open(const std::string& connectionString) override;
    void Close() override;
    int State() const override;
    RecordsetRef Execute(const std::string& commandText, RowCount* recordsAffected,
                         int options) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    int CommandTimeout() const override;
    void SetCommandTimeout(int seconds) override;
    IDispatch* dispatch() const override { return object_.get(); }

  private:
    com::DispatchObject object_;
};

class AdoCommand : public Command, public com::ComBacked {
  public:
    explicit AdoCommand(com::DispatchObject object) : object_(std::move(object)) {}

    std::string CommandText() const override;
    void SetCommandText(const std::string& text) override;
    CommandTypeEnum CommandType() const override;
    void SetCommandType(CommandTypeEnum type) override;
    Variant ActiveConnection() const override;
    void SetActiveConnection(const Variant& connectionOrText) override;
    IDispatch* dispatch() const override { return object_.get(); }

  private:
    com::DispatchObject object_;
};

// ActiveConnection of a recordset or a command: an object by reference, a text by value, nothing
// as the object Nothing.
void putActiveConnection(const com::DispatchObject& owner, const Variant& connectionOrText);
Variant activeConnectionOf(const com::DispatchObject& owner);

// A new object of this process by its program identifier; 429 where it cannot be created.
com::DispatchObject createObject(const std::string& progId);

} // namespace norvel::adodb
