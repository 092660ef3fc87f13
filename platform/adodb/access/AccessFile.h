// What a file of Access holds, read through mdbtools.
#pragma once

#include "platform/adodb/access/MdbTool.h"

#include <functional>
#include <string>
#include <vector>

namespace norvel::adodb {

struct AccessColumn {
    std::string name;
    std::string type; // as the copy declares it: NAME or NAME(n), see SqliteTypes
    bool text = false;
    bool bytes = false; // values come as hexadecimal digits
    bool truth = false; // Yes/No
};

// One value as mdbtools writes it. The empty text of a file is a Null here: mdbtools does not tell
// them apart.
struct AccessValue {
    std::string text;
    bool null = true;
};

using AccessRow = std::vector<AccessValue>;

// A file that exists; nothing is kept open between the calls, and nothing locked. Each call raises
// Errore where the file is none of Access, is damaged (what mdbtools complains of, where it falls,
// where rows are missing), or where stop is due.
class AccessFile {
  public:
    // path: the system's; name: the host's, for messages
    AccessFile(std::string path, std::string name)
        : path_(std::move(path)), name_(std::move(name)) {}

    const std::string& path() const { return path_; }
    const std::string& name() const { return name_; }

    std::vector<std::string> tables(const Stop& stop) const;
    std::vector<AccessColumn> columns(const std::string& table, const Stop& stop) const;
    // Hands every row on, its values in the order of the columns.
    void rows(const std::string& table, std::size_t columns, const Stop& stop,
              const std::function<void(const AccessRow&)>& take) const;

  private:
    std::string output(const std::vector<std::string>& command, const Stop& stop) const;
    Errore damaged(const std::string& complaint) const;

    std::string path_;
    std::string name_;
};

} // namespace norvel::adodb
