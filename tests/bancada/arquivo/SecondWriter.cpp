#include "tests/bancada/arquivo/SecondWriter.h"

#include <algorithm>
#include <ctime>

namespace bancada::arquivo_test
{
namespace
{

std::string N(std::int64_t value, std::size_t width)
{
    const std::string digits = std::to_string(value);
    return std::string(width - digits.size(), '0') + digits;
}

std::string X(const std::string& text, std::size_t width)
{
    return text + std::string(width - text.size(), ' ');
}

std::int64_t Cents(const Financial& value)
{
    return value.nr.ToInt64() / 100;
}

std::string When(RtcAbsoluteTime instant, const char* pattern)
{
    const std::time_t seconds = instant.s;
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[40];
    std::strftime(text, sizeof text, pattern, &parts);
    return text;
}

std::string TextOf(const TapeCommand& line, const char* name)
{
    for (const TapeField& field : line.fields) {
        if (field.name == name) {
            return field.value.text;
        }
    }
    return "";
}

std::int64_t NumberOf(const TapeCommand& line, const char* name)
{
    for (const TapeField& field : line.fields) {
        if (field.name == name) {
            return field.value.integer;
        }
    }
    return 0;
}

bool FlagOf(const TapeCommand& line, const char* name)
{
    for (const TapeField& field : line.fields) {
        if (field.name == name) {
            return field.value.flag;
        }
    }
    return false;
}

// Without a time of its own a command begins, and ends, when the one before it ended.
RtcAbsoluteTime Start(const TapeCommand& line, const Memoria& after)
{
    return line.em.value_or(after.relogio);
}

bool IsOpen(const Memoria& memoria)
{
    return memoria.cupom.situacao == ESituacaoCupom::EM_ITENS ||
           memoria.cupom.situacao == ESituacaoCupom::EM_PAGAMENTO;
}

} // namespace

void SecondWriter::Take(const TapeCommand& line, const Memoria& before, const Memoria& after)
{
    const std::string& cmd = line.name;
    m_registro = after;
    if (cmd == "programa_usuario" || cmd == "programa_cnpj_ie_im") {
        Program(line, after);
    } else if (cmd == "entrada_mit_interno") {
        Enter(line, after);
    } else if (cmd == "abre_cupom" || cmd == "abre_cnf") {
        Open(after, cmd == "abre_cupom");
        if (cmd == "abre_cnf") {
            Print(after, "CN");
        }
    } else if (cmd == "vende_item" || cmd == "vende_item_detalhado") {
        Sell(line, after);
    } else if (cmd == "vende_item_nf") {
        SellNf(after);
    } else if (cmd == "efetua_desc_acres_item" || cmd == "cancela_desc_acres_item") {
        Adjust(before, after, cmd == "cancela_desc_acres_item", line);
    } else if (cmd == "efetua_desc_acres_subtotal" || cmd == "cancela_desc_acres_subtotal") {
        AdjustSubtotal(line, after, cmd == "cancela_desc_acres_subtotal");
    } else if (cmd == "cancela_item") {
        m_cupons.back().itens[static_cast<std::size_t>(NumberOf(line, "item")) - 1].cancelado =
            true;
    } else if (cmd == "efetua_pagamento") {
        const PagamentoEfetuado& paid = after.cupom.pagamentos.back();
        m_cupons.back().pagamentos.push_back(
            {paid.meio, after.meios[static_cast<std::size_t>(paid.meio)].descricao,
             Cents(paid.valor), 0, false});
    } else if (cmd == "estorna_meio_pagamento") {
        const PagamentoEfetuado& added = after.cupom.pagamentos.back();
        for (Pagamento& one : m_cupons.back().pagamentos) {
            if (one.meio == NumberOf(line, "origem") - 1) {
                one.valor -= one.estornado; // what the row held before this reversal
                one.estornado = Cents(added.valor);
                one.reversed = true;
            }
        }
        m_cupons.back().pagamentos.push_back(
            {added.meio, after.meios[static_cast<std::size_t>(added.meio)].descricao,
             Cents(added.valor), 0, false});
    } else if (cmd == "fecha_cupom" || cmd == "fecha_cupom_nf") {
        Close(after, FlagOf(line, "adicional"));
    } else if (cmd == "cancela_cupom") {
        m_cupons.back().isCancelado = true;
        if (before.cupom.tipo == COMPROVANTE_NAO_FISCAL) {
            Print(after, "NC");
        }
    } else if (cmd == "cancela_cupom_em_emissao" || (cmd == "cancela_aberto" && IsOpen(before))) {
        m_cupons.back().isCancelado = true;
    } else if (cmd == "fecha_ccd_gerencial" || cmd == "cancela_aberto") {
        for (Documento& one : m_documentos) {
            if (one.coo == after.contadores[COUNTER_COO]) {
                one.fim = When(after.relogio, "%Y%m%d%H%M%S");
            }
        }
    } else if (cmd == "sangria") {
        Open(after, false);
        SellNf(after);
        m_cupons.back().subtotal = m_cupons.back().total = m_cupons.back().itens[0].bruto;
        Print(after, "CN");
    } else if (cmd == "leitura_x" || cmd == "saida_mit_interno" || cmd == "entrada_mil_interno" ||
               cmd == "saida_mil_interno") {
        if (cmd == "entrada_mil_interno") {
            Enter(line, after);
        }
        Print(after, "LX");
    } else if (cmd == "leitura_mf") {
        Print(after, "MF");
    } else if (cmd == "abre_gerencial") {
        Print(after, "RG");
    } else if (cmd == "abre_ccd") {
        Print(after, "CC");
    } else if (cmd == "reimprime_mfd") {
        const int cfd = after.contadores[COUNTER_CFD];
        m_fitas[cfd] = N(cfd, 6) + When(after.relogio, "%Y%m%d") +
                       N(NumberOf(line, "coo_inicial"), 6) + N(NumberOf(line, "coo_final"), 6) +
                       after.contribuinte.cnpj;
    } else if (cmd == "reducao_z") {
        Reduce(line, before, after);
        Print(after, "RZ");
    }
}

// The first command of the two makes the owner's row, the other only changes it.
void SecondWriter::Program(const TapeCommand& line, const Memoria& after)
{
    const int cro = after.contadores[COUNTER_CRO];
    m_croDoCadastro = m_cadastro.empty() && cro == 0 ? 1 : cro;
    if (m_cadastro.empty()) {
        m_cadastro = When(Start(line, after), "%Y%m%d%H%M%S");
    }
}

// A counter of restarts has one row, of the mode entered first, and only that of mode T is a
// record.
void SecondWriter::Enter(const TapeCommand& line, const Memoria& after)
{
    const int cro = after.contadores[COUNTER_CRO];
    const bool technical = line.name == "entrada_mit_interno";
    m_intervencoes.emplace(cro, technical ? N(cro == 999999 ? 1 : cro + 1, 6) +
                                                When(Start(line, after), "%Y%m%d%H%M%S") + "N"
                                          : "");
}

void SecondWriter::Open(const Memoria& after, bool fiscal)
{
    Cupom cupom;
    cupom.fiscal = fiscal;
    cupom.coo = after.cupom.coo;
    cupom.numero = fiscal ? after.cupom.ccf : after.cupom.gnf;
    cupom.data = When(after.cupom.abertura, "%Y%m%d");
    cupom.nome = after.cupom.consumidor.nome;
    cupom.cpfCnpj = after.cupom.consumidor.cpfCnpj;
    m_cupons.push_back(cupom);
}

void SecondWriter::Sell(const TapeCommand& line, const Memoria& after)
{
    const ItemVendido& sold = after.cupom.itens.back();
    Item item;
    item.codigo = sold.codigo;
    item.descricao = sold.descricao;
    item.unidade = sold.unidade;
    item.quantidade = sold.quantidade.unscaled;
    item.decimaisQuantidade = sold.quantidade.decimals;
    item.unitario = sold.valorUnitario.unscaled;
    item.decimaisValor = sold.valorUnitario.decimals;
    item.bruto = Cents(sold.bruto);
    item.arredonda = sold.arredonda;
    item.totalizador = sold.tributacao + std::to_string(sold.numero);
    if (sold.tributacao == "T" || sold.tributacao == "S") {
        const std::size_t imposto = sold.tributacao == "T" ? 0 : 1;
        const bool detalhado = line.name == "vende_item_detalhado";
        item.totalizador =
            N(sold.numero, 2) + (detalhado ? "T" : sold.tributacao) +
            N(after.fiscal.aliquota[imposto][static_cast<std::size_t>(sold.numero) - 1], 4);
    }
    m_cupons.back().itens.push_back(item);
}

void SecondWriter::SellNf(const Memoria& after)
{
    const ItemVendido& sold = after.cupom.itens.back();
    Item item;
    item.nome = after.naoFiscal.nome[static_cast<std::size_t>(sold.posicao)];
    item.bruto = Cents(sold.bruto);
    m_cupons.back().itens.push_back(item);
}

void SecondWriter::Adjust(const Memoria& before, const Memoria& after, bool cancels,
                          const TapeCommand& line)
{
    std::int64_t number = NumberOf(line, "item");
    number = number == 0 ? static_cast<std::int64_t>(after.cupom.itens.size()) : number;
    const std::size_t at = static_cast<std::size_t>(number) - 1;
    Item& item = m_cupons.back().itens[at];
    if (cancels && TextOf(line, "operacao") == "acrescimo") {
        item.canceladoAcrescimo = Cents(before.cupom.itens[at].acrescimo);
    }
    item.desconto = Cents(after.cupom.itens[at].desconto);
    item.acrescimo = Cents(after.cupom.itens[at].acrescimo);
}

void SecondWriter::AdjustSubtotal(const TapeCommand& line, const Memoria& after, bool cancels)
{
    Cupom& cupom = m_cupons.back();
    const bool desconto = TextOf(line, "operacao") == "desconto";
    const std::int64_t valor = cancels ? 0 : Cents(after.cupom.ajusteValor);
    if (desconto) {
        cupom.desconto = valor; // its kind stays V
        return;
    }
    if (cancels) {
        cupom.cancelado = cupom.acrescimo;
    } else if (cupom.fiscal) {
        cupom.tipoAcrescimo = TextOf(line, "tipo") == "percentual" ? 'P' : 'V';
    }
    cupom.acrescimo = valor;
}

void SecondWriter::Close(const Memoria& after, bool adicional)
{
    Cupom& cupom = m_cupons.back();
    if (!adicional) { // whose closing is rejected
        cupom.subtotal = Cents(after.cupom.subtotal);
        cupom.total = cupom.subtotal + cupom.acrescimo - cupom.desconto;
    }
    if (cupom.fiscal && after.ratearSubtotal && after.cupom.ajusteAplicado) {
        for (std::size_t i = 0; i < cupom.itens.size(); ++i) {
            const bool desconto = after.cupom.ajusteOperacao == DESCONTO;
            (desconto ? cupom.itens[i].desconto : cupom.itens[i].acrescimo) +=
                Cents(after.cupom.itens[i].rateio);
        }
    }
    for (Documento& one : m_documentos) {
        if (!cupom.fiscal && one.coo == cupom.coo) {
            one.fim = When(after.relogio, "%Y%m%d%H%M%S");
        }
    }
}

void SecondWriter::Print(const Memoria& after, const char* simbolo)
{
    const std::string kind = simbolo;
    const auto counter = [&](FISCALDATA_COUNTER_INDEX index, const char* kinds) {
        return std::string(kinds).find(kind) == std::string::npos
                   ? 0
                   : after.contadores[static_cast<std::size_t>(index)];
    };
    m_documentos.push_back({after.contadores[COUNTER_COO], counter(COUNTER_GNF, "RG CC CN NC"),
                            counter(COUNTER_GRG, "RG"), counter(COUNTER_CDC, "CC"),
                            counter(COUNTER_CRZ, "RZ"), kind, When(after.relogio, "%Y%m%d%H%M%S")});
}

void SecondWriter::Reduce(const TapeCommand& line, const Memoria& before, const Memoria& after)
{
    const int crz = after.contadores[COUNTER_CRZ];
    const std::string key = "01" + N(crz, 6);
    const RtcAbsoluteTime em = Start(line, after);
    // A day without a document is the one on which it is reduced.
    const std::string movimento = When(before.jornada.aberta ? before.jornada.data : em, "%Y%m%d");
    m_reducoes[crz] = {movimento, key + N(after.contadores[COUNTER_COO], 6) +
                                      N(after.contadores[COUNTER_CRO], 6) + movimento +
                                      When(em, "%Y%m%d%H%M%S") +
                                      N(Cents(after.fiscalRZ.vendaBruta), 14) + " "};
    std::string& totais = m_totalizadores[crz];
    const auto total = [&](const std::string& code, const Financial& value) {
        if (!value.IsZero()) {
            totais += Prefix("E13") + key + X(code, 7) + N(Cents(value), 13) + "\n";
        }
    };
    const BaseFiscal& base = after.fiscalRZ;
    for (std::size_t imposto = 0; imposto < 2; ++imposto) {
        for (std::size_t i = 0; i < MAX_ALIQUOTAS; ++i) {
            total(N(static_cast<int>(i) + 1, 2) + (imposto == 0 ? "T" : "S") +
                      N(base.aliquota[imposto][i], 4),
                  base.totais[imposto][i]);
        }
    }
    for (std::size_t imposto = 0; imposto < 2; ++imposto) {
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t code = 0; code < 3; ++code) {
                total(std::string(1, "FIN"[code]) + (imposto == 0 ? "" : "S") +
                          std::to_string(i + 1),
                      base.totais[imposto][MAX_ALIQUOTAS + code * 3 + i]);
            }
        }
    }
    for (const auto& [code, values] :
         {std::pair("D", &base.descontos), std::pair("A", &base.acrescimos),
          std::pair("Can-", &base.cancelamentos)}) {
        total(std::string(code) + "T", (*values)[0]);
        total(std::string(code) + "S", (*values)[1]);
    }
    for (std::size_t i = 0; i < MAX_TOTALIZADORES_NF; ++i) {
        if (!after.naoFiscalRZ.nome[i].empty()) {
            m_naoFiscais[crz] += Prefix("E17") + key + X(after.naoFiscalRZ.nome[i], 15) +
                                 N(Cents(after.naoFiscalRZ.totais[i]), 13) + "\n";
        }
    }
    for (std::size_t i = 0; i < MAX_MEIOS_PAGAMENTO; ++i) {
        if (!after.meios[i].descricao.empty()) {
            m_meios[crz] += Prefix("E18") + key + X(after.meios[i].descricao, 15) +
                            N(Cents(after.jornada.meios[i]), 13) + "\n";
        }
    }
    m_meios[crz] += Prefix("E18") + key + X("TROCO", 15) + N(Cents(after.jornada.troco), 13) + "\n";
}

std::string SecondWriter::Prefix(const char* type) const
{
    return type + X(m_registro.ecf.numSerie, 20) + " " + X(m_registro.ecf.modelo, 20);
}

// The register, its owner and the version of its software, whose date only facts tell.
std::string SecondWriter::Identificacao() const
{
    const IdentidadeECF& ecf = m_registro.ecf;
    const Contribuinte& usuario = m_registro.contribuinte;
    const std::string cnpj = std::string(14 - usuario.cnpj.size(), '0') + usuario.cnpj;
    std::string text = "E01" + X(ecf.numSerie, 20) + " " + X(ecf.tipo, 7) + X(ecf.marca, 20) +
                       X(ecf.modelo, 20) + X(ecf.versaoSB, 10) + N(0, 14) + N(ecf.sequencia, 3) +
                       cnpj + "TDM";
    if (m_reducoes.empty()) {
        text += N(0, 28);
    } else {
        const auto& first = *m_reducoes.begin();
        const auto& last = *m_reducoes.rbegin();
        text +=
            N(first.first, 6) + N(last.first, 6) + first.second.movimento + last.second.movimento;
    }
    text += X("1.0.0", 8) + "AC1704 01.00.00\n";
    text += Prefix("E02") + cnpj + X(usuario.ie, 14) + X(usuario.razaoSocial, 40) +
            X(usuario.endereco, 120) + m_cadastro + N(m_croDoCadastro, 6) +
            N(Cents(m_registro.gt), 18) + "01\n";
    text += Prefix("E07") + X(ecf.versaoSB, 10) + N(0, 8) + "\n";
    for (const auto& intervencao : m_intervencoes) {
        text += intervencao.second.empty() ? "" : Prefix("E09") + intervencao.second + "\n";
    }
    return text;
}

// Those that the module logs, and the grand total; facts tell when they were taken.
std::string SecondWriter::Contadores() const
{
    const auto counter = [this](FISCALDATA_COUNTER_INDEX index) {
        return N(m_registro.contadores[static_cast<std::size_t>(index)], 6);
    };
    return Prefix("E11") + counter(COUNTER_CRZ) + counter(COUNTER_CRO) + counter(COUNTER_COO) +
           counter(COUNTER_GNF) + counter(COUNTER_CCF) + N(0, 12) + counter(COUNTER_GRG) + N(0, 6) +
           counter(COUNTER_CFD) + N(Cents(m_registro.gt), 18) + N(0, 14) + "\n";
}

std::string SecondWriter::CupomText(const Cupom& cupom) const
{
    const char* ordem = cupom.desconto != 0 && cupom.acrescimo == 0   ? "D"
                        : cupom.desconto == 0 && cupom.acrescimo != 0 ? "A"
                                                                      : " ";
    const std::string numbers =
        cupom.fiscal ? N(cupom.numero, 6) + N(cupom.coo, 6) : N(cupom.coo, 6) + N(cupom.numero, 6);
    return Prefix(cupom.fiscal ? "E14" : "E19") + "01" + numbers + cupom.data +
           N(cupom.subtotal, 14) + N(cupom.desconto, 13) + "V" + N(cupom.acrescimo, 13) +
           cupom.tipoAcrescimo + N(cupom.total, 14) + (cupom.isCancelado ? "S" : "N") +
           N(cupom.cancelado, 13) + ordem + X(cupom.nome, 40) +
           std::string(14 - cupom.cpfCnpj.size(), '0') + cupom.cpfCnpj + "\n";
}

std::string SecondWriter::Text() const
{
    std::string text = Identificacao();
    for (const auto& fita : m_fitas) {
        text += Prefix("E10") + fita.second + "\n";
    }
    text += Contadores();
    for (const auto& reducao : m_reducoes) {
        text += Prefix("E12") + reducao.second.record + "\n";
    }
    for (const auto& totais : m_totalizadores) {
        text += totais.second;
    }
    std::vector<Cupom> fiscais, outros;
    std::partition_copy(m_cupons.begin(), m_cupons.end(), std::back_inserter(fiscais),
                        std::back_inserter(outros), [](const Cupom& one) { return one.fiscal; });
    std::sort(fiscais.begin(), fiscais.end(),
              [](const Cupom& a, const Cupom& b) { return a.numero < b.numero; });
    const auto byCoo = [](const auto& a, const auto& b) { return a.coo < b.coo; };
    std::sort(outros.begin(), outros.end(), byCoo);
    std::string itens, itensNf, documentos, cuponsNf;
    for (const Cupom& cupom : fiscais) {
        text += CupomText(cupom);
        int number = 0;
        for (const Item& one : cupom.itens) {
            itens += Prefix("E15") + "01" + N(cupom.coo, 6) + N(cupom.numero, 6) + N(++number, 3) +
                     X(one.codigo, 14) + X(one.descricao, 100) + N(one.quantidade, 7) +
                     X(one.unidade, 3) + N(one.unitario, 8) + N(one.desconto, 8) +
                     N(one.acrescimo, 8) + N(one.bruto + one.acrescimo - one.desconto, 14) +
                     X(one.totalizador, 7) + (cupom.isCancelado || one.cancelado ? "S" : "N") +
                     N(0, 7) + N(0, 13) + N(one.canceladoAcrescimo, 13) +
                     (one.arredonda ? "A" : "T") + N(one.decimaisQuantidade, 1) +
                     N(one.decimaisValor, 1) + "\n";
        }
    }
    std::vector<Documento> sorted = m_documentos;
    std::sort(sorted.begin(), sorted.end(), byCoo);
    for (const Documento& one : sorted) {
        documentos += Prefix("E16") + "01" + N(one.coo, 6) + N(one.gnf, 6) + N(one.grg, 6) +
                      N(one.cdc, 4) + N(one.crz, 6) + one.simbolo + one.fim + "\n";
    }
    for (const Cupom& cupom : outros) {
        cuponsNf += CupomText(cupom);
        int number = 0;
        for (const Item& one : cupom.itens) {
            itensNf += Prefix("E20") + "01" + N(cupom.coo, 6) + N(cupom.numero, 6) +
                       N(++number, 3) + X(one.nome, 15) + N(one.bruto, 13) + N(one.desconto, 13) +
                       N(one.acrescimo, 13) + N(one.bruto + one.acrescimo - one.desconto, 13) +
                       (cupom.isCancelado || one.cancelado ? "S" : "N") +
                       N(one.canceladoAcrescimo, 13) + "\n";
        }
    }
    text += itens + documentos;
    for (const auto* reducoes : {&m_naoFiscais, &m_meios}) {
        for (const auto& one : *reducoes) {
            text += one.second;
        }
    }
    text += cuponsNf + itensNf;
    std::vector<Cupom> all = m_cupons;
    std::sort(all.begin(), all.end(), byCoo);
    for (const Cupom& cupom : all) {
        for (const Pagamento& one : cupom.pagamentos) {
            const std::int64_t estornado = cupom.isCancelado ? one.valor : one.estornado;
            const char* flag = cupom.isCancelado           ? "S"
                               : !one.reversed             ? "N"
                               : one.estornado < one.valor ? "P"
                                                           : "S";
            text += Prefix("E21") + "01" + N(cupom.coo, 6) + N(cupom.fiscal ? cupom.numero : 0, 6) +
                    N(cupom.fiscal ? 0 : cupom.numero, 6) + X(one.nome, 15) + N(one.valor, 13) +
                    flag + N(estornado, 13) + "\n";
        }
    }
    return text;
}

} // namespace bancada::arquivo_test
