// Texts that an operator may type, or paste, to get out of a value's quotes.
#pragma once

#include <string>
#include <vector>

namespace norvel::query {

const std::vector<std::string>& ostili();

} // namespace norvel::query
