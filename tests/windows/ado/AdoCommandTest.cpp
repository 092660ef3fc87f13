// What the adapters say to a host's connection, command and recordset when they are opened.
#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/runtime/Errore.h"
#include "tests/windows/ado/DispatchDouble.h"

#include <gtest/gtest.h>

namespace norvel::adodb {
namespace {

using com::ComPtr;
using com::OwnedVariant;
using test::Call;
using test::DispatchDouble;

HRESULT accepts(Call&, OwnedVariant&) {
    return S_OK;
}

class AdoCommandTest : public testing::Test {
  protected:
    AdoCommandTest() {
        for (const wchar_t* member : {L"Open", L"ActiveConnection", L"Source", L"AddNew"})
            host->on(member, accepts);
    }
    ~AdoCommandTest() override {
        rows.reset();
        connection.reset();
        EXPECT_EQ(host->references(), 1);
        EXPECT_EQ(database->references(), 1);
    }
    const Call& last() const { return host->calls.back(); }
    ComPtr<DispatchDouble> host = DispatchDouble::make();
    ComPtr<DispatchDouble> database = DispatchDouble::make();
    RecordsetRef rows = wrapAdoRecordset(host.get());
    ConnectionRef connection = wrapAdoConnection(database.get());
};

TEST_F(AdoCommandTest, OpenPassesItsArgumentsInAdosOrder) {
    rows->Open("SELECT 1", "Provider=X", adOpenStatic, adLockReadOnly, adCmdText);
    EXPECT_EQ(last().arguments,
              (std::vector<Variant>{"SELECT 1", "Provider=X", 3, 1, std::int32_t{adCmdText}}));
    rows->Open({}, {}, adOpenKeyset, adLockReadOnly);
    EXPECT_EQ(last().types, (std::vector<VARTYPE>{VT_ERROR, VT_ERROR, VT_I4, VT_I4, VT_I4}));
    EXPECT_EQ(last().argument(2), Variant(std::int32_t{adOpenKeyset}));
    EXPECT_EQ(last().argument(4), Variant(-1));
}

TEST_F(AdoCommandTest, AConnectionIsSharedByReferenceAndATextIsPut) {
    rows->SetActiveConnection(ObjectRef(connection));
    EXPECT_EQ(last().kind, DISPATCH_PROPERTYPUTREF);
    const auto passed = std::dynamic_pointer_cast<com::ComObject>(last().argument(0).object());
    ASSERT_TRUE(passed);
    EXPECT_EQ(passed->get(), static_cast<IUnknown*>(database.get()));
    host->calls.clear();
    rows->SetActiveConnection("Provider=X");
    EXPECT_EQ(last().kind, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(last().argument(0), Variant("Provider=X"));
    rows->SetActiveConnection({});
    EXPECT_EQ(last().kind, DISPATCH_PROPERTYPUTREF);
    EXPECT_EQ(last().argument(0), Variant(ObjectRef()));
    host->calls.clear();
}

TEST_F(AdoCommandTest, ASourceMayBeACommand) {
    rows->SetSource("SELECT 2");
    EXPECT_EQ(last().kind, DISPATCH_PROPERTYPUT);
    const CommandRef command = wrapAdoCommand(database.get());
    rows->SetSource(ObjectRef(command));
    EXPECT_EQ(last().kind, DISPATCH_PROPERTYPUTREF);
    host->calls.clear();
}

TEST_F(AdoCommandTest, ANewRowTakesFieldsAndValuesAsArrays) {
    rows->AddNew({"codice", "nome"}, {1, "uno"});
    EXPECT_EQ(last().argument(0), Variant(std::vector<Variant>{"codice", "nome"}));
    EXPECT_EQ(last().argument(1), Variant(std::vector<Variant>{1, "uno"}));
    rows->AddNew();
    EXPECT_TRUE(last().arguments.empty());
}

TEST_F(AdoCommandTest, AConnectionSetAsTextReadsAsText) {
    host->holds(L"ActiveConnection", "Provider=X");
    EXPECT_EQ(rows->ActiveConnection(), Variant("Provider=X"));
    host->holds(L"ActiveConnection", ObjectRef());
    EXPECT_EQ(rows->ActiveConnection().object(), nullptr);
}

TEST_F(AdoCommandTest, TheRowsThatAStatementChangedComeBack) {
    database->on(L"Execute", [this](Call& call, OwnedVariant& out) {
        EXPECT_EQ(call.argument(0), Variant("DELETE FROM t"));
        OwnedVariant count = com::toVariant(42);
        *V_VARIANTREF(&call.rawArgument(1)) = count.detach();
        V_VT(&out.ref()) = VT_DISPATCH;
        V_DISPATCH(&out.ref()) = ComPtr<DispatchDouble>::keep(host.get()).detach();
        return S_OK;
    });
    RowCount changed = 0;
    const RecordsetRef closed = connection->Execute("DELETE FROM t", &changed);
    EXPECT_EQ(changed, 42);
    EXPECT_EQ(adoDispatch(*closed), host.get());
}

TEST_F(AdoCommandTest, TransactionsAndTimesReachTheConnection) {
    for (const wchar_t* member :
         {L"Open", L"Close", L"BeginTrans", L"CommitTrans", L"RollbackTrans"})
        database->on(member, accepts);
    database->holds(L"CommandTimeout", 30);
    database->holds(L"ConnectionString", "Provider=X");
    connection->Open();
    connection->Open("Provider=Y");
    connection->BeginTrans();
    connection->CommitTrans();
    connection->BeginTrans();
    connection->RollbackTrans();
    connection->SetCommandTimeout(5);
    connection->Close();
    std::vector<std::wstring> members;
    for (const Call& call : database->calls)
        members.push_back(call.member);
    EXPECT_EQ(members, (std::vector<std::wstring>{L"Open", L"Open", L"BeginTrans", L"CommitTrans",
                                                  L"BeginTrans", L"RollbackTrans",
                                                  L"CommandTimeout", L"Close"}));
    EXPECT_TRUE(database->calls[0].arguments.empty());
    EXPECT_EQ(database->calls[1].argument(0), Variant("Provider=Y"));
    EXPECT_EQ(connection->CommandTimeout(), 5);
    EXPECT_EQ(connection->ConnectionString(), "Provider=X");
}

TEST_F(AdoCommandTest, ACommandsTextTypeAndConnection) {
    const CommandRef command = wrapAdoCommand(host.get());
    host->holds(L"CommandText", "SELECT 1");
    host->holds(L"CommandType", std::int32_t{adCmdText});
    EXPECT_EQ(command->CommandText(), "SELECT 1");
    EXPECT_EQ(command->CommandType(), adCmdText);
    command->SetCommandText("SELECT 2");
    EXPECT_EQ(host->held(L"CommandText"), Variant("SELECT 2"));
    command->SetActiveConnection(ObjectRef(connection));
    EXPECT_EQ(last().kind, DISPATCH_PROPERTYPUTREF);
    host->calls.clear();
}

} // namespace
} // namespace norvel::adodb
