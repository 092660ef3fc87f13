// Connection strings: keyword=value pairs separated by semicolons.
#pragma once

#include "platform/runtime/Text.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace norvel::adodb {

// Keywords are case-blind and blanks around them and around values do not count; a value may stand
// in single or double quotes (doubled inside) or in braces; of a keyword that comes twice the last
// value holds (Microsoft's rules for OLE DB and ODBC connection strings). Never fails: what is no
// pair is left out.
class ConnectionString {
  public:
    explicit ConnectionString(std::string_view text);
    // nullopt where the keyword is missing or its value empty
    std::optional<std::string> value(std::string_view keyword) const;
    // Every pair whose value is not empty, in the order of the keywords.
    std::map<std::string, std::string, LessText> pairs() const;
    const std::string& text() const { return text_; } // as it was given

  private:
    std::string text_;
    std::map<std::string, std::string, LessText> values_;
};

} // namespace norvel::adodb
