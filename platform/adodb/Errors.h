// ADO's and OLE DB's error numbers with the Italian descriptions that a host and an operator see.
#pragma once

#include "platform/runtime/Errore.h"

#include <cstdint>
#include <string_view>

namespace norvel::adodb {

// ADO's ErrorValueEnum (low words), OLE DB's codes whole, as a signed 32-bit number.
enum ErrorNumber : std::int64_t {
    adErrInvalidArgument = 3001,
    adErrNoCurrentRecord = 3021,
    adErrIllegalOperation = 3219,
    adErrFeatureNotAvailable = 3251,
    adErrItemNotFound = 3265,
    adErrObjectInCollection = 3367,
    adErrObjectNotSet = 3420,
    adErrDataConversion = 3421,
    adErrObjectClosed = 3704,
    adErrObjectOpen = 3705,
    adErrProviderNotFound = 3706,
    adErrBoundToCommand = 3707,
    adErrInvalidConnection = 3709,
    adErrNotReentrant = 3710,
    adErrStillExecuting = 3711,
    adErrOperationCancelled = 3712,
    adErrStillConnecting = 3713,
    dbStopLimit = 265926,               // 0x00040EC6 DB_S_STOPLIMITREACHED
    oleFail = -2147467259,              // 0x80004005 E_FAIL: what providers report without a code
    oleOutOfMemory = -2147024882,       // 0x8007000E E_OUTOFMEMORY
    dbNoCommand = -2147217908,          // 0x80040E0C DB_E_NOCOMMAND
    dbBadBookmark = -2147217906,        // 0x80040E0E DB_E_BADBOOKMARK
    dbParamNotOptional = -2147217904,   // 0x80040E10 DB_E_PARAMNOTOPTIONAL
    dbErrorsInCommand = -2147217900,    // 0x80040E14 DB_E_ERRORSINCOMMAND
    dbIntegrityViolation = -2147217873, // 0x80040E2F DB_E_INTEGRITYVIOLATION
    dbCommandTimeout = -2147217871,     // 0x80040E31 DB_E_ABORTLIMITREACHED
    dbNoTable = -2147217865,            // 0x80040E37 DB_E_NOTABLE
    dbConcurrency = -2147217864,        // 0x80040E38 DB_E_CONCURRENCYVIOLATION
    dbAuthFailed = -2147217843,         // 0x80040E4D DB_SEC_E_AUTH_FAILED
    dbCantOrder = -2147217824,          // 0x80040E60 DB_E_CANTORDER
};

// The error with its description from the one table; detail (Italian, may be empty) follows it
// after a blank.
Errore adoError(ErrorNumber number, std::string_view detail = {});

} // namespace norvel::adodb
