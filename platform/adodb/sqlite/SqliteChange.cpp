#include "platform/adodb/sqlite/SqliteChange.h"

#include "platform/adodb/provider/ChangedRow.h"
#include "platform/adodb/sqlite/SqliteIdentity.h"
#include "platform/adodb/sqlite/SqliteRowSource.h"
#include "platform/adodb/store/IsoDate.h"
#include "platform/runtime/Text.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace norvel::adodb {

namespace {

using Kind = RowChange::Kind;
using Values = std::vector<Variant>;

constexpr const char* savepoint = "norvelricerca_modifica";

class Writer {
  public:
    Writer(const std::shared_ptr<SqliteHandle>& handle, const RowChange& change)
        : handle_(handle), change_(change) {}

    Values run() {
        run("SAVEPOINT");
        try {
            Values after = write();
            run("RELEASE");
            return after;
        } catch (...) {
            undo();
            throw;
        }
    }

  private:
    // A statement, a list of it, and the values of its parameters.
    struct Text {
        std::string sql;
        Values values;
        void add(const Variant& value) {
            values.push_back(value);
            sql.append("?").append(std::to_string(values.size()));
        }
    };

    const ColumnInfo& info(int column) const {
        return change_.columns[static_cast<std::size_t>(column)];
    }
    std::string name(int column) const { return quotedName(info(column).origin); }
    Variant stored(int column, const Variant& value) const {
        if (value.type() != VarType::Date) return value;
        return isoText(value.toDate().days, info(column).type);
    }

    void run(const std::string& word) {
        const SqliteHandle::Turn turn(*handle_, nullptr);
        handle_->run((word + " " + savepoint).c_str());
    }
    // The failure that led here is what counts; one of the way back leaves the transaction open,
    // which the next statement tells.
    void undo() {
        try {
            run("ROLLBACK TO");
            run("RELEASE");
        } catch (const Errore&) {
            return;
        }
    }

    Values write() {
        if (change_.kind == Kind::Insert) {
            insert();
            return rowNow(inserted());
        }
        const Text where = byKey(change_.before);
        checkUnchanged(change_, rowNow(where));
        if (change_.kind == Kind::Delete) {
            remove(where);
            return {};
        }
        update(where);
        return rowNow(byKey(rowToBe(change_)));
    }

    void execute(const Text& text) {
        const SqliteHandle::Turn turn(*handle_, nullptr);
        const auto statement = handle_->prepareBound(text.sql, text.values);
        const int result = sqlite3_step(statement.get());
        if (result != SQLITE_DONE && result != SQLITE_ROW) throw handle_->error(result);
        checkOneRow(sqlite3_changes(handle_->get()));
    }
    Text byKey(const Values& row) const {
        Text where{" WHERE ", {}};
        for (const int column : change_.identity.key) {
            if (!where.values.empty()) where.sql += " AND ";
            const Variant& value = row[static_cast<std::size_t>(column)];
            where.sql += name(column);
            if (value.type() == VarType::Date) {
                addDate(where, value.toDate().days, info(column).type);
            } else {
                where.sql += " IS ";
                where.add(value);
            }
        }
        return where;
    }
    // The forms in which a database may keep one date.
    static void addDate(Text& where, double days, DataTypeEnum type) {
        const std::string full = isoText(days, adDBTimeStamp); // yyyy-mm-dd hh:mm:ss
        std::vector<std::string> forms{full, isoText(days, type), isoText(days, adDBDate)};
        if (full.ends_with(":00")) forms.push_back(full.substr(0, full.size() - 3));
        forms.push_back(replaceText(forms.back(), " ", "T"));
        forms.push_back(replaceText(full, " ", "T"));
        for (const std::string& form : forms) {
            where.sql += &form == &forms.front() ? " IN (" : ", ";
            where.add(form);
        }
        where.sql += ")";
    }

    void insert() {
        Text text{"INSERT INTO " + change_.identity.table, {}};
        if (change_.cells.empty()) {
            text.sql += " DEFAULT VALUES";
            return execute(text);
        }
        text.sql += " (";
        for (std::size_t i = 0; i < change_.cells.size(); ++i)
            text.sql.append(i ? ", " : "").append(name(change_.cells[i].column));
        text.sql += ") VALUES (";
        for (std::size_t i = 0; i < change_.cells.size(); ++i) {
            if (i) text.sql += ", ";
            text.add(stored(change_.cells[i].column, change_.cells[i].value));
        }
        text.sql += ")";
        execute(text);
    }

    // Where the new row is: by its key, where all of it was given, else by the number that the
    // database gave it.
    Text inserted() const {
        const Values row = rowToBe(change_);
        if (givesKey(change_, row)) return byKey(row);
        const SqliteHandle::Turn turn(*handle_, nullptr);
        Text where{" WHERE _rowid_ = ", {}};
        where.add(std::int64_t{sqlite3_last_insert_rowid(handle_->get())});
        return where;
    }

    void update(const Text& where) {
        // The parameters of the condition keep their numbers; those of the values follow.
        Text text{"UPDATE " + change_.identity.table + " SET ", where.values};
        for (std::size_t i = 0; i < change_.cells.size(); ++i) {
            if (i) text.sql += ", ";
            text.sql += name(change_.cells[i].column) + " = ";
            text.add(stored(change_.cells[i].column, change_.cells[i].value));
        }
        text.sql += where.sql;
        execute(text);
    }

    void remove(const Text& where) {
        execute({"DELETE FROM " + change_.identity.table + where.sql, where.values});
    }

    Values rowNow(const Text& where) {
        const std::string sql = "SELECT " + columnList(change_, quotedName) + " FROM " +
                                change_.identity.table + where.sql;
        return readBack(change_, [&](Batch& batch) { source({sql, where.values})->read(batch); });
    }
    std::unique_ptr<RowSource> source(const Text& text) const {
        const SqliteHandle::Turn turn(*handle_, nullptr);
        auto statement = handle_->prepareBound(text.sql, text.values);
        return std::make_unique<SqliteRowSource>(handle_, std::move(statement), 0);
    }

    std::shared_ptr<SqliteHandle> handle_;
    const RowChange& change_;
};

} // namespace

std::vector<Variant> changeRow(const std::shared_ptr<SqliteHandle>& handle,
                               const RowChange& change) {
    return Writer(handle, change).run();
}

} // namespace norvel::adodb
