// The operator at the screen: sees the windows of any program by their titles, presses keys and
// mouse buttons. Everything waits for a condition, a minute at most; what does not come is thrown
// as a std::runtime_error that says what was waited for.
#pragma once

#include <functional>
#include <string>
#include <windows.h>

namespace norvel::tests {

// Looks at the condition until it is true.
void waitUntil(const std::string& what, const std::function<bool()>& condition);

// Does something until it has shown its effect: what an operator does whose click came while a
// window moved.
void repeatUntil(const std::string& what, const std::function<void()>& action,
                 const std::function<bool()>& condition);

// Presses keys by the system's own input: they go to the window in front.
void press(WORD key, int times = 1);
void pressHolding(WORD held, WORD key);

// A window that an operator sees.
class Shown {
  public:
    // Waits until a window of that title is in front and takes input. ended: asked meanwhile;
    // throws where there is nothing to wait for any more.
    static Shown titled(const std::wstring& title, const std::function<void()>& ended = {});
    static bool isThere(const std::wstring& title);

    HWND handle() const { return handle_; }
    bool open() const;
    void waitClosed() const;

    // The rows, the toolbar, a button by its caption: parts of the search window.
    HWND rows() const;
    HWND toolbar() const;
    long spaceBelowRows() const; // in pixels, inside the window
    HWND button(const std::wstring& caption) const;
    // Clicks at a place of a part, in pixels from its corner.
    void click(HWND part, int x, int y, int times = 1) const;
    void clickMiddle(HWND part, int times = 1) const;

    // Ways out of the search window; each waits for its end. Enter counts half a second after the
    // window was shown.
    void chooseByEnter() const;
    void chooseByDoubleClick() const; // the row in the middle
    void leaveByButton() const;       // CmdChiudi
    void close() const;               // the close box, as the system hands its click to the window
    void closeByKeys() const;         // Alt+F4
    void endBy(const std::function<void()>& action) const;
    // What may leave it open.
    void doubleClickARow() const;
    void clickApri() const; // the toolbar's first button
    // The box that something brings up.
    static Shown boxAfter(const std::function<void()>& action, const std::wstring& title);

    // The words and the buttons (IDOK, IDYES, IDNO) of a message box.
    std::wstring words() const;
    void answer(int button) const;

  private:
    explicit Shown(HWND handle) : handle_(handle), since_(GetTickCount64()) {}
    HWND handle_;
    ULONGLONG since_; // when it was seen first, in milliseconds of the system's clock
};

} // namespace norvel::tests
