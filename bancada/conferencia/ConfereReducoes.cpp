// Z reductions against their totalizers, their payment means and the receipts that they close.
#include "bancada/conferencia/Contexto.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <vector>

namespace bancada
{

namespace
{

struct Totalizador {
    std::string nome;
    std::int64_t valor, imposto;
    bool fiscal;
};

struct Meio {
    std::int64_t indice, valor;
};

struct Reducao {
    std::int64_t crz, coo, gt, vb;
    std::int64_t base[2], imposto[2], desconto[2], acrescimo[2], cancelamento[2];
    std::int64_t emitindo, operacional;
    std::string hora, movimento;
};

// The tax base (0 ICMS, 1 ISSQN) of a tax totalizer by its code, and whether it is a rate:
// "01T18.00" and "02S05.00" are rates, "F1" and "FS1" are specials. -1: no such code.
int BaseImposto(const std::string& codigo, bool& aliquota)
{
    const auto digito = [&](std::size_t i) {
        return i < codigo.size() && std::isdigit(static_cast<unsigned char>(codigo[i])) != 0;
    };
    aliquota = digito(0);
    if (aliquota) {
        const std::size_t letra = codigo.find_first_not_of("0123456789");
        if (letra == std::string::npos || (codigo[letra] != 'T' && codigo[letra] != 'S')) {
            return -1;
        }
        return codigo[letra] == 'T' ? 0 : 1;
    }
    const bool especial =
        !codigo.empty() && (codigo[0] == 'F' || codigo[0] == 'I' || codigo[0] == 'N');
    if (especial && codigo.size() == 2 && digito(1)) {
        return 0;
    }
    if (especial && codigo.size() == 3 && codigo[1] == 'S' && digito(2)) {
        return 1;
    }
    return -1;
}

const char* const NOME_BASE[2] = {"ICMS", "ISSQN"};
const char* const FIXOS[3][2] = {{"DT", "DS"}, {"AT", "AS"}, {"Can-T", "Can-S"}};

class Reducoes
{
  public:
    explicit Reducoes(Contexto& contexto) : m_contexto(contexto) { Carrega(); }

    void Confere()
    {
        Consulta linhas(m_contexto.Db(),
                        "SELECT cont_crz, cont_coo, centavos(valor_gt), centavos(valor_vb),"
                        " centavos(valor_base_icms), centavos(valor_icms),"
                        " centavos(valor_desc_icms), centavos(valor_acres_icms),"
                        " centavos(valor_canc_icms), centavos(valor_base_iss), centavos(valor_iss),"
                        " centavos(valor_desc_iss), centavos(valor_acres_iss),"
                        " centavos(valor_canc_iss), tempo_operacional, tempo_emitindo_doc,"
                        " data_hora_emissao, substr(data_movimento, 1, 10)"
                        " FROM reducao_z ORDER BY rowid");
        std::set<std::int64_t> vistas;
        Reducao anterior = {};
        bool temAnterior = false;
        while (linhas.Avanca()) {
            // The two times are crossed: the first column holds the time spent issuing documents.
            Reducao z = {};
            z.crz = linhas.Inteiro(0);
            z.coo = linhas.Inteiro(1);
            z.gt = linhas.Inteiro(2);
            z.vb = linhas.Inteiro(3);
            for (int b = 0; b < 2; ++b) {
                const int c = 4 + 5 * b;
                z.base[b] = linhas.Inteiro(c);
                z.imposto[b] = linhas.Inteiro(c + 1);
                z.desconto[b] = linhas.Inteiro(c + 2);
                z.acrescimo[b] = linhas.Inteiro(c + 3);
                z.cancelamento[b] = linhas.Inteiro(c + 4);
            }
            z.emitindo = linhas.Inteiro(14);
            z.operacional = linhas.Inteiro(15);
            z.hora = linhas.Texto(16);
            z.movimento = linhas.Texto(17);
            ++m_contexto.resumo.reducoes;
            const bool nova = vistas.insert(z.crz).second;
            if (temAnterior) {
                ConfereSeguida(anterior, z);
            }
            if (nova) {
                ConfereTotalizadores(z);
                ConfereDia(z, temAnterior ? anterior.hora : std::string());
            }
            if (z.emitindo > z.operacional) {
                m_contexto.Relata("z-tempos", Crz(z.crz),
                                  "issuing documents " + std::to_string(z.emitindo) +
                                      " s, operating " + std::to_string(z.operacional) + " s",
                                  z.coo, z.crz);
            }
            if (!temAnterior || z.crz > anterior.crz) {
                anterior = z;
                temAnterior = true;
            }
        }
        ConfereOrfaos(vistas);
    }

  private:
    void Carrega()
    {
        Consulta totalizadores(
            m_contexto.Db(), "SELECT cont_crz, totalizador, centavos(valor_base_calculo),"
                             " centavos(valor_imposto), id_fiscal = 'S' FROM totalizador_reducao");
        while (totalizadores.Avanca()) {
            m_totalizadores[totalizadores.Inteiro(0)].push_back(
                {totalizadores.Texto(1), totalizadores.Inteiro(2), totalizadores.Inteiro(3),
                 totalizadores.Inteiro(4) != 0});
        }
        Consulta meios(m_contexto.Db(),
                       "SELECT cont_crz, indice_meio_pagamento, centavos(valor_acumulado),"
                       " descricao_meio_pagamento = 'TROCO' FROM meio_pagamento_reducao"
                       " ORDER BY cont_crz, indice_meio_pagamento");
        while (meios.Avanca()) {
            // The change has the highest index; a means may carry its name, but none its place.
            const std::int64_t crz = meios.Inteiro(0);
            if (meios.Inteiro(3) != 0) {
                const auto achado = m_troco.find(crz);
                if (achado != m_troco.end()) {
                    m_meios[crz].push_back(achado->second);
                }
                m_troco[crz] = {meios.Inteiro(1), meios.Inteiro(2)};
            } else {
                m_meios[crz].push_back({meios.Inteiro(1), meios.Inteiro(2)});
            }
        }
    }

    void ConfereSeguida(const Reducao& anterior, const Reducao& z)
    {
        if (z.crz <= anterior.crz) {
            m_contexto.Relata("crz-repetido", Crz(z.crz), "comes after " + Crz(anterior.crz), z.coo,
                              z.crz);
        } else if (z.crz > anterior.crz + 1) {
            m_contexto.Relata("crz-ausente", Crz(anterior.crz + 1),
                              std::to_string(z.crz - anterior.crz - 1) + " without a row before " +
                                  Crz(z.crz),
                              0, anterior.crz + 1);
        } else if (z.gt - anterior.gt != z.vb) {
            m_contexto.Relata("z-gt", Crz(z.crz),
                              "grand total from " + Dinheiro(anterior.gt) + " to " +
                                  Dinheiro(z.gt) + ", gross sales " + Dinheiro(z.vb),
                              z.coo, z.crz);
        }
    }

    void Compara(const Reducao& z, const std::string& nome, std::int64_t coluna,
                 std::int64_t linhas)
    {
        if (coluna != linhas) {
            m_contexto.Relata("z-totalizadores", Crz(z.crz),
                              nome + " " + Dinheiro(coluna) + ", its rows " + Dinheiro(linhas),
                              z.coo, z.crz);
        }
    }

    void ConfereTotalizadores(const Reducao& z)
    {
        std::int64_t base[2] = {0, 0};
        std::int64_t imposto[2] = {0, 0};
        std::map<std::string, std::int64_t> fixos;
        std::int64_t naoFiscais = 0;
        for (const Totalizador& t : m_totalizadores[z.crz]) {
            bool aliquota = false;
            const int b = t.fiscal ? BaseImposto(t.nome, aliquota) : -1;
            if (!t.fiscal) {
                naoFiscais += t.valor;
            } else if (b < 0) {
                fixos.emplace(t.nome, t.valor);
            } else {
                base[b] += t.valor;
                imposto[b] += t.imposto;
            }
        }
        const std::int64_t* const colunas[3] = {z.desconto, z.acrescimo, z.cancelamento};
        for (int b = 0; b < 2; ++b) {
            Compara(z, std::string("base of ") + NOME_BASE[b], z.base[b], base[b]);
            Compara(z, std::string("tax of ") + NOME_BASE[b], z.imposto[b], imposto[b]);
            for (int f = 0; f < 3; ++f) {
                const auto fixo = fixos.find(FIXOS[f][b]);
                if (fixo == fixos.end()) {
                    m_contexto.Relata("reducao-incompleta", Crz(z.crz),
                                      std::string("no totalizer row ") + FIXOS[f][b], z.coo, z.crz);
                } else {
                    Compara(z, FIXOS[f][b], colunas[f][b], fixo->second);
                }
            }
        }
        const std::int64_t liquido = z.base[0] + z.base[1];
        const std::int64_t bruto =
            liquido + z.desconto[0] + z.desconto[1] + z.cancelamento[0] + z.cancelamento[1];
        if (z.vb != bruto) {
            m_contexto.Relata("z-vb", Crz(z.crz),
                              "gross sales " + Dinheiro(z.vb) +
                                  ", net totalizers, discounts and cancellations " +
                                  Dinheiro(bruto),
                              z.coo, z.crz);
        }
        const Dia& dia = m_contexto.dias[z.crz];
        if (!dia.vendas.Contem(liquido)) {
            m_contexto.Relata("z-vendas", Crz(z.crz),
                              "net tax totalizers " + Dinheiro(liquido) +
                                  ", valid fiscal receipts " + dia.vendas.Texto(),
                              z.coo, z.crz);
        }
        if (naoFiscais != dia.naoFiscais) {
            m_contexto.Relata("z-nao-fiscais", Crz(z.crz),
                              "non-fiscal totalizers " + Dinheiro(naoFiscais) +
                                  ", valid non-fiscal receipts " + Dinheiro(dia.naoFiscais),
                              z.coo, z.crz);
        }
    }

    void ConfereDia(const Reducao& z, const std::string& horaAnterior)
    {
        const Dia& dia = m_contexto.dias[z.crz];
        if (dia.ultimaHora > z.hora) {
            m_contexto.Relata("cupom-fora-do-dia", Coo(dia.ultimoCoo),
                              "issued " + dia.ultimaHora + ", after " + Crz(z.crz) + " of " +
                                  z.hora,
                              dia.ultimoCoo, 0);
        }
        if (!dia.primeiraHora.empty() && dia.primeiraHora < horaAnterior) {
            m_contexto.Relata("cupom-fora-do-dia", Coo(dia.primeiroCoo),
                              "issued " + dia.primeiraHora + ", filed under " + Crz(z.crz) +
                                  ", before the Z of " + horaAnterior,
                              dia.primeiroCoo, 0);
        }
        if (!dia.primeiraHora.empty() && dia.primeiraHora.substr(0, 10) != z.movimento) {
            m_contexto.Relata("z-data", Crz(z.crz),
                              "day of " + z.movimento + ", first receipt " + Coo(dia.primeiroCoo) +
                                  " of " + dia.primeiraHora,
                              z.coo, z.crz);
        }
        std::map<std::int64_t, std::int64_t> meios;
        std::int64_t soma = 0;
        for (const Meio& meio : m_meios[z.crz]) {
            meios[meio.indice] += meio.valor;
            soma += meio.valor;
        }
        if (dia.meiosIncertos.empty()) {
            std::map<std::int64_t, std::int64_t> diferencas = meios;
            for (const auto& [indice, valor] : dia.meios) {
                diferencas[indice] -= valor;
            }
            for (const auto& [indice, diferenca] : diferencas) {
                if (diferenca != 0) {
                    m_contexto.Relata("z-meio", Crz(z.crz) + " means " + std::to_string(indice),
                                      "took in " + Dinheiro(meios[indice]) + ", payments " +
                                          Dinheiro(meios[indice] - diferenca),
                                      z.coo, z.crz);
                }
            }
        }
        const auto troco = m_troco.find(z.crz);
        if (troco == m_troco.end()) {
            m_contexto.Relata("reducao-incompleta", Crz(z.crz), "no row of the change", z.coo,
                              z.crz);
        } else if (!dia.recebido.Contem(soma - troco->second.valor)) {
            m_contexto.Relata("z-troco", Crz(z.crz),
                              "payment means " + Dinheiro(soma) + " less change " +
                                  Dinheiro(troco->second.valor) + ", valid receipts " +
                                  dia.recebido.Texto(),
                              z.coo, z.crz);
        }
    }

    void ConfereOrfaos(const std::set<std::int64_t>& reducoes)
    {
        for (const auto& [crz, linhas] : m_totalizadores) {
            if (reducoes.count(crz) == 0 && !linhas.empty()) {
                m_contexto.Relata("totalizador-sem-reducao", Crz(crz),
                                  std::to_string(linhas.size()) + " totalizers", 0, crz);
            }
        }
        for (const auto& [crz, linhas] : m_meios) {
            if (reducoes.count(crz) == 0 && !linhas.empty()) {
                m_contexto.Relata("meio-sem-reducao", Crz(crz),
                                  std::to_string(linhas.size()) + " payment means", 0, crz);
            }
        }
        std::int64_t maior = reducoes.empty() ? 0 : *reducoes.rbegin();
        for (const auto& [crz, dia] : m_contexto.dias) {
            maior = std::max(maior, dia.primeiraHora.empty() ? 0 : crz);
        }
        for (const auto& [crz, dia] : m_contexto.dias) {
            if (crz < maior && !dia.primeiraHora.empty() && reducoes.count(crz) == 0) {
                m_contexto.Relata("cupom-sem-reducao", Crz(crz),
                                  "receipts from " + Coo(dia.primeiroCoo) + " to " +
                                      Coo(dia.ultimoCoo) + " and no Z",
                                  0, crz);
            }
        }
    }

    Contexto& m_contexto;
    std::map<std::int64_t, std::vector<Totalizador>> m_totalizadores;
    std::map<std::int64_t, std::vector<Meio>> m_meios;
    std::map<std::int64_t, Meio> m_troco;
};

} // namespace

void ConfereReducoes(Contexto& contexto)
{
    Reducoes(contexto).Confere();
}

} // namespace bancada
