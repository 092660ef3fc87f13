// The command «copia» over a host's own ADO recordset: which calls the spreadsheet program gets.
#include "output/Esportazioni.h"
#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/adodb/ado/Dispatch.h"
#include "tests/support/Boxes.h"
#include "tests/windows/ado/DispatchDouble.h"
#include "tests/windows/prova/Face.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <objbase.h>
#include <random>
#include <string>

namespace norvel::output {
namespace {

using com::ComPtr;
using com::DispatchObject;
using com::OwnedVariant;
using test::Call;
using test::DispatchDouble;

class Apartment : public testing::Environment {
  public:
    void SetUp() override { ASSERT_EQ(CoInitialize(nullptr), S_OK); }
    void TearDown() override { CoUninitialize(); }
};
const auto* const apartment = testing::AddGlobalTestEnvironment(new Apartment);

OwnedVariant objectOf(DispatchDouble& object) {
    OwnedVariant value;
    V_VT(&value.ref()) = VT_DISPATCH;
    object.AddRef();
    V_DISPATCH(&value.ref()) = &object;
    return value;
}

// A spreadsheet program that writes down what it is told.
class Program {
  public:
    Program() {
        application->on(L"Workbooks", [this](Call& call, OwnedVariant& result) {
            note("Application.Workbooks", call);
            result = objectOf(*books.get());
            return S_OK;
        });
        application->on(L"Quit", [this](Call& call, OwnedVariant&) {
            note("Application.Quit", call);
            return S_OK;
        });
        books->on(L"Add", [this](Call& call, OwnedVariant& result) {
            note("Workbooks.Add", call);
            result = objectOf(*book.get());
            return S_OK;
        });
        book->on(L"Worksheets", [this](Call& call, OwnedVariant& result) {
            note("Workbook.Worksheets", call);
            result = objectOf(*sheet.get());
            return S_OK;
        });
        book->on(L"SaveAs", [this](Call& call, OwnedVariant&) {
            note("Workbook.SaveAs", call);
            if (refuses) throw Errore(1004, "Impossibile salvare");
            return S_OK;
        });
        sheet->on(L"Range", [this](Call& call, OwnedVariant& result) {
            note("Worksheet.Range", call);
            result = objectOf(*range.get());
            return S_OK;
        });
        range->on(L"CopyFromRecordset", [this](Call& call, OwnedVariant&) {
            said.push_back("Range.CopyFromRecordset(recordset)");
            const DispatchObject rows = DispatchObject::in(call.rawArgument(0));
            copied = rows.number(L"RecordCount");
            position = rows.number(L"AbsolutePosition");
            return S_OK;
        });
    }

    ComPtr<DispatchDouble> application = DispatchDouble::make(), books = DispatchDouble::make(),
                           book = DispatchDouble::make(), sheet = DispatchDouble::make(),
                           range = DispatchDouble::make();
    std::vector<std::string> said;
    std::int64_t copied = -1, position = -1;
    bool refuses = false;

  private:
    void note(const std::string& member, const Call& call) {
        std::string line = member + "(";
        for (const Variant& argument : call.arguments)
            line += argument.toText();
        said.push_back(line + ")");
    }
};

// The class that the automation name leads to, for this process.
class Registered : public IClassFactory {
  public:
    explicit Registered(Program& program) : program_(program) {
        const bool written =
            write(HKEY_LOCAL_MACHINE) == ERROR_SUCCESS || write(HKEY_CURRENT_USER) == ERROR_SUCCESS;
        EXPECT_TRUE(written);
        CLSID id{};
        CLSIDFromString(identifier, &id);
        EXPECT_EQ(
            CoRegisterClassObject(id, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
            S_OK);
    }
    virtual ~Registered() {
        CoRevokeClassObject(cookie_);
        for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
            RegDeleteTreeW(root, name);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory);
        *out = known ? static_cast<IClassFactory*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
        return program_.application->QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    static constexpr const wchar_t* identifier = L"{7B0D3B55-7E0B-4F6E-9E5C-0B1A6E0C1D21}";
    static constexpr const wchar_t* name = L"Software\\Classes\\Excel.Application";
    // Wine looks for classes of the machine only.
    static LSTATUS write(HKEY root) {
        const std::wstring value = identifier;
        return RegSetKeyValueW(root, (std::wstring(name) + L"\\CLSID").c_str(), nullptr, REG_SZ,
                               value.c_str(),
                               static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }
    Program& program_;
    DWORD cookie_ = 0;
};

class ExcelTest : public testing::Test {
  protected:
    void SetUp() override {
        const adodb::ConnectionRef connection = adodb::makeConnection();
        connection->Open("Provider=SQLite;Data Source=:memory:");
        connection->Execute("CREATE TABLE clienti (codice INTEGER, nome TEXT)");
        connection->Execute(
            "INSERT INTO clienti VALUES (1, 'Rossi'), (2, 'Bianchi'), (3, 'Russo')");
        own->Open("SELECT * FROM clienti", Variant(std::static_pointer_cast<Object>(connection)));
        host = adodb::wrapAdoRecordset(prova::faceOf(own).get());
        // A relative folder, so that the test knows the very text of every path.
        std::random_device random;
        do
            folder =
                std::filesystem::temp_directory_path() / ("nr_excel_" + std::to_string(random()));
        while (!std::filesystem::create_directory(folder));
        std::filesystem::current_path(folder);
        sessione.gPercorso = "nr_excel\\";
        boxes.answer(BoxAnswer::Yes);
    }
    void TearDown() override {
        std::filesystem::current_path(std::filesystem::temp_directory_path());
        std::filesystem::remove_all(folder);
    }

    void esporta() {
        ParteEsportazione parte{sessione, colonne, stile, host};
        parte.attendiRighe = [] { return true; };
        parte.esegui = eseguiTutto;
        parte.clessidra = [](bool) {};
        parte.recordsetEsportazione = [this](int& opzioni) {
            opzioni = -1;
            return esportazione;
        };
        esportaExcel(parte);
    }

    std::filesystem::path folder;
    Program program;
    adodb::RecordsetRef own = adodb::makeClientRecordset(), host;
    adodb::RecordsetRef esportazione =
        adodb::wrapAdoRecordset(prova::faceOf(adodb::makeClientRecordset()).get());
    VariabiliGlobali sessione;
    grid::Columns colonne;
    grid::GridStyle stile;
    tests::Boxes boxes;
};

TEST_F(ExcelTest, TheProgramGetsTheseCallsAndNoOthers) {
    const Registered registered(program);
    host->SetFilter("nome LIKE 'R*'");
    esporta();
    EXPECT_EQ(program.said,
              (std::vector<std::string>{
                  "Application.Workbooks()", "Workbooks.Add()", "Workbook.Worksheets(1)",
                  "Worksheet.Range(A1)", "Range.CopyFromRecordset(recordset)",
                  "Workbook.SaveAs(nr_excel\\export\\export.xls)", "Application.Quit()"}));
    EXPECT_TRUE(std::filesystem::is_directory("nr_excel\\export"));
    EXPECT_EQ(boxes.lastText(),
              "Esportazione effettuata con successo \r\rIl file è stato creato in "
              "nr_excel\\export\\export.xls");
}

TEST_F(ExcelTest, TheRecordsetHoldsTheRowsOfTheFilterFromTheFirstOn) {
    const Registered registered(program);
    host->SetFilter("nome LIKE 'R*'");
    esporta();
    EXPECT_EQ(program.copied, 2);
    EXPECT_EQ(program.position, 1);
    EXPECT_EQ(esportazione->State(), adodb::adStateClosed) << "its rows go when it is done";
}

TEST_F(ExcelTest, AProgramThatIsNotThereIsAnError) {
    esporta();
    EXPECT_TRUE(boxes.lastText().starts_with(
        "Si è verificato un errore durante l'operazione di esportazione\r429 - "))
        << boxes.lastText();
}

TEST_F(ExcelTest, AFailedSavingIsAnErrorAndTheProgramIsNotClosed) {
    const Registered registered(program);
    program.refuses = true;
    esporta();
    ASSERT_FALSE(program.said.empty()) << boxes.lastText();
    EXPECT_EQ(program.said.back(), "Workbook.SaveAs(nr_excel\\export\\export.xls)");
    EXPECT_TRUE(boxes.lastText().ends_with("\r1004 - Impossibile salvare")) << boxes.lastText();
}

} // namespace
} // namespace norvel::output
