// A list box of the toolkit as the routines see it.
#pragma once

#include "views/ListaVoci.h"

#include <string>
#include <vector>

class wxListBox;

namespace norvel::views {

// The entries come and go through this object alone.
class ListaFinestra : public ListaVoci {
  public:
    explicit ListaFinestra(wxListBox& lista) : lista_(lista) {}
    int ListCount() const override;
    std::string List(int indice) const override;
    int ItemData(int indice) const override;
    int ListIndex() const override;
    void SetListIndex(int indice) override;
    void AddItem(const std::string& testo, int dato) override;
    void RemoveItem(int indice) override;
    void Clear() override;

  private:
    unsigned posto(int indice) const;
    wxListBox& lista_;
    std::vector<int> dati_; // of the entries, which the toolkit keeps without
};

} // namespace norvel::views
