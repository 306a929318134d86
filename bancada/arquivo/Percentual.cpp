#include "bancada/arquivo/Percentual.h"

namespace bancada::arquivo
{
namespace
{

constexpr std::int64_t HUNDRED_PERCENT = 10000; // hundredths of a percent
constexpr std::int64_t MAX_PERCENTUAL = 99999;

} // namespace

std::int64_t PercentualOf(std::int64_t base, std::int64_t valor)
{
    if (base <= 0) {
        return 0;
    }
    std::int64_t scaled = 0;
    if (__builtin_mul_overflow(valor, HUNDRED_PERCENT, &scaled)) {
        return 0;
    }
    const std::int64_t percentual = (scaled + base - 1) / base;
    if (percentual < 1 || percentual > MAX_PERCENTUAL ||
        __builtin_mul_overflow(base, percentual, &scaled) || scaled / HUNDRED_PERCENT != valor) {
        return 0;
    }
    return percentual;
}

} // namespace bancada::arquivo
