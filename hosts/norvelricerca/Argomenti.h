// What the operator typed at the shell, read into one plain value. Knows neither windows nor data:
// the properties of the public class come as a list, so that every property is an option of its
// own.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace norvel::hosts {

// How a property of the public class may be given on the command line.
enum class TipoProprieta {
    Testo,       // any text
    Numero,      // a text that the component compares or converts as a number
    Booleano,    // True, False, or a number
    SolaLettura, // the component writes it: no option
    Oggetto      // a recordset: has an option of another kind
};

struct Proprieta {
    std::string nome;
    TipoProprieta tipo = TipoProprieta::Testo;
};

enum class Azione { Ricerca, CreaDemo, Aiuto, Versione };

struct Argomenti {
    Azione azione = Azione::Ricerca;
    std::string connessione;
    std::string operatori; // SQL of the operators' recordset; empty: none was given
    std::string viste;     // SQL of the views' recordset; empty: none was given
    // Property and value in the order of the command line, the names as the component spells them.
    std::vector<std::pair<std::string, std::string>> proprieta;
    bool tempi = false;
    std::string fileDemo;
    std::int64_t righe = 100000; // of the sample database

    // The value given last to a property, or nullptr. nome: as the component spells it.
    const std::string* valore(const std::string& nome) const;
};

// Reads the arguments (without the program's name). Option names are case-blind; a value follows as
// the next argument or behind "="; of an option given twice the last value holds. An argument that
// begins with "--" is never taken as the value of the option before it, so that a forgotten value
// is told: such a value is given behind "=". "--aiuto" and "--versione" end the reading where they
// stand. Raises Errore 5 with a sentence for the operator: unknown option, missing or unreadable
// value, a property that cannot be set, an obligatory option left out, options that exclude each
// other.
Argomenti leggiArgomenti(const std::vector<std::string>& argomenti,
                         const std::vector<Proprieta>& proprieta);

} // namespace norvel::hosts
