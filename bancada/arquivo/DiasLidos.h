// The receipts of a file, each as its day's totals say that it was.
#pragma once

#include "bancada/arquivo/CupomLido.h"

#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace bancada::arquivo
{

struct Programacao;

// The records of a receipt do not always tell all of it: whether its items' surcharges hold a share
// of its own, which of them were cancelled before all were. What a Z reduction tells of the day's
// discounts, surcharges and cancellations then decides. Holds one day's decisions.
class DiasLidos
{
  public:
    // Both live as long as it.
    DiasLidos(ArquivoLido& arquivo, const Programacao& programacao)
        : m_arquivo(arquivo), m_programacao(programacao)
    {
    }

    // The fiscal receipt at a place of ArquivoLido::Documentos, as it was; the likeliest where the
    // day's totals are not told or are none that its receipts can come to. Throws as
    // ArquivoLido::Read.
    CupomLido Read(std::size_t at);

  private:
    // Discounts, surcharges and cancellations, of ICMS and of ISSQN each.
    using Somas = std::array<std::int64_t, 6>;

    std::vector<CupomLido> InterpretacoesAt(std::size_t at);
    Somas SomasOf(const CupomLido& cupom) const;
    Somas SomasDoDia() const;
    bool EndsDay(std::size_t at) const;
    // Makes the day of a document the one at hand, undecided.
    void FindDay(std::size_t at);
    // Leaves the decisions of the day at hand.
    void Decide();
    // What a receipt may be, each with every tax that its totalizers may be of.
    std::vector<CupomLido> WithTaxes(const std::vector<CupomLido>& cupons) const;

    ArquivoLido& m_arquivo;
    const Programacao& m_programacao;
    std::size_t m_begin = 0; // of the day at hand
    std::size_t m_end = 0;
    bool m_decided = false;
    std::int64_t m_crz = 0;                        // of its Z reduction; 0: none
    std::map<std::size_t, std::size_t> m_decisoes; // which interpretation, by the receipt's place
};

} // namespace bancada::arquivo
