// The status line's texts and the boxes of the search window: each fixed text in one place.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/MessageBox.h"
#include "query/FiltroColonne.h"
#include "search_window/StatoLettura.h"

#include <string>

namespace norvel::search_window {

// Separator of the values of a multiple choice in a column's value list.
inline constexpr const char* separatoreValori = query::separatoreValori;

std::string testoTotale(adodb::RowCount record);                          // "Totale record 125"
std::string testoContatore(adodb::RowCount posizione, adodb::RowCount n); // "Record 3 di 120"
std::string testoSelezionati(adodb::RowCount record);                     // "Selezionati 3"
std::string testoRecordSelezionati(adodb::RowCount record);               // "Record selezionati 71"

// A routine that names itself: critical icon, "<routine>", carriage return, number, " - ",
// description.
Messaggio messaggioRoutine(const std::string& routine, const Errore& errore,
                           const std::string& titolo = titoloPredefinito);
// Before a double-click's value is read.
Messaggio messaggioDblClick(const Errore& errore);
// Anything the toolbar's handler traps.
Messaggio messaggioToolbar(const Errore& errore);
// A grouped grid that could not be sorted.
Messaggio messaggioRiordino(const Errore& errore);
// "Inserisco tutti i record?"
Messaggio domandaTuttiRecord();
// Why the filter cells together make no filter.
Messaggio messaggioRifiuto(const std::string& rifiuto);
// A fetch that broke off; lette: the rows that came and stay.
Messaggio messaggioLetturaInterrotta(const Errore& errore, adodb::RowCount lette);
// A refresh that came to nothing: the rows that were there stay.
Messaggio messaggioAggiornamento(const Errore& errore, Aggiornamento esito);

} // namespace norvel::search_window
