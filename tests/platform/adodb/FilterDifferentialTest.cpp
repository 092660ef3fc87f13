// Filters and sorts by chance over tables by chance, against the same conditions asked of SQLite.
#include "platform/runtime/Text.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <random>

namespace norvel::adodb {
namespace {

// Slower builds run a part of them.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int pairsATable = 100;
#else
constexpr int pairsATable = 2000;
#endif
constexpr int tables = 50;

// A database with what SQLite lacks: fold(text), which takes case away, and the collation of lists.
class Database {
  public:
    explicit Database(const std::string& file) {
        sqlite3* handle = nullptr;
        if (sqlite3_open(file.c_str(), &handle) != SQLITE_OK) ADD_FAILURE() << file;
        handle_.reset(handle);
        sqlite3_create_function(handle, "fold", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                fold, nullptr, nullptr);
        sqlite3_create_collation(handle, "list", SQLITE_UTF8, nullptr, collate);
    }
    // The first column of what the query gives.
    std::vector<std::int64_t> numbers(const std::string& sql) const {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(handle_.get(), sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            ADD_FAILURE() << sql << ": " << sqlite3_errmsg(handle_.get());
        std::vector<std::int64_t> found;
        while (sqlite3_step(statement) == SQLITE_ROW)
            found.push_back(sqlite3_column_int64(statement, 0));
        sqlite3_finalize(statement);
        return found;
    }

  private:
    static std::string_view textOf(const void* data, int size) {
        return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
    }
    static void fold(sqlite3_context* context, int, sqlite3_value** values) {
        if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
        const unsigned char* text = sqlite3_value_text(values[0]);
        const std::string folded = foldText(textOf(text, sqlite3_value_bytes(values[0])));
        sqlite3_result_text(context, folded.data(), static_cast<int>(folded.size()),
                            SQLITE_TRANSIENT);
    }
    static int collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
        return collateText(textOf(a, sizeA), textOf(b, sizeB));
    }
    struct Close {
        void operator()(sqlite3* handle) const { sqlite3_close(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

// What is asked, in the words of either side.
struct Question {
    std::string ours;
    std::string theirs;
};

class Chance {
  public:
    explicit Chance(unsigned seed) : random_(seed) {}

    std::string rows(int count) {
        std::string sql = "BEGIN; CREATE TABLE t (k INTEGER, a TEXT, n INTEGER, d REAL, b BOOLEAN,"
                          "g DATE);";
        for (int row = 0; row < count; ++row)
            sql += "INSERT INTO t VALUES (" + std::to_string(row) + "," + maybe(quote(word(4))) +
                   "," + maybe(whole()) + "," + maybe(real()) + "," +
                   maybe(std::to_string(random_() % 2)) + "," + maybe("'2011-03-" + day() + "'") +
                   ");";
        return sql + "COMMIT;";
    }

    Question filter() {
        Question all;
        for (unsigned group = 0, groups = 1 + random_() % 3; group < groups; ++group) {
            Question together;
            for (unsigned i = 0, count = 1 + random_() % 3; i < count; ++i)
                join(together, " AND ", clause());
            join(all, " OR ", {"(" + together.ours + ")", "(" + together.theirs + ")"});
        }
        if (random_() % 8 == 0) join(all, " OR ", choice());
        return all;
    }

    // As SetSort has it, and what stands behind ORDER BY.
    Question order() {
        if (random_() % 2 == 0) return {"", "k"};
        std::vector<std::string> columns{"a", "n", "d", "b", "g"};
        std::ranges::shuffle(columns, random_);
        Question all;
        for (unsigned i = 0, count = 1 + random_() % 3; i < count; ++i) {
            const std::string& column = columns[i];
            const std::string way = random_() % 2 == 0 ? " DESC" : "";
            // True is -1 to the hosts: it comes before False.
            join(all, ", ",
                 {column + way, (column == "a"   ? "a COLLATE list"
                                 : column == "b" ? "-b"
                                                 : column) +
                                    way});
        }
        all.theirs += ", k";
        return all;
    }

  private:
    template <class List>
    auto pick(const List& list) {
        return list[random_() % std::size(list)];
    }
    static void join(Question& all, const char* between, const Question& next) {
        all.ours += (all.ours.empty() ? "" : between) + next.ours;
        all.theirs += (all.theirs.empty() ? "" : between) + next.theirs;
    }
    static std::string quote(const std::string& text) {
        return "'" + replaceText(text, "'", "''") + "'";
    }
    std::string maybe(const std::string& value) { return random_() % 6 == 0 ? "NULL" : value; }
    std::string word(unsigned longest) {
        constexpr const char* parts[] = {"ros", "Ros", "S", "s", "i",  "à", "À", "'", "ß",
                                         "b",   "_",   "[", "?", "50", " ", "è", "Σ", "σ"};
        std::string text;
        for (unsigned n = random_() % (longest + 1); n > 0; --n)
            text += pick(parts);
        return text;
    }
    std::string whole() { return std::to_string(static_cast<int>(random_() % 9) - 4); }
    std::string real() { return whole() + pick(std::vector<std::string>{"", ".5", ".25"}); }
    std::string day() { return std::to_string(10 + random_() % 12); }
    std::string comparison() {
        constexpr const char* signs[] = {"=", "<>", "<", "<=", ">", ">="};
        return pick(signs);
    }

    Question clause() {
        switch (random_() % 9) {
        case 0: {
            const std::string needle = quote(word(2));
            const std::string inside = needle.substr(1, needle.size() - 2);
            return {"a LIKE '*" + inside + "*'", "instr(fold(a), fold(" + needle + ")) > 0"};
        }
        case 1: {
            const std::string needle = quote(word(2));
            const std::string inside = needle.substr(1, needle.size() - 2);
            return {"a LIKE '" + inside + "*'", "instr(fold(a), fold(" + needle + ")) = 1"};
        }
        case 2: {
            const std::string value = quote(word(3));
            const std::string sign = random_() % 2 == 0 ? "=" : "<>";
            return {"a" + sign + value, "fold(a)" + sign + "fold(" + value + ")"};
        }
        case 3: {
            const std::string value = quote(word(2));
            constexpr const char* signs[] = {"<", "<=", ">", ">="};
            const std::string sign = pick(signs);
            return {"a" + sign + value, "a" + sign + value + " COLLATE list"};
        }
        case 4: {
            const std::string test = comparison() + (random_() % 3 == 0 ? real() : whole());
            return {"n" + test, "n" + test};
        }
        case 5: {
            const std::string test = comparison() + real();
            return {"[d]" + test, "d" + test};
        }
        case 6: {
            const std::string sign = comparison();
            const std::string date = day();
            return {"g" + sign + "#" + date + "-03-2011#", "g" + sign + "'2011-03-" + date + "'"};
        }
        case 7:
            return other();
        default: {
            constexpr const char* columns[] = {"a", "n", "d", "b", "g"};
            const std::string column = pick(columns);
            const bool null = random_() % 2 == 0;
            return {column + (null ? "=NULL" : "<>NULL"),
                    column + (null ? " IS NULL" : " IS NOT NULL")};
        }
        }
    }
    // Booleans, and texts asked of what is no text.
    Question other() {
        switch (random_() % 4) {
        case 0:
            return {"b=True", "b<>0"};
        case 1:
            return {"b<>1", "b=0"};
        case 2: {
            const std::string digit = std::to_string(random_() % 5);
            return {"n LIKE '*" + digit + "*'", "instr(CAST(n AS TEXT), '" + digit + "') > 0"};
        }
        default: {
            const std::string value = "'" + whole() + "'";
            const std::string sign = random_() % 2 == 0 ? "=" : "<>";
            return {"n" + sign + value, "CAST(n AS TEXT)" + sign + value};
        }
        }
    }
    // Several values of a column.
    Question choice() {
        Question all;
        const bool text = random_() % 2 == 0;
        for (unsigned n = 2 + random_() % 5; n > 0; --n) {
            const std::string value = text ? quote(word(2)) : whole();
            join(all, " OR ",
                 text ? Question{"a=" + value, "fold(a)=fold(" + value + ")"}
                      : Question{"n=" + value, "n=" + value});
        }
        return all;
    }

    std::mt19937 random_;
};

std::vector<std::int64_t> shown(Recordset& rs) {
    std::vector<std::int64_t> found;
    if (rs.RecordCount() == 0) return found;
    const RowBlock block = rs.GetRows(-1, std::int32_t{adBookmarkFirst}, {"k"});
    for (const Variant& value : block.values[0])
        found.push_back(value.toI8());
    return found;
}

TEST(FilterDifferential, TheEngineAndTheDatabaseAgree) {
    Chance chance(20'111'503);
    int compared = 0;
    int telling = 0; // neither all rows nor none
    for (int table = 0; table < tables; ++table) {
        const TemporaryFolder folder;
        const int rows = table % 10 == 9 ? 300 : 30; // enough for texts to be folded ahead
        const auto rs = openOn(folder.database("t.db", chance.rows(rows)), "SELECT * FROM t");
        const Database database(folder.file("t.db"));
        for (int pair = 0; pair < pairsATable; ++pair, ++compared) {
            const Question filter = chance.filter();
            const Question order = chance.order();
            rs->SetFilter(filter.ours);
            rs->SetSort(order.ours);
            const std::string sql =
                "SELECT k FROM t WHERE " + filter.theirs + " ORDER BY " + order.theirs;
            const auto found = shown(*rs);
            ASSERT_EQ(found, database.numbers(sql))
                << filter.ours << " | " << order.ours << " / " << sql;
            telling += !found.empty() && static_cast<int>(found.size()) < rows;
        }
    }
    EXPECT_EQ(compared, tables * pairsATable);
    EXPECT_GT(telling, compared / 2);
}

} // namespace
} // namespace norvel::adodb
