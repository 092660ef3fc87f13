#include "views/Disposizioni.h"

#include "platform/runtime/HostPath.h"
#include "platform/runtime/Text.h"

#include <filesystem>
#include <system_error>

namespace norvel::views {

namespace {

constexpr const char* cartellaBase = "parametri\\";
constexpr const char* estensione = ".grx";

void indica(grid::LayoutKeeper& griglia, const FileDisposizione& file) {
    griglia.LayoutName = file.nome;
    griglia.LayoutFileName = file.percorso;
}

// A view without its file shows what the grid had.
void carica(grid::LayoutKeeper& griglia, const FileDisposizione& file) {
    indica(griglia, file);
    try {
        griglia.LoadLayout();
    } catch (const Errore&) {
        return;
    }
}

} // namespace

std::string testoSessione(const Variant& valore) {
    return valore.isNull() || valore.isEmpty() ? std::string() : valore.toText();
}

FileDisposizione disposizioneBase(const VariabiliGlobali& sessione, const std::string& modulo) {
    return {testoSessione(sessione.gPercorso) + cartellaBase + modulo + estensione,
            testoSessione(sessione.gModulo)};
}

FileDisposizione disposizionePersonale(const VariabiliGlobali& sessione, const std::string& nome) {
    const std::string disposizione = testoSessione(sessione.gUser) + nome;
    return {testoSessione(sessione.gPercorsoPers) + disposizione + estensione, disposizione};
}

// A search of the folder answers with the name of a file alone, so that one in a folder below,
// which a separator in the view's name leads to, is never the one that was looked for.
bool esisteDisposizionePersonale(const VariabiliGlobali& sessione, const std::string& nome) {
    const FileDisposizione cercato = disposizionePersonale(sessione, nome);
    if (cercato.nome.find_first_of("\\/") != std::string::npos) return false;
    std::error_code errore;
    return std::filesystem::is_regular_file(percorsoSistema(cercato.percorso), errore);
}

Variant CaricaVistaBase(grid::LayoutKeeper& griglia, const VariabiliGlobali& sessione,
                        const std::string& modulo) {
    carica(griglia, disposizioneBase(sessione, modulo));
    return {};
}

Variant ApplicaVista(grid::LayoutKeeper& griglia, const VariabiliGlobali& sessione,
                     const Variant& nome) {
    const std::string vista = testoSessione(nome);
    if (findText(vista, prefissoBase) != std::string::npos)
        return CaricaVistaBase(griglia, sessione, vista.substr(vista.find(':') + 1));
    carica(griglia, disposizionePersonale(sessione, vista));
    return true;
}

void salvaDisposizionePersonale(grid::LayoutKeeper& griglia, const VariabiliGlobali& sessione,
                                const std::string& nome) {
    const FileDisposizione file = disposizionePersonale(sessione, nome);
    griglia.LayoutFileName = file.percorso;
    griglia.AddLayout(file.nome);
}

void salvaDisposizioneBase(grid::LayoutKeeper& griglia, const VariabiliGlobali& sessione) {
    const FileDisposizione file = disposizioneBase(sessione, testoSessione(sessione.gModulo));
    griglia.LayoutFileName = file.percorso;
    griglia.AddLayout(file.nome);
}

} // namespace norvel::views
