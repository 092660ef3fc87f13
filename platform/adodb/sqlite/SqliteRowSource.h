// The rows of a SQLite statement.
#pragma once

#include "platform/adodb/provider/Provider.h"
#include "platform/adodb/sqlite/SqliteHandle.h"

#include <memory>
#include <vector>

namespace norvel::adodb {

class SqliteRowSource : public RowSource {
  public:
    // timeoutSeconds: for the first row; 0: no limit. The caller holds a Turn.
    SqliteRowSource(std::shared_ptr<SqliteHandle> handle, StatementHandle statement,
                    int timeoutSeconds);
    ~SqliteRowSource() override;
    SqliteRowSource(const SqliteRowSource&) = delete;
    SqliteRowSource& operator=(const SqliteRowSource&) = delete;

    const std::vector<ColumnInfo>& columns() const override { return columns_; }
    RowIdentity identity() override { return identity_; }
    bool read(Batch& batch) override;
    void cancel() noexcept override;

  private:
    bool step();
    bool store(Batch& batch);

    std::shared_ptr<SqliteHandle> handle_;
    StatementHandle statement_;
    std::vector<ColumnInfo> columns_;
    RowIdentity identity_;
    Stop stop_;
    bool pending_ = false; // the current row did not fit the last batch
};

} // namespace norvel::adodb
