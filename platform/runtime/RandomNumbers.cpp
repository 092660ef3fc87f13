#include "platform/runtime/RandomNumbers.h"

namespace norvel {

float RandomNumbers::next() {
    constexpr std::uint32_t modulus = 1U << 24U;
    state_ = (state_ * 0x43FD43FDU + 0xC39EC3U) % modulus;
    return static_cast<float>(state_) / static_cast<float>(modulus);
}

RandomNumbers& processRandomNumbers() {
    static RandomNumbers numbers;
    return numbers;
}

} // namespace norvel
