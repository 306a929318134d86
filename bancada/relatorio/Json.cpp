#include "bancada/relatorio/Json.h"

#include <nlohmann/json.hpp>

namespace bancada::relatorio
{
namespace
{

using Json = nlohmann::ordered_json;

std::string JsonText(const Json& json, int indent = -1)
{
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

Json ToJson(const Amount& amount, int minDecimals = 2)
{
    return amount.IsKnown() ? Json(PointText(amount, minDecimals)) : Json(nullptr);
}

Json ToJson(const Integer& number)
{
    return number.IsKnown() ? Json(number.Value()) : Json(nullptr);
}

Json ToJson(const Flag& flag)
{
    return flag.IsKnown() ? Json(flag.IsSet()) : Json(nullptr);
}

Json ToJson(const Text& text)
{
    return text.State() == leitura::CellState::NULL_VALUE ? Json(nullptr) : Json(text.Shown());
}

Json ToJson(const Ajuste& a)
{
    return {
        {"tipo", ToJson(a.tipo)}, {"percentual", ToJson(a.percentual)}, {"valor", ToJson(a.valor)}};
}

Json ToJson(const Item& i, bool fiscal)
{
    Json json{{"item", ToJson(i.numero)}};
    if (fiscal) {
        json["codigo"] = ToJson(i.codigo);
        json["descricao"] = ToJson(i.descricao);
        json["quantidade"] = ToJson(i.quantidade, i.casasQuantidade);
        json["unidade"] = ToJson(i.unidade);
        json["valor_unitario"] = ToJson(i.valorUnitario, i.casasValor);
        json["aliquota"] = ToJson(i.aliquota);
        json["arredonda_trunca"] = ToJson(i.arredondaTrunca);
    } else {
        json["totalizador"] = ToJson(i.totalizador);
        json["descricao"] = ToJson(i.descricao);
    }
    json["valor_bruto"] = ToJson(i.ValorBruto());
    json["desconto"] = ToJson(i.desconto);
    json["acrescimo"] = ToJson(i.acrescimo);
    json["acrescimo_cancelado"] = ToJson(i.acrescimoCancelado);
    json["valor_liquido"] = ToJson(i.liquido);
    json["cancelado"] = ToJson(i.cancelado);
    return json;
}

Json ToJson(const Pagamento& p)
{
    return {{"meio", ToJson(p.meio)},
            {"nome", ToJson(p.nome)},
            {"valor", ToJson(p.valor)},
            {"parcelas", ToJson(p.parcelas)},
            {"info", ToJson(p.info)},
            {"estornado", ToJson(p.estornado)},
            {"valor_estornado", ToJson(p.valorEstornado)}};
}

Json ToJson(const SomaImposto& s)
{
    return {{"base", ToJson(s.base)},
            {"imposto", ToJson(s.imposto)},
            {"descontos", ToJson(s.descontos)},
            {"acrescimos", ToJson(s.acrescimos)},
            {"cancelamentos", ToJson(s.cancelamentos)}};
}

Json ToJson(const ReducaoZ& z, bool complete)
{
    Json json{{"crz", ToJson(z.crz)},
              {"coo", ToJson(z.coo)},
              {"gnf", ToJson(z.gnf)},
              {"cro", ToJson(z.cro)},
              {"emissao", ToJson(z.emissao)},
              {"movimento", ToJson(z.movimento)},
              {"gt", ToJson(z.gt)},
              {"vb", ToJson(z.vb)},
              {"icms", ToJson(z.icms)},
              {"issqn", ToJson(z.issqn)},
              {"segundos_operacional", ToJson(z.segundosOperacional)},
              {"segundos_emitindo_documentos", ToJson(z.segundosEmitindo)}};
    if (!z.fim.Shown().empty()) {
        json["fim"] = ToJson(z.fim);
    }
    if (!complete) {
        return json;
    }
    json["linhas_na_primeira"] = z.rowsAtFirst;
    Json& totalizadores = json["totalizadores"] = Json::array();
    for (const TotalizadorReducao& t : z.totalizadores) {
        totalizadores.push_back({{"totalizador", ToJson(t.codigo)},
                                 {"valor", ToJson(t.valor)},
                                 {"fiscal", ToJson(t.fiscal)},
                                 {"imposto", ToJson(t.imposto)}});
    }
    Json& meios = json["meios_pagamento"] = Json::array();
    for (const MeioReducao& m : z.meios) {
        meios.push_back({{"indice", ToJson(m.indice)},
                         {"descricao", ToJson(m.descricao)},
                         {"valor", ToJson(m.valor)}});
    }
    return json;
}

const char* NameOf(TipoDocumento tipo)
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

Json ToJson(const Documento& d, bool complete)
{
    Json json{{"tipo", NameOf(d.tipo)},
              {"coo", ToJson(d.coo)},
              {"crz", ToJson(d.crz)},
              {"inicio", ToJson(d.inicio)}};
    if (d.tipo == TipoDocumento::CUPOM_FISCAL) {
        json["ccf"] = ToJson(d.ccf);
    } else {
        json["documento"] = ToJson(d.codigo);
        json["gnf"] = ToJson(d.gnf);
        if (!d.fim.Shown().empty()) {
            json["fim"] = ToJson(d.fim);
        }
    }
    if (d.tipo == TipoDocumento::OUTRO) {
        json["grg"] = ToJson(d.grg);
        json["cdc"] = ToJson(d.cdc);
    }
    if (d.reducao) {
        json["reducao"] = ToJson(*d.reducao, complete);
    }
    if (!d.IsCupom()) {
        return json;
    }

    json["cancelado"] = ToJson(d.cancelado);
    json["cpf_cnpj"] = ToJson(d.cpfCnpj);
    json["nome"] = ToJson(d.nome);
    json["subtotal"] = ToJson(d.subtotal);
    json["desconto"] = ToJson(d.desconto);
    json["acrescimo"] = ToJson(d.acrescimo);
    json["acrescimo_cancelado"] = ToJson(d.acrescimoCancelado);
    json["total"] = ToJson(d.total);
    if (d.tipo == TipoDocumento::CUPOM_FISCAL) {
        json["endereco"] = ToJson(d.endereco);
        json["troco"] = ToJson(d.troco);
        json["mensagem"] = ToJson(d.mensagem);
        json["aplicativo"] = ToJson(d.aplicativo);
        json["chave"] = ToJson(d.chave);
        json["assinatura"] = ToJson(d.assinatura);
        json["adicional"] = ToJson(d.adicional);
    }
    if (!complete) {
        return json;
    }
    json["abertura_registrada"] = d.hasAbertura;
    json["fechamento_registrado"] = d.HasFechamento();
    json["linhas_incertas"] = d.rowsUncertain;
    json["linhas_no_primeiro"] = d.rowsAtFirst;
    Json& itens = json["itens"] = Json::array();
    for (const Item& i : d.itens) {
        itens.push_back(ToJson(i, d.tipo == TipoDocumento::CUPOM_FISCAL));
    }
    Json& pagamentos = json["pagamentos"] = Json::array();
    for (const Pagamento& p : d.pagamentos) {
        pagamentos.push_back(ToJson(p));
    }
    return json;
}

// One document a line, so that nothing but the line at hand is held.
class JsonWriter final : public JornadaVisitor
{
  public:
    explicit JsonWriter(std::ostream& out) : m_out(out) {}

    void BeginJornada(const Jornada& jornada) override
    {
        m_out << (m_firstJornada ? "\n" : ",\n") << "{\"crz\":" << JsonText(ToJson(jornada.crz))
              << ",\"reducao\":"
              << (jornada.reducao ? JsonText(ToJson(*jornada.reducao, false)) : "null")
              << ",\"documentos\":[";
        m_firstJornada = false;
        m_firstDocumento = true;
    }

    void VisitDocumento(Documento& documento) override
    {
        m_out << (m_firstDocumento ? "\n" : ",\n") << JsonText(ToJson(documento, false));
        m_firstDocumento = false;
    }

    void EndJornada(const Jornada&) override { m_out << "]}"; }

  private:
    std::ostream& m_out;
    bool m_firstJornada = true;
    bool m_firstDocumento = true;
};

void WriteDias(Report& report, std::ostream& out)
{
    out << "\"dias\":[";
    JsonWriter writer(out);
    report.Walk(writer);
    out << ']';
}

template <typename Found>
Json ListOf(const std::vector<FoundIn<Found>>& found, bool several)
{
    Json list = Json::array();
    for (const FoundIn<Found>& one : found) {
        for (const Found& document : one.documents) {
            Json json = ToJson(document, true);
            if (several) {
                json["arquivo"] = one.report->Database().Path();
            }
            list.push_back(std::move(json));
        }
    }
    return list;
}

} // namespace

void WriteListsJson(std::deque<Report>& reports, const Losses* losses, std::ostream& out)
{
    out << '{';
    if (reports.size() == 1) {
        WriteDias(reports.front(), out);
    } else {
        out << "\"bancos\":[";
        for (Report& report : reports) {
            out << (&report == &reports.front() ? "\n" : ",\n")
                << "{\"arquivo\":" << JsonText(Json(report.Database().Path())) << ',';
            WriteDias(report, out);
            out << '}';
        }
        out << ']';
    }
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
        out << ",\"instrucoes_rejeitadas\":" << JsonText(rejected)
            << ",\"comandos_perdidos\":" << JsonText(lost);
    }
    out << "}\n";
}

void WriteTotaisJson(const Totais& totais, std::ostream& out)
{
    Json dias = Json::array();
    for (const TotalDia& dia : totais.dias) {
        dias.push_back({{"crz", ToJson(dia.crz)},
                        {"movimento", ToJson(dia.movimento)},
                        {"vb", dia.fechado ? ToJson(dia.vb) : Json(nullptr)},
                        {"cupons", dia.cupons},
                        {"vendido", ToJson(dia.vendido)},
                        {"cancelados", dia.cancelados},
                        {"ilegiveis", dia.unreadable}});
    }
    Json aliquotas = Json::array();
    for (const TotalAliquota& total : totais.aliquotas) {
        aliquotas.push_back({{"aliquota", ToJson(total.aliquota)},
                             {"itens", total.itens},
                             {"valor", ToJson(total.valor)}});
    }
    Json meios = Json::array();
    for (const VendaMeio& meio : totais.meios.meios) {
        meios.push_back({{"indice", ToJson(meio.indice)},
                         {"nome", ToJson(meio.nome)},
                         {"pagamentos", meio.pagamentos},
                         {"valor", ToJson(meio.valor)}});
    }
    out << JsonText({{"dias", dias},
                     {"aliquotas", aliquotas},
                     {"fora_dos_itens", ToJson(totais.foraDosItens)},
                     {"valores_ilegiveis", totais.unreadable},
                     {"meios_pagamento", meios},
                     {"pagamentos_ilegiveis", totais.meios.unreadable},
                     {"troco", ToJson(totais.troco)}},
                    2)
        << '\n';
}

void WriteDocumentosJson(std::int64_t coo, const std::vector<FoundIn<Documento>>& found,
                         bool several, std::ostream& out)
{
    out << JsonText({{"coo", coo}, {"documentos", ListOf(found, several)}}, 2) << '\n';
}

void WriteReducoesJson(std::int64_t crz, const std::vector<FoundIn<ReducaoZ>>& found, bool several,
                       std::ostream& out)
{
    out << JsonText({{"crz", crz}, {"reducoes", ListOf(found, several)}}, 2) << '\n';
}

} // namespace bancada::relatorio
