#include "query/Lessico.h"

#include "platform/adodb/sqlite/AccessNotation.h"

#include <algorithm>

namespace norvel::query {

namespace {

bool eBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool eCifra(char c) {
    return c >= '0' && c <= '9';
}

bool apreParola(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '@' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

class Lettore {
  public:
    Lettore(std::string_view sql, Regole regole) : sql_(sql), regole_(regole) {}

    std::vector<Simbolo> leggi() {
        std::vector<Simbolo> simboli;
        for (saltaBlank(); at_ < sql_.size(); saltaBlank()) {
            const std::size_t inizio = at_;
            const GenereSimbolo genere = simbolo();
            simboli.push_back({genere, sql_.substr(inizio, at_ - inizio)});
        }
        return simboli;
    }

  private:
    bool e(Regole regole) const { return regole_ == regole; }
    bool comincia(std::string_view segno) const { return sql_.substr(at_).starts_with(segno); }
    char carattere(std::size_t oltre = 0) const {
        return at_ + oltre < sql_.size() ? sql_[at_ + oltre] : '\0';
    }
    void saltaBlank() {
        while (at_ < sql_.size() && eBlank(sql_[at_]))
            ++at_;
    }

    GenereSimbolo simbolo() {
        const char c = carattere();
        if (c == '\'') return traVirgolette(GenereSimbolo::Testo);
        if (c == '"') {
            const bool testo = e(Regole::Access) || e(Regole::MySql);
            return traVirgolette(testo ? GenereSimbolo::Testo : GenereSimbolo::Nome);
        }
        if (c == '`' && !e(Regole::SqlServer)) return traVirgolette(GenereSimbolo::Nome);
        if (c == '[' && !e(Regole::MySql)) return traParentesiQuadre();
        if (apreCommento()) return commento();
        if (c == '#') return cancelletto();
        if (apreParola(c)) return parola();
        if (eCifra(c) || (c == '.' && eCifra(carattere(1)))) return numero();
        ++at_;
        const bool illecito = static_cast<unsigned char>(c) < ' ' || c == '\x7f';
        return illecito ? GenereSimbolo::Rotto : GenereSimbolo::Segno;
    }

    // From one quote to the next that is neither doubled nor, in a text of MySQL, escaped. A NUL
    // ends the whole statement for some drivers.
    GenereSimbolo traVirgolette(GenereSimbolo genere) {
        const char virgoletta = sql_[at_++];
        const bool barre = e(Regole::MySql) && virgoletta != '`';
        bool intero = true;
        for (; at_ < sql_.size(); ++at_) {
            if (sql_[at_] == '\0') intero = false;
            if (barre && sql_[at_] == '\\') {
                at_ = std::min(at_ + 1, sql_.size() - 1);
                continue;
            }
            if (sql_[at_] != virgoletta) continue;
            if (carattere(1) != virgoletta) {
                ++at_;
                return intero ? genere : GenereSimbolo::Rotto;
            }
            ++at_;
        }
        return GenereSimbolo::Rotto;
    }

    GenereSimbolo traParentesiQuadre() {
        for (++at_; at_ < sql_.size(); ++at_) {
            if (sql_[at_] == '\0') break;
            if (sql_[at_] != ']') continue;
            const bool doppia = e(Regole::SqlServer) && carattere(1) == ']';
            ++at_;
            if (!doppia) return GenereSimbolo::Nome;
        }
        return GenereSimbolo::Rotto;
    }

    bool apreCommento() const {
        if (e(Regole::Access)) return false;
        if (comincia("/*")) return true;
        if (e(Regole::MySql)) {
            const bool staccato = at_ + 2 >= sql_.size() || eBlank(sql_[at_ + 2]);
            return carattere() == '#' || (comincia("--") && staccato);
        }
        return comincia("--");
    }
    GenereSimbolo commento() {
        if (!comincia("/*")) {
            at_ = std::min(sql_.find('\n', at_), sql_.size());
            return GenereSimbolo::Commento;
        }
        std::size_t aperti = 0; // SQL Server counts those inside one another
        while (at_ < sql_.size()) {
            if (comincia("/*") && (aperti == 0 || e(Regole::SqlServer))) {
                ++aperti;
                at_ += 2;
            } else if (comincia("*/")) {
                at_ += 2;
                if (--aperti == 0) return GenereSimbolo::Commento;
            } else {
                ++at_;
            }
        }
        return GenereSimbolo::Rotto;
    }

    // A date, or for SQL Server a temporary table's name.
    GenereSimbolo cancelletto() {
        if (e(Regole::SqlServer)) return parola();
        const std::size_t fine = sql_.find_first_of("#\n\r", at_ + 1);
        bool chiuso = fine != std::string_view::npos && sql_[fine] == '#';
        if (chiuso && e(Regole::Sqlite))
            chiuso = adodb::isoOfDateLiteral(sql_.substr(at_ + 1, fine - at_ - 1)).has_value();
        at_ = chiuso ? fine + 1 : at_ + 1;
        return chiuso ? GenereSimbolo::Data : GenereSimbolo::Rotto;
    }
    GenereSimbolo parola() {
        for (++at_; at_ < sql_.size(); ++at_) {
            const char c = sql_[at_];
            if (!apreParola(c) && !eCifra(c) && c != '$' && !(c == '#' && e(Regole::SqlServer)))
                break;
        }
        return GenereSimbolo::Parola;
    }
    GenereSimbolo numero() {
        while (at_ < sql_.size() &&
               (eCifra(sql_[at_]) || sql_[at_] == '.' || apreParola(sql_[at_])))
            ++at_;
        return GenereSimbolo::Numero;
    }

    std::string_view sql_;
    Regole regole_;
    std::size_t at_ = 0;
};

} // namespace

std::vector<Simbolo> simboliDi(std::string_view sql, Regole regole) {
    return Lettore(sql, regole).leggi();
}

} // namespace norvel::query
