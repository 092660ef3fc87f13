#include "platform/controls/DataControl.h"

#include "tests/platform/controls/windowless/RecordsetDouble.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace norvel::tests {

using namespace adodb;
using controls::DataControl;

namespace {

// Writes down what it is told, in words, into a log shared by the observers of one test.
class Witness : public DataControl::Observer {
  public:
    Witness(std::string name, std::vector<std::string>& log) : name_(std::move(name)), log_(log) {}

    std::function<void()> whenTold; // runs after each entry

    void RecordsetReplaced() override { note("replaced"); }
    void WillMove(EventReasonEnum reason, EventStatusEnum& status, Recordset&) override {
        if (cancelsMoves) status = adStatusCancel;
        note("will move " + std::to_string(reason));
    }
    void MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum,
                      Recordset&) override {
        note("moved " + std::to_string(reason) + textOf(error));
    }
    void WillChangeField(int count, const std::vector<Field*>&, EventStatusEnum&,
                         Recordset&) override {
        note("will change field " + std::to_string(count));
    }
    void FieldChangeComplete(int count, const std::vector<Field*>&, const Errore* error,
                             EventStatusEnum, Recordset&) override {
        note("field changed " + std::to_string(count) + textOf(error));
    }
    void WillChangeRecord(EventReasonEnum, int count, EventStatusEnum&, Recordset&) override {
        note("will change record " + std::to_string(count));
    }
    void RecordChangeComplete(EventReasonEnum, int count, const Errore* error, EventStatusEnum,
                              Recordset&) override {
        note("record changed " + std::to_string(count) + textOf(error));
    }
    void WillChangeRecordset(EventReasonEnum, EventStatusEnum&, Recordset&) override {
        note("will change recordset");
    }
    void RecordsetChangeComplete(EventReasonEnum, const Errore* error, EventStatusEnum,
                                 Recordset&) override {
        note("recordset changed" + textOf(error));
    }
    void EndOfRecordset(bool& moreData, EventStatusEnum&, Recordset&) override {
        moreData = true;
        note("end");
    }
    void FetchProgress(RowCount progress, RowCount most, EventStatusEnum, Recordset&) override {
        note("fetched " + std::to_string(progress) + " of " + std::to_string(most));
    }
    void FetchComplete(const Errore* error, EventStatusEnum, Recordset&) override {
        note("fetch complete" + textOf(error));
    }
    void ViewChanged(Recordset&) override { note("view changed"); }

    bool cancelsMoves = false;

  private:
    static std::string textOf(const Errore* error) {
        return error != nullptr ? " error " + std::to_string(error->numero()) : "";
    }
    void note(const std::string& what) {
        log_.push_back(name_ + ": " + what);
        if (whenTold) whenTold();
    }
    std::string name_;
    std::vector<std::string>& log_;
};

class DataControlTest : public testing::Test {
  protected:
    using Log = std::vector<std::string>;
    Log log;
    std::shared_ptr<RecordsetDouble> recordset = std::make_shared<RecordsetDouble>();
    DataControl control;
    Witness first{"first", log};
    Witness second{"second", log};

    void bindBoth() {
        control.AddObserver(&first);
        control.AddObserver(&second);
        control.SetRecordset(recordset);
        log.clear();
    }
    void fireMoveComplete() {
        for (auto* sink : std::vector(recordset->sinks))
            sink->MoveComplete(adRsnMoveNext, nullptr, adStatusOK, *recordset);
    }
};

} // namespace

TEST_F(DataControlTest, BindingTellsEveryObserverOfTheNewRecordset) {
    control.AddObserver(&first);
    control.AddObserver(&second);
    control.SetRecordset(recordset);
    EXPECT_EQ(log, (Log{"first: replaced", "second: replaced"}));
    EXPECT_EQ(control.Recordset(), recordset);
}

TEST_F(DataControlTest, ObserversSeeTheNewRecordsetWhenTheyAreToldOfIt) {
    RecordsetRef seen;
    control.AddObserver(&first);
    first.whenTold = [&] { seen = control.Recordset(); };
    control.SetRecordset(recordset);
    EXPECT_EQ(seen, recordset);
}

TEST_F(DataControlTest, AMoveIsToldInTheOrderOfRegistration) {
    bindBoth();
    fireMoveComplete();
    EXPECT_EQ(log, (Log{"first: moved 13", "second: moved 13"}));
}

TEST_F(DataControlTest, EveryEventOfTheRecordsetReachesTheObserverWithItsArguments) {
    control.AddObserver(&first);
    control.SetRecordset(recordset);
    log.clear();
    ASSERT_EQ(recordset->sinks.size(), 1U);
    RecordsetEvents& sink = *recordset->sinks.front();
    const Errore failure(3021, "BOF o EOF");
    EventStatusEnum status = adStatusOK;
    bool moreData = false;
    sink.WillMove(adRsnMove, status, *recordset);
    sink.MoveComplete(adRsnMove, &failure, adStatusErrorsOccurred, *recordset);
    sink.WillChangeField(2, {}, status, *recordset);
    sink.FieldChangeComplete(2, {}, nullptr, adStatusOK, *recordset);
    sink.WillChangeRecord(adRsnUpdate, 1, status, *recordset);
    sink.RecordChangeComplete(adRsnUpdate, 1, &failure, adStatusErrorsOccurred, *recordset);
    sink.WillChangeRecordset(adRsnRequery, status, *recordset);
    sink.RecordsetChangeComplete(adRsnRequery, nullptr, adStatusOK, *recordset);
    sink.EndOfRecordset(moreData, status, *recordset);
    sink.FetchProgress(100, 250, adStatusOK, *recordset);
    sink.FetchComplete(&failure, adStatusErrorsOccurred, *recordset);
    sink.ViewChanged(*recordset);
    EXPECT_EQ(
        log, (Log{"first: will move 10", "first: moved 10 error 3021", "first: will change field 2",
                  "first: field changed 2", "first: will change record 1",
                  "first: record changed 1 error 3021", "first: will change recordset",
                  "first: recordset changed", "first: end", "first: fetched 100 of 250",
                  "first: fetch complete error 3021", "first: view changed"}));
    EXPECT_TRUE(moreData);
}

TEST_F(DataControlTest, AnObserverMayCancelAMoveAndTheOthersStillHearOfIt) {
    bindBoth();
    first.cancelsMoves = true;
    EventStatusEnum status = adStatusOK;
    recordset->sinks.front()->WillMove(adRsnMoveNext, status, *recordset);
    EXPECT_EQ(status, adStatusCancel);
    EXPECT_EQ(log.size(), 2U);
}

TEST_F(DataControlTest, TheReplacedRecordsetIsHeardNoMore) {
    bindBoth();
    const auto next = std::make_shared<RecordsetDouble>();
    control.SetRecordset(next);
    log.clear();
    EXPECT_TRUE(recordset->sinks.empty());
    EXPECT_EQ(next->sinks.size(), 1U);
    fireMoveComplete();
    EXPECT_TRUE(log.empty());
}

TEST_F(DataControlTest, TheSameRecordsetGivenAgainIsHeardOnce) {
    bindBoth();
    control.SetRecordset(recordset);
    log.clear();
    fireMoveComplete();
    EXPECT_EQ(log, (Log{"first: moved 13", "second: moved 13"}));
}

TEST_F(DataControlTest, ANullReferenceUnbindsAndIsToldAsAReplacement) {
    bindBoth();
    control.SetRecordset(nullptr);
    EXPECT_EQ(control.Recordset(), nullptr);
    EXPECT_TRUE(recordset->sinks.empty());
    EXPECT_EQ(log, (Log{"first: replaced", "second: replaced"}));
}

TEST_F(DataControlTest, TheReferenceIsCountedAndTheHostsRecordsetIsNeverClosed) {
    const std::weak_ptr<RecordsetDouble> watched = recordset;
    RecordsetDouble& object = *recordset;
    {
        DataControl own;
        own.SetRecordset(recordset);
        EXPECT_EQ(recordset.use_count(), 2);
        own.SetRecordset(nullptr);
        EXPECT_EQ(recordset.use_count(), 1);
        own.SetRecordset(recordset);
    }
    EXPECT_EQ(recordset.use_count(), 1);
    EXPECT_EQ(object.closed, 0);
    control.SetRecordset(recordset);
    recordset.reset();
    EXPECT_FALSE(watched.expired()); // the host let go, the control has not
    control.SetRecordset(nullptr);
    EXPECT_TRUE(watched.expired());
}

TEST_F(DataControlTest, ADestroyedControlIsNoLongerASubscriber) {
    {
        DataControl own;
        own.SetRecordset(recordset);
        EXPECT_EQ(recordset->sinks.size(), 1U);
    }
    EXPECT_TRUE(recordset->sinks.empty());
    fireMoveComplete(); // reaches nobody, touches nothing that is gone
}

TEST_F(DataControlTest, AnObserverThatRemovesItselfWhileItIsToldSparesTheOthersNothing) {
    bindBoth();
    first.whenTold = [&] { control.RemoveObserver(&first); };
    fireMoveComplete();
    fireMoveComplete();
    EXPECT_EQ(log, (Log{"first: moved 13", "second: moved 13", "second: moved 13"}));
}

TEST_F(DataControlTest, AnObserverRemovedByAnotherWhileItWaitsIsNotTold) {
    bindBoth();
    first.whenTold = [&] { control.RemoveObserver(&second); };
    fireMoveComplete();
    EXPECT_EQ(log, (Log{"first: moved 13"}));
}

TEST_F(DataControlTest, AnObserverAddedDuringAnEventIsToldFromTheNextOn) {
    control.AddObserver(&first);
    control.SetRecordset(recordset);
    log.clear();
    first.whenTold = [&] {
        control.AddObserver(&second);
        first.whenTold = nullptr;
    };
    fireMoveComplete();
    EXPECT_EQ(log, (Log{"first: moved 13"}));
    fireMoveComplete();
    EXPECT_EQ(log, (Log{"first: moved 13", "first: moved 13", "second: moved 13"}));
}

TEST_F(DataControlTest, AnObserverMayReplaceTheRecordsetWhileItIsTold) {
    bindBoth();
    const auto next = std::make_shared<RecordsetDouble>();
    first.whenTold = [&] {
        first.whenTold = nullptr;
        control.SetRecordset(next);
    };
    fireMoveComplete();
    EXPECT_EQ(control.Recordset(), next);
    EXPECT_TRUE(recordset->sinks.empty());
    EXPECT_EQ(next->sinks.size(), 1U);
}

TEST_F(DataControlTest, RemovingAnObserverThatWasNeverAddedDoesNothing) {
    control.AddObserver(&first);
    control.RemoveObserver(&second);
    control.SetRecordset(recordset);
    EXPECT_EQ(log, (Log{"first: replaced"}));
}

} // namespace norvel::tests
