#include "hosts/norvelricerca/Tempi.h"

#if defined(__linux__)
#include <time.h>
#include <unistd.h>
#endif

#include <fstream>
#include <sstream>

namespace norvel::hosts {

namespace {

const Istante oggettiStatici = std::chrono::steady_clock::now();

#if defined(__linux__)
// Clock ticks from the system's start to the process's: the 20th field behind the program's name,
// which stands in parentheses and may hold blanks and parentheses itself.
std::optional<long long> ticchettiInizio() {
    std::ifstream file("/proc/self/stat");
    std::stringstream contenuto;
    contenuto << file.rdbuf();
    const std::string testo = contenuto.str();
    const std::size_t chiusa = testo.rfind(')');
    if (chiusa == std::string::npos) return std::nullopt;
    std::istringstream campi(testo.substr(chiusa + 1));
    std::string campo;
    for (int indice = 0; indice < 19; ++indice)
        campi >> campo;
    long long ticchetti = 0;
    if (!(campi >> ticchetti)) return std::nullopt;
    return ticchetti;
}
#endif

std::string millisecondi(Istante da, const std::optional<Istante>& a) {
    if (!a) return "-";
    return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(*a - da).count());
}

} // namespace

Istante inizioProcesso() {
#if defined(__linux__)
    const long alSecondo = sysconf(_SC_CLK_TCK);
    timespec adesso{};
    const auto ticchetti = ticchettiInizio();
    if (ticchetti && alSecondo > 0 && clock_gettime(CLOCK_BOOTTIME, &adesso) == 0) {
        using std::chrono::nanoseconds;
        const auto dallAvvio = nanoseconds(adesso.tv_sec * 1'000'000'000LL + adesso.tv_nsec);
        const auto inizio = nanoseconds(*ticchetti * (1'000'000'000LL / alSecondo));
        return std::chrono::steady_clock::now() - (dallAvvio - inizio);
    }
#endif
    return oggettiStatici;
}

std::int64_t memoriaMassimaKB() {
    // Not getrusage: its figure also knows the program that started this one.
    std::ifstream file("/proc/self/status");
    for (std::string parola; file >> parola;) {
        std::int64_t valore = 0;
        if (parola == "VmHWM:" && file >> valore) return valore;
    }
    return 0;
}

std::string testoTempi(const Misure& misure) {
    return "prima_pittura_ms: " + millisecondi(misure.inizio, misure.primaPittura) +
           "\nprima_pittura_da_lettura_ms: " +
           millisecondi(misure.inizioLettura, misure.primaPittura) +
           "\nrighe_lette: " + std::to_string(misure.righeLette) +
           "\nultima_riga_ms: " + millisecondi(misure.inizioLettura, misure.fineLettura) +
           "\nmemoria_massima_kb: " + std::to_string(misure.memoriaMassimaKB) + "\n";
}

} // namespace norvel::hosts
