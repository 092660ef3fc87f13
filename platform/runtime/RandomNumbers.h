// The pseudo-random numbers of automation hosts: always the same sequence.
#pragma once

#include "platform/runtime/Api.h"

#include <cstdint>

namespace norvel {

// A linear congruential generator of 24 bits (multiplier 0x43FD43FD, increment 0xC39EC3) that
// starts at 0x50000: 0.7055475, 0.533424, 0.5795186, 0.2895625…
class NR_API RandomNumbers {
  public:
    float next(); // from 0 to below 1

  private:
    std::uint32_t state_ = 0x50000;
};

// The process's own sequence, which nothing ever restarts. One thread, the owner of the windows,
// uses it.
NR_API RandomNumbers& processRandomNumbers();

} // namespace norvel
