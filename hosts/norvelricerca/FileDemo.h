// Where --crea-demo may write.
#pragma once

#include <cstdint>
#include <filesystem>

namespace norvel::hosts {

// True where the file is a sample database: exactly its three tables, clienti with its columns.
bool eDatiDemo(const std::filesystem::path& percorso);

// Makes the sample database, in place of nothing, of an empty file or of another sample database.
// Anything else of that name is somebody's: Errore 58 (the file exists already), and it stays as it
// is. Raises what creaDatiDemo raises.
void creaFileDemo(const std::filesystem::path& percorso, std::int64_t righe);

} // namespace norvel::hosts
