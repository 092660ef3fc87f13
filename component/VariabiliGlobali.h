// The session: what the host set and what the windows answer. One per process, by design.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Api.h"
#include "platform/runtime/Variant.h"

#include <string>
#include <vector>

namespace norvel {

// Every value lives as long as the process; nothing here is reset between two searches except where
// a member says so. Geometry and switches are kept as the host gave them (text) and are compared or
// converted as numbers where they are used.
struct VariabiliGlobali {
    // Places and people
    Variant
        gPercorsoPers; // folder of the operator's personal layout files, with its last separator
    Variant gPercorso; // base folder of the host installation, with its last separator
    Variant gUser;     // current operator code: key of personal views
    Variant gModulo;   // calling module, the search code: key of personal views

    // The window
    Variant gCaption;      // title of the search window
    Variant gStatusBar;    // compared with 0: 0 hides the status bar
    Variant gToolbar;      // compared with 0: 0 shows the toolbar
    Variant gTop, gLeft;   // twips; used when gWindowsState is neither 1 nor 2
    Variant gHeight;       // twips; 0 or Empty becomes 7000 when a search opens
    Variant gWidth;        // twips; 0 or Empty becomes 11355 when a search opens
    Variant gWindowsState; // 1 centred, 2 maximised, else at gTop, gLeft
    Variant gFilterBar;    // compared with 0: 0 switches the filter bar off

    // The search
    Variant gCampoRicerca; // name of the field that is handed back
    Variant gRisposta;     // the answer: a field's value with its own type, or "…|…|", or ""
    bool gSoloRicerca = false; // browse only: choosing hands nothing back
    bool gSelezioneMultipla =
        false;                    // several rows may be handed back; False again after a hand-back
    bool gFinestraPronta = false; // the window has finished opening; Enter is ignored before
    std::vector<std::string> gCampiModificabili; // fields that may be edited in the grid
    std::string gQueryBase;                      // the search's base query

    // The host's data; counted references
    adodb::RecordsetRef gRecordset;          // the rows to search
    adodb::RecordsetRef gRecordsetOperatori; // the operators
    adodb::RecordsetRef gRecordsetViste;     // the personal views, table ricerchepers
};

// The one session of the process.
NR_API VariabiliGlobali& variabiliGlobali();

} // namespace norvel
