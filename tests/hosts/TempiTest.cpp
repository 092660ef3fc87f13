// What --tempi prints and measures.
#include "hosts/norvelricerca/Tempi.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace norvel::hosts {
namespace {

using namespace std::chrono_literals;

TEST(Tempi, EachMeasureIsALineOfNameAndValue) {
    const Istante zero{};
    Misure misure;
    misure.inizio = zero;
    misure.inizioLettura = zero + 100ms;
    misure.primaPittura = zero + 150ms;
    misure.fineLettura = zero + 1100ms;
    misure.righeLette = 100000;
    misure.memoriaMassimaKB = 65536;
    EXPECT_EQ(testoTempi(misure), "prima_pittura_ms: 150\n"
                                  "prima_pittura_da_lettura_ms: 50\n"
                                  "righe_lette: 100000\n"
                                  "ultima_riga_ms: 1000\n"
                                  "memoria_massima_kb: 65536\n");
}

TEST(Tempi, WhatDidNotHappenIsADash) {
    Misure misure;
    misure.righeLette = 50;
    EXPECT_EQ(testoTempi(misure), "prima_pittura_ms: -\n"
                                  "prima_pittura_da_lettura_ms: -\n"
                                  "righe_lette: 50\n"
                                  "ultima_riga_ms: -\n"
                                  "memoria_massima_kb: 0\n");
}

TEST(Tempi, TheProcessStartedBeforeThisTestAndNotLongBefore) {
    const auto trascorso = std::chrono::steady_clock::now() - inizioProcesso();
    EXPECT_GE(trascorso, 0ms);
    EXPECT_LT(trascorso, 60s);
}

TEST(Tempi, TheStartStaysWhereItIs) {
    const Istante prima = inizioProcesso();
    const Istante dopo = inizioProcesso();
    EXPECT_LT(std::chrono::abs(dopo - prima), 5ms);
}

TEST(Tempi, ThePeakOfMemoryKeepsWhatWasGivenBack) {
    constexpr std::size_t cinquantaMB = 50U << 20;
    const std::int64_t prima = memoriaMassimaKB();
    {
        std::vector<char> molto(cinquantaMB);
        for (std::size_t i = 0; i < molto.size(); i += 4096)
            molto[i] = 1;
        ASSERT_EQ(molto[4096], 1);
    }
    EXPECT_GE(memoriaMassimaKB(), prima + 45 * 1024);
}

} // namespace
} // namespace norvel::hosts
