// Handles of the C interface: numbers that look like pointers, given once and never again, so that
// a handle that was released, or never was one, is known without being followed.
#pragma once

#include "platform/runtime/Errore.h"

#include <atomic>
#include <bit>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace norvel {

// The next number, the same sequence for every kind, so that handles of two kinds never coincide.
inline std::uintptr_t prossimaManiglia() {
    // Multiples of 16, as an allocator's: hosts in languages that tag pointers keep them whole.
    static std::atomic<std::uintptr_t> ultima{0};
    return ultima += 16;
}

// Handles of type Maniglia*, each standing for a shared Oggetto.
template <class Maniglia, class Oggetto>
class RegistroManiglie {
  public:
    Maniglia* aggiungi(std::shared_ptr<Oggetto> oggetto) {
        const std::uintptr_t numero = prossimaManiglia();
        const std::lock_guard lock(mutex_);
        oggetti_.emplace(numero, std::move(oggetto));
        return std::bit_cast<Maniglia*>(numero);
    }

    // Raises 91 on NULL, 424 on anything that is not a live handle of this kind.
    std::shared_ptr<Oggetto> trova(Maniglia* maniglia) const {
        if (!maniglia) throw erroreOggettoNonImpostato();
        const std::lock_guard lock(mutex_);
        const auto trovato = oggetti_.find(std::bit_cast<std::uintptr_t>(maniglia));
        if (trovato == oggetti_.end()) throw erroreNecessarioOggetto();
        return trovato->second;
    }

    // Lets the handle go; the object goes with it unless a call is still using it. NULL is no
    // error.
    void togli(Maniglia* maniglia) {
        if (!maniglia) return;
        std::shared_ptr<Oggetto> ultimo; // destroyed outside the lock: it may call back
        const std::lock_guard lock(mutex_);
        const auto trovato = oggetti_.find(std::bit_cast<std::uintptr_t>(maniglia));
        if (trovato == oggetti_.end()) throw erroreNecessarioOggetto();
        ultimo = std::move(trovato->second);
        oggetti_.erase(trovato);
    }

  private:
    static Errore erroreNecessarioOggetto() { return {424, "Necessario oggetto"}; }

    mutable std::mutex mutex_;
    std::map<std::uintptr_t, std::shared_ptr<Oggetto>> oggetti_;
};

} // namespace norvel
