#include "platform/runtime/Errore.h"

#include <utility>

namespace norvel {

Errore::Errore(std::int64_t numero, std::string descrizione)
    : numero_(numero), descrizione_(std::move(descrizione)) {}
Errore::~Errore() = default;
Errore::Errore(const Errore&) = default;
Errore& Errore::operator=(const Errore&) = default;

Errore erroreTipoNonCorrispondente() {
    return {13, "Tipo non corrispondente"};
}
Errore erroreOverflow() {
    return {6, "Overflow"};
}
Errore erroreArgomento() {
    return {5, "Chiamata di routine o argomento non validi"};
}
Errore erroreOggettoNonImpostato() {
    return {91, "Variabile oggetto o variabile del blocco With non impostata"};
}
Errore erroreNull() {
    return {94, "Utilizzo non valido di Null"};
}

} // namespace norvel
