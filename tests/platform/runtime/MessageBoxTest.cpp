// Every box of the system, answered by a test.
#include "platform/runtime/MessageBox.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <vector>

namespace norvel {
namespace {

class MessageBox : public testing::Test {
  protected:
    void SetUp() override { before_ = impostaGestoreMessaggi({}); }
    void TearDown() override { impostaGestoreMessaggi(before_); }

    BoxHandler before_;
};

// What a message without a handler writes.
struct Written {
    BoxAnswer answer;
    std::string text;
};

Written written(const Messaggio& messaggio) {
    testing::internal::CaptureStderr();
    const BoxAnswer answer = mostraMessaggio(messaggio);
    return {answer, testing::internal::GetCapturedStderr()};
}

TEST_F(MessageBox, TheHandlerGetsTheMessageAndGivesTheAnswer) {
    std::vector<Messaggio> seen;
    impostaGestoreMessaggi([&](const Messaggio& messaggio) {
        seen.push_back(messaggio);
        return BoxAnswer::Yes;
    });
    const Messaggio question{"Inserisco tutti i record?", "Selezione", BoxIcon::Question,
                             BoxButtons::YesNo};
    EXPECT_EQ(mostraMessaggio(question), BoxAnswer::Yes);
    EXPECT_EQ(seen, std::vector{question});
}

TEST_F(MessageBox, SettingAHandlerGivesBackTheOneBefore) {
    EXPECT_FALSE(impostaGestoreMessaggi([](const Messaggio&) { return BoxAnswer::Yes; }));
    const BoxHandler first = impostaGestoreMessaggi([](const Messaggio&) { return BoxAnswer::No; });
    ASSERT_TRUE(first);
    EXPECT_EQ(first({}), BoxAnswer::Yes);
    EXPECT_EQ(mostraMessaggio({"x"}), BoxAnswer::No);
    impostaGestoreMessaggi(first);
    EXPECT_EQ(mostraMessaggio({"x"}), BoxAnswer::Yes);
}

TEST_F(MessageBox, WithoutAHandlerTheTextGoesToStandardErrorAndTheAnswerIsTheCautiousOne) {
    const Written plain = written({"Nessun record"});
    EXPECT_EQ(plain.answer, BoxAnswer::Ok);
    EXPECT_EQ(plain.text, "NorvelRicerca: Nessun record\n");
    const Written question =
        written({"Elimino?", "Conferma", BoxIcon::Question, BoxButtons::YesNo});
    EXPECT_EQ(question.answer, BoxAnswer::No);
    EXPECT_EQ(question.text, "Conferma: Elimino?\n");
    EXPECT_EQ(written({"a\rb\r\nc\nd\r", ""}).text, "a\nb\nc\nd\n\n");
}

TEST_F(MessageBox, AHandlerMayShowAnotherBoxAndReplaceItself) {
    int boxes = 0;
    impostaGestoreMessaggi([&](const Messaggio& messaggio) {
        ++boxes;
        if (messaggio.testo == "primo") {
            mostraMessaggio({"secondo"});
            impostaGestoreMessaggi([](const Messaggio&) { return BoxAnswer::No; });
        }
        return BoxAnswer::Ok;
    });
    EXPECT_EQ(mostraMessaggio({"primo"}), BoxAnswer::Ok);
    EXPECT_EQ(boxes, 2);
    EXPECT_EQ(mostraMessaggio({"terzo"}), BoxAnswer::No);
}

TEST_F(MessageBox, TheUsualErrorBoxNamesTheModuleAndTheError) {
    std::vector<Messaggio> seen;
    impostaGestoreMessaggi([&](const Messaggio& messaggio) {
        seen.push_back(messaggio);
        return BoxAnswer::Ok;
    });
    mostraErroreModulo(erroreTipoNonCorrispondente());
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].testo, "Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n"
                             "Tipo non corrispondente");
    EXPECT_EQ(seen[0].titolo, "TAMBORIN");
    EXPECT_EQ(seen[0].icona, BoxIcon::Information);
    EXPECT_EQ(seen[0].pulsanti, BoxButtons::Ok);
}

} // namespace
} // namespace norvel
