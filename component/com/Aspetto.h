// The look of the window's controls, whatever the host's is.
#pragma once

#include <windows.h>

namespace norvel::com {

// While it lives, what the calling thread creates follows the DLL's own manifest: the controls are
// those of the operator's Windows also in a host that never asked for them.
class Aspetto {
  public:
    Aspetto();
    ~Aspetto();
    Aspetto(const Aspetto&) = delete;
    Aspetto& operator=(const Aspetto&) = delete;

  private:
    ULONG_PTR biscotto_ = 0;
    bool attivo_ = false;
};

} // namespace norvel::com
