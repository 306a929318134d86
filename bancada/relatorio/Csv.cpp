#include "bancada/relatorio/Csv.h"

#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/Report.h"
#include "bancada/relatorio/Totais.h"

#include <algorithm>
#include <string>

namespace bancada::relatorio
{
namespace
{

// A line, column by column.
class CsvLine
{
  public:
    CsvLine& Add(const std::string& text)
    {
        m_line += m_line.empty() ? "" : ";";
        const bool quoted = text.find_first_of(";\"") != std::string::npos;
        m_line += quoted ? "\"" : "";
        for (const char c : text) {
            m_line += c == '"' ? "\"\"" : std::string(1, c);
        }
        m_line += quoted ? "\"" : "";
        return *this;
    }

    CsvLine& Add(const Text& text)
    {
        const std::string shown = Disarmed(text.Shown());
        const bool reckoned =
            !shown.empty() && std::string("=+-@").find(shown[0]) != std::string::npos;
        return Add(reckoned ? "'" + shown : shown);
    }

    CsvLine& Add(const Integer& number)
    {
        return number.IsKnown() ? Add(std::to_string(number.Value())) : Add(Text(number.Raw()));
    }

    CsvLine& Add(const Flag& flag)
    {
        return flag.IsKnown() ? Add(std::string(flag.IsSet() ? "S" : "N")) : Add(Text(flag.Raw()));
    }

    CsvLine& Add(const Amount& amount)
    {
        if (!amount.IsKnown()) {
            return Add(Text(amount.Raw()));
        }
        std::string text = PointText(amount);
        std::replace(text.begin(), text.end(), '.', ',');
        return Add(text);
    }

    void Write(std::ostream& out) const { out << m_line << "\r\n"; }

  private:
    std::string m_line;
};

constexpr const char* HEADINGS[] = {
    "arquivo;jornada;documento;coo;ccf;gnf;inicio;fim;cancelado;cpf_cnpj;nome;subtotal;desconto;"
    "acrescimo;total;troco",
    "arquivo;jornada;coo;item;codigo;descricao;quantidade;unidade;valor_unitario;aliquota;desconto;"
    "acrescimo;valor_liquido;cancelado",
    "arquivo;jornada;coo;meio;nome;valor;parcelas;estornado;valor_estornado",
    "arquivo;crz;coo;gnf;cro;emissao;movimento;gt;vb;base_icms;icms;base_issqn;issqn",
    "arquivo;crz;movimento;cupons;vendido;cancelados;ilegiveis;vb",
    "arquivo;aliquota;itens;valor",
    "arquivo;meio;nome;pagamentos;valor",
};

class CsvWriter final : public JornadaVisitor
{
  public:
    CsvWriter(Report& report, CsvTable table, std::ostream& out)
        : m_report(report), m_table(table), m_file(report.Database().Path()), m_out(out)
    {
    }

    void BeginJornada(const Jornada& jornada) override { m_crz = jornada.crz; }
    void EndJornada(const Jornada&) override {}

    void VisitDocumento(Documento& d) override
    {
        switch (m_table) {
        case CsvTable::DOCUMENTOS:
            WriteDocumento(d);
            break;
        case CsvTable::ITENS:
            m_report.Documentos().Complete(d);
            for (const Item& item : d.itens) {
                WriteItem(d, item);
            }
            break;
        case CsvTable::PAGAMENTOS:
            m_report.Documentos().Complete(d);
            for (const Pagamento& pagamento : d.pagamentos) {
                WritePagamento(d, pagamento);
            }
            break;
        case CsvTable::REDUCOES:
            if (d.reducao) {
                WriteReducao(*d.reducao);
            }
            break;
        case CsvTable::DIAS:
        case CsvTable::ALIQUOTAS:
        case CsvTable::MEIOS:
            break;
        }
    }

  private:
    CsvLine Begin(const Integer& crz) const { return CsvLine().Add(m_file).Add(crz); }

    // Only a receipt has amounts, and only a fiscal one a CCF and change.
    void WriteDocumento(const Documento& d)
    {
        const bool fiscal = d.tipo == TipoDocumento::CUPOM_FISCAL;
        CsvLine line = Begin(m_crz);
        line.Add(Text(Title(d))).Add(d.coo);
        fiscal ? line.Add(d.ccf).Add(std::string()) : line.Add(std::string()).Add(d.gnf);
        line.Add(d.inicio).Add(d.fim);
        if (d.IsCupom()) {
            line.Add(d.cancelado).Add(d.cpfCnpj).Add(d.nome).Add(d.subtotal);
            line.Add(d.desconto.valor).Add(d.acrescimo.valor).Add(d.total);
        } else {
            for (int column = 0; column < 7; ++column) {
                line.Add(std::string());
            }
        }
        fiscal ? line.Add(d.troco) : line.Add(std::string());
        line.Write(m_out);
    }

    void WriteItem(const Documento& d, const Item& item)
    {
        CsvLine line = Begin(m_crz);
        line.Add(d.coo).Add(item.numero).Add(item.codigo).Add(item.descricao);
        if (d.tipo == TipoDocumento::CUPOM_FISCAL) {
            line.Add(item.quantidade).Add(item.unidade).Add(item.valorUnitario).Add(item.aliquota);
        } else {
            line.Add(std::string()).Add(std::string()).Add(std::string()).Add(std::string());
        }
        line.Add(item.desconto.valor).Add(item.acrescimo.valor).Add(item.liquido);
        line.Add(item.cancelado).Write(m_out);
    }

    void WritePagamento(const Documento& d, const Pagamento& pagamento)
    {
        Begin(m_crz)
            .Add(d.coo)
            .Add(pagamento.meio)
            .Add(pagamento.nome)
            .Add(pagamento.valor)
            .Add(pagamento.parcelas)
            .Add(pagamento.estornado)
            .Add(pagamento.valorEstornado)
            .Write(m_out);
    }

    void WriteReducao(const ReducaoZ& z)
    {
        Begin(z.crz)
            .Add(z.coo)
            .Add(z.gnf)
            .Add(z.cro)
            .Add(z.emissao)
            .Add(z.movimento)
            .Add(z.gt)
            .Add(z.vb)
            .Add(z.icms.base)
            .Add(z.icms.imposto)
            .Add(z.issqn.base)
            .Add(z.issqn.imposto)
            .Write(m_out);
    }

    Report& m_report;
    CsvTable m_table;
    Text m_file;
    std::ostream& m_out;
    Integer m_crz;
};

void WriteTotais(Report& report, CsvTable table, std::ostream& out)
{
    const Text file = report.Database().Path();
    const Totais totais = ReadTotais(report);
    if (table == CsvTable::DIAS) {
        for (const TotalDia& dia : totais.dias) {
            CsvLine line;
            line.Add(file).Add(dia.crz).Add(dia.movimento).Add(Integer(dia.cupons));
            line.Add(dia.vendido).Add(Integer(dia.cancelados)).Add(Integer(dia.unreadable));
            dia.fechado ? line.Add(dia.vb) : line.Add(std::string());
            line.Write(out);
        }
    } else if (table == CsvTable::ALIQUOTAS) {
        for (const TotalAliquota& total : totais.aliquotas) {
            CsvLine line;
            line.Add(file).Add(total.aliquota).Add(Integer(total.itens)).Add(total.valor);
            line.Write(out);
        }
        if (!totais.foraDosItens.IsZero()) {
            CsvLine line;
            line.Add(file).Add(std::string("fora_dos_itens")).Add(std::string());
            line.Add(totais.foraDosItens).Write(out);
        }
    } else {
        for (const VendaMeio& meio : totais.meios.meios) {
            CsvLine line;
            line.Add(file).Add(meio.indice).Add(meio.nome).Add(Integer(meio.pagamentos));
            line.Add(meio.valor).Write(out);
        }
    }
}

bool IsTotals(CsvTable table)
{
    return table == CsvTable::DIAS || table == CsvTable::ALIQUOTAS || table == CsvTable::MEIOS;
}

} // namespace

void WriteCsv(const std::vector<const leitura::DatabaseReading*>& databases, CsvTable table,
              const Filtro& filtro, std::ostream& out)
{
    out << HEADINGS[static_cast<std::size_t>(table)] << "\r\n";
    for (const leitura::DatabaseReading* database : databases) {
        Report report(*database, {}, filtro);
        if (IsTotals(table)) {
            WriteTotais(report, table, out);
        } else {
            CsvWriter writer(report, table, out);
            report.Walk(writer);
        }
        database->ConfirmUnchanged();
    }
}

} // namespace bancada::relatorio
