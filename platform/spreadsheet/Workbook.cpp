#include "platform/spreadsheet/Workbook.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/Parallel.h"
#include "platform/spreadsheet/CompoundFile.h"
#include "platform/spreadsheet/Records.h"
#include "platform/spreadsheet/SheetRecords.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace norvel::spreadsheet {

namespace {

constexpr std::int64_t mostTexts = 0x7FFFFFFF; // a signed number counts them

void putBof(Bytes& out) {
    const Record record(out, RecordType::Bof);
    out.put16(0x0600); // the format's eighth version
    out.put16(0x0005); // the workbook's own part
    out.put16(0x0DBB);
    out.put16(0x07CC);
    out.put32(0x000000C1);
    out.put32(0x00000006);
}

void putWindow(Bytes& out) {
    const Record record(out, RecordType::Window1);
    out.put16(0);
    out.put16(0);
    out.put16(0x4650); // width and height, twips
    out.put16(0x2EE0);
    out.put16(0x0038); // both scroll bars, tabs
    out.put16(0);
    out.put16(0);
    out.put16(1);
    out.put16(0x0258);
}

// Four are the least that a reader expects.
void putFonts(Bytes& out) {
    for (int i = 0; i < 4; ++i) {
        Record record(out, RecordType::Font);
        out.put16(200); // 10 points, in twips
        out.put16(0);
        out.put16(0x7FFF); // automatic colour
        out.put16(400);
        out.zeros(2 + 4);
        record.shortText("Arial");
    }
}

// number: of a built-in number format.
void putFormat(Bytes& out, unsigned number, bool ofStyle) {
    const Record record(out, RecordType::Xf);
    out.put16(0);
    out.put16(number);
    out.put16(ofStyle ? 0xFFF5 : 0x0001); // its parent; locked
    out.put8(0x20);                       // general, at the bottom
    out.put8(0);
    out.put8(0);
    out.put8(ofStyle ? 0xF4 : number == 0 ? 0x00 : 0x04); // what it sets itself
    out.put32(0);
    out.put32(0);
    out.put16(0x20C0); // no fill
}

// Fifteen formats of styles come first, then those of cells in the order of CellFormat.
void putFormats(Bytes& out) {
    constexpr unsigned shortDate = 14, dateAndTime = 22, time = 21;
    for (unsigned i = 0; i < static_cast<unsigned>(CellFormat::General); ++i)
        putFormat(out, 0, true);
    for (const unsigned number : {0U, shortDate, dateAndTime, time})
        putFormat(out, number, false);
    const Record record(out, RecordType::Style);
    out.put16(0x8000); // built in, of the first format
    out.put8(0);       // "Normal"
    out.put8(0xFF);
}

// The workbook's own part up to the texts; where the sheets' offsets will stand.
std::vector<std::int64_t> putHead(Bytes& out, std::size_t sheets) {
    putBof(out);
    {
        const Record record(out, RecordType::CodePage);
        out.put16(1200); // UTF-16
    }
    putWindow(out);
    {
        const Record record(out, RecordType::Date1904);
        out.put16(0);
    }
    putFonts(out);
    putFormats(out);
    std::vector<std::int64_t> offsets;
    for (std::size_t i = 0; i < sheets; ++i) {
        Record record(out, RecordType::BoundSheet);
        offsets.push_back(static_cast<std::int64_t>(out.size()));
        out.put32(0);
        out.put16(0);
        record.shortText("Foglio" + std::to_string(i + 1));
    }
    return offsets;
}

std::vector<std::byte> asBytes(std::initializer_list<std::uint32_t> values) {
    Bytes out;
    for (const std::uint32_t value : values)
        out.put32(value);
    const auto all = out.all();
    return {all.begin(), all.end()};
}

// A part of a sheet, as the first pass cut it.
struct Part {
    SheetPart rows;
    std::size_t sheet = 0;
    std::uint32_t firstText = 0;
};

} // namespace

// Two passes over the rows, in parts that all processors work on: the texts, which stand before the
// sheets in the file, then the cells, which refer to texts by number.
struct WorkbookFile::Impl {
    Impl(const std::filesystem::path& path, const CellSource& source)
        : source_(source), columns_(std::min(source.columns(), columnsPerSheet)),
          records_(source, columns_), file_(path, "Workbook") {
        losses_.columnsLeftOut = std::max(0, source.columns() - columnsPerSheet);
        sheets_ = static_cast<std::size_t>(
            std::max<std::int64_t>(1, (source.rows() + rowsPerSheet - 1) / rowsPerSheet));
        for (unsigned i = 0; i < parallelThreads(); ++i)
            readers_.push_back(source.reader());
        partRows_ = mostPartRows();
        Bytes head;
        sheetOffsets_ = putHead(head, sheets_);
        file_.append(head.all());
        textTable_ = file_.size();
    }

    bool step() {
        if (!textsEnded_)
            stepTexts();
        else if (nextPart_ < parts_.size())
            stepCells();
        if (textsEnded_ && nextPart_ == parts_.size()) return finish();
        return true;
    }

    double done() const {
        const auto rows = static_cast<double>(std::max<std::int64_t>(1, source_.rows()));
        const double cells = nextPart_ == parts_.size()
                                 ? rows
                                 : static_cast<double>(parts_[nextPart_].rows.firstRow);
        return (static_cast<double>(nextRow_) + (textsEnded_ ? cells : 0)) / (2 * rows);
    }
    const WorkbookLosses& losses() const { return losses_; }

  private:
    static constexpr std::size_t textLimit = std::size_t{4} << 20U; // bytes of a part's texts

    std::int64_t mostPartRows() const {
        constexpr std::int64_t most = 8192;
        constexpr std::int64_t cells = std::int64_t{1} << 18U;
        return std::clamp<std::int64_t>(cells / std::max(1, columns_), 64, most);
    }

    // The next parts, one a reader; none crosses the end of a sheet.
    std::vector<Part> plan() const {
        std::vector<Part> parts;
        for (std::int64_t row = nextRow_; row < source_.rows() && parts.size() < readers_.size();) {
            const std::int64_t inSheet = row % rowsPerSheet;
            const auto rows = std::min({partRows_, rowsPerSheet - inSheet, source_.rows() - row});
            parts.push_back({{row, rows, static_cast<std::uint32_t>(inSheet)},
                             static_cast<std::size_t>(row / rowsPerSheet),
                             0});
            row += rows;
        }
        return parts;
    }

    void stepTexts() {
        std::vector<Part> parts = plan();
        std::vector<std::optional<TextRecords>> texts(parts.size());
        std::vector<SheetRecords::Texts> written(parts.size());
        runParallel(parts.size(), [&](std::size_t i) {
            texts[i].emplace(nextRow_ == 0 && i == 0); // the first begins the table
            SheetRecords records = records_;
            written[i] = records.writeTexts(*readers_[i], parts[i].rows, textLimit, *texts[i]);
        });
        if (parts.empty()) writeEmptyTable();
        bool whole = true;
        for (std::size_t i = 0; i < parts.size() && whole; ++i) {
            // A part whose texts became too many ends early; what follows it is cut anew.
            whole = written[i].rows == parts[i].rows.rows;
            parts[i].rows.rows = written[i].rows;
            take(parts[i], *texts[i], written[i]);
        }
        partRows_ = whole ? std::min(mostPartRows(), partRows_ * 2)
                          : std::max<std::int64_t>(1, parts_.back().rows.rows / 2);
        if (nextRow_ >= source_.rows()) endTexts();
    }

    void writeEmptyTable() {
        TextRecords table(true);
        table.finish();
        file_.append(table.bytes().all());
    }

    void take(Part part, const TextRecords& texts, const SheetRecords::Texts& written) {
        file_.append(texts.bytes().all());
        losses_.textsCut += texts.cut();
        textUses_ += written.uses;
        part.firstText = static_cast<std::uint32_t>(textCount_);
        textCount_ += written.count;
        if (textUses_ > mostTexts) throw erroreOverflow();
        parts_.push_back(part);
        nextRow_ += part.rows.rows;
    }

    void endTexts() {
        textsEnded_ = true;
        file_.replaceLater(textTable_ + static_cast<std::int64_t>(TextRecords::totalsOffset),
                           asBytes({static_cast<std::uint32_t>(textUses_),
                                    static_cast<std::uint32_t>(textCount_)}));
        Bytes end;
        { const Record record(end, RecordType::Eof); }
        file_.append(end.all());
    }

    void stepCells() {
        const std::size_t count = std::min(readers_.size(), parts_.size() - nextPart_);
        std::vector<Bytes> cells(count);
        runParallel(count, [&](std::size_t i) {
            const Part& part = parts_[nextPart_ + i];
            SheetRecords records = records_;
            records.writeCells(*readers_[i], part.rows, part.firstText, cells[i]);
        });
        for (const Bytes& bytes : cells) {
            const Part& part = parts_[nextPart_++];
            if (part.rows.placeInSheet == 0) beginSheet(part.sheet);
            file_.append(bytes.all());
        }
    }

    void beginSheet(std::size_t sheet) {
        endSheet();
        openSheet_ = sheet;
        file_.replaceLater(sheetOffsets_[sheet],
                           asBytes({static_cast<std::uint32_t>(file_.size())}));
        const std::int64_t first = static_cast<std::int64_t>(sheet) * rowsPerSheet;
        Bytes begin;
        records_.writeBegin(std::min(rowsPerSheet, source_.rows() - first), begin);
        file_.append(begin.all());
    }

    void endSheet() {
        if (!openSheet_) return;
        Bytes end;
        SheetRecords::writeEnd(*openSheet_ == 0, end);
        file_.append(end.all());
        openSheet_.reset();
    }

    bool finish() {
        if (parts_.empty()) beginSheet(0); // there is one, at least
        endSheet();
        file_.finish();
        return false;
    }

    const CellSource& source_;
    int columns_;
    SheetRecords records_;
    CompoundFile file_;
    std::vector<std::unique_ptr<CellReader>> readers_;
    std::size_t sheets_ = 1;
    std::vector<std::int64_t> sheetOffsets_;
    std::int64_t textTable_ = 0;
    std::int64_t partRows_ = 1;
    std::vector<Part> parts_;
    std::int64_t nextRow_ = 0; // of the pass over texts
    bool textsEnded_ = false;
    std::int64_t textUses_ = 0, textCount_ = 0;
    std::size_t nextPart_ = 0; // of the pass over cells
    std::optional<std::size_t> openSheet_;
    WorkbookLosses losses_;
};

WorkbookFile::WorkbookFile(const std::filesystem::path& path, const CellSource& source)
    : impl_(std::make_unique<Impl>(path, source)) {}

WorkbookFile::~WorkbookFile() = default;

bool WorkbookFile::Step() {
    return impl_->step();
}

double WorkbookFile::Done() const {
    return impl_->done();
}

WorkbookLosses WorkbookFile::Losses() const {
    return impl_->losses();
}

} // namespace norvel::spreadsheet
