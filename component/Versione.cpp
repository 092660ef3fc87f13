#include "component/Versione.h"

namespace norvel {

namespace {

std::string treCifre(int numero) {
    const std::string testo = "000" + std::to_string(numero);
    return testo.substr(testo.size() - 3);
}

} // namespace

NumeriVersione versioneComponente() {
    return {NR_VERSION_MAJOR, NR_VERSION_MINOR, NR_VERSION_PATCH};
}

const char* versioneBreve() {
    return NR_VERSION_TEXT;
}

std::string testoVersione(NumeriVersione numeri) {
    return std::to_string(numeri.principale) + "." + treCifre(numeri.secondario) + "." +
           treCifre(numeri.revisione);
}

} // namespace norvel
