// The rows of an ODBC statement.
#pragma once

#include "platform/adodb/odbc/OdbcBlock.h"
#include "platform/adodb/odbc/OdbcLinks.h"
#include "platform/adodb/odbc/OdbcStatement.h"
#include "platform/adodb/odbc/OdbcTypes.h"
#include "platform/adodb/provider/Provider.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace norvel::adodb {

class OdbcRowSource : public RowSource {
  public:
    using Identify = std::function<RowIdentity(std::vector<OdbcColumn>&)>;

    // The statement has been executed and has rows. identify is asked once. keep is held until the
    // rows are read or the source goes: the use of the connection. rowLimit: as many rows as the
    // server was asked for, so that there may be more (0: all); the end then is fetchLimitError().
    OdbcRowSource(std::unique_ptr<OdbcStatement> statement, const Identify& identify,
                  std::shared_ptr<OdbcUse> keep, std::int64_t rowLimit);
    ~OdbcRowSource() override;
    OdbcRowSource(const OdbcRowSource&) = delete;
    OdbcRowSource& operator=(const OdbcRowSource&) = delete;

    const std::vector<ColumnInfo>& columns() const override { return infos_; }
    RowIdentity identity() override { return identity_; }
    bool read(Batch& batch) override;
    void cancel() noexcept override;

  private:
    bool readOn(Batch& batch);

    std::int64_t rowLimit_;
    std::int64_t rows_ = 0;

    std::shared_ptr<OdbcUse> keep_; // goes last; null once the rows are read
    std::mutex endMutex_;           // cancel() against the statement's end
    std::unique_ptr<OdbcStatement> statement_;
    std::vector<OdbcColumn> columns_;
    std::vector<ColumnInfo> infos_;
    RowIdentity identity_;
    std::unique_ptr<OdbcBlock> block_;
};

} // namespace norvel::adodb
