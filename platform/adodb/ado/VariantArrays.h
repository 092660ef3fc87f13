// The arrays among the VARIANTs: for Variants.cpp.
#pragma once

#include "platform/adodb/ado/Variants.h"

namespace norvel::com {

Variant fromArray(const VARIANT& value, const ObjectFaces& faces);
void putArray(OwnedVariant& out, const Variant& value, const ObjectFaces& faces);

} // namespace norvel::com
