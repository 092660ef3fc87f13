// An operator who does anything that the two windows let him do, in an order that a seed decides.
#pragma once

#include "tests/views/window/BancoConfigura.h"
#include "views/DialoghiSistema.h"

#include <wx/timer.h>

#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace norvel::views {

// Each action is an event as the toolkit would send it, or the callback that a control calls; a
// timer does one after the other inside whatever loop is open, so that a window that an action
// opens is walked over as well.
class Operatore {
  public:
    using Azione = void (Operatore::*)();

    Operatore(unsigned seme, int passi, std::function<void(const std::string&)> dopo);
    ~Operatore();
    Operatore(const Operatore&) = delete;
    Operatore& operator=(const Operatore&) = delete;

    void Inizia(); // walks until the steps are done, then closes what is open
    bool Finito() const { return fatti_ >= passi_; }
    int Fatti() const { return fatti_; }
    int Errori() const { return errori_; }
    const std::string& Ultima() const { return ultima_; }
    BoxAnswer Risponde(const Messaggio& messaggio);
    int A_caso(int quanti); // 0 to quanti - 1

    // What only the bench can do: refuse writes in the database or the folder, or let them pass.
    std::function<void(bool rifiuta)> database, cartella;

  private:
    void tic();
    void passo();
    bool forse(int suCento) { return A_caso(100) < suCento; }
    std::string nome();

    // Azioni sulla ricerca (OperatoreRicerca.cpp)
    void barra();
    void menuViste();
    void filtro();
    void intestazione();
    void apreConfigura();
    void chiudeRicerca();

    // Azioni sulla configurazione (OperatoreConfigura.cpp)
    void menu();
    void spunta();
    void sposta();
    void spostaTutte();
    void dimensione();
    void colore();
    void carattere();
    void salva();
    void scegliVista();
    void attiva();
    void elimina();
    void base();
    void gesto();
    void chiudeConfigura();

    // Azioni su entrambe
    void tasto();
    void trascina();
    void misura();
    void guasto();

    static void clic(wxWindow* pulsante);
    static grid::Grid& griglia();
    static wxTopLevelWindow& finestra();

    std::mt19937 caso_;
    int passi_, fatti_ = 0, errori_ = 0;
    std::function<void(const std::string&)> dopo_;
    std::string ultima_;
    wxTimer orologio_;
    DialoghiSistema dialoghi_;
    BoxHandler scatole_;
};

} // namespace norvel::views
