// A store of every kind of column, and filters for it, both by chance.
#pragma once

#include "platform/adodb/filter/FilterProgram.h"
#include "platform/adodb/store/ColumnStore.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace norvel::adodb {

// Characters that case, combining marks and their bytes make difficult, and bytes that are none;
// the first few are plain.
const std::vector<std::string>& oddPieces();

std::string inQuotes(const std::string& text);
std::shared_ptr<const FilterProgram> compiled(const ColumnStore& store, const std::string& filter);

// Several row groups; some hold NULLs, some values of other types than their column's.
class Mixture {
  public:
    explicit Mixture(unsigned seed);

    // One condition that its column does not refuse.
    std::string clause();
    // A number's notation, or True or False.
    std::string literal();
    // One that a group of this number may hold in the column.
    Variant value(int column, int group);

    std::mt19937 random;
    std::shared_ptr<ColumnStore> store;
    std::vector<RowGroup*> groups; // the store's

  private:
    void addGroup(std::size_t rows, int group);
    Variant wide(std::int32_t number);
    Variant real(std::int32_t number);
    Variant odd();
};

} // namespace norvel::adodb
