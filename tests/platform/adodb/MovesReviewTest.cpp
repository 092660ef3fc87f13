// Moves, edits and events that meet at an awkward moment.
#include "platform/runtime/OwnerQueue.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <chrono>
#include <thread>

namespace norvel::adodb {
namespace {

class MeetingTest : public testing::Test {
  protected:
    MeetingTest()
        : text(folder.database("prova.db",
                               "CREATE TABLE voci (codice INTEGER PRIMARY KEY, nome TEXT);"
                               "INSERT INTO voci VALUES (1,'a'),(2,'b'),(3,'c'),(4,'d'),(5,'e');"
                               "CREATE TABLE molte (codice INTEGER PRIMARY KEY, nome TEXT);"
                               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                               "WHERE i < 60000) INSERT INTO molte SELECT i, 'x' FROM n")) {
        connection->Open(text);
    }
    RecordsetRef open(const std::string& sql = "SELECT * FROM voci", int options = -1) const {
        auto rs = makeClientRecordset();
        rs->Open(sql, ObjectRef(connection), adOpenStatic, adLockOptimistic, options);
        return rs;
    }
    static void set(Recordset& rs, const char* field, const Variant& value) {
        rs.Fields()(field).SetValue(value);
    }
    static std::int64_t code(Recordset& rs) { return current(rs, "codice"); }
    std::int64_t stored(const std::string& expression) const {
        return current(*openOn(text, "SELECT " + expression));
    }

    TemporaryFolder folder;
    std::string text;
    ConnectionRef connection = makeConnection();
};

TEST_F(MeetingTest, AMoveGoesFromWhereTheWrittenRowStandsByThen) {
    const auto rs = open();
    rs->SetSort("nome");
    rs->MoveLast();
    const Variant last = rs->Bookmark();
    rs->MoveFirst();
    set(*rs, "nome", "z"); // behind all others, once it is written
    rs->SetBookmark(last);
    EXPECT_EQ(code(*rs), 5);
    rs->MoveFirst(); // 2: b
    set(*rs, "nome", "dd");
    rs->Move(1);
    EXPECT_EQ(code(*rs), 5) << "what follows dd";
    rs->MoveFirst(); // 3: c
    set(*rs, "nome", "y");
    EXPECT_EQ(rs->GetRows(1).values.front().front(), Variant(std::int32_t{3}));
}

TEST_F(MeetingTest, ARowBeingEditedIsNotLeftByAReturnToAnother) {
    const auto rs = open("SELECT * FROM molte");
    rs->MoveLast();
    rs->Requery(adAsyncFetch);
    set(*rs, "nome", "qui");
    const std::int64_t edited = code(*rs);
    ASSERT_TRUE(deliverUntil([&] { return (rs->State() & adStateFetching) == 0; }));
    runOwnerQueue();
    EXPECT_EQ(code(*rs), edited);
    rs->Update();
    EXPECT_EQ(stored("codice FROM molte WHERE nome='qui'"), edited);
}

TEST_F(MeetingTest, ARowBeingEditedIsNotLeftWhenACloneTakesItOutOfTheFilter) {
    const auto rs = open("SELECT *, codice AS numero FROM voci");
    rs->SetFilter("nome<'c'"); // 1, 2
    set(*rs, "codice", std::int32_t{10});
    const auto clone = rs->Clone();
    set(*clone, "nome", "z");
    clone->Update();
    EXPECT_EQ(code(*rs), 10) << "being edited";
    rs->Update();
    EXPECT_EQ(stored("nome='z' FROM voci WHERE codice=10"), 1);
    EXPECT_EQ(stored("nome='b' FROM voci WHERE codice=2"), 1);
    EXPECT_EQ(code(*rs), 2) << "the one that follows";
}

TEST_F(MeetingTest, WhatFollowsADeletedRowIsFoundWhateverElseChanges) {
    for (const char* sort : {"", "nome", "nome DESC"}) {
        const auto rs = open();
        connection->BeginTrans();
        rs->SetSort(sort);
        const auto clone = rs->Clone();
        rs->SetAbsolutePosition(4);
        const bool turned = code(*rs) == 2;
        rs->Delete(); // 4, or 2 from behind
        clone->SetFilter(turned ? "codice=4" : "codice=2");
        clone->Delete();
        EXPECT_EQ(rs->AbsolutePosition(), adPosUnknown);
        rs->MoveNext();
        EXPECT_EQ(code(*rs), turned ? 1 : 5) << sort;
        connection->RollbackTrans();
    }
    const auto rs = open();
    rs->MoveNext();
    rs->Delete(); // 2
    rs->SetSort("nome DESC");
    rs->MoveNext();
    EXPECT_EQ(code(*rs), 1);
}

TEST_F(MeetingTest, EditsSurviveADeleteThatASinkRefuses) {
    const auto rs = open();
    EventLog log;
    log.cancel = "WillChangeRecord 2";
    set(*rs, "nome", "nuovo");
    rs->Subscribe(&log);
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3712);
    rs->Unsubscribe(&log);
    EXPECT_EQ(rs->EditMode(), adEditInProgress);
    rs->Delete();
    EXPECT_EQ(stored("count(*) FROM voci"), 4);
    rs->MoveNext();
    EXPECT_EQ(rs->EditMode(), adEditNone);
}

// --- sinks ---

TEST_F(MeetingTest, ASinkMayDropTheLastReferenceAtAnyEvent) {
    struct Case {
        const char* event;
        std::function<void(Recordset&)> call;
    };
    const std::vector<Case> cases{
        {"WillChangeRecord 3", [](Recordset& rs) { rs.SetFilter("codice>2"); }},
        {"RecordChangeComplete 3", [](Recordset& rs) { rs.SetSort("nome"); }},
        {"RecordChangeComplete 4", [](Recordset& rs) { rs.CancelUpdate(); }},
        {"RecordChangeComplete 3", [](Recordset& rs) { rs.Update(); }},
        {"WillMove 10", [](Recordset& rs) { rs.AddNew({"nome"}, {"f"}); }},
        {"RecordChangeComplete 2", [](Recordset& rs) { rs.Delete(); }},
        {"MoveComplete 13", [](Recordset& rs) { rs.MoveNext(); }},
    };
    for (const Case& each : cases) {
        auto rs = open();
        EventLog log;
        bool dropped = false;
        log.onEvent = [&](const std::string& line, Recordset&) {
            if (line.starts_with(each.event)) dropped = true, rs.reset();
        };
        Recordset& used = *rs;
        used.Subscribe(&log);
        set(used, "nome", "nuovo");
        each.call(used);
        EXPECT_TRUE(dropped) << each.event;
        connection->Execute("UPDATE voci SET nome='a' WHERE codice=1");
        connection->Execute("DELETE FROM voci WHERE codice>5");
        connection->Execute("INSERT OR IGNORE INTO voci VALUES (1,'a')");
    }
}

TEST_F(MeetingTest, ASinkMayDropTheLastReferenceWhileTheEndIsWaitedFor) {
    auto rs = open("SELECT * FROM molte", adAsyncExecute);
    EventLog log;
    log.onEvent = [&](const std::string&, Recordset&) { rs.reset(); };
    Recordset& used = *rs;
    used.Subscribe(&log);
    used.WaitFetch(60000);
    EXPECT_FALSE(rs);
}

TEST_F(MeetingTest, AConnectionIsNotClosedUnderAMoveOrAChange) {
    const auto rs = open();
    EventLog log;
    std::vector<std::int64_t> refused;
    log.onEvent = [&](const std::string& line, Recordset&) {
        if (line.starts_with("Will")) refused.push_back(errorOf([&] { connection->Close(); }));
    };
    rs->Subscribe(&log);
    rs->MoveNext();
    set(*rs, "nome", "nuovo");
    rs->Update();
    rs->Delete();
    EXPECT_EQ(refused, std::vector<std::int64_t>(5, 3710));
    rs->Unsubscribe(&log);
    connection->Close();
    EXPECT_EQ(rs->State(), adStateClosed);
}

TEST_F(MeetingTest, AClonesSinkCannotMoveOrCloseWhoeverIsChangingARecord) {
    const auto rs = open();
    const auto clone = rs->Clone();
    EventLog log;
    std::vector<std::int64_t> refused;
    log.onEvent = [&](const std::string&, Recordset&) {
        refused.push_back(errorOf([&] { rs->MoveNext(); }));
        refused.push_back(errorOf([&] { rs->Close(); }));
        refused.push_back(errorOf([&] { rs->Update(); }));
    };
    clone->Subscribe(&log);
    set(*rs, "nome", "nuovo");
    rs->Update();
    rs->Delete();
    EXPECT_EQ(refused, std::vector<std::int64_t>(refused.size(), 3710));
    EXPECT_GE(refused.size(), 24U);
    EXPECT_EQ(code(*clone->Clone()), 2);
    clone->Unsubscribe(&log);
}

TEST_F(MeetingTest, ACloneMayBeReadWhileTheOriginalTellsOfAChange) {
    const auto rs = open();
    const auto clone = rs->Clone();
    EventLog log;
    RowCount read = 0;
    log.onEvent = [&](const std::string&, Recordset&) { read += clone->GetRows(2, 1).rows; };
    rs->Subscribe(&log);
    set(*rs, "nome", "nuovo");
    rs->Update();
    EXPECT_EQ(read, static_cast<RowCount>(2 * log.lines.size()));
    rs->Unsubscribe(&log);
}

TEST_F(MeetingTest, WhatFollowsIsLookedForAmongTheRowsThatCameMeanwhile) {
    const auto script = std::make_shared<Script>();
    script->rows = 3000;
    script->holdAt = 300;
    const ProviderDouble provider(script);
    const auto rs = openDouble(adAsyncFetch);
    rs->SetSort("n DESC"); // on 0, the last of all
    std::thread later([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        script->go();
    });
    rs->MoveNext();
    later.join();
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(rs->RecordCount(), 3000);
}

} // namespace
} // namespace norvel::adodb
