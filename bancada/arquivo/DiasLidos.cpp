#include "bancada/arquivo/DiasLidos.h"

#include "bancada/arquivo/Importador.h"
#include "bancada/arquivo/Rateio.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

enum Parcela : std::size_t {
    DESCONTOS = 0,
    ACRESCIMOS = 2,
    CANCELAMENTOS = 4,
};

// So many sums are followed, and so many decisions are kept for them; a day that can come to more
// is not decided.
constexpr std::size_t MAX_SUMS = 20000;
constexpr std::size_t MAX_DECISIONS = 1000000;
// So many totalizers of a receipt are tried for being of either tax.
constexpr std::size_t MAX_CODES = 4;

// The totalizers of a receipt's items with the letter of ICMS.
std::set<std::string> CodesOfIcms(const CupomLido& cupom)
{
    std::set<std::string> codes;
    for (const ItemLido& item : cupom.itens) {
        const std::string code = item.record.Text("totalizador");
        if (code.size() > 2 && code[2] == 'T') {
            codes.insert(code);
        }
    }
    return codes;
}

} // namespace

DiasLidos::Somas DiasLidos::SomasOf(const CupomLido& cupom) const
{
    Somas somas{};
    std::vector<std::int64_t> liquidos;
    std::vector<std::size_t> impostos;
    for (const ItemLido& item : cupom.itens) {
        const bool issqn =
            TributacaoOf(m_arquivo, m_programacao, m_crz, cupom, item.record.Text("totalizador"))
                .IsIssqn();
        impostos.push_back(issqn ? 1 : 0);
        const std::size_t imposto = impostos.back();
        const std::int64_t acrescimoCancelado = item.record.Integer("acrescimo_cancelado");
        const std::int64_t liquido = item.bruto + item.acrescimo - item.desconto;
        somas[DESCONTOS + imposto] += item.desconto;
        somas[ACRESCIMOS + imposto] += item.acrescimo + acrescimoCancelado;
        somas[CANCELAMENTOS + imposto] += acrescimoCancelado;
        if (item.cancelado || cupom.cancelado) {
            somas[CANCELAMENTOS + imposto] += liquido;
        }
        liquidos.push_back(item.cancelado ? 0 : liquido);
    }
    // A share of a cancelled receipt is cancelled too.
    const auto share = [&](std::int64_t valor, Parcela parcela, std::int64_t cancelled) {
        const std::vector<std::int64_t> shares = Apportion(valor, liquidos);
        for (std::size_t i = 0; i < shares.size(); ++i) {
            somas[parcela + impostos[i]] += shares[i];
            somas[CANCELAMENTOS + impostos[i]] += cancelled * shares[i];
        }
    };
    share(cupom.acrescimoCancelado, ACRESCIMOS, 1);
    share(cupom.desconto, DESCONTOS, cupom.cancelado ? -1 : 0);
    share(cupom.acrescimo, ACRESCIMOS, cupom.cancelado ? 1 : 0);
    return somas;
}

DiasLidos::Somas DiasLidos::SomasDoDia() const
{
    Somas somas{};
    std::size_t at = 0;
    for (const char* totalizador : {"DT", "DS", "AT", "AS", "Can-T", "Can-S"}) {
        somas[at++] = m_arquivo.Totalizador(m_crz, totalizador);
    }
    return somas;
}

bool DiasLidos::EndsDay(std::size_t at) const
{
    const std::int32_t coo = m_arquivo.Documentos()[at];
    return m_arquivo.Reducoes().count(coo) != 0 || m_arquivo.Simbolo(coo) == "RZ";
}

std::vector<CupomLido> DiasLidos::WithTaxes(const std::vector<CupomLido>& cupons) const
{
    const CupomLido& any = cupons.front();
    std::vector<std::pair<std::string, bool>> open; // and whether they are taken for ISSQN
    for (const std::string& code : CodesOfIcms(any)) {
        if (m_arquivo.Totalizador(m_crz, code) == 0 &&
            TaxOfDay(m_arquivo, m_crz, code) == DoDia::NOT_TOLD) {
            open.emplace_back(code,
                              TributacaoOf(m_arquivo, m_programacao, m_crz, any, code).detalhado);
        }
    }
    if (open.empty() || open.size() > MAX_CODES) {
        return cupons;
    }
    // A number has one rate of each tax while a receipt is open.
    const auto isPossible = [&](const CupomLido& cupom) {
        std::set<std::string> numbers;
        for (const ItemLido& item : cupom.itens) {
            const std::string code = item.record.Text("totalizador");
            const Tributacao tributacao =
                TributacaoOf(m_arquivo, m_programacao, m_crz, cupom, code);
            if (tributacao.taxa) {
                numbers.insert(tributacao.codigo + std::to_string(tributacao.indice) + " " +
                               std::to_string(*tributacao.taxa));
            }
        }
        const auto sameNumber = [](const std::string& a, const std::string& b) {
            return a.substr(0, a.find(' ')) == b.substr(0, b.find(' '));
        };
        return std::adjacent_find(numbers.begin(), numbers.end(), sameNumber) == numbers.end();
    };
    std::vector<CupomLido> all;
    for (std::size_t which = 0; which < std::size_t{1} << open.size(); ++which) {
        CupomLido first = any;
        for (std::size_t i = 0; i < open.size(); ++i) {
            first.detalhados[open[i].first] = open[i].second != ((which >> i & 1) != 0);
        }
        if (!isPossible(first)) {
            continue;
        }
        for (const CupomLido& cupom : cupons) {
            all.push_back(cupom);
            all.back().detalhados = first.detalhados;
        }
        if (m_crz == 0) {
            break; // nothing will tell
        }
    }
    return all.empty() ? cupons : all;
}

std::vector<CupomLido> DiasLidos::InterpretacoesAt(std::size_t at)
{
    return WithTaxes(Interpretacoes(ReadCupom(m_arquivo, m_arquivo.Documentos()[at]),
                                    m_arquivo.FreeNumbers(at).numeros > 0));
}

void DiasLidos::FindDay(std::size_t at)
{
    const std::vector<std::int32_t>& documentos = m_arquivo.Documentos();
    m_decisoes.clear();
    m_decided = false;
    m_crz = 0;
    for (m_begin = at; m_begin > 0 && !EndsDay(m_begin - 1);) {
        --m_begin;
    }
    for (m_end = at; m_end < documentos.size() && !EndsDay(m_end);) {
        ++m_end;
    }
    const auto reducao = m_end < documentos.size() ? m_arquivo.Reducoes().find(documentos[m_end])
                                                   : m_arquivo.Reducoes().end();
    if (reducao != m_arquivo.Reducoes().end()) {
        m_crz = reducao->second.Integer("crz");
    }
}

void DiasLidos::Decide()
{
    m_decided = true;
    if (m_crz == 0) {
        return;
    }
    const std::vector<std::int32_t>& documentos = m_arquivo.Documentos();
    // Every sum that the receipts so far can come to, and the first way to it: of each receipt
    // that can be several things, which.
    std::map<Somas, std::vector<std::size_t>> ways = {{Somas{}, {}}};
    std::vector<std::size_t> several;
    for (std::size_t i = m_begin; i < m_end; ++i) {
        if (!m_arquivo.Has("E14", documentos[i])) {
            continue;
        }
        std::vector<Somas> each;
        for (const CupomLido& one : InterpretacoesAt(i)) {
            each.push_back(SomasOf(one));
        }
        if (each.size() > 1) {
            several.push_back(i);
        }
        std::map<Somas, std::vector<std::size_t>> next;
        for (const auto& [somas, way] : ways) {
            for (std::size_t which = 0; which < each.size(); ++which) {
                Somas sum = somas;
                for (std::size_t k = 0; k < sum.size(); ++k) {
                    sum[k] += each[which][k];
                }
                if (next.size() > MAX_SUMS || next.size() * several.size() > MAX_DECISIONS) {
                    return;
                }
                std::vector<std::size_t> longer = way;
                if (each.size() > 1) {
                    longer.push_back(which);
                }
                const auto [place, added] = next.emplace(sum, longer);
                if (!added && longer < place->second) {
                    place->second = longer;
                }
            }
        }
        ways = std::move(next);
    }
    const auto found = ways.find(SomasDoDia());
    if (found == ways.end()) {
        return;
    }
    for (std::size_t i = 0; i < several.size(); ++i) {
        m_decisoes[several[i]] = found->second[i];
    }
}

CupomLido DiasLidos::Read(std::size_t at)
{
    if (at < m_begin || at >= m_end) {
        FindDay(at);
    }
    std::vector<CupomLido> all = InterpretacoesAt(at);
    if (all.size() == 1) {
        return std::move(all.front());
    }
    if (!m_decided) {
        Decide();
    }
    const auto decisao = m_decisoes.find(at);
    if (decisao != m_decisoes.end()) {
        return std::move(all[decisao->second]);
    }
    const Somas first = SomasOf(all.front());
    for (const CupomLido& one : all) {
        if (SomasOf(one) != first) {
            const bool sameTaxes = one.detalhados == all.front().detalhados;
            (sameTaxes ? all.front().duvidoso : all.front().impostoDuvidoso) = true;
        }
    }
    return std::move(all.front());
}

} // namespace bancada::arquivo
