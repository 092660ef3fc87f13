// What an operator types into a cell, as a value and back.
#pragma once

#include "platform/grid/model/Model.h"

#include <string>
#include <string_view>

namespace norvel::grid {

// The value as it is put into a cell's editor: whole (a cell shows long texts cut), by Italian
// conventions, "" for Null.
NR_API std::string editText(const Variant& value);

// The value of that type that a text stands for, by Italian conventions; blanks around do not
// count but in a text. "" is Null of every type but text, where it is the empty text. Booleans are
// True or False, Vero or Falso, Sì or No, or a number. A date must hold no time where the type has
// none. Errore 13 with why, to be shown to whoever typed it: nothing is rounded, cut or guessed.
NR_API Variant editedValue(adodb::DataTypeEnum type, std::string_view text);

// Whether values of the type can be typed at all.
NR_API bool isEditableType(adodb::DataTypeEnum type);

// What a check box of a column of that type holds when it is switched.
NR_API Variant checkValue(adodb::DataTypeEnum type, bool checked);

} // namespace norvel::grid
