// The real message box.
#pragma once

namespace norvel::controls {

// Makes mostraMessaggio show boxes of the toolkit, unless something else shows them already. Called
// from a thread that does not own the toolkit, the box opens on the one that does (while a window
// is open there) and the answer is that of a box left by Esc.
void installBoxes();

} // namespace norvel::controls
