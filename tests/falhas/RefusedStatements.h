// The statements that the engine refused to the module, seen where the module calls the engine.
#pragma once

#include <string>
#include <vector>

namespace falhas
{

// In their order, since the list was cleared last.
std::vector<std::string>& RefusedStatements();

} // namespace falhas
