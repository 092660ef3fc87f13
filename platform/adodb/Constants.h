// ADO's enumerations, by ADO's names and values (Microsoft's ADO API reference).
#pragma once

#include <cstdint>

namespace norvel::adodb {

enum CursorTypeEnum : int {
    adOpenUnspecified = -1,
    adOpenForwardOnly = 0,
    adOpenKeyset = 1,
    adOpenDynamic = 2,
    adOpenStatic = 3
};
enum LockTypeEnum : int {
    adLockUnspecified = -1,
    adLockReadOnly = 1,
    adLockPessimistic = 2,
    adLockOptimistic = 3,
    adLockBatchOptimistic = 4
};
enum CursorLocationEnum : int { adUseServer = 2, adUseClient = 3 };
enum CommandTypeEnum : int {
    adCmdUnspecified = -1,
    adCmdText = 1,
    adCmdTable = 2,
    adCmdStoredProc = 4,
    adCmdUnknown = 8,
    adCmdFile = 0x100,
    adCmdTableDirect = 0x200
};
enum ExecuteOptionEnum : int {
    adOptionUnspecified = -1,
    adAsyncExecute = 0x10,
    adAsyncFetch = 0x20,
    adAsyncFetchNonBlocking = 0x40,
    adExecuteNoRecords = 0x80,
    adExecuteStream = 0x400
};
// The options of Open are bits of both.
constexpr int operator|(CommandTypeEnum command, ExecuteOptionEnum option) {
    return static_cast<int>(command) | static_cast<int>(option);
}

// State bits. adStateFetchBroken is this engine's own: the fetch ended before the last row; what
// was fetched stays readable, and Recordset::FetchError() says why.
enum ObjectStateEnum : int {
    adStateClosed = 0,
    adStateOpen = 1,
    adStateConnecting = 2,
    adStateExecuting = 4,
    adStateFetching = 8,
    adStateFetchBroken = 0x10000
};

enum PositionEnum : int { adPosUnknown = -1, adPosBOF = -2, adPosEOF = -3 };
enum BookmarkEnum : int { adBookmarkCurrent = 0, adBookmarkFirst = 1, adBookmarkLast = 2 };
enum CompareEnum : int {
    adCompareLessThan = 0,
    adCompareEqual = 1,
    adCompareGreaterThan = 2,
    adCompareNotEqual = 3,
    adCompareNotComparable = 4
};
enum FilterGroupEnum : int {
    adFilterNone = 0,
    adFilterPendingRecords = 1,
    adFilterAffectedRecords = 2,
    adFilterFetchedRecords = 3,
    adFilterConflictingRecords = 5
};
enum EditModeEnum : int { adEditNone = 0, adEditInProgress = 1, adEditAdd = 2, adEditDelete = 4 };
enum AffectEnum : int { adAffectCurrent = 1, adAffectGroup = 2, adAffectAll = 3 };

enum EventReasonEnum : int {
    adRsnAddNew = 1,
    adRsnDelete = 2,
    adRsnUpdate = 3,
    adRsnUndoUpdate = 4,
    adRsnUndoAddNew = 5,
    adRsnUndoDelete = 6,
    adRsnRequery = 7,
    adRsnResynch = 8,
    adRsnClose = 9,
    adRsnMove = 10,
    adRsnFirstChange = 11,
    adRsnMoveFirst = 12,
    adRsnMoveNext = 13,
    adRsnMovePrevious = 14,
    adRsnMoveLast = 15
};
enum EventStatusEnum : int {
    adStatusOK = 1,
    adStatusErrorsOccurred = 2,
    adStatusCantDeny = 3,
    adStatusCancel = 4,
    adStatusUnwantedEvent = 5
};

enum DataTypeEnum : int {
    adEmpty = 0,
    adSmallInt = 2,
    adInteger = 3,
    adSingle = 4,
    adDouble = 5,
    adCurrency = 6,
    adDate = 7,
    adBSTR = 8,
    adIDispatch = 9,
    adError = 10,
    adBoolean = 11,
    adVariant = 12,
    adIUnknown = 13,
    adDecimal = 14,
    adTinyInt = 16,
    adUnsignedTinyInt = 17,
    adUnsignedSmallInt = 18,
    adUnsignedInt = 19,
    adBigInt = 20,
    adUnsignedBigInt = 21,
    adFileTime = 64,
    adGUID = 72,
    adBinary = 128,
    adChar = 129,
    adWChar = 130,
    adNumeric = 131,
    adUserDefined = 132,
    adDBDate = 133,
    adDBTime = 134,
    adDBTimeStamp = 135,
    adChapter = 136,
    adPropVariant = 138,
    adVarNumeric = 139,
    adVarChar = 200,
    adLongVarChar = 201,
    adVarWChar = 202,
    adLongVarWChar = 203,
    adVarBinary = 204,
    adLongVarBinary = 205
};
// What Recordset::Supports() is asked about.
enum CursorOptionEnum : int {
    adHoldRecords = 0x100,
    adMovePrevious = 0x200,
    adBookmark = 0x2000,
    adApproxPosition = 0x4000,
    adUpdateBatch = 0x10000,
    adResync = 0x20000,
    adNotify = 0x40000,
    adFind = 0x80000,
    adAddNew = 0x1000400,
    adDelete = 0x1000800,
    adUpdate = 0x1008000
};
enum FieldAttributeEnum : int {
    adFldMayDefer = 2,
    adFldUpdatable = 4,
    adFldUnknownUpdatable = 8,
    adFldFixed = 0x10,
    adFldIsNullable = 0x20,
    adFldMayBeNull = 0x40,
    adFldLong = 0x80,
    adFldRowID = 0x100,
    adFldRowVersion = 0x200,
    adFldKeyColumn = 0x8000
};

} // namespace norvel::adodb
