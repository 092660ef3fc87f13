// Tables of a file of Access, in a database of the embedded kind.
#pragma once

#include "platform/adodb/access/AccessFile.h"
#include "platform/adodb/odbc/ServerNotation.h"
#include "platform/adodb/provider/Provider.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace norvel::adodb {

// A file as it stood at a moment: what tells whether it was written since.
struct FileStamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type written;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

FileStamp stampOf(const std::string& path);

// The copy is a file that loses its name once it is complete: it is gone when the session and the
// rows that come from it are, however the process ends. Texts compare without case, as in Access.
// It is never written again: rows and lists that are read at the same time do not meet.
class AccessCopy {
  public:
    // Copies those of the file's tables that the statement names (a few more, where it has words
    // that are also tables' names). Raises Errore.
    AccessCopy(const AccessFile& file, const std::string& statement, const Stop& stop);

    // True where the file has not changed and the tables that the statement names are here.
    bool serves(const AccessFile& file, const std::string& statement) const;
    Session& session() const { return *session_; }
    // The Yes/No columns of the tables; they hold -1 and 0.
    const NameSet& booleans() const { return booleans_; }

  private:
    bool copy(const AccessFile& file, const std::string& statement, const Stop& stop);

    FileStamp stamp_;
    bool settled_ = false;            // the stamp is old enough for a later change to show in it
    std::vector<std::string> tables_; // every table of the file
    std::vector<std::string> copied_;
    NameSet booleans_;
    std::shared_ptr<Session> session_;
};

} // namespace norvel::adodb
