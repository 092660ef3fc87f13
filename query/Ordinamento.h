// Sorting by a click on a heading.
#pragma once

#include <string>

namespace norvel::query {

// Where a heading's picture stands.
inline constexpr int posizioneFreccia = 1; // marks the sorted column
inline constexpr int posizioneVuota = 7;   // of a heading that showed the picture before

inline constexpr const char* frecciaSu = "parametri\\SortUp.bmp";    // behind gPercorso
inline constexpr const char* frecciaGiu = "parametri\\SortDown.bmp"; // behind gPercorso

// The grid's headings and the recordset behind it, as sorting needs them. Any call may raise
// Errore.
class Intestazioni {
  public:
    virtual ~Intestazioni();
    virtual int numero() const = 0;
    virtual std::string campo(int colonna) const = 0; // DataField
    virtual int posizioneImmagine(int colonna) const = 0;
    virtual void impostaPosizioneImmagine(int colonna, int posizione) = 0;
    // percorso: a bitmap file in the host's notation
    virtual void impostaImmagine(int colonna, const std::string& percorso) = 0;
    virtual void impostaTrasparente(int colonna, bool trasparente) = 0;
    virtual void ridisegna() = 0;
    virtual void impostaOrdine(const std::string& testo) = 0; // the recordset's Sort
};

// "[campo]  asc" or "[campo]  desc": two blanks between the bracket and the direction.
std::string testoOrdine(const std::string& campo, bool crescente);

// Takes the arrow off the column that has it, without a repaint. Nothing is raised.
void togliFrecce(Intestazioni& intestazioni);

// A click on the heading of colonna: takes the arrow off the column that had it, inverts crescente
// (the window's one flag, False at first), marks colonna, repaints, sets the recordset's Sort.
// Every step is tried, whatever became of those before; nothing is raised and nothing shown.
void ordinaPerColonna(Intestazioni& intestazioni, int colonna, bool& crescente,
                      const std::string& percorso);

} // namespace norvel::query
