// Letting go of work that a server may hold up.
#pragma once

#include "platform/adodb/fetch/Execution.h"
#include "platform/adodb/fetch/Fetch.h"

#include <memory>

namespace norvel::adodb {

// Cancels the work and destroys it; where it does not end within a second, as with a server that
// does not answer, on a thread of its own, so that nobody waits for it any longer.
void retire(std::unique_ptr<Fetch> fetch) noexcept;
void retire(std::unique_ptr<Execution> execution) noexcept;

// The same as the deleter of a pointer.
struct Retire {
    void operator()(Execution* execution) const noexcept {
        retire(std::unique_ptr<Execution>(execution));
    }
};

} // namespace norvel::adodb
