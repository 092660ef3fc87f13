// What the routines of the configuration window ask of a list box.
#pragma once

#include "platform/runtime/Api.h"

#include <string>

namespace norvel::views {

// Entries count from 0; each has a number of its own (its item data) beside its text. Errore 5
// ("Chiamata di routine o argomento non validi") on a bad index.
class NR_API ListaVoci {
  public:
    virtual ~ListaVoci();
    virtual int ListCount() const = 0;
    virtual std::string List(int indice) const = 0;
    virtual int ItemData(int indice) const = 0;
    virtual int ListIndex() const = 0; // the selected entry, -1: none
    virtual void SetListIndex(int indice) = 0;
    virtual void AddItem(const std::string& testo, int dato) = 0; // at the end
    virtual void RemoveItem(int indice) = 0; // the selected one leaves no selection behind
    virtual void Clear() = 0;
};

} // namespace norvel::views
