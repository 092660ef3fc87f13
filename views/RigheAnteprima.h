// The rows of the preview: what the search window shows, under a cursor of their own.
#pragma once

#include "platform/adodb/Recordset.h"

namespace norvel::views {

// A clone of the search window's recordset with its filter, its order and its current row, so that
// the operator may walk the preview and the search window stays where it is. Rows that are still
// arriving are told to the clone's sink as they are to the search window's.
class NR_API RigheAnteprima : private adodb::RecordsetEvents {
  public:
    // Raises what the recordset raises where it cannot be cloned: closed, busy, without bookmarks.
    // arrivi: is told of rows that came, in the clone's name; must outlive this.
    RigheAnteprima(adodb::RecordsetRef origine, adodb::RecordsetEvents& arrivi);
    ~RigheAnteprima() override;
    RigheAnteprima(const RigheAnteprima&) = delete;
    RigheAnteprima& operator=(const RigheAnteprima&) = delete;

    const adodb::RecordsetRef& Clone() const { return clone_; }

  private:
    void FetchProgress(adodb::RowCount, adodb::RowCount, adodb::EventStatusEnum,
                       adodb::Recordset&) override;
    void FetchComplete(const Errore*, adodb::EventStatusEnum, adodb::Recordset&) override;

    adodb::RecordsetRef origine_;
    adodb::RecordsetRef clone_;
    adodb::RecordsetEvents& arrivi_;
};

} // namespace norvel::views
