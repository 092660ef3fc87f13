#include "platform/adodb/ado/AdoRecordset.h"
#include "search_window/RecordsetPrivato.h"

namespace norvel::search_window {

RecordsetPrivato creaRecordsetPrivato(const adodb::Recordset& dellaGriglia) {
    if (adodb::adoDispatch(dellaGriglia)) return {adodb::createAdoRecordset(), -1};
    return {adodb::makeClientRecordset(),
            adodb::adCmdText | adodb::adAsyncExecute | adodb::adAsyncFetchNonBlocking};
}

} // namespace norvel::search_window
