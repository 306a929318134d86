// Every field of the register's state goes into a memory file and comes out of it.
#include "bancada/memoria/MemoriaJson.h"
#include "bancada/memoria/MemoriaNames.h"
#include "tests/bancada/memoria/MemoriaParts.h"
#include "tests/bancada/registro/RegistroTest.h"

#include <gtest/gtest.h>

using namespace bancada;
using bancada_test::Fill;
using bancada_test::Same;

namespace
{

// No two of its fields are alike, and none is as the factory leaves it, as far as their ranges
// allow.
Memoria FullMemoria()
{
    Memoria memoria;
    memoria.cupom.itens.resize(3);
    memoria.cupom.pagamentos.resize(2);
    int next = 1000;
    Fill(memoria, next);

    // What has a narrower range than a number has.
    int posicao = 31;
    for (ItemVendido& item : memoria.cupom.itens) {
        item.numero = posicao - 29;
        item.baseImposto = 1;
        item.posicao = posicao++;
        item.quantidade.decimals = 3;
        item.valorUnitario.decimals = 2;
    }
    int meio = 18;
    for (PagamentoEfetuado& pagamento : memoria.cupom.pagamentos) {
        pagamento.meio = meio++;
    }
    memoria.ecf.sequencia = 998;
    memoria.ecf.loja = 9998;
    memoria.cupom.itensVivos = 999;
    memoria.cupom.situacao = ESituacaoCupom::CANCELADO;
    memoria.cupom.tipo = CUPOM_FISCAL;
    memoria.cupom.ajusteOperacao = ACRESCIMO;
    memoria.documento = EDocumentoAberto::GERENCIAL;
    memoria.modo = EModoIntervencao::MIT;
    for (MeioDePagamento& programado : memoria.meios) {
        programado.vinculacao = COM_CCD;
    }
    std::swap(memoria.gt, memoria.gtInicial); // the grand total is the largest of the three
    return memoria;
}

TEST(MemoriaJson, EveryFieldSurvives)
{
    const Memoria memoria = FullMemoria();
    EXPECT_FALSE(Same(memoria, Memoria()));
    EXPECT_TRUE(Same(MemoriaFromJson(MemoriaToJson(memoria), "registro"), memoria))
        << MemoriaToJson(memoria).dump(1);
}

// Applies what has changed from `before` to `after` to another copy of `before`.
void ExpectChanged(const Memoria& before, const Memoria& after)
{
    Memoria taken = before;
    const std::string changes = TakeMemoriaChanges(taken, after);
    EXPECT_TRUE(Same(taken, after)) << changes;
    Memoria changed = before;
    ChangeMemoria(changed, nlohmann::json::parse(changes), "registro");
    EXPECT_TRUE(Same(changed, after)) << changes;
    EXPECT_EQ(TakeMemoriaChanges(taken, after), "{}");
}

TEST(MemoriaJson, EveryChangedFieldSurvives)
{
    const Memoria full = FullMemoria();
    ExpectChanged(Memoria(), full);
    ExpectChanged(full, Memoria());
    ExpectChanged(full, full);

    // Lists that get longer, shorter, and other elements.
    Memoria other = full;
    other.cupom.itens.pop_back();
    other.cupom.itens[1].descricao = "\"A\\\n\xC3\x87";
    other.cupom.pagamentos.resize(5);
    other.cupom.pagamentos[4].ordemCCD = 1;
    ExpectChanged(full, other);
    ExpectChanged(other, full);
}

TEST(MemoriaJson, NothingElseIsToldOfAChange)
{
    const Memoria full = FullMemoria();
    Memoria before = full;
    Memoria after = full;
    after.gt = Financial::FromCents(250);
    after.cupom.itens.resize(4);
    after.cupom.itens[1].cancelado = !after.cupom.itens[1].cancelado;
    after.cupom.itens[3].codigo = "9";
    EXPECT_EQ(TakeMemoriaChanges(before, after),
              std::string(R"({"gt":"2.50","cupom":{"itens":{"tamanho":4,"2":{"cancelado":)") +
                  (after.cupom.itens[1].cancelado ? "true" : "false") +
                  R"(},"4":{"codigo":"9"}}}})");
}

TEST(MemoriaJson, AChangeIsRefusedAsAStateIs)
{
    const auto change = [](const char* text) {
        Memoria memoria;
        ChangeMemoria(memoria, nlohmann::json::parse(text), "registro");
    };
    EXPECT_ANY_THROW(change(R"({"gtt":"2.50"})"));
    EXPECT_ANY_THROW(change(R"({"cupom":{"itens":{"1":{}}}})"));
    EXPECT_ANY_THROW(change(R"({"cupom":{"itens":{"tamanho":1000}}})"));
    EXPECT_ANY_THROW(change(R"({"cupom":{"itens":[]}})"));
    EXPECT_ANY_THROW(change(R"({"gt_inicial":"2.50"})"));
    EXPECT_NO_THROW(change(R"({"cupom":{"itens":{"tamanho":999}}})"));
}

TEST(MemoriaJson, TheOtherValueOfEveryOptionSurvives)
{
    Memoria memoria;
    memoria.meios[7].vinculacao = COM_CCD; // of one without a name
    memoria.cupom.itens.resize(1);
    memoria.cupom.situacao = ESituacaoCupom::FECHADO;
    memoria.documento = EDocumentoAberto::CCD;
    memoria.modo = EModoIntervencao::MIL;
    EXPECT_TRUE(Same(MemoriaFromJson(MemoriaToJson(memoria), "registro"), memoria));
}

TEST(MemoriaJson, WhatIsNotNamedIsAsTheFactoryLeavesIt)
{
    EXPECT_TRUE(Same(MemoriaFromJson(nlohmann::json::object(), "registro"), Memoria()));
    EXPECT_TRUE(Same(MemoriaFromJson(MemoriaToJson(Memoria()), "registro"), Memoria()));

    const Memoria memoria = MemoriaFromJson(
        nlohmann::json::parse(R"({"nao_fiscal":{"totalizadores":{"3":{"nome":"RECARGA"}}}})"),
        "registro");
    EXPECT_EQ(memoria.naoFiscal.nome[0], "FUNDO DE TROCO");
    EXPECT_EQ(memoria.naoFiscal.nome[2], "RECARGA");
}

// An array of names written by hand beside an enumeration goes wrong silently.
TEST(MemoriaJson, CountersAndTotalizersHaveTheirOwnNames)
{
    const Memoria memoria = MemoriaFromJson(nlohmann::json::parse(R"({
        "contadores": {"coo": 1, "crz": 2, "cro": 3, "ccf": 4, "gnf": 5, "cfd": 6, "cdc": 7,
                       "grg": 8, "nfc": 9, "gfc": 10, "cfc": 11, "ctm": 12, "con": 13, "cer": 14,
                       "ncn": 15, "coo_inseridos": 16, "coo_restantes_ref": 999999},
        "fiscal": {"icms": {"totalizadores": {"T1": {"aliquota": "18"}, "T30": {"aliquota": "0.01"},
                            "F1": {"total": "1"}, "N3": {"total": "2.5"}}},
                   "issqn": {"totalizadores": {"S2": {"aliquota": "99.99"},
                             "IS1": {"programado": true}}}}})"),
                                            "registro");
    EXPECT_EQ(memoria.contadores[COUNTER_COO], 1);
    EXPECT_EQ(memoria.contadores[COUNTER_CRZ], 2);
    EXPECT_EQ(memoria.contadores[COUNTER_CRO], 3);
    EXPECT_EQ(memoria.contadores[COUNTER_CCF], 4);
    EXPECT_EQ(memoria.contadores[COUNTER_GNF], 5);
    EXPECT_EQ(memoria.contadores[COUNTER_CFD], 6);
    EXPECT_EQ(memoria.contadores[COUNTER_CDC], 7);
    EXPECT_EQ(memoria.contadores[COUNTER_GRG], 8);
    EXPECT_EQ(memoria.contadores[COUNTER_NFC], 9);
    EXPECT_EQ(memoria.contadores[COUNTER_GFC], 10);
    EXPECT_EQ(memoria.contadores[COUNTER_CFC], 11);
    EXPECT_EQ(memoria.contadores[COUNTER_CTM], 12);
    EXPECT_EQ(memoria.contadores[COUNTER_CON], 13);
    EXPECT_EQ(memoria.contadores[COUNTER_CER], 14);
    EXPECT_EQ(memoria.contadores[COUNTER_NCN], 15);
    EXPECT_EQ(memoria.contadores[COUNTER_COO_INSERIDOS], 16);
    EXPECT_EQ(memoria.contadores[COUNTER_COO_RESTANTES_REF], 999999);
    EXPECT_EQ(memoria.fiscal.aliquota[0][0], 1800);
    EXPECT_EQ(memoria.fiscal.aliquota[0][29], 1);
    EXPECT_EQ(memoria.fiscal.aliquota[1][1], 9999);
    EXPECT_EQ(Text(memoria.fiscal.totais[0][30]), "1.00");
    EXPECT_EQ(Text(memoria.fiscal.totais[0][38]), "2.50");
    EXPECT_TRUE(memoria.fiscal.programado[1][33]);
}

} // namespace
