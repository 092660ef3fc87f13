// Tables of cases in text files; casi/LEGGIMI.md tells their format.
#pragma once

#include "query/ListaValori.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace norvel::query {

struct Voce {
    std::string chiave;
    std::vector<std::string> argomenti;
};

struct Caso {
    std::string nome;
    std::string luogo; // file and line
    std::vector<Voce> voci;

    // The one argument of the key; nullopt where the case has no such key.
    std::optional<std::string> testo(const std::string& chiave) const;
    // As testo, "" where it is missing.
    std::string testoO(const std::string& chiave) const;
    std::vector<Voce> tutte(const std::string& chiave) const;
};

std::ostream& operator<<(std::ostream& uscita, const Caso& caso);

// Every case of tests/query/casi/FILE. A file that is not there or breaks the format gives one case
// named Illeggibile, whose every test fails.
std::vector<Caso> leggiCasi(const std::string& file);

// What a case asks a list of values for: its comando or base, campo, filtro, connessione.
RichiestaValori richiestaDi(const Caso& caso);

// A case's query, or the one of its list of values, rendered for a connection.
std::string queryDelCaso(const Caso& caso, const std::string& connessione);

struct NomeDelCaso {
    std::string operator()(const testing::TestParamInfo<Caso>& info) const {
        return info.param.nome;
    }
};

} // namespace norvel::query
