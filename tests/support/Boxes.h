// Message boxes, recorded and answered instead of shown.
#pragma once

#include "platform/runtime/MessageBox.h"

#include <deque>
#include <vector>

namespace norvel::tests {

// While it lives no box opens: each is recorded in shown, and answered with the next of the
// prepared answers. A question without a prepared answer is a test failure (answered No); a box
// with only an OK needs no answer. The handler that was there comes back at the end.
class Boxes {
  public:
    Boxes();
    ~Boxes();
    Boxes(const Boxes&) = delete;
    Boxes& operator=(const Boxes&) = delete;

    Boxes& answer(BoxAnswer next);
    const std::vector<Messaggio>& shown() const { return shown_; }
    // The last box's text, "" when there was none.
    std::string lastText() const { return shown_.empty() ? std::string() : shown_.back().testo; }
    // Forgets what was shown.
    void clear() { shown_.clear(); }
    // What to do while a box is "open", once: for tests of what happens behind a box.
    void whileOpen(std::function<void()> action) { whileOpen_ = std::move(action); }

  private:
    BoxAnswer record(const Messaggio& box);
    std::vector<Messaggio> shown_;
    std::deque<BoxAnswer> answers_;
    std::function<void()> whileOpen_;
    BoxHandler previous_;
};

} // namespace norvel::tests
