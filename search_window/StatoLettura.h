// What the status line says of rows that are coming, and of rows that are not all there.
#pragma once

#include "platform/adodb/Recordset.h"

#include <string>

namespace norvel::search_window {

// What a refresh came to; until a first one, and while one runs: Fatto.
enum class Aggiornamento { Fatto, Interrotto, NonRiuscito };

struct StatoLettura {
    enum class Lavoro { Nessuno, Interrogazione, Lettura };
    enum class Elenco { Completo, Interrotto, OltreMemoria };
    Lavoro lavoro = Lavoro::Nessuno;
    bool interruzione = false; // the operator has asked to end what runs
    Elenco elenco = Elenco::Completo;
    bool filtrato = false; // of an incomplete list only
    bool ordinato = false;
    Aggiornamento aggiornamento = Aggiornamento::Fatto;
};

// True while the recordset runs a statement or fetches rows: what Esc ends.
bool inLavoro(const adodb::Recordset& recordset);
StatoLettura statoLettura(const adodb::Recordset& recordset);
// "" where there is nothing to say: the rows on show are all there are. A filter and a sort over
// rows that are not all there are said to have seen only these.
std::string testoLettura(const StatoLettura& stato);

} // namespace norvel::search_window
