// Which filter cells are marked before the recordset is asked, and what their tips say.
#include "platform/runtime/Errore.h"
#include "query/VerificaCella.h"
#include "tests/query/Archivio.h"

#include <gtest/gtest.h>

namespace norvel::query {
namespace {

TipoDiCampo sempre(adodb::DataTypeEnum tipo) {
    return [tipo](const std::string&) { return tipo; };
}

std::optional<std::string> verifica(const std::string& valore, adodb::DataTypeEnum tipo,
                                    Confronto confronto = Confronto::Contiene,
                                    bool piuValori = false) {
    return verificaCella({"campo", valore}, sempre(tipo), confronto, piuValori);
}

TEST(Verifica, UnNumeroSolo) {
    for (const char* numero : {"0", "12", "12,5", "12.5", "-3", "+3", ",5", "5,", "1e3", "1E-3",
                               "1,5e+10", " 12 ", "00012"}) {
        EXPECT_TRUE(eUnNumero(numero)) << numero;
        EXPECT_EQ(verifica(numero, adodb::adDouble), std::nullopt) << numero;
    }
    for (const char* altro :
         {"a",  "1 OR 1=1", "1;2", "1.234,5", "1,2,3", "12 3", "--1", "+-1", "-",
          ",",  "1e",       "e5",  "1e5.0",   "0x10",  "NULL", ">5",  "1)",  "1 AND codice=2",
          "1'", "#1#",      "1\t", "½",       "٣"}) {
        EXPECT_FALSE(eUnNumero(altro)) << altro;
        EXPECT_EQ(verifica(altro, adodb::adDouble), "Qui serve un solo numero, per esempio 12,5")
            << altro;
    }
    EXPECT_FALSE(eUnNumero(""));
    EXPECT_FALSE(eUnNumero("  "));
}

TEST(Verifica, UnaCellaVuotaVaBeneSempre) {
    for (const auto tipo : {adodb::adDouble, adodb::adDate, adodb::adBoolean, adodb::adVarWChar})
        for (const char* vuota : {"", "   "})
            EXPECT_EQ(verifica(vuota, tipo), std::nullopt);
}

TEST(Verifica, UnaData) {
    EXPECT_EQ(verifica("15/03/2011", adodb::adDate), std::nullopt);
    for (const char* altro : {"abc", "15/03", "31/02/2011", "10:30", "15/03/2011# OR #"})
        EXPECT_EQ(verifica(altro, adodb::adDBTimeStamp),
                  "Qui serve una data, per esempio 15/03/2011")
            << altro;
}

TEST(Verifica, UnBooleanoPrendeOgniTesto) {
    for (const char* valore : {"Si", "no", "0", "1", "1 OR 1=1", "'", "pippo"})
        EXPECT_EQ(verifica(valore, adodb::adBoolean), std::nullopt) << valore;
}

TEST(Verifica, ITokenVannoBeneInOgniColonna) {
    for (const auto tipo : {adodb::adDouble, adodb::adDate, adodb::adBoolean, adodb::adVarWChar})
        for (const char* token : {"[Nulli]", "[vuoti]", "[NON VUOTI]"})
            EXPECT_EQ(verifica(token, tipo), std::nullopt) << token;
    EXPECT_NE(verifica("[Tutti]", adodb::adDouble), std::nullopt);
}

TEST(Verifica, IJollyNonStannoDentroUnTestoContenuto) {
    for (const char* valore : {"a*b", "%a", "a%b"})
        EXPECT_EQ(verifica(valore, adodb::adVarWChar),
                  "Con «contiene» il testo cercato non può avere * o %");
    EXPECT_EQ(verifica("a*b", adodb::adVarWChar, Confronto::Uguale), std::nullopt);
    EXPECT_EQ(verifica("a%b", adodb::adVarWChar, Confronto::Diverso), std::nullopt);
}

TEST(Verifica, OgniAltroTestoVaBene) {
    for (const char* valore : {"d'Ami", "''", "'", "a OR b", "' OR '1'='1", "#", "[", "]", "\\",
                               "\"", "; DROP TABLE t", "è§€", "a_b", "?"})
        for (const auto confronto : {Confronto::Contiene, Confronto::Uguale, Confronto::Diverso})
            EXPECT_EQ(verifica(valore, adodb::adVarWChar, confronto), std::nullopt) << valore;
}

TEST(Verifica, TraPiuValoriSiGuardaOgnuno) {
    EXPECT_EQ(verifica("1 ;§; 2,5", adodb::adDouble, Confronto::Uguale, true), std::nullopt);
    EXPECT_NE(verifica("1 ;§; x", adodb::adDouble, Confronto::Uguale, true), std::nullopt);
    EXPECT_NE(verifica("1 ;§; 2", adodb::adDouble, Confronto::Uguale, false), std::nullopt);
    EXPECT_EQ(verifica("1 ;§; [Nulli]", adodb::adDouble, Confronto::Uguale, true), std::nullopt);
    EXPECT_EQ(verifica("1 ;§;  ;§; 3", adodb::adDouble, Confronto::Uguale, true), std::nullopt);
    EXPECT_EQ(verifica("[Tutti] ;§; 3", adodb::adDouble, Confronto::Uguale, true), std::nullopt);
}

TEST(Verifica, UnNomeDiCampoCheIlFiltroNonPrendeSiSegna) {
    const auto motivo =
        verificaCella({"nome intero", "a"}, sempre(adodb::adVarWChar), Confronto::Contiene);
    ASSERT_TRUE(motivo);
    EXPECT_TRUE(motivo->starts_with("Il filtro non è valido: ")) << *motivo;
    EXPECT_EQ(verificaCella({"nome intero", " "}, sempre(adodb::adVarWChar), Confronto::Contiene),
              std::nullopt);
    // A name that would make its condition two
    EXPECT_TRUE(verificaCella({"a=1 AND b", "2"}, sempre(adodb::adDouble), Confronto::Uguale));
}

TEST(Verifica, UnCampoCheMancaELaRagione) {
    Messaggi messaggi;
    const auto motivo = verificaCella(
        {"altro", "x"}, [](const std::string&) -> adodb::DataTypeEnum { throw erroreArgomento(); },
        Confronto::Contiene);
    EXPECT_EQ(motivo, erroreArgomento().descrizione());
    EXPECT_TRUE(messaggi.visti.empty());
}

} // namespace
} // namespace norvel::query
