// What drivers and servers report, as ADO's errors in Italian.
#pragma once

#include "platform/runtime/Errore.h"

#include <string>

namespace norvel::adodb {

// One diagnostic record of the driver manager.
struct OdbcDiagnostic {
    std::string state; // SQLSTATE, five characters
    long native = 0;   // the server's own number
    std::string text;  // UTF-8
    // True where the connection is of no more use.
    bool linkBroken() const;
};

// place: the server as messages name it. secret (a password, may be empty) stands in no
// description, whatever the server's text repeats of it.
Errore odbcError(const OdbcDiagnostic& diagnostic, const std::string& place,
                 const std::string& secret);

// The driver's text without what only says who speaks: names and versions in brackets, "ERROR:".
std::string plainText(const std::string& driverText);

} // namespace norvel::adodb
