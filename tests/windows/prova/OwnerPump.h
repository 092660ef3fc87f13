// Lets a host's message loop run what background fetches hand to the owner thread.
#pragma once

namespace norvel::prova {

// On the calling thread, which must dispatch messages.
void startOwnerPump();
void stopOwnerPump();

} // namespace norvel::prova
