#include "component/SessioneInCorso.h"

#include "component/Ricerca.h"

#include <mutex>
#include <thread>

namespace norvel {

namespace {

struct Proprietario {
    std::mutex mutex;
    std::thread::id thread;
    int chiamate = 0; // nested calls of Cerca() that have not returned
};

Proprietario& proprietario() {
    static auto* unico = new Proprietario; // as the session: never destroyed
    return *unico;
}

void controlla(const Proprietario& attuale) {
    if (attuale.chiamate > 0 && attuale.thread != std::this_thread::get_id())
        throw erroreAltroThread();
}

} // namespace

Errore erroreAltroThread() {
    return {430, "La finestra di ricerca è aperta in un altro thread"};
}

SessioneInCorso::SessioneInCorso() {
    Proprietario& attuale = proprietario();
    const std::lock_guard lock(attuale.mutex);
    controlla(attuale);
    attuale.thread = std::this_thread::get_id();
    ++attuale.chiamate;
}

SessioneInCorso::~SessioneInCorso() {
    Proprietario& attuale = proprietario();
    const std::lock_guard lock(attuale.mutex);
    --attuale.chiamate;
}

void SessioneInCorso::controllaThread() {
    Proprietario& attuale = proprietario();
    const std::lock_guard lock(attuale.mutex);
    controlla(attuale);
}

} // namespace norvel
