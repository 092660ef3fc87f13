#include "platform/adodb/Errors.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace norvel::adodb {

namespace {

struct Description {
    ErrorNumber number;
    std::string_view text;
};

// The meaning of each number: Microsoft's ADO error reference and OLE DB's oledberr.h.
constexpr Description descriptions[] = {
    {adErrInvalidArgument,
     "Argomento di tipo errato, fuori dai limiti ammessi o in contrasto con gli altri."},
    {adErrNoCurrentRecord, "Non c'è un record corrente: il recordset è prima del primo o dopo "
                           "l'ultimo record, oppure il record corrente è stato eliminato."},
    {adErrIllegalOperation, "Operazione non consentita in questo contesto."},
    {adErrFeatureNotAvailable,
     "Il recordset o il provider non è in grado di eseguire l'operazione richiesta."},
    {adErrItemNotFound,
     "Impossibile trovare nell'insieme l'elemento con il nome o il numero richiesto."},
    {adErrObjectInCollection, "Nell'insieme c'è già un elemento con questo nome."},
    {adErrObjectNotSet, "L'oggetto non è più valido."},
    {adErrDataConversion, "Il valore è di un tipo non adatto a questa operazione."},
    {adErrObjectClosed, "Operazione non consentita su un oggetto chiuso."},
    {adErrObjectOpen, "Operazione non consentita su un oggetto aperto."},
    {adErrProviderNotFound, "Impossibile trovare il provider."},
    {adErrBoundToCommand,
     "Impossibile cambiare la connessione di un recordset che ha per origine un oggetto Command."},
    {adErrInvalidConnection, "La connessione non può essere usata per questa operazione: è chiusa "
                             "o non è valida in questo contesto."},
    {adErrNotReentrant, "Operazione non consentita durante l'elaborazione di un evento."},
    {adErrStillExecuting, "Operazione non consentita durante un'esecuzione asincrona."},
    {adErrOperationCancelled, "Operazione annullata."},
    {adErrStillConnecting, "Operazione non consentita durante una connessione asincrona."},
    {dbStopLimit, "I record sono più di quanti questo computer può tenere in memoria: il "
                  "caricamento si è fermato e ce ne sono altri. Filtri, ordinamenti e conteggi "
                  "valgono soltanto per quelli caricati."},
    {oleFail, "Errore del database."},
    {oleOutOfMemory, "Memoria insufficiente."},
    {dbNoCommand, "Il testo del comando non è stato impostato."},
    {dbBadBookmark, "Il segnalibro non è valido."},
    {dbParamNotOptional, "Nessun valore specificato per alcuni parametri necessari."},
    {dbErrorsInCommand, "Errore nella query."},
    {dbIntegrityViolation, "L'operazione viola un vincolo di integrità del database."},
    {dbCommandTimeout, "Tempo di attesa del comando scaduto."},
    {dbNoTable, "La tabella o la vista non esiste."},
    {dbConcurrency, "Il record è stato modificato o cancellato da altri dopo la lettura."},
    {dbAuthFailed, "L'accesso al database è stato rifiutato: utente o password non validi."},
    {dbCantOrder, "Non è possibile ordinare i record in questo modo."},
};

} // namespace

Errore adoError(ErrorNumber number, std::string_view detail) {
    const auto* found = std::ranges::find(descriptions, number, &Description::number);
    std::string text(found != std::end(descriptions) ? found->text : "Errore.");
    if (!detail.empty()) text.append(" ").append(detail);
    return {number, std::move(text)};
}

} // namespace norvel::adodb
