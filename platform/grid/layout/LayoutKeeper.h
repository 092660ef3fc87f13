// A grid's way to its layout files.
#pragma once

#include "platform/grid/layout/Layout.h"

#include <functional>
#include <string>

namespace norvel::grid {

// A program sets the names, then loads or adds.
class NR_API LayoutKeeper {
  public:
    // take: the grid's present layout. apply: gives the grid a layout.
    LayoutKeeper(std::function<Layout()> take, std::function<void(const Layout&)> apply)
        : take_(std::move(take)), apply_(std::move(apply)) {}

    std::string LayoutName;     // to load
    std::string LayoutFileName; // in the host's notation

    // Replaces the present layout; what loadLayout raises, and then the grid stays as it was.
    void LoadLayout() const;
    // Stores the present layout under this name; what saveLayout raises.
    void AddLayout(const std::string& name) const;
    // The same without a file: what the grid has, and giving it that of another grid.
    Layout Present() const { return take_(); }
    void Apply(const Layout& layout) const { apply_(layout); }

  private:
    std::function<Layout()> take_;
    std::function<void(const Layout&)> apply_;
};

} // namespace norvel::grid
