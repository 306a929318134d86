// The counters of the documents. Every document takes the next COO; fiscal receipts also the next
// CCF, non-fiscal documents the next GNF. Some documents leave no row on purpose:
//  - the cancellation of a closed fiscal receipt takes a COO; the receipt's row says that it is
//    cancelled;
//  - a reprint of the detail tape takes a COO; it has its row in fita_detalhe;
//  - the reversal of a payment on a closed receipt takes a COO and a GNF; the payment that it made
//    carries that GNF;
//  - the reversal of a voucher takes a COO and a GNF; only the jump of both shows it, after the
//    voucher and before the next receipt.
// Any other number without a row is a fault.
#include "bancada/conferencia/Contexto.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <vector>

namespace bancada
{

namespace
{

struct Documento {
    bool fiscal = false;
    std::int64_t coo = 0;
    std::int64_t contador = 0; // CCF of a fiscal receipt, GNF of another document
    std::int64_t crz = 0;
    std::string hora;
    std::string tipo; // of a document that is not a fiscal receipt
    // A fiscal receipt that was cancelled after its closing, as far as its row tells.
    bool canceladoFechado = false;
};

// Documents without a row, not explained yet. What took them shows in the next fiscal receipt's CCF
// and the next other document's GNF.
struct Lacuna {
    std::int64_t primeiro;
    std::int64_t quantos;
    std::int64_t podemEstornar; // how many of them can be reversals of the last receipt's vouchers
    bool viuCcf = false;
    bool viuGnf = false;
};

std::int64_t Seguinte(std::int64_t contador, std::int64_t passos)
{
    return (contador - 1 + passos) % MAX_CONTADOR + 1;
}

// "17" or "17 to 19".
std::string Numeros(std::int64_t primeiro, std::int64_t quantos)
{
    const std::string texto = std::to_string(primeiro);
    return quantos == 1 ? texto : texto + " to " + std::to_string(Seguinte(primeiro, quantos - 1));
}

bool TomaGnf(const std::string& tipo)
{
    return tipo == "CN" || tipo == "CC" || tipo == "RG" || tipo == "NC";
}

class Sequencias
{
  public:
    explicit Sequencias(Contexto& contexto)
        : m_contexto(contexto),
          m_fiscais(contexto.Db(),
                    "SELECT cont_coo, cont_ccf, cont_crz, data_hora_emissao, id_cancelado = 'S' AND"
                    " (trim(assinatura_documento) <> '' OR EXISTS (SELECT 1 FROM pagamento_cupom p"
                    " WHERE p.cont_coo = cupom_fiscal.cont_coo)) FROM cupom_fiscal ORDER BY rowid"),
          m_outros(contexto.Db(), "SELECT cont_coo, cont_gnf, cont_crz, data_hora_inicio_emissao,"
                                  " id_tipo_documento FROM outros_documentos ORDER BY rowid"),
          m_fitas(contexto.Db(), "SELECT data_hora_emissao FROM fita_detalhe ORDER BY rowid")
    {
    }

    void Confere()
    {
        AvancaFiscal();
        AvancaOutro();
        m_temFita = m_fitas.Avanca();
        while (m_temFiscal || m_temOutro) {
            const bool fiscal = ProximoEhFiscal();
            ConfereDocumento(fiscal ? m_fiscal : m_outro);
            if (fiscal) {
                AvancaFiscal();
            } else {
                AvancaOutro();
            }
        }
        Encerra();
    }

  private:
    void AvancaFiscal()
    {
        m_temFiscal = m_fiscais.Avanca();
        if (m_temFiscal) {
            m_fiscal = {true,
                        m_fiscais.Inteiro(0),
                        m_fiscais.Inteiro(1),
                        m_fiscais.Inteiro(2),
                        m_fiscais.Texto(3),
                        std::string(),
                        m_fiscais.Inteiro(4) != 0};
        }
    }

    void AvancaOutro()
    {
        m_temOutro = m_outros.Avanca();
        if (m_temOutro) {
            m_outro = {false,
                       m_outros.Inteiro(0),
                       m_outros.Inteiro(1),
                       m_outros.Inteiro(2),
                       m_outros.Texto(3),
                       m_outros.Texto(4),
                       false};
        }
    }

    // Each table holds its documents in the order of issue. Of the two next ones the successor
    // comes first; where neither is, or both are, the earlier one.
    bool ProximoEhFiscal() const
    {
        if (!m_temFiscal || !m_temOutro) {
            return m_temFiscal;
        }
        const std::int64_t fiscal = Avanco(m_coo, m_fiscal.coo);
        const std::int64_t outro = Avanco(m_coo, m_outro.coo);
        if (m_temCoo && (fiscal == 1) != (outro == 1)) {
            return fiscal == 1;
        }
        if (m_fiscal.hora != m_outro.hora) {
            return m_fiscal.hora < m_outro.hora;
        }
        return m_temCoo ? fiscal < outro : m_fiscal.coo < m_outro.coo;
    }

    void ConfereDocumento(const Documento& documento)
    {
        ConfereCoo(documento);
        if (documento.fiscal) {
            ConfereCcf(documento);
        } else {
            ConfereGnf(documento);
            ConfereCrz(documento);
        }
        for (Lacuna& lacuna : m_lacunas) {
            (documento.fiscal ? lacuna.viuCcf : lacuna.viuGnf) = true;
        }
        while (!m_lacunas.empty() && m_lacunas.front().viuCcf && m_lacunas.front().viuGnf) {
            RelataAusente(m_lacunas.front());
            m_lacunas.pop_front();
        }
        // Only the receipt issued last can be cancelled, and only on its day.
        if (documento.fiscal) {
            m_cancelamento = documento.canceladoFechado;
        } else if (documento.tipo == "CN" || documento.tipo == "RZ") {
            m_cancelamento = false;
        }
        if (documento.fiscal || documento.tipo == "CN" || documento.tipo == "RZ") {
            m_vouchers = 0;
        } else if (documento.tipo == "CC") {
            ++m_vouchers;
        }
    }

    void ConfereCoo(const Documento& documento)
    {
        const std::int64_t reimpressoes = ReimpressoesAte(documento.hora);
        if (!m_temCoo) {
            m_temCoo = true;
            m_coo = documento.coo;
            return;
        }
        const std::int64_t avanco = Avanco(m_coo, documento.coo);
        if (avanco == 0 || avanco > MAX_CONTADOR / 2) {
            m_contexto.Relata("coo-repetido", Coo(documento.coo), "comes after " + Coo(m_coo),
                              documento.coo, 0);
            return;
        }
        std::int64_t faltam = avanco - 1;
        const std::int64_t porReimpressao = std::min(faltam, reimpressoes);
        faltam -= porReimpressao;
        m_fitasPendentes.erase(m_fitasPendentes.begin(),
                               m_fitasPendentes.begin() +
                                   static_cast<std::ptrdiff_t>(porReimpressao));
        if (faltam > 0 && m_cancelamento) {
            --faltam;
            m_cancelamento = false;
        }
        if (faltam > 0) {
            const std::int64_t podemEstornar = std::min(faltam, m_vouchers);
            m_vouchers -= podemEstornar;
            m_lacunas.push_back({Seguinte(m_coo, 1), faltam, podemEstornar});
        }
        m_coo = documento.coo;
    }

    // How many reprints were made since the last document, up to this time.
    std::int64_t ReimpressoesAte(const std::string& hora)
    {
        // Those of an earlier second than the last document stand before it.
        while (!m_fitasPendentes.empty() && m_fitasPendentes.front() < m_hora) {
            m_fitasPendentes.pop_front();
        }
        while (m_temFita && m_fitas.Texto(0) <= hora) {
            m_fitasPendentes.push_back(m_fitas.Texto(0));
            m_temFita = m_fitas.Avanca();
        }
        m_hora = hora;
        return static_cast<std::int64_t>(m_fitasPendentes.size());
    }

    void ConfereCcf(const Documento& documento)
    {
        const std::string chave = "CCF ";
        if (m_temCcf) {
            const std::int64_t avanco = Avanco(m_ccf, documento.contador);
            if (avanco == 0 || avanco > MAX_CONTADOR / 2) {
                m_contexto.Relata("ccf-repetido", chave + std::to_string(documento.contador),
                                  Coo(documento.coo) + " comes after CCF " + std::to_string(m_ccf),
                                  documento.coo, 0);
                return;
            }
            if (avanco > 1) {
                const std::int64_t primeiro = Seguinte(m_ccf, 1);
                bool explicado = m_contexto.Log() != nullptr;
                for (std::int64_t i = 0; explicado && i < avanco - 1; ++i) {
                    explicado = m_contexto.Log()->HasCcf(Seguinte(primeiro, i));
                }
                m_contexto.Relata("ccf-ausente", chave + Numeros(primeiro, avanco - 1),
                                  "no fiscal receipt" + Onde(avanco - 1, false) + " before " +
                                      Coo(documento.coo),
                                  explicado);
                Consome(avanco - 1, false);
            }
        }
        m_temCcf = true;
        m_ccf = documento.contador;
    }

    void ConfereGnf(const Documento& documento)
    {
        const std::int64_t proprio = TomaGnf(documento.tipo) ? 1 : 0;
        if (m_temGnf) {
            const std::int64_t avanco = Avanco(m_gnf, documento.contador);
            if (avanco < proprio || avanco > MAX_CONTADOR / 2) {
                m_contexto.Relata("gnf-repetido", "GNF " + std::to_string(documento.contador),
                                  Coo(documento.coo) + " comes after GNF " + std::to_string(m_gnf),
                                  documento.coo, 0);
                return;
            }
            ConfereGnfSemLinha(documento, avanco - proprio);
        }
        m_temGnf = true;
        m_gnf = documento.contador;
    }

    // Non-fiscal documents without a row before this one: the reversals of payments, then as many
    // reversals of vouchers as there can have been; the others are missing.
    void ConfereGnfSemLinha(const Documento& documento, std::int64_t quantos)
    {
        std::vector<std::int64_t> semPagamento;
        for (std::int64_t i = 1; i <= quantos; ++i) {
            const std::int64_t gnf = Seguinte(m_gnf, i);
            if (m_contexto.gnfsDeEstorno.count(gnf) == 0) {
                semPagamento.push_back(gnf);
            } else {
                Consome(1, false);
            }
        }
        std::size_t i = 0;
        for (; i < semPagamento.size() && PodeSerEstorno(); ++i) {
            m_contexto.Relata(
                "documento-sem-linha", "GNF " + std::to_string(semPagamento[i]),
                "reversal of a voucher" + Onde(1, true) + " before " + Coo(documento.coo), false);
            Consome(1, true);
        }
        while (i < semPagamento.size()) {
            std::size_t fim = i + 1;
            bool explicado = TemGnfNoLog(semPagamento[i]);
            while (fim < semPagamento.size() &&
                   semPagamento[fim] == Seguinte(semPagamento[fim - 1], 1)) {
                explicado = explicado && TemGnfNoLog(semPagamento[fim]);
                ++fim;
            }
            const auto destes = static_cast<std::int64_t>(fim - i);
            m_contexto.Relata("gnf-ausente", "GNF " + Numeros(semPagamento[i], destes),
                              "no non-fiscal document" + Onde(destes, false) + " before " +
                                  Coo(documento.coo),
                              explicado);
            Consome(destes, false);
            i = fim;
        }
    }

    bool PodeSerEstorno() const
    {
        return std::any_of(m_lacunas.begin(), m_lacunas.end(),
                           [](const Lacuna& lacuna) { return lacuna.podemEstornar > 0; });
    }

    bool TemGnfNoLog(std::int64_t gnf) const
    {
        return m_contexto.Log() != nullptr && m_contexto.Log()->HasGnf(gnf);
    }

    // Documents other than fiscal receipts are filed under the last Z made; before the first,
    // under 1.
    void ConfereCrz(const Documento& documento)
    {
        if (documento.tipo != "RZ" && m_temCrz && documento.crz != m_crz) {
            m_contexto.Relata("crz-documento", Coo(documento.coo),
                              "filed under " + Crz(documento.crz) + ", the last Z is " + Crz(m_crz),
                              documento.coo, 0);
            return;
        }
        m_temCrz = true;
        m_crz = documento.crz;
    }

    // The numbers without a row that the next explanation is for: those that can be reversals of
    // vouchers when it is one, and the others first when it is not.
    std::deque<Lacuna>::iterator Procura(bool estorno)
    {
        const auto achada =
            std::find_if(m_lacunas.begin(), m_lacunas.end(), [estorno](const Lacuna& lacuna) {
                return estorno ? lacuna.podemEstornar > 0 : lacuna.quantos > lacuna.podemEstornar;
            });
        return achada == m_lacunas.end() ? m_lacunas.begin() : achada;
    }

    // Where so many documents without a row may stand, as text.
    std::string Onde(std::int64_t quantos, bool estorno)
    {
        const auto lacuna = Procura(estorno);
        if (lacuna == m_lacunas.end()) {
            return "";
        }
        return " (COO " + Numeros(lacuna->primeiro, std::min(quantos, lacuna->quantos)) + ")";
    }

    void Consome(std::int64_t quantos, bool estorno)
    {
        while (quantos > 0 && !m_lacunas.empty()) {
            const auto lacuna = Procura(estorno);
            const std::int64_t destes = estorno ? 1 : std::min(quantos, lacuna->quantos);
            lacuna->primeiro = Seguinte(lacuna->primeiro, destes);
            lacuna->quantos -= destes;
            lacuna->podemEstornar =
                std::min(lacuna->podemEstornar - (estorno ? 1 : 0), lacuna->quantos);
            quantos -= destes;
            if (lacuna->quantos == 0) {
                m_lacunas.erase(lacuna);
            }
        }
    }

    void RelataAusente(const Lacuna& lacuna)
    {
        bool explicado = m_contexto.Log() != nullptr;
        for (std::int64_t i = 0; explicado && i < lacuna.quantos; ++i) {
            explicado = m_contexto.Log()->HasCoo(Seguinte(lacuna.primeiro, i));
        }
        m_contexto.Relata("coo-ausente", "COO " + Numeros(lacuna.primeiro, lacuna.quantos),
                          "no document, and nothing logged that took the number", explicado);
    }

    // The end of the rows: no later document's GNF tells what took a number.
    void Encerra()
    {
        while (!m_lacunas.empty()) {
            const Lacuna lacuna = m_lacunas.front();
            const std::int64_t seguinte = Seguinte(m_gnf, 1);
            if (!lacuna.viuGnf && m_contexto.gnfsDeEstorno.count(seguinte) != 0) {
                m_gnf = seguinte;
                Consome(1, false);
            } else if (!lacuna.viuGnf && lacuna.podemEstornar > 0) {
                m_contexto.Relata("documento-sem-linha", Coo(lacuna.primeiro),
                                  "may be the reversal of a voucher; no later document tells",
                                  false);
                Consome(1, true);
            } else {
                RelataAusente(lacuna);
                m_lacunas.pop_front();
            }
        }
    }

    Contexto& m_contexto;
    Consulta m_fiscais, m_outros, m_fitas;
    Documento m_fiscal, m_outro;
    bool m_temFiscal = false, m_temOutro = false, m_temFita = false;
    bool m_temCoo = false, m_temCcf = false, m_temGnf = false, m_temCrz = false;
    std::int64_t m_coo = 0, m_ccf = 0, m_gnf = 0, m_crz = 0;
    std::string m_hora;
    // A closed receipt was cancelled and its cancellation document is still to come.
    bool m_cancelamento = false;
    // Vouchers of the receipt issued last that may still be reversed.
    std::int64_t m_vouchers = 0;
    std::deque<Lacuna> m_lacunas;
    std::deque<std::string> m_fitasPendentes;
};

} // namespace

void ConfereSequencias(Contexto& contexto)
{
    Sequencias(contexto).Confere();
}

} // namespace bancada
