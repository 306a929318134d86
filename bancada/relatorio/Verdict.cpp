#include "bancada/relatorio/Verdict.h"

namespace bancada::relatorio
{
namespace
{

std::int64_t CountOf(const std::map<std::int64_t, std::int64_t>& counts, std::int64_t number)
{
    const auto found = counts.find(number);
    return found == counts.end() ? 0 : found->second;
}

} // namespace

std::int64_t Verdict::FaultsOfCoo(std::int64_t coo) const
{
    return CountOf(byCoo, coo);
}

std::int64_t Verdict::FaultsOfCrz(std::int64_t crz) const
{
    return CountOf(byCrz, crz);
}

} // namespace bancada::relatorio
