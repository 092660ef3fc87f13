// The properties: each one a value of the session. The method that opens the window is in
// RicercaApertura.cpp.
#include "component/Ricerca.h"

#include "component/SessioneInCorso.h"
#include "component/VariabiliGlobali.h"
#include "component/Versione.h"
#include "platform/runtime/Text.h"
#include "search_window/FinestraRicerca.h"

#include <utility>

namespace norvel {

namespace {

VariabiliGlobali& sessione() {
    return variabiliGlobali();
}

} // namespace

Ricerca::Ricerca() {
    sessione().gSoloRicerca = false;
}
Ricerca::~Ricerca() {
    sessione().gSoloRicerca = false;
}

std::string Ricerca::PercorsoPers() const {
    return sessione().gPercorsoPers.toText();
}
void Ricerca::SetPercorsoPers(const std::string& valore) {
    sessione().gPercorsoPers = valore;
}

std::string Ricerca::Percorso() const {
    return sessione().gPercorso.toText();
}
void Ricerca::SetPercorso(const std::string& valore) {
    sessione().gPercorso = valore;
}

std::string Ricerca::User() const {
    return sessione().gUser.toText();
}
void Ricerca::SetUser(const std::string& valore) {
    sessione().gUser = valore;
}

std::string Ricerca::Risposta() const {
    return sessione().gRisposta.toText();
}

std::string Ricerca::Modulo() const {
    return sessione().gModulo.toText();
}
void Ricerca::SetModulo(const std::string& valore) {
    sessione().gModulo = valore;
}

bool Ricerca::SoloRicerca() const {
    return sessione().gSoloRicerca;
}
void Ricerca::SetSoloRicerca(bool valore) {
    sessione().gSoloRicerca = valore;
}

std::string Ricerca::Caption() const {
    return sessione().gCaption.toText();
}
void Ricerca::SetCaption(const std::string& valore) {
    sessione().gCaption = valore;
}

std::string Ricerca::StatusBar() const {
    return sessione().gStatusBar.toText();
}
void Ricerca::SetStatusBar(const std::string& valore) {
    sessione().gStatusBar = valore;
}

std::string Ricerca::Toolbar() const {
    return sessione().gToolbar.toText();
}
void Ricerca::SetToolbar(const std::string& valore) {
    sessione().gToolbar = valore;
}

std::string Ricerca::Top() const {
    return sessione().gTop.toText();
}
void Ricerca::SetTop(const std::string& valore) {
    sessione().gTop = valore;
}

std::string Ricerca::Left() const {
    return sessione().gLeft.toText();
}
void Ricerca::SetLeft(const std::string& valore) {
    sessione().gLeft = valore;
}

std::string Ricerca::Height() const {
    return sessione().gHeight.toText();
}
void Ricerca::SetHeight(const std::string& valore) {
    sessione().gHeight = valore;
}

std::string Ricerca::Width() const {
    return sessione().gWidth.toText();
}
void Ricerca::SetWidth(const std::string& valore) {
    sessione().gWidth = valore;
}

std::string Ricerca::WindowsState() const {
    return sessione().gWindowsState.toText();
}
void Ricerca::SetWindowsState(const std::string& valore) {
    sessione().gWindowsState = valore;
}

// The getter reads the window's placement on purpose; existing hosts rely on it.
bool Ricerca::SelezioneMultipla() const {
    return sessione().gWindowsState.toBoolean();
}
void Ricerca::SetSelezioneMultipla(bool valore) {
    sessione().gSelezioneMultipla = valore;
}

std::string Ricerca::FilterBar() const {
    return sessione().gFilterBar.toText();
}
void Ricerca::SetFilterBar(const std::string& valore) {
    sessione().gFilterBar = valore;
}

std::string Ricerca::CampoRicerca() const {
    return sessione().gCampoRicerca.toText();
}
void Ricerca::SetCampoRicerca(const std::string& valore) {
    sessione().gCampoRicerca = valore;
}

std::string Ricerca::AbilitaModificaCampi() const {
    std::string elenco;
    for (const std::string& campo : sessione().gCampiModificabili) {
        if (!elenco.empty()) elenco += ";";
        elenco += campo;
    }
    return elenco;
}

void Ricerca::SetAbilitaModificaCampi(const std::string& valore) {
    if (valore.empty()) return;
    sessione().gCampiModificabili = splitText(valore, ";");
    SessioneInCorso::controllaThread();
    search_window::frmRicerca().SetButtonVisible("Modifica", true);
}

void Ricerca::abilitaCombo() {
    SessioneInCorso::controllaThread();
    search_window::invertiCombo(search_window::frmRicerca());
}

void Ricerca::SetQueryBase(const std::string& valore) {
    sessione().gQueryBase = valore;
}

void Ricerca::SetRecordset(adodb::RecordsetRef valore) {
    sessione().gRecordset = std::move(valore);
}
void Ricerca::SetRecordsetOperatori(adodb::RecordsetRef valore) {
    sessione().gRecordsetOperatori = std::move(valore);
}
void Ricerca::SetRecordsetViste(adodb::RecordsetRef valore) {
    sessione().gRecordsetViste = std::move(valore);
}

std::string Ricerca::Ver() const {
    return testoVersione(versioneComponente());
}

} // namespace norvel
