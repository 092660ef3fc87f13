// Values in statements: literals, and parameters for what is no business of a literal's.
#pragma once

#include "platform/adodb/odbc/OdbcStatement.h"
#include "platform/adodb/store/ColumnInfo.h"
#include "platform/runtime/Variant.h"

#include <cstdint>
#include <list>
#include <string>

namespace norvel::adodb {

// A statement's text as it grows, with the texts and bytes of its parameters. Numbers, dates and
// Booleans are literals in the server's notation: their type is plain and nothing in them is
// quoted.
class OdbcSql {
  public:
    explicit OdbcSql(ServerKind kind) : kind_(kind) {}

    std::string text;
    OdbcSql& operator+=(std::string_view more) {
        text += more;
        return *this;
    }
    void add(const OdbcSql& other); // text and parameters
    // Moments: as the server gave them, to the microsecond; or without the last bits' noise of what
    // somebody computed, which a server that cuts decimals off would make a second of.
    enum class Moments : std::uint8_t { Exact, Rounded };
    // A value for a column of this type.
    void addValue(const ColumnInfo& column, const Variant& value, Moments moments);
    // Binds the parameters; this must outlive the execution.
    void bind(OdbcStatement& statement);

  private:
    struct Parameter {
        std::string value;
        bool bytes = false;
        SQLLEN length = 0;
    };
    ServerKind kind_;
    std::list<Parameter> parameters_; // places that stay
};

} // namespace norvel::adodb
