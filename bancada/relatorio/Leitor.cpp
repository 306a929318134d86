#include "bancada/relatorio/Leitor.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>

#include "bancada/relatorio/Linhas.h"

namespace bancada::relatorio
{
namespace
{

// Document numbers have six digits and wrap: of two numbers, the one from which the other is less
// than half a turn away comes first.
constexpr std::int64_t MEIA_VOLTA = 500000;

bool vemAntes(const Documento& a, const Documento& b)
{
    if (a.inicio != b.inicio) {
        return a.inicio < b.inicio;
    }
    const bool semVolta = std::abs(a.coo - b.coo) < MEIA_VOLTA;
    return a.coo != b.coo && (a.coo < b.coo) == semVolta;
}

// The rows of a table, one document ahead.
class Corrente
{
  public:
    using Le = Documento (*)(const Consulta&);

    Corrente(const BancoSomenteLeitura& banco, const std::string& sql, Le le)
        : m_consulta(banco, sql.c_str()), m_le(le)
    {
        avanca();
    }

    const std::optional<Documento>& proximo() const { return m_proximo; }

    Documento retira()
    {
        Documento documento = std::move(*m_proximo);
        avanca();
        return documento;
    }

  private:
    void avanca()
    {
        m_proximo.reset();
        if (m_consulta.linha()) {
            m_proximo = m_le(m_consulta);
        }
    }

    Consulta m_consulta;
    Le m_le;
    std::optional<Documento> m_proximo;
};

// The day of each document of a walk, in its order.
class Calendario
{
  public:
    std::int64_t dia(const Documento& d)
    {
        if (d.tipo == TipoDocumento::OUTRO && d.codigo != "RZ") {
            // Filed under the last reduction made; under 1 both before and after the first.
            if (d.crz > 1) {
                return m_dia = d.crz + 1;
            }
            return m_dia = m_ultimaZ == 1 || m_dia == 2 ? 2 : 1;
        }
        if (!d.cupom()) {
            m_ultimaZ = d.crz;
        }
        return m_dia = d.crz;
    }

  private:
    std::int64_t m_ultimaZ = 0;
    std::int64_t m_dia = 0;
};

// The k-th of the groups into which `novo` (this row, the row before) parts the rows, when there
// are as many groups as documents that claim them. When there are not, it is all of them, and the
// document is marked.
template <typename Linha, typename Novo>
std::vector<Linha> parte(std::vector<Linha> linhas, std::int64_t ordem, std::int64_t documentos,
                         bool& incertas, Novo novo)
{
    std::int64_t grupo = -1;
    std::vector<Linha> minhas;
    for (std::size_t i = 0; i < linhas.size(); ++i) {
        if (i == 0 || novo(linhas[i], linhas[i - 1])) {
            ++grupo;
        }
        if (grupo == ordem) {
            minhas.push_back(linhas[i]);
        }
    }
    if (linhas.empty() || grupo + 1 == documentos) {
        return minhas;
    }
    incertas = true;
    return linhas;
}

} // namespace

Leitor::Leitor(const std::string& caminho)
    : m_banco(caminho),
      m_fiscaisDoCoo(m_banco,
                     (std::string(SELECT_FISCAL) + " WHERE cont_coo = ?1 ORDER BY rowid").c_str()),
      m_nfsDoCoo(m_banco,
                 (std::string(SELECT_NF) + " WHERE n.cont_coo = ?1 ORDER BY n.rowid").c_str()),
      m_outrosDoCoo(m_banco,
                    (std::string(SELECT_OUTRO) + " AND o.cont_coo = ?1 ORDER BY o.rowid").c_str()),
      m_reducoesDoCoo(
          m_banco, (std::string(SELECT_REDUCAO) + " WHERE cont_coo = ?1 ORDER BY rowid").c_str()),
      m_reducoesDoCrz(
          m_banco, (std::string(SELECT_REDUCAO) + " WHERE cont_crz = ?1 ORDER BY rowid").c_str()),
      m_reducaoQueFecha(m_banco, (std::string(SELECT_REDUCAO) +
                                  " WHERE cont_crz = ?1 AND data_hora_emissao >= ?2"
                                  " ORDER BY rowid LIMIT 1")
                                     .c_str()),
      m_ordemFiscal(m_banco, "SELECT count(*) FILTER (WHERE rowid < ?2), count(*)"
                             " FROM cupom_fiscal WHERE cont_coo = ?1"),
      m_ordemNf(m_banco, "SELECT count(*) FILTER (WHERE rowid < ?2), count(*)"
                         " FROM cupom_nf WHERE cont_coo = ?1"),
      m_gnfsDoCoo(m_banco, "SELECT cont_gnf FROM cupom_nf WHERE cont_coo = ?1"),
      m_itensFiscais(m_banco, SELECT_ITENS_FISCAIS), m_itensNf(m_banco, SELECT_ITENS_NF),
      m_pagamentos(m_banco, SELECT_PAGAMENTOS),
      m_totalizadores(m_banco, "SELECT totalizador, valor_base_calculo, valor_imposto, id_fiscal"
                               " FROM totalizador_reducao WHERE cont_crz = ?1 ORDER BY rowid"),
      m_meiosReducao(m_banco,
                     "SELECT indice_meio_pagamento, descricao_meio_pagamento, valor_acumulado"
                     " FROM meio_pagamento_reducao WHERE cont_crz = ?1 ORDER BY rowid"),
      m_ordemReducao(m_banco, "SELECT count(*) FILTER (WHERE rowid < ?2), count(*)"
                              " FROM reducao_z WHERE cont_crz = ?1"),
      m_nomeMeio(m_banco, "SELECT descricao FROM meio_pagamento WHERE num_indice = ?1"),
      m_nomeTotalizador(m_banco,
                        "SELECT descricao FROM totalizador_nao_fiscal WHERE num_indice = ?1"),
      m_usuario(m_banco, "SELECT razao_social, nome_fantasia, endereco, cnpj, ie, im, uf"
                         " FROM dados_usuario ORDER BY seq_usuario LIMIT 1"),
      m_ecf(m_banco, "SELECT num_serie, marca, modelo, tipo, num_caixa"
                     " FROM dados_ecf ORDER BY num_ecf LIMIT 1"),
      m_versao(m_banco, "SELECT versao FROM versao_sb ORDER BY rowid DESC LIMIT 1"),
      m_cuponsDoDia(m_banco, "SELECT (SELECT count(*) FROM cupom_fiscal WHERE cont_crz = ?1) +"
                             " (SELECT count(*) FROM cupom_nf WHERE cont_crz = ?1)")
{
}

Estabelecimento Leitor::estabelecimento()
{
    Estabelecimento e;
    if (m_usuario.com().linha()) {
        e.razaoSocial = m_usuario.texto(0);
        e.nomeFantasia = m_usuario.texto(1);
        e.endereco = m_usuario.texto(2);
        e.cnpj = m_usuario.texto(3);
        e.ie = m_usuario.texto(4);
        e.im = m_usuario.texto(5);
        e.uf = m_usuario.texto(6);
    }
    m_usuario.encerra();
    if (m_ecf.com().linha()) {
        e.numSerie = m_ecf.texto(0);
        e.marca = m_ecf.texto(1);
        e.modelo = m_ecf.texto(2);
        e.tipo = m_ecf.texto(3);
        e.numCaixa = m_ecf.inteiro(4);
    }
    m_ecf.encerra();
    if (m_versao.com().linha()) {
        e.versaoSb = m_versao.texto(0);
    }
    m_versao.encerra();
    return e;
}

std::vector<Documento> Leitor::documentos(std::int64_t coo)
{
    std::vector<Documento> todos;
    for (m_fiscaisDoCoo.com(coo); m_fiscaisDoCoo.linha();) {
        todos.push_back(cupomFiscal(m_fiscaisDoCoo));
    }
    for (m_nfsDoCoo.com(coo); m_nfsDoCoo.linha();) {
        todos.push_back(cupomNf(m_nfsDoCoo));
    }
    if (todos.empty()) {
        todos = semAbertura(coo);
    }
    for (m_outrosDoCoo.com(coo); m_outrosDoCoo.linha();) {
        Documento outro = outroDocumento(m_outrosDoCoo);
        // The row of a non-fiscal receipt whose own row is lost says when that receipt was issued.
        const auto orfao = std::find_if(todos.begin(), todos.end(), [&outro](const Documento& d) {
            return !d.aberturaRegistrada && outro.codigo == "CN" &&
                   d.tipo == TipoDocumento::COMPROVANTE_NF;
        });
        if (orfao == todos.end()) {
            todos.push_back(std::move(outro));
        } else {
            orfao->crz = outro.crz;
            orfao->gnf = outro.gnf;
            orfao->inicio = outro.inicio;
            orfao->fim = outro.fim;
        }
    }
    for (m_reducoesDoCoo.com(coo); m_reducoesDoCoo.linha();) {
        todos.push_back(documentoDaReducao(reducaoZ(m_reducoesDoCoo)));
    }
    for (Documento& documento : todos) {
        completa(documento);
    }
    std::stable_sort(todos.begin(), todos.end(), vemAntes);
    return todos;
}

std::vector<Documento> Leitor::semAbertura(std::int64_t coo)
{
    Documento perdido;
    perdido.coo = coo;
    perdido.aberturaRegistrada = false;
    const bool fiscal = m_itensFiscais.com(coo).linha();
    m_itensFiscais.encerra();
    const bool nf = m_itensNf.com(coo).linha();
    m_itensNf.encerra();
    const bool pago = m_pagamentos.com(coo).linha();
    m_pagamentos.encerra();
    if (nf && !fiscal) {
        perdido.tipo = TipoDocumento::COMPROVANTE_NF;
        perdido.codigo = "CN";
    } else {
        perdido.tipo = TipoDocumento::CUPOM_FISCAL;
    }
    if (!fiscal && !nf && !pago) {
        return {};
    }
    return {perdido};
}

void Leitor::completa(Documento& documento)
{
    if (documento.reducao) {
        completaReducao(*documento.reducao);
    }
    if (documento.cupom()) {
        documento.itens = itens(documento, documento.linhasIncertas);
        documento.pagamentos = pagamentos(documento, documento.linhasIncertas);
    }
}

std::vector<Item> Leitor::itens(const Documento& documento, bool& incertas)
{
    const bool fiscal = documento.tipo == TipoDocumento::CUPOM_FISCAL;
    std::vector<Item> todos;
    if (fiscal) {
        for (m_itensFiscais.com(documento.coo); m_itensFiscais.linha();) {
            todos.push_back(itemFiscal(m_itensFiscais));
        }
    } else {
        for (m_itensNf.com(documento.coo); m_itensNf.linha();) {
            todos.push_back(itemNf(m_itensNf));
        }
        for (Item& item : todos) {
            item.descricao = nomeDoTotalizador(item.totalizador);
        }
    }
    std::int64_t ordem = 0;
    std::int64_t documentos = 1;
    if (documento.aberturaRegistrada) {
        Consulta& consulta = fiscal ? m_ordemFiscal : m_ordemNf;
        consulta.com(documento.coo, documento.linha).linha();
        ordem = consulta.inteiro(0);
        documentos = consulta.inteiro(1);
        consulta.encerra();
    }
    return parte(
        std::move(todos), ordem, documentos, incertas,
        [](const Item& esta, const Item& anterior) { return esta.numero <= anterior.numero; });
}

std::vector<Pagamento> Leitor::pagamentos(const Documento& documento, bool& incertas)
{
    std::vector<Pagamento> todos;
    for (m_pagamentos.com(documento.coo); m_pagamentos.linha();) {
        todos.push_back(pagamento(m_pagamentos));
    }
    for (Pagamento& p : todos) {
        p.nome = nomeDoMeio(p.meio);
    }
    if (!documento.aberturaRegistrada) {
        return todos;
    }

    m_ordemFiscal.com(documento.coo, documento.linha).linha();
    const std::int64_t ordem = m_ordemFiscal.inteiro(0);
    const std::int64_t fiscais = m_ordemFiscal.inteiro(1);
    m_ordemFiscal.encerra();
    std::vector<std::int64_t> gnfs;
    for (m_gnfsDoCoo.com(documento.coo); m_gnfsDoCoo.linha();) {
        gnfs.push_back(m_gnfsDoCoo.inteiro(0));
    }
    if (fiscais + static_cast<std::int64_t>(gnfs.size()) <= 1) {
        return todos;
    }

    const bool fiscal = documento.tipo == TipoDocumento::CUPOM_FISCAL;
    const auto deOutro = [&](const Pagamento& p) {
        return fiscal ? std::find(gnfs.begin(), gnfs.end(), p.contGnf) != gnfs.end()
                      : p.contGnf != documento.gnf;
    };
    todos.erase(std::remove_if(todos.begin(), todos.end(), deOutro), todos.end());
    if (!fiscal) {
        return todos;
    }
    return parte(std::move(todos), ordem, fiscais, incertas,
                 [](const Pagamento& este, const Pagamento& anterior) {
                     return este.contGnf != anterior.contGnf;
                 });
}

std::string Leitor::nomeDoMeio(std::int64_t indice)
{
    const std::string nome = m_nomeMeio.com(indice).linha() ? m_nomeMeio.texto(0) : "";
    m_nomeMeio.encerra();
    return nome;
}

std::string Leitor::nomeDoTotalizador(std::int64_t indice)
{
    std::string nome;
    if (m_nomeTotalizador.com(indice).linha()) {
        nome = m_nomeTotalizador.texto(0);
    } else if (indice == 1) {
        // The first two are part of every register and need no programming.
        nome = "FUNDO DE TROCO";
    } else if (indice == 2) {
        nome = "SANGRIA";
    }
    m_nomeTotalizador.encerra();
    return nome;
}

std::vector<ReducaoZ> Leitor::reducoes(std::int64_t crz)
{
    std::vector<ReducaoZ> todas;
    for (m_reducoesDoCrz.com(crz); m_reducoesDoCrz.linha();) {
        todas.push_back(reducaoZ(m_reducoesDoCrz));
    }
    for (ReducaoZ& reducao : todas) {
        completaReducao(reducao);
    }
    return todas;
}

void Leitor::completaReducao(ReducaoZ& reducao)
{
    m_ordemReducao.com(reducao.crz, reducao.linha).linha();
    const std::int64_t ordem = m_ordemReducao.inteiro(0);
    const std::int64_t reducoes = m_ordemReducao.inteiro(1);
    m_ordemReducao.encerra();

    std::vector<TotalizadorReducao> totalizadores;
    for (m_totalizadores.com(reducao.crz); m_totalizadores.linha();) {
        totalizadores.push_back({m_totalizadores.texto(0), m_totalizadores.decimal(1, 2),
                                 m_totalizadores.decimal(2, 2), m_totalizadores.sim(3)});
    }
    bool incertas = false;
    // A reduction's fiscal totalizers end with Can-S, its non-fiscal ones follow.
    reducao.totalizadores =
        parte(std::move(totalizadores), ordem, reducoes, incertas,
              [](const TotalizadorReducao& este, const TotalizadorReducao& anterior) {
                  return este.fiscal && (!anterior.fiscal || anterior.codigo == "Can-S");
              });

    std::vector<MeioReducao> meios;
    for (m_meiosReducao.com(reducao.crz); m_meiosReducao.linha();) {
        meios.push_back(
            {m_meiosReducao.inteiro(0), m_meiosReducao.texto(1), m_meiosReducao.decimal(2, 2)});
    }
    reducao.meios = parte(std::move(meios), ordem, reducoes, incertas,
                          [](const MeioReducao& este, const MeioReducao& anterior) {
                              return este.indice <= anterior.indice;
                          });
}

std::optional<ReducaoZ> Leitor::reducaoQueFecha(std::int64_t crz, const std::string& desde)
{
    std::optional<ReducaoZ> reducao;
    if (m_reducaoQueFecha.com(crz, desde).linha()) {
        reducao = reducaoZ(m_reducaoQueFecha);
    }
    m_reducaoQueFecha.encerra();
    return reducao;
}

std::int64_t Leitor::cuponsDoDia(std::int64_t crz)
{
    m_cuponsDoDia.com(crz).linha();
    const std::int64_t cupons = m_cuponsDoDia.inteiro(0);
    m_cuponsDoDia.encerra();
    return cupons;
}

void Leitor::percorre(Visitante& visitante)
{
    std::array<Corrente, 4> correntes{
        Corrente(m_banco, std::string(SELECT_FISCAL) + " ORDER BY rowid", cupomFiscal),
        Corrente(m_banco, std::string(SELECT_NF) + " ORDER BY n.rowid", cupomNf),
        Corrente(m_banco, std::string(SELECT_OUTRO) + " ORDER BY o.rowid", outroDocumento),
        Corrente(m_banco, std::string(SELECT_REDUCAO) + " ORDER BY rowid",
                 [](const Consulta& linha) { return documentoDaReducao(reducaoZ(linha)); }),
    };
    Calendario calendario;
    std::optional<Dia> dia;
    for (;;) {
        Corrente* proxima = nullptr;
        for (Corrente& corrente : correntes) {
            if (corrente.proximo() &&
                (!proxima || vemAntes(*corrente.proximo(), *proxima->proximo()))) {
                proxima = &corrente;
            }
        }
        if (!proxima) {
            break;
        }
        Documento documento = proxima->retira();
        const std::int64_t crz = calendario.dia(documento);
        if (!dia || dia->crz != crz) {
            if (dia) {
                visitante.fechaDia(*dia);
            }
            dia = Dia{crz, reducaoQueFecha(crz, documento.inicio)};
            visitante.abreDia(*dia);
        }
        visitante.documento(documento);
    }
    if (dia) {
        visitante.fechaDia(*dia);
    }
}

std::vector<VendaHora> Leitor::vendasPorHora(std::optional<std::int64_t> crz)
{
    Consulta cupons(m_banco, "SELECT CAST(substr(data_hora_emissao, 12, 2) AS INTEGER), valor_total"
                             " FROM cupom_fiscal WHERE id_cancelado IS NOT 'S'"
                             " AND (?1 IS NULL OR cont_crz = ?1)");
    std::vector<VendaHora> horas(24);
    for (cupons.com(crz); cupons.linha();) {
        const std::int64_t hora = cupons.inteiro(0);
        const Decimal valor = cupons.decimal(1, 2);
        if (hora >= 0 && hora < 24 && valor.legivel) {
            VendaHora& venda = horas[static_cast<std::size_t>(hora)];
            ++venda.cupons;
            venda.valor = venda.valor + valor;
        }
    }
    return horas;
}

std::vector<VendaMeio> Leitor::vendasPorMeio(std::optional<std::int64_t> crz)
{
    Consulta pagos(m_banco,
                   "SELECT p.indice_meio_pagamento, p.valor_pagamento, p.valor_estornado"
                   " FROM pagamento_cupom p WHERE"
                   " EXISTS (SELECT 1 FROM cupom_fiscal c WHERE c.cont_coo = p.cont_coo AND"
                   " c.id_cancelado IS NOT 'S' AND (?1 IS NULL OR c.cont_crz = ?1)) OR"
                   " EXISTS (SELECT 1 FROM cupom_nf n WHERE n.cont_coo = p.cont_coo AND"
                   " n.id_cancelado IS NOT 'S' AND (?1 IS NULL OR n.cont_crz = ?1))");
    std::map<std::int64_t, VendaMeio> porIndice;
    for (pagos.com(crz); pagos.linha();) {
        const Decimal saldo = pagos.decimal(1, 2) - pagos.decimal(2, 2);
        if (saldo.legivel && !saldo.zero()) {
            VendaMeio& venda = porIndice[pagos.inteiro(0)];
            ++venda.pagamentos;
            venda.valor = venda.valor + saldo;
        }
    }
    std::vector<VendaMeio> vendas;
    for (auto& [indice, venda] : porIndice) {
        venda.indice = indice;
        venda.nome = nomeDoMeio(indice);
        vendas.push_back(venda);
    }
    return vendas;
}

Decimal Leitor::troco(std::optional<std::int64_t> crz)
{
    Consulta cupons(m_banco, "SELECT valor_troco FROM cupom_fiscal WHERE id_cancelado IS NOT 'S'"
                             " AND (?1 IS NULL OR cont_crz = ?1)");
    Decimal soma;
    for (cupons.com(crz); cupons.linha();) {
        const Decimal valor = cupons.decimal(0, 2);
        soma = valor.legivel ? soma + valor : soma;
    }
    return soma;
}

} // namespace bancada::relatorio
