// The facade: counters, the current receipt and its signature.
#include "bancada/registro/Assinatura.h"
#include "bancada/registro/CupomAtual.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Textos.h"

#include <cstdio>

namespace bancada
{

namespace
{

// The item at that position, or null.
const ItemRegistrado* Item(const Memoria& memoria, int item)
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
    const ItemRegistrado* registrado = Item(m_memoria, item);
    return CopiaTexto(registrado ? TextoDecimal(registrado->quantidade) : "", out, size);
}

char* Registro::Cupom_GetItemValorUnitarioStr(int item, char* out, int size)
{
    const ItemRegistrado* registrado = Item(m_memoria, item);
    return CopiaTexto(registrado ? TextoDecimal(registrado->valorUnitario) : "", out, size);
}

Financial Registro::Cupom_GetItemValorTotal(int item)
{
    const ItemRegistrado* registrado = Item(m_memoria, item);
    return registrado ? LiquidoDoItem(*registrado) : Financial();
}

Financial Registro::Cupom_GetItemValorAcr(int item)
{
    const ItemRegistrado* registrado = Item(m_memoria, item);
    return registrado ? registrado->acrescimo : Financial();
}

Financial Registro::Cupom_GetItemValorDesc(int item)
{
    const ItemRegistrado* registrado = Item(m_memoria, item);
    return registrado ? registrado->desconto : Financial();
}

Financial Registro::Cupom_GetSubTotal()
{
    return m_memoria.cupom.subtotal;
}

Financial Registro::Cupom_GetTotal()
{
    return TotalDoCupom(m_memoria.cupom);
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
    const CupomAtual& cupom = m_memoria.cupom;
    if (cupom.situacao == ESituacaoCupom::NENHUM) {
        return FALSE;
    }
    copy->m_iQuantidadeDeItens = Cupom_GetQuantidadeDeItens();
    for (std::size_t i = 0; i < cupom.itens.size(); ++i) {
        const ItemRegistrado& item = cupom.itens[i];
        ItemCupom& destino = copy->m_Itens[i];
        destino.m_finValorTotal = LiquidoRateado(cupom, item);
        destino.m_finValorDesc = item.desconto;
        destino.m_finValorAcr = item.acrescimo;
        if (cupom.ajusteOperacao == DESCONTO) {
            destino.m_finValorDesc += item.rateio;
        } else {
            destino.m_finValorAcr += item.rateio;
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
    return CopiaTexto((cnpj.empty() ? "00000000000000" : cnpj) + '-' + m_memoria.ecf.numSerie +
                          '-' + data + '-' + coo,
                      out, size);
}

int Registro::AssinaturaDigital_GetBase64(char* out, char* signature)
{
    EscreveBase64(signature, out);
    return TAMANHO_ASSINATURA_BASE64;
}

char* Registro::DadosPDV_GetIdAplicativo(char* out, int size)
{
    return CopiaTexto(m_memoria.aplicativo, out, size);
}

} // namespace bancada
