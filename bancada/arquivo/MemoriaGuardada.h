// What a register's memory file tells that its database does not.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace bancada::arquivo
{

struct MemoriaGuardada {
    std::map<std::string, std::int64_t> contadores; // by the counter's name in the file: "coo"
    std::int64_t gt = 0;                            // grand total, cents
    std::map<std::int64_t, std::string> naoFiscais; // names of the non-fiscal totalizers by number
    std::string versaoSb;
};

// Of a file that holds the state before and after a command, the one that `number`, which the
// database carries, says that holds. Throws Unusable, with the path, for a file that cannot be
// read, is no memory file or belongs to another database.
[[nodiscard]] MemoriaGuardada ReadMemoriaGuardada(const std::string& path, std::int64_t number);

} // namespace bancada::arquivo
