// main() of every program of window tests: the tests run with the toolkit up, on this thread.
#include "platform/controls/Toolkit.h"
#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>
#include <wx/debug.h>
#include <wx/log.h>

#include <cstdio>

namespace {

// A toolkit assertion is a defect of the code that called it: the test fails and says where.
void failOnAssertion(const wxString& file, int line, const wxString& function,
                     const wxString& condition, const wxString& message) {
    ADD_FAILURE() << "Toolkit assertion at " << file.utf8_string() << ':' << line << " ("
                  << function.utf8_string() << "): " << condition.utf8_string() << ": "
                  << message.utf8_string();
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS(); // needs no display
    try {
        norvel::controls::avviaToolkit();
    } catch (const norvel::Errore& errore) {
        std::fprintf(stderr, "Window tests need a display (tests/under_display gives one): %s\n",
                     errore.what());
        return 2;
    }
    wxSetAssertHandler(failOnAssertion);
    delete wxLog::SetActiveTarget(new wxLogStderr);
    return RUN_ALL_TESTS();
}
