#include "platform/runtime/ErroreInCorso.h"

#include <exception>
#include <new>
#include <string>

namespace norvel {

Errore erroreInCorso() {
    try {
        throw;
    } catch (const Errore& errore) {
        return errore;
    } catch (const std::bad_alloc&) {
        return {7, "Memoria esaurita"};
    } catch (const std::exception& eccezione) {
        return {51, std::string("Errore interno: ") + eccezione.what()};
    } catch (...) {
        return {51, "Errore interno"};
    }
}

} // namespace norvel
