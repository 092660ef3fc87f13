#include "views/RigheAnteprima.h"

#include "platform/grid/model/RowReader.h"

#include <utility>

namespace norvel::views {

using namespace adodb;

namespace {

// Where the search window stands before the first row, behind the last, or on one that was deleted,
// the preview begins at its first row.
void vaiAllaStessaRiga(Recordset& clone, Recordset& origine) {
    try {
        clone.SetBookmark(origine.Bookmark());
    } catch (const Errore&) {
        if (clone.RecordCount() > 0) clone.MoveFirst();
    }
}

} // namespace

RigheAnteprima::RigheAnteprima(RecordsetRef origine, RecordsetEvents& arrivi)
    : origine_(std::move(origine)), clone_(grid::cloneOfView(*origine_, origine_->Sort())),
      arrivi_(arrivi) {
    vaiAllaStessaRiga(*clone_, *origine_);
    origine_->Subscribe(this);
}

RigheAnteprima::~RigheAnteprima() {
    origine_->Unsubscribe(this);
}

void RigheAnteprima::FetchProgress(RowCount lette, RowCount massimo, EventStatusEnum stato,
                                   Recordset&) {
    arrivi_.FetchProgress(lette, massimo, stato, *clone_);
}

void RigheAnteprima::FetchComplete(const Errore* errore, EventStatusEnum stato, Recordset&) {
    arrivi_.FetchComplete(errore, stato, *clone_);
}

} // namespace norvel::views
