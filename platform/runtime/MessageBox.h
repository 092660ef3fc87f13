// Every message box of the system goes through mostraMessaggio.
#pragma once

#include "platform/runtime/Api.h"
#include "platform/runtime/Errore.h"

#include <functional>
#include <string>

namespace norvel {

enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxButtons { Ok, YesNo };
enum class BoxAnswer { Ok, Yes, No };

inline constexpr const char* titoloPredefinito = "NorvelRicerca";
inline constexpr const char* titoloModulo = "TAMBORIN"; // of the usual error box

struct Messaggio {
    std::string testo;
    std::string titolo = titoloPredefinito;
    BoxIcon icona = BoxIcon::None;
    BoxButtons pulsanti = BoxButtons::Ok;
    BoxAnswer predefinita = BoxAnswer::Yes; // to a question: the button that Enter presses
    bool operator==(const Messaggio&) const = default;
};

using BoxHandler = std::function<BoxAnswer(const Messaggio&)>;

// Shows the box and waits for the answer. Without a handler (no toolkit yet, or no display) the
// text goes to standard error and the answer is Ok, or No to a question.
NR_API BoxAnswer mostraMessaggio(const Messaggio& messaggio);

// Replaces what shows boxes; returns the handler that was there. The toolkit installs the real one,
// a test its own. The handler is called on the thread that shows the message, and may show others.
NR_API BoxHandler impostaGestoreMessaggi(BoxHandler gestore);

// The usual box of a routine that traps an error: "Errore nel modulo di ricerca, rivolgersi
// all'assistenza", a line break, the error's description.
NR_API void mostraErroreModulo(const Errore& errore);

} // namespace norvel
