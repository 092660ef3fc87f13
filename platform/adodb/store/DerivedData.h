// What filters and sorts derive from the columns of a store and keep for the next run: folded
// texts, sort ranks.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <typeindex>
#include <utility>

namespace norvel::adodb {

// One object of each type T for each column, made on first use and shared by every recordset over
// the store. Any thread may ask. T grows with the store and guards itself.
class DerivedData {
  public:
    template <class T>
    std::shared_ptr<T> of(int column) {
        const std::scoped_lock lock(mutex_);
        std::shared_ptr<void>& kept = kept_[{std::type_index(typeid(T)), column}];
        if (!kept) kept = std::make_shared<T>();
        return std::static_pointer_cast<T>(kept);
    }
    // Drops all that was derived from a column: a value of it has changed.
    void forget(int column) {
        const std::scoped_lock lock(mutex_);
        std::erase_if(kept_, [&](const auto& entry) { return entry.first.second == column; });
    }

  private:
    std::mutex mutex_;
    std::map<std::pair<std::type_index, int>, std::shared_ptr<void>> kept_;
};

} // namespace norvel::adodb
