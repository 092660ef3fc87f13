// The real message box.
#pragma once

namespace norvel::controls {

// Makes mostraMessaggio show boxes of the toolkit, unless something else shows them already.
void installBoxes();

} // namespace norvel::controls
