// The pieces of a statement in the neutral notation.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

struct NeutralToken {
    enum class Kind : std::uint8_t { Blank, Word, Number, Text, Quoted, Bracket, Date, Sign };
    Kind kind = Kind::Sign;
    std::string_view text; // as it stands in the statement
    std::string value;     // of a Bracket the name, of a Date its ISO text
};

// All of the statement, in order; comments are Blank. A '#' that starts no date, and a quote that
// does not end, are signs. The statement must outlive the tokens.
std::vector<NeutralToken> neutralTokens(std::string_view statement);

} // namespace norvel::adodb
