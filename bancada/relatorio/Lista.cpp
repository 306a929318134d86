#include "bancada/relatorio/Lista.h"

#include "bancada/relatorio/Texto.h"

namespace bancada::relatorio
{
namespace
{

class Escritor final : public Visitante
{
  public:
    explicit Escritor(std::ostream& saida) : m_saida(saida) {}

    void abreDia(const Dia& dia) override
    {
        m_saida << (m_vazio ? "" : "\n") << "Z " << comZeros(dia.crz, 4);
        m_vazio = false;
        if (dia.reducao) {
            m_saida << "  day " << utf8(caracteres(formataDataHora(dia.reducao->movimento)))
                    << "  closed " << utf8(caracteres(formataDataHora(dia.reducao->emissao)))
                    << "  gross sales " << textoBr(dia.reducao->vb) << "  grand total "
                    << textoBr(dia.reducao->gt);
        } else {
            m_saida << "  not closed";
        }
        m_saida << '\n';
    }

    void documento(Documento& d) override
    {
        const bool fiscal = d.tipo == TipoDocumento::CUPOM_FISCAL;
        m_saida << "  " << comZeros(d.coo, 6) << "  "
                << aEsquerda(corta(formataDataHora(d.inicio), 19), 19) << "  "
                << aEsquerda(corta(titulo(d), 29), 29) << "  " << (fiscal ? "CCF " : "GNF ")
                << comZeros(fiscal ? d.ccf : d.gnf, 6);
        if (d.cupom() || d.reducao) {
            m_saida << "  " << aDireita(textoBr(d.total), 14);
        }
        if (d.cancelado) {
            m_saida << "  CANCELADO";
        } else if (fiscal && !d.fechamentoRegistrado()) {
            m_saida << "  no closing";
        }
        m_saida << '\n';
    }

    void fechaDia(const Dia&) override {}

    bool vazio() const { return m_vazio; }

  private:
    std::ostream& m_saida;
    bool m_vazio = true;
};

} // namespace

void escreveLista(Leitor& leitor, std::ostream& saida)
{
    Escritor escritor(saida);
    leitor.percorre(escritor);
    if (escritor.vazio()) {
        saida << "No documents.\n";
    }
}

} // namespace bancada::relatorio
