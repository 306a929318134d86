#include "bancada/relatorio/DocumentoRows.h"

#include "bancada/leitura/Limits.h"

#include <algorithm>
#include <cstdint>

namespace bancada::relatorio
{
namespace
{

// The opening writes a comma behind the address, behind an empty one too.
Text WithoutComma(const Text& endereco)
{
    const std::string& value = endereco.Value();
    return !value.empty() && value.back() == ',' ? Text(value.substr(0, value.size() - 1))
                                                 : endereco;
}

// The date of an instant; what is none stays.
Text DateOf(const Text& instant)
{
    return instant.IsKnown() ? Text(instant.Value().substr(0, 10)) : instant;
}

int Casas(const Integer& casas, std::int64_t fewest)
{
    return static_cast<int>(std::clamp(casas.Value(), fewest, leitura::MAX_CASAS));
}

} // namespace

Documento CupomFiscalOf(const leitura::CupomFiscalRow& row)
{
    Documento d;
    d.tipo = TipoDocumento::CUPOM_FISCAL;
    d.rowid = row.rowid;
    d.coo = row.coo;
    d.ccf = row.ccf;
    d.crz = row.crz;
    d.inicio = row.dataHoraEmissao;
    d.cpfCnpj = row.cpfCnpjConsumidor;
    d.nome = row.nomeConsumidor;
    d.endereco = WithoutComma(row.enderecoConsumidor);
    d.assinatura = row.assinaturaDocumento;
    d.subtotal = row.valorSubtotal;
    d.total = row.valorTotal;
    d.desconto = {row.tipoDesconto, row.percDesconto, row.valorDesconto};
    d.acrescimo = {row.tipoAcrescimo, row.percAcrescimo, row.valorAcrescimo};
    d.acrescimoCancelado = row.valorCancAcrescimo;
    d.troco = row.valorTroco;
    d.mensagem = row.textoSuplementar;
    d.cancelado = row.cancelado;
    d.adicional = row.cupomAdicional;
    d.aplicativo = row.textoComplementar;
    d.chave = row.chaveCupom;
    return d;
}

Documento ComprovanteNfOf(const leitura::CupomNfRow& row)
{
    Documento d;
    d.tipo = TipoDocumento::COMPROVANTE_NF;
    d.codigo = std::string("CN");
    d.rowid = row.rowid;
    d.coo = row.coo;
    d.crz = row.crz;
    d.gnf = row.gnf;
    d.inicio = row.dataHoraEmissao;
    d.subtotal = row.valorSubtotal;
    d.total = row.valorTotalCupom;
    d.desconto = {row.tipoDesconto, row.percDesconto, row.valorDesconto};
    d.acrescimo = {row.tipoAcrescimo, row.percAcrescimo, row.valorAcrescimo};
    d.acrescimoCancelado = row.valorCancAcrescimo;
    d.cancelado = row.cancelado;
    d.nome = row.nomeConsumidor;
    d.cpfCnpj = row.cpfCnpjConsumidor;
    return d;
}

Documento OutroDocumentoOf(const leitura::OutroDocumentoRow& row)
{
    Documento d;
    d.rowid = row.rowid;
    d.coo = row.coo;
    d.gnf = row.gnf;
    d.grg = row.grg;
    d.cdc = row.cdc;
    d.crz = row.crz;
    d.inicio = row.dataHoraInicioEmissao;
    d.fim = row.dataHoraFimEmissao;
    d.codigo = row.tipoDocumento;
    return d;
}

ReducaoZ ReducaoOf(const leitura::ReducaoZRow& row)
{
    ReducaoZ z;
    z.rowid = row.rowid;
    z.crz = row.crz;
    z.emissao = row.dataHoraEmissao;
    z.movimento = DateOf(row.dataMovimento);
    z.coo = row.coo;
    z.gnf = row.gnf;
    z.cro = row.cro;
    z.gt = row.valorGt;
    z.vb = row.valorVb;
    z.icms = {row.valorBaseIcms, row.valorIcms, row.valorDescIcms, row.valorAcresIcms,
              row.valorCancIcms};
    z.issqn = {row.valorBaseIss, row.valorIss, row.valorDescIss, row.valorAcresIss,
               row.valorCancIss};
    z.segundosEmitindo = row.segundosEmitindo;
    z.segundosOperacional = row.segundosOperacional;
    return z;
}

Documento DocumentoOf(const ReducaoZ& reducao)
{
    Documento d;
    d.tipo = TipoDocumento::REDUCAO_Z;
    d.codigo = std::string("RZ");
    d.rowid = reducao.rowid;
    d.coo = reducao.coo;
    d.crz = reducao.crz;
    d.gnf = reducao.gnf;
    d.inicio = reducao.emissao;
    d.fim = reducao.fim;
    d.total = reducao.vb;
    d.reducao = reducao;
    return d;
}

Item ItemOf(const leitura::ItemCupomFiscalRow& row)
{
    Item i;
    i.numero = row.seqItem;
    i.codigo = row.codItem;
    i.descricao = row.descricao;
    i.quantidade = row.quantidade;
    i.aliquota = row.aliquota;
    i.unidade = row.unMedida;
    i.valorUnitario = row.valorUnitario;
    i.desconto = {row.tipoDesconto, row.percDesconto, row.valorDesconto};
    i.acrescimo = {row.tipoAcrescimo, row.percAcrescimo, row.valorAcrescimo};
    i.acrescimoCancelado = row.valorCancAcrescimo;
    i.liquido = row.valorTotal;
    i.arredondaTrunca = row.arredTruncValor;
    i.cancelado = row.cancelado;
    i.casasQuantidade = Casas(row.casasDecimaisQuantidade, 0);
    i.casasValor = Casas(row.casasDecimaisValor, 2);
    return i;
}

Item ItemOf(const leitura::ItemCupomNfRow& row)
{
    Item i;
    i.numero = row.seqItem;
    i.totalizador = row.indiceTotalizadorNf;
    i.liquido = row.valorTotalLiquido;
    i.desconto = {row.tipoDesconto, row.percDesconto, row.valorDesconto};
    i.acrescimo = {row.tipoAcrescimo, row.percAcrescimo, row.valorAcrescimo};
    i.acrescimoCancelado = row.valorCancAcrescimo;
    i.cancelado = row.cancelado;
    return i;
}

Pagamento PagamentoOf(const leitura::PagamentoCupomRow& row)
{
    Pagamento p;
    p.gnf = row.gnf;
    p.valor = row.valorPagamento;
    p.parcelas = row.numParcelas;
    p.info = row.infoAdicional;
    p.meio = row.indiceMeioPagamento;
    p.estornado = row.estornado;
    p.valorEstornado = row.valorEstornado;
    return p;
}

} // namespace bancada::relatorio
