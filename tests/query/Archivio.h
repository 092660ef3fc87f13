// The sample database of the query tests, and what watches over it.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/MessageBox.h"

#include <filesystem>
#include <string>
#include <vector>

namespace norvel::query {

// A database of its own: clienti, four rows of every class of column, and segreti, which no query
// over clienti has any business with. It goes with the object.
class Archivio {
  public:
    Archivio();
    ~Archivio();
    Archivio(const Archivio&) = delete;
    Archivio& operator=(const Archivio&) = delete;

    const std::string& connessione() const { return connessione_; }
    // Adds a customer of this name, whatever is in it.
    void aggiungi(const std::string& nome) const;
    adodb::RecordsetRef apri(const std::string& sql) const;
    // What the query brings: values between "|", rows between " / ".
    std::string righe(const std::string& sql) const;
    // Everything that the database holds, to be compared later.
    std::string tutto() const;

  private:
    std::filesystem::path file_;
    std::string connessione_;
};

// A text that stands in the table segreti and nowhere else.
inline constexpr const char* canarino = "PAROLA-SEGRETA-7391";

// Records the boxes shown while it lives.
class Messaggi {
  public:
    Messaggi();
    ~Messaggi();
    Messaggi(const Messaggi&) = delete;
    Messaggi& operator=(const Messaggi&) = delete;
    std::vector<Messaggio> visti;

  private:
    BoxHandler prima_;
};

// The usual box for an error of this description.
Messaggio messaggioModulo(const std::string& descrizione);

std::string uniti(const std::vector<std::string>& testi, const std::string& fra = "|");

} // namespace norvel::query
