#include "tests/support/Script.h"

#include "tests/support/Robot.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/timer.h>
#include <wx/toplevel.h>
#include <wx/uiaction.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace norvel::tests {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Ends the program when it is not called off in time: a test that hangs is a failure, not a wait.
class Watchdog {
  public:
    explicit Watchdog(milliseconds time)
        : thread_([this, time] {
              std::unique_lock lock(mutex_);
              if (over_.wait_for(lock, time, [this] { return calledOff_; })) return;
              std::fputs("Watchdog: the test hangs; the program is ended.\n", stderr);
              std::fflush(nullptr);
              std::_Exit(3);
          }) {}
    ~Watchdog() {
        {
            const std::scoped_lock lock(mutex_);
            calledOff_ = true;
        }
        over_.notify_all();
        thread_.join();
    }
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

  private:
    std::mutex mutex_;
    std::condition_variable over_;
    bool calledOff_ = false;
    std::thread thread_;
};

struct Step {
    std::string name;
    std::function<void()> action;    // a step that does something
    std::function<bool()> condition; // or one that waits
    int milliseconds = 0;            // how long it waits at most
    bool mayTimeOut = false;         // a pause: the end of the time is no failure
};

} // namespace

struct Script::Impl {
    // The toolkit does not run a timer again while its own tick lasts, and a step may last as long
    // as what it opened; so each step that begins leaves the ticking to a new timer.
    class Ticker : public wxTimer {
      public:
        explicit Ticker(Impl& script) : script_(script) {}
        void Notify() override { script_.tick(); }

      private:
        Impl& script_;
    };
    std::vector<std::unique_ptr<Ticker>> tickers; // the last one ticks

    std::vector<Step> steps;
    std::size_t next = 0;
    int running = 0; // steps that have begun and not returned
    Clock::time_point stepBegan;
    Clock::time_point waitingSince;
    Clock::time_point deadline;
    bool failed = false;

    // How long a step may be inside one event before that event counts as a modal thing that
    // waits.
    static constexpr int modalAfter = 200;

    void tick() {
        if (Clock::now() > deadline) return giveUp("The time is over");
        if (failed || next >= steps.size()) return;
        if (running > 0 && !stepWaits()) return;
        if (steps[next].action)
            runAction();
        else
            checkCondition();
    }

    // True when the step that runs has opened something modal, in an event that its robot handles
    // or by itself.
    bool stepWaits() const {
        if (Robot::pumping()) return Robot::blockedInEvent(modalAfter);
        return Clock::now() - stepBegan > milliseconds(modalAfter);
    }

    void startTicking() {
        stopTicking();
        tickers.push_back(std::make_unique<Ticker>(*this));
        tickers.back()->Start(20);
    }
    void stopTicking() {
        if (!tickers.empty()) tickers.back()->Stop();
    }

    void runAction() {
        startTicking();
        const Step& step = steps[next++];
        ++running;
        stepBegan = Clock::now();
        try {
            step.action();
        } catch (const std::exception& error) {
            ADD_FAILURE() << "Step \"" << step.name << "\" threw: " << error.what();
        }
        --running;
        waitingSince = Clock::now();
    }

    void checkCondition() {
        const Step& step = steps[next];
        const bool over = Clock::now() - waitingSince > milliseconds(step.milliseconds);
        if ((step.condition && step.condition()) || (over && step.mayTimeOut)) {
            ++next;
            waitingSince = Clock::now();
        } else if (over) {
            giveUp("Waited in vain");
        }
    }

    // Reports once where the script stands, then closes what is open at every tick, since what is
    // open may be nested.
    void giveUp(const char* why) {
        if (!failed)
            ADD_FAILURE() << why
                          << (next < steps.size() ? " at step \"" + steps[next].name + "\""
                                                  : " after the last step");
        failed = true;
        deadline = Clock::now() + milliseconds(300);
        closeEverything();
    }
};

Script::Script() : impl_(std::make_unique<Impl>()) {}
Script::~Script() = default;

Script& Script::then(std::string name, std::function<void()> step) {
    impl_->steps.push_back({std::move(name), std::move(step), nullptr, 0, false});
    return *this;
}

Script& Script::waitFor(std::string name, std::function<bool()> condition, int time) {
    impl_->steps.push_back({std::move(name), nullptr, std::move(condition), time, false});
    return *this;
}

Script& Script::pause(int time) {
    impl_->steps.push_back({"pause", nullptr, nullptr, time, true});
    return *this;
}

void Script::run(const std::function<void()>& body, int timeout) {
    const Watchdog watchdog{milliseconds(timeout + 10000)};
    impl_->next = 0;
    impl_->failed = false;
    impl_->deadline = Clock::now() + milliseconds(timeout);
    impl_->waitingSince = Clock::now();
    impl_->startTicking();
    try {
        body();
    } catch (...) {
        impl_->stopTicking();
        throw;
    }
    impl_->stopTicking();
    if (!impl_->failed && impl_->next < impl_->steps.size())
        ADD_FAILURE() << "It ended before step \"" << impl_->steps[impl_->next].name << "\"";
}

// Menus and native boxes go by Escape only, windows by being closed.
void closeEverything() {
    wxUIActionSimulator().Char(WXK_ESCAPE);
    if (wxTopLevelWindows.empty()) return;
    auto* window = static_cast<wxTopLevelWindow*>(wxTopLevelWindows.GetLast()->GetData());
    auto* dialog = wxDynamicCast(window, wxDialog);
    if (dialog != nullptr && dialog->IsModal())
        dialog->EndModal(wxID_CANCEL);
    else
        window->Close(true);
}

} // namespace norvel::tests
