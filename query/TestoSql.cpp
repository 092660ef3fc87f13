#include "query/TestoSql.h"

#include "platform/runtime/Utf8.h"

#include <algorithm>

namespace norvel::query {

bool stanno(std::string_view testo, std::size_t da, std::string_view parola) {
    if (da > testo.size() || testo.size() - da < parola.size()) return false;
    return std::equal(parola.begin(), parola.end(), testo.begin() + static_cast<std::ptrdiff_t>(da),
                      [](char a, char b) { return lowerAscii(a) == lowerAscii(b); });
}

std::size_t cerca(std::string_view testo, std::string_view parola, std::size_t da) {
    if (testo.size() < parola.size()) return std::string_view::npos;
    const char prima = lowerAscii(parola.front());
    for (std::size_t at = da; at <= testo.size() - parola.size(); ++at)
        if (lowerAscii(testo[at]) == prima && stanno(testo, at, parola)) return at;
    return std::string_view::npos;
}

bool contiene(std::string_view testo, std::string_view parola) {
    return cerca(testo, parola) != std::string_view::npos;
}

std::string sostituisci(std::string_view testo, std::string_view da, std::string_view a) {
    std::string nuovo;
    nuovo.reserve(testo.size());
    std::size_t fatto = 0;
    for (std::size_t at = cerca(testo, da); at != std::string_view::npos;
         at = cerca(testo, da, fatto)) {
        nuovo.append(testo.substr(fatto, at - fatto)).append(a);
        fatto = at + da.size();
    }
    return nuovo.append(testo.substr(fatto));
}

std::size_t caratteriDi(std::string_view testo) {
    std::size_t quanti = 0;
    for (std::size_t at = 0; at < testo.size();) {
        const CodePoint punto = decodeUtf8(testo, at);
        quanti += punto.valid && punto.value > 0xFFFF ? 2 : 1;
        at += punto.length;
    }
    return quanti;
}

} // namespace norvel::query
