// Conditionals of the neutral notation as SQL Server's CASE.
#pragma once

#include <string>
#include <string_view>

namespace norvel::query {

// Rewrites " iif(a;b;c;)" as " Case when a then b else c end ". Not by reading the notation, but by
// this rule, which hosts' queries were written for:
//   p = position of the first "iif("; while p is not 0:
//     the first "iif(" becomes " Case when "
//     p = position of the first ";"  from p + 1 on; the first ";"  becomes " then "
//     p = position of the first ";"  from p + 1 on; the first ";"  becomes " else "
//     p = position of the first ";)" from p + 1 on; the first ";)" becomes " end "
//     p = position of the first " iif(" from p on
// "The first" is the first of the whole text as it then stands; positions count characters from 1
// in that text, 0 is none, and a search from 0 raises 5. Takes n log n time.
std::string riscriviIif(std::string_view testo);

} // namespace norvel::query
