// The bench of views without windows: a folder of layout files, a session over it, and a grid.
#pragma once

#include "component/VariabiliGlobali.h"
#include "platform/grid/layout/LayoutFile.h"
#include "platform/grid/layout/LayoutKeeper.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <random>
#include <string>

namespace norvel::views {

namespace fs = std::filesystem;

// The grid is its layout alone, of one column; the column's caption tells which one it has.
class BancoViste : public testing::Test {
  protected:
    BancoViste() {
        static std::atomic<int> numero{0};
        cartella =
            fs::temp_directory_path() /
            ("nr_viste_" + std::to_string(std::random_device()()) + "_" + std::to_string(++numero));
        fs::create_directories(cartella / "parametri");
        sessione.gPercorso = cartella.string() + "\\";
        sessione.gPercorsoPers = cartella.string() + "\\";
        sessione.gUser = "ROSSI";
        sessione.gModulo = "CLI";
    }
    ~BancoViste() override { fs::remove_all(cartella); }
    BancoViste(const BancoViste&) = delete;
    BancoViste& operator=(const BancoViste&) = delete;

    static grid::Layout conTitolo(const std::string& titolo) {
        grid::Layout disposizione;
        disposizione.Columns.resize(1);
        disposizione.Columns[0].DataField = "codice";
        disposizione.Columns[0].Caption = titolo;
        return disposizione;
    }
    void scriviDisposizione(const std::string& file, const std::string& nome,
                            const std::string& titolo) const {
        grid::saveLayout((cartella / file).string(), nome, conTitolo(titolo));
    }

    fs::path cartella;
    VariabiliGlobali sessione;
    std::string mostrata; // the caption of the layout that the grid has
    grid::LayoutKeeper custode{[this] { return conTitolo(mostrata); },
                               [this](const grid::Layout& disposizione) {
                                   mostrata = disposizione.Columns.at(0).Caption;
                               }};
};

} // namespace norvel::views
