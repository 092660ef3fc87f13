// The sample database: customers with Italian names, operators and personal views, the same bytes
// at every call.
#pragma once

#include <cstdint>
#include <filesystem>

namespace norvel::hosts {

// Makes the SQLite database percorso, written beside (percorso + ".parziale"), flushed and renamed
// into place, so that a file of that name is replaced whole or not at all. Deterministic: a row
// depends on its number only, so a smaller database is the beginning of a larger one.
//
//   clienti       codice INTEGER PRIMARY KEY (1 to righe), ragione_sociale TEXT, citta TEXT (about
//                 400 distinct), provincia TEXT, indirizzo TEXT, data_nascita DATE (ISO text; one
//                 in 40 is NULL), fatturato NUMERIC (two decimals), attivo BOOLEAN (0, 1),
//                 note TEXT (a fifth NULL, a tenth empty)
//   operatori     codiceutente TEXT, ricerchepers BOOLEAN
//   ricerchepers  codiceoperatore TEXT, codicericerca TEXT, NomeVista TEXT, preferito BOOLEAN
//
// A customer takes about 136 bytes as CSV with quotes around texts that have blanks. righe: rows of
// clienti, 0 or more. Raises Errore 5 on a negative number, and the database's own error (Italian
// text) where the file cannot be written.
void creaDatiDemo(const std::filesystem::path& percorso, std::int64_t righe);

} // namespace norvel::hosts
