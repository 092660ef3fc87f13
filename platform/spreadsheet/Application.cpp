// The program within this process: what was copied is kept, and written when it is saved.
#include "platform/spreadsheet/Application.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Text.h"
#include "platform/spreadsheet/RecordsetCells.h"

#include <utility>

namespace norvel::spreadsheet {

Saving::~Saving() = default;
Range::~Range() = default;
Worksheet::~Worksheet() = default;
Workbook::~Workbook() = default;
Workbooks::~Workbooks() = default;
Application::~Application() = default;

namespace {

constexpr int applicationError = 1004;
constexpr int badIndex = 9;

class NoCells : public CellSource {
  public:
    std::int64_t rows() const override { return 0; }
    int columns() const override { return 0; }
    CellKind columnKind(int) const override { return CellKind::Blank; }
    std::unique_ptr<CellReader> reader() const override { return nullptr; }
};

using Cells = std::shared_ptr<const CellSource>;

class OwnSaving : public Saving {
  public:
    OwnSaving(const std::string& path, Cells cells)
        : cells_(std::move(cells)), file_(percorsoSistema(path), *cells_) {}
    bool Step() override { return file_.Step(); }
    double Done() const override { return file_.Done(); }
    WorkbookLosses Losses() const override { return file_.Losses(); }

  private:
    Cells cells_;
    WorkbookFile file_;
};

class OwnRange : public Range {
  public:
    explicit OwnRange(std::shared_ptr<Cells> cells) : cells_(std::move(cells)) {}
    void CopyFromRecordset(adodb::Recordset& recordset) override {
        *cells_ = std::make_shared<RecordsetCells>(recordset);
    }

  private:
    std::shared_ptr<Cells> cells_; // of the sheet
};

class OwnSheet : public Worksheet {
  public:
    explicit OwnSheet(std::shared_ptr<Cells> cells) : cells_(std::move(cells)) {}
    std::shared_ptr<spreadsheet::Range> Range(const std::string& address) override {
        if (!equalsText(address, "A1"))
            throw Errore(applicationError, "Intervallo «" + address + "» non disponibile");
        return std::make_shared<OwnRange>(cells_);
    }

  private:
    std::shared_ptr<Cells> cells_;
};

class OwnBook : public Workbook {
  public:
    std::shared_ptr<Worksheet> Worksheets(int index) override {
        if (index != 1) throw Errore(badIndex, "Indice non compreso nell'intervallo");
        return std::make_shared<OwnSheet>(cells_);
    }
    std::unique_ptr<Saving> SaveAs(const std::string& path) override {
        return std::make_unique<OwnSaving>(path, *cells_);
    }

  private:
    std::shared_ptr<Cells> cells_ = std::make_shared<Cells>(std::make_shared<NoCells>());
};

class OwnBooks : public Workbooks {
  public:
    std::shared_ptr<Workbook> Add() override { return std::make_shared<OwnBook>(); }
};

class OwnApplication : public Application {
  public:
    std::shared_ptr<spreadsheet::Workbooks> Workbooks() override {
        return std::make_shared<OwnBooks>();
    }
    void Quit() override {}
};

} // namespace

std::shared_ptr<Application> makeApplication() {
    return std::make_shared<OwnApplication>();
}

} // namespace norvel::spreadsheet
