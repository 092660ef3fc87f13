#include "platform/adodb/provider/Dialetto.h"

#include "platform/runtime/Text.h"

#include <array>
#include <string>

namespace norvel::adodb {

namespace {

struct Segno {
    std::string_view testo;
    Dialetto dialetto;
};

constexpr std::array<Segno, 5> segni = {{{"sqloledb", Dialetto::Sql},
                                         {"SQL Server", Dialetto::Sql},
                                         {"access", Dialetto::Access},
                                         {".mdb", Dialetto::Access},
                                         {"MySQL", Dialetto::MySql}}};

} // namespace

Dialetto riconosciDialetto(std::string_view strConnessione) {
    Dialetto dialetto = Dialetto::Nessuno;
    for (const Segno& segno : segni)
        if (findText(strConnessione, segno.testo) != std::string_view::npos)
            dialetto = segno.dialetto;
    return dialetto;
}

} // namespace norvel::adodb
