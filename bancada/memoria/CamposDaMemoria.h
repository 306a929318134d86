// The fields of a register's state as a memory file names them, each listed once: the visitor
// either writes or reads them (EscritaJson, LeituraJson, which have the same operations).
#pragma once

#include "bancada/memoria/NomesDaMemoria.h"
#include "bancada/registro/Memoria.h"

#include <cstddef>

namespace bancada
{

// M is Memoria to be read into, or const Memoria to be written; so are the parts below.

template <class V, class M>
void CamposDaBaseFiscal(V& v, M& base)
{
    for (std::size_t imposto = 0; imposto < BASES_DE_IMPOSTO; ++imposto) {
        v.Grupo(NOMES_IMPOSTOS[imposto], [&](auto& grupo) {
            grupo.Mapa("totalizadores", NomesDosTotalizadores(imposto), 0,
                       [&](auto& totalizador, std::size_t i) {
                           totalizador.Marca("programado", base.programado[imposto][i]);
                           if (i < MAX_ALIQUOTAS) {
                               totalizador.Percentual("aliquota", base.aliquota[imposto][i]);
                           }
                           totalizador.Valor("total", base.totais[imposto][i]);
                       });
            grupo.Valor("descontos", base.descontos[imposto]);
            grupo.Valor("acrescimos", base.acrescimos[imposto]);
            grupo.Valor("cancelamentos", base.cancelamentos[imposto]);
        });
    }
    v.Valor("venda_bruta", base.vendaBruta);
}

template <class V, class M>
void CamposDaBaseNaoFiscal(V& v, M& base)
{
    // The till's own two have a name from the factory on, so that an empty one is worth writing.
    v.Mapa("totalizadores", NumerosAPartirDeUm(MAX_TOTALIZADORES_NF), NUMERO_NF_SANGRIA,
           [&](auto& totalizador, std::size_t i) {
               totalizador.Texto("nome", base.nome[i]);
               totalizador.Valor("total", base.totais[i]);
           });
}

template <class V, class M>
void CamposDaJornada(V& v, M& jornada)
{
    v.Marca("aberta", jornada.aberta);
    v.Instante("data", jornada.data);
    v.Instante("inicio", jornada.inicio);
    v.Instante("fim", jornada.fim);
    v.Segundos("emitindo", jornada.emitindo);
    v.Mapa("meios", NumerosAPartirDeUm(MAX_MEIOS_PAGAMENTO), 0,
           [&](auto& meio, std::size_t i) { meio.Valor("recebido", jornada.meios[i]); });
    v.Valor("troco", jornada.troco);
}

template <class V, class M>
void CamposDoItem(V& v, M& item)
{
    v.Texto("codigo", item.codigo);
    v.Texto("descricao", item.descricao);
    v.Texto("unidade", item.unidade);
    v.Texto("tributacao", item.tributacao);
    v.Inteiro("numero", item.numero, 0, MAX_TOTALIZADORES);
    v.Numero("quantidade", item.quantidade);
    v.Numero("valor_unitario", item.valorUnitario);
    v.Marca("arredonda", item.arredonda);
    v.Inteiro("base_imposto", item.baseImposto, 0, BASES_DE_IMPOSTO - 1);
    v.Inteiro("posicao", item.posicao, 0, MAX_TOTALIZADORES - 1);
    v.Valor("bruto", item.bruto);
    v.Valor("desconto", item.desconto);
    v.Valor("acrescimo", item.acrescimo);
    v.Valor("rateio", item.rateio);
    v.Marca("cancelado", item.cancelado);
}

template <class V, class M>
void CamposDoCupom(V& v, M& cupom)
{
    v.Opcao("situacao", cupom.situacao, NOMES_SITUACAO);
    v.Opcao("tipo", cupom.tipo, NOMES_TIPO_CUPOM);
    v.Marca("movimento_de_caixa", cupom.movimentoDeCaixa);
    v.Inteiro("coo", cupom.coo, 0, MAX_CONTADOR);
    v.Inteiro("ccf", cupom.ccf, 0, MAX_CONTADOR);
    v.Inteiro("gnf", cupom.gnf, 0, MAX_CONTADOR);
    v.Instante("abertura", cupom.abertura);
    v.Instante("fechamento", cupom.fechamento);
    v.Grupo("consumidor", [&](auto& consumidor) {
        consumidor.Texto("cpf_cnpj", cupom.consumidor.cpfCnpj);
        consumidor.Texto("nome", cupom.consumidor.nome);
        consumidor.Texto("endereco", cupom.consumidor.endereco);
    });
    v.Lista("itens", cupom.itens, MAX_ITENS_CUPOM,
            [](auto& visitante, auto& item) { CamposDoItem(visitante, item); });
    v.Inteiro("itens_vivos", cupom.itensVivos, 0, MAX_ITENS_CUPOM);
    v.Valor("subtotal", cupom.subtotal);
    v.Marca("ajuste_aplicado", cupom.ajusteAplicado);
    v.Opcao("ajuste_operacao", cupom.ajusteOperacao, NOMES_OPERACAO);
    v.Valor("ajuste_valor", cupom.ajusteValor);
    v.Valor("ajuste_cancelado", cupom.ajusteCancelado);
    v.Lista("pagamentos", cupom.pagamentos, MAX_PAGAMENTOS_CUPOM,
            [](auto& visitante, auto& pagamento) {
                visitante.Inteiro("posicao_meio", pagamento.meio, 0, MAX_MEIOS_PAGAMENTO - 1);
                visitante.Valor("valor", pagamento.valor);
                visitante.Inteiro("ordem_ccd", pagamento.ordemCCD, 0, MAX_CONTADOR);
            });
    v.Valor("pago", cupom.pago);
    v.Valor("troco", cupom.troco);
    v.Texto("mensagem", cupom.mensagem);
    v.Bytes("assinatura", cupom.assinatura);
}

template <class V, class M>
void CamposDaMemoria(V& v, M& memoria)
{
    v.Grupo("contadores", [&](auto& contadores) {
        for (std::size_t i = 0; i < memoria.contadores.size(); ++i) {
            contadores.Inteiro(NOMES_CONTADORES[i], memoria.contadores[i], 0, MAX_CONTADOR);
        }
    });
    v.Valor("gt", memoria.gt);
    v.Valor("gt_ultima_rz", memoria.gtUltimaRZ);
    v.Valor("gt_inicial", memoria.gtInicial);
    v.Grupo("fiscal", [&](auto& base) { CamposDaBaseFiscal(base, memoria.fiscal); });
    v.Grupo("nao_fiscal", [&](auto& base) { CamposDaBaseNaoFiscal(base, memoria.naoFiscal); });
    v.Grupo("fiscal_rz", [&](auto& base) { CamposDaBaseFiscal(base, memoria.fiscalRZ); });
    v.Grupo("nao_fiscal_rz", [&](auto& base) { CamposDaBaseNaoFiscal(base, memoria.naoFiscalRZ); });
    v.Grupo("jornada", [&](auto& jornada) { CamposDaJornada(jornada, memoria.jornada); });
    v.Instante("data_fechada", memoria.dataFechada);
    v.Grupo("cupom", [&](auto& cupom) { CamposDoCupom(cupom, memoria.cupom); });
    v.Opcao("documento", memoria.documento, NOMES_DOCUMENTO);
    v.Opcao("modo", memoria.modo, NOMES_MODO);
    v.Mapa("meios", NumerosAPartirDeUm(MAX_MEIOS_PAGAMENTO), 0, [&](auto& meio, std::size_t i) {
        meio.Texto("descricao", memoria.meios[i].descricao);
        meio.Opcao("vinculacao", memoria.meios[i].vinculacao, NOMES_VINCULACAO,
                   MeioDePagamento().vinculacao);
    });
    v.Grupo("contribuinte", [&](auto& contribuinte) {
        contribuinte.Texto("razao_social", memoria.contribuinte.razaoSocial);
        contribuinte.Texto("nome_fantasia", memoria.contribuinte.nomeFantasia);
        contribuinte.Texto("endereco", memoria.contribuinte.endereco);
        contribuinte.Texto("cnpj", memoria.contribuinte.cnpj);
        contribuinte.Texto("ie", memoria.contribuinte.ie);
        contribuinte.Texto("im", memoria.contribuinte.im);
        contribuinte.Texto("uf", memoria.contribuinte.uf);
    });
    v.Grupo("ecf", [&](auto& ecf) {
        ecf.Texto("marca", memoria.ecf.marca);
        ecf.Texto("modelo", memoria.ecf.modelo);
        ecf.Texto("tipo", memoria.ecf.tipo);
        ecf.Texto("num_serie", memoria.ecf.numSerie);
        ecf.Texto("versao_sb", memoria.ecf.versaoSB);
        ecf.Texto("simbolo_moeda", memoria.ecf.simboloMoeda);
        ecf.Inteiro("sequencia", memoria.ecf.sequencia, 0, MAX_SEQUENCIA_ECF);
        ecf.Inteiro("loja", memoria.ecf.loja, 0, MAX_NUMERO_LOJA);
    });
    v.Marca("ratear_subtotal", memoria.ratearSubtotal);
    v.Texto("aplicativo", memoria.aplicativo);
}

} // namespace bancada
