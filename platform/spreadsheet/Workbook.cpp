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

constexpr int cancelledNumber = 3712;
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

class Writer {
  public:
    Writer(const std::filesystem::path& path, const CellSource& source,
           const WorkbookProgress& progress)
        : source_(source), progress_(progress), file_(path, "Workbook") {
        losses_.columnsLeftOut = std::max(0, source.columns() - columnsPerSheet);
        const int columns = std::min(source.columns(), columnsPerSheet);
        std::int64_t row = 0;
        do { // one sheet at least
            const auto rows = std::min(rowsPerSheet, source.rows() - row);
            parts_.push_back({row, rows, columns});
            row += rows;
        } while (row < source.rows());
        for (unsigned i = 0; i < std::min<std::size_t>(parallelThreads(), parts_.size()); ++i)
            readers_.push_back(source.reader());
    }

    WorkbookLosses write() {
        Bytes head;
        const auto sheetOffsets = putHead(head, parts_.size());
        file_.append(head.all());
        writeTexts();
        Bytes end;
        { const Record record(end, RecordType::Eof); }
        file_.append(end.all());
        writeSheets(sheetOffsets);
        file_.finish();
        return losses_;
    }

  private:
    // Calls make(sheet, reader) for each sheet, several at once, and use(sheet) in their order.
    template <class Make, class Use>
    void eachSheet(Make make, Use use) {
        for (std::size_t begin = 0; begin < parts_.size(); begin += readers_.size()) {
            const std::size_t count = std::min(readers_.size(), parts_.size() - begin);
            runParallel(count, [&](std::size_t i) { make(begin + i, *readers_[i]); });
            for (std::size_t i = 0; i < count; ++i)
                use(begin + i);
            advance(count);
        }
    }

    void writeTexts() {
        std::vector<std::optional<TextRecords>> texts(parts_.size());
        std::vector<std::int64_t> uses(parts_.size());
        firstText_.assign(parts_.size() + 1, 0);
        std::int64_t allUses = 0;
        const std::int64_t table = file_.size();
        eachSheet(
            [&](std::size_t sheet, CellReader& reader) {
                TextNumbers numbers;
                texts[sheet].emplace(sheet == 0);
                uses[sheet] =
                    SheetRecords(source_, reader, parts_[sheet]).writeTexts(*texts[sheet], numbers);
                firstText_[sheet + 1] = numbers.count();
            },
            [&](std::size_t sheet) {
                file_.append(texts[sheet]->bytes().all());
                losses_.textsCut += texts[sheet]->cut();
                texts[sheet].reset();
                allUses += uses[sheet];
                firstText_[sheet + 1] += firstText_[sheet];
            });
        if (allUses > mostTexts) throw erroreOverflow();
        file_.replaceLater(table + static_cast<std::int64_t>(TextRecords::totalsOffset),
                           asBytes({static_cast<std::uint32_t>(allUses),
                                    static_cast<std::uint32_t>(firstText_.back())}));
    }

    void writeSheets(const std::vector<std::int64_t>& offsets) {
        std::vector<Bytes> sheets(parts_.size());
        eachSheet(
            [&](std::size_t sheet, CellReader& reader) {
                SheetRecords(source_, reader, parts_[sheet])
                    .writeCells(sheets[sheet], static_cast<std::uint32_t>(firstText_[sheet]),
                                sheet == 0);
            },
            [&](std::size_t sheet) {
                file_.replaceLater(offsets[sheet],
                                   asBytes({static_cast<std::uint32_t>(file_.size())}));
                file_.append(sheets[sheet].all());
                sheets[sheet] = {};
            });
    }

    void advance(std::size_t sheets) {
        done_ += sheets;
        if (!progress_) return;
        const double share = static_cast<double>(done_) / static_cast<double>(2 * parts_.size());
        if (!progress_(share)) throw Errore(cancelledNumber, "Esportazione annullata");
    }

    const CellSource& source_;
    const WorkbookProgress& progress_;
    CompoundFile file_;
    std::vector<SheetPart> parts_;
    std::vector<std::unique_ptr<CellReader>> readers_;
    std::vector<std::int64_t> firstText_;
    std::size_t done_ = 0;
    WorkbookLosses losses_;
};

} // namespace

WorkbookLosses writeWorkbook(const std::filesystem::path& path, const CellSource& source,
                             const WorkbookProgress& progress) {
    return Writer(path, source, progress).write();
}

} // namespace norvel::spreadsheet
