// A host's own ADO objects behind this folder's interfaces. Nothing of COM shows here.
//
// The adapters call ADO by member name through IDispatch, so that every generation of ADO serves,
// and what answers to ADO's names. They keep counted references: none outlives the last adapter
// that holds it. One thread, the one of the object's apartment, calls.
#pragma once

#include "platform/adodb/Recordset.h"

#include <string>

struct IDispatch;

namespace norvel::adodb {

// The adapter over the object; null for a null one. Nothing is asked of the object yet, so that a
// host may hand over a recordset that it opens later.
//
// Events: while somebody is subscribed, the object's own (its connection point of RecordsetEvents);
// from an object that offers none, those of what is done through this adapter. ViewChanged comes
// after each change of Filter and Sort, Requery, Close and Open that is made here or told by an
// event.
// Clone needs bookmarks and raises 3251, with a text for the host's developer, where there are
// none. So do AbsolutePosition and RecordCount where the cursor itself knows no positions: they are
// found by walking a clone; without bookmarks both answer -1, as ADO does. GetRows gives no
// bookmarks where there are none.
RecordsetRef wrapAdoRecordset(IDispatch* recordset);
ConnectionRef wrapAdoConnection(IDispatch* connection);
CommandRef wrapAdoCommand(IDispatch* command);

// New objects of the machine's ADO, in this process, by program identifier. 429 where it cannot be
// created.
RecordsetRef createAdoRecordset(const std::string& progId = "ADODB.Recordset");
ConnectionRef createAdoConnection(const std::string& progId = "ADODB.Connection");
CommandRef createAdoCommand(const std::string& progId = "ADODB.Command");

// The object behind an adapter, so that a host gets its own back; null where there is none (an
// object of this project's own). No reference is added.
IDispatch* adoDispatch(const Object& object);

} // namespace norvel::adodb
