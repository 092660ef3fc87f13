// The export commands of the search window, without the window.
#pragma once

#include "component/VariabiliGlobali.h"
#include "output/AreaSelezionata.h"
#include "output/Lavoro.h"
#include "platform/grid/export/ExportTable.h"

#include <functional>
#include <memory>
#include <string>

namespace norvel::output {

// What the commands need of the window.
struct ParteEsportazione {
    const VariabiliGlobali& sessione;
    const grid::Columns& colonne;
    const grid::GridStyle& stile;
    adodb::RecordsetRef recordset{}; // the grid's; null where there is none
    std::string titolo{};            // the window's caption
    AreaSelezionata area{};
    void* finestra = nullptr; // its handle, as the system has it

    // Waits until every row has come; false where the operator did not want to.
    std::function<bool()> attendiRighe{};
    EseguiLavoro esegui{};
    std::function<void(bool accesa)> clessidra{}; // the busy pointer
    std::function<void()> svuotaAppunti{};
    std::function<void(const std::string& testo)> scriviAppunti{};
    // The recordset of the window's own that a workbook is filled from, of the same making as the
    // grid's; made on first use, closed. opzioni: of its Open.
    std::function<adodb::RecordsetRef(int& opzioni)> recordsetEsportazione{};
};

// "copiaclip": the selected cells, values with a blank behind each. An operator who does not wait
// for the rows, or stops it, has the clipboard as it was.
void copiaAppunti(const ParteEsportazione& parte);
// "copia": the selected cells as a spreadsheet takes them; without an area, after a question, the
// whole result as the workbook "export.xls". Both show their errors in a box.
void esportaExcel(const ParteEsportazione& parte);

enum class FormatoFile { Html, Csv };

// "Html" and "excel": the grid's rows as a file of a numbered name, which its application opens.
// Every error is ignored but that of a fetch that broke off, which is raised; a file that did not
// become whole is neither left nor opened.
void esportaFile(const ParteEsportazione& parte, FormatoFile formato);

} // namespace norvel::output
