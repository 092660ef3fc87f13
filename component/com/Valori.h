// What a host passes, as the member table wants it.
#pragma once

#include "component/TabellaMembri.h"
#include "platform/adodb/ado/Variants.h"

namespace norvel::com {

// For an object property, a host's recordset behind this system's interface: whatever answers to
// ADO's member names. For the others an object stands for its default value, as hosts pass a field
// for its value. Raises 13 on what has no reading here, 438 on an object without a default value.
Variant valoreDelHost(const VARIANT& valore, TipoMembro tipo);

} // namespace norvel::com
