// What another program would find on the clipboard.
#pragma once

#include <string>

namespace norvel::tests {

// The clipboard's text (UTF-8) as it lies there, line ends included, which the toolkit changes on
// the way on some systems; "" without one.
std::string clipboardText();

} // namespace norvel::tests
