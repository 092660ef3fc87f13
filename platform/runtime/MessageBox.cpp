#include "platform/runtime/MessageBox.h"

#include "platform/runtime/Errore.h"

#include <cstdio>
#include <mutex>
#include <utility>

namespace norvel {
namespace {

struct Shown {
    std::mutex mutex;
    BoxHandler handler;
};

// Never destroyed: a thread may still report while the process ends.
Shown& shown() {
    static Shown& only = *new Shown;
    return only;
}

// \r\n and \r are one line end on a terminal.
std::string terminalText(const Messaggio& messaggio) {
    std::string text;
    if (!messaggio.titolo.empty()) text = messaggio.titolo + ": ";
    const std::string& from = messaggio.testo;
    for (std::size_t at = 0; at < from.size(); ++at) {
        if (from[at] != '\r')
            text.push_back(from[at]);
        else if (at + 1 >= from.size() || from[at + 1] != '\n')
            text.push_back('\n');
    }
    return text + "\n";
}

} // namespace

BoxAnswer mostraMessaggio(const Messaggio& messaggio) {
    BoxHandler handler;
    {
        const std::lock_guard lock(shown().mutex);
        handler = shown().handler;
    }
    if (handler) return handler(messaggio);
    const std::string text = terminalText(messaggio);
    std::fwrite(text.data(), 1, text.size(), stderr);
    return messaggio.pulsanti == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

BoxHandler impostaGestoreMessaggi(BoxHandler gestore) {
    const std::lock_guard lock(shown().mutex);
    return std::exchange(shown().handler, std::move(gestore));
}

void mostraErroreModulo(const Errore& errore) {
    mostraMessaggio(
        {"Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n" + errore.descrizione(),
         titoloModulo, BoxIcon::Information, BoxButtons::Ok});
}

} // namespace norvel
