// How long a test of a window waits for what has to come.
#pragma once

namespace norvel::tests {

// Milliseconds: what does not come within them is missed. The first windows of a machine read its
// fonts and themes, and many tests may run beside.
inline constexpr int patience = 20000;

} // namespace norvel::tests
