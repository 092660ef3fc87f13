// Files of Access (Jet 4), written from the format's description in mdbtools' documentation: enough
// of it for tables with rows, nothing that a reader of rows does not look at.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace norvel::adodb {

// As the format numbers them.
enum class JetType : std::uint8_t {
    Boolean = 1,
    Byte = 2,
    Short = 3,
    Long = 4,
    Currency = 5, // whole: ten-thousandths
    Single = 6,
    Double = 7,
    Date = 8, // a number: days of OLE Automation
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Numeric = 16, // whole, without its decimal point
};

struct JetColumn {
    std::string name;
    JetType type;
    int length = 0; // characters of a Text, decimals of a Numeric
};

// No value, or what the column's type takes.
using JetValue = std::variant<std::monostate, bool, std::int64_t, double, std::string>;
using JetRow = std::vector<JetValue>;

class AccessWriter {
  public:
    AccessWriter();
    // Adds a table with its rows.
    void table(const std::string& name, const std::vector<JetColumn>& columns,
               const std::vector<JetRow>& rows);
    // key: the file is encoded with it, as Access offers; 0: it is not. A password for opening it
    // stands in the header alone.
    void save(const std::string& path, std::uint32_t key = 0, const std::string& password = "");

  private:
    std::string row(const std::vector<JetColumn>& columns, const JetRow& values);
    std::string memo(const std::string& text);
    std::size_t newPage();
    void writeRows(std::size_t definition, const std::vector<std::string>& rows);
    void writeDefinition(std::size_t page, bool system, const std::vector<JetColumn>& columns,
                         const std::vector<std::string>& rows);

    std::vector<std::string> pages_;
    std::vector<JetRow> catalogue_;
};

} // namespace norvel::adodb
