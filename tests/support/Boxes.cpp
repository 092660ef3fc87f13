#include "tests/support/Boxes.h"

#include <gtest/gtest.h>

#include <utility>

namespace norvel::tests {

Boxes::Boxes() {
    previous_ = impostaGestoreMessaggi([this](const Messaggio& box) { return record(box); });
}

Boxes::~Boxes() {
    impostaGestoreMessaggi(previous_);
    EXPECT_TRUE(answers_.empty()) << answers_.size() << " prepared answers were never asked for";
}

Boxes& Boxes::answer(BoxAnswer next) {
    answers_.push_back(next);
    return *this;
}

BoxAnswer Boxes::record(const Messaggio& box) {
    shown_.push_back(box);
    if (whileOpen_) std::exchange(whileOpen_, nullptr)();
    if (box.pulsanti == BoxButtons::Ok) return BoxAnswer::Ok;
    if (answers_.empty()) {
        ADD_FAILURE() << "A question without a prepared answer: " << box.testo;
        return BoxAnswer::No;
    }
    const BoxAnswer next = answers_.front();
    answers_.pop_front();
    return next;
}

} // namespace norvel::tests
