// The adapter over recordsets that offer less than the best.
#include "platform/adodb/ado/AdoRecordset.h"

#include "platform/adodb/ado/Dispatch.h"
#include "platform/runtime/Errore.h"
#include "tests/windows/ado/RecordsetHost.h"

#include <gtest/gtest.h>

namespace norvel::adodb {
namespace {

using com::ComPtr;
using com::OwnedVariant;
using test::Call;
using test::DispatchDouble;
using test::HostRows;
using test::RecordsetHost;

std::int64_t errorOf(const auto& action) {
    try {
        action();
    } catch (const Errore& error) {
        return error.numero();
    }
    return 0;
}

// What a listener is told, in words.
class Listener : public RecordsetEvents {
  public:
    std::vector<std::string> told;
    bool cancels = false;
    void WillMove(EventReasonEnum reason, EventStatusEnum& status, Recordset&) override {
        told.push_back("WillMove " + std::to_string(reason));
        if (cancels) status = adStatusCancel;
    }
    void MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum status,
                      Recordset&) override {
        told.push_back("MoveComplete " + std::to_string(reason) + " " + std::to_string(status) +
                       (error ? " " + std::to_string(error->numero()) : ""));
    }
    void FieldChangeComplete(int count, const std::vector<Field*>& fields, const Errore*,
                             EventStatusEnum, Recordset&) override {
        told.push_back("FieldChangeComplete " + std::to_string(count) + " " + fields[0]->Name());
    }
    void RecordsetChangeComplete(EventReasonEnum reason, const Errore*, EventStatusEnum,
                                 Recordset&) override {
        told.push_back("RecordsetChangeComplete " + std::to_string(reason));
    }
    void ViewChanged(Recordset&) override { told.push_back("ViewChanged"); }
};

using Told = std::vector<std::string>;

class AdoRecordsetTest : public testing::Test {
  protected:
    ~AdoRecordsetTest() override {
        adapter.reset();
        shared->clones.clear();
        EXPECT_EQ(host->references(), 1) << "the adapter leaves references behind";
        host = {};
        EXPECT_EQ(DispatchDouble::alive, 0);
    }
    std::string name() { return adapter->Fields()("nome").Value().toText(); }

    std::shared_ptr<HostRows> shared = std::make_shared<HostRows>();
    ComPtr<RecordsetHost> host = RecordsetHost::make(shared);
    RecordsetRef adapter = wrapAdoRecordset(host.get());
};

TEST_F(AdoRecordsetTest, NothingIsAskedBeforeSomebodyAsks) {
    EXPECT_TRUE(host->calls.empty());
    EXPECT_EQ(wrapAdoRecordset(nullptr), nullptr);
}

TEST_F(AdoRecordsetTest, TheHostGetsItsOwnObjectBack) {
    EXPECT_EQ(adoDispatch(*adapter), host.get());
    const OwnedVariant out = com::toVariant(ObjectRef(adapter));
    EXPECT_EQ(V_DISPATCH(&out.get()), host.get());
    const Object other;
    EXPECT_EQ(adoDispatch(other), nullptr);
}

TEST_F(AdoRecordsetTest, MovesAndValues) {
    EXPECT_EQ(name(), "uno");
    adapter->MoveLast();
    EXPECT_EQ(name(), "cinque");
    adapter->MoveNext();
    EXPECT_TRUE(adapter->EOF_());
    EXPECT_EQ(errorOf([&] { name(); }), 3021);
    adapter->MovePrevious();
    adapter->Move(-2);
    EXPECT_EQ(adapter->AbsolutePosition(), 3);
    EXPECT_EQ(adapter->Fields()(0).Value(), Variant(3));
    EXPECT_EQ(adapter->Fields()("CODICE").Type(), adInteger);
    EXPECT_EQ(errorOf([&] { adapter->Fields()("altro"); }), 3265);
}

TEST_F(AdoRecordsetTest, AFieldOutlivesARequeryAndDiesWithTheRows) {
    Field& field = adapter->Fields()("Nome");
    adapter->Requery();
    EXPECT_EQ(field.Value(), Variant("uno"));
    EXPECT_EQ(&adapter->Fields()("nome"), &field);
    EXPECT_EQ(errorOf([&] { adapter->Fields()("altro"); }), 3265);
    EXPECT_EQ(field.Value(), Variant("uno"));
    adapter->Close();
    EXPECT_EQ(errorOf([&] { field.Value(); }), 3420);
    EXPECT_EQ(errorOf([&] { field.Name(); }), 3420);
    EXPECT_EQ(adapter->Fields().Count(), 0);
}

TEST_F(AdoRecordsetTest, ABlockOfRowsBringsItsBookmarks) {
    adapter->MoveNext();
    const RowBlock block = adapter->GetRows(3);
    EXPECT_EQ(block.rows, 3);
    EXPECT_EQ(block.values[1], (std::vector<Variant>{"due", "tre", "quattro"}));
    ASSERT_EQ(block.bookmarks.size(), 3U);
    EXPECT_EQ(adapter->AbsolutePosition(), 5) << "behind the last one read";
    adapter->SetBookmark(block.bookmarks[1]);
    EXPECT_EQ(name(), "tre");
}

TEST_F(AdoRecordsetTest, AHostsRecordsetIsNotMovedASecondTimeForBookmarks) {
    adapter->GetRows(2);
    EXPECT_EQ(host->moved, 1); // the block itself
    EXPECT_EQ(shared->clones.size(), 1U);
}

TEST_F(AdoRecordsetTest, AClonesBlocksMoveOnlyTheClone) {
    const RecordsetRef painting = adapter->Clone(adLockReadOnly);
    painting->SetAbsolutePosition(4);
    const RowBlock block = painting->GetRows(-1);
    EXPECT_EQ(block.rows, 2);
    EXPECT_EQ(block.bookmarks.size(), 2U);
    EXPECT_TRUE(painting->EOF_());
    EXPECT_EQ(host->moved, 0);
    EXPECT_EQ(shared->clones.size(), 1U) << "no further clone";
}

TEST_F(AdoRecordsetTest, WithoutPositionsRowsAreFoundByBookmark) {
    shared->positions = false;
    adapter->SetAbsolutePosition(4);
    EXPECT_EQ(name(), "quattro");
    EXPECT_EQ(adapter->AbsolutePosition(), 4);
    EXPECT_EQ(adapter->RecordCount(), 5);
    EXPECT_EQ(errorOf([&] { adapter->SetAbsolutePosition(6); }), 3001);
    EXPECT_EQ(errorOf([&] { adapter->SetAbsolutePosition(0); }), 3001);
    EXPECT_EQ(name(), "quattro") << "a failed move leaves the row";
    adapter->MoveLast();
    adapter->MoveNext();
    EXPECT_EQ(adapter->AbsolutePosition(), adPosEOF);
}

TEST_F(AdoRecordsetTest, TheWalkingCloneTakesOverFilterAndSortWheneverTheyChange) {
    shared->positions = false;
    adapter->SetFilter("codice>2");
    EXPECT_EQ(adapter->RecordCount(), 3);
    adapter->SetSort("codice DESC");
    adapter->SetAbsolutePosition(1);
    EXPECT_EQ(name(), "cinque");
    adapter->SetFilter(0);
    EXPECT_EQ(adapter->RecordCount(), 5);
}

TEST_F(AdoRecordsetTest, AFilterThatTheHostSetByItselfIsTakenOverToo) {
    shared->positions = false;
    EXPECT_EQ(adapter->RecordCount(), 5);
    const RecordsetRef hostsOwn = wrapAdoRecordset(host.get());
    hostsOwn->SetFilter("codice>3");
    EXPECT_EQ(adapter->RecordCount(), 2);
}

TEST_F(AdoRecordsetTest, AfterARequeryTheCloneIsMadeAnew) {
    shared->positions = false;
    EXPECT_EQ(adapter->RecordCount(), 5);
    shared->rows.push_back({6, "sei"});
    adapter->Requery();
    EXPECT_EQ(adapter->RecordCount(), 6);
    adapter->SetAbsolutePosition(6);
    EXPECT_EQ(name(), "sei");
}

TEST_F(AdoRecordsetTest, WithoutBookmarksACloneIsAClearError) {
    shared->bookmarks = false;
    try {
        adapter->Clone();
        FAIL() << "no error";
    } catch (const Errore& error) {
        EXPECT_EQ(error.numero(), 3251);
        EXPECT_NE(error.descrizione().find("adUseClient"), std::string::npos);
    }
    EXPECT_TRUE(adapter->GetRows(2).bookmarks.empty());
    shared->positions = false;
    EXPECT_EQ(adapter->AbsolutePosition(), adPosUnknown);
    EXPECT_EQ(adapter->RecordCount(), -1);
    EXPECT_EQ(errorOf([&] { adapter->SetAbsolutePosition(1); }), 3251);
}

TEST_F(AdoRecordsetTest, WithoutConnectionPointsTheAdapterTellsItsOwnMoves) {
    Listener listener;
    adapter->Subscribe(&listener);
    adapter->MoveNext();
    EXPECT_EQ(listener.told, (Told{"WillMove 13", "MoveComplete 13 1"}));
    listener.told.clear();
    adapter->MoveFirst();
    adapter->MoveLast();
    adapter->SetAbsolutePosition(2);
    EXPECT_EQ(listener.told, (Told{"WillMove 12", "MoveComplete 12 1", "WillMove 15",
                                   "MoveComplete 15 1", "WillMove 10", "MoveComplete 10 1"}));
    listener.told.clear();
    adapter->Unsubscribe(&listener);
    adapter->MovePrevious();
    EXPECT_TRUE(listener.told.empty());
}

TEST_F(AdoRecordsetTest, FilterSortAndRequeryAreToldOnceAfterTheChange) {
    Listener listener;
    adapter->Subscribe(&listener);
    adapter->SetFilter("codice>2");
    EXPECT_EQ(listener.told, (Told{"WillMove 10", "MoveComplete 10 1", "ViewChanged"}));
    listener.told.clear();
    adapter->SetSort("codice DESC");
    EXPECT_EQ(listener.told, (Told{"ViewChanged"}));
    listener.told.clear();
    adapter->Requery();
    EXPECT_EQ(listener.told,
              (Told{"WillMove 7", "MoveComplete 7 1", "RecordsetChangeComplete 7", "ViewChanged"}));
    listener.told.clear();
    adapter->Fields()("nome").SetValue("nuovo");
    EXPECT_EQ(listener.told, (Told{"FieldChangeComplete 1 Nome"}));
    adapter->Unsubscribe(&listener);
}

TEST_F(AdoRecordsetTest, ARefusedFilterIsTheHostsErrorAndNoChange) {
    Listener listener;
    adapter->Subscribe(&listener);
    EXPECT_EQ(errorOf([&] { adapter->SetFilter("sbagliato"); }), 3001);
    EXPECT_EQ(listener.told, (Told{"WillMove 10", "MoveComplete 10 2 3001"}));
    EXPECT_EQ(adapter->Filter(), Variant(0));
    adapter->Unsubscribe(&listener);
}

TEST_F(AdoRecordsetTest, AListenerMayCancelAMove) {
    Listener listener;
    listener.cancels = true;
    adapter->Subscribe(&listener);
    EXPECT_EQ(errorOf([&] { adapter->MoveNext(); }), 3712);
    EXPECT_EQ(listener.told, (Told{"WillMove 13", "MoveComplete 13 2 3712"}));
    EXPECT_EQ(host->moved, 0);
    adapter->Unsubscribe(&listener);
}

TEST_F(AdoRecordsetTest, NamesAreLookedUpOnceAnObject) {
    for (int i = 0; i < 10; ++i) {
        adapter->MoveFirst();
        adapter->EOF_();
        adapter->BOF();
    }
    EXPECT_EQ(host->lookUps, 3);
}

// --- the object's own events ---

TEST_F(AdoRecordsetTest, ItIsConnectedWhileSomebodyListens) {
    host->offersEvents = true;
    Listener first;
    Listener second;
    adapter->Subscribe(&first);
    adapter->Subscribe(&second);
    EXPECT_EQ(host->connected, 1);
    adapter->Unsubscribe(&first);
    EXPECT_EQ(host->connected, 1);
    adapter->Unsubscribe(&second);
    EXPECT_EQ(host->connected, 0);
    adapter->Subscribe(&first);
    adapter.reset();
    EXPECT_EQ(host->connected, 0);
}

TEST_F(AdoRecordsetTest, AnObjectThatFiresIsNotRepeated) {
    host->offersEvents = true;
    Listener listener;
    adapter->Subscribe(&listener);
    adapter->MoveNext(); // this object fires when the test says so
    EXPECT_TRUE(listener.told.empty());
    long status = adStatusOK;
    host->fire(16, {com::numberArgument(adRsnMoveNext), com::toVariant(ObjectRef()),
                    OwnedVariant::reference(status), com::toVariant(ObjectRef(adapter))});
    EXPECT_EQ(listener.told, (Told{"MoveComplete 13 1"}));
    adapter->Unsubscribe(&listener);
}

TEST_F(AdoRecordsetTest, AFilterThatTheHostSetsMeanwhileIsToldBeforeItsMove) {
    host->offersEvents = true;
    Listener listener;
    adapter->Subscribe(&listener);
    wrapAdoRecordset(host.get())->SetFilter("codice>3");
    long status = adStatusOK;
    host->fire(16, {com::numberArgument(adRsnMove), com::toVariant(ObjectRef()),
                    OwnedVariant::reference(status), com::toVariant(ObjectRef(adapter))});
    EXPECT_EQ(listener.told, (Told{"ViewChanged", "MoveComplete 10 1"}));
    adapter->Unsubscribe(&listener);
}

TEST_F(AdoRecordsetTest, AFetchThatBreaksOffIsKept) {
    host->offersEvents = true;
    Listener listener;
    adapter->Subscribe(&listener);
    const auto error = DispatchDouble::make();
    error->holds(L"Number", std::int32_t(0x800A0E7D));
    error->holds(L"Description", "Connessione persa");
    OwnedVariant object;
    V_VT(&object.ref()) = VT_DISPATCH;
    V_DISPATCH(&object.ref()) = ComPtr<DispatchDouble>::keep(error.get()).detach();
    long status = adStatusErrorsOccurred;
    host->fire(19, {std::move(object), OwnedVariant::reference(status),
                    com::toVariant(ObjectRef(adapter))});
    ASSERT_TRUE(adapter->FetchError());
    EXPECT_EQ(*adapter->FetchError(), Errore(3709, "Connessione persa"));
    EXPECT_EQ(adapter->State(), adStateOpen | adStateFetchBroken);
    adapter->Unsubscribe(&listener);
}

TEST_F(AdoRecordsetTest, AnEventWithoutItsArgumentsIsAnErrorAndNoCrash) {
    host->offersEvents = true;
    Listener listener;
    adapter->Subscribe(&listener);
    EXPECT_EQ(host->fire(16, {}), DISP_E_EXCEPTION);
    EXPECT_EQ(host->fire(15, {com::textArgument("boh")}), DISP_E_EXCEPTION);
    EXPECT_EQ(host->fire(99, {}), S_OK);
    EXPECT_TRUE(listener.told.empty());
    adapter->Unsubscribe(&listener);
}

TEST_F(AdoRecordsetTest, AnEventAfterTheAdapterWentIsHarmless) {
    host->offersEvents = true;
    Listener listener;
    adapter->Subscribe(&listener);
    const auto sink = host->sink();
    adapter.reset();
    DISPPARAMS none{};
    EXPECT_EQ(sink->Invoke(16, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr,
                           nullptr, nullptr),
              S_OK);
    EXPECT_TRUE(listener.told.empty());
}

// --- a fetch that goes on ---

RecordsetHost* waiting = nullptr;

void CALLBACK rowsArrived(HWND, UINT, UINT_PTR timer, DWORD) {
    waiting->state = adStateOpen;
    KillTimer(nullptr, timer);
}

TEST_F(AdoRecordsetTest, WaitingForRowsDeliversMessagesAndIsBounded) {
    host->state = adStateOpen | adStateFetching;
    EXPECT_FALSE(adapter->WaitFetch(0));
    const ULONGLONG start = GetTickCount64();
    EXPECT_FALSE(adapter->WaitFetch(60));
    EXPECT_GE(GetTickCount64() - start, 50U);
    EXPECT_LT(GetTickCount64() - start, 2000U);

    waiting = host.get();
    ASSERT_NE(SetTimer(nullptr, 0, 20, rowsArrived), 0U);
    EXPECT_TRUE(adapter->WaitFetch(5000));
    EXPECT_TRUE(adapter->WaitFetch(0));
}

TEST_F(AdoRecordsetTest, TheRequestToEndTheProgramIsNotSwallowed) {
    host->state = adStateOpen | adStateFetching;
    PostQuitMessage(42);
    EXPECT_FALSE(adapter->WaitFetch(5000));
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 42U);
}

TEST_F(AdoRecordsetTest, ACancelledFetchIsKnownAsBroken) {
    host->state = adStateOpen | adStateFetching;
    EXPECT_EQ(adapter->State(), adStateOpen | adStateFetching);
    EXPECT_FALSE(adapter->FetchError());
    adapter->Cancel();
    EXPECT_EQ(adapter->State(), adStateOpen | adStateFetchBroken);
    ASSERT_TRUE(adapter->FetchError());
    EXPECT_EQ(adapter->FetchError()->numero(), 3712);
    adapter->Requery();
    EXPECT_EQ(adapter->State(), adStateOpen);
}

TEST_F(AdoRecordsetTest, AThousandUsesLeaveNothingBehind) {
    const long before = host->references();
    for (int i = 0; i < 1000; ++i) {
        const RecordsetRef one = wrapAdoRecordset(host.get());
        Listener listener;
        one->Subscribe(&listener);
        const RecordsetRef painting = one->Clone();
        painting->GetRows(2);
        one->Fields()("nome").Value();
        one->GetRows(1);
        one->MoveFirst();
        one->Unsubscribe(&listener);
        shared->clones.clear();
    }
    EXPECT_EQ(host->references(), before);
}

TEST(AdoCreation, WhatCannotBeCreatedIsError429) {
    EXPECT_EQ(errorOf([] { createAdoRecordset("NorvelProva.Inesistente"); }), 429);
}

} // namespace
} // namespace norvel::adodb
