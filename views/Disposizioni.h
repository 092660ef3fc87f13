// Layout files of views: where they lie, what they are called, how they are loaded and saved.
#pragma once

#include "component/VariabiliGlobali.h"
#include "platform/grid/layout/LayoutKeeper.h"

#include <string>

namespace norvel::views {

// A file in the host's notation, and the layout's name in it. Paths are put together as they stand:
// a folder without its last separator gives another path.
struct FileDisposizione {
    std::string percorso;
    std::string nome;
    bool operator==(const FileDisposizione&) const = default;
};
// Of the search as a whole. modulo names the file; the layout's name is the session's Modulo.
NR_API FileDisposizione disposizioneBase(const VariabiliGlobali& sessione,
                                         const std::string& modulo);
// Of the session's operator.
NR_API FileDisposizione disposizionePersonale(const VariabiliGlobali& sessione,
                                              const std::string& nome);
// Whether there is a file for the operator's view of this name, case-blind, in the folder itself.
NR_API bool esisteDisposizionePersonale(const VariabiliGlobali& sessione, const std::string& nome);

// What begins a view's name that stands for a base layout; the menu's entry is this and Modulo.
inline constexpr const char* prefissoBase = "Base:";

// Load a layout into the grid. Nothing is raised: a file that is missing or no layout leaves the
// grid as it was. CaricaVistaBase answers Empty; ApplicaVista answers Empty for a base name (one
// that contains "Base:" in any case: what follows its first colon is the module) and True for any
// other, whether its file was there or not.
NR_API Variant CaricaVistaBase(grid::LayoutKeeper& griglia, const VariabiliGlobali& sessione,
                               const std::string& modulo);
NR_API Variant ApplicaVista(grid::LayoutKeeper& griglia, const VariabiliGlobali& sessione,
                            const Variant& nome);

// Store the grid's present layout; raise what the file system refuses.
NR_API void salvaDisposizionePersonale(grid::LayoutKeeper& griglia,
                                       const VariabiliGlobali& sessione, const std::string& nome);
NR_API void salvaDisposizioneBase(grid::LayoutKeeper& griglia, const VariabiliGlobali& sessione);

// A session value as text: Null and Empty are "".
NR_API std::string testoSessione(const Variant& valore);

} // namespace norvel::views
