// Modal windows: what they stop, what they give back, and how they nest.
#include "platform/controls/Toolkit.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/OwnerQueue.h"
#include "tests/support/Boxes.h"
#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"
#include "tests/support/Script.h"

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/frame.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

#include <atomic>
#include <thread>

namespace norvel::tests {

using controls::ModalLoop;

namespace {

class Form : public wxFrame {
  public:
    wxTextCtrl* field;
    wxButton* button;
    int clicks = 0;
    ModalLoop modal; // as the search window has it: it goes with the window

    explicit Form(const wxString& title, wxPoint at = {80, 80})
        : wxFrame(nullptr, wxID_ANY, title, at, wxSize(300, 200)),
          field(new wxTextCtrl(this, wxID_ANY, wxString(), wxPoint(10, 10), wxSize(200, -1))),
          button(new wxButton(this, wxID_ANY, "Conta", wxPoint(10, 60))) {
        button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ++clicks; });
        Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { unload(); });
    }
    void unload() {
        modal.End();
        Destroy();
    }
};

} // namespace

class ModalLoopTest : public testing::Test {
  protected:
    Robot robot;
    Script script;

    ~ModalLoopTest() override {
        for (wxWindow* window : wxTopLevelWindows)
            window->Destroy();
        robot.pump();
    }
    static wxPoint middle(const wxWindow& window) {
        return {window.GetSize().x / 2, window.GetSize().y / 2};
    }
    // What a handler that fails in a modal window brings: one box, whose text this returns; the
    // window lives.
    std::string shownOf(const std::function<void()>& handler) {
        Boxes boxes;
        auto* form = new Form("Modale");
        form->button->Bind(wxEVT_BUTTON, [&](wxCommandEvent&) { handler(); });
        script.waitFor("active", [&] { return form->IsActive(); });
        script.then("clicks", [&] { robot.click(*form->button, middle(*form->button)); });
        script.then("still open", [&] {
            EXPECT_TRUE(form->IsShown());
            form->unload();
        });
        script.run([&] { form->modal.Run(*form); });
        EXPECT_EQ(boxes.shown().size(), 1U);
        return boxes.lastText();
    }
};

TEST_F(ModalLoopTest, TheWindowIsShownActiveAndTakesKeysAndReturnsWhenItIsDestroyed) {
    wxWeakRef<Form> form = new Form("Modale");
    std::string typed;
    script.waitFor("active", [&] { return form->IsActive() && form->field->HasFocus(); });
    script.then("types", [&] { robot.type("perché no"); });
    script.then("reads and closes", [&] {
        typed = form->field->GetValue().utf8_string();
        form->Close();
    });
    script.run([&] { form->modal.Run(*form); });
    EXPECT_EQ(typed, "perché no");
    EXPECT_FALSE(form) << "the object is gone when Run has returned";
}

TEST_F(ModalLoopTest, AWindowThatIsDestroyedOrHiddenWithoutEndEndsItAsWell) {
    wxWeakRef<Form> form = new Form("Modale");
    script.then("destroys", [&] { form->Destroy(); });
    script.run([&] { form->modal.Run(*form); });
    EXPECT_FALSE(form);

    Form* hidden = new Form("Modale");
    Script other;
    other.then("hides", [&] { hidden->Hide(); });
    other.run([&] { hidden->modal.Run(*hidden); });
    EXPECT_FALSE(hidden->IsShown());
}

TEST_F(ModalLoopTest, TheOtherWindowsTakeNoInputMeanwhileAndDoAfterwards) {
    auto* host = new Form("Ospite", {500, 80});
    robot.show(*host);
    robot.focus(*host->field);
    auto* form = new Form("Modale");
    script.waitFor("active", [&] { return form->IsActive(); });
    script.then("clicks on the host", [&] {
        EXPECT_FALSE(host->IsEnabled());
        robot.click(*host->button, middle(*host->button));
    });
    script.then("clicks on the window", [&] {
        screenshotOfDisplay("modal");
        robot.click(*form->button, middle(*form->button));
        EXPECT_EQ(form->clicks, 1);
        form->unload();
    });
    script.run([&] { form->modal.Run(*form); });
    EXPECT_EQ(host->clicks, 0);
    EXPECT_TRUE(host->IsEnabled());
    robot.click(*host->button, middle(*host->button));
    EXPECT_EQ(host->clicks, 1);
}

TEST_F(ModalLoopTest, AClickOnAWindowAroundItLeavesItInFrontAndWithTheKeyboard) {
    auto* host = new Form("Ospite", {40, 40});
    host->SetSize(900, 700);
    robot.show(*host);
    auto* form = new Form("Modale", {300, 300});
    script.waitFor("active", [&] { return form->IsActive() && form->field->HasFocus(); });
    script.then("clicks on the host", [&] { robot.click(*host, {600, 100}); });
    script.waitFor("active again", [&] { return form->IsActive(); });
    script.then("types", [&] {
        robot.type("davanti");
        screenshotOfDisplay("modal-over-host");
        EXPECT_EQ(form->field->GetValue(), "davanti");
        robot.click(*form->button, middle(*form->button));
        EXPECT_EQ(form->clicks, 1) << "the host covers it";
        form->unload();
    });
    script.run([&] { form->modal.Run(*form); });
}

TEST_F(ModalLoopTest, TheOthersAreEnabledBeforeTheWindowGoes) {
    auto* host = new Form("Ospite", {500, 80});
    robot.show(*host);
    auto* form = new Form("Modale");
    bool enabledAtDestroy = false;
    bool shownAtEnd = false;
    form->Bind(wxEVT_DESTROY, [&](wxWindowDestroyEvent& event) {
        if (event.GetEventObject() == form) enabledAtDestroy = host->IsEnabled();
        event.Skip();
    });
    script.then("closes", [&] {
        form->modal.End();
        shownAtEnd = form->IsShown() && host->IsEnabled();
        form->Destroy();
    });
    script.run([&] { form->modal.Run(*form); });
    EXPECT_TRUE(shownAtEnd);
    EXPECT_TRUE(enabledAtDestroy);
}

TEST_F(ModalLoopTest, TheFocusGoesBackWhereItWas) {
    auto* host = new Form("Ospite", {500, 80});
    robot.show(*host);
    robot.focus(*host->button);
    auto* form = new Form("Modale");
    script.waitFor("active", [&] { return form->IsActive(); });
    script.then("closes", [&] { form->unload(); });
    script.run([&] { form->modal.Run(*form); });
    EXPECT_TRUE(robot.waitUntil([&] { return host->IsActive() && host->button->HasFocus(); }));
    robot.press(WXK_SPACE);
    EXPECT_EQ(host->clicks, 1);
}

TEST_F(ModalLoopTest, ASecondModalWindowStopsTheFirstAndGivesItBack) {
    auto* first = new Form("Prima");
    auto* second = new Form("Seconda", {500, 80});
    std::vector<std::string> order;
    script.waitFor("the first is active", [&] { return first->IsActive(); });
    script.then("opens the second", [&] {
        first->button->Bind(wxEVT_BUTTON, [&](wxCommandEvent&) {
            second->modal.Run(*second);
            order.emplace_back("second over");
        });
        robot.click(*first->button, middle(*first->button));
    });
    script.waitFor("the second is active", [&] { return second->IsActive(); });
    script.then("the first takes nothing", [&] {
        EXPECT_FALSE(first->IsEnabled());
        EXPECT_TRUE(second->IsEnabled());
        second->unload();
    });
    script.waitFor("the first is back", [&] { return first->IsActive() && first->IsEnabled(); });
    script.then("closes the first", [&] { first->unload(); });
    script.run([&] { first->modal.Run(*first); });
    order.emplace_back("first over");
    EXPECT_EQ(order, (std::vector<std::string>{"second over", "first over"}));
}

TEST_F(ModalLoopTest, EndOfTheOuterWaitsForTheInner) {
    auto* first = new Form("Prima");
    auto* second = new Form("Seconda", {500, 80});
    bool innerOver = false;
    script.then("opens the second, ends the first under it", [&] {
        second->CallAfter([&] { first->modal.End(); });
        second->modal.Run(*second);
        innerOver = true;
    });
    script.pause(400);
    script.then("the second still runs", [&] {
        EXPECT_FALSE(innerOver);
        EXPECT_TRUE(second->IsShown());
        second->unload();
    });
    script.run([&] { first->modal.Run(*first); });
    EXPECT_TRUE(innerOver);
    EXPECT_FALSE(first->IsShown());
}

TEST_F(ModalLoopTest, RunningTwiceAtOnceIsRefusedAndTheFirstGoesOn) {
    auto* form = new Form("Modale");
    std::int64_t number = 0;
    script.then("shows it again", [&] {
        try {
            form->modal.Run(*form);
        } catch (const Errore& errore) {
            number = errore.numero();
        }
        EXPECT_TRUE(form->modal.Running());
    });
    script.then("closes", [&] { form->unload(); });
    script.run([&] { form->modal.Run(*form); });
    EXPECT_EQ(number, 400);
}

TEST_F(ModalLoopTest, OneObjectServesOneWindowAfterTheOther) {
    ModalLoop loop;
    for (int turn = 0; turn < 3; ++turn) {
        auto* form = new Form("Modale");
        Script each;
        each.then("closes", [&] {
            loop.End();
            form->Destroy();
        });
        each.run([&] { loop.Run(*form); });
        EXPECT_FALSE(loop.Running());
    }
}

TEST_F(ModalLoopTest, EndBeforeRunDoesNothing) {
    ModalLoop loop;
    loop.End();
    EXPECT_FALSE(loop.Running());
    auto* form = new Form("Modale");
    bool stepRan = false;
    script.then("closes", [&] {
        stepRan = true;
        loop.End();
    });
    script.run([&] { loop.Run(*form); });
    EXPECT_TRUE(stepRan);
}

TEST_F(ModalLoopTest, WorkFromAnotherThreadIsDoneWhileItRuns) {
    auto* form = new Form("Modale");
    std::atomic<int> done = 0;
    std::thread::id where;
    std::thread worker([&] {
        for (int i = 0; i < 50; ++i)
            postToOwner([&] {
                where = std::this_thread::get_id();
                ++done;
            });
    });
    script.waitFor("all work is done", [&] { return done == 50; });
    script.then("closes", [&] { form->unload(); });
    script.run([&] { form->modal.Run(*form); });
    worker.join();
    EXPECT_EQ(where, std::this_thread::get_id());
}

TEST_F(ModalLoopTest, AnErrorThatAHandlerLetsEscapeIsShownAndTheWindowLives) {
    const std::string text = shownOf([] { throw Errore(3021, "BOF o EOF è True"); });
    EXPECT_NE(text.find("BOF o EOF è True"), std::string::npos) << text;
}

// More than any address space holds.
constexpr std::size_t tooMuch = std::size_t{1} << (sizeof(void*) * 8 - 2);

TEST_F(ModalLoopTest, MemoryThatRunsOutInAHandlerIsShownAndTheWindowLives) {
    EXPECT_EQ(shownOf([] { std::string().reserve(tooMuch); }),
              "Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n"
              "Memoria esaurita");
}

TEST_F(ModalLoopTest, ABoxOfAnotherThreadOpensOverTheWindowAndThatThreadDoesNotWait) {
    auto* form = new Form("Modale");
    BoxAnswer answer = BoxAnswer::Ok;
    script.waitFor("active", [&] { return form->IsActive(); });
    script.then("another thread asks", [&] {
        std::thread([&] {
            answer =
                mostraMessaggio({.testo = "Da un altro thread", .pulsanti = BoxButtons::YesNo});
        }).join();
    });
    script.waitFor("the box is there", [&] { return !form->IsEnabled(); });
    script.then("answers", [&] { robot.press(WXK_RETURN); });
    script.waitFor("the window is back", [&] { return form->IsEnabled() && form->IsActive(); });
    script.then("closes", [&] { form->unload(); });
    script.run([&] { form->modal.Run(*form); });
    EXPECT_EQ(answer, BoxAnswer::No);
}

TEST_F(ModalLoopTest, AvviaToolkitAgainOnTheOwnersThreadIsHarmlessWhileAWindowIsOpen) {
    auto* form = new Form("Modale");
    script.then("starts again", [&] {
        controls::avviaToolkit();
        EXPECT_TRUE(controls::threadDelToolkit());
        form->unload();
    });
    script.run([&] { form->modal.Run(*form); });
}

} // namespace norvel::tests
