#include "search_window/RecordsetPrivato.h"

namespace norvel::search_window {

RecordsetPrivato creaRecordsetPrivato(const adodb::Recordset&) {
    return {adodb::makeClientRecordset(),
            adodb::adCmdText | adodb::adAsyncExecute | adodb::adAsyncFetchNonBlocking};
}

} // namespace norvel::search_window
