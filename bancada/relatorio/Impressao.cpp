#include "bancada/relatorio/Bobina.h"

#include <algorithm>
#include <cstdint>

#include "bancada/relatorio/Texto.h"

namespace bancada::relatorio
{
namespace
{

constexpr std::size_t RECUO_ITEM = 4;
constexpr std::size_t DIGITOS_COO = 6;
constexpr std::size_t DIGITOS_CRZ = 4;

void rotulado(Bobina& papel, const char* rotulo, const std::string& texto)
{
    if (!emBranco(texto)) {
        papel.texto(rotulo + texto);
    }
}

void cabecalho(Bobina& papel, const Estabelecimento& casa)
{
    papel.centro(casa.nomeFantasia);
    papel.centro(casa.razaoSocial);
    papel.centro(emBranco(casa.uf) ? casa.endereco : casa.endereco + " - " + casa.uf);
    rotulado(papel, "CNPJ: ", formataCpfCnpj(casa.cnpj));
    rotulado(papel, "IE: ", casa.ie);
    rotulado(papel, "IM: ", casa.im);
    papel.regua('-');
}

void rodape(Bobina& papel, const Estabelecimento& casa)
{
    papel.regua('-');
    std::string ecf;
    for (const std::string* texto : {&casa.marca, &casa.modelo, &casa.tipo}) {
        if (!emBranco(*texto)) {
            ecf += (ecf.empty() ? "" : " ") + *texto;
        }
    }
    papel.texto(ecf);
    if (!emBranco(casa.versaoSb)) {
        papel.lados("VERSÃO: " + casa.versaoSb, "ECF: " + comZeros(casa.numCaixa, 3));
    }
    rotulado(papel, "FAB: ", casa.numSerie);
    papel.centro("ESPELHO DO BANCO DE REGISTRO");
    papel.centro("SEM VALOR FISCAL");
}

// The amounts of an adjustment's line, by what the row says: by percentage where the type does,
// or where the percentage gives the amount, for some rows stay 'V' when the adjustment was by
// percentage, and some keep an old percentage when it was by value.
std::string nomeDoAjuste(const char* nome, const Ajuste& ajuste, const Decimal& base)
{
    bool percentual = ajuste.tipo == "P";
    if (!percentual && ajuste.percentual.legivel && ajuste.percentual.unidades > 0 &&
        base.legivel && ajuste.valor.legivel) {
        // Both sides in ten-thousandths of a unit, so that nothing is divided: within one cent.
        std::int64_t exato = 0;
        std::int64_t escrito = 0;
        percentual =
            !__builtin_mul_overflow(base.unidades, ajuste.percentual.unidades, &exato) &&
            !__builtin_mul_overflow(ajuste.valor.unidades, std::int64_t{10000}, &escrito) &&
            exato - escrito < 10000 && escrito - exato < 10000;
    }
    return percentual ? nome + (' ' + textoBr(ajuste.percentual)) + '%' : nome;
}

void ajustes(Bobina& papel, const Item& item)
{
    const Decimal bruto = item.bruto();
    if (!item.desconto.valor.zero()) {
        papel.lados(item.desconto.tipo == "P"
                        ? "DESCONTO " + textoBr(item.desconto.percentual) + '%'
                        : "DESCONTO",
                    '-' + textoBr(item.desconto.valor), RECUO_ITEM);
    }
    if (!item.acrescimo.valor.zero()) {
        papel.lados(item.acrescimo.tipo == "P"
                        ? "ACRÉSCIMO " + textoBr(item.acrescimo.percentual) + '%'
                        : "ACRÉSCIMO",
                    '+' + textoBr(item.acrescimo.valor), RECUO_ITEM);
    }
    if (!item.acrescimoCancelado.zero()) {
        papel.texto("ACRÉSCIMO CANCELADO " + textoBr(item.acrescimoCancelado), RECUO_ITEM);
    }
    if (!bruto.legivel || bruto.unidades != item.liquido.unidades) {
        papel.lados("VALOR LÍQUIDO", textoBr(item.liquido), RECUO_ITEM);
    }
    if (item.cancelado) {
        papel.lados("*** ITEM CANCELADO ***", '-' + textoBr(item.liquido), RECUO_ITEM);
    }
}

void imprimeItem(Bobina& papel, const Item& item, bool fiscal)
{
    const std::string numero = comZeros(item.numero, 3);
    if (fiscal) {
        papel.texto(numero + ' ' + item.codigo + ' ' + item.descricao);
        papel.lados(textoBr(item.quantidade, item.casasQuantidade) + ' ' + item.unidade + " x " +
                        textoBr(item.valorUnitario, item.casasValor) + "  " + item.aliquota,
                    textoBr(item.bruto()), RECUO_ITEM);
    } else {
        const std::string nome = emBranco(item.descricao)
                                     ? "TOTALIZADOR " + comZeros(item.totalizador, 2)
                                     : item.descricao;
        papel.lados(numero + ' ' + nome, textoBr(item.bruto()));
    }
    ajustes(papel, item);
}

void totais(Bobina& papel, const Documento& d)
{
    if (!d.desconto.valor.zero() || !d.acrescimo.valor.zero() || !d.acrescimoCancelado.zero()) {
        papel.lados("SUBTOTAL R$", textoBr(d.subtotal));
    }
    const std::string rateio = d.rateado() ? " (RATEADO NOS ITENS)" : "";
    if (!d.desconto.valor.zero()) {
        papel.lados(nomeDoAjuste("DESCONTO", d.desconto, d.subtotal) + rateio,
                    '-' + textoBr(d.desconto.valor));
    }
    if (!d.acrescimo.valor.zero()) {
        papel.lados(nomeDoAjuste("ACRÉSCIMO", d.acrescimo, d.subtotal) + rateio,
                    '+' + textoBr(d.acrescimo.valor));
    }
    if (!d.acrescimoCancelado.zero()) {
        papel.texto("ACRÉSCIMO CANCELADO " + textoBr(d.acrescimoCancelado));
    }
    papel.lados("TOTAL R$", textoBr(d.total));
    if (!d.fechamentoRegistrado()) {
        papel.lados("SOMA DOS ITENS R$", textoBr(d.somaItens()));
    }
}

void imprimePagamentos(Bobina& papel, const Documento& d)
{
    for (const Pagamento& p : d.pagamentos) {
        papel.lados(emBranco(p.nome) ? "MEIO DE PAGAMENTO " + comZeros(p.meio, 2) : p.nome,
                    textoBr(p.valor));
        if (p.parcelas > 1) {
            papel.texto(std::to_string(p.parcelas) + " PARCELAS", RECUO_ITEM);
        }
        papel.texto(p.info, RECUO_ITEM);
        if (p.estornado) {
            papel.lados("ESTORNADO", '-' + textoBr(p.valorEstornado), RECUO_ITEM);
        }
    }
    if (d.pagamentos.size() > 1) {
        papel.lados("SOMA R$", textoBr(d.somaPagamentos()));
    }
    if (!d.troco.zero()) {
        papel.lados("TROCO R$", textoBr(d.troco));
    }
}

void consumidor(Bobina& papel, const Documento& d)
{
    rotulado(papel, "CNPJ/CPF consumidor: ", formataCpfCnpj(d.cpfCnpj));
    rotulado(papel, "NOME: ", d.nome);
    rotulado(papel, "END: ", d.endereco);
}

void corpoDoCupom(Bobina& papel, const Documento& d)
{
    const bool fiscal = d.tipo == TipoDocumento::CUPOM_FISCAL;
    if (!d.aberturaRegistrada) {
        papel.centro("*** ABERTURA NÃO REGISTRADA ***");
    }
    consumidor(papel, d);
    papel.regua('-');
    if (fiscal) {
        papel.texto("ITEM CÓDIGO DESCRIÇÃO");
        papel.lados("QTD UN x VL UNIT(R$)  ST", "VL ITEM(R$)", RECUO_ITEM);
        papel.regua('-');
    }
    for (const Item& item : d.itens) {
        imprimeItem(papel, item, fiscal);
    }
    papel.regua('-');
    if (d.aberturaRegistrada) {
        totais(papel, d);
    } else {
        papel.lados("SOMA DOS ITENS R$", textoBr(d.somaItens()));
    }
    imprimePagamentos(papel, d);
    if (d.cancelado) {
        papel.regua('*');
        papel.centro("C A N C E L A D O");
        papel.regua('*');
    } else if (d.aberturaRegistrada && !d.fechamentoRegistrado()) {
        papel.centro("*** FECHAMENTO NÃO REGISTRADO ***");
    }
    if (d.linhasIncertas) {
        papel.centro("*** COO REPETIDO: LINHAS INCERTAS ***");
    }
    if (!emBranco(d.mensagem) || !emBranco(d.aplicativo)) {
        papel.regua('-');
    }
    // A message has lines of its own.
    std::string_view resto = d.mensagem;
    while (!resto.empty()) {
        const std::size_t fim = std::min(resto.find('\n'), resto.size());
        papel.texto(resto.substr(0, fim));
        resto.remove_prefix(std::min(fim + 1, resto.size()));
    }
    papel.texto(d.aplicativo);
    rotulado(papel, "CHAVE: ", d.chave);
    rotulado(papel, "ASSINATURA: ", d.assinatura);
}

std::string duracao(std::int64_t segundos)
{
    return comZeros(segundos / 3600, 2) + ':' + comZeros(segundos / 60 % 60, 2) + ':' +
           comZeros(segundos % 60, 2);
}

void somaImposto(Bobina& papel, const char* nome, const SomaImposto& soma)
{
    papel.texto(nome);
    papel.lados("Base de cálculo", textoBr(soma.base), 2);
    papel.lados("Imposto", textoBr(soma.imposto), 2);
    papel.lados("Descontos", textoBr(soma.descontos), 2);
    papel.lados("Acréscimos", textoBr(soma.acrescimos), 2);
    papel.lados("Cancelamentos", textoBr(soma.cancelamentos), 2);
}

void corpoDaReducao(Bobina& papel, const ReducaoZ& z)
{
    papel.centro("MOVIMENTO DO DIA: " + formataDataHora(z.movimento));
    papel.regua('-');
    papel.lados("Contador de Reduções Z (CRZ)", comZeros(z.crz, DIGITOS_CRZ));
    papel.lados("Contador de Reinícios (CRO)", comZeros(z.cro, 3));
    papel.lados("Contador de Não Fiscais (GNF)", comZeros(z.gnf, DIGITOS_COO));
    papel.regua('-');
    papel.lados("TOTALIZADOR GERAL", textoBr(z.gt));
    papel.lados("VENDA BRUTA DIÁRIA", textoBr(z.vb));
    papel.regua('-');
    somaImposto(papel, "ICMS", z.icms);
    somaImposto(papel, "ISSQN", z.issqn);

    const auto secao = [&](const char* nome, bool fiscais) {
        papel.regua('-');
        papel.centro(nome);
        for (const TotalizadorReducao& t : z.totalizadores) {
            if (t.fiscal != fiscais) {
                continue;
            }
            papel.lados(t.codigo, textoBr(t.valor));
            if (!t.imposto.zero()) {
                papel.lados("Imposto", textoBr(t.imposto), RECUO_ITEM);
            }
        }
    };
    secao("TOTALIZADORES FISCAIS", true);
    secao("TOTALIZADORES NÃO FISCAIS", false);

    papel.regua('-');
    papel.centro("MEIOS DE PAGAMENTO");
    for (const MeioReducao& meio : z.meios) {
        papel.lados(comZeros(meio.indice, 2) + ' ' + meio.descricao, textoBr(meio.valor));
    }
    papel.regua('-');
    papel.lados("Tempo operacional", duracao(z.segundosOperacional));
    papel.lados("Tempo emitindo documentos fiscais", duracao(z.segundosEmitindo));
}

void corpoDeOutro(Bobina& papel, const Documento& d)
{
    if (!d.fim.empty() && d.fim != d.inicio) {
        papel.lados("FIM", formataDataHora(d.fim));
    }
    papel.lados("CRZ", comZeros(d.crz, DIGITOS_CRZ));
    papel.lados("GNF", comZeros(d.gnf, DIGITOS_COO));
    if (d.codigo == "RG") {
        papel.lados("GRG", comZeros(d.grg, DIGITOS_COO));
    }
    if (d.codigo == "CC") {
        papel.lados("CDC", comZeros(d.cdc, 4));
    }
    papel.centro("(o banco não guarda o texto deste documento)");
}

} // namespace

std::vector<std::string> imprime(const Documento& documento, const Estabelecimento& casa)
{
    Bobina papel;
    cabecalho(papel, casa);
    std::string contadores = "COO:" + comZeros(documento.coo, DIGITOS_COO);
    if (documento.tipo == TipoDocumento::CUPOM_FISCAL && documento.aberturaRegistrada) {
        contadores = "CCF:" + comZeros(documento.ccf, DIGITOS_COO) + "  " + contadores;
    } else if (documento.tipo == TipoDocumento::COMPROVANTE_NF) {
        contadores = "GNF:" + comZeros(documento.gnf, DIGITOS_COO) + "  " + contadores;
    }
    papel.lados(formataDataHora(documento.inicio), contadores);
    papel.centro(titulo(documento));
    if (documento.cancelado) {
        papel.centro("*** CANCELADO ***");
    }
    if (documento.cupom()) {
        corpoDoCupom(papel, documento);
    } else if (documento.reducao) {
        corpoDaReducao(papel, *documento.reducao);
    } else {
        corpoDeOutro(papel, documento);
    }
    rodape(papel, casa);
    return papel.linhas();
}

} // namespace bancada::relatorio
