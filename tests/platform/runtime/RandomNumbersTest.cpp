#include "platform/runtime/RandomNumbers.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace norvel {
namespace {

// Seven digits, as hosts show a number of single precision.
std::string shown(float number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.7g", static_cast<double>(number));
    return text.data();
}

TEST(RandomNumbers, AreTheSequenceThatHostsKnow) {
    RandomNumbers numbers;
    for (const char* expected : {"0.7055475", "0.533424", "0.5795186", "0.2895625", "0.301948",
                                 "0.7747401", "0.01401764", "0.7607236", "0.81449", "0.7090379"})
        EXPECT_EQ(shown(numbers.next()), expected);
}

TEST(RandomNumbers, StayBelowOne) {
    RandomNumbers numbers;
    for (int i = 0; i < 2'000'000; ++i) {
        const float number = numbers.next();
        ASSERT_TRUE(number >= 0 && number < 1) << number;
    }
}

TEST(RandomNumbers, TheProcesssOwnSequenceGoesOn) {
    const float first = processRandomNumbers().next();
    EXPECT_NE(processRandomNumbers().next(), first);
}

} // namespace
} // namespace norvel
