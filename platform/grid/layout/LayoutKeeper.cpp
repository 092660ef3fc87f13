#include "platform/grid/layout/LayoutKeeper.h"

#include "platform/grid/layout/LayoutFile.h"

namespace norvel::grid {

void LayoutKeeper::LoadLayout() const {
    apply_(loadLayout(LayoutFileName, LayoutName));
}

void LayoutKeeper::AddLayout(const std::string& name) const {
    saveLayout(LayoutFileName, name, take_());
}

} // namespace norvel::grid
