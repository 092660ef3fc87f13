// Printing for real, by GTK's printing to a file, read back by poppler's tools.
#include "platform/grid/export/ExportRows.h"
#include "platform/grid/preview/PreviewWindow.h"
#include "platform/grid/preview/PrintProgress.h"
#include "platform/grid/preview/PrintRun.h"
#include "tests/platform/grid/window/GridFixture.h"
#include "tests/support/Boxes.h"
#include "tests/support/Script.h"

#include <wx/gtk/print.h>

#include <array>
#include <cstdio>
#include <dlfcn.h>
#include <filesystem>
#include <functional>
#include <random>

namespace norvel::tests {
namespace {

using adodb::RowCount;

template <class Function>
Function gtkCall(const char* name) {
    const auto call = reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
    EXPECT_TRUE(call != nullptr) << name;
    return call;
}

// Nothing is looked for but what prints to files: a machine without a print server would be asked
// for printers a long time.
void filesAlone() {
    auto* settings = gtkCall<void* (*)()>("gtk_settings_get_default")();
    gtkCall<void (*)(void*, const char*, ...)>("g_object_set")(settings, "gtk-print-backends",
                                                               "file", nullptr);
}

// What the dialog begins with: printing to that file.
void printTo(wxPrintDialogData& data, const std::filesystem::path& file) {
    filesAlone();
    const auto set =
        gtkCall<void (*)(GtkPrintSettings*, const char*, const char*)>("gtk_print_settings_set");
    auto* native = dynamic_cast<wxGtkPrintNativeData*>(data.GetPrintData().GetNativeData());
    ASSERT_TRUE(native != nullptr);
    data.GetPrintData().SetPrinterName("Print to File");
    set(native->GetPrintConfig(), "output-file-format", "pdf");
    set(native->GetPrintConfig(), "output-uri", ("file://" + file.string()).c_str());
}

std::string outputOf(const std::string& command) {
    std::string text;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return text;
    std::array<char, 4096> part{};
    for (std::size_t n = 0; (n = fread(part.data(), 1, part.size(), pipe)) > 0;)
        text.append(part.data(), n);
    pclose(pipe);
    return text;
}

class PrintFileTest : public GridTest {
  protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("stampa-" + std::to_string(std::random_device()()));
        std::filesystem::create_directories(folder_);
        file_ = folder_ / "stampa.pdf";
    }
    void TearDown() override {
        GridTest::TearDown();
        std::filesystem::remove_all(folder_);
    }
    // Prints what the grid shows; the operator takes the dialog as it opens.
    grid::PrintOutcome print(const grid::PrintSettings& settings) {
        const auto host = source_.Recordset();
        const auto shown = grid::exportTable(grid_->Columns(), grid_->Style(), "");
        const auto rows = std::make_shared<grid::ExportRows>(*host, shown);
        wxFont italic(grid_->GetFont());
        italic.SetStyle(wxFONTSTYLE_ITALIC);
        painter_ = grid::makePagePainter({grid_->GetFont(), italic, grid_->GetFont()});
        const grid::PrintJob job(
            grid::printTable(shown, grid_->SplitAt(0), grid_->Style(), settings), rows->Count(),
            [rows, this](RowCount first, RowCount count) {
                if (beforeRead_) beforeRead_();
                return rows->Values(first, count);
            },
            painter_->Sizes());
        pages_ = job.PageCount();
        wxPrintDialogData data;
        data.GetPrintData().SetPaperId(wxPAPER_A4);
        const bool lies = settings.Orientation == grid::PageOrientation::Landscape;
        data.GetPrintData().SetOrientation(lies ? wxLANDSCAPE : wxPORTRAIT);
        printTo(data, file_);
        grid::Printout printout("Ricerca clienti", job, *painter_);
        grid::PrintOutcome outcome;
        if (beforePrint_) beforePrint_();
        Script script;
        script.waitFor("il dialogo di sistema", [&] { return !frame_->IsActive(); })
            .pause(700) // it looks for printers
            .then("Stampa", [&] {
                screenshotOfDisplay("stampa-dialogo");
                robot_.press(answer_);
            });
        if (meanwhile_) meanwhile_(script);
        script.run([&] { outcome = runPrint(*frame_, printout, data, true); }, 60000);
        return outcome;
    }
    static grid::PrintSettings usual() {
        grid::PrintSettings settings;
        settings.PageHeader = "Ricerca clienti";
        settings.PageFooter = "\\tPage: \\p";
        return settings;
    }
    std::string pageText(int page) const {
        const std::string number = std::to_string(page);
        return outputOf("pdftotext -layout -f " + number + " -l " + number + " '" + file_.string() +
                        "' -");
    }

    void keepPictures(const char* name) const {
        outputOf("pdftoppm -r 80 -png '" + file_.string() + "' '" +
                 (outputFolder() / name).string() + "'");
    }
    // Where the word begins on the first page, points.
    double leftOf(const std::string& word) const {
        const std::string all = outputOf("pdftotext -bbox -f 1 -l 1 '" + file_.string() + "' -");
        const std::size_t found = all.find('>' + word + '<');
        const std::size_t start = all.rfind("xMin=\"", found);
        if (found == std::string::npos || start == std::string::npos) return -1;
        return std::stod(all.substr(start + 6));
    }

    std::filesystem::path folder_, file_;
    std::unique_ptr<grid::PagePainter> painter_;
    RowCount pages_ = 0;
    int answer_ = WXK_RETURN; // to the dialog
    std::function<void()> beforePrint_, beforeRead_;
    std::function<void(Script&)> meanwhile_;
};

TEST_F(PrintFileTest, EveryPageOfThePreviewIsPrinted) {
    openCustomers(100);
    grid_->SplitAt(0).AlternatingRowStyle = true;
    const grid::PrintOutcome outcome = print(usual());
    EXPECT_TRUE(outcome.printed) << outcome.reason;
    ASSERT_TRUE(std::filesystem::exists(file_));
    const std::string info = outputOf("pdfinfo '" + file_.string() + "'");
    EXPECT_NE(info.find("Pages:           " + std::to_string(pages_)), std::string::npos) << info;
    EXPECT_NE(info.find("(A4)"), std::string::npos) << info;
    const std::string first = pageText(1);
    EXPECT_NE(first.find("Ricerca clienti"), std::string::npos);
    EXPECT_NE(first.find("ragione_sociale"), std::string::npos);
    EXPECT_NE(first.find("Page: 1"), std::string::npos);
    EXPECT_NEAR(leftOf("Ricerca"), 42.5, 1.5) << "the margin of 15 mm, in points";
    EXPECT_NEAR(leftOf("Page:"), 297.6 - 15, 4) << "in the centre of the paper";
    EXPECT_NE(pageText(2).find("ragione_sociale"), std::string::npos) << "headings on every page";
    keepPictures("stampa");
}

TEST_F(PrintFileTest, LandscapePagesLie) {
    openCustomers(40);
    grid::PrintSettings settings = usual();
    settings.Orientation = grid::PageOrientation::Landscape;
    EXPECT_TRUE(print(settings).printed);
    const std::string info = outputOf("pdfinfo '" + file_.string() + "'");
    EXPECT_NE(info.find("Pages:           " + std::to_string(pages_)), std::string::npos) << info;
    EXPECT_NE(info.find("841"), std::string::npos) << info;
    EXPECT_NE(pageText(1).find("fatturato"), std::string::npos) << "seven columns fit across";
    EXPECT_NEAR(leftOf("Ricerca"), 42.5, 1.5);
    keepPictures("stampa-orizzontale");
}

// The pages come from GTK's loop without a pause, so there is no quiet moment in which the robot
// could press a key: the button is pressed by its event.
TEST_F(PrintFileTest, APrintThatTakesLongTellsHowFarItIsAndCanBeCancelled) {
    openCustomers(1000000);
    const auto progress = []() -> wxWindow* {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* p = dynamic_cast<grid::PrintProgress*>(w); p && p->IsShown()) return p;
        return nullptr;
    };
    meanwhile_ = [&](Script& script) {
        script
            .waitFor(
                "a che punto", [&] { return progress() != nullptr; }, 10000)
            .pause(500)
            .then("Annulla", [&] {
                outputOf("import -window root '" +
                         (outputFolder() / "stampa-avanzamento.png").string() + "'");
                EXPECT_FALSE(frame_->IsEnabled());
                wxCommandEvent pressed(wxEVT_BUTTON, wxID_CANCEL);
                progress()->FindWindow(wxID_CANCEL)->ProcessWindowEvent(pressed);
            });
    };
    const grid::PrintOutcome outcome = print(usual());
    EXPECT_FALSE(outcome.printed);
    EXPECT_EQ(outcome.reason, "") << "left by the operator";
    EXPECT_LT(rows_->rowsRead(), 1000000);
    EXPECT_TRUE(frame_->IsEnabled());
}

// From the preview: the dialog is left, and the second time a page cannot be read.
TEST_F(PrintFileTest, ThePreviewPrintsStaysOpenAndSaysWhatFailed) {
    Boxes boxes;
    openCustomers(100);
    const auto preview = []() -> grid::PreviewWindow* {
        for (wxWindow* w : wxTopLevelWindows)
            if (auto* p = dynamic_cast<grid::PreviewWindow*>(w); p && p->IsShown()) return p;
        return nullptr;
    };
    const auto inPreview = [&] { return preview() && preview()->IsActive(); };
    const auto inDialog = [&] { return preview() && !preview()->IsActive(); };
    Script script;
    script.waitFor("anteprima", inPreview)
        .then("stampa",
              [&] {
                  printTo(preview()->Printer(), file_);
                  robot_.press('P', wxMOD_CONTROL);
              })
        .waitFor("il dialogo", inDialog)
        .pause(700)
        .then("Esc", [&] { robot_.press(WXK_ESCAPE); })
        .waitFor("ancora aperta", inPreview)
        .then("stampa",
              [&] {
                  EXPECT_TRUE(boxes.shown().empty());
                  rows_->failReads(Errore(3709, "La connessione \xC3\xA8 chiusa"));
                  robot_.press('P', wxMOD_CONTROL);
              })
        .waitFor("il dialogo", inDialog)
        .pause(700)
        .then("Invio", [&] { robot_.press(WXK_RETURN); })
        .waitFor("lo dice", [&] { return !boxes.shown().empty() && inPreview(); })
        .then("Esc", [&] { robot_.press(WXK_ESCAPE); });
    script.run([&] { grid_->PrintInfo().PrintPreview(); }, 60000);
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(boxes.lastText(),
              "La stampa non \xC3\xA8 riuscita.\r\nLa connessione \xC3\xA8 chiusa");
    EXPECT_EQ(boxes.shown()[0].titolo, "Anteprima di stampa");
}

TEST_F(PrintFileTest, ThePrintDialogCanBeLeft) {
    openCustomers(10);
    answer_ = WXK_ESCAPE;
    const grid::PrintOutcome outcome = print(usual());
    EXPECT_FALSE(outcome.printed);
    EXPECT_EQ(outcome.reason, "");
    EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(PrintFileTest, RowsThatCannotBeReadEndThePrintWithTheirReason) {
    Boxes boxes;
    openCustomers(100);
    beforePrint_ = [&] { rows_->failReads(Errore(3709, "La connessione \xC3\xA8 chiusa")); };
    const grid::PrintOutcome outcome = print(usual());
    EXPECT_FALSE(outcome.printed);
    EXPECT_EQ(outcome.reason, "La connessione \xC3\xA8 chiusa");
    EXPECT_TRUE(boxes.shown().empty()) << "whoever prints says it";
}

TEST_F(PrintFileTest, MemoryThatRunsOutEndsThePrintWithThatReason) {
    openCustomers(100);
    beforeRead_ = [] { std::string().reserve(std::size_t{1} << (sizeof(void*) * 8 - 2)); };
    const grid::PrintOutcome outcome = print(usual());
    EXPECT_FALSE(outcome.printed);
    EXPECT_EQ(outcome.reason, "Memoria esaurita");
}

} // namespace
} // namespace norvel::tests
