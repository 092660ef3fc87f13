#include "search_window/Navigazione.h"

#include "platform/runtime/Text.h"

#include <string>

namespace norvel::search_window {

using namespace adodb;

void vaiAlPrimo(Recordset& recordset) {
    if (recordset.RecordCount() > 0) recordset.MoveFirst();
}

void vaiAllUltimo(Recordset& recordset) {
    if (recordset.RecordCount() > 0) recordset.MoveLast();
}

void vaiIndietro(Recordset& recordset) {
    if (!recordset.BOF())
        recordset.MovePrevious();
    else
        vaiAlPrimo(recordset);
}

void vaiAvanti(Recordset& recordset) {
    if (!recordset.EOF_())
        recordset.MoveNext();
    else
        vaiAllUltimo(recordset);
}

void aggiornaElenco(Recordset& recordset) {
    const std::string connessione = connectionText(recordset);
    for (const char* nome : {"sqloledb", "SQL Server"})
        if (findText(connessione, nome) != std::string::npos) {
            recordset.Requery(adAsyncFetchNonBlocking);
            return;
        }
}

} // namespace norvel::search_window
