// The type library that the DLL carries as a resource.
#pragma once

#include <oaidl.h>
#include <windows.h>

namespace norvel::com {

// The description of the class or interface with that identifier, read from the DLL itself,
// registered or not.
HRESULT tipoDellaLibreria(REFGUID id, ITypeInfo** tipo) noexcept;

} // namespace norvel::com
