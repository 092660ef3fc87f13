// What every export begins with.
#pragma once

#include "output/Esportazioni.h"

#include <string>

namespace norvel::output {

// The grid's recordset; 91 where there is none.
adodb::Recordset& recordsetDi(const ParteEsportazione& parte);

// Waits for the rows. False where the operator did not; raises the error of a fetch that broke off.
bool tutteLeRighe(const ParteEsportazione& parte);

// Creates one folder, in the host's notation; errors are ignored.
void creaCartella(const std::string& percorso);

// A session value as a text that paths are made of: "" for Null.
std::string testoPercorso(const Variant& valore);

// The busy pointer, while it lives.
class Clessidra {
  public:
    explicit Clessidra(const ParteEsportazione& parte) : parte_(parte) { parte_.clessidra(true); }
    ~Clessidra() { parte_.clessidra(false); }
    Clessidra(const Clessidra&) = delete;
    Clessidra& operator=(const Clessidra&) = delete;

  private:
    const ParteEsportazione& parte_;
};

} // namespace norvel::output
