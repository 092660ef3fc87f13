#include "platform/adodb/ado/AdoRecordset.h"
#include "query/PausaDigitazione.h"

namespace norvel::query {

int pausaDigitazioneMs(const adodb::Recordset& recordset) {
    return adodb::adoDispatch(recordset) != nullptr ? pausaSuAdoMs : 0;
}

} // namespace norvel::query
