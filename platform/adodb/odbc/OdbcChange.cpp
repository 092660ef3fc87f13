#include "platform/adodb/odbc/OdbcChange.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/odbc/OdbcIdentity.h"
#include "platform/adodb/odbc/OdbcRowSource.h"
#include "platform/adodb/odbc/OdbcValues.h"
#include "platform/adodb/provider/ChangedRow.h"

#include <algorithm>
#include <utility>

namespace norvel::adodb {

namespace {

using Kind = RowChange::Kind;
using Values = std::vector<Variant>;
using Moments = OdbcSql::Moments;

constexpr const char* savepoint = "norvelricerca_modifica";
constexpr int longestStatement = 30; // seconds

class Writer {
  public:
    Writer(const std::shared_ptr<OdbcConnection>& connection, const RowChange& change, bool inside,
           const std::atomic<bool>& givenUp, bool& sent)
        : connection_(connection), change_(change), inside_(inside), givenUp_(givenUp),
          sent_(sent) {}

    Values run() {
        begin();
        try {
            Values after = write();
            requireWaiter();
            end(true);
            return after;
        } catch (...) {
            undo();
            throw;
        }
    }

  private:
    OdbcSql sql(std::string_view text) const {
        OdbcSql made(connection_->kind());
        made += text;
        return made;
    }
    const ColumnInfo& info(int column) const {
        return change_.columns[static_cast<std::size_t>(column)];
    }
    std::string name(int column) const {
        return quotedName(connection_->kind(), info(column).origin);
    }

    // --- all or nothing ---

    void begin() {
        if (!inside_) return connection_->beginTransaction();
        const bool sqlServer = connection_->kind() == ServerKind::SqlServer;
        plain(std::string(sqlServer ? "SAVE TRANSACTION " : "SAVEPOINT ") + savepoint);
    }
    void end(bool commit) {
        if (inside_) {
            if (connection_->kind() == ServerKind::SqlServer) {
                if (!commit) plain(std::string("ROLLBACK TRANSACTION ") + savepoint);
                return;
            }
            if (!commit) plain(std::string("ROLLBACK TO SAVEPOINT ") + savepoint);
            return plain(std::string("RELEASE SAVEPOINT ") + savepoint);
        }
        connection_->endTransaction(commit);
    }
    // The failure that led here is what counts.
    void undo() {
        try {
            end(false);
        } catch (const Errore&) {
            // Without its savepoint the host's transaction has gone, too: a deadlock's victim.
            if (inside_) connection_->giveUp();
        }
    }
    void plain(const std::string& text) {
        OdbcStatement(connection_, nullptr, longestStatement).execute(text);
    }

    void requireWaiter() const {
        if (givenUp_) throw adoError(adErrOperationCancelled);
    }

    // --- the change ---

    Values write() {
        if (change_.kind == Kind::Insert) return insert();
        const OdbcSql where = byKey(change_.before, false);
        checkUnchanged(change_, rowNow(where, true));
        if (change_.kind == Kind::Delete) {
            OdbcSql text = sql("DELETE FROM " + change_.identity.table);
            text.add(where);
            execute(text);
            return {};
        }
        update(where);
        return rowNow(byKey(rowToBe(change_), true), false);
    }

    void execute(OdbcSql& text) {
        OdbcStatement statement(connection_, nullptr, longestStatement);
        text.bind(statement);
        requireWaiter();
        sent_ = true;
        statement.execute(text.text);
        checkOneRow(statement.affected());
    }

    void addEqual(OdbcSql& where, int column, const Variant& value, Moments moments) const {
        where += name(column);
        if (value.isNull() || value.isEmpty()) {
            where += " IS NULL";
            return;
        }
        where += " = ";
        where.addValue(info(column), value, moments);
    }
    // written: the row holds the change's own values where it has them.
    OdbcSql byKey(const Values& row, bool written) const {
        OdbcSql where = sql(" WHERE ");
        bool first = true;
        for (const int column : change_.identity.key) {
            if (!std::exchange(first, false)) where += " AND ";
            addEqual(where, column, row[static_cast<std::size_t>(column)],
                     written && givesValue(change_, column) ? Moments::Rounded : Moments::Exact);
        }
        return where;
    }

    void update(const OdbcSql& where) {
        OdbcSql text = sql("UPDATE " + change_.identity.table + " SET ");
        for (std::size_t i = 0; i < change_.cells.size(); ++i) {
            if (i) text += ", ";
            text += name(change_.cells[i].column) + " = ";
            text.addValue(info(change_.cells[i].column), change_.cells[i].value, Moments::Rounded);
        }
        text.add(where);
        execute(text);
    }

    Values insert() {
        OdbcSql text = sql("INSERT INTO " + change_.identity.table);
        const bool none = change_.cells.empty();
        if (none)
            text += connection_->kind() == ServerKind::MySql ? " () VALUES ()" : " DEFAULT VALUES";
        for (std::size_t i = 0; i < change_.cells.size(); ++i) {
            text += i ? ", " : " (";
            text += name(change_.cells[i].column);
        }
        for (std::size_t i = 0; i < change_.cells.size(); ++i) {
            text += i ? ", " : ") VALUES (";
            text.addValue(info(change_.cells[i].column), change_.cells[i].value, Moments::Rounded);
        }
        if (!none) text += ")";
        if (connection_->returnsInserted()) return insertReturning(text);
        execute(text);
        return insertedRow();
    }
    // The server gives the row back itself.
    Values insertReturning(OdbcSql& text) {
        text += " RETURNING " + columns();
        requireWaiter();
        sent_ = true;
        return read(text, false);
    }
    // By its key, where all of it was given; by the number that the database gave it; else by all
    // that was given, which must tell it from others where the table has a primary key.
    Values insertedRow() {
        const Values row = rowToBe(change_);
        if (givesKey(change_, row)) return rowNow(byKey(row, true), false);
        const auto& key = change_.identity.key;
        const bool primary = !key.empty() && (info(key.front()).attributes & adFldKeyColumn) != 0;
        if (primary && key.size() == 1 && connection_->kind() == ServerKind::MySql &&
            storageClass(info(key.front()).type) == StorageClass::Integer)
            return rowNow(sql(" WHERE " + name(key.front()) + " = LAST_INSERT_ID()"), false);
        OdbcSql where = sql(" WHERE ");
        bool first = true;
        for (const auto& cell : change_.cells) {
            if (!std::exchange(first, false)) where += " AND ";
            addEqual(where, cell.column, cell.value, Moments::Rounded);
        }
        return rowNow(where, false, primary);
    }

    // --- the row in the database ---

    std::string columns() const {
        return columnList(change_, [this](std::string_view column) {
            return quotedName(connection_->kind(), column);
        });
    }
    // lock: nobody else changes it until the transaction ends. alone: no other row may be found.
    Values rowNow(const OdbcSql& where, bool lock, bool alone = false) {
        const bool hint = lock && connection_->kind() == ServerKind::SqlServer;
        const bool clause = lock && (connection_->kind() == ServerKind::MySql ||
                                     connection_->kind() == ServerKind::PostgreSql);
        OdbcSql text = sql("SELECT " + columns() + " FROM " + change_.identity.table +
                           (hint ? " WITH (UPDLOCK)" : ""));
        text.add(where);
        if (clause) text += " FOR UPDATE";
        return read(text, alone);
    }
    // The first row of a statement.
    Values read(OdbcSql& text, bool alone) {
        auto statement = std::make_unique<OdbcStatement>(connection_, nullptr, longestStatement);
        OdbcBlock::prepare(*statement);
        text.bind(*statement);
        statement->execute(text.text);
        const std::vector<OdbcColumn> described = describeColumns(*statement);
        OdbcBlock block(*statement, described);
        return readBack(change_, [&](Batch& batch) {
            if (!block.fetch()) return;
            block.store(batch);
            batch.endRow();
            if (alone && (!block.atEnd() || block.fetch())) checkOneRow(2);
        });
    }

    std::shared_ptr<OdbcConnection> connection_;
    const RowChange& change_;
    bool inside_;
    const std::atomic<bool>& givenUp_;
    bool& sent_;
};

} // namespace

std::vector<Variant> changeRow(const std::shared_ptr<OdbcConnection>& connection,
                               const RowChange& change, bool inTransaction,
                               const std::atomic<bool>& givenUp, bool& sent) {
    return Writer(connection, change, inTransaction, givenUp, sent).run();
}

} // namespace norvel::adodb
