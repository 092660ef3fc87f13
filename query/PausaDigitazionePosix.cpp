#include "query/PausaDigitazione.h"

namespace norvel::query {

int pausaDigitazioneMs(const adodb::Recordset&) {
    return 0; // every recordset is this project's own
}

} // namespace norvel::query
