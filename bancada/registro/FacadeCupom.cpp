// The facade: counters, the current receipt and its signature.
#include "bancada/registro/Assinatura.h"
#include "bancada/registro/CurrentCupom.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/TextForms.h"

#include <cstdio>

namespace bancada
{

namespace
{

// The item at that position, or null.
const ItemVendido* Item(const Memoria& memoria, int item)
{
    if (item < 0 || static_cast<std::size_t>(item) >= memoria.cupom.itens.size()) {
        return nullptr;
    }
    return &memoria.cupom.itens[static_cast<std::size_t>(item)];
}

} // namespace

int Registro::Contador_Get(FISCALDATA_COUNTER_INDEX contador)
{
    if (contador < 0 || contador >= COUNTER_MAX_SIZE) {
        return 0;
    }
    return m_memoria.contadores[static_cast<std::size_t>(contador)];
}

int Registro::Cupom_GetCOO()
{
    return m_memoria.cupom.coo;
}

int Registro::Cupom_GetQuantidadeDeItens()
{
    return static_cast<int>(m_memoria.cupom.itens.size());
}

char* Registro::Cupom_GetItemQtdeStr(int item, char* out, int size)
{
    const ItemVendido* vendido = Item(m_memoria, item);
    return CopyText(vendido ? DecimalToText(vendido->quantidade) : "", out, size);
}

char* Registro::Cupom_GetItemValorUnitarioStr(int item, char* out, int size)
{
    const ItemVendido* vendido = Item(m_memoria, item);
    return CopyText(vendido ? DecimalToText(vendido->valorUnitario) : "", out, size);
}

Financial Registro::Cupom_GetItemValorTotal(int item)
{
    const ItemVendido* vendido = Item(m_memoria, item);
    return vendido ? ItemLiquido(*vendido) : Financial();
}

Financial Registro::Cupom_GetItemValorAcr(int item)
{
    const ItemVendido* vendido = Item(m_memoria, item);
    return vendido ? vendido->acrescimo : Financial();
}

Financial Registro::Cupom_GetItemValorDesc(int item)
{
    const ItemVendido* vendido = Item(m_memoria, item);
    return vendido ? vendido->desconto : Financial();
}

Financial Registro::Cupom_GetSubTotal()
{
    return m_memoria.cupom.subtotal;
}

Financial Registro::Cupom_GetTotal()
{
    return CupomTotal(m_memoria.cupom);
}

Financial Registro::Cupom_GetTroco()
{
    return m_memoria.cupom.troco;
}

BOOL Registro::Cupom_GetSTAcrAplicado()
{
    return m_memoria.cupom.ajusteAplicado && m_memoria.cupom.ajusteOperacao == ACRESCIMO ? TRUE
                                                                                         : FALSE;
}

BOOL Registro::Cupom_GetSTDescAplicado()
{
    return m_memoria.cupom.ajusteAplicado && m_memoria.cupom.ajusteOperacao == DESCONTO ? TRUE
                                                                                        : FALSE;
}

Financial Registro::Cupom_GetSTValorDescAcr()
{
    return m_memoria.cupom.ajusteValor;
}

Financial Registro::Cupom_GetSTValorCanceladoDescAcr()
{
    return m_memoria.cupom.ajusteCancelado;
}

FD_TIPO_CUPOM Registro::Cupom_GetTipoCupom()
{
    return m_memoria.cupom.tipo;
}

BOOL Registro::Cupom_GetRateioPorItem(Cupom* copy)
{
    const CurrentCupom& cupom = m_memoria.cupom;
    if (cupom.situacao == ESituacaoCupom::NENHUM) {
        return FALSE;
    }
    copy->m_iQuantidadeDeItens = Cupom_GetQuantidadeDeItens();
    for (std::size_t i = 0; i < cupom.itens.size(); ++i) {
        const ItemVendido& item = cupom.itens[i];
        ItemCupom& target = copy->m_Itens[i];
        target.m_finValorTotal = ItemRateado(cupom, item);
        target.m_finValorDesc = item.desconto;
        target.m_finValorAcr = item.acrescimo;
        if (cupom.ajusteOperacao == DESCONTO) {
            target.m_finValorDesc += item.rateio;
        } else {
            target.m_finValorAcr += item.rateio;
        }
    }
    for (std::size_t i = 0; i < cupom.pagamentos.size(); ++i) {
        copy->m_Pagamentos[i].m_iMeioPagamento = cupom.pagamentos[i].meio;
        copy->m_Pagamentos[i].m_finValor = cupom.pagamentos[i].valor;
    }
    return TRUE;
}

char* Registro::CFe_GetChaveDeBusca(char* out, int size)
{
    char data[16];
    m_memoria.cupom.abertura.ToStrDate("yyyymmdd", data);
    char coo[16];
    std::snprintf(coo, sizeof coo, "%06d", m_memoria.cupom.coo);
    const std::string& cnpj = m_memoria.contribuinte.cnpj;
    return CopyText((cnpj.empty() ? "00000000000000" : cnpj) + '-' + m_memoria.ecf.numSerie + '-' +
                        data + '-' + coo,
                    out, size);
}

int Registro::AssinaturaDigital_GetBase64(char* out, char* signature)
{
    WriteBase64(signature, out);
    return ASSINATURA_BASE64_LENGTH;
}

char* Registro::DadosPDV_GetIdAplicativo(char* out, int size)
{
    return CopyText(m_memoria.aplicativo, out, size);
}

} // namespace bancada
