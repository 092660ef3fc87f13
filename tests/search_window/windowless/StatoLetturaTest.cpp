#include "search_window/StatoLettura.h"

#include "platform/adodb/fetch/FetchLimit.h"

#include <gtest/gtest.h>

namespace norvel::search_window {
namespace {

using Lavoro = StatoLettura::Lavoro;
using Elenco = StatoLettura::Elenco;

adodb::RecordsetRef numeri(const std::string& altro, int opzioni) {
    auto rs = adodb::makeClientRecordset();
    rs->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n" + altro +
                 ") SELECT i FROM n",
             "Provider=SQLite;Data Source=:memory:", adodb::adOpenStatic, adodb::adLockReadOnly,
             opzioni);
    return rs;
}

TEST(StatoLettura, RowsThatAreAllThereNeedNoWord) {
    const auto rs = numeri(" LIMIT 3", -1);
    rs->SetFilter("i > 1");
    rs->SetSort("i DESC");
    EXPECT_FALSE(inLavoro(*rs));
    EXPECT_EQ(testoLettura(statoLettura(*rs)), "");
    rs->Close();
    EXPECT_EQ(testoLettura(statoLettura(*rs)), "");
    EXPECT_EQ(testoLettura(statoLettura(*adodb::makeClientRecordset())), "");
}

TEST(StatoLettura, WhatRunsIsToldWithTheKeyThatEndsIt) {
    const auto rs = numeri("", adodb::adAsyncFetchNonBlocking);
    EXPECT_TRUE(inLavoro(*rs));
    StatoLettura stato = statoLettura(*rs);
    EXPECT_EQ(testoLettura(stato), "Lettura in corso: Esc la interrompe");
    stato.interruzione = true;
    EXPECT_EQ(testoLettura(stato), "Interruzione in corso");
    rs->Cancel();
    EXPECT_FALSE(inLavoro(*rs));
    EXPECT_EQ(testoLettura(statoLettura(*rs)), "Lettura interrotta: l'elenco non è completo");

    const auto prima = adodb::makeClientRecordset();
    prima->Open("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                "SELECT count(*) FROM n",
                "Provider=SQLite;Data Source=:memory:", adodb::adOpenStatic, adodb::adLockReadOnly,
                adodb::adCmdText | adodb::adAsyncExecute);
    EXPECT_TRUE(inLavoro(*prima));
    EXPECT_EQ(testoLettura(statoLettura(*prima)), "Interrogazione in corso: Esc la interrompe");
    prima->Cancel();
    EXPECT_FALSE(inLavoro(*prima));
}

TEST(StatoLettura, MoreRowsThanMemoryAndWhatFilterAndSortSawOfThem) {
    adodb::setFetchLimit(std::size_t{256} * 1024);
    const auto rs = numeri("", adodb::adAsyncFetchNonBlocking);
    EXPECT_TRUE(rs->WaitFetch(60000));
    adodb::setFetchLimit(0);
    const std::string altri = "Ci sono altri record oltre a quelli letti";
    const auto testo = [&] { return testoLettura(statoLettura(*rs)); };
    EXPECT_EQ(testo(), altri);
    rs->SetFilter("i < 10");
    EXPECT_EQ(testo(), altri + "; filtro solo tra quelli letti");
    rs->SetSort("[i]  desc");
    EXPECT_EQ(testo(), altri + "; filtro e ordine solo tra quelli letti");
    rs->SetFilter("");
    EXPECT_EQ(testo(), altri + "; ordine solo tra quelli letti");
}

TEST(StatoLettura, ARefreshThatCameToNothingIsToldBesideTheRowsThatStay) {
    StatoLettura stato;
    stato.aggiornamento = Aggiornamento::NonRiuscito;
    EXPECT_EQ(testoLettura(stato), "Aggiornamento non riuscito: restano i record di prima");
    stato.aggiornamento = Aggiornamento::Interrotto;
    stato.elenco = Elenco::Interrotto;
    EXPECT_EQ(testoLettura(stato), "Aggiornamento interrotto: restano i record di prima; "
                                   "Lettura interrotta: l'elenco non è completo");
    stato.lavoro = Lavoro::Interrogazione;
    EXPECT_EQ(testoLettura(stato), "Interrogazione in corso: Esc la interrompe");
}

} // namespace
} // namespace norvel::search_window
