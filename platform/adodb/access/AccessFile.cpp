#include "platform/adodb/access/AccessFile.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/access/ExportReader.h"
#include "platform/runtime/Text.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace norvel::adodb {

namespace {

// Files are whole pages, of 2048 bytes or of 4096. Of a page cut short mdbtools reads what is lost
// as zeros; where not even the header of a page is left, no row of it is read, and the count tells.
constexpr std::uintmax_t smallestPage = 2048;
constexpr std::uintmax_t pageHeader = 14;

// A type as mdb-schema names it, and how the copy declares it.
struct TypeName {
    std::string_view access;
    std::string_view copy;
    bool text = false;
    bool bytes = false;
    bool sized = false; // the length behind it means something
};

// ADO's codes of Jet's types: Microsoft's page on the data types of Jet's OLE DB provider.
constexpr TypeName typeNames[] = {
    {"Boolean", "BOOLEAN"},
    {"Byte", "JET BYTE"},
    {"Integer", "JET SHORT"},
    {"Long Integer", "INTEGER"},
    {"Currency", "CURRENCY"},
    {"Single", "JET SINGLE"},
    {"Double", "DOUBLE"},
    {"DateTime", "DATE"},
    {"Numeric", "NUMERIC", false, false, true},
    {"Text", "TEXT", true, false, true},
    {"Memo/Hyperlink", "LONGTEXT", true},
    {"Replication ID", "JET GUID", true},
    {"Binary", "VARBINARY", false, true},
    {"OLE", "OLEOBJECT", false, true},
};

// "[name]  Type (18, 0), ": a column's line in a definition.
std::optional<AccessColumn> columnOf(std::string_view line) {
    const std::size_t open = line.find('[');
    const std::size_t close = line.rfind(']');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return std::nullopt;
    AccessColumn column;
    column.name = line.substr(open + 1, close - open - 1);
    std::string type(line.substr(close + 1));
    while (!type.empty() && (type.back() == ',' || type.back() == ' ' || type.back() == '\r'))
        type.pop_back();
    type = trimText(replaceText(type, "\t", " "));
    const std::size_t length = type.find('(');
    const std::string name = trimText(std::string_view(type).substr(0, length));
    column.type = "LONGTEXT"; // a type that mdbtools alone knows comes as a text
    column.text = true;
    for (const TypeName& each : typeNames)
        if (equalsText(each.access, name)) {
            column.type = each.copy;
            column.text = each.text;
            column.bytes = each.bytes;
            column.truth = each.copy == "BOOLEAN";
            if (each.sized && length != std::string::npos) column.type += type.substr(length);
        }
    return column;
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (end != 0) lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

// Without the words that go with a reading that is slower, but whole.
std::string seriousPart(const std::string& complaint) {
    std::string serious;
    for (const std::string& line : linesOf(complaint))
        if (findText(line, "brute force") == std::string::npos)
            serious.append(serious.empty() ? "" : "; ").append(toValidUtf8(trimText(line)));
    return serious;
}

} // namespace

Errore AccessFile::damaged(const std::string& complaint) const {
    std::string text = "Il database «" + name_ +
                       "» è danneggiato o incompleto, oppure non è un file di Access leggibile.";
    if (!complaint.empty()) text += " (mdbtools: " + complaint + ")";
    return {oleFail, text};
}

std::string AccessFile::output(const std::vector<std::string>& command, const Stop& stop) const {
    std::string text;
    const MdbToolEnd end =
        runMdbTool(command, stop, [&](std::string_view piece) { text.append(piece); });
    if (!end.well || !seriousPart(end.complaint).empty()) throw damaged(seriousPart(end.complaint));
    return text;
}

std::vector<std::string> AccessFile::tables(const Stop& stop) const {
    std::error_code error;
    if (!std::filesystem::exists(path_, error))
        throw Errore(oleFail, "Il database «" + name_ + "» non esiste.");
    if (access(path_.c_str(), R_OK) != 0)
        throw Errore(oleFail, "Accesso negato al database «" + name_ + "».");
    if (std::filesystem::file_size(path_, error) % smallestPage >= pageHeader) throw damaged("");
    return linesOf(output({"mdb-tables", "-1", path_}, stop));
}

std::vector<AccessColumn> AccessFile::columns(const std::string& table, const Stop& stop) const {
    if (table.starts_with('-')) // an option, to mdbtools
        throw Errore(oleFail, "La tabella «" + table +
                                  "» non si può leggere: il suo nome comincia con «-».");
    const std::string definition =
        output({"mdb-schema", "--no-indexes", "--no-relations", "--no-default-values",
                "--no-not-null", "--no-comments", "-T", table, path_, "access"},
               stop);
    std::vector<AccessColumn> found;
    bool within = false;
    for (const std::string& line : linesOf(definition)) {
        if (within && line.starts_with(")")) break;
        if (const auto column = within ? columnOf(line) : std::nullopt) found.push_back(*column);
        within = within || line.starts_with(" (");
    }
    if (found.empty()) throw damaged("");
    return found;
}

void AccessFile::rows(const std::string& table, std::size_t columns, const Stop& stop,
                      const std::function<void(const AccessRow&)>& take) const {
    const std::string count = output({"mdb-count", path_, table}, stop);
    ExportReader reader(columns, take);
    const MdbToolEnd end =
        runMdbTool({"mdb-export", "-H", "-b", "hex", "-d", std::string(1, valueEnd), "-R",
                    std::string(1, rowEnd), "-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S",
                    path_, table},
                   stop, [&](std::string_view piece) { reader.read(piece); });
    const std::string complaint = seriousPart(end.complaint);
    if (!end.well || !complaint.empty() || !reader.whole()) throw damaged(complaint);
    if (reader.rows() < std::atoll(count.c_str()))
        throw damaged("della tabella «" + table + "» mancano righe");
}

} // namespace norvel::adodb
