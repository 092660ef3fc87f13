#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/provider/Provider.h"

#include <memory>
#include <string>
#include <vector>

namespace norvel::adodb {

class ClientRecordset;

// A connection: a string, and while it is open a session. CommandTimeout (30 seconds unless set, 0
// for no limit) is how long a statement may take to its first row.
class ConnectionObject final : public Connection,
                               public std::enable_shared_from_this<ConnectionObject> {
  public:
    std::string ConnectionString() const override { return text_; }
    void SetConnectionString(const std::string& text) override;
    void Open(const std::string& connectionString) override;
    // Closes the recordsets that are open on it; 3710 while one of them tells of a move or a
    // change.
    void Close() override;
    int State() const override { return session_ ? adStateOpen : adStateClosed; }
    RecordsetRef Execute(const std::string& commandText, RowCount* recordsAffected,
                         int options) override;
    void BeginTrans() override { opened().begin(); }
    void CommitTrans() override { opened().commit(); }
    void RollbackTrans() override { opened().rollback(); }
    int CommandTimeout() const override { return timeout_; }
    void SetCommandTimeout(int seconds) override;

    const std::shared_ptr<Session>& session() const { return session_; } // null: closed
    void attach(const std::shared_ptr<ClientRecordset>& recordset);

  private:
    Session& opened() const; // 3704

    std::string text_;
    std::shared_ptr<Session> session_;
    int timeout_ = 30;
    std::vector<std::weak_ptr<ClientRecordset>> recordsets_;
};

} // namespace norvel::adodb
