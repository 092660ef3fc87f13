#include "tests/windows/hosts/CppHost.h"

#include <atomic>
#include <exception>
#include <stdexcept>
#include <thread>

namespace norvel::tests {

using com::ComPtr;
using com::DispatchObject;

ComPtr<_Ricerca> createRicerca() {
    ComPtr<_Ricerca> made;
    const HRESULT result =
        CoCreateInstance(com::idClasse, nullptr, CLSCTX_INPROC_SERVER, com::idInterfaccia,
                         reinterpret_cast<void**>(made.put()));
    EXPECT_EQ(result, S_OK);
    return made;
}

std::wstring taken(HRESULT result, BSTR text) {
    EXPECT_EQ(result, S_OK);
    std::wstring out(text == nullptr ? L"" : text, SysStringLen(text));
    SysFreeString(text);
    return out;
}

std::wstring answerOf(_Ricerca& ricerca) {
    BSTR text = nullptr;
    const HRESULT result = ricerca.get_Risposta(&text);
    return taken(result, text);
}

DispatchObject openRows(const std::string& sql) {
    CLSID id{};
    ComPtr<IDispatch> made;
    if (FAILED(CLSIDFromProgID(L"ADODB.Recordset", &id)) ||
        FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(made.put()))))
        throw std::runtime_error("no ADODB.Recordset");
    DispatchObject rows(std::move(made));
    rows.putNumber(L"CursorLocation", 3);
    rows.call(L"Open",
              {com::textArgument(sql), com::textArgument("Provider=SQLite;Data Source=:memory:"),
               com::numberArgument(3), com::numberArgument(1)});
    return rows;
}

DispatchObject clients(int count) {
    return openRows("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                    std::to_string(count) + ") SELECT i AS codice, 'Cliente ' || i AS nome FROM n");
}

void prepare(_Ricerca& ricerca, const DispatchObject& rows) {
    const DispatchObject operators =
        openRows("SELECT '' AS codiceutente, 0 AS ricerchepers WHERE 0");
    const DispatchObject views =
        openRows("SELECT '' AS codiceoperatore, '' AS codicericerca, '' AS NomeVista, "
                 "0 AS preferito WHERE 0");
    EXPECT_EQ(ricerca.put_Caption(Text(caption)), S_OK);
    EXPECT_EQ(ricerca.put_CampoRicerca(Text(L"codice")), S_OK);
    EXPECT_EQ(ricerca.put_WindowsState(Text(L"1")), S_OK);
    EXPECT_EQ(ricerca.put_StatusBar(Text(L"1")), S_OK);
    EXPECT_EQ(ricerca.put_Width(Text(L"0")), S_OK);
    EXPECT_EQ(ricerca.put_Height(Text(L"0")), S_OK);
    EXPECT_EQ(ricerca.put_SelezioneMultipla(VARIANT_FALSE), S_OK);
    EXPECT_EQ(ricerca.putref_Recordset(rows.get()), S_OK);
    EXPECT_EQ(ricerca.putref_RecordsetOperatori(operators.get()), S_OK);
    EXPECT_EQ(ricerca.putref_RecordsetViste(views.get()), S_OK);
}

namespace {

BOOL CALLBACK closeOwn(HWND window, LPARAM) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && IsWindowVisible(window) != 0)
        PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    return TRUE;
}

} // namespace

HRESULT search(_Ricerca& ricerca, const std::function<void()>& steps) {
    constexpr DWORD pause = 100;
    std::atomic<bool> returned = false;
    std::string missed;
    std::thread person([&] {
        try {
            steps();
        } catch (const std::exception& failure) {
            missed = failure.what();
            for (; !returned; Sleep(pause))
                EnumWindows(closeOwn, 0);
        }
    });
    VARIANT result;
    VariantInit(&result);
    const HRESULT code = ricerca.Ricerca(&result);
    returned = true;
    person.join();
    EXPECT_EQ(missed, "");
    EXPECT_EQ(V_VT(&result), VT_EMPTY);
    return code;
}

HostWindow::HostWindow(std::function<void()> tick) : tick_(std::move(tick)) {
    constexpr UINT often = 50; // milliseconds
    static const ATOM kind = [] {
        WNDCLASSW description{};
        description.lpfnWndProc = onMessage;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = L"Ospite";
        return RegisterClassW(&description);
    }();
    handle_ = CreateWindowW(MAKEINTATOM(kind), L"Gestionale", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40,
                            40, 400, 300, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetTimer(handle_, 1, often, nullptr);
    pumpUntil("the host's window is not in front", [this] {
        SetForegroundWindow(handle_);
        return GetForegroundWindow() == handle_;
    });
}

HostWindow::~HostWindow() {
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

LRESULT CALLBACK HostWindow::onMessage(HWND window, UINT message, WPARAM w, LPARAM l) {
    const LONG_PTR kept = GetWindowLongPtrW(window, GWLP_USERDATA);
    auto* self = reinterpret_cast<HostWindow*>(kept); // NOLINT(performance-no-int-to-ptr)
    if (message != WM_TIMER || self == nullptr) return DefWindowProcW(window, message, w, l);
    ++self->ticks_;
    if (self->tick_) self->tick_();
    return 0;
}

void HostWindow::pumpUntil(const std::string& what, const std::function<bool()>& condition) {
    waitUntil(what, [&] {
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0;) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        return condition();
    });
}

} // namespace norvel::tests
