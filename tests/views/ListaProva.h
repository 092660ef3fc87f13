// A list box without a window.
#pragma once

#include "platform/runtime/Errore.h"
#include "views/ListaVoci.h"

#include <string>
#include <utility>
#include <vector>

namespace norvel::views {

class ListaProva : public ListaVoci {
  public:
    int ListCount() const override { return static_cast<int>(voci.size()); }
    std::string List(int indice) const override { return voci[posto(indice)].first; }
    int ItemData(int indice) const override { return voci[posto(indice)].second; }
    int ListIndex() const override { return scelta; }
    void SetListIndex(int indice) override { scelta = static_cast<int>(posto(indice)); }
    void AddItem(const std::string& testo, int dato) override { voci.emplace_back(testo, dato); }
    void RemoveItem(int indice) override {
        voci.erase(voci.begin() + static_cast<std::ptrdiff_t>(posto(indice)));
        if (scelta == indice) scelta = -1;
    }
    void Clear() override {
        voci.clear();
        scelta = -1;
    }

    // "uno=0 due=3"
    std::string tutte() const {
        std::string testo;
        for (const auto& [voce, dato] : voci)
            testo += (testo.empty() ? "" : " ") + voce + "=" + std::to_string(dato);
        return testo;
    }

    std::vector<std::pair<std::string, int>> voci;
    int scelta = -1;

  private:
    std::size_t posto(int indice) const {
        if (indice < 0 || indice >= ListCount()) throw erroreArgomento();
        return static_cast<std::size_t>(indice);
    }
};

} // namespace norvel::views
