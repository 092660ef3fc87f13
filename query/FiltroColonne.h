// The filter bar's cells as one text for a recordset's Filter.
#pragma once

#include "platform/adodb/Recordset.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::query {

// The fixed entries of a column's value list, in their order.
inline constexpr const char* voceTutti = "[Tutti]";
inline constexpr const char* voceNulli = "[Nulli]";
inline constexpr const char* voceVuoti = "[Vuoti]";
inline constexpr const char* voceNonVuoti = "[Non vuoti]";

// Between the values of a multiple choice.
inline constexpr const char* separatoreValori = " ;§; ";

// How typed values are compared, for the whole grid.
enum class Confronto { Contiene = 2, Uguale = 3, Diverso = 4 };

// The mode that the option buttons ask for: optDiverso, then optUguale; contains otherwise.
Confronto confrontoScelto(bool optDiverso, bool optUguale);

// One grid column: the field that it shows and the text of its filter cell, as typed.
struct ColonnaFiltro {
    std::string campo;
    std::string valore;
};

// The ADO type of a field; raises Errore for a field that is not there.
using TipoDiCampo = std::function<adodb::DataTypeEnum(const std::string& campo)>;
// That of a recordset's Fields; the recordset must outlive the answer.
TipoDiCampo tipiDi(adodb::Recordset& recordset);

enum class ClasseColonna : char { Testo = 'S', Numero = 'N', Data = 'D' };
ClasseColonna classeDiTipo(adodb::DataTypeEnum tipo);

// The day that a filter cell of a date column names: day first, no bare time of day; any time
// behind the date is left out. As "dd-mm-yyyy"; nullopt where the text is no date.
std::optional<std::string> dataDiCella(std::string_view valore);

// The conditions of all cells that are not blank, joined by " AND ", columns in their order. A date
// cell that holds no date gives no condition, but its " AND " stays (see verificaCella, which tells
// beforehand). "" is no filter. An error (a field that is not there) shows the usual box and gives
// "".
std::string componiFiltro(const std::vector<ColonnaFiltro>& colonne, const TipoDiCampo& tipo,
                          Confronto confronto);

// What the composer of several values answers: the filter text, or why there is none (Italian, for
// the operator; the filter in force should stay).
struct FiltroComposto {
    std::string testo;
    std::string rifiuto; // empty: testo holds
    bool operator==(const FiltroComposto&) const = default;
};

// At most so many alternatives (a group of conditions each) may a filter have.
inline constexpr std::size_t massimoAlternative = 1000;
// And so many conditions in all of them together.
inline constexpr std::size_t massimoCondizioni = 10'000;

// As componiFiltro for cells that hold several values separated by separatoreValori: a row is kept
// where any value of each column matches.
// - Alternatives of one column alone stand as one group in parentheses, "(a OR b)"; beside
//   conditions of other columns they are distributed, "(a AND c) OR (b AND c)", since ADO takes
//   nothing else.
// - With Diverso the typed values of a column mean none of them: "a <> 1 AND a <> 2". The tokens
//   [Nulli], [Vuoti], [Non vuoti] keep their own meaning in every mode, so beside values they are
//   further alternatives: different from A, or null.
// - [Tutti] among a column's values leaves the column without a condition; empty values, and text
//   that is no date in a date column, are left out.
// More than massimoAlternative groups, values that one field must differ from, or
// massimoCondizioni: rifiuto says so, and nothing grows. An error shows the usual box and gives "".
FiltroComposto componiFiltroMultiplo(const std::vector<ColonnaFiltro>& colonne,
                                     const TipoDiCampo& tipo, Confronto confronto);

// The filter text for use beside other conditions of an SQL text: in parentheses if an OR stands at
// its top level (outside parentheses, brackets, quotes and hashes), else as it is.
std::string traParentesi(std::string_view filtro);

} // namespace norvel::query
