#include "tests/query/Ostili.h"

namespace norvel::query {

using namespace std::string_literals;

const std::vector<std::string>& ostili() {
    static const std::vector<std::string> testi = {
        // out of the quotes
        "' OR '1'='1", "' OR 1=1 --", "'; DROP TABLE clienti; --", "''; DELETE FROM clienti --",
        "x') UNION SELECT parola FROM segreti --", "x%') UNION SELECT parola FROM segreti --",
        "' || (SELECT parola FROM segreti) || '", "' + (SELECT parola FROM segreti) + '", "'", "''",
        "'''", "x' GROUP BY nome HAVING 1=1 --",
        // escapes
        "\\", "\\\\", "\\'", "\\' OR 1=1 -- ", "x\\' UNION SELECT parola FROM segreti -- ",
        "\\\\' OR 1=1 #", "\\'' OR 1=1 -- ", "\xBF' OR 1=1 -- ", "\xBF\\' OR 1=1 -- ",
        // what rendering looks for
        "#", "##", "#03/15/2011#", "a#03/15/2011#b", "#' OR 1=1 --#", "# OR #",
        "#03/15/2011#') UNION SELECT parola FROM segreti --", "x=NULL", "x<>NULL", "=NULL",
        "<>NULL", "x=NULL) UNION SELECT parola FROM segreti --", "*", "**", "%", "*'*", "SELECT ",
        "SELECT parola FROM segreti", " iif(", " iif(;;;)", " iif(a;b;c;)", ";", ";)", ";;;",
        "datediff('d',", "iif(';';';)", " OPTION (FAST 1)", "x' OPTION (FAST 1) --",
        // comments, brackets, other quotes
        "--", "-- \n", "/*", "*/", "/* ' */", "x' /* ", "[", "]", "] OR 1=1 --", "\"",
        "\" OR \"\"=\"", "`", "` OR 1=1 #", "x\r\n'; DROP TABLE clienti; --",
        // numbers and dates
        "1 OR 1=1", "1) UNION SELECT parola FROM segreti --", "1; DELETE FROM clienti",
        "1 UNION SELECT parola FROM segreti", "0x31", "1--", "1/*", "NULL OR 1=1", "1=NULL",
        "-1-(SELECT 1)", "15/03/2011' OR 1=1 --", "15/03/2011# OR 1=1 OR nato=#15/03/2011",
        "15-03-2011') UNION SELECT parola FROM segreti --", "01/01/2000 00:00' --",
        // tokens and separators
        "[Nulli] OR 1=1", "[Nulli]' OR 1=1 --", "[Vuoti] ;§; ' OR 1=1 --",
        "a ;§; x') UNION SELECT parola FROM segreti --", " ;§; ", "si' OR 1=1", "F' OR 1=1",
        // characters that become quotes on their way
        "\u02BC OR 1=1 --", "\uFF07 OR 1=1 --", "\u2032; DROP TABLE clienti --",
        "\uFF3C' OR 1=1 -- ",
        // bytes
        "a\0' OR 1=1 --"s, "\0"s, "\x01\x1f", "\xff\xfe' OR 1=1", "\xC0\xA7 OR 1=1"};
    return testi;
}

} // namespace norvel::query
