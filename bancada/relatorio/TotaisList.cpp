#include "bancada/relatorio/TotaisList.h"

#include "bancada/Messages.h"
#include "bancada/relatorio/Chart.h"
#include "bancada/relatorio/DisplayText.h"

#include <string>

namespace bancada::relatorio
{
namespace
{

constexpr std::size_t NAME_COLUMNS = 24;
constexpr std::size_t COUNT_COLUMNS = 12;
constexpr std::size_t AMOUNT_COLUMNS = 18;

std::string Name(const std::string& text)
{
    return AlignLeft(Cut(Disarmed(text), NAME_COLUMNS), NAME_COLUMNS);
}

std::string Count(const std::string& text)
{
    return AlignRight(text, COUNT_COLUMNS);
}

std::string Count(std::int64_t count)
{
    return Count(std::to_string(count));
}

std::string Sum(const std::string& text)
{
    return AlignRight(text, AMOUNT_COLUMNS);
}

} // namespace

std::string AliquotaName(const TotalAliquota& total)
{
    return IsBlank(total.aliquota.Shown()) ? std::string(Tr("(no tax code)"))
                                           : total.aliquota.Shown();
}

void WriteTotaisList(const Totais& totais, std::ostream& out)
{
    out << Name(Tr("By day")) << Count(Tr("Receipts")) << Count(Tr("Cancelled"))
        << Count(Tr("Unreadable")) << Sum(Tr("Sold, R$")) << Sum(Tr("Gross sales, R$")) << '\n';
    for (const TotalDia& dia : totais.dias) {
        out << Name("Z " + WithZeros(dia.crz, 4) + "  " +
                    FormatDateTime(dia.movimento.Shown().substr(0, 10)))
            << Count(dia.cupons) << Count(dia.cancelados) << Count(dia.unreadable)
            << Sum(AmountText(dia.vendido))
            << Sum(dia.fechado ? AmountText(dia.vb) : Tr("not closed")) << '\n';
    }

    out << '\n' << Name(Tr("By tax code")) << Count(Tr("Items")) << Sum("R$") << '\n';
    for (const TotalAliquota& total : totais.aliquotas) {
        out << Name(AliquotaName(total)) << Count(total.itens) << Sum(AmountText(total.valor))
            << '\n';
    }
    if (!totais.foraDosItens.IsZero()) {
        out << Name(Tr("In no item")) << Count("") << Sum(AmountText(totais.foraDosItens)) << '\n';
    }
    if (totais.unreadable > 0) {
        out << TrCount("%1 amount that cannot be read is in no sum here",
                       "%1 amounts that cannot be read are in no sum here", totais.unreadable)
            << '\n';
    }

    out << '\n' << Name(Tr("By payment means")) << Count(Tr("Payments")) << Sum("R$") << '\n';
    for (const VendaMeio& meio : totais.meios.meios) {
        out << Name(NameOrNumber(meio)) << Count(meio.pagamentos) << Sum(AmountText(meio.valor))
            << '\n';
    }
    if (totais.meios.unreadable > 0) {
        out << TrCount("%1 payment whose amount cannot be read is in no sum here",
                       "%1 payments whose amount cannot be read are in no sum here",
                       totais.meios.unreadable)
            << '\n';
    }
    out << Tr("Change of R$ %1 is not taken off.", {AmountText(totais.troco)}) << '\n';
}

} // namespace bancada::relatorio
