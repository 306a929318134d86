#include "bancada/conferencia/Texts.h"

#include "bancada/Messages.h"

namespace bancada::conferencia
{

std::string Money(const leitura::Amount& amount)
{
    return amount.IsKnown() ? PointText(amount) : amount.Raw();
}

std::string Number(const leitura::Integer& integer)
{
    return integer.IsKnown() ? std::to_string(integer.Value()) : integer.Raw();
}

std::string Coo(const leitura::Integer& coo)
{
    return "COO " + Number(coo);
}

std::string Crz(const leitura::Integer& crz)
{
    return "CRZ " + Number(crz);
}

std::string RangeText(std::int64_t first, std::int64_t last)
{
    return first == last ? std::to_string(first)
                         : Tr("%1 to %2", {std::to_string(first), std::to_string(last)});
}

std::string OneLine(std::string text)
{
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            c = '?';
        }
    }
    return text;
}

} // namespace bancada::conferencia
