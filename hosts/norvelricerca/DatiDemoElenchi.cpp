#include "hosts/norvelricerca/DatiDemoElenchi.h"

namespace norvel::hosts {

namespace {

constexpr Provincia province[] = {
    {"AG", "Agrigento|Canicattì|Sciacca|Licata|Favara"},
    {"AL", "Alessandria|Casale Monferrato|Novi Ligure|Tortona|Acqui Terme"},
    {"AN", "Ancona|Senigallia|Jesi|Osimo|Fabriano"},
    {"AO", "Aosta|Châtillon|Saint-Vincent"},
    {"AP", "Ascoli Piceno|San Benedetto del Tronto|Grottammare"},
    {"AQ", "L'Aquila|Avezzano|Sulmona"},
    {"AR", "Arezzo|Montevarchi|Cortona|San Giovanni Valdarno"},
    {"AT", "Asti|Canelli|Nizza Monferrato"},
    {"AV", "Avellino|Ariano Irpino|Montella"},
    {"BA", "Bari|Altamura|Molfetta|Bitonto|Monopoli|Gravina in Puglia"},
    {"BG", "Bergamo|Treviglio|Seriate|Dalmine|Romano di Lombardia"},
    {"BI", "Biella|Cossato"},
    {"BL", "Belluno|Feltre|Cortina d'Ampezzo"},
    {"BN", "Benevento|Montesarchio|Sant'Agata de' Goti"},
    {"BO", "Bologna|Imola|Casalecchio di Reno|San Lazzaro di Savena|Castel San Pietro Terme"},
    {"BR", "Brindisi|Fasano|Francavilla Fontana|Ostuni"},
    {"BS", "Brescia|Desenzano del Garda|Montichiari|Lumezzane|Salò"},
    {"BT", "Andria|Barletta|Trani|Bisceglie"},
    {"BZ", "Bolzano|Merano|Bressanone|Laives|Brunico"},
    {"CA", "Cagliari|Quartu Sant'Elena|Selargius|Assemini"},
    {"CB", "Campobasso|Termoli|Bojano"},
    {"CE", "Caserta|Aversa|Marcianise|Maddaloni|Santa Maria Capua Vetere"},
    {"CH", "Chieti|Vasto|Lanciano|Ortona"},
    {"CL", "Caltanissetta|Gela|Niscemi"},
    {"CN", "Cuneo|Alba|Bra|Mondovì|Fossano|Savigliano"},
    {"CO", "Como|Cantù|Mariano Comense|Erba"},
    {"CR", "Cremona|Crema|Casalmaggiore"},
    {"CS", "Cosenza|Rende|Corigliano-Rossano|Castrovillari|Acri"},
    {"CT", "Catania|Acireale|Misterbianco|Paternò|Caltagirone"},
    {"CZ", "Catanzaro|Lamezia Terme|Soverato"},
    {"EN", "Enna|Piazza Armerina|Nicosia"},
    {"FC", "Forlì|Cesena|Cesenatico|Savignano sul Rubicone"},
    {"FE", "Ferrara|Cento|Comacchio|Argenta"},
    {"FG", "Foggia|Cerignola|Manfredonia|San Severo|Lucera"},
    {"FI", "Firenze|Scandicci|Empoli|Sesto Fiorentino|Campi Bisenzio"},
    {"FM", "Fermo|Porto Sant'Elpidio|Sant'Elpidio a Mare"},
    {"FR", "Frosinone|Cassino|Alatri|Sora"},
    {"GE", "Genova|Rapallo|Chiavari|Sestri Levante"},
    {"GO", "Gorizia|Monfalcone|Grado"},
    {"GR", "Grosseto|Follonica|Orbetello"},
    {"IM", "Imperia|Sanremo|Ventimiglia"},
    {"IS", "Isernia|Venafro|Agnone"},
    {"KR", "Crotone|Isola di Capo Rizzuto|Cirò Marina"},
    {"LC", "Lecco|Merate|Calolziocorte"},
    {"LE", "Lecce|Nardò|Galatina|Gallipoli|Copertino"},
    {"LI", "Livorno|Piombino|Rosignano Marittimo|Cecina"},
    {"LO", "Lodi|Codogno|Casalpusterlengo"},
    {"LT", "Latina|Aprilia|Terracina|Fondi|Formia"},
    {"LU", "Lucca|Viareggio|Capannori|Camaiore|Forte dei Marmi"},
    {"MB", "Monza|Lissone|Seregno|Desio|Cesano Maderno"},
    {"MC", "Macerata|Civitanova Marche|Recanati|Tolentino"},
    {"ME", "Messina|Barcellona Pozzo di Gotto|Milazzo|Sant'Agata di Militello"},
    {"MI", "Milano|Sesto San Giovanni|Cinisello Balsamo|Legnano|Rho|Cologno Monzese"},
    {"MN", "Mantova|Castiglione delle Stiviere|Suzzara"},
    {"MO", "Modena|Carpi|Sassuolo|Formigine|Castelfranco Emilia"},
    {"MS", "Massa|Carrara|Aulla"},
    {"MT", "Matera|Pisticci|Policoro"},
    {"NA", "Napoli|Giugliano in Campania|Torre del Greco|Pozzuoli|Casoria|Castellammare di Stabia"},
    {"NO", "Novara|Borgomanero|Trecate|Arona"},
    {"NU", "Nuoro|Macomer|Siniscola"},
    {"OR", "Oristano|Terralba|Cabras"},
    {"PA", "Palermo|Bagheria|Monreale|Partinico|Cefalù"},
    {"PC", "Piacenza|Fiorenzuola d'Arda|Castel San Giovanni"},
    {"PD", "Padova|Albignasego|Vigonza|Cittadella|Abano Terme"},
    {"PE", "Pescara|Montesilvano|Spoltore"},
    {"PG", "Perugia|Foligno|Città di Castello|Spoleto|Gubbio"},
    {"PI", "Pisa|Cascina|San Giuliano Terme|Pontedera"},
    {"PN", "Pordenone|Sacile|Cordenons"},
    {"PO", "Prato|Montemurlo|Carmignano"},
    {"PR", "Parma|Fidenza|Salsomaggiore Terme"},
    {"PT", "Pistoia|Quarrata|Montecatini Terme"},
    {"PU", "Pesaro|Fano|Urbino"},
    {"PV", "Pavia|Vigevano|Voghera"},
    {"PZ", "Potenza|Melfi|Lavello"},
    {"RA", "Ravenna|Faenza|Lugo|Cervia"},
    {"RC", "Reggio Calabria|Gioia Tauro|Palmi|Siderno"},
    {"RE", "Reggio nell'Emilia|Scandiano|Correggio|Guastalla"},
    {"RG", "Ragusa|Vittoria|Modica|Comiso"},
    {"RI", "Rieti|Fara in Sabina"},
    {"RM", "Roma|Guidonia Montecelio|Fiumicino|Pomezia|Tivoli|Anzio|Velletri|Civitavecchia"},
    {"RN", "Rimini|Riccione|Santarcangelo di Romagna|Cattolica"},
    {"RO", "Rovigo|Adria|Porto Viro"},
    {"SA", "Salerno|Cava de' Tirreni|Battipaglia|Scafati|Nocera Inferiore"},
    {"SI", "Siena|Poggibonsi|Colle di Val d'Elsa"},
    {"SO", "Sondrio|Morbegno|Tirano"},
    {"SP", "La Spezia|Sarzana|Arcola"},
    {"SR", "Siracusa|Augusta|Avola"},
    {"SS", "Sassari|Alghero|Olbia|Porto Torres"},
    {"SU", "Carbonia|Iglesias|Sant'Antioco"},
    {"SV", "Savona|Albenga|Varazze"},
    {"TA", "Taranto|Martina Franca|Massafra|Grottaglie"},
    {"TE", "Teramo|Giulianova|Roseto degli Abruzzi"},
    {"TN", "Trento|Rovereto|Pergine Valsugana|Riva del Garda"},
    {"TO", "Torino|Moncalieri|Collegno|Rivoli|Nichelino|Ivrea|Chivasso"},
    {"TP", "Trapani|Marsala|Mazara del Vallo|Alcamo"},
    {"TR", "Terni|Orvieto|Narni"},
    {"TS", "Trieste|Muggia"},
    {"TV", "Treviso|Conegliano|Castelfranco Veneto|Montebelluna"},
    {"UD", "Udine|Codroipo|Cervignano del Friuli|Tolmezzo"},
    {"VA", "Varese|Busto Arsizio|Gallarate|Saronno"},
    {"VB", "Verbania|Domodossola|Omegna"},
    {"VC", "Vercelli|Borgosesia|Santhià"},
    {"VE", "Venezia|Chioggia|San Donà di Piave|Mira|Jesolo"},
    {"VI", "Vicenza|Bassano del Grappa|Schio|Thiene|Arzignano"},
    {"VR", "Verona|Villafranca di Verona|San Bonifacio|Legnago|Bussolengo"},
    {"VT", "Viterbo|Civita Castellana|Tarquinia"},
    {"VV", "Vibo Valentia|Pizzo|Tropea"},
};

constexpr std::string_view nomi[] = {
    "Alessandro", "Andrea",   "Anna",     "Antonio", "Beatrice",  "Bruno",     "Carlo",
    "Caterina",   "Chiara",   "Cristina", "Daniele", "Davide",    "Elena",     "Elisabetta",
    "Enrico",     "Fabio",    "Federica", "Filippo", "Francesca", "Francesco", "Gaetano",
    "Giacomo",    "Gianluca", "Giorgia",  "Giosuè",  "Giovanni",  "Giulia",    "Giuseppe",
    "Ilaria",     "Irene",    "Laura",    "Lorenzo", "Luca",      "Lucia",     "Luigi",
    "Marco",      "Maria",    "Martina",  "Massimo", "Matteo",    "Mattia",    "Michele",
    "Mosè",       "Nicolò",   "Niccolò",  "Noè",     "Paola",     "Paolo",     "Pietro",
    "Raffaele",   "Riccardo", "Roberta",  "Roberto", "Salvatore", "Sara",      "Silvia",
    "Simone",     "Sofia",    "Stefania", "Stefano", "Teresa",    "Tommaso",   "Valentina",
    "Vincenzo",
};

constexpr std::string_view cognomi[] = {
    "Rossi",      "Russo",   "Ferrari",   "Esposito",   "Bianchi",    "Romano",     "Colombo",
    "Ricci",      "Marino",  "Greco",     "Bruno",      "Gallo",      "Conti",      "De Luca",
    "Mancini",    "Costa",   "Giordano",  "Rizzo",      "Lombardi",   "Moretti",    "Barbieri",
    "Fontana",    "Santoro", "Mariani",   "Rinaldi",    "Caruso",     "Ferrara",    "Galli",
    "Martini",    "Leone",   "Longo",     "Gentile",    "Martinelli", "Vitale",     "Lombardo",
    "Serra",      "Coppola", "De Santis", "D'Angelo",   "Marchetti",  "Parisi",     "Villa",
    "Conte",      "Ferraro", "Ferri",     "Fabbri",     "Bianco",     "Marini",     "Grasso",
    "Valentini",  "Messina", "Sala",      "De Angelis", "Gatti",      "Pellegrini", "Palumbo",
    "Sanna",      "Farina",  "Rizzi",     "Monti",      "Cattaneo",   "Morelli",    "Amato",
    "Silvestri",  "Mazza",   "Testa",     "Grassi",     "Pellegrino", "Carbone",    "Giuliani",
    "Benedetti",  "Barone",  "Rossetti",  "Caputo",     "Montanari",  "Guerra",     "Palmieri",
    "Bernardi",   "Martino", "Fiore",     "De Rosa",    "Ferretti",   "Bellini",    "Basile",
    "Riva",       "Donati",  "Piras",     "Vitali",     "Battaglia",  "Sartori",    "Neri",
    "Costantini", "Milani",  "Pagano",    "Ruggiero",   "Sorrentino", "D'Amico",    "Orlando",
    "Damico",     "Negri",   "Mantovani", "Dell'Acqua", "Dall'Oglio", "D'Ambrosio", "Nicolò",
    "Scalfarò",   "Libonò",  "Cirò",      "Pirrò",      "Dalò",       "Fantò",      "Marrazzo",
};

constexpr std::string_view attivita[] = {
    "Autotrasporti", "Officina",         "Mobilificio",
    "Panificio",     "Cantina",          "Edilizia",
    "Farmacia",      "Ferramenta",       "Libreria",
    "Ottica",        "Salumificio",      "Tessitura",
    "Tipografia",    "Caseificio",       "Elettronica",
    "Idraulica",     "Immobiliare",      "Pasticceria",
    "Qualità",       "Società Agricola", "Attività Commerciali",
    "Carrozzeria",   "Vetreria",         "Frutta e Verdura",
    "L'Angolo di",   "Dell'Orto",        "Studio",
    "Impresa",
};

constexpr std::string_view forme[] = {"S.r.l.", "S.p.A.", "S.n.c.", "S.a.s.", "& Figli", "& C."};

constexpr std::string_view vie[] = {
    "Via", "Via", "Via", "Via", "Viale", "Piazza", "Corso", "Largo", "Vicolo", "Località",
};

constexpr std::string_view intitolazioni[] = {
    "Giuseppe Garibaldi",
    "Giuseppe Mazzini",
    "Camillo Cavour",
    "Dante Alighieri",
    "Roma",
    "Guglielmo Marconi",
    "Giuseppe Verdi",
    "della Libertà",
    "IV Novembre",
    "XX Settembre",
    "dell'Industria",
    "dell'Artigianato",
    "Aldo Moro",
    "Alcide De Gasperi",
    "Torino",
    "Alessandro Volta",
    "Galileo Galilei",
    "San Francesco d'Assisi",
    "Sant'Antonio",
    "della Repubblica",
    "Giacomo Leopardi",
    "Enrico Fermi",
    "Antonio Gramsci",
    "dei Mille",
    "dell'Università",
    "Carlo Alberto",
    "Papa Giovanni XXIII",
    "della Resistenza",
    "Ugo Foscolo",
    "delle Rose",
    "degli Olivi",
    "Sottomonte",
};

constexpr std::string_view note[] = {
    "Cliente dal primo anno di attività.",
    "Pagamento a 60 giorni fine mese.",
    "Chiamare solo la mattina.",
    "Consegna presso il magazzino, entrata dal cortile.",
    "Da ricontattare: è in attesa del nuovo listino.",
    "L'ordine minimo è di dieci colli.",
    "Sconto del 5% già concordato.",
    "Richiede fattura elettronica e copia di cortesia.",
    "Non spedire il lunedì.",
    "Referente amministrativo: ufficio contabilità.",
    "Ha cambiato sede.",
    "Prezzi bloccati fino a dicembre; poi si vedrà.",
    "Attenzione al fido.",
    "Ritira con mezzi propri; l'autista è autorizzato a firmare.",
    "Preferisce il bonifico, 30 giorni.",
    "Perché sia valida l'offerta va firmata.",
};

} // namespace

std::span<const Provincia> elencoProvince() {
    return province;
}
std::span<const std::string_view> elencoNomi() {
    return nomi;
}
std::span<const std::string_view> elencoCognomi() {
    return cognomi;
}
std::span<const std::string_view> elencoAttivita() {
    return attivita;
}
std::span<const std::string_view> elencoForme() {
    return forme;
}
std::span<const std::string_view> elencoVie() {
    return vie;
}
std::span<const std::string_view> elencoIntitolazioni() {
    return intitolazioni;
}
std::span<const std::string_view> elencoNote() {
    return note;
}

} // namespace norvel::hosts
