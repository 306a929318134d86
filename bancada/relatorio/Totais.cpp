#include "bancada/relatorio/Totais.h"

#include <algorithm>
#include <string>
#include <utility>

namespace bancada::relatorio
{
namespace
{

class TotaisWalk final : public JornadaVisitor
{
  public:
    TotaisWalk(Report& report, std::optional<std::int64_t> crz)
        : m_report(report), m_crz(crz), m_collector(report.Names())
    {
    }

    void BeginJornada(const Jornada& jornada) override
    {
        m_inside = !m_crz || (jornada.crz.IsKnown() && jornada.crz.Value() == *m_crz);
        if (m_inside) {
            m_collector.BeginJornada(jornada);
        }
    }

    void VisitDocumento(Documento& documento) override
    {
        if (m_inside) {
            m_report.Documentos().Complete(documento);
            m_collector.VisitDocumento(documento);
        }
    }

    void EndJornada(const Jornada&) override {}

    [[nodiscard]] Totais Sums() const { return m_collector.Sums(); }

  private:
    Report& m_report;
    std::optional<std::int64_t> m_crz;
    TotaisCollector m_collector;
    bool m_inside = false;
};

} // namespace

TotaisCollector::TotaisCollector(Cadastro& cadastro) : m_cadastro(cadastro)
{
    m_sums.horas.horas.resize(24);
}

void TotaisCollector::BeginJornada(const Jornada& jornada)
{
    TotalDia& dia = m_sums.dias.emplace_back();
    dia.crz = jornada.crz;
    dia.fechado = jornada.reducao.has_value();
    if (jornada.reducao) {
        dia.movimento = jornada.reducao->movimento;
        dia.vb = jornada.reducao->vb;
    }
}

void TotaisCollector::VisitDocumento(Documento& d)
{
    TotalDia& dia = m_sums.dias.back();
    if (!dia.fechado && dia.movimento.Shown().empty()) {
        dia.movimento = d.inicio;
    }
    if (!d.IsCupom()) {
        return;
    }
    if (d.cancelado.IsSet()) {
        ++dia.cancelados;
        return;
    }
    const bool isFiscal = d.tipo == TipoDocumento::CUPOM_FISCAL;
    if (isFiscal) {
        AddCupom(d);
    }
    if (d.rowsUncertain && !m_uncertain.insert({d.tipo, d.coo.Value()}).second) {
        return;
    }
    AddPagamentos(d);
    if (isFiscal) {
        AddItens(d);
    }
}

void TotaisCollector::AddCupom(const Documento& d)
{
    TotalDia& dia = m_sums.dias.back();
    if (d.total.IsKnown()) {
        ++dia.cupons;
        dia.vendido = dia.vendido + d.total;
    } else {
        ++dia.unreadable;
    }
    const std::optional<std::size_t> hora = HourOf(d.inicio);
    if (hora && d.total.IsKnown()) {
        VendaHora& venda = m_sums.horas.horas[*hora];
        ++venda.cupons;
        venda.valor = venda.valor + d.total;
    } else {
        ++m_sums.horas.unreadable;
    }
    m_sums.troco = d.troco.IsKnown() ? m_sums.troco + d.troco : m_sums.troco;
}

void TotaisCollector::AddItens(const Documento& d)
{
    if (!d.HasFechamento() || d.itens.empty()) {
        return;
    }
    Amount itens{0, 3};
    for (const Item& item : d.itens) {
        if (item.cancelado.IsSet()) {
            continue;
        }
        if (!item.liquido.IsKnown()) {
            ++m_sums.unreadable;
            continue;
        }
        TotalAliquota& aliquota = m_aliquotas[item.aliquota.Shown()];
        aliquota.aliquota = item.aliquota;
        ++aliquota.itens;
        aliquota.valor = aliquota.valor + item.liquido;
        itens = itens + item.liquido;
    }
    if (d.total.IsKnown()) {
        m_sums.foraDosItens = m_sums.foraDosItens + (d.total - itens);
    } else {
        ++m_sums.unreadable;
    }
}

void TotaisCollector::AddPagamentos(const Documento& d)
{
    for (const Pagamento& pagamento : d.pagamentos) {
        const Amount saldo = pagamento.Saldo();
        if (!saldo.IsKnown()) {
            ++m_sums.meios.unreadable;
        } else if (!saldo.IsZero()) {
            VendaMeio& venda = m_meios[{pagamento.meio.Value(), pagamento.meio.Raw()}];
            venda.indice = pagamento.meio;
            ++venda.pagamentos;
            venda.valor = venda.valor + saldo;
        }
    }
}

Totais TotaisCollector::Sums() const
{
    Totais sums = m_sums;
    for (const auto& [codigo, aliquota] : m_aliquotas) {
        sums.aliquotas.push_back(aliquota);
    }
    for (const auto& [indice, venda] : m_meios) {
        sums.meios.meios.push_back(venda);
        sums.meios.meios.back().nome = m_cadastro.FindMeio(venda.indice);
    }
    return sums;
}

void Add(Totais& sum, const Totais& other)
{
    sum.dias.insert(sum.dias.end(), other.dias.begin(), other.dias.end());
    for (const TotalAliquota& one : other.aliquotas) {
        const auto at = std::lower_bound(sum.aliquotas.begin(), sum.aliquotas.end(), one,
                                         [](const TotalAliquota& a, const TotalAliquota& b) {
                                             return a.aliquota.Shown() < b.aliquota.Shown();
                                         });
        if (at == sum.aliquotas.end() || at->aliquota.Shown() != one.aliquota.Shown()) {
            sum.aliquotas.insert(at, one);
        } else {
            at->itens += one.itens;
            at->valor = at->valor + one.valor;
        }
    }
    sum.foraDosItens = sum.foraDosItens + other.foraDosItens;
    sum.unreadable += other.unreadable;
    Add(sum.horas, other.horas);
    Add(sum.meios, other.meios);
    sum.troco = sum.troco + other.troco;
}

Totais ReadTotais(Report& report, std::optional<std::int64_t> crz)
{
    TotaisWalk walk(report, crz);
    report.Walk(walk);
    return walk.Sums();
}

} // namespace bancada::relatorio
