#include "platform/grid/export/ExportFile.h"

#include "platform/grid/export/ColumnEncoder.h"
#include "platform/grid/model/CellText.h"
#include "platform/runtime/Parallel.h"
#include "platform/runtime/WholeFile.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using namespace adodb;

namespace {

std::string_view viewOf(const GrowingBytes& bytes) {
    return {bytes.data(), bytes.size()};
}

} // namespace

// Where rows come from: encodes the next ones and hands over those of the call before.
class ExportFile::Rows {
  public:
    virtual ~Rows() = default;
    // False once every row is in the file.
    virtual bool step(NewFile& file) = 0;
    RowCount next = 0; // rows before it are encoded
};

// Columns: pieces of rows are encoded by all processors while those of the last step are written.
class ExportFile::ColumnPieces : public Rows {
  public:
    ColumnPieces(const ColumnRows& columns, RowCount count, const std::vector<int>& fields,
                 const Markup& markup)
        : columns_(columns), count_(count), encoder_(columns.store(), fields, markup) {
        const std::size_t pieces = std::size_t{2} * parallelThreads();
        encoded_.resize(pieces);
        written_.resize(pieces);
    }

    bool step(NewFile& file) override {
        std::swap(encoded_, written_);
        plan();
        runParallel(encoded_.size() + 1, [&](std::size_t i) {
            if (i == 0)
                write(file);
            else
                encode(encoded_[i - 1]);
        });
        settle();
        return std::ranges::any_of(encoded_, [](const Piece& p) { return p.done > 0; });
    }

  private:
    struct Piece {
        RowList rows;
        std::size_t done = 0; // of rows
        GrowingBytes bytes;
    };
    static constexpr std::size_t mostRows = 4096;
    static constexpr std::size_t limit = std::size_t{2} << 20U; // bytes of a piece

    void plan() {
        RowCount first = next;
        for (Piece& piece : encoded_) {
            const auto rows = std::min<RowCount>(static_cast<RowCount>(pieceRows_), count_ - first);
            columns_.numbers(first, std::max<RowCount>(0, rows), piece.rows);
            first += static_cast<RowCount>(piece.rows.size());
        }
    }
    void encode(Piece& piece) const {
        piece.bytes.shrink(0);
        piece.done = piece.rows.empty() ? 0 : encoder_.encode(piece.rows, limit, piece.bytes);
    }
    void write(NewFile& file) const {
        for (const Piece& piece : written_)
            if (piece.done > 0) file.append(viewOf(piece.bytes));
    }
    // Behind a piece that became too long the rows are taken anew, in smaller pieces.
    void settle() {
        bool whole = true;
        for (Piece& piece : encoded_) {
            if (!whole) piece.done = 0;
            next += static_cast<RowCount>(piece.done);
            if (!whole || piece.done == piece.rows.size()) continue;
            whole = false;
            pieceRows_ = std::max<std::size_t>(1, piece.done / 2);
        }
        if (whole) pieceRows_ = std::min(mostRows, pieceRows_ * 2);
    }

    const ColumnRows& columns_;
    RowCount count_;
    ColumnEncoder encoder_;
    std::size_t pieceRows_ = mostRows;
    std::vector<Piece> encoded_, written_;
};

// Values: blocks of rows, smaller where values are large.
class ExportFile::ValueBlocks : public Rows {
  public:
    ValueBlocks(ExportRows& rows, const Markup& markup) : rows_(rows), markup_(markup) {}

    bool step(NewFile& file) override {
        const RowBlock block = rows_.Values(next, blockRows_);
        if (block.rows == 0) return false;
        bytes_.shrink(0);
        for (std::size_t row = 0; row < static_cast<std::size_t>(block.rows); ++row) {
            for (std::size_t c = 0; c < markup_.before.size(); ++c) {
                appendBytes(bytes_, markup_.before[c]);
                appendText(bytes_, wholeCellText(block.values[c][row]), markup_.html);
            }
            appendBytes(bytes_, markup_.rowEnd);
        }
        file.append(viewOf(bytes_));
        next += block.rows;
        blockRows_ = bytes_.size() > heavy ? std::max<RowCount>(1, blockRows_ / 4)
                                           : std::min(mostRows, blockRows_ * 2);
        return true;
    }

  private:
    static constexpr RowCount mostRows = 1024;
    static constexpr std::size_t heavy = std::size_t{1} << 20U; // bytes

    ExportRows& rows_;
    const Markup& markup_;
    RowCount blockRows_ = 16;
    GrowingBytes bytes_;
};

struct ExportFile::Impl {
    Impl(Recordset& host, ExportTable table, const ExportSpec& spec,
         const std::filesystem::path& path)
        : rows(host, std::move(table)), markup(markupOf(rows.Table(), spec)), file(path) {
        if (rows.AsColumns())
            source = std::make_unique<ColumnPieces>(*rows.AsColumns(), rows.Count(),
                                                    rows.FieldNumbers(), markup);
        else
            source = std::make_unique<ValueBlocks>(rows, markup);
        file.append(markup.head);
    }

    ExportRows rows;
    Markup markup;
    NewFile file;
    std::unique_ptr<Rows> source;
};

ExportFile::ExportFile(Recordset& host, ExportTable table, const ExportSpec& spec,
                       const std::filesystem::path& file)
    : impl_(std::make_unique<Impl>(host, std::move(table), spec, file)) {}

ExportFile::~ExportFile() = default;

bool ExportFile::Step() {
    if (impl_->source->step(impl_->file)) return true;
    impl_->file.append(impl_->markup.tail);
    impl_->file.commit(false);
    return false;
}

double ExportFile::Done() const {
    if (impl_->source->next >= impl_->rows.Count()) return 1;
    return static_cast<double>(impl_->source->next) / static_cast<double>(impl_->rows.Count());
}

} // namespace norvel::grid
