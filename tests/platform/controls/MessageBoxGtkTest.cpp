// The real message box, answered by an operator. (On Windows it is the system's; the hosts' tests
// meet it.)
#include "platform/controls/WxText.h"
#include "platform/runtime/MessageBox.h"
#include "tests/support/Robot.h"
#include "tests/support/Screenshot.h"
#include "tests/support/Script.h"

#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

#include <optional>

namespace norvel::tests {

class MessageBoxTest : public testing::Test {
  protected:
    Robot robot;
    wxFrame* frame = nullptr;

    void SetUp() override {
        frame = new wxFrame(nullptr, wxID_ANY, "Sotto", wxPoint(100, 100), wxSize(700, 400));
        robot.show(*frame);
    }
    void TearDown() override {
        frame->Destroy();
        robot.pump();
    }
    // Shows a box, does something to it, gives the answer.
    BoxAnswer answerTo(const Messaggio& box, const std::function<void()>& operatorDoes) {
        std::optional<BoxAnswer> answer;
        Script script;
        script.pause(400);
        script.then("the operator answers", operatorDoes);
        script.run([&] { answer = mostraMessaggio(box); });
        return *answer;
    }
};

TEST_F(MessageBoxTest, EnterConfirmsAPlainBox) {
    EXPECT_EQ(answerTo({.testo = "Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n"
                                 "Perché è così",
                        .titolo = "Titolo",
                        .icona = BoxIcon::Critical},
                       [&] {
                           screenshotOfDisplay("box-critical");
                           robot.press(WXK_RETURN);
                       }),
              BoxAnswer::Ok);
}

TEST_F(MessageBoxTest, EscapeLeavesAPlainBox) {
    EXPECT_EQ(answerTo({.testo = "Avviso", .icona = BoxIcon::Exclamation},
                       [&] { robot.press(WXK_ESCAPE); }),
              BoxAnswer::Ok);
}

TEST_F(MessageBoxTest, AQuestionAnsweredByItsMnemonicOrTheDefaultButton) {
    const Messaggio question{.testo = "Inserisco tutti i record?",
                             .titolo = "Inserimento",
                             .icona = BoxIcon::Question,
                             .pulsanti = BoxButtons::YesNo};
    EXPECT_EQ(answerTo(question,
                       [&] {
                           screenshotOfDisplay("box-question");
                           robot.press(WXK_RETURN);
                       }),
              BoxAnswer::Yes);
    EXPECT_EQ(answerTo(question, [&] { robot.press('N', wxMOD_ALT); }), BoxAnswer::No);
    EXPECT_EQ(answerTo(question, [&] { robot.press('S', wxMOD_ALT); }), BoxAnswer::Yes);
}

TEST_F(MessageBoxTest, EnterMeansNoWhereNoIsTheDefault) {
    EXPECT_EQ(answerTo({.testo = "Esportare tutto?",
                        .pulsanti = BoxButtons::YesNo,
                        .predefinita = BoxAnswer::No},
                       [&] { robot.press(WXK_RETURN); }),
              BoxAnswer::No);
}

TEST_F(MessageBoxTest, EscapeIsNoToAQuestion) {
    EXPECT_EQ(answerTo({.testo = "Procedo?", .pulsanti = BoxButtons::YesNo},
                       [&] { robot.press(WXK_ESCAPE); }),
              BoxAnswer::No);
}

TEST_F(MessageBoxTest, TheActiveWindowTakesTheFocusAgainAfterwards) {
    answerTo({.testo = "Avviso"}, [&] { robot.press(WXK_RETURN); });
    EXPECT_TRUE(robot.waitUntil([&] { return frame->IsActive(); }));
}

TEST_F(MessageBoxTest, AShortTextsBoxIsWideEnoughForItsTitle) {
    const std::string title = "Salvataggio delle impostazioni predefinite";
    answerTo({.testo = "Sì?", .titolo = title}, [&] {
        const wxWindow* box = wxTopLevelWindows.GetLast()->GetData();
        EXPECT_EQ(box->GetLabel(), controls::toWx(title));
        EXPECT_GT(box->GetClientSize().x, box->GetTextExtent(controls::toWx(title)).x + 90);
        screenshotOfDisplay("box-title");
        robot.press(WXK_RETURN);
    });
}

TEST_F(MessageBoxTest, TheKeyboardIsWhereItWasAfterwards) {
    auto* first = new wxTextCtrl(frame, wxID_ANY, "", wxPoint(10, 10));
    auto* second = new wxTextCtrl(frame, wxID_ANY, "", wxPoint(10, 60));
    first->SetFocus();
    second->SetFocus();
    ASSERT_TRUE(robot.waitUntil([&] { return second->HasFocus(); }));
    robot.type("a");
    answerTo({.testo = "Procedo?", .pulsanti = BoxButtons::YesNo, .predefinita = BoxAnswer::No},
             [&] { robot.press(WXK_ESCAPE); });
    robot.type("x");
    EXPECT_TRUE(robot.waitUntil([&] { return second->GetValue() == "ax"; }));
    EXPECT_EQ(wxWindow::FindFocus(), second);
}

TEST_F(MessageBoxTest, LongAndAwkwardTextsAreShownAsTheyAre) {
    std::string text;
    for (int i = 0; i < 30; ++i)
        text += "Riga " + std::to_string(i) + " <b>&amp;_x</b> àèìòù\r\n";
    EXPECT_EQ(answerTo({.testo = text, .titolo = "a & b", .icona = BoxIcon::Information},
                       [&] {
                           screenshotOfDisplay("box-long");
                           robot.press(WXK_RETURN);
                       }),
              BoxAnswer::Ok);
    EXPECT_EQ(answerTo({.testo = ""}, [&] { robot.press(WXK_RETURN); }), BoxAnswer::Ok);
}

} // namespace norvel::tests
