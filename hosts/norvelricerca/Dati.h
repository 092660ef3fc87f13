// The three recordsets of a search, opened from what the command line says.
#pragma once

#include "hosts/norvelricerca/Argomenti.h"
#include "platform/adodb/Recordset.h"

namespace norvel::hosts {

struct Dati {
    adodb::ConnectionRef connessione;
    adodb::RecordsetRef righe;     // may still be fetching
    adodb::RecordsetRef operatori; // fields codiceutente, ricerchepers
    adodb::RecordsetRef viste;     // fields codiceoperatore, codicericerca, NomeVista, preferito
};

// Opens the connection and the recordsets, the rows last and with a background fetch. Recordsets
// that the command line does not name are empty ones, open, with their fields. Nothing is left half
// open: raises an Errore whose sentence names the option at fault, for a connection that is
// refused, a statement with an error or without rows, a field that is missing.
Dati apriDati(const Argomenti& argomenti);

// Ends a fetch that is still running and closes what apriDati opened. Raises nothing.
void chiudiDati(Dati& dati) noexcept;

} // namespace norvel::hosts
