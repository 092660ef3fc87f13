// A spreadsheet program as automation hosts know it, as far as an export needs it: the members keep
// its names.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Api.h"
#include "platform/spreadsheet/Workbook.h"

#include <memory>
#include <string>

namespace norvel::spreadsheet {

// A file that is being written, in steps, so that who waits for it can be told and may give it up
// by letting go of this object: then what was there stays.
class NR_API Saving {
  public:
    virtual ~Saving();
    // False once the file is there. Raises what writing raises.
    virtual bool Step() = 0;
    virtual double Done() const = 0; // from 0 to 1
    virtual WorkbookLosses Losses() const { return {}; }
};

class NR_API Range {
  public:
    virtual ~Range();
    // Data only, no heading, from the recordset's current row on, this range its top left cell.
    virtual void CopyFromRecordset(adodb::Recordset& recordset) = 0;
};

class NR_API Worksheet {
  public:
    virtual ~Worksheet();
    virtual std::shared_ptr<spreadsheet::Range> Range(const std::string& address) = 0;
};

class NR_API Workbook {
  public:
    virtual ~Workbook();
    virtual std::shared_ptr<Worksheet> Worksheets(int index) = 0; // from 1
    // path: in the host's notation.
    virtual std::unique_ptr<Saving> SaveAs(const std::string& path) = 0;
};

class NR_API Workbooks {
  public:
    virtual ~Workbooks();
    virtual std::shared_ptr<Workbook> Add() = 0;
};

// What fails raises Errore. Whoever does not Quit leaves the program as it is.
class NR_API Application {
  public:
    virtual ~Application();
    virtual std::shared_ptr<spreadsheet::Workbooks> Workbooks() = 0;
    virtual void Quit() = 0;
};

// For a recordset of this system's own making everything stays within this process: the workbook
// is written in the binary format (WorkbookFile), whose old file it replaces without a question.
// One sheet, one range, at "A1" (any other raises 1004); a workbook is saved with the rows that
// were copied, as they are at that moment.
NR_API std::shared_ptr<Application> makeApplication();

// The program for the rows of this recordset: makeApplication()'s, but for a host's own ADO
// recordset the machine's "Excel.Application", created and called by name (429 where there is
// none; what it raises itself as automation reports it).
NR_API std::shared_ptr<Application> createApplication(const adodb::Recordset& recordset);

} // namespace norvel::spreadsheet
