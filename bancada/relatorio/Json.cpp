#include "bancada/relatorio/Json.h"

#include <nlohmann/json.hpp>

namespace bancada::relatorio
{
namespace
{

using Json = nlohmann::ordered_json;

std::string texto(const Json& json, int recuo = -1)
{
    return json.dump(recuo, ' ', false, Json::error_handler_t::replace);
}

Json numero(const Decimal& valor, int minCasas = 2)
{
    return valor.legivel ? Json(textoPonto(valor, minCasas)) : Json(nullptr);
}

Json ajuste(const Ajuste& a)
{
    return {{"tipo", a.tipo}, {"percentual", numero(a.percentual)}, {"valor", numero(a.valor)}};
}

Json item(const Item& i, bool fiscal)
{
    Json json{{"item", i.numero}};
    if (fiscal) {
        json["codigo"] = i.codigo;
        json["descricao"] = i.descricao;
        json["quantidade"] = numero(i.quantidade, i.casasQuantidade);
        json["unidade"] = i.unidade;
        json["valor_unitario"] = numero(i.valorUnitario, i.casasValor);
        json["aliquota"] = i.aliquota;
        json["arredonda_trunca"] = i.arredondaTrunca;
    } else {
        json["totalizador"] = i.totalizador;
        json["descricao"] = i.descricao;
    }
    json["valor_bruto"] = numero(i.bruto());
    json["desconto"] = ajuste(i.desconto);
    json["acrescimo"] = ajuste(i.acrescimo);
    json["acrescimo_cancelado"] = numero(i.acrescimoCancelado);
    json["valor_liquido"] = numero(i.liquido);
    json["cancelado"] = i.cancelado;
    return json;
}

Json pagamento(const Pagamento& p)
{
    return {{"meio", p.meio},
            {"nome", p.nome},
            {"valor", numero(p.valor)},
            {"parcelas", p.parcelas},
            {"info", p.info},
            {"estornado", p.estornado},
            {"valor_estornado", numero(p.valorEstornado)}};
}

Json imposto(const SomaImposto& s)
{
    return {{"base", numero(s.base)},
            {"imposto", numero(s.imposto)},
            {"descontos", numero(s.descontos)},
            {"acrescimos", numero(s.acrescimos)},
            {"cancelamentos", numero(s.cancelamentos)}};
}

Json reducao(const ReducaoZ& z, bool completa)
{
    Json json{{"crz", z.crz},
              {"coo", z.coo},
              {"gnf", z.gnf},
              {"cro", z.cro},
              {"emissao", z.emissao},
              {"movimento", z.movimento},
              {"gt", numero(z.gt)},
              {"vb", numero(z.vb)},
              {"icms", imposto(z.icms)},
              {"issqn", imposto(z.issqn)},
              {"segundos_operacional", z.segundosOperacional},
              {"segundos_emitindo_documentos", z.segundosEmitindo}};
    if (!completa) {
        return json;
    }
    Json& totalizadores = json["totalizadores"] = Json::array();
    for (const TotalizadorReducao& t : z.totalizadores) {
        totalizadores.push_back({{"totalizador", t.codigo},
                                 {"valor", numero(t.valor)},
                                 {"fiscal", t.fiscal},
                                 {"imposto", numero(t.imposto)}});
    }
    Json& meios = json["meios_pagamento"] = Json::array();
    for (const MeioReducao& m : z.meios) {
        meios.push_back(
            {{"indice", m.indice}, {"descricao", m.descricao}, {"valor", numero(m.valor)}});
    }
    return json;
}

const char* nomeDoTipo(TipoDocumento tipo)
{
    switch (tipo) {
    case TipoDocumento::CUPOM_FISCAL:
        return "cupom_fiscal";
    case TipoDocumento::COMPROVANTE_NF:
        return "comprovante_nf";
    case TipoDocumento::REDUCAO_Z:
        return "reducao_z";
    case TipoDocumento::OUTRO:
        break;
    }
    return "outro";
}

Json documento(const Documento& d, bool completo)
{
    Json json{{"tipo", nomeDoTipo(d.tipo)}, {"coo", d.coo}, {"crz", d.crz}, {"inicio", d.inicio}};
    if (d.tipo == TipoDocumento::CUPOM_FISCAL) {
        json["ccf"] = d.ccf;
    } else {
        json["documento"] = d.codigo;
        json["gnf"] = d.gnf;
        if (!d.fim.empty()) {
            json["fim"] = d.fim;
        }
    }
    if (d.tipo == TipoDocumento::OUTRO) {
        json["grg"] = d.grg;
        json["cdc"] = d.cdc;
    }
    if (d.reducao) {
        json["reducao"] = reducao(*d.reducao, completo);
    }
    if (!d.cupom()) {
        return json;
    }

    json["cancelado"] = d.cancelado;
    json["cpf_cnpj"] = d.cpfCnpj;
    json["nome"] = d.nome;
    json["subtotal"] = numero(d.subtotal);
    json["desconto"] = ajuste(d.desconto);
    json["acrescimo"] = ajuste(d.acrescimo);
    json["acrescimo_cancelado"] = numero(d.acrescimoCancelado);
    json["total"] = numero(d.total);
    if (d.tipo == TipoDocumento::CUPOM_FISCAL) {
        json["endereco"] = d.endereco;
        json["troco"] = numero(d.troco);
        json["mensagem"] = d.mensagem;
        json["aplicativo"] = d.aplicativo;
        json["chave"] = d.chave;
        json["assinatura"] = d.assinatura;
        json["adicional"] = d.adicional;
    }
    if (!completo) {
        return json;
    }
    json["abertura_registrada"] = d.aberturaRegistrada;
    json["fechamento_registrado"] = d.fechamentoRegistrado();
    json["linhas_incertas"] = d.linhasIncertas;
    Json& itens = json["itens"] = Json::array();
    for (const Item& i : d.itens) {
        itens.push_back(item(i, d.tipo == TipoDocumento::CUPOM_FISCAL));
    }
    Json& pagamentos = json["pagamentos"] = Json::array();
    for (const Pagamento& p : d.pagamentos) {
        pagamentos.push_back(pagamento(p));
    }
    return json;
}

// One document a line, so that nothing but the line at hand is held.
class Escritor final : public Visitante
{
  public:
    explicit Escritor(std::ostream& saida) : m_saida(saida) {}

    void abreDia(const Dia& dia) override
    {
        m_saida << (m_primeiroDia ? "\n" : ",\n") << "{\"crz\":" << dia.crz
                << ",\"reducao\":" << (dia.reducao ? texto(reducao(*dia.reducao, false)) : "null")
                << ",\"documentos\":[";
        m_primeiroDia = false;
        m_primeiroDocumento = true;
    }

    void documento(Documento& d) override
    {
        m_saida << (m_primeiroDocumento ? "\n" : ",\n") << texto(relatorio::documento(d, false));
        m_primeiroDocumento = false;
    }

    void fechaDia(const Dia&) override { m_saida << "]}"; }

  private:
    std::ostream& m_saida;
    bool m_primeiroDia = true;
    bool m_primeiroDocumento = true;
};

} // namespace

void escreveListaJson(Leitor& leitor, const Losses* losses, std::ostream& saida)
{
    saida << "{\"dias\":[";
    Escritor escritor(saida);
    leitor.percorre(escritor);
    saida << ']';
    if (losses) {
        Json rejected = Json::array();
        for (const RejectedStatement& one : losses->rejected) {
            rejected.push_back({{"linha", one.line},
                                {"instante", one.time},
                                {"comando", one.command},
                                {"erro", one.error},
                                {"sql", one.statement}});
        }
        Json lost = Json::array();
        for (const LostCommand& one : losses->lost) {
            lost.push_back({{"linha", one.line}, {"instante", one.time}, {"motivo", one.reason}});
        }
        saida << ",\"instrucoes_rejeitadas\":" << texto(rejected)
              << ",\"comandos_perdidos\":" << texto(lost);
    }
    saida << "}\n";
}

void escreveDocumentosJson(std::int64_t coo, const std::vector<Documento>& documentos,
                           std::ostream& saida)
{
    Json lista = Json::array();
    for (const Documento& d : documentos) {
        lista.push_back(documento(d, true));
    }
    saida << texto({{"coo", coo}, {"documentos", std::move(lista)}}, 2) << '\n';
}

void escreveReducoesJson(std::int64_t crz, const std::vector<ReducaoZ>& reducoes,
                         std::ostream& saida)
{
    Json lista = Json::array();
    for (const ReducaoZ& z : reducoes) {
        lista.push_back(reducao(z, true));
    }
    saida << texto({{"crz", crz}, {"reducoes", std::move(lista)}}, 2) << '\n';
}

} // namespace bancada::relatorio
