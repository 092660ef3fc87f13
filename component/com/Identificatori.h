// What hosts know the component by. Fixed: hosts are compiled against it, and the registry holds
// it.
#pragma once

#include <guiddef.h>

namespace norvel::com {

// The same numbers as in NorvelRicerca.idl, which only the interface definition can hold; a test
// compares.
inline constexpr GUID idLibreria = {
    0x146a34e5, 0x90c0, 0x450b, {0x84, 0xea, 0xf0, 0x2f, 0x0f, 0xa9, 0xb8, 0x3d}};
inline constexpr GUID idClasse = {
    0x466d9f72, 0xee4d, 0x41cd, {0xb4, 0x3c, 0x2b, 0x86, 0x05, 0x5d, 0x53, 0x0b}};
inline constexpr GUID idInterfaccia = {
    0x0d795a52, 0x0972, 0x42dc, {0xb5, 0x91, 0x3c, 0x82, 0x9a, 0xdc, 0x6a, 0x7b}};

inline constexpr wchar_t progId[] = L"NorvelRicerca.Ricerca";

} // namespace norvel::com
