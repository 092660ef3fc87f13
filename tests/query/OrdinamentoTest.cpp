// What a click on a heading does, over headings that write down what they are told.
#include "query/Ordinamento.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace norvel::query {
namespace {

class Finte : public Intestazioni {
  public:
    struct Colonna {
        explicit Colonna(std::string suo) : campo(std::move(suo)) {}
        std::string campo;
        int posizione = 0;
        std::string immagine;
        bool trasparente = false;
    };
    std::vector<Colonna> colonne = {Colonna("nome"), Colonna("data nascita"), Colonna("prezzo")};
    std::string ordine = "(mai)";
    int ridisegni = 0;
    std::set<std::string> guasti; // the calls that fail

    int numero() const override {
        chiama("numero");
        return static_cast<int>(colonne.size());
    }
    std::string campo(int i) const override {
        chiama("campo");
        return colonne.at(static_cast<std::size_t>(i)).campo;
    }
    int posizioneImmagine(int i) const override {
        chiama("posizioneImmagine");
        return colonne.at(static_cast<std::size_t>(i)).posizione;
    }
    void impostaPosizioneImmagine(int i, int posizione) override {
        chiama("impostaPosizioneImmagine");
        colonne.at(static_cast<std::size_t>(i)).posizione = posizione;
    }
    void impostaImmagine(int i, const std::string& percorso) override {
        chiama("impostaImmagine");
        colonne.at(static_cast<std::size_t>(i)).immagine = percorso;
    }
    void impostaTrasparente(int i, bool trasparente) override {
        chiama("impostaTrasparente");
        colonne.at(static_cast<std::size_t>(i)).trasparente = trasparente;
    }
    void ridisegna() override {
        chiama("ridisegna");
        ++ridisegni;
    }
    void impostaOrdine(const std::string& testo) override {
        chiama("impostaOrdine");
        ordine = testo;
    }

  private:
    void chiama(const std::string& nome) const {
        if (guasti.contains(nome)) throw Errore(53, "Impossibile trovare il file");
    }
};

constexpr const char* percorso = "C:\\gest\\";

TEST(Ordinamento, IlPrimoClicOrdinaCrescenteConLaFrecciaSu) {
    Finte griglia;
    bool crescente = false;
    ordinaPerColonna(griglia, 0, crescente, percorso);
    EXPECT_TRUE(crescente);
    EXPECT_EQ(griglia.ordine, "[nome]  asc");
    EXPECT_EQ(griglia.colonne[0].immagine, "C:\\gest\\parametri\\SortUp.bmp");
    EXPECT_EQ(griglia.colonne[0].posizione, 1);
    EXPECT_TRUE(griglia.colonne[0].trasparente);
    EXPECT_EQ(griglia.ridisegni, 1);
}

TEST(Ordinamento, IlSecondoClicSuUnAltraColonnaOrdinaDecrescente) {
    Finte griglia;
    bool crescente = false;
    ordinaPerColonna(griglia, 0, crescente, percorso);
    ordinaPerColonna(griglia, 2, crescente, percorso);
    EXPECT_EQ(griglia.ordine, "[prezzo]  desc");
    EXPECT_EQ(griglia.colonne[2].immagine, "C:\\gest\\parametri\\SortDown.bmp");
    EXPECT_EQ(griglia.colonne[2].posizione, 1);
    EXPECT_EQ(griglia.colonne[0].posizione, 7);
    EXPECT_EQ(griglia.colonne[1].posizione, 0); // it never showed the picture
}

TEST(Ordinamento, DueClicSullaStessaColonnaAlternano) {
    Finte griglia;
    bool crescente = false;
    for (const char* atteso : {"[nome]  asc", "[nome]  desc", "[nome]  asc"}) {
        ordinaPerColonna(griglia, 0, crescente, percorso);
        EXPECT_EQ(griglia.ordine, atteso);
        EXPECT_EQ(griglia.colonne[0].posizione, 1);
    }
}

TEST(Ordinamento, UnNomeConBlankStaTraParentesi) {
    Finte griglia;
    bool crescente = false;
    ordinaPerColonna(griglia, 1, crescente, percorso);
    EXPECT_EQ(griglia.ordine, "[data nascita]  asc");
}

TEST(Ordinamento, UnaBitmapCheMancaNonFermaLOrdinamento) {
    Finte griglia;
    griglia.guasti = {"impostaImmagine"};
    bool crescente = false;
    ordinaPerColonna(griglia, 0, crescente, percorso);
    EXPECT_EQ(griglia.ordine, "[nome]  asc");
    EXPECT_EQ(griglia.colonne[0].posizione, 1);
    EXPECT_TRUE(griglia.colonne[0].trasparente);
    EXPECT_EQ(griglia.ridisegni, 1);
}

TEST(Ordinamento, OgniPassoSiTentaAncheDopoOgniErrore) {
    for (const char* guasto : {"numero", "posizioneImmagine", "impostaPosizioneImmagine",
                               "impostaImmagine", "impostaTrasparente", "ridisegna"}) {
        Finte griglia;
        griglia.guasti = {guasto};
        bool crescente = false;
        ordinaPerColonna(griglia, 0, crescente, percorso);
        EXPECT_EQ(griglia.ordine, "[nome]  asc") << guasto;
        EXPECT_TRUE(crescente);
    }
    Finte griglia;
    griglia.guasti = {"impostaOrdine"};
    bool crescente = false;
    ordinaPerColonna(griglia, 0, crescente, percorso);
    EXPECT_EQ(griglia.colonne[0].posizione, 1);
    EXPECT_EQ(griglia.ridisegni, 1);
}

TEST(Ordinamento, UnaColonnaCheNonCeNonSolleva) {
    Finte griglia;
    griglia.guasti = {"campo", "impostaImmagine", "impostaPosizioneImmagine", "impostaTrasparente"};
    bool crescente = true;
    ordinaPerColonna(griglia, 9, crescente, percorso);
    EXPECT_FALSE(crescente);
    EXPECT_EQ(griglia.ordine, " desc"); // which the recordset refuses
}

} // namespace
} // namespace norvel::query
