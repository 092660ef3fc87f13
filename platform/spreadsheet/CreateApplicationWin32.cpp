// The machine's spreadsheet program, called by name.
#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/adodb/ado/Dispatch.h"
#include "platform/adodb/ado/Failures.h"
#include "platform/spreadsheet/Application.h"

#include <utility>

namespace norvel::spreadsheet {

namespace {

using com::DispatchObject;

constexpr int cannotCreate = 429;

DispatchObject createObject(const wchar_t* name) {
    CLSID id{};
    void* object = nullptr;
    const HRESULT known = CLSIDFromProgID(name, &id);
    const HRESULT result =
        FAILED(known) ? known
                      : CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, &object);
    if (FAILED(result))
        throw Errore(cannotCreate, "Impossibile creare l'oggetto Excel.Application: " +
                                       com::failure(result, L"").descrizione());
    return DispatchObject(com::ComPtr<IDispatch>::adopt(static_cast<IDispatch*>(object)));
}

com::OwnedVariant objectArgument(IDispatch* object) {
    com::OwnedVariant argument;
    V_VT(&argument.ref()) = VT_DISPATCH;
    V_DISPATCH(&argument.ref()) = com::ComPtr<IDispatch>::keep(object).detach();
    return argument;
}

// The program works by itself: one step is all of it.
class NamedSaving : public Saving {
  public:
    NamedSaving(DispatchObject book, std::string path)
        : book_(std::move(book)), path_(std::move(path)) {}
    bool Step() override {
        book_.call(L"SaveAs", {com::textArgument(path_)});
        done_ = true;
        return false;
    }
    double Done() const override { return done_ ? 1 : 0; }

  private:
    DispatchObject book_;
    std::string path_;
    bool done_ = false;
};

class NamedRange : public Range {
  public:
    explicit NamedRange(DispatchObject object) : object_(std::move(object)) {}
    void CopyFromRecordset(adodb::Recordset& recordset) override {
        IDispatch* const host = adodb::adoDispatch(recordset);
        if (host == nullptr) throw erroreTipoNonCorrispondente();
        object_.call(L"CopyFromRecordset", {objectArgument(host)});
    }

  private:
    DispatchObject object_;
};

class NamedSheet : public Worksheet {
  public:
    explicit NamedSheet(DispatchObject object) : object_(std::move(object)) {}
    std::shared_ptr<spreadsheet::Range> Range(const std::string& address) override {
        return std::make_shared<NamedRange>(object_.object(L"Range", {com::textArgument(address)}));
    }

  private:
    DispatchObject object_;
};

class NamedBook : public Workbook {
  public:
    explicit NamedBook(DispatchObject object) : object_(std::move(object)) {}
    std::shared_ptr<Worksheet> Worksheets(int index) override {
        return std::make_shared<NamedSheet>(
            object_.object(L"Worksheets", {com::numberArgument(index)}));
    }
    std::unique_ptr<Saving> SaveAs(const std::string& path) override {
        return std::make_unique<NamedSaving>(object_, path);
    }

  private:
    DispatchObject object_;
};

class NamedBooks : public Workbooks {
  public:
    explicit NamedBooks(DispatchObject object) : object_(std::move(object)) {}
    std::shared_ptr<Workbook> Add() override {
        return std::make_shared<NamedBook>(DispatchObject::in(object_.call(L"Add").get()));
    }

  private:
    DispatchObject object_;
};

class NamedApplication : public Application {
  public:
    std::shared_ptr<spreadsheet::Workbooks> Workbooks() override {
        return std::make_shared<NamedBooks>(object_.object(L"Workbooks"));
    }
    void Quit() override { object_.call(L"Quit"); }

  private:
    DispatchObject object_ = createObject(L"Excel.Application");
};

} // namespace

std::shared_ptr<Application> createApplication(const adodb::Recordset& recordset) {
    if (adodb::adoDispatch(recordset) == nullptr) return makeApplication();
    return std::make_shared<NamedApplication>();
}

} // namespace norvel::spreadsheet
