// The fields of a register's state as a memory file names them, each listed once: the visitor
// either writes or reads them (JsonWriter, JsonReader, which have the same operations).
#pragma once

#include "bancada/memoria/MemoriaNames.h"
#include "bancada/registro/Memoria.h"

#include <cstddef>

namespace bancada
{

// M is Memoria to be read into, or const Memoria to be written; so are the parts below.

template <class V, class M>
void VisitBaseFiscal(V& v, M& base)
{
    for (std::size_t imposto = 0; imposto < BASES_DE_IMPOSTO; ++imposto) {
        v.Group(IMPOSTO_NAMES[imposto], [&](auto& group) {
            group.Map("totalizadores", TotalizadorNames(imposto), 0,
                      [&](auto& totalizador, std::size_t i) {
                          totalizador.Flag("programado", base.programado[imposto][i]);
                          if (i < MAX_ALIQUOTAS) {
                              totalizador.Percent("aliquota", base.aliquota[imposto][i]);
                          }
                          totalizador.Money("total", base.totais[imposto][i]);
                      });
            group.Money("descontos", base.descontos[imposto]);
            group.Money("acrescimos", base.acrescimos[imposto]);
            group.Money("cancelamentos", base.cancelamentos[imposto]);
        });
    }
    v.Money("venda_bruta", base.vendaBruta);
}

template <class V, class M>
void VisitBaseNaoFiscal(V& v, M& base)
{
    // The till's own two have a name from the factory on, so that an empty one is worth writing.
    v.Map("totalizadores", NumbersFromOne<MAX_TOTALIZADORES_NF>(), NUMERO_NF_SANGRIA,
          [&](auto& totalizador, std::size_t i) {
              totalizador.Text("nome", base.nome[i]);
              totalizador.Money("total", base.totais[i]);
          });
}

template <class V, class M>
void VisitJornada(V& v, M& jornada)
{
    v.Flag("aberta", jornada.aberta);
    v.Instant("data", jornada.data);
    v.Instant("inicio", jornada.inicio);
    v.Instant("fim", jornada.fim);
    v.Seconds("emitindo", jornada.emitindo);
    v.Map("meios", NumbersFromOne<MAX_MEIOS_PAGAMENTO>(), 0,
          [&](auto& meio, std::size_t i) { meio.Money("recebido", jornada.meios[i]); });
    v.Money("troco", jornada.troco);
}

template <class V, class M>
void VisitItem(V& v, M& item)
{
    v.Text("codigo", item.codigo);
    v.Text("descricao", item.descricao);
    v.Text("unidade", item.unidade);
    v.Text("tributacao", item.tributacao);
    v.Integer("numero", item.numero, 0, MAX_TOTALIZADORES);
    v.Number("quantidade", item.quantidade);
    v.Number("valor_unitario", item.valorUnitario);
    v.Flag("arredonda", item.arredonda);
    v.Integer("base_imposto", item.baseImposto, 0, BASES_DE_IMPOSTO - 1);
    v.Integer("posicao", item.posicao, 0, MAX_TOTALIZADORES - 1);
    v.Money("bruto", item.bruto);
    v.Money("desconto", item.desconto);
    v.Money("acrescimo", item.acrescimo);
    v.Money("rateio", item.rateio);
    v.Flag("cancelado", item.cancelado);
}

template <class V, class M>
void VisitCupom(V& v, M& cupom)
{
    v.Choice("situacao", cupom.situacao, SITUACAO_NAMES);
    v.Choice("tipo", cupom.tipo, TIPO_CUPOM_NAMES);
    v.Flag("movimento_de_caixa", cupom.movimentoDeCaixa);
    v.Integer("coo", cupom.coo, 0, MAX_CONTADOR);
    v.Integer("ccf", cupom.ccf, 0, MAX_CONTADOR);
    v.Integer("gnf", cupom.gnf, 0, MAX_CONTADOR);
    v.Instant("abertura", cupom.abertura);
    v.Instant("fechamento", cupom.fechamento);
    v.Group("consumidor", [&](auto& consumidor) {
        consumidor.Text("cpf_cnpj", cupom.consumidor.cpfCnpj);
        consumidor.Text("nome", cupom.consumidor.nome);
        consumidor.Text("endereco", cupom.consumidor.endereco);
    });
    v.List("itens", cupom.itens, MAX_ITENS_CUPOM,
           [](auto& visitor, auto& item) { VisitItem(visitor, item); });
    v.Integer("itens_vivos", cupom.itensVivos, 0, MAX_ITENS_CUPOM);
    v.Money("subtotal", cupom.subtotal);
    v.Flag("ajuste_aplicado", cupom.ajusteAplicado);
    v.Choice("ajuste_operacao", cupom.ajusteOperacao, OPERACAO_NAMES);
    v.Money("ajuste_valor", cupom.ajusteValor);
    v.Money("ajuste_cancelado", cupom.ajusteCancelado);
    v.List("pagamentos", cupom.pagamentos, MAX_PAGAMENTOS_CUPOM,
           [](auto& visitor, auto& pagamento) {
               visitor.Integer("posicao_meio", pagamento.meio, 0, MAX_MEIOS_PAGAMENTO - 1);
               visitor.Money("valor", pagamento.valor);
               visitor.Integer("ordem_ccd", pagamento.ordemCCD, 0, MAX_CONTADOR);
           });
    v.Money("pago", cupom.pago);
    v.Money("troco", cupom.troco);
    v.Text("mensagem", cupom.mensagem);
    v.Bytes("assinatura", cupom.assinatura);
}

template <class V, class M>
void VisitMemoria(V& v, M& memoria)
{
    v.Group("contadores", [&](auto& contadores) {
        for (std::size_t i = 0; i < memoria.contadores.size(); ++i) {
            contadores.Integer(CONTADOR_NAMES[i], memoria.contadores[i], 0, MAX_CONTADOR);
        }
    });
    v.Money("gt", memoria.gt);
    v.Money("gt_ultima_rz", memoria.gtUltimaRZ);
    v.Money("gt_inicial", memoria.gtInicial);
    v.Group("fiscal", [&](auto& base) { VisitBaseFiscal(base, memoria.fiscal); });
    v.Group("nao_fiscal", [&](auto& base) { VisitBaseNaoFiscal(base, memoria.naoFiscal); });
    v.Group("fiscal_rz", [&](auto& base) { VisitBaseFiscal(base, memoria.fiscalRZ); });
    v.Group("nao_fiscal_rz", [&](auto& base) { VisitBaseNaoFiscal(base, memoria.naoFiscalRZ); });
    v.Group("jornada", [&](auto& jornada) { VisitJornada(jornada, memoria.jornada); });
    v.Instant("data_fechada", memoria.dataFechada);
    v.Instant("relogio", memoria.relogio);
    v.Group("cupom", [&](auto& cupom) { VisitCupom(cupom, memoria.cupom); });
    v.Choice("documento", memoria.documento, DOCUMENTO_NAMES);
    v.Choice("modo", memoria.modo, MODO_NAMES);
    v.Map("meios", NumbersFromOne<MAX_MEIOS_PAGAMENTO>(), 0, [&](auto& meio, std::size_t i) {
        meio.Text("descricao", memoria.meios[i].descricao);
        meio.Choice("vinculacao", memoria.meios[i].vinculacao, VINCULACAO_NAMES,
                    MeioDePagamento().vinculacao);
    });
    v.Group("contribuinte", [&](auto& contribuinte) {
        contribuinte.Text("razao_social", memoria.contribuinte.razaoSocial);
        contribuinte.Text("nome_fantasia", memoria.contribuinte.nomeFantasia);
        contribuinte.Text("endereco", memoria.contribuinte.endereco);
        contribuinte.Text("cnpj", memoria.contribuinte.cnpj);
        contribuinte.Text("ie", memoria.contribuinte.ie);
        contribuinte.Text("im", memoria.contribuinte.im);
        contribuinte.Text("uf", memoria.contribuinte.uf);
    });
    v.Group("ecf", [&](auto& ecf) {
        ecf.Text("marca", memoria.ecf.marca);
        ecf.Text("modelo", memoria.ecf.modelo);
        ecf.Text("tipo", memoria.ecf.tipo);
        ecf.Text("num_serie", memoria.ecf.numSerie);
        ecf.Text("versao_sb", memoria.ecf.versaoSB);
        ecf.Text("simbolo_moeda", memoria.ecf.simboloMoeda);
        ecf.Integer("sequencia", memoria.ecf.sequencia, 0, MAX_SEQUENCIA_ECF);
        ecf.Integer("loja", memoria.ecf.loja, 0, MAX_NUMERO_LOJA);
    });
    v.Flag("ratear_subtotal", memoria.ratearSubtotal);
    v.Text("aplicativo", memoria.aplicativo);
}

} // namespace bancada
