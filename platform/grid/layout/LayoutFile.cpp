#include "platform/grid/layout/LayoutFile.h"

#include "platform/grid/layout/LayoutText.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/WholeFile.h"

#include <algorithm>

namespace norvel::grid {

namespace {

constexpr std::size_t longest = std::size_t{16} * 1024 * 1024; // bytes; a layout has a few thousand
constexpr int noFile = 53;
constexpr int noLayoutFile = 321;

std::vector<NamedLayout> readFile(const std::filesystem::path& path) {
    return readLayoutText(readWholeFile(path, longest));
}

auto named(std::vector<NamedLayout>& layouts, const std::string& name) {
    return std::ranges::find_if(
        layouts, [&](const NamedLayout& each) { return equalsText(each.Name, name); });
}

} // namespace

Layout loadLayout(const std::string& path, const std::string& name) {
    auto layouts = readFile(percorsoSistema(path));
    const auto found = named(layouts, name);
    if (found == layouts.end())
        throw Errore(5, "Il file non contiene la disposizione «" + name + "»");
    return std::move(found->Contents);
}

void saveLayout(const std::string& path, const std::string& name, const Layout& layout) {
    const auto file = percorsoSistema(path);
    std::vector<NamedLayout> layouts;
    try {
        layouts = readFile(file);
    } catch (const Errore& error) {
        // None yet, or no layout file: written over. One that cannot be read just now (another
        // program has it, say) still holds the other layouts.
        if (error.numero() != noFile && error.numero() != noLayoutFile) throw;
    }
    const auto found = named(layouts, name);
    if (found == layouts.end())
        layouts.push_back({name, layout});
    else
        found->Contents = layout;
    writeWholeFile(file, layoutText(layouts));
}

} // namespace norvel::grid
