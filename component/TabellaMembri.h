// Everything the public class offers, as data: the one table that automation, the C interface and
// the hosts that take properties by name walk.
#pragma once

#include "component/Ricerca.h"
#include "platform/runtime/Api.h"
#include "platform/runtime/Variant.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace norvel {

// A dispatch identifier. They are fixed: existing hosts are compiled against them.
using DispId = std::int32_t;

// How a member may be used, and how a call asks for it; OLE Automation's values, which combine as
// bits (a script that wants a value asks for a method or a property at once).
enum ModoChiamata : unsigned {
    modoMetodo = 1, // DISPATCH_METHOD
    modoGet = 2,    // DISPATCH_PROPERTYGET
    modoLet = 4,    // DISPATCH_PROPERTYPUT
    modoSet = 8     // DISPATCH_PROPERTYPUTREF
};

enum class TipoMembro {
    Testo,     // String
    Booleano,  // Boolean
    Recordset, // an adodb::Recordset, or Nothing
    Variante,  // any value
    Nessuno    // a method without a result
};

struct Membro {
    std::string_view nome; // ends with a NUL, so that its data() serves as a C text
    DispId id = 0;
    unsigned modi = 0; // ModoChiamata bits
    TipoMembro tipo = TipoMembro::Nessuno;
    // The accessors that the modes tell of, null for the others. The value written has the member's
    // type already.
    Variant (*leggi)(const Ricerca&) = nullptr;
    void (*scrivi)(Ricerca&, const Variant&) = nullptr; // Let or Set
    Variant (*chiama)(Ricerca&) = nullptr;
};

// The members in the order of the interface.
NR_API std::span<const Membro> tabellaMembri();
// The member of that name (case-blind) or identifier, nullptr if there is none.
NR_API const Membro* trovaMembro(std::string_view nome);
NR_API const Membro* trovaMembro(DispId id);

// The identifier of the member of that name (case-blind). Raises 438 where there is none.
NR_API DispId GetIDsOfNames(std::string_view nome);

// Uses a member by its identifier, as IDispatch::Invoke does; the arguments stand in their natural
// order. The result is the value of a Get or of a method, Empty otherwise.
//
// Errors, with the numbers that automation hosts know:
//   5    modo holds no mode, a bit that is none, or both reads and writes
//   438  no such member, or the member cannot be used that way (a Get of what can only be set,
//        a Let of an object property, which wants Set)
//   450  another number of arguments than the one value of a Let or Set, or none otherwise
//   13   a value that has no reading as the member's type: objects and arrays for a text, a text
//        that is neither number nor True/False for a Boolean, anything but a Recordset or Nothing
//        for a recordset
//   94   Null for a text or Boolean
// and whatever the member itself raises. Let converts as automation does: 1 becomes "1" in a String
// property, "0" becomes False in a Boolean one.
NR_API Variant Invoke(Ricerca& ricerca, DispId id, unsigned modo,
                      std::span<const Variant> argomenti = {});
// The same by name (case-blind).
NR_API Variant Invoke(Ricerca& ricerca, std::string_view nome, unsigned modo,
                      std::span<const Variant> argomenti = {});

} // namespace norvel
