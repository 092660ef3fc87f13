// Writes a workbook of the cells that come on the standard input: scrivi_cartella FILE [REPEAT
// [STOP]] A line is a row, its cells are separated by tabs: "n1.5" a number, "b1" a Boolean,
// "d40000.25" a date in days, "h0.5" a time, "tTesto" a text ("\n" and "\t" in it stand for
// themselves), nothing a blank cell. REPEAT: the rows come so many times. STOP: the share of the
// work after which it is given up. Prints what did not fit: "textsCut columnsLeftOut". A
// failure prints its number and text, status 1.
#include "platform/runtime/Errore.h"
#include "platform/spreadsheet/Workbook.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace norvel::spreadsheet;

struct OwnCell {
    CellKind kind = CellKind::Blank;
    double number = 0;
    std::string text;
};

OwnCell parse(const std::string& field) {
    if (field.empty()) return {};
    const std::string rest = field.substr(1);
    if (field[0] == 't') {
        std::string text;
        for (std::size_t i = 0; i < rest.size(); ++i) {
            const bool escaped = rest[i] == '\\' && i + 1 < rest.size();
            if (escaped) ++i;
            text += !escaped ? rest[i] : rest[i] == 'n' ? '\n' : rest[i] == 't' ? '\t' : rest[i];
        }
        return {CellKind::Text, 0, text};
    }
    const CellKind kind = field[0] == 'b'   ? CellKind::Boolean
                          : field[0] == 'd' ? CellKind::Date
                          : field[0] == 'h' ? CellKind::Time
                                            : CellKind::Number;
    return {kind, std::strtod(rest.c_str(), nullptr), {}};
}

class Table : public CellSource {
  public:
    explicit Table(std::int64_t repeat) : repeat_(repeat) {
        for (std::string line; std::getline(std::cin, line);) {
            std::vector<OwnCell> row;
            std::size_t begin = 0;
            for (std::size_t tab = 0; tab != std::string::npos; begin = tab + 1) {
                tab = line.find('\t', begin);
                row.push_back(parse(line.substr(begin, tab - begin)));
            }
            width_ = std::max(width_, row.size());
            rows_.push_back(std::move(row));
        }
    }
    std::int64_t rows() const override { return static_cast<std::int64_t>(rows_.size()) * repeat_; }
    int columns() const override { return static_cast<int>(width_); }
    CellKind columnKind(int column) const override { return cell(0, column).kind; }
    std::unique_ptr<CellReader> reader() const override { return std::make_unique<Reader>(*this); }

  private:
    class Reader : public CellReader {
      public:
        explicit Reader(const Table& table) : table_(table) {}
        std::span<const Cell> read(std::int64_t first, std::size_t count) override {
            cells_.clear();
            const auto end = std::min(table_.rows(), first + static_cast<std::int64_t>(count));
            for (std::int64_t row = first; row < end; ++row)
                for (int column = 0; column < table_.columns(); ++column) {
                    const OwnCell& own = table_.cell(row, column);
                    cells_.push_back({own.kind, own.number, own.text});
                }
            return cells_;
        }

      private:
        const Table& table_;
        std::vector<Cell> cells_;
    };

    const OwnCell& cell(std::int64_t row, int column) const {
        static const OwnCell blank;
        if (rows_.empty()) return blank;
        const auto& cells = rows_[static_cast<std::size_t>(row) % rows_.size()];
        return static_cast<std::size_t>(column) < cells.size()
                   ? cells[static_cast<std::size_t>(column)]
                   : blank;
    }

    std::int64_t repeat_;
    std::size_t width_ = 0;
    std::vector<std::vector<OwnCell>> rows_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const Table table(argc > 2 ? std::atoll(argv[2]) : 1);
    const double stop = argc > 3 ? std::atof(argv[3]) : 2;
    try {
        WorkbookFile file(argv[1], table);
        bool more = true;
        while (more && file.Done() < stop)
            more = file.Step();
        const WorkbookLosses losses = file.Losses();
        std::cout << (more ? "given up " : "") << losses.textsCut << ' ' << losses.columnsLeftOut
                  << '\n';
    } catch (const norvel::Errore& errore) {
        std::cout << errore.numero() << ' ' << errore.descrizione() << '\n';
        return 1;
    }
    return 0;
}
