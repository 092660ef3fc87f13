#include "component/DatiHost.h"

namespace norvel {

namespace {

using namespace adodb; // NOLINT(google-build-using-namespace): ADO's enumerators by their names

constexpr int tipiComando =
    adCmdText | adCmdTable | adCmdStoredProc | adCmdUnknown | adCmdFile | adCmdTableDirect;
constexpr std::int64_t larghezzaTesto = 255; // characters

// The text is always a statement: a host that passes none of the command types means adCmdText.
int opzioniTesto(int opzioni) {
    if (opzioni == adOptionUnspecified) return adCmdText;
    return (opzioni & tipiComando) == 0 ? (opzioni | adCmdText) : opzioni;
}

} // namespace

RecordsetRef apriRecordset(const Variant& connessione, const std::string& sql, LockTypeEnum blocco,
                           int opzioni) {
    RecordsetRef righe = makeClientRecordset();
    righe->SetCursorLocation(adUseClient);
    righe->Open(sql, connessione, adOpenStatic, blocco, opzioniTesto(opzioni));
    return righe;
}

RecordsetRef recordsetVuoto(const std::vector<std::string>& campi) {
    if (campi.empty()) {
        throw Errore(3001, "Argomenti di tipo non corretto, fuori dall'intervallo accettabile o in "
                           "conflitto tra loro");
    }
    RecordsetRef vuoto = makeClientRecordset();
    for (const std::string& campo : campi)
        vuoto->Fields().Append(campo, adVarWChar, larghezzaTesto);
    vuoto->Open();
    return vuoto;
}

RecordsetRef operatoriVuoti() {
    return recordsetVuoto({"codiceutente", "ricerchepers"});
}
RecordsetRef visteVuote() {
    return recordsetVuoto({"codiceoperatore", "codicericerca", "NomeVista", "preferito"});
}

} // namespace norvel
