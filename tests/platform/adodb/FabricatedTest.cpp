// Recordsets without a source: their columns appended, their rows added in memory.
#include "platform/runtime/Formats.h"
#include "tests/platform/adodb/AdodbTest.h"

namespace norvel::adodb {
namespace {

RecordsetRef people() {
    auto rs = makeClientRecordset();
    rs->Fields().Append("codice", adInteger);
    rs->Fields().Append("nome", adVarWChar, 40);
    rs->Fields().Append("attivo", adBoolean);
    rs->Open();
    return rs;
}

TEST(Fabricated, AnEmptyOneHasItsFields) {
    const auto rs = people();
    EXPECT_EQ(rs->State(), adStateOpen);
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_TRUE(rs->BOF() && rs->EOF_());
    EXPECT_EQ(rs->Fields().Count(), 3);
    EXPECT_EQ(rs->Fields()("NOME").DefinedSize(), 40);
    EXPECT_EQ(rs->Fields()(2).Type(), adBoolean);
    EXPECT_TRUE(rs->ActiveConnection().isObject());
    EXPECT_EQ(rs->ActiveConnection().object(), nullptr);
    EXPECT_EQ(rs->ActiveCommand().object(), nullptr);
    EXPECT_EQ(connectionText(*rs), "");
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3021);
}

TEST(Fabricated, AppendChecksWhatItIsGiven) {
    const auto rs = makeClientRecordset();
    rs->Fields().Append("a", adInteger);
    EXPECT_EQ(errorOf([&] { rs->Fields().Append("A", adInteger); }), 3367);
    EXPECT_EQ(errorOf([&] { rs->Fields().Append("", adInteger); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->Fields().Append("b", adIDispatch); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->Fields().Append("b", adEmpty); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->Fields().Append("b", adVarWChar, -1); }), 3001);
    rs->Fields().Append("b", adVarWChar);
    rs->Fields().Delete("a");
    EXPECT_EQ(rs->Fields().Count(), 1);
    EXPECT_EQ(errorOf([&] { rs->Fields().Delete("a"); }), 3265);
    rs->Open();
    EXPECT_EQ(errorOf([&] { rs->Fields().Append("c", adInteger); }), 3705);
    EXPECT_EQ(errorOf([&] { rs->Fields().Delete("b"); }), 3705);
}

TEST(Fabricated, CloseForgetsTheColumns) {
    const auto rs = people();
    rs->Close();
    EXPECT_EQ(rs->Fields().Count(), 0);
    EXPECT_EQ(errorOf([&] { rs->Open(); }), 3709);
}

TEST(Fabricated, RowsAreAddedFieldByField) {
    const auto rs = people();
    rs->AddNew();
    EXPECT_EQ(rs->EditMode(), adEditAdd);
    EXPECT_EQ(rs->RecordCount(), 1) << "the new record counts before Update";
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_TRUE(rs->Fields()("nome").Value().isEmpty()) << "untouched";
    rs->Fields()("codice").SetValue("7");
    rs->Fields()("nome").SetValue("Niccolò");
    rs->Update();
    EXPECT_EQ(rs->EditMode(), adEditNone);
    EXPECT_EQ(rs->Fields()("codice").Value(), Variant(std::int32_t{7}));
    EXPECT_EQ(rs->Fields()("nome").Value(), Variant("Niccolò"));
    EXPECT_TRUE(rs->Fields()("attivo").Value().isNull());
    rs->MoveNext();
    EXPECT_TRUE(rs->EOF_());
}

TEST(Fabricated, RowsAreAddedAtOnceFromArrays) {
    const auto rs = people();
    for (std::int32_t i = 0; i < 500; ++i)
        rs->AddNew({"codice", "nome", std::int32_t{2}},
                   {i, "nome " + std::to_string(i), i % 2 == 0});
    EXPECT_EQ(rs->RecordCount(), 500);
    EXPECT_EQ(rs->EditMode(), adEditNone);
    rs->SetAbsolutePosition(300);
    EXPECT_EQ(rs->Fields()("nome").Value(), Variant("nome 299"));
    EXPECT_EQ(rs->Fields()("attivo").Value(), Variant(false));
    EXPECT_EQ(rs->GetRows(-1, std::int32_t{adBookmarkFirst}).rows, 500);
}

TEST(Fabricated, MovingOffANewRecordPostsIt) {
    const auto rs = people();
    rs->AddNew({"codice"}, {std::int32_t{1}});
    rs->AddNew();
    rs->Fields()("codice").SetValue(std::int32_t{2});
    rs->MoveFirst();
    EXPECT_EQ(rs->RecordCount(), 2);
    rs->AddNew();
    rs->Fields()("codice").SetValue(std::int32_t{3});
    rs->AddNew();
    EXPECT_EQ(rs->RecordCount(), 4);
    rs->CancelUpdate();
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(current(*rs), 3) << "back on the record of before";
    EXPECT_EQ(errorOf([&] { rs->CancelUpdate(); }), 3219);
}

TEST(Fabricated, ARequeryOrCloseWithARecordPendingIs3219) {
    const auto rs = people();
    rs->AddNew();
    EXPECT_EQ(errorOf([&] { rs->Close(); }), 3219);
    EXPECT_EQ(errorOf([&] { rs->Requery(); }), 3219);
    rs->Update();
    EXPECT_EQ(errorOf([&] { rs->Requery(); }), 3219) << "there is nothing to query";
    rs->Close();
}

TEST(Fabricated, ValuesAreConvertedOrRefused) {
    const auto rs = people();
    EXPECT_EQ(errorOf([&] { rs->AddNew({"codice"}, {"sette"}); }), 3421);
    EXPECT_EQ(errorOf([&] { rs->AddNew({"manca"}, {"x"}); }), 3265);
    EXPECT_EQ(errorOf([&] { rs->AddNew({"codice"}, {}); }), 3001);
    EXPECT_EQ(rs->RecordCount(), 0) << "nothing half added";
    rs->AddNew();
    EXPECT_EQ(errorOf([&] { rs->Fields()("codice").SetValue("sette"); }), 3421);
    rs->Fields()("attivo").SetValue(std::int32_t{5});
    EXPECT_EQ(rs->Fields()("attivo").Value(), Variant(true));
    rs->Fields()("nome").SetValue(12.5);
    EXPECT_EQ(rs->Fields()("nome").Value(), Variant("12,5"));
    rs->Fields()("nome").SetValue(Variant::null());
    rs->Update();
    EXPECT_TRUE(rs->Fields()("nome").Value().isNull());
}

TEST(Fabricated, EveryTypeKeepsItsValues) {
    const auto rs = makeClientRecordset();
    const Date day = *makeDate({2011, 3, 15}, {10, 30, 0});
    const std::tuple<DataTypeEnum, Variant, Variant> cases[] = {
        {adSmallInt, std::int32_t{7}, std::int16_t{7}},
        {adBigInt, std::int64_t{1} << 40, std::int64_t{1} << 40},
        {adSingle, 1.5, 1.5F},
        {adDouble, 1.5, 1.5},
        {adCurrency, "12,3456", Currency{123456}},
        {adNumeric, *Decimal::fromText("1.2345678901234567890"),
         *Decimal::fromText("1.234567890123456789")},
        {adDate, day, day},
        {adDBTimeStamp, "15/03/2011 10:30:00", day},
        {adLongVarWChar, std::string(100'000, 'x'), std::string(100'000, 'x')},
        {adLongVarBinary, Bytes(50'000, 7), Bytes(50'000, 7)},
        {adVariant, "com'è", "com'è"},
    };
    std::vector<Variant> fields;
    std::vector<Variant> values;
    for (const auto& [type, given, expected] : cases) {
        const std::string name = "c" + std::to_string(fields.size());
        rs->Fields().Append(name, type);
        fields.emplace_back(name);
        values.push_back(given);
    }
    rs->Open();
    rs->AddNew(fields, values);
    int column = 0;
    for (const auto& [type, given, expected] : cases)
        EXPECT_EQ(rs->Fields()(column++).Value(), expected) << "type " << type;
}

TEST(Fabricated, AddingTellsItsEvents) {
    const auto rs = people();
    EventLog log;
    rs->Subscribe(&log);
    rs->AddNew();
    rs->Fields()("codice").SetValue(std::int32_t{1});
    rs->Update();
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"WillMove 10", "WillChangeRecord 1",
                                        "RecordChangeComplete 1", "MoveComplete 10",
                                        "WillChangeField 1 codice", "FieldChangeComplete 1 codice",
                                        "WillChangeRecord 3", "RecordChangeComplete 3"}));
    log.lines.clear();
    log.cancel = "WillChangeRecord 1";
    EXPECT_EQ(errorOf([&] { rs->AddNew(); }), 3712);
    EXPECT_EQ(rs->RecordCount(), 1);
    rs->Unsubscribe(&log);
}

TEST(Fabricated, ClonesSeeTheRowsAdded) {
    const auto rs = people();
    const auto clone = rs->Clone();
    rs->AddNew({"codice"}, {std::int32_t{1}});
    EXPECT_EQ(clone->RecordCount(), 1);
    clone->MoveFirst();
    EXPECT_EQ(current(*clone), 1);
    EXPECT_EQ(errorOf([&] { rs->Clone(adLockReadOnly)->AddNew(); }), 3251);
}

TEST(Fabricated, OneOpenedReadOnlyTakesNoRows) {
    const auto rs = makeClientRecordset();
    rs->Fields().Append("a", adInteger);
    rs->Open({}, {}, adOpenStatic, adLockReadOnly);
    EXPECT_EQ(errorOf([&] { rs->AddNew(); }), 3251);
    EXPECT_FALSE(rs->Supports(adAddNew));
    EXPECT_FALSE(rs->Supports(adDelete));
    EXPECT_TRUE(people()->Supports(adAddNew | adUpdate | adDelete));
}

} // namespace
} // namespace norvel::adodb
