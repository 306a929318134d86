#include "bancada/relatorio/DocumentoPrint.h"

#include "bancada/relatorio/Bobina.h"
#include "bancada/relatorio/DisplayText.h"

#include <algorithm>
#include <cstdint>

namespace bancada::relatorio
{
namespace
{

constexpr std::size_t ITEM_INDENT = 4;
constexpr std::size_t COO_DIGITS = 6;
constexpr std::size_t CRZ_DIGITS = 4;

void PrintLabelled(Bobina& papel, const char* label, const std::string& text)
{
    if (!IsBlank(text)) {
        papel.Print(label + text);
    }
}

void PrintHeading(Bobina& papel, const Estabelecimento& estabelecimento)
{
    papel.PrintCentered(estabelecimento.nomeFantasia.Shown());
    papel.PrintCentered(estabelecimento.razaoSocial.Shown());
    papel.PrintCentered(IsBlank(estabelecimento.uf.Shown())
                            ? estabelecimento.endereco.Shown()
                            : estabelecimento.endereco.Shown() + " - " +
                                  estabelecimento.uf.Shown());
    PrintLabelled(papel, "CNPJ: ", FormatCpfCnpj(estabelecimento.cnpj.Shown()));
    PrintLabelled(papel, "IE: ", estabelecimento.ie.Shown());
    PrintLabelled(papel, "IM: ", estabelecimento.im.Shown());
    papel.PrintRule('-');
}

void PrintFoot(Bobina& papel, const Estabelecimento& estabelecimento)
{
    papel.PrintRule('-');
    std::string ecf;
    for (const Text* text :
         {&estabelecimento.marca, &estabelecimento.modelo, &estabelecimento.tipo}) {
        if (!IsBlank(text->Shown())) {
            ecf += (ecf.empty() ? "" : " ") + text->Shown();
        }
    }
    papel.Print(ecf);
    if (!IsBlank(estabelecimento.versaoSb.Shown())) {
        papel.PrintSides("VERSÃO: " + estabelecimento.versaoSb.Shown(),
                         "ECF: " + WithZeros(estabelecimento.numCaixa, 3));
    }
    PrintLabelled(papel, "FAB: ", estabelecimento.numSerie.Shown());
    papel.PrintCentered("ESPELHO DO BANCO DE REGISTRO");
    papel.PrintCentered("SEM VALOR FISCAL");
}

// The amounts of an adjustment's line, by what the row says: by percentage where the type does,
// or where the percentage gives the amount, for some rows stay 'V' when the adjustment was by
// percentage, and some keep an old percentage when it was by value.
std::string NameOfAjuste(const char* name, const Ajuste& ajuste, const Amount& base)
{
    bool byPercentage = ajuste.tipo.Value() == "P";
    if (!byPercentage && ajuste.percentual.IsKnown() && ajuste.percentual.Units() > 0 &&
        base.IsKnown() && ajuste.valor.IsKnown()) {
        // Both sides in ten-thousandths of a unit, so that nothing is divided: within one cent.
        std::int64_t exact = 0;
        std::int64_t written = 0;
        byPercentage =
            !__builtin_mul_overflow(base.Units(), ajuste.percentual.Units(), &exact) &&
            !__builtin_mul_overflow(ajuste.valor.Units(), std::int64_t{10000}, &written) &&
            exact - written < 10000 && written - exact < 10000;
    }
    return byPercentage ? name + (' ' + AmountText(ajuste.percentual)) + '%' : name;
}

void PrintAjustes(Bobina& papel, const Item& item)
{
    const Amount bruto = item.ValorBruto();
    if (!item.desconto.valor.IsZero()) {
        papel.PrintSides(item.desconto.tipo.Value() == "P"
                             ? "DESCONTO " + AmountText(item.desconto.percentual) + '%'
                             : "DESCONTO",
                         '-' + AmountText(item.desconto.valor), ITEM_INDENT);
    }
    if (!item.acrescimo.valor.IsZero()) {
        papel.PrintSides(item.acrescimo.tipo.Value() == "P"
                             ? "ACRÉSCIMO " + AmountText(item.acrescimo.percentual) + '%'
                             : "ACRÉSCIMO",
                         '+' + AmountText(item.acrescimo.valor), ITEM_INDENT);
    }
    if (!item.acrescimoCancelado.IsZero()) {
        papel.Print("ACRÉSCIMO CANCELADO " + AmountText(item.acrescimoCancelado), ITEM_INDENT);
    }
    if (!bruto.IsKnown() || bruto.Units() != item.liquido.Units()) {
        papel.PrintSides("VALOR LÍQUIDO", AmountText(item.liquido), ITEM_INDENT);
    }
    if (!item.cancelado.IsKnown()) {
        papel.Print("*** ITEM CANCELADO: " + item.cancelado.Raw() + " ***", ITEM_INDENT);
    } else if (item.cancelado.IsSet()) {
        papel.PrintSides("*** ITEM CANCELADO ***", '-' + AmountText(item.liquido), ITEM_INDENT);
    }
}

void PrintItem(Bobina& papel, const Item& item, bool fiscal)
{
    const std::string number = WithZeros(item.numero, 3);
    if (fiscal) {
        papel.Print(number + ' ' + item.codigo.Shown() + ' ' + item.descricao.Shown());
        papel.PrintSides(
            AmountText(item.quantidade, item.casasQuantidade) + ' ' + item.unidade.Shown() + " x " +
                AmountText(item.valorUnitario, item.casasValor) + "  " + item.aliquota.Shown(),
            AmountText(item.ValorBruto()), ITEM_INDENT);
    } else {
        const std::string name = IsBlank(item.descricao.Shown())
                                     ? "TOTALIZADOR " + WithZeros(item.totalizador, 2)
                                     : item.descricao.Shown();
        papel.PrintSides(number + ' ' + name, AmountText(item.ValorBruto()));
    }
    PrintAjustes(papel, item);
}

void PrintTotais(Bobina& papel, const Documento& d)
{
    if (!d.desconto.valor.IsZero() || !d.acrescimo.valor.IsZero() ||
        !d.acrescimoCancelado.IsZero()) {
        papel.PrintSides("SUBTOTAL R$", AmountText(d.subtotal));
    }
    const std::string rateio = d.IsRateado() ? " (RATEADO NOS ITENS)" : "";
    if (!d.desconto.valor.IsZero()) {
        papel.PrintSides(NameOfAjuste("DESCONTO", d.desconto, d.subtotal) + rateio,
                         '-' + AmountText(d.desconto.valor));
    }
    if (!d.acrescimo.valor.IsZero()) {
        papel.PrintSides(NameOfAjuste("ACRÉSCIMO", d.acrescimo, d.subtotal) + rateio,
                         '+' + AmountText(d.acrescimo.valor));
    }
    if (!d.acrescimoCancelado.IsZero()) {
        papel.Print("ACRÉSCIMO CANCELADO " + AmountText(d.acrescimoCancelado));
    }
    papel.PrintSides("TOTAL R$", AmountText(d.total));
    if (!d.HasFechamento()) {
        papel.PrintSides("SOMA DOS ITENS R$", AmountText(d.SumItens()));
    }
}

void PrintPagamentos(Bobina& papel, const Documento& d)
{
    for (const Pagamento& p : d.pagamentos) {
        papel.PrintSides(IsBlank(p.nome.Shown()) ? "MEIO DE PAGAMENTO " + WithZeros(p.meio, 2)
                                                 : p.nome.Shown(),
                         AmountText(p.valor));
        if (!p.parcelas.IsKnown() || p.parcelas.Value() > 1) {
            papel.Print(WithZeros(p.parcelas, 1) + " PARCELAS", ITEM_INDENT);
        }
        papel.Print(p.info.Shown(), ITEM_INDENT);
        if (!p.estornado.IsKnown() || p.estornado.IsSet()) {
            papel.PrintSides("ESTORNADO", '-' + AmountText(p.valorEstornado), ITEM_INDENT);
        }
    }
    if (d.pagamentos.size() > 1) {
        papel.PrintSides("SOMA R$", AmountText(d.SumPagamentos()));
    }
    if (!d.troco.IsZero()) {
        papel.PrintSides("TROCO R$", AmountText(d.troco));
    }
}

void PrintConsumidor(Bobina& papel, const Documento& d)
{
    PrintLabelled(papel, "CNPJ/CPF consumidor: ", FormatCpfCnpj(d.cpfCnpj.Shown()));
    PrintLabelled(papel, "NOME: ", d.nome.Shown());
    PrintLabelled(papel, "END: ", d.endereco.Shown());
}

void PrintCupom(Bobina& papel, const Documento& d)
{
    const bool fiscal = d.tipo == TipoDocumento::CUPOM_FISCAL;
    if (!d.hasAbertura) {
        papel.PrintCentered("*** ABERTURA NÃO REGISTRADA ***");
    }
    PrintConsumidor(papel, d);
    papel.PrintRule('-');
    if (fiscal) {
        papel.Print("ITEM CÓDIGO DESCRIÇÃO");
        papel.PrintSides("QTD UN x VL UNIT(R$)  ST", "VL ITEM(R$)", ITEM_INDENT);
        papel.PrintRule('-');
    }
    for (const Item& item : d.itens) {
        PrintItem(papel, item, fiscal);
    }
    papel.PrintRule('-');
    if (d.hasAbertura) {
        PrintTotais(papel, d);
    } else {
        papel.PrintSides("SOMA DOS ITENS R$", AmountText(d.SumItens()));
    }
    PrintPagamentos(papel, d);
    if (d.cancelado.IsSet()) {
        papel.PrintRule('*');
        papel.PrintCentered("C A N C E L A D O");
        papel.PrintRule('*');
    } else if (d.hasAbertura && !d.HasFechamento()) {
        papel.PrintCentered("*** FECHAMENTO NÃO REGISTRADO ***");
    }
    if (d.rowsUncertain) {
        papel.PrintCentered("*** COO REPETIDO: LINHAS INCERTAS ***");
    }
    if (d.rowsAtFirst) {
        papel.PrintCentered("*** VER O PRIMEIRO DOCUMENTO DESTE COO ***");
    }
    if (!IsBlank(d.mensagem.Shown()) || !IsBlank(d.aplicativo.Shown())) {
        papel.PrintRule('-');
    }
    // A message has lines of its own.
    std::string_view rest = d.mensagem.Shown();
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        papel.Print(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    papel.Print(d.aplicativo.Shown());
    PrintLabelled(papel, "CHAVE: ", d.chave.Shown());
    PrintLabelled(papel, "ASSINATURA: ", d.assinatura.Shown());
}

std::string DurationText(const Integer& span)
{
    if (!span.IsKnown()) {
        return WithZeros(span, 0);
    }
    const std::int64_t seconds = span.Value();
    return WithZeros(seconds / 3600, 2) + ':' + WithZeros(seconds / 60 % 60, 2) + ':' +
           WithZeros(seconds % 60, 2);
}

void PrintImposto(Bobina& papel, const char* name, const SomaImposto& sum)
{
    papel.Print(name);
    papel.PrintSides("Base de cálculo", AmountText(sum.base), 2);
    papel.PrintSides("Imposto", AmountText(sum.imposto), 2);
    papel.PrintSides("Descontos", AmountText(sum.descontos), 2);
    papel.PrintSides("Acréscimos", AmountText(sum.acrescimos), 2);
    papel.PrintSides("Cancelamentos", AmountText(sum.cancelamentos), 2);
}

void PrintReducao(Bobina& papel, const ReducaoZ& z)
{
    papel.PrintCentered("MOVIMENTO DO DIA: " + FormatDateTime(z.movimento.Shown()));
    papel.PrintRule('-');
    papel.PrintSides("Contador de Reduções Z (CRZ)", WithZeros(z.crz, CRZ_DIGITS));
    papel.PrintSides("Contador de Reinícios (CRO)", WithZeros(z.cro, 3));
    papel.PrintSides("Contador de Não Fiscais (GNF)", WithZeros(z.gnf, COO_DIGITS));
    papel.PrintRule('-');
    papel.PrintSides("TOTALIZADOR GERAL", AmountText(z.gt));
    papel.PrintSides("VENDA BRUTA DIÁRIA", AmountText(z.vb));
    papel.PrintRule('-');
    PrintImposto(papel, "ICMS", z.icms);
    PrintImposto(papel, "ISSQN", z.issqn);

    const auto printSection = [&](const char* name, bool fiscais) {
        papel.PrintRule('-');
        papel.PrintCentered(name);
        for (const TotalizadorReducao& t : z.totalizadores) {
            if (t.fiscal.IsSet() != fiscais) {
                continue;
            }
            papel.PrintSides(t.codigo.Shown(), AmountText(t.valor));
            if (!t.imposto.IsZero()) {
                papel.PrintSides("Imposto", AmountText(t.imposto), ITEM_INDENT);
            }
        }
    };
    printSection("TOTALIZADORES FISCAIS", true);
    printSection("TOTALIZADORES NÃO FISCAIS", false);

    papel.PrintRule('-');
    papel.PrintCentered("MEIOS DE PAGAMENTO");
    for (const MeioReducao& meio : z.meios) {
        papel.PrintSides(WithZeros(meio.indice, 2) + ' ' + meio.descricao.Shown(),
                         AmountText(meio.valor));
    }
    if (z.rowsAtFirst) {
        papel.PrintCentered("*** VER A PRIMEIRA REDUÇÃO DESTE CRZ ***");
    }
    papel.PrintRule('-');
    papel.PrintSides("Tempo operacional", DurationText(z.segundosOperacional));
    papel.PrintSides("Tempo emitindo documentos fiscais", DurationText(z.segundosEmitindo));
}

void PrintOutro(Bobina& papel, const Documento& d)
{
    papel.PrintSides("CRZ", WithZeros(d.crz, CRZ_DIGITS));
    papel.PrintSides("GNF", WithZeros(d.gnf, COO_DIGITS));
    if (d.codigo.Value() == "RG") {
        papel.PrintSides("GRG", WithZeros(d.grg, COO_DIGITS));
    }
    if (d.codigo.Value() == "CC") {
        papel.PrintSides("CDC", WithZeros(d.cdc, 4));
    }
    papel.PrintCentered("(o banco não guarda o texto deste documento)");
}

} // namespace

std::vector<std::string> PrintDocumento(const Documento& documento,
                                        const Estabelecimento& estabelecimento)
{
    Bobina papel;
    PrintHeading(papel, estabelecimento);
    std::string counters = "COO:" + WithZeros(documento.coo, COO_DIGITS);
    if (documento.tipo == TipoDocumento::CUPOM_FISCAL && documento.hasAbertura) {
        counters = "CCF:" + WithZeros(documento.ccf, COO_DIGITS) + "  " + counters;
    } else if (documento.tipo == TipoDocumento::COMPROVANTE_NF) {
        counters = "GNF:" + WithZeros(documento.gnf, COO_DIGITS) + "  " + counters;
    }
    papel.PrintSides(FormatDateTime(documento.inicio.Shown()), counters);
    papel.PrintCentered(Title(documento));
    if (const std::string mark = documento.CanceladoMark(); !mark.empty()) {
        papel.PrintCentered("*** " + mark + " ***");
    }
    if (!documento.fim.Shown().empty() && documento.fim.Shown() != documento.inicio.Shown()) {
        papel.PrintSides("FIM", FormatDateTime(documento.fim.Shown()));
    }
    if (documento.IsCupom()) {
        PrintCupom(papel, documento);
    } else if (documento.reducao) {
        PrintReducao(papel, *documento.reducao);
    } else {
        PrintOutro(papel, documento);
    }
    PrintFoot(papel, estabelecimento);
    return papel.Lines();
}

} // namespace bancada::relatorio
