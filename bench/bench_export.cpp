// Exports of a million rows: delimited file, page, workbook, the copy of all cells; beside a bare
// write of as many bytes to the same disk, in the same run.
//
//   bench_export [--righe N] [--giri N] [--file PATH]
//
// Without --file the sample database is made once in the system's folder of temporary files.
#include "bench/Sample.h"
#include "output/AreaSelezionata.h"
#include "platform/adodb/Recordset.h"
#include "platform/grid/export/ExportFile.h"
#include "platform/grid/model/Model.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Parallel.h"
#include "platform/runtime/WholeFile.h"
#include "platform/spreadsheet/RecordsetCells.h"
#include "platform/spreadsheet/Workbook.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace norvel;
namespace fs = std::filesystem;

// So that the next peak is of what runs from now on.
void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

grid::Columns columnsOf(adodb::Recordset& rows) {
    grid::Columns columns;
    for (int i = 0; i < rows.Fields().Count(); ++i) {
        grid::Column column;
        column.DataField = column.Caption = rows.Fields()(i).Name();
        column.DataType = rows.Fields()(i).Type();
        column.Order = i;
        columns.Add(column);
    }
    return columns;
}

struct Result {
    double best = 0; // milliseconds
    double longestStep = 0;
    double peak = 0; // megabytes beyond what was resident before
    std::uintmax_t bytes = 0;
};

void show(const char* name, const Result& result) {
    std::printf("%-12s %10.0f ms %12ju bytes   longest step %6.1f ms   %6.1f MB beyond the rows\n",
                name, result.best, result.bytes, result.longestStep, result.peak);
}

template <class Begin>
Result measure(int rounds, const fs::path& file, Begin begin) {
    Result result;
    for (int i = 0; i < rounds; ++i) {
        fs::remove(file);
        forgetPeak();
        const double before = bench::residentMegabytes("VmRSS:");
        const auto start = bench::Clock::now();
        const auto work = begin();
        bool more = true;
        while (more) {
            const auto step = bench::Clock::now();
            more = work->Step();
            result.longestStep = std::max(result.longestStep, bench::millisecondsSince(step));
        }
        const double took = bench::millisecondsSince(start);
        result.best = i == 0 ? took : std::min(result.best, took);
        result.peak = std::max(result.peak, bench::residentMegabytes("VmHWM:") - before);
        result.bytes = fs::file_size(file);
    }
    return result;
}

// What the disk takes by itself.
double bareWrite(const fs::path& file, std::uintmax_t bytes) {
    const std::string block(std::size_t{1} << 20U, 'x');
    fs::remove(file);
    const auto start = bench::Clock::now();
    NewFile out(file);
    for (std::uintmax_t done = 0; done < bytes; done += block.size())
        out.append(std::string_view(block).substr(
            0, std::min<std::uintmax_t>(block.size(), bytes - done)));
    out.commit(false);
    return bench::millisecondsSince(start);
}

// Every cell of every row, as the two copies have it; without the system's clipboard.
void runClipboard(adodb::Recordset& rows, int rounds) {
    grid::Columns columns = columnsOf(rows);
    for (int i = 0; i < columns.Count(); ++i)
        columns.Item(i).Visible = false;
    std::vector<Variant> bookmarks;
    for (rows.MoveFirst(); !rows.EOF_(); rows.MoveNext())
        bookmarks.push_back(rows.Bookmark());
    output::AreaSelezionata area{true, 0, columns.Count() - 1, {}, {}};
    area.righe = [&] { return static_cast<adodb::RowCount>(bookmarks.size()); };
    area.bookmark = [&](adodb::RowCount i) { return bookmarks[static_cast<std::size_t>(i)]; };
    Result result;
    for (int i = 0; i < rounds; ++i) {
        forgetPeak();
        const double before = bench::residentMegabytes("VmRSS:");
        const auto start = bench::Clock::now();
        output::TestoArea text(columns, area, rows, output::FormaTesto::Semplice);
        bool more = true;
        while (more) {
            const auto step = bench::Clock::now();
            more = text.passo();
            result.longestStep = std::max(result.longestStep, bench::millisecondsSince(step));
        }
        const double took = bench::millisecondsSince(start);
        result.best = i == 0 ? took : std::min(result.best, took);
        result.peak = std::max(result.peak, bench::residentMegabytes("VmHWM:") - before);
        result.bytes = text.testo().size();
    }
    show("clipboard", result);
}

void run(const bench::Settings& settings) {
    const auto rows = adodb::makeClientRecordset();
    rows->Open("SELECT * FROM clienti", "Provider=SQLite;Data Source=" + settings.file);
    std::printf("%lld rows of %d columns; %u threads; %.1f MB resident\n",
                static_cast<long long>(rows->RecordCount()), rows->Fields().Count(),
                parallelThreads(), bench::residentMegabytes("VmRSS:"));
    const grid::Columns columns = columnsOf(*rows);
    const fs::path file = fs::temp_directory_path() / "bench_export.out";
    for (const auto format : {grid::ExportFormat::Delimited, grid::ExportFormat::Html}) {
        grid::ExportSpec spec;
        spec.format = format;
        spec.title = "Clienti";
        const Result result = measure(settings.rounds, file, [&] {
            return std::make_unique<grid::ExportFile>(
                *rows, grid::exportTable(columns, {}, rows->Sort()), spec, file);
        });
        show(format == grid::ExportFormat::Html ? "HTML" : "CSV", result);
        std::printf("%-12s %10.0f ms\n", "bare write", bareWrite(file, result.bytes));
    }
    rows->MoveFirst();
    const spreadsheet::RecordsetCells cells(*rows);
    const Result result = measure(settings.rounds, file, [&] {
        return std::make_unique<spreadsheet::WorkbookFile>(file, cells);
    });
    show("workbook", result);
    std::printf("%-12s %10.0f ms\n", "bare write", bareWrite(file, result.bytes));
    fs::remove(file);
    runClipboard(*rows, settings.rounds);
}

} // namespace

int main(int count, char** arguments) {
    try {
        run(bench::withSampleFile(bench::readArguments(count, arguments)));
        return 0;
    } catch (const Errore& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
