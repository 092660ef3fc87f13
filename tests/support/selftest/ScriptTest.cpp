// Scripts inside modal windows: order, nesting, and what happens when something hangs.
#include "tests/support/Script.h"

#include "platform/controls/Toolkit.h"
#include "tests/support/Boxes.h"
#include "tests/support/Robot.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <wx/frame.h>

#include <stdexcept>

namespace norvel::tests {

namespace {
struct Window : wxFrame {
    controls::ModalLoop modal;
    Window() : wxFrame(nullptr, wxID_ANY, "Prova", wxPoint(50, 50), wxSize(300, 200)) {
        Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { unload(); });
    }
    void unload() {
        modal.End();
        Destroy();
    }
};
} // namespace

TEST(ScriptTest, StepsRunInOrderInsideTheModalLoop) {
    auto* window = new Window;
    std::string order;
    Script script;
    script.then("a", [&] { order += window->modal.Running() ? "a" : "-"; });
    script.waitFor("two letters", [&] {
        order += "w";
        return order.size() >= 4;
    });
    script.pause(30);
    script.then("b", [&] {
        order += "b";
        window->unload();
    });
    script.run([&] { window->modal.Run(*window); });
    EXPECT_EQ(order, "awwwb");
}

TEST(ScriptTest, AStepThatOpensSomethingModalIsFollowedByTheNextInsideIt) {
    auto* window = new Window;
    auto* inner = new Window;
    std::string order;
    Script script;
    script.then("opens directly", [&] {
        order += "(";
        inner->modal.Run(*inner);
        order += ")";
    });
    script.then("closes the inner", [&] {
        order += "x";
        inner->unload();
    });
    script.then("closes the outer", [&] { window->unload(); });
    script.run([&] { window->modal.Run(*window); });
    EXPECT_EQ(order, "(x)");
}

TEST(ScriptTest, AStepThatNeverComesIsNamedAsAFailure) {
    EXPECT_NONFATAL_FAILURE(
        {
            Script script;
            script.then("first", [] {});
            script.then("the missing one", [] {});
            script.run([] {});
        },
        "It ended before step \"first\"");
}

TEST(ScriptTest, AConditionThatNeverHoldsIsNamedAndTheWindowIsClosed) {
    EXPECT_NONFATAL_FAILURE(
        {
            auto* window = new Window;
            Script script;
            script.waitFor(
                "what never happens", [] { return false; }, 100);
            script.run([&] { window->modal.Run(*window); });
        },
        "Waited in vain at step \"what never happens\"");
    EXPECT_TRUE(Robot().waitUntil([] { return wxTopLevelWindows.empty(); }));
}

TEST(ScriptTest, AModalWindowThatNobodyClosesEndsWithTheTime) {
    EXPECT_NONFATAL_FAILURE(
        {
            auto* window = new Window;
            Script script;
            script.run([&] { window->modal.Run(*window); }, 300);
        },
        "The time is over after the last step");
}

TEST(ScriptTest, NestedWindowsAndBoxesAreAllClosedWhenTheTimeIsOver) {
    EXPECT_NONFATAL_FAILURE(
        {
            auto* window = new Window;
            auto* inner = new Window;
            Script script;
            script.then("opens", [&] { inner->modal.Run(*inner); });
            script.then("a box", [&] { mostraMessaggio({.testo = "Nessuno risponde"}); });
            script.run([&] { window->modal.Run(*window); }, 1500);
        },
        "The time is over");
    EXPECT_TRUE(Robot().waitUntil([] { return wxTopLevelWindows.empty(); }));
}

TEST(ScriptTest, WhatAStepThrowsIsAFailureAndTheScriptGoesOn) {
    bool after = false;
    EXPECT_NONFATAL_FAILURE(
        {
            auto* window = new Window;
            Script script;
            script.then("throws", [] { throw std::runtime_error("ohi"); });
            script.then("after", [&] {
                after = true;
                window->unload();
            });
            script.run([&] { window->modal.Run(*window); });
        },
        "Step \"throws\" threw: ohi");
    EXPECT_TRUE(after);
}

TEST(ScriptTest, WhatTheBodyThrowsIsThrownOn) {
    Script script;
    EXPECT_THROW(script.run([] { throw Errore(5, "no"); }), Errore);
}

TEST(BoxesTest, BoxesAreRecordedAndAnsweredInOrder) {
    Boxes boxes;
    boxes.answer(BoxAnswer::Yes).answer(BoxAnswer::No);
    const Messaggio question{.testo = "Procedo?", .pulsanti = BoxButtons::YesNo};
    EXPECT_EQ(mostraMessaggio(question), BoxAnswer::Yes);
    EXPECT_EQ(mostraMessaggio({.testo = "Avviso"}), BoxAnswer::Ok);
    EXPECT_EQ(mostraMessaggio(question), BoxAnswer::No);
    ASSERT_EQ(boxes.shown().size(), 3U);
    EXPECT_EQ(boxes.shown()[0], question);
    EXPECT_EQ(boxes.lastText(), "Procedo?");
}

TEST(BoxesTest, AnUnexpectedQuestionAndAnUnusedAnswerAreFailures) {
    EXPECT_NONFATAL_FAILURE(
        {
            Boxes boxes;
            mostraMessaggio({.testo = "Procedo?", .pulsanti = BoxButtons::YesNo});
        },
        "A question without a prepared answer: Procedo?");
    EXPECT_NONFATAL_FAILURE(
        {
            Boxes boxes;
            boxes.answer(BoxAnswer::Yes);
        },
        "1 prepared answers were never asked for");
}

} // namespace norvel::tests
