// A host written in a scripting language, run by cscript.
#pragma once

#include "tests/windows/hosts/Program.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace norvel::tests {

enum class Language { VBScript, JScript };

// The same host in both languages. In UTF-8; cscript gets it in Windows-1252, as it reads scripts.
struct Script {
    std::string vbscript;
    std::string jscript;
    const std::string& in(Language language) const {
        return language == Language::VBScript ? vbscript : jscript;
    }
};

// Runs the script behind a prelude that both languages have: r, the object; Mostra(text), which
// writes a line; Clienti(n), a recordset of the rows 1 to n as «codice» and «nome»; Apri(sql);
// Prepara(recordset), which sets what a search needs, title "Ricerca clienti"; Tenta(what), in
// VBScript after a statement that may fail, in JScript around a function: writes the number and
// words of the failure, or "fatto". operate: what the operator does meanwhile. Gives what the
// script wrote; a script that fails fails the test.
std::wstring runScript(Language language, const Script& script,
                       const std::function<void(Program&)>& operate = {});

inline const auto bothLanguages = testing::Values(Language::VBScript, Language::JScript);
std::string nameOfLanguage(const testing::TestParamInfo<Language>& language);

class Scripts : public testing::TestWithParam<Language> {
  protected:
    static std::wstring run(const Script& script,
                            const std::function<void(Program&)>& operate = {}) {
        return runScript(GetParam(), script, operate);
    }
};

} // namespace norvel::tests
