// How long the grid takes to repaint itself whole, at many places of ten million rows, every time
// over rows that it has not shown before.
//
// bench_grid [rows] [columns]: columns more than nine repeat the customers' fields.
//
// Then the same over a million rows of a real recordset: as they are, in 400 groups that are all
// closed, and all open.
#include "platform/grid/Grid.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/init.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace norvel;
using Clock = std::chrono::steady_clock;

constexpr int repaints = 60; // at each place
const wxSize paintedSize(1920, 1080);

double milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

std::vector<tests::GeneratedColumn> columnsFor(int count) {
    const auto customers = tests::customerColumns();
    std::vector<tests::GeneratedColumn> columns;
    for (int i = 0; i < count; ++i) {
        columns.push_back(customers[static_cast<std::size_t>(i) % customers.size()]);
        if (i >= static_cast<int>(customers.size())) columns.back().name += "_" + std::to_string(i);
    }
    return columns;
}

struct Times {
    std::vector<double> whole; // until the display has drawn what was asked of it
    double client = 0;         // the sum of the program's own part

    void print(const char* where) {
        std::ranges::sort(whole);
        std::printf("%-22s %8.2f %8.2f %8.2f %8.2f\n", where, client / repaints, whole.front(),
                    whole[whole.size() / 2], whole.back());
    }
};

// The answer to any question to the display comes behind all that was drawn before.
void waitForDisplay() {
    wxGetMousePosition();
}

Times repaintAt(grid::Grid& grid, adodb::RowCount first, adodb::RowCount step, int columnStep) {
    Times times;
    const int columns = grid.Columns().Count();
    for (int i = 0; i < repaints; ++i) {
        grid.SetFirstRow(first + i * step);
        if (columnStep > 0) grid.SetCurrentColumn(i * columnStep % columns);
        waitForDisplay();
        const auto start = Clock::now();
        grid.Refresh(false);
        grid.Update();
        const auto painted = Clock::now();
        waitForDisplay();
        times.client += milliseconds(painted - start);
        times.whole.push_back(milliseconds(Clock::now() - start));
    }
    return times;
}

// A host walks over all rows: the grid follows each move.
void walk(adodb::Recordset& recordset, const char* where) {
    recordset.MoveFirst();
    adodb::RowCount steps = 0;
    const auto start = Clock::now();
    for (recordset.MoveNext(); !recordset.EOF_(); recordset.MoveNext())
        ++steps;
    std::printf("%lld moves followed %s: %.0f ms\n", static_cast<long long>(steps), where,
                milliseconds(Clock::now() - start));
}

// What a host does that hands back every selected row.
void followMoves(grid::Grid& grid, adodb::Recordset& recordset) {
    constexpr adodb::RowCount steps = 1'000'000;
    auto& selected = grid.SelBookmarks();
    selected.AddRows(0, steps - 1);
    const auto start = Clock::now();
    for (adodb::RowCount i = 0; i < steps; ++i) {
        grid.SetBookmark(grid.SelBookmarks().Item(0));
        grid.SelBookmarks().Remove(0);
    }
    std::printf("%lld selected rows read and taken out: %.0f ms\n", static_cast<long long>(steps),
                milliseconds(Clock::now() - start));
    walk(recordset, "ungrouped");
}

void run(grid::Grid& grid, adodb::RowCount rows) {
    const adodb::RowCount page = grid.RowsInView();
    std::printf("rows %lld, columns %d (%d rows in view), %d x %d, scale %.2f\n",
                static_cast<long long>(rows), grid.Columns().Count(), static_cast<int>(page),
                grid.GetClientSize().x, grid.GetClientSize().y, grid.GetContentScaleFactor());
    std::printf("%-22s %8s %8s %8s %8s\n", "ms per full repaint", "client", "min", "median", "max");
    repaintAt(grid, 0, 0, 0); // fonts and glyphs are there from now on
    repaintAt(grid, 0, page, 0).print("from the first row");
    repaintAt(grid, rows / 3, page, 0).print("at a third");
    repaintAt(grid, rows / 2, 9973, 0).print("from the middle, far");
    repaintAt(grid, rows - repaints * page, page, 0).print("to the last row");
    repaintAt(grid, rows / 2, 0, 0).print("the same rows");
    if (grid.Columns().Count() > 50)
        repaintAt(grid, rows / 4, page, grid.Columns().Count() / 13).print("across the columns");
}

void settle(wxFrame& frame) {
    frame.Show();
    wxEventLoop loop;
    wxTimer settled;
    settled.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { loop.Exit(); });
    settled.StartOnce(500);
    loop.Run();
}

adodb::RecordsetRef millionRows() {
    auto recordset = adodb::makeClientRecordset();
    recordset->Open("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < "
                    "999999) SELECT i AS codice, 'Cliente ' || (i * 7919 % 1000003) AS nome, "
                    "'Comune di ' || (i * 7919 % 400) AS comune, 'Via ' || (i % 977) AS indirizzo, "
                    "i % 89 AS cap, i * 0.25 AS fatturato, 'Zona ' || (i * 31 % 7) AS zona, "
                    "'Nota ' || (i % 13) AS note, i % 2 AS attivo FROM n",
                    "Provider=SQLite;Data Source=:memory:", adodb::adOpenStatic,
                    adodb::adLockReadOnly);
    return recordset;
}

void repaintLines(grid::Grid& grid, const char* what) {
    const adodb::RowCount page = grid.RowsInView();
    repaintAt(grid, 0, 0, 0);
    const adodb::RowCount step =
        std::min(page, std::max<adodb::RowCount>(1, grid.LineCount() / 99));
    repaintAt(grid, grid.LineCount() / 3, step, 0).print(what);
    repaintAt(grid, grid.LineCount() / 3, 0, 0).print("  the same lines");
}

void grouped() {
    controls::DataControl source;
    source.SetRecordset(millionRows());
    auto* frame = new wxFrame(nullptr, wxID_ANY, "bench_grid", {0, 0}, paintedSize, wxBORDER_NONE);
    auto* grid = new grid::Grid(frame);
    grid->SetDataSource(&source);
    settle(*frame);
    repaintLines(*grid, "ungrouped");
    walk(*source.Recordset(), "ungrouped");
    const auto group = [&](std::vector<std::string> fields) {
        const auto start = Clock::now();
        grid->Style().DataView = grid::dataViewGroups;
        grid->Style().GroupColumns = std::move(fields);
        grid->Changed();
        return milliseconds(Clock::now() - start);
    };
    std::printf("grouped by comune in %.1f ms\n", group({"comune"}));
    repaintLines(*grid, "groups, closed");
    walk(*source.Recordset(), "in closed groups");
    const auto start = Clock::now();
    grid->SetAllGroupsOpen(true);
    std::printf("all opened in %.1f ms\n", milliseconds(Clock::now() - start));
    repaintLines(*grid, "groups, open");
    walk(*source.Recordset(), "in open groups");
    std::printf("grouped by comune, zona in %.1f ms\n", group({"comune", "zona"}));
    repaintLines(*grid, "inner groups, open");
    grid->SetDataSource(nullptr);
    frame->Destroy();
}

void benchmark(adodb::RowCount rows, int columns) {
    controls::DataControl source;
    source.SetRecordset(tests::GeneratedRecordset::make(columnsFor(columns), rows));
    auto* frame = new wxFrame(nullptr, wxID_ANY, "bench_grid", {0, 0}, paintedSize, wxBORDER_NONE);
    auto* grid = new grid::Grid(frame);
    const auto start = Clock::now();
    grid->SetDataSource(&source);
    std::printf("bound in %.1f ms\n", milliseconds(Clock::now() - start));
    const auto changes = Clock::now();
    for (int i = 0; i < columns; ++i) {
        grid->Columns().Item(i).FilterCombo = true;
        grid->Changed();
    }
    std::printf("each column changed by itself: %.1f ms\n", milliseconds(Clock::now() - changes));
    settle(*frame);
    run(*grid, rows);
    if (rows >= 1'000'000) followMoves(*grid, *source.Recordset());
    grid->SetDataSource(nullptr);
    frame->Destroy();
}

} // namespace

int main(int argc, char** argv) {
    const adodb::RowCount rows = argc > 1 ? std::atoll(argv[1]) : 10'000'000;
    const int columns = argc > 2 ? std::atoi(argv[2]) : 9;
    wxApp::SetInstance(new wxApp());
    const wxInitializer toolkit(argc, argv);
    if (!toolkit.IsOk()) {
        std::fprintf(stderr, "bench_grid needs a display (tests/under_display gives one)\n");
        return 2;
    }
    benchmark(rows, columns);
    grouped();
    return 0;
}
