// What an operator does while a modal window is open: steps that run inside its event loop.
#pragma once

#include "tests/support/Patience.h"

#include <functional>
#include <memory>
#include <string>

namespace norvel::tests {

// Steps run one after the other, on the same thread, from a timer; so they run inside whatever
// event loop the code under test has opened. A step begins when the one before has returned, or
// when that one opened something modal (a box, a menu, a window) and is waiting for it: so a step
// that clicks "Apri" may be followed by one that answers the question box.
//
//     Script script;
//     script.then("sceglie la seconda riga", [&] { robot.press(WXK_DOWN); });
//     script.waitFor("la finestra è pronta", [&] { return gFinestraPronta; });
//     script.then("conferma", [&] { robot.press(WXK_RETURN); });
//     script.run([&] { ricerca.Ricerca(); }); // returns when the window has closed
//
// No test can hang: when the time is over the script reports the step it stood at as a failure and
// closes what is open; if even that does not help, the program ends with a message and status 3.
class Script {
  public:
    Script();
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // A step. An exception that leaves it is a test failure.
    Script& then(std::string name, std::function<void()> step);
    // Goes on when the condition holds; a failure when it does not within the time.
    Script& waitFor(std::string name, std::function<bool()> condition, int milliseconds = patience);
    // Goes on after so long, for what can only be awaited by the clock.
    Script& pause(int milliseconds);

    // Runs the body, which opens the modal window, with the steps inside. On return every step
    // must have run; a test failure names the first that did not. What the body throws is thrown
    // on.
    void run(const std::function<void()>& body, int timeoutMilliseconds = 30000);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// Ends the modal things that are open, the innermost first: boxes are cancelled, windows closed.
void closeEverything();

} // namespace norvel::tests
