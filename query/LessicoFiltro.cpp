#include "query/LessicoFiltro.h"

namespace norvel::query {

namespace {

// Behind the value that opens at da; npos if it never ends.
std::size_t oltreValore(std::string_view filtro, std::size_t da) {
    const char chiude = filtro[da];
    for (std::size_t at = da + 1; at < filtro.size(); ++at) {
        if (filtro[at] == '\0') break;
        if (filtro[at] != chiude) continue;
        const bool doppia = chiude == '\'' && at + 1 < filtro.size() && filtro[at + 1] == chiude;
        if (!doppia) return at + 1;
        ++at;
    }
    return std::string_view::npos;
}

bool estraneo(std::string_view filtro, std::size_t at) {
    const char c = filtro[at];
    if (c == '\t' || c == '\r' || c == '\n') return false;
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') return true;
    if (std::string_view(";\\`~\"").find(c) != std::string_view::npos) return true;
    const std::string_view due = filtro.substr(at, 2);
    return due == "--" || due == "/*" || due == "*/";
}

// Behind what is no value, from da on; npos where something stands in it that may not.
std::size_t oltreResto(std::string_view filtro, std::size_t da) {
    for (std::size_t at = da; at < filtro.size(); ++at) {
        const char c = filtro[at];
        if (c == '\'' || c == '#') return at;
        if (c == '[') {
            at = filtro.find(']', at);
            if (at == std::string_view::npos) return at;
        } else if (estraneo(filtro, at)) {
            return std::string_view::npos;
        }
    }
    return filtro.size();
}

} // namespace

std::optional<std::vector<PezzoFiltro>> pezziDiFiltro(std::string_view filtro) {
    std::vector<PezzoFiltro> pezzi;
    for (std::size_t at = 0; at < filtro.size();) {
        using Genere = PezzoFiltro::Genere;
        const char c = filtro[at];
        const Genere genere = c == '\''  ? Genere::Virgolette
                              : c == '#' ? Genere::Cancelletti
                                         : Genere::Resto;
        const std::size_t fine =
            genere == Genere::Resto ? oltreResto(filtro, at) : oltreValore(filtro, at);
        if (fine == std::string_view::npos) return std::nullopt;
        pezzi.push_back({genere, filtro.substr(at, fine - at)});
        at = fine;
    }
    return pezzi;
}

std::string valoreDi(std::string_view traVirgolette) {
    std::string valore;
    for (std::size_t at = 1; at + 1 < traVirgolette.size(); ++at) {
        valore.push_back(traVirgolette[at]);
        if (traVirgolette[at] == '\'') ++at;
    }
    return valore;
}

} // namespace norvel::query
