#include "platform/runtime/WholeFile.h"

#include "platform/runtime/Errore.h"

#include <fstream>
#include <system_error>

namespace norvel {

namespace {

std::string nameOf(const std::filesystem::path& path) {
    const auto utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

} // namespace

void writeWholeFile(const std::filesystem::path& path, std::string_view contents) {
    NewFile file(path);
    file.append(contents);
    file.commit(true);
}

std::string readWholeFile(const std::filesystem::path& path, std::size_t longest) {
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw Errore(53, "Impossibile trovare il file «" + nameOf(path) + "»");
    if (std::filesystem::is_directory(path, error))
        throw Errore(75, "«" + nameOf(path) + "» è una cartella");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Errore(70, "Autorizzazione negata: «" + nameOf(path) + "»");
    std::string contents(longest + 1, '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    if (file.bad()) throw Errore(75, "Errore di lettura del file «" + nameOf(path) + "»");
    contents.resize(static_cast<std::size_t>(file.gcount()));
    if (contents.size() > longest) throw Errore(7, "Il file «" + nameOf(path) + "» è troppo lungo");
    return contents;
}

} // namespace norvel
