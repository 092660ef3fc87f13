// The adapter over NorvelProva.Recordset: everything goes through automation and comes back.
#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/adodb/ado/EventSink.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/WideText.h"
#include "tests/windows/prova/Face.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <objbase.h>
#include <string>

namespace norvel::adodb {
namespace {

using com::ComPtr;

// COM for the length of the program.
class Apartment : public testing::Environment {
  public:
    void SetUp() override { ASSERT_EQ(CoInitialize(nullptr), S_OK); }
    void TearDown() override { CoUninitialize(); }
};
const auto* const apartment = testing::AddGlobalTestEnvironment(new Apartment);

std::int64_t errorOf(const auto& action) {
    try {
        action();
    } catch (const Errore& error) {
        return error.numero();
    }
    return 0;
}

class Listener : public RecordsetEvents {
  public:
    std::vector<std::string> told;
    bool cancels = false;
    RowCount lastProgress = 0;
    void WillMove(EventReasonEnum reason, EventStatusEnum& status, Recordset&) override {
        told.push_back("WillMove " + std::to_string(reason));
        if (cancels) status = adStatusCancel;
    }
    void MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum status,
                      Recordset& rs) override {
        told.push_back("MoveComplete " + std::to_string(reason) + " " + std::to_string(status) +
                       (error ? " " + std::to_string(error->numero()) : "") + " @" +
                       std::to_string(rs.AbsolutePosition()));
    }
    void WillChangeRecord(EventReasonEnum reason, int count, EventStatusEnum&,
                          Recordset&) override {
        told.push_back("WillChangeRecord " + std::to_string(reason) + " " + std::to_string(count));
    }
    void RecordsetChangeComplete(EventReasonEnum reason, const Errore*, EventStatusEnum,
                                 Recordset&) override {
        told.push_back("RecordsetChangeComplete " + std::to_string(reason));
    }
    void FetchProgress(RowCount progress, RowCount maxProgress, EventStatusEnum,
                       Recordset&) override {
        EXPECT_LE(progress, maxProgress);
        EXPECT_GE(progress, lastProgress);
        lastProgress = progress;
    }
    void FetchComplete(const Errore* error, EventStatusEnum status, Recordset&) override {
        told.push_back("FetchComplete " + std::to_string(status) +
                       (error ? " " + std::to_string(error->numero()) : ""));
    }
    void ViewChanged(Recordset&) override { told.push_back("ViewChanged"); }
};

using Told = std::vector<std::string>;

// Five rows without a database: codice, nome, nato, saldo, attivo.
RecordsetRef people() {
    RecordsetRef rows = makeClientRecordset();
    rows->Fields().Append("codice", adInteger);
    rows->Fields().Append("nome", adVarWChar, 40);
    rows->Fields().Append("nato", adDate);
    rows->Fields().Append("saldo", adCurrency);
    rows->Fields().Append("attivo", adBoolean);
    rows->Open();
    const char* names[] = {"Àlfa", "D'Angelo", "", "Delta €", "Echo"};
    for (int i = 0; i < 5; ++i)
        rows->AddNew({"codice", "nome", "nato", "saldo", "attivo"},
                     {i + 1, names[i], i == 2 ? Variant::null() : Variant(Date{36526.0 + i}),
                      Currency{12500 * i}, i % 2 == 0});
    rows->MoveFirst();
    return rows;
}

class ProvaTest : public testing::Test {
  protected:
    ProvaTest() { adapter = wrapAdoRecordset(prova::faceOf(hosts).get()); }
    ~ProvaTest() override {
        adapter.reset();
        EXPECT_EQ(hosts.use_count(), 1) << "somebody keeps the host's recordset";
        EXPECT_EQ(prova::liveFaces(), 0) << "automation references are left";
    }
    RecordsetRef hosts = people();
    RecordsetRef adapter;
};

TEST_F(ProvaTest, ColumnsAndValuesOfEveryType) {
    Fields& fields = adapter->Fields();
    ASSERT_EQ(fields.Count(), 5);
    EXPECT_EQ(fields(1).Name(), "nome");
    EXPECT_EQ(fields("NATO").Type(), adDate);
    EXPECT_EQ(fields("nome").DefinedSize(), 40);
    EXPECT_EQ(fields("codice").Value(), Variant(std::int32_t{1}));
    EXPECT_EQ(fields("nome").Value(), Variant("Àlfa"));
    EXPECT_EQ(fields("nato").Value(), Variant(Date{36526.0}));
    EXPECT_EQ(fields("saldo").Value(), Variant(Currency{0}));
    EXPECT_EQ(fields("attivo").Value(), Variant(true));
    adapter->SetAbsolutePosition(3);
    EXPECT_TRUE(fields("nato").Value().isNull());
    EXPECT_EQ(fields("nome").Value(), Variant(""));
    EXPECT_EQ(errorOf([&] { fields("altro"); }), 3265);
    EXPECT_EQ(errorOf([&] { fields(5); }), 3265);
}

TEST_F(ProvaTest, MovesAtEveryEdge) {
    adapter->MovePrevious();
    EXPECT_TRUE(adapter->BOF());
    EXPECT_EQ(adapter->AbsolutePosition(), adPosBOF);
    EXPECT_EQ(errorOf([&] { adapter->MovePrevious(); }), 3021);
    EXPECT_EQ(errorOf([&] { adapter->Bookmark(); }), 3021);
    adapter->MoveLast();
    adapter->MoveNext();
    EXPECT_TRUE(adapter->EOF_());
    EXPECT_EQ(adapter->AbsolutePosition(), adPosEOF);
    EXPECT_EQ(errorOf([&] { adapter->MoveNext(); }), 3021);
    adapter->Move(-2);
    EXPECT_EQ(adapter->AbsolutePosition(), 4);
    const Variant fourth = adapter->Bookmark();
    adapter->Move(-1, fourth);
    EXPECT_EQ(adapter->AbsolutePosition(), 3);
    adapter->Move(1, std::int32_t{adBookmarkFirst});
    EXPECT_EQ(adapter->AbsolutePosition(), 2);
    EXPECT_EQ(hosts->AbsolutePosition(), 2) << "the host sees the same cursor";
}

TEST_F(ProvaTest, BookmarksOfTheHostAreThoseOfItsClones) {
    const RecordsetRef painting = adapter->Clone(adLockReadOnly);
    adapter->MoveLast();
    EXPECT_EQ(painting->AbsolutePosition(), 1);
    painting->SetBookmark(adapter->Bookmark());
    EXPECT_EQ(painting->AbsolutePosition(), 5);
    EXPECT_EQ(adapter->CompareBookmarks(adapter->Bookmark(), painting->Bookmark()), adCompareEqual);
}

TEST_F(ProvaTest, BlocksWithFieldsStartAndBookmarks) {
    const RecordsetRef painting = adapter->Clone(adLockReadOnly);
    painting->SetAbsolutePosition(2);
    const RowBlock block = painting->GetRows(3, {}, {"nome", 0});
    ASSERT_EQ(block.rows, 3);
    ASSERT_EQ(block.values.size(), 2U);
    EXPECT_EQ(block.values[0], (std::vector<Variant>{"D'Angelo", "", "Delta €"}));
    EXPECT_EQ(block.values[1], (std::vector<Variant>{2, 3, 4}));
    ASSERT_EQ(block.bookmarks.size(), 3U);
    EXPECT_EQ(painting->AbsolutePosition(), 5);
    const RowBlock rest = painting->GetRows(-1, block.bookmarks[2]);
    EXPECT_EQ(rest.rows, 2);
    EXPECT_TRUE(painting->EOF_());
    EXPECT_EQ(errorOf([&] { painting->GetRows(1); }), errorOf([&] {
                  hosts->MoveLast();
                  hosts->MoveNext();
                  hosts->GetRows(1);
              }));
}

TEST_F(ProvaTest, TheHostsOwnMovesAreToldThroughItsConnectionPoint) {
    Listener listener;
    adapter->Subscribe(&listener);
    hosts->MoveNext();
    EXPECT_EQ(listener.told, (Told{"WillMove 13", "MoveComplete 13 1 @2"}));
    listener.told.clear();
    adapter->MoveLast();
    EXPECT_EQ(listener.told, (Told{"WillMove 15", "MoveComplete 15 1 @5"})) << "told once";
    adapter->Unsubscribe(&listener);
    listener.told.clear();
    hosts->MoveFirst();
    EXPECT_TRUE(listener.told.empty());
}

TEST_F(ProvaTest, AMoveThatAListenerCancelsDoesNotHappen) {
    Listener listener;
    listener.cancels = true;
    adapter->Subscribe(&listener);
    EXPECT_EQ(errorOf([&] { adapter->MoveNext(); }), 3712);
    EXPECT_EQ(errorOf([&] { hosts->MoveLast(); }), 3712);
    EXPECT_EQ(listener.told, (Told{"WillMove 13", "MoveComplete 13 2 3712 @1", "WillMove 15",
                                   "MoveComplete 15 2 3712 @1"}));
    adapter->Unsubscribe(&listener);
    EXPECT_EQ(hosts->AbsolutePosition(), 1);
}

TEST_F(ProvaTest, EditsAreToldWithTheirReasons) {
    Listener listener;
    adapter->Subscribe(&listener);
    adapter->AddNew({"codice", "nome"}, {6, "Foxtrot"});
    adapter->Unsubscribe(&listener);
    EXPECT_NE(std::ranges::find(listener.told, "WillChangeRecord 1 1"), listener.told.end());
    EXPECT_EQ(hosts->RecordCount(), 6);
    EXPECT_EQ(adapter->RecordCount(), 6);
}

TEST_F(ProvaTest, AListenerThatForgetsToLeaveHarmsNobody) {
    Listener listener;
    adapter->Subscribe(&listener);
    adapter.reset();
    hosts->MoveNext();
    EXPECT_TRUE(listener.told.empty());
}

TEST_F(ProvaTest, TheConnectionPointAnswersToBothGenerationsOfEvents) {
    const auto face = prova::faceOf(hosts);
    const auto points = face.as<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ASSERT_TRUE(points);
    for (const IID& iid : {recordsetEventsClassic, recordsetEventsNew}) {
        ComPtr<IConnectionPoint> point;
        EXPECT_EQ(points->FindConnectionPoint(iid, point.put()), S_OK);
        Listener listener;
        const auto sink = EventSink::make(adapter, listener);
        void* found = nullptr;
        EXPECT_EQ(sink->QueryInterface(iid, &found), S_OK);
        sink->Release();
    }
}

TEST_F(ProvaTest, ClosingRaisesAdosErrors) {
    Field& field = adapter->Fields()("nome");
    adapter->Close();
    EXPECT_EQ(adapter->State(), adStateClosed);
    EXPECT_EQ(errorOf([&] { adapter->Close(); }), 3704);
    EXPECT_EQ(errorOf([&] { adapter->MoveNext(); }), 3704);
    EXPECT_EQ(errorOf([&] { field.Value(); }), 3420);
}

TEST_F(ProvaTest, AFabricatedRecordsetHasNoConnection) {
    EXPECT_TRUE(adapter->ActiveConnection().isObject());
    EXPECT_EQ(adapter->ActiveConnection().object(), nullptr);
    EXPECT_EQ(connectionText(*adapter), "");
}

// --- over a database ---

class DatabaseTest : public testing::Test {
  protected:
    void SetUp() override {
        wchar_t folder[MAX_PATH];
        wchar_t file[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        ASSERT_NE(GetTempFileNameW(folder, L"nr", 0, file), 0U);
        path = narrowText(file);
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(database,
                               "CREATE TABLE clienti(codice INTEGER PRIMARY KEY, nome TEXT);"
                               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                               "WHERE i < 50000) INSERT INTO clienti SELECT i, 'Nome ' || i FROM n",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        sqlite3_close(database);
        text = "Provider=SQLite;Data Source=" + path;
    }
    void TearDown() override {
        EXPECT_EQ(prova::liveFaces(), 0);
        EXPECT_EQ(DeleteFileW(wideText(path).c_str()), TRUE) << "somebody keeps the file open";
    }
    // A recordset behind automation; its face holds it.
    static RecordsetRef make() {
        return wrapAdoRecordset(prova::faceOf(makeClientRecordset()).get());
    }
    std::string path;
    std::string text;
};

TEST_F(DatabaseTest, OpenByTextAndReadBackWhatItIsOpenOn) {
    const RecordsetRef rows = make();
    rows->SetCursorLocation(adUseClient);
    rows->Open("SELECT * FROM clienti WHERE codice <= 3", text, adOpenStatic, adLockReadOnly);
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(connectionText(*rows), text);
    EXPECT_EQ(rows->Source(), "SELECT * FROM clienti WHERE codice <= 3");
    const auto command = std::dynamic_pointer_cast<Command>(rows->ActiveCommand().object());
    ASSERT_TRUE(command);
    EXPECT_EQ(command->CommandText(), "SELECT * FROM clienti WHERE codice <= 3");
    EXPECT_EQ(command->CommandType(), adCmdText);
}

TEST_F(DatabaseTest, ASecondRecordsetOpensOnTheFirstOnesConnection) {
    const RecordsetRef first = make();
    first->Open("SELECT * FROM clienti", text);
    const Variant connection = first->ActiveConnection();
    const RecordsetRef second = make();
    second->Open("SELECT DISTINCT nome FROM clienti WHERE codice < 5", connection);
    EXPECT_EQ(second->RecordCount(), 4);
    EXPECT_EQ(adoDispatch(*second->ActiveConnection().object()), adoDispatch(*connection.object()))
        << "the same object, not a second connection";
}

TEST_F(DatabaseTest, AConnectionOfAutomationRunsStatements) {
    const ConnectionRef connection = wrapAdoConnection(prova::faceOf(makeConnection()).get());
    connection->Open(text);
    EXPECT_EQ(connection->State(), adStateOpen);
    connection->SetCommandTimeout(7);
    EXPECT_EQ(connection->CommandTimeout(), 7);
    const RecordsetRef rows = connection->Execute("SELECT count(*) AS n FROM clienti");
    EXPECT_EQ(rows->Fields()("n").Value().toI4(), 50000);
    EXPECT_EQ(errorOf([&] { connection->Execute("SELEC"); }),
              errorOf([&] { makeClientRecordset()->Open("SELEC", text); }));
    rows->Close();
    connection->Close();
}

TEST_F(DatabaseTest, ErrorsComeThroughWithNumberAndDescription) {
    const RecordsetRef through = make();
    const RecordsetRef direct = makeClientRecordset();
    const auto errorFrom = [&](Recordset& rows) -> Errore {
        try {
            rows.Open("SELECT * FROM inesistente", text);
        } catch (const Errore& error) {
            return error;
        }
        return {0, ""};
    };
    EXPECT_EQ(errorFrom(*through), errorFrom(*direct));
    EXPECT_NE(errorFrom(*through).numero(), 0);
}

TEST_F(DatabaseTest, RowsThatArriveInTheBackgroundAreToldAndWaitedFor) {
    const RecordsetRef rows = make();
    Listener listener;
    rows->Subscribe(&listener);
    rows->Open("SELECT * FROM clienti", text, adOpenStatic, adLockReadOnly, adAsyncFetch);
    listener.told.clear();
    EXPECT_TRUE(rows->WaitFetch(20000));
    EXPECT_EQ(rows->RecordCount(), 50000);
    EXPECT_EQ(rows->State(), adStateOpen);
    EXPECT_FALSE(rows->FetchError());
    for (int i = 0; i < 200 && listener.told.empty(); ++i) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        rows->WaitFetch(0);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    EXPECT_EQ(listener.told, (Told{"FetchComplete 1"}));
    rows->Unsubscribe(&listener);
}

TEST_F(DatabaseTest, AFetchThatIsCancelledIsReportedAsBroken) {
    const RecordsetRef rows = make();
    Listener listener;
    rows->Subscribe(&listener);
    rows->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n",
               text, adOpenStatic, adLockReadOnly, adAsyncFetch);
    EXPECT_NE(rows->State() & adStateFetching, 0);
    EXPECT_FALSE(rows->WaitFetch(50));
    rows->Cancel();
    EXPECT_TRUE(rows->WaitFetch(20000));
    EXPECT_NE(rows->State() & adStateFetchBroken, 0);
    ASSERT_TRUE(rows->FetchError());
    rows->Unsubscribe(&listener);
    rows->Close();
}

// --- the registered server ---

// The library beside this program's folder.
std::wstring libraryPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    path.resize(path.find_last_of(L'\\'));
    path.resize(path.find_last_of(L'\\'));
    return path + L"\\prova\\NorvelProva.dll";
}

class ServerTest : public testing::Test {
  protected:
    using Entry = HRESULT(WINAPI*)();
    using Install = HRESULT(WINAPI*)(BOOL, const wchar_t*);
    void SetUp() override {
        library = LoadLibraryW(libraryPath().c_str());
        ASSERT_NE(library, nullptr);
        ASSERT_EQ(entry("DllRegisterServer")(), S_OK);
    }
    void TearDown() override {
        EXPECT_EQ(entry("DllUnregisterServer")(), S_OK);
        FreeLibrary(library);
    }
    Entry entry(const char* name) const {
        return reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    }
    HMODULE library = nullptr;
};

TEST_F(ServerTest, ObjectsAreCreatedByNameAndLeaveNothingBehind) {
    {
        const RecordsetRef rows = createAdoRecordset("NorvelProva.Recordset");
        rows->Fields().Append("codice", adInteger);
        rows->Open();
        rows->AddNew({"codice"}, {7});
        EXPECT_EQ(rows->Fields()("codice").Value(), Variant(7));
        EXPECT_EQ(createAdoConnection("NorvelProva.Connection")->State(), adStateClosed);
        EXPECT_EQ(createAdoCommand("NorvelProva.Command")->CommandText(), "");
        EXPECT_EQ(entry("DllCanUnloadNow")(), S_FALSE);
    }
    EXPECT_EQ(entry("DllCanUnloadNow")(), S_OK);
}

TEST_F(ServerTest, UnregisteredItIsGone) {
    EXPECT_EQ(entry("DllUnregisterServer")(), S_OK);
    EXPECT_EQ(errorOf([] { createAdoRecordset("NorvelProva.Recordset"); }), 429);
    HKEY key = nullptr;
    EXPECT_NE(RegOpenKeyW(HKEY_CLASSES_ROOT, L"NorvelProva.Recordset", &key), ERROR_SUCCESS);
}

TEST_F(ServerTest, InATestPrefixItTakesAdosNames) {
    const auto install =
        reinterpret_cast<Install>(reinterpret_cast<void*>(GetProcAddress(library, "DllInstall")));
    if (install(TRUE, L"ADODB") == E_ACCESSDENIED) GTEST_SKIP() << "this Windows keeps its ADO";
    {
        const RecordsetRef rows = createAdoRecordset();
        rows->Fields().Append("nome", adVarWChar, 5);
        rows->Open();
        rows->AddNew({"nome"}, {"prova"});
        rows->SetFilter("");
        EXPECT_EQ(rows->RecordCount(), 1);
    }
    EXPECT_EQ(install(FALSE, L"ADODB"), S_OK);
    EXPECT_EQ(install(TRUE, L"altro"), E_INVALIDARG);
}

} // namespace
} // namespace norvel::adodb
