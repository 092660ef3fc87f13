// Failures across the COM edge, both ways.
#pragma once

#include "platform/adodb/ado/Com.h"
#include "platform/runtime/Errore.h"

#include <string_view>

namespace norvel::com {

// The number that hosts and operators see: the low word of the 0x800A… codes (ADO's 3021, a
// script's 438), others whole.
std::int64_t numberOf(HRESULT code);
// The code of an error on its way out: the opposite. Numbers up to 65535 get 0x800A….
HRESULT codeOf(std::int64_t number);

// The failed call as an Errore. member: the name that was called, for the texts of automation's own
// codes, which get the numbers automation hosts know (13, 438 and their like). exception: what
// DISP_E_EXCEPTION left behind (its texts are freed). Without one the thread's error information is
// asked for the text, then the system.
Errore failure(HRESULT code, std::wstring_view member, EXCEPINFO* exception = nullptr);

// Fills what IDispatch::Invoke hands out and answers DISP_E_EXCEPTION; a null place is left alone.
HRESULT raise(const Errore& error, EXCEPINFO* exception, std::string_view source);

} // namespace norvel::com
