// Work that may take long, in steps, so that the window can show how far it is and stop it.
#pragma once

#include <functional>

namespace norvel::output {

// The windows' thread does the steps; each takes some hundredths of a second. Letting go of the
// object before the last one gives the work up.
class Lavoro {
  public:
    virtual ~Lavoro();
    virtual bool passo() = 0;         // false: it was the last one. Raises Errore
    virtual double fatto() const = 0; // from 0 to 1; below 0: nobody knows
};

// Does the steps until the last one. False where the operator stopped it. Raises what a step
// raises.
using EseguiLavoro = std::function<bool(Lavoro& lavoro)>;

// Without a window: nobody can stop it.
bool eseguiTutto(Lavoro& lavoro);

} // namespace norvel::output
