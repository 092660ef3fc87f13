#include "platform/adodb/odbc/OdbcBlock.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/odbc/OdbcText.h"
#include "platform/adodb/store/IsoDate.h"
#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>

namespace norvel::adodb {

namespace {

constexpr std::size_t blockBytes = std::size_t{512} * 1024; // of buffers: stays in the caches
constexpr std::size_t mostRows = 1000;
constexpr std::size_t firstWidth = 1024; // of a text without a limit
constexpr std::size_t widestBound = std::size_t{64} * 1024;
constexpr SQLLEN notTold = SQL_NO_TOTAL;

template <class Struct>
Struct readStruct(const char* from) {
    Struct value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

// nullopt for what is no day of the calendar: MySQL's zero dates.
std::optional<double> daysOf(const SQL_DATE_STRUCT& date) {
    const auto day = makeDate({date.year, date.month, date.day});
    return day ? std::optional(day->days) : std::nullopt;
}

double fractionOf(unsigned hour, unsigned minute, unsigned second, std::uint32_t nanoseconds) {
    const double seconds = hour * 3600.0 + minute * 60.0 + second;
    return (seconds + nanoseconds / 1e9) / 86400.0;
}

std::optional<double> daysOf(const SQL_TIMESTAMP_STRUCT& moment) {
    const auto day = makeDate({moment.year, moment.month, moment.day});
    if (!day) return std::nullopt;
    const double time = fractionOf(moment.hour, moment.minute, moment.second, moment.fraction);
    return day->days < 0 ? day->days - time : day->days + time;
}

// "[-]hours:mm:ss[.fraction]", hours beyond a day included, as days.
std::optional<double> daysOfTime(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    unsigned parts[3] = {};
    for (unsigned& part : parts) {
        const auto read = std::from_chars(text.data(), text.data() + text.size(), part);
        if (read.ec != std::errc()) return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
        if (&part != &parts[2] && !text.starts_with(':')) return std::nullopt;
        if (&part != &parts[2]) text.remove_prefix(1);
    }
    double second = 0;
    if (!text.empty()) {
        const auto read = std::from_chars(text.data(), text.data() + text.size(), second);
        if (read.ec != std::errc() || text.front() != '.') return std::nullopt;
    }
    const double days = fractionOf(parts[0], parts[1], parts[2], 0) + second / 86400;
    return negative ? -days : days;
}

// What a date, a time or a moment means; nullopt for what is no day of the calendar.
std::optional<double> daysIn(const OdbcColumn& column, const char* data, SQLLEN length) {
    if (column.cType == SQL_C_CHAR) {
        const std::string_view text(data,
                                    std::min(static_cast<std::size_t>(length), column.width - 1));
        return column.as == FetchedAs::Time ? daysOfTime(text) : parseIsoDate(text);
    }
    if (column.as == FetchedAs::Date) return daysOf(readStruct<SQL_DATE_STRUCT>(data));
    if (column.as == FetchedAs::Moment) return daysOf(readStruct<SQL_TIMESTAMP_STRUCT>(data));
    const auto time = readStruct<SQL_TIME_STRUCT>(data);
    return fractionOf(time.hour, time.minute, time.second, 0);
}

} // namespace

OdbcBlock::LongValues OdbcBlock::longValuesOf(const OdbcConnection& connection) {
    if (connection.kind() == ServerKind::MySql) return LongValues::BySelf;
    SQLUINTEGER extensions = 0;
    constexpr SQLUINTEGER needed = SQL_GD_BLOCK | SQL_GD_BOUND | SQL_GD_ANY_COLUMN;
    SQLGetInfo(connection.get(), SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr);
    return (extensions & needed) == needed ? LongValues::ByPosition : LongValues::RowByRow;
}

void OdbcBlock::prepare(OdbcStatement& statement) {
    const bool goesBack = longValuesOf(statement.connection()) == LongValues::BySelf;
    SQLSetStmtAttr(statement.get(), SQL_ATTR_CURSOR_TYPE,
                   odbcNumber(goesBack ? SQL_CURSOR_STATIC : SQL_CURSOR_FORWARD_ONLY), 0);
}

OdbcBlock::OdbcBlock(OdbcStatement& statement, const std::vector<OdbcColumn>& columns)
    : statement_(statement), columns_(columns), longValues_(longValuesOf(statement.connection())),
      buffers_(columns.size()) {
    SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, 0);
    bool bound = true;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        Buffer& buffer = buffers_[c];
        buffer.width = columns_[c].width;
        // Behind a column that is not bound none may be.
        if (buffer.width == 0 && longValues_ == LongValues::RowByRow) bound = false;
        buffer.bound = bound;
        if (buffer.width == 0 || (growable(c) && buffer.width > firstWidth))
            buffer.width =
                longValues_ == LongValues::RowByRow && buffer.width > 0 ? buffer.width : firstWidth;
    }
}

OdbcBlock::~OdbcBlock() {
    unbind();
    SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROWS_FETCHED_PTR, nullptr, 0);
}

bool OdbcBlock::growable(std::size_t column) const {
    const FetchedAs as = columns_[column].as;
    return as == FetchedAs::Text || as == FetchedAs::Guid || as == FetchedAs::Bytes;
}

void OdbcBlock::layOut() {
    std::size_t rowBytes = 0;
    bool all = true;
    for (std::size_t c = 0; c < buffers_.size(); ++c) {
        Buffer& buffer = buffers_[c];
        // Values of a fixed size lie side by side, whatever width the driver is told.
        if (growable(c)) buffer.width = (std::max(buffer.width, buffer.wanted) + 7) / 8 * 8;
        rowBytes += buffer.width + sizeof(SQLLEN);
        all = all && buffer.bound;
    }
    capacity_ =
        all ? std::clamp<std::size_t>(blockBytes / std::max<std::size_t>(rowBytes, 1), 1, mostRows)
            : 1;
    for (Buffer& buffer : buffers_) {
        buffer.values = std::make_unique_for_overwrite<char[]>(buffer.width * capacity_);
        buffer.lengths = std::make_unique_for_overwrite<SQLLEN[]>(capacity_);
    }
    bind();
    stale_ = false;
}

void OdbcBlock::bind() {
    SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROW_ARRAY_SIZE, odbcNumber(capacity_), 0);
    for (std::size_t c = 0; c < buffers_.size(); ++c) {
        if (!buffers_[c].bound) continue;
        statement_.call([&] {
            return SQLBindCol(statement_.get(), static_cast<SQLUSMALLINT>(c + 1), columns_[c].cType,
                              buffers_[c].values.get(), static_cast<SQLLEN>(buffers_[c].width),
                              buffers_[c].lengths.get());
        });
    }
}

void OdbcBlock::unbind() {
    SQLFreeStmt(statement_.get(), SQL_UNBIND);
}

bool OdbcBlock::fetch() {
    longs_.clear();
    before_ += rows_;
    rows_ = row_ = 0;
    if (stale_)
        layOut();
    else if (moved_)
        bind();
    fetched_ = 0;
    const SQLRETURN result = statement_.call([&] {
        if (!moved_) return SQLFetch(statement_.get());
        return SQLFetchScroll(statement_.get(), SQL_FETCH_ABSOLUTE,
                              static_cast<SQLLEN>(before_ + 1));
    });
    moved_ = false;
    if (result == SQL_NO_DATA) return false;
    rows_ = std::min<std::size_t>(fetched_, capacity_);
    if (longValues_ == LongValues::RowByRow)
        readUnbound();
    else
        repair(); // not every driver tells by the call's result that it cut a value
    return rows_ > 0;
}

// --- values longer than their buffers ---

bool OdbcBlock::cut(std::size_t column, std::size_t row) const {
    const SQLLEN length = buffers_[column].lengths[row];
    if (length == SQL_NULL_DATA) return false;
    const std::size_t room =
        buffers_[column].width - (columns_[column].as == FetchedAs::Bytes ? 0 : 1);
    return length == notTold || static_cast<std::size_t>(length) > room;
}

void OdbcBlock::repair() {
    std::vector<std::pair<std::size_t, std::size_t>> cells; // (row, column), by rows
    for (std::size_t c = 0; c < buffers_.size(); ++c)
        for (std::size_t row = 0; growable(c) && row < rows_; ++row)
            if (cut(c, row)) cells.emplace_back(row, c);
    std::ranges::sort(cells);
    if (cells.empty()) return;
    if (longValues_ == LongValues::ByPosition)
        readByPosition(cells);
    else
        readBySelf(cells);
    for (const auto& [cell, value] : longs_) {
        Buffer& buffer = buffers_[cell.first];
        if (buffer.width >= widestBound) continue;
        buffer.wanted = std::max(
            buffer.wanted, std::min(std::max(buffer.width * 2, value.size() + 1), widestBound));
        stale_ = true;
    }
}

void OdbcBlock::readByPosition(const std::vector<std::pair<std::size_t, std::size_t>>& cells) {
    for (const auto& [row, column] : cells) {
        statement_.call([&, at = row + 1] {
            return SQLSetPos(statement_.get(), at, SQL_POSITION, SQL_LOCK_NO_CHANGE);
        });
        longs_[{column, row}] = wholeValue(column);
    }
}

void OdbcBlock::readBySelf(const std::vector<std::pair<std::size_t, std::size_t>>& cells) {
    unbind();
    SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROW_ARRAY_SIZE, odbcNumber(1), 0);
    const SQLULEN fetched = fetched_;
    for (const auto& cell : cells) {
        const std::size_t row = cell.first;
        const std::size_t column = cell.second;
        const bool text = columns_[column].as != FetchedAs::Bytes;
        std::string value(static_cast<std::size_t>(buffers_[column].lengths[row]) + (text ? 1 : 0),
                          '\0');
        SQLLEN length = 0;
        statement_.call([&, c = static_cast<SQLUSMALLINT>(column + 1)] {
            return SQLBindCol(statement_.get(), c, columns_[column].cType, value.data(),
                              static_cast<SQLLEN>(value.size()), &length);
        });
        statement_.call([&, at = before_ + row + 1] {
            return SQLFetchScroll(statement_.get(), SQL_FETCH_ABSOLUTE, static_cast<SQLLEN>(at));
        });
        unbind();
        if (text) value.pop_back();
        longs_[{column, row}] = std::move(value);
    }
    fetched_ = fetched;
    moved_ = true;
}

void OdbcBlock::readUnbound() {
    for (std::size_t c = 0; c < buffers_.size() && rows_ > 0; ++c) {
        if (buffers_[c].bound) continue;
        if (growable(c)) {
            longs_[{c, 0}] = wholeValue(c);
            continue;
        }
        statement_.call([&] {
            return SQLGetData(statement_.get(), static_cast<SQLUSMALLINT>(c + 1), columns_[c].cType,
                              buffers_[c].values.get(), static_cast<SQLLEN>(buffers_[c].width),
                              buffers_[c].lengths.get());
        });
    }
}

// A value of the cursor's row, in as many pieces as the driver makes of it. Notes in lengths that
// it is NULL.
std::string OdbcBlock::wholeValue(std::size_t column) {
    const bool text = columns_[column].as != FetchedAs::Bytes;
    std::string value;
    std::vector<char> piece(std::max<std::size_t>(buffers_[column].width, 4096));
    for (;;) {
        SQLLEN length = 0;
        const SQLRETURN result = statement_.call([&] {
            return SQLGetData(statement_.get(), static_cast<SQLUSMALLINT>(column + 1),
                              columns_[column].cType, piece.data(),
                              static_cast<SQLLEN>(piece.size()), &length);
        });
        if (result == SQL_NO_DATA) break;
        if (length == SQL_NULL_DATA) {
            buffers_[column].lengths[0] = SQL_NULL_DATA;
            return {};
        }
        const std::size_t room = piece.size() - (text ? 1 : 0);
        const bool whole = length != notTold && static_cast<std::size_t>(length) <= room;
        value.append(piece.data(), whole ? static_cast<std::size_t>(length) : room);
        if (whole) break;
        if (length != notTold) // the rest in one more piece
            piece.resize(static_cast<std::size_t>(length) - room + 1);
    }
    if (!buffers_[column].bound) buffers_[column].lengths[0] = 0;
    return value;
}

// --- into the batch ---

bool OdbcBlock::store(Batch& batch) {
    for (std::size_t c = 0; c < buffers_.size(); ++c)
        if (!storeCell(batch, c)) return false;
    ++row_;
    return true;
}

bool OdbcBlock::storeRun(Batch& batch, std::size_t column, const char* data,
                         std::size_t length) const {
    const int c = static_cast<int>(column);
    if (columns_[column].as == FetchedAs::Bytes) return batch.setBytes(c, data, length);
    return batch.setText(c, data, length);
}

bool OdbcBlock::storeCell(Batch& batch, std::size_t column) const {
    const Buffer& buffer = buffers_[column];
    const int c = static_cast<int>(column);
    const SQLLEN length = buffer.lengths[row_];
    const char* data = buffer.at(row_);
    if (length == SQL_NULL_DATA) {
        batch.setNull(c);
        return true;
    }
    switch (columns_[column].as) {
    case FetchedAs::Integer: {
        const auto value = readStruct<std::int64_t>(data);
        if (value < 0 && columns_[column].cType == SQL_C_UBIGINT) { // beyond 63 bits
            const std::string digits = std::to_string(static_cast<std::uint64_t>(value));
            return batch.setText(c, digits.data(), digits.size());
        }
        batch.setInteger(c, value);
        return true;
    }
    case FetchedAs::Real:
        batch.setReal(c, readStruct<double>(data));
        return true;
    case FetchedAs::Date:
    case FetchedAs::Moment:
    case FetchedAs::Time:
        if (const auto days = daysIn(columns_[column], data, length))
            batch.setDate(c, *days);
        else
            batch.setNull(c);
        return true;
    case FetchedAs::Guid: {
        std::string_view digits(data, static_cast<std::size_t>(length));
        if (digits.starts_with('{')) return batch.setText(c, digits.data(), digits.size());
        std::string guid = "{" + std::string(digits) + "}";
        std::ranges::transform(guid, guid.begin(), [](char letter) {
            return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
        });
        return batch.setText(c, guid.data(), guid.size());
    }
    case FetchedAs::Text:
    case FetchedAs::Bytes:
        break;
    }
    if (!longs_.empty())
        if (const auto found = longs_.find({column, row_}); found != longs_.end())
            return storeRun(batch, column, found->second.data(), found->second.size());
    return storeRun(batch, column, data, static_cast<std::size_t>(length));
}

} // namespace norvel::adodb
