#include "bancada/registro/Emissao.h"

#include "bancada/registro/Assinatura.h"
#include "bancada/registro/Booking.h"
#include "bancada/registro/Contadores.h"
#include "bancada/registro/CurrentCupom.h"
#include "bancada/registro/Jornada.h"

#include <utility>

namespace bancada
{

void BeginCupom(Memoria& memoria, FD_TIPO_CUPOM tipo, const Consumidor& consumidor,
                RtcAbsoluteTime em)
{
    OpenJornada(memoria, em);
    CurrentCupom cupom;
    cupom.situacao = ESituacaoCupom::EM_ITENS;
    cupom.tipo = tipo;
    cupom.coo = AdvanceContador(memoria, COUNTER_COO);
    if (tipo == CUPOM_FISCAL) {
        cupom.ccf = AdvanceContador(memoria, COUNTER_CCF);
    } else {
        cupom.gnf = AdvanceContador(memoria, COUNTER_GNF);
    }
    cupom.abertura = em;
    cupom.consumidor = consumidor;
    memoria.cupom = std::move(cupom);
}

void AddItem(Memoria& memoria, ItemVendido item)
{
    CurrentCupom& cupom = memoria.cupom;
    cupom.itens.push_back(std::move(item));
    ++cupom.itensVivos;
    cupom.subtotal += cupom.itens.back().bruto;
    BookVenda(memoria, cupom.itens.back());
}

void FinishCupom(Memoria& memoria, const std::string& mensagem, RtcAbsoluteTime fim)
{
    CurrentCupom& cupom = memoria.cupom;
    for (const PagamentoEfetuado& pagamento : cupom.pagamentos) {
        memoria.jornada.meios[static_cast<std::size_t>(pagamento.meio)] += pagamento.valor;
    }
    memoria.jornada.troco += cupom.troco;
    CountTempoDeEmissao(memoria, fim);
    cupom.situacao = ESituacaoCupom::FECHADO;
    cupom.fechamento = fim;
    cupom.mensagem = mensagem;
    cupom.assinatura = Sign(memoria);
}

void CountTempoDeEmissao(Memoria& memoria, RtcAbsoluteTime fim)
{
    if (memoria.cupom.tipo == CUPOM_FISCAL) {
        memoria.jornada.emitindo.s += TimeBetween(memoria.cupom.abertura, fim).s;
    }
}

} // namespace bancada
