#include "platform/adodb/fetch/Retire.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr std::chrono::milliseconds longestEnd{1000};

template <class Work>
void destroyElsewhere(std::unique_ptr<Work> work) noexcept {
    Work* const left = work.release();
    try {
        std::thread([left] { delete left; }).detach();
    } catch (const std::system_error&) { // no thread to be had: here, then, whatever it takes
        delete left;
    }
}

} // namespace

void retire(std::unique_ptr<Fetch> fetch) noexcept {
    if (!fetch) return;
    fetch->cancel();
    if (!fetch->waitForEnd(longestEnd)) destroyElsewhere(std::move(fetch));
}

void retire(std::unique_ptr<Execution> execution) noexcept {
    if (!execution) return;
    execution->cancel();
    if (!execution->wait(longestEnd)) destroyElsewhere(std::move(execution));
}

} // namespace norvel::adodb
