// A host in C++, bound to the component early, by the header made from its type library; recordsets
// by ADO's names. It lives in the tests' own process and thread.
#pragma once

#include "component/com/Identificatori.h"
#include "component/com/Interfaccia.h"
#include "platform/adodb/ado/Dispatch.h"
#include "tests/windows/hosts/Program.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>

namespace norvel::tests {

inline const std::wstring caption = L"Ricerca clienti";

// The class by its identifier, as a compiled host creates it.
com::ComPtr<_Ricerca> createRicerca();
// A text for the length of a call.
class Text {
  public:
    explicit Text(const std::wstring& text) : text_(SysAllocString(text.c_str())) {}
    ~Text() { SysFreeString(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    operator BSTR() const { return text_; }

  private:
    BSTR text_;
};
// A text that a getter handed out.
std::wstring taken(HRESULT result, BSTR text);
std::wstring answerOf(_Ricerca& ricerca);

com::DispatchObject openRows(const std::string& sql);
com::DispatchObject clients(int count); // «codice», «nome»

// Gives an object what a search needs, for a window in the middle of the screen.
void prepare(_Ricerca& ricerca, const com::DispatchObject& rows);

// Calls the method while an operator does the steps on a thread of its own. What the operator
// misses fails the test, and the windows are closed so that the call returns.
HRESULT search(_Ricerca& ricerca, const std::function<void()>& steps);

// A window of the host's on the calling thread, with a timer.
class HostWindow {
  public:
    explicit HostWindow(std::function<void()> tick = {}); // called some times a second
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND handle() const { return handle_; }
    int ticks() const { return ticks_; }
    // Handles the thread's messages until the condition holds.
    static void pumpUntil(const std::string& what, const std::function<bool()>& condition);

  private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM w, LPARAM l);
    std::function<void()> tick_;
    HWND handle_ = nullptr;
    std::atomic<int> ticks_{0};
};

} // namespace norvel::tests
