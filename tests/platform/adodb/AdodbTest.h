// What the tests of the recordset engine share: databases in a folder of their own, a sink that
// writes down what it is told, a provider that does what a test wants.
#pragma once

#include "platform/adodb/Errors.h"
#include "platform/adodb/Recordset.h"
#include "platform/adodb/provider/Provider.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace norvel::adodb {

// The error number that call raises; 0 where it raises none.
std::int64_t errorOf(const std::function<void()>& call);
// Its description.
std::string descriptionOf(const std::function<void()>& call);

// A folder that goes with the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    std::string file(const std::string& name) const { return (path_ / name).string(); }
    // Makes a database of these statements and returns its connection string.
    std::string database(const std::string& name, const std::string& sql) const;

  private:
    std::filesystem::path path_;
};

// A recordset of one column n holding 1 to rows, opened and complete.
RecordsetRef numbers(int rows);
RecordsetRef openOn(const std::string& connection, const std::string& sql, int options = -1);
std::int64_t current(Recordset& recordset, const Variant& field = std::int32_t{0});

// Writes one line an event: name, reason, and what else matters.
class EventLog : public RecordsetEvents {
  public:
    void WillMove(EventReasonEnum reason, EventStatusEnum& status, Recordset& rs) override;
    void MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum status,
                      Recordset& rs) override;
    void WillChangeField(int count, const std::vector<Field*>& fields, EventStatusEnum& status,
                         Recordset& rs) override;
    void FieldChangeComplete(int count, const std::vector<Field*>& fields, const Errore* error,
                             EventStatusEnum status, Recordset& rs) override;
    void WillChangeRecord(EventReasonEnum reason, int count, EventStatusEnum& status,
                          Recordset& rs) override;
    void RecordChangeComplete(EventReasonEnum reason, int count, const Errore* error,
                              EventStatusEnum status, Recordset& rs) override;
    void WillChangeRecordset(EventReasonEnum reason, EventStatusEnum& status,
                             Recordset& rs) override;
    void RecordsetChangeComplete(EventReasonEnum reason, const Errore* error,
                                 EventStatusEnum status, Recordset& rs) override;
    void EndOfRecordset(bool& moreData, EventStatusEnum& status, Recordset& rs) override;
    void FetchProgress(RowCount progress, RowCount most, EventStatusEnum status,
                       Recordset& rs) override;
    void FetchComplete(const Errore* error, EventStatusEnum status, Recordset& rs) override;
    void ViewChanged(Recordset& rs) override;

    std::vector<std::string> lines;
    std::string cancel; // the Will… event to refuse, "WillMove 13"
    std::function<void(const std::string&, Recordset&)> onEvent; // called with each line

  private:
    void note(const std::string& line, Recordset& rs, EventStatusEnum* status = nullptr);
};

// How the provider double's sources behave; a test's thread may change it while rows are read.
struct Script {
    std::atomic<RowCount> rows{0};    // how many there are
    std::atomic<RowCount> failAt{-1}; // fails before this row
    std::atomic<RowCount> holdAt{-1}; // waits before this row until go() or the source's cancel()
    std::atomic<int> millisecondsPerRow{0}; // a slow source
    std::atomic<int> live{0};               // sources that exist
    std::atomic<int> reading{0};            // threads inside read()

    void go(); // releases those that wait
    void wait(const std::atomic<bool>& cancelled);
    void wake();

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool released_ = false;
};

// While it lives, "Provider=Doppio" reads one column n of 0, 1, 2… by the script.
class ProviderDouble {
  public:
    explicit ProviderDouble(std::shared_ptr<Script> script);
    ~ProviderDouble();
    ProviderDouble(const ProviderDouble&) = delete;
    ProviderDouble& operator=(const ProviderDouble&) = delete;
};

RecordsetRef openDouble(int options);

// Runs the owner queue until done() or the time is up; what done() says.
bool deliverUntil(const std::function<bool()>& done, int milliseconds = 5000);

} // namespace norvel::adodb
