// Handing the toolkit from one thread to another.
#pragma once

namespace norvel::controls {

// Makes the calling thread the one that owns the windows. No window may be open.
void adoptCallingThread();

} // namespace norvel::controls
