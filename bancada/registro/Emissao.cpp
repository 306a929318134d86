#include "bancada/registro/Emissao.h"

#include "bancada/registro/Assinatura.h"
#include "bancada/registro/Contadores.h"
#include "bancada/registro/CupomAtual.h"
#include "bancada/registro/Escrituracao.h"
#include "bancada/registro/Jornada.h"

#include <utility>

namespace bancada
{

void IniciaCupom(Memoria& memoria, FD_TIPO_CUPOM tipo, const Consumidor& consumidor,
                 RtcAbsoluteTime em)
{
    MovimentaJornada(memoria, em);
    CupomAtual cupom;
    cupom.situacao = ESituacaoCupom::EM_ITENS;
    cupom.tipo = tipo;
    cupom.coo = AvancaContador(memoria, COUNTER_COO);
    if (tipo == CUPOM_FISCAL) {
        cupom.ccf = AvancaContador(memoria, COUNTER_CCF);
    } else {
        cupom.gnf = AvancaContador(memoria, COUNTER_GNF);
    }
    cupom.abertura = em;
    cupom.consumidor = consumidor;
    memoria.cupom = std::move(cupom);
}

void AcrescentaItem(Memoria& memoria, ItemRegistrado item)
{
    CupomAtual& cupom = memoria.cupom;
    cupom.itens.push_back(std::move(item));
    ++cupom.itensVivos;
    cupom.subtotal += cupom.itens.back().bruto;
    EscrituraVenda(memoria, cupom.itens.back());
}

void ConcluiCupom(Memoria& memoria, const std::string& mensagem, RtcAbsoluteTime em)
{
    CupomAtual& cupom = memoria.cupom;
    for (const PagamentoRegistrado& pagamento : cupom.pagamentos) {
        memoria.jornada.meios[static_cast<std::size_t>(pagamento.meio)] += pagamento.valor;
    }
    memoria.jornada.troco += cupom.troco;
    ContaTempoDeEmissao(memoria, em);
    cupom.situacao = ESituacaoCupom::FECHADO;
    cupom.fechamento = em;
    cupom.mensagem = mensagem;
    cupom.assinatura = Assina(memoria);
}

void ContaTempoDeEmissao(Memoria& memoria, RtcAbsoluteTime em)
{
    if (memoria.cupom.tipo == CUPOM_FISCAL) {
        memoria.jornada.emitindo.s += Intervalo(memoria.cupom.abertura, em).s;
    }
}

} // namespace bancada
