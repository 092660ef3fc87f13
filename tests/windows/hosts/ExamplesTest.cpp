// The example hosts for Windows, over a database of their own.
#include "platform/runtime/WideText.h"
#include "tests/windows/hosts/CppHost.h"

#include <fstream>
#include <functional>

namespace norvel::tests {
namespace {

enum class Example { VBScript, Cpp };

// Each speaks where its kind of program does.
struct Ended {
    DWORD status;
    std::wstring output;
    std::wstring errors;
    bool operator==(const Ended&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Ended& ended) {
    return out << ended.status << " [" << narrowText(ended.output) << "] ["
               << narrowText(ended.errors) << "]";
}

class Examples : public testing::TestWithParam<Example> {
  protected:
    static void SetUpTestSuite() {
        database_ = scratchFolder() / L"prova è.db";
        std::filesystem::remove(database_);
        execute("CREATE TABLE persone (codice INTEGER PRIMARY KEY, nome TEXT)");
        execute("INSERT INTO persone WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM "
                "n LIMIT 1000) "
                "SELECT i, 'Nicolò ' || i FROM n");
    }

    // Runs the example with these arguments behind its name.
    static Ended run(const std::vector<std::wstring>& arguments,
                     const std::function<void(Program&)>& operate = {}) {
        std::vector<std::wstring> command = {windowsPath(NR_EXAMPLE_CPP).wstring()};
        UINT page = CP_ACP;
        if (GetParam() == Example::VBScript) {
            command = {L"cscript", L"//nologo",
                       windowsPath(NR_SOURCE_DIR "/hosts/esempi/cerca.vbs").wstring()};
            page = CP_OEMCP;
        }
        command.insert(command.end(), arguments.begin(), arguments.end());
        Program host(command);
        try {
            if (operate) operate(host);
        } catch (const std::runtime_error& failure) {
            ADD_FAILURE() << failure.what();
        }
        const DWORD status = host.end();
        return {status, host.output(page), host.errors(page)};
    }
    // What it says when it gives up.
    static std::wstring refusal(const std::vector<std::wstring>& arguments) {
        const Ended ended = run(arguments);
        EXPECT_EQ(ended.status, 2U) << ended;
        return ended.output + ended.errors;
    }
    static std::wstring connection(const std::wstring& more = {}) {
        return L"Provider=SQLite;Data Source=" + database_.wstring() + more;
    }

  private:
    static void execute(const std::string& sql) {
        CLSID id{};
        com::ComPtr<IDispatch> made;
        ASSERT_EQ(CLSIDFromProgID(L"ADODB.Connection", &id), S_OK);
        ASSERT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                   reinterpret_cast<void**>(made.put())),
                  S_OK);
        std::ofstream file(database_, std::ios::app); // the provider opens what is there
        file.close();
        const com::DispatchObject opened(std::move(made));
        opened.call(L"Open", {com::textArgument(narrowText(connection()))});
        opened.call(L"Execute", {com::textArgument(sql)});
        opened.call(L"Close");
    }
    static inline std::filesystem::path database_;
};

const std::wstring title = L"Ricerca in persone";

TEST_P(Examples, PrintTheValueOfTheRowChosen) {
    const Ended ended = run({connection(), L"persone", L"nome"}, [](Program& host) {
        const Shown window = host.window(title);
        press(VK_DOWN, 2);
        window.chooseByEnter();
    });
    EXPECT_EQ(ended, (Ended{0, L"Nicol\u00F2 3\n", L""}));
}

TEST_P(Examples, PrintNothingWhenTheWindowIsClosed) {
    const Ended ended =
        run({connection(), L"persone"}, [](Program& host) { host.window(title).closeByKeys(); });
    EXPECT_EQ(ended, (Ended{1, L"", L""}));
}

TEST_P(Examples, SayWhatIsMissing) {
    EXPECT_NE(refusal({connection(), L"nessuna"}).find(L"nessuna"), std::wstring::npos);
    EXPECT_NE(refusal({connection(L".no"), L"persone"}).find(L".no"), std::wstring::npos);
    EXPECT_NE(refusal({}).find(L"CONNECTION [TABLE [FIELD]]"), std::wstring::npos);
}

// The number that docs/windows.md explains.
TEST_P(Examples, SayThatTheComponentIsNotRegistered) {
    const std::wstring component = windowsPath(NR_DLL).wstring();
    ASSERT_EQ(tests::run({L"regsvr32", L"/s", L"/u", component}), 0U);
    const std::wstring said = refusal({connection(), L"persone"});
    const wchar_t* const number = GetParam() == Example::Cpp ? L"0x80040154" : L": 429 - ";
    EXPECT_NE(said.find(number), std::wstring::npos) << narrowText(said);
    ASSERT_EQ(tests::run({L"regsvr32", L"/s", component}), 0U);
}

INSTANTIATE_TEST_SUITE_P(In, Examples, testing::Values(Example::VBScript, Example::Cpp),
                         [](const testing::TestParamInfo<Example>& example) {
                             return example.param == Example::VBScript ? "VBScript" : "Cpp";
                         });

} // namespace
} // namespace norvel::tests
