#include "output/Lavoro.h"

namespace norvel::output {

Lavoro::~Lavoro() = default;

bool eseguiTutto(Lavoro& lavoro) {
    while (lavoro.passo()) {
    }
    return true;
}

} // namespace norvel::output
