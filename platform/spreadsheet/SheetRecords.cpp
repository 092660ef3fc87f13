#include "platform/spreadsheet/SheetRecords.h"

#include "platform/runtime/Formats.h"
#include "platform/spreadsheet/Records.h"

#include <cmath>
#include <cstring>

namespace norvel::spreadsheet {

namespace {

constexpr std::size_t blockRows = 512;

// Days of OLE Automation and of the workbook are the same from 1 March 1900 on; before it the
// workbook counts a 29 February 1900 that never was, and before 1900 it has no dates.
constexpr double firstCommonDay = 61;
constexpr double firstWorkbookDay = 2; // 1 January 1900

bool isMidnight(double days) {
    return days == std::floor(days);
}

// A cell record's head: row, column, format.
std::byte* cellHead(Bytes& out, RecordType type, std::size_t payload, std::uint32_t place,
                    CellFormat format) {
    std::byte* at = out.extend(recordHeaderBytes + payload);
    const auto put16 = [&](unsigned value) {
        const auto half = static_cast<std::uint16_t>(value);
        std::memcpy(at, &half, sizeof half);
        at += sizeof half;
    };
    put16(static_cast<unsigned>(type));
    put16(static_cast<unsigned>(payload));
    put16(place & 0xFFFFU);
    put16(place >> 16U);
    put16(static_cast<unsigned>(format));
    return at;
}

// Whole numbers of 30 bits have a record of their own, four bytes shorter.
void putNumber(Bytes& out, std::uint32_t place, double value, CellFormat format) {
    if (value >= -536870912.0 && value < 536870912.0) {
        const auto whole = static_cast<std::int32_t>(value);
        if (static_cast<double>(whole) == value && !(whole == 0 && std::signbit(value))) {
            const std::uint32_t packed = static_cast<std::uint32_t>(whole) << 2U | 2U;
            std::memcpy(cellHead(out, RecordType::Rk, 10, place, format), &packed, sizeof packed);
            return;
        }
    }
    std::memcpy(cellHead(out, RecordType::Number, 14, place, format), &value, sizeof value);
}

// value: 0 or 1, or an error's number.
void putBoolErr(Bytes& out, std::uint32_t place, unsigned value, bool isError) {
    std::byte* at = cellHead(out, RecordType::BoolErr, 8, place, CellFormat::General);
    at[0] = static_cast<std::byte>(value);
    at[1] = static_cast<std::byte>(isError ? 1 : 0);
}

void putText(Bytes& out, std::uint32_t place, std::uint32_t number) {
    std::memcpy(cellHead(out, RecordType::LabelSst, 10, place, CellFormat::General), &number,
                sizeof number);
}

void putValue(Bytes& out, std::uint32_t place, const Cell& cell) {
    constexpr unsigned numError = 0x24;
    switch (cell.kind) {
    case CellKind::Boolean:
        return putBoolErr(out, place, cell.number != 0 ? 1 : 0, false);
    case CellKind::Date: {
        const double day = cell.number < firstCommonDay ? cell.number - 1 : cell.number;
        return putNumber(out, place, day,
                         isMidnight(day) ? CellFormat::Date : CellFormat::DateAndTime);
    }
    case CellKind::Time:
        return putNumber(out, place, cell.number, CellFormat::Time);
    default:
        if (!std::isfinite(cell.number)) return putBoolErr(out, place, numError, true);
        return putNumber(out, place, cell.number, CellFormat::General);
    }
}

} // namespace

// visit(row, place, cell): the row of the part; in the place the sheet's row is the low half, the
// column the high one. False: no rows behind this one.
template <class Visit>
void SheetRecords::eachCell(CellReader& reader, SheetPart part, Visit visit) const {
    const auto width = static_cast<std::size_t>(source_.columns());
    std::int64_t row = 0;
    while (row < part.rows) {
        const auto wanted = std::min<std::int64_t>(blockRows, part.rows - row);
        const auto cells = reader.read(part.firstRow + row, static_cast<std::size_t>(wanted));
        const std::size_t got = width == 0 ? 0 : cells.size() / width;
        if (got == 0) return;
        for (std::size_t r = 0; r < got; ++r, ++row) {
            const auto place = part.placeInSheet + static_cast<std::uint32_t>(row);
            bool more = true;
            for (int c = 0; c < columns_; ++c) {
                const Cell& cell = cells[r * width + static_cast<std::size_t>(c)];
                if (cell.kind == CellKind::Blank) continue;
                if (!visit(row, place | static_cast<std::uint32_t>(c) << 16U, cell)) more = false;
            }
            if (!more) return;
        }
    }
}

bool SheetRecords::textOf(const Cell& cell, std::string_view& text) {
    if (cell.kind == CellKind::Text) {
        text = cell.text;
        return true;
    }
    if (cell.kind != CellKind::Date || cell.number >= firstWorkbookDay) return false;
    oldDate_ = dateToText(Date{cell.number});
    text = oldDate_;
    return true;
}

SheetRecords::Texts SheetRecords::writeTexts(CellReader& reader, SheetPart part, std::size_t limit,
                                             TextRecords& out) {
    TextNumbers numbers;
    Texts texts{part.rows, 0, 0};
    eachCell(reader, part, [&](std::int64_t row, std::uint32_t, const Cell& cell) {
        std::string_view text;
        if (!textOf(cell, text)) return true;
        ++texts.uses;
        if (numbers.number(text).isNew) out.add(text);
        if (out.bytes().size() <= limit) return true;
        texts.rows = row + 1;
        return false;
    });
    out.finish();
    texts.count = numbers.count();
    return texts;
}

// Wide enough for a date and its time; the rest keeps the program's own width but for texts.
void SheetRecords::writeColumns(Bytes& out) const {
    constexpr unsigned character = 256; // the unit is 1/256 of a digit's width
    for (int c = 0; c < columns_; ++c) {
        unsigned characters = 0;
        if (source_.columnKind(c) == CellKind::Date) characters = 18;
        if (source_.columnKind(c) == CellKind::Text) characters = 24;
        if (characters == 0) continue;
        const Record record(out, RecordType::ColInfo);
        out.put16(static_cast<unsigned>(c));
        out.put16(static_cast<unsigned>(c));
        out.put16(characters * character);
        out.put16(static_cast<unsigned>(CellFormat::General));
        out.put16(0);
        out.put16(0);
    }
}

void SheetRecords::writeBegin(std::int64_t rows, Bytes& out) const {
    {
        const Record record(out, RecordType::Bof);
        out.put16(0x0600);
        out.put16(0x0010); // a sheet
        out.put16(0x0DBB);
        out.put16(0x07CC);
        out.put32(0x000000C1);
        out.put32(0x00000006);
    }
    writeColumns(out);
    const Record record(out, RecordType::Dimensions);
    out.put32(0);
    out.put32(static_cast<std::uint32_t>(rows));
    out.put16(0);
    out.put16(static_cast<unsigned>(columns_));
    out.put16(0);
}

void SheetRecords::writeCells(CellReader& reader, SheetPart part, std::uint32_t firstText,
                              Bytes& out) {
    TextNumbers numbers;
    eachCell(reader, part, [&](std::int64_t, std::uint32_t place, const Cell& cell) {
        std::string_view text;
        if (textOf(cell, text))
            putText(out, place, firstText + numbers.number(text).number);
        else
            putValue(out, place, cell);
        return true;
    });
}

void SheetRecords::writeEnd(bool shown, Bytes& out) {
    {
        const Record record(out, RecordType::Window2);
        out.put16(shown ? 0x06B6 : 0x00B6); // grid lines, headings, zeros; selected and on show
        out.zeros(4);
        out.put32(0x00000040); // automatic colour of grid lines
        out.zeros(8);
    }
    const Record end(out, RecordType::Eof);
}

} // namespace norvel::spreadsheet
