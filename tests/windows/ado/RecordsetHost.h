// A host's recordset as a test wants it: a few rows, and as much or as little as some cursors
// offer.
#pragma once

#include "platform/adodb/Constants.h"
#include "tests/windows/ado/DispatchDouble.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace norvel::test {

// What the recordset and its clones share.
struct HostRows {
    struct Row {
        int code;
        std::string name;
    };
    std::vector<Row> rows{{1, "uno"}, {2, "due"}, {3, "tre"}, {4, "quattro"}, {5, "cinque"}};
    bool bookmarks = true;
    bool positions = true; // AbsolutePosition and RecordCount are known
    int generation = 0;    // raised by Requery: older clones and bookmarks are out
    std::vector<com::ComPtr<DispatchDouble>> clones;
};

// Answers by ADO's names. Filter: "codice>N"; Sort: "codice DESC".
class RecordsetHost : public DispatchDouble {
  public:
    explicit RecordsetHost(std::shared_ptr<HostRows> shared);
    static com::ComPtr<RecordsetHost> make(std::shared_ptr<HostRows> shared) {
        return com::ComPtr<RecordsetHost>::adopt(new RecordsetHost(std::move(shared)));
    }

    int state = adodb::adStateOpen;
    int position = 0; // in what shows: 0 the first, -1 BOF, the count EOF
    int moved = 0;    // moves of any kind

    // A connection point of the classic events, where it is wanted.
    bool offersEvents = false;
    int connected = 0; // sinks
    // Fires an event at the sink that connected last; arguments in the order of a declaration.
    HRESULT fire(DISPID event, std::initializer_list<com::OwnedVariant> arguments);
    com::ComPtr<IDispatch> sink() const { return sink_; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;

  private:
    friend class HostEvents;
    void cursorMembers();
    void positionMembers();
    void viewMembers();
    void fieldMembers();
    std::vector<int> shown() const; // indexes of rows
    void go(int to);
    int current() const; // the row; raises 3021
    com::ComPtr<DispatchDouble> field(int index);

    std::shared_ptr<HostRows> shared_;
    std::string filter_;
    std::string sort_;
    int generation_;
    com::ComPtr<IDispatch> sink_;
};

} // namespace norvel::test
