// What the public class asks of the search window, without a word of the toolkit: the real window
// is FrmRicerca, a test may give its own.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Api.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace norvel::search_window {

// Geometry in twips. Everything may raise Errore.
class NR_API FinestraRicerca {
  public:
    virtual ~FinestraRicerca();

    virtual void SetStatusBarVisible(bool visible) = 0;
    virtual void SetBarraBaseVisible(bool visible) = 0;
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetHeight(float twips) = 0;
    virtual void SetWidth(float twips) = 0;
    virtual void SetTop(float twips) = 0;
    virtual void SetLeft(float twips) = 0;
    virtual void SetWindowState(int state) = 0; // 2: maximised
    virtual void centraForm() = 0;

    virtual void SetRecordset(adodb::RecordsetRef recordset) = 0; // of the data control DBRicerca
    virtual void ImpostaStileGriglia() = 0;
    virtual void CollegaGriglia() = 0; // the grid's data source becomes DBRicerca
    virtual int NumeroColonne() const = 0;
    virtual bool FilterCombo(int colonna) const = 0;
    virtual void SetFilterCombo(int colonna, bool value) = 0;
    virtual void SetButtonVisible(std::string_view key,
                                  bool visible) = 0; // of the toolbar BarraBase

    // Shows the window and, when modal, returns once it has been unloaded (the object is gone
    // then). Modal while it is shown already: Errore 400.
    virtual void Show(bool modale) = 0;
};

// Error 400, "Form già visualizzato; impossibile visualizzarlo come form a scelta obbligatoria".
inline constexpr int erroreFormGiaVisualizzato = 400;

// Where the one window comes from. The library installs the real one (FrmRicerca) when it is
// loaded; a test of the public class without a display installs its own.
struct FonteFinestra {
    std::function<FinestraRicerca*()> istanza; // loads the window if it is not; never null
    std::function<bool()> caricata;            // true while it is loaded, shown or not
};
// Replaces the source; returns the one that was there.
NR_API FonteFinestra impostaFinestraRicerca(FonteFinestra nuova);

// The one search window of the process, loaded if it is not. On first use it brings the toolkit up,
// on the calling thread. Errore 91 where the program has no window at all (no source installed).
NR_API FinestraRicerca& frmRicerca();
// True while the window is loaded, shown or not.
NR_API bool frmRicercaCaricata();

// Inverts the filter-combo switch of every column: the loop that the public class and the window
// share.
NR_API void invertiCombo(FinestraRicerca& finestra);

} // namespace norvel::search_window
