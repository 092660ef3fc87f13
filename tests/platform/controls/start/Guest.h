// A component as hosts know it: it starts the toolkit by itself and opens real windows. C linkage,
// so that the same code serves a program and Python's ctypes.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Starts the toolkit on the calling thread. 0, or -1 with the reason in guestError().
__attribute__((visibility("default"))) int guestStart(void);
// Starts the toolkit and shows a window with a text field modally, for so many milliseconds. The
// answer is the number of paint events it got, or -1.
__attribute__((visibility("default"))) int guestShowWindow(int milliseconds);
// The same; meanwhile another thread tries to start the toolkit, what it was told is in
// guestError() afterwards.
__attribute__((visibility("default"))) int guestShowWindowWhileOtherThreadTries(int milliseconds);
// Shows a window that stays open when the function returns.
__attribute__((visibility("default"))) int guestLeaveWindowOpen(void);
// True on the thread that owns the toolkit.
__attribute__((visibility("default"))) int guestOwns(void);
// Why the last call failed, UTF-8; "" if it did not.
__attribute__((visibility("default"))) const char* guestError(void);

#ifdef __cplusplus
}
#endif
