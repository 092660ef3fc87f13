// The grid's style: what each control of the configuration window sets on a grid, as procedures on
// the grid's parts. The caller tells the grid afterwards (Grid::Changed).
#pragma once

#include "platform/grid/model/DataTypeCode.h"
#include "platform/grid/model/Model.h"

#include <functional>
#include <string>

namespace norvel::output {

// What the style touches: the columns, the first split, what holds for the whole grid.
struct ParteStile {
    grid::Columns& colonne;
    grid::Split& split;
    grid::GridStyle& stile;
    // The data-type code of a column; 10 (codiceSiNo) marks one of yes/no values.
    std::function<int(int colonna)> codiceTipo;
};

inline constexpr int codiceSiNo = grid::yesNoTypeCode;

// The grid's DataView.
inline constexpr int vistaNormale = grid::dataViewNormal;
inline constexpr int vistaRaggruppata = grid::dataViewGroups;

// Check boxes for the columns of yes/no values; those of any other type are left alone.
NR_API void impostaChekBox(const ParteStile& griglia, bool attivo);
NR_API void impostaRidimensionaColonne(const ParteStile& griglia, bool attivo); // AllowSizing
NR_API void impostaRidimensionaRighe(const ParteStile& griglia, bool attivo);   // AllowRowSizing
NR_API void impostaSpostaColonne(const ParteStile& griglia, bool attivo);       // AllowColMove
NR_API void impostaLetturaFacilitata(const ParteStile& griglia, bool attivo); // AlternatingRowStyle
NR_API void impostaEvidenziaRiga(const ParteStile& griglia, bool attivo);     // MarqueeStyle
// Grouping on switches column moving on; off switches it off, whatever it was.
NR_API void impostaRaggruppamento(const ParteStile& griglia, bool attivo);
// testo: the combo's text. Errore 13 ("Tipo non corrispondente") where it is no number, 380
// ("Valore di proprietà non valido") where it is no size: not above 0, or beyond 1000 points.
NR_API void impostaDimensioneCarattere(const ParteStile& griglia, const std::string& testo);
// In this order: bold, name, size (rounded to single precision), italic. A size that is none is
// refused as above, and what was set by then stays.
NR_API void impostaCarattere(const ParteStile& griglia, const grid::FontStyle& scelto);
// testo: a 32-bit colour, 0x00BBGGRR, as decimal text, with a sign or without. Errore 13 where it
// is none.
NR_API void impostaColorePari(const ParteStile& griglia, const std::string& testo);
NR_API void impostaColoreDispari(const ParteStile& griglia, const std::string& testo);

// The controls as the grid's style fills them; those that are not read back are not here.
struct ControlliStile {
    std::string colorePari, coloreDispari; // decimal, as a Long
    bool facilitato = false, sposta = false, colonne = false, righe = false, evidenzia = false;
    bool operator==(const ControlliStile&) const = default;
};
NR_API ControlliStile leggiStile(const ParteStile& griglia);

} // namespace norvel::output
