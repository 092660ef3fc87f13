#include "hosts/norvelricerca/Aiuto.h"

#include "platform/runtime/Text.h"

#include <algorithm>

namespace norvel::hosts {

namespace {

struct Voce {
    std::string_view nome;
    std::string_view segnaposto; // of the value in the help text; "" where there is none
    std::string_view frase;
    bool numero = false;
};

constexpr Voce vociProprie[] = {
    {"connessione", "STRINGA",
     "stringa di connessione, come Provider=SQLite;Data Source=FILE (obbligatoria)"},
    {"operatori", "SQL",
     "dati degli operatori, con i campi codiceutente e ricerchepers; senza, nessun operatore"},
    {"viste", "SQL",
     "viste personali, con i campi codiceoperatore, codicericerca, NomeVista e preferito; senza, "
     "nessuna vista"},
    {"tempi", "",
     "alla fine scrive sull'uscita degli errori quanto è durato e quanta memoria è servita"},
    {"crea-demo", "FILE", "crea la base dati di esempio e termina"},
    {"righe", "N", "clienti della base dati di esempio (100000)"},
    {"aiuto", "", "mostra questo testo e termina"},
    {"versione", "", "mostra la versione e termina"},
};

constexpr Voce vociProprieta[] = {
    {"QueryBase", "SQL", "la ricerca: ciò che la finestra mostra (obbligatoria)"},
    {"CampoRicerca", "CAMPO", "il campo di cui si vuole il valore (obbligatoria)"},
    {"SelezioneMultipla", "BOOL",
     "True: si possono scegliere più righe; ogni valore della risposta è seguito da «|»"},
    {"SoloRicerca", "BOOL", "True: si consulta soltanto, nessuna riga si può scegliere"},
    {"Caption", "TESTO", "titolo della finestra"},
    {"WindowsState", "N", "1 al centro dello schermo, 2 massimizzata, altrimenti a Top e Left",
     true},
    {"Top", "TWIP", "distanza dall'alto dello schermo (un pollice sono 1440 twip)", true},
    {"Left", "TWIP", "distanza da sinistra", true},
    {"Height", "TWIP", "altezza della finestra; 0 o non detta: 7000", true},
    {"Width", "TWIP", "larghezza della finestra; 0 o non detta: 11355", true},
    {"Toolbar", "N", "0 o non detta mostra la barra degli strumenti, altrimenti resta com'è", true},
    {"StatusBar", "N", "0 o non detta nasconde la barra di stato", true},
    {"FilterBar", "N", "0 o non detta toglie la riga dei filtri", true},
    {"AbilitaModificaCampi", "CAMPI", "campi che si possono modificare, separati da «;»"},
    {"User", "CODICE", "codice dell'operatore, a cui appartengono le viste personali"},
    {"Modulo", "CODICE", "codice della ricerca, a cui appartengono le viste"},
    {"Percorso", "CARTELLA", "cartella dell'installazione, con il separatore finale"},
    {"PercorsoPers", "CARTELLA", "cartella delle viste personali, con il separatore finale"},
};

constexpr std::size_t larghezza = 80, colonnaFrasi = 34;

const Voce* trovaProprieta(std::string_view nome) {
    const auto* voce = std::find_if(std::begin(vociProprieta), std::end(vociProprieta),
                                    [&](const Voce& v) { return equalsText(v.nome, nome); });
    return voce == std::end(vociProprieta) ? nullptr : voce;
}

// Appends the phrase word by word, starting at the phrases' column, lines no wider than the text's.
void scriviFrase(std::string& testo, std::size_t colonna, std::string_view frase) {
    for (const std::string& parola : splitText(frase, " ")) {
        const std::size_t lunga = lengthText(parola);
        if (colonna > colonnaFrasi && colonna + 1 + lunga > larghezza) {
            testo += '\n';
            colonna = 0;
        }
        const std::size_t spazi = colonna < colonnaFrasi ? colonnaFrasi - colonna : 1;
        testo.append(spazi, ' ').append(parola);
        colonna += spazi + lunga;
    }
    testo += '\n';
}

void scriviVoce(std::string& testo, std::string_view nome, const Voce& voce) {
    std::string inizio = "  --" + std::string(nome);
    if (!voce.segnaposto.empty()) inizio += " " + std::string(voce.segnaposto);
    testo += inizio;
    scriviFrase(testo, inizio.size(), voce.frase);
}

} // namespace

bool eNumero(std::string_view proprieta) {
    const Voce* voce = trovaProprieta(proprieta);
    return voce && voce->numero;
}

std::string_view fraseProprieta(std::string_view proprieta) {
    const Voce* voce = trovaProprieta(proprieta);
    return voce ? voce->frase : std::string_view();
}

std::string testoAiuto(const std::vector<Proprieta>& proprieta) {
    std::string testo =
        "Uso: norvelricerca --connessione STRINGA --QueryBase SQL --CampoRicerca CAMPO "
        "[OPZIONE]...\n"
        "     norvelricerca --crea-demo FILE [--righe N]\n"
        "\n"
        "Apre la finestra di ricerca e scrive il valore scelto sull'uscita normale.\n"
        "\n"
        "Opzioni (maiuscole e minuscole sono uguali; vale anche --NOME=VALORE):\n";
    for (const Voce& voce : vociProprie)
        scriviVoce(testo, voce.nome, voce);
    testo += "\nProprietà della ricerca:\n";
    for (const Proprieta& p : proprieta) {
        if (p.tipo == TipoProprieta::SolaLettura || p.tipo == TipoProprieta::Oggetto) continue;
        const Voce* voce = trovaProprieta(p.nome);
        scriviVoce(testo, p.nome, voce ? *voce : Voce{p.nome, "VALORE", ""});
    }
    testo += "\n"
             "Esempio:\n"
             "  norvelricerca --crea-demo clienti.db\n"
             "  norvelricerca --connessione \"Provider=SQLite;Data Source=clienti.db\" \\\n"
             "    --QueryBase \"SELECT * FROM clienti\" --CampoRicerca codice \\\n"
             "    --Caption \"Ricerca clienti\" --WindowsState 1 --FilterBar 1\n"
             "\n"
             "Stato di uscita: 0 una risposta, 1 nessuna scelta (o un valore vuoto), 2 un errore,\n"
             "spiegato sull'uscita degli errori.\n";
    return testo;
}

} // namespace norvel::hosts
