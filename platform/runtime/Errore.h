// The one failure type of the system: a number and a description, as an automation host knows
// errors.
#pragma once

#include "platform/runtime/Api.h"

#include <cstdint>
#include <exception>
#include <string>

namespace norvel {

// A failure on its way to whoever traps it. It is a plain value (copy it, keep it, compare it) that
// may be thrown: routines whose every step can fail stay readable, and the routine that traps
// decides which box to show. Nothing but an Errore is ever thrown across a folder's border.
class NR_API Errore : public std::exception {
  public:
    // numero: ADO's 0x800A… codes are given as their low word (3021), others whole.
    // descrizione: Italian, UTF-8.
    Errore(std::int64_t numero, std::string descrizione);
    ~Errore() override;
    Errore(const Errore&);
    Errore& operator=(const Errore&);

    std::int64_t numero() const noexcept { return numero_; }
    const std::string& descrizione() const noexcept { return descrizione_; }
    const char* what() const noexcept override { return descrizione_.c_str(); }

    bool operator==(const Errore& other) const {
        return numero_ == other.numero_ && descrizione_ == other.descrizione_;
    }

  private:
    std::int64_t numero_;
    std::string descrizione_;
};

// The run-time errors that more than one folder raises.
NR_API Errore erroreTipoNonCorrispondente(); // 13, "Tipo non corrispondente"
NR_API Errore erroreOverflow();              // 6, "Overflow"
NR_API Errore erroreArgomento();             // 5, "Chiamata di routine o argomento non validi"
NR_API Errore
erroreOggettoNonImpostato(); // 91, "Variabile oggetto o variabile del blocco With non impostata"

NR_API Errore erroreNull(); // 94, "Utilizzo non valido di Null"

} // namespace norvel
