// The value list of a column: which query brings its values, and how each is shown.
#pragma once

#include "platform/adodb/Recordset.h"
#include "query/FiltroColonne.h"

#include <array>
#include <optional>
#include <string>

namespace norvel::query {

// There at once, before the query runs.
inline constexpr std::array<const char*, 4> vociFisse = {voceTutti, voceNulli, voceVuoti,
                                                         voceNonVuoti};

struct RichiestaValori {
    std::string campo;                       // DataField of the open column
    std::optional<std::string> testoComando; // CommandText of the recordset's ActiveCommand, if any
    std::string queryBase;                   // takes its place
    Variant filtro;             // the recordset's Filter: 0 (or "") is none, else a text
    std::string strConnessione; // adodb::connectionText of the recordset
};

// What is to be asked for the recordset behind a grid: the text of the command that it runs, its
// filter, its connection. Raises what the recordset raises.
RichiestaValori richiestaValori(const adodb::Recordset& recordset, const std::string& campo,
                                const std::string& queryBase);

// The query in neutral notation: what ElaboraQuery gets. A filter that is an array of bookmarks
// cannot be said in SQL: 13.
std::string componiQueryValori(const RichiestaValori& richiesta);

// The query to open on the private recordset: composed, rendered for its database and found to be
// of the shape that it has with harmless values (FormaQuery.h). Raises Errore where it was refused:
// the list then stays with the four fixed entries. ElaboraQuery's own failures have shown their
// box.
std::string queryListaValori(const RichiestaValori& richiesta);

// The item that stands for a value of the field's type: a Boolean as "0" or "-1", anything else as
// text, Null as "". Raises Errore for a value that cannot be read: that row is then skipped.
std::string testoVoce(const Variant& valore, adodb::DataTypeEnum tipo);

} // namespace norvel::query
