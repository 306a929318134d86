// Reconciling a logging database: what is left on purpose is no fault, and each kind of finding is
// found where it is planted.
#include "tests/bancada/check_Banco.h"

#include <gmock/gmock.h>
#include <set>

namespace bancada
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(BancoConferido, AnEmptyDatabaseIsClean)
{
    EXPECT_THAT(Confere(), IsEmpty());
    EXPECT_EQ(m_resumo.avisos, 0);
}

TEST_F(BancoConferido, WhatTheLoggersLeaveOnPurposeIsNoFault)
{
    Escreve(DIAS_LIMPOS);
    EXPECT_THAT(Confere(), IsEmpty());
    EXPECT_EQ(m_resumo.cupons, 7);
    EXPECT_EQ(m_resumo.cuponsNf, 4);
    EXPECT_EQ(m_resumo.reducoes, 2);
    EXPECT_EQ(m_resumo.avisos, 2);
}

TEST_F(BancoConferido, AnAdditionalReceiptIsNoted)
{
    Escreve(DIAS_LIMPOS);
    EXPECT_THAT(Confere(nullptr, "cupom-adicional"),
                ElementsAre("cupom-adicional: COO 11: paid 10.00, closing never written"));
}

TEST_F(BancoConferido, TheReversalOfAVoucherIsNoted)
{
    Escreve(DIAS_LIMPOS);
    EXPECT_THAT(Confere(nullptr, "documento-sem-linha"),
                ElementsAre("documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before "
                            "COO 10"));
}

TEST_F(BancoConferido, TheReversalOfAVoucherAtTheEndMayBeOne)
{
    Escreve(DIAS_LIMPOS);
    Escreve("DELETE FROM outros_documentos WHERE cont_coo > 5;"
            "DELETE FROM cupom_nf WHERE cont_coo > 5; DELETE FROM item_cupom_nf WHERE cont_coo > 5;"
            "DELETE FROM reducao_z; DELETE FROM totalizador_reducao;"
            "DELETE FROM meio_pagamento_reducao; DELETE FROM cupom_fiscal WHERE cont_coo > 7;"
            "DELETE FROM item_cupom_fiscal WHERE cont_coo > 7;"
            "DELETE FROM pagamento_cupom WHERE cont_coo > 7;");
    EXPECT_THAT(Confere(), IsEmpty());
    EXPECT_THAT(
        Confere(nullptr, "documento-sem-linha"),
        ElementsAre("documento-sem-linha: COO 6: may be the reversal of a voucher; no later "
                    "document tells"));
}

TEST_F(BancoConferido, AReceiptWithoutApportionmentAddsUpToItsSubtotal)
{
    Escreve(DIAS_LIMPOS);
    Escreve("UPDATE item_cupom_fiscal SET valor_desconto = 1.00, valor_total = 9.00"
            " WHERE cont_coo = 4 AND seq_item = 1;"
            "UPDATE item_cupom_fiscal SET valor_desconto = 0, valor_total = 6.00"
            " WHERE cont_coo = 4 AND seq_item = 3");
    EXPECT_THAT(Confere(), IsEmpty());
}

TEST_F(BancoConferido, NumbersComeRoundAtSixDigits)
{
    Escreve(DIAS_LIMPOS);
    Escreve("UPDATE outros_documentos SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE cupom_fiscal SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE cupom_nf SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE item_cupom_fiscal SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE item_cupom_nf SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE pagamento_cupom SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE reducao_z SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE cupom_fiscal SET cont_ccf = (cont_ccf + 999994) % 999999 + 1;");
    EXPECT_THAT(Confere(), IsEmpty());
}

TEST_F(BancoConferido, TwoReversalsOfOneMeansAddUp)
{
    Escreve(DIAS_LIMPOS);
    // 1.00 and then 2.00 of the 3.00: the second statement takes the first amount off the value.
    Escreve("UPDATE pagamento_cupom SET valor_pagamento = 2.00, valor_estornado = 2.00"
            " WHERE cont_coo = 15 AND indice_meio_pagamento = 1;"
            "UPDATE pagamento_cupom SET valor_pagamento = 1.00 WHERE cont_gnf = 6;"
            "INSERT INTO pagamento_cupom VALUES (15,6,2.00,1,'',2,'N',0)");
    EXPECT_THAT(Confere(), IsEmpty());
}

TEST_F(BancoConferido, AReversalOfTwoPaymentsInOneMeansIsCountedOnce)
{
    Escreve(DIAS_LIMPOS);
    // The 3.00 in cash were 1.00 and 2.00: both rows carry the amount reversed.
    Escreve("UPDATE pagamento_cupom SET valor_pagamento = 1.00 WHERE cont_coo = 15"
            " AND indice_meio_pagamento = 1;"
            "INSERT INTO pagamento_cupom VALUES (15,5,2.00,1,'',1,'S',3.00)");
    EXPECT_THAT(Confere(), IsEmpty());
}

// A fault put into the clean days, and the finding it must give.
struct Plantado {
    const char* nome;
    const char* sql;
    const char* achado; // its kind and key
};

const Plantado PLANTADOS[] = {
    {"ReadingWithoutRow", "DELETE FROM outros_documentos WHERE cont_coo = 2",
     "coo-ausente: COO 2: "},
    {"ReprintWithoutRow", "DELETE FROM fita_detalhe", "coo-ausente: COO 12: "},
    {"CancellationOfAReceiptNotCancelled",
     "UPDATE cupom_fiscal SET id_cancelado = 'N' WHERE cont_coo = 7", "coo-ausente: COO 8: "},
    {"SeveralDocumentsWithoutRows",
     "UPDATE outros_documentos SET cont_coo = cont_coo + 3 WHERE cont_coo = 20;"
     "UPDATE reducao_z SET cont_coo = 23 WHERE cont_coo = 20;"
     "UPDATE cupom_fiscal SET cont_coo = 24 WHERE cont_coo = 21;"
     "UPDATE item_cupom_fiscal SET cont_coo = 24 WHERE cont_coo = 21",
     "coo-ausente: COO 20 to 22: "},
    {"DocumentTwice",
     "INSERT INTO outros_documentos VALUES"
     " (20,1,9,1,1,2,'2024-03-02 18:00:00','2024-03-02 18:00:00','LX')",
     "coo-repetido: COO 20: comes after COO 21"},
    {"DocumentGoesBack",
     "INSERT INTO outros_documentos VALUES"
     " (12,1,9,1,1,2,'2024-03-02 19:00:00','2024-03-02 19:00:00','LX')",
     "coo-repetido: COO 12: comes after COO 21"},
    {"FiscalReceiptWithoutRow", "DELETE FROM cupom_fiscal WHERE cont_coo = 4",
     "ccf-ausente: CCF 2: no fiscal receipt (COO 4)"},
    {"FiscalReceiptNumberTwice", "UPDATE cupom_fiscal SET cont_ccf = 5 WHERE cont_coo = 15",
     "ccf-repetido: CCF 5: COO 15 comes after CCF 5"},
    {"NonFiscalDocumentWithoutRow", "DELETE FROM outros_documentos WHERE cont_coo = 19",
     "gnf-ausente: GNF 9: "},
    {"ReversalWithoutItsVoucher",
     "UPDATE outros_documentos SET id_tipo_documento = 'RG' WHERE cont_coo = 5",
     "gnf-ausente: GNF 3: no non-fiscal document (COO 6)"},
    {"NonFiscalNumberTwice", "UPDATE outros_documentos SET cont_gnf = 8 WHERE cont_coo = 19",
     "gnf-repetido: GNF 8: COO 19 comes after GNF 8"},
    {"ReductionWithoutRow",
     "UPDATE reducao_z SET cont_crz = 3 WHERE cont_crz = 2;"
     "UPDATE totalizador_reducao SET cont_crz = 3 WHERE cont_crz = 2;"
     "UPDATE meio_pagamento_reducao SET cont_crz = 3 WHERE cont_crz = 2",
     "crz-ausente: CRZ 2: 1 without a row before CRZ 3"},
    {"ReductionTwice", "INSERT INTO reducao_z SELECT * FROM reducao_z WHERE cont_crz = 2",
     "crz-repetido: CRZ 2: comes after CRZ 2"},
    {"DocumentUnderAnotherReduction",
     "UPDATE outros_documentos SET cont_crz = 2 WHERE cont_coo = 17",
     "crz-documento: COO 17: filed under CRZ 2, the last Z is CRZ 1"},
    {"VoucherReversal", "SELECT 1", "documento-sem-linha: GNF 3: "},
    {"NumberUsedTwice", "UPDATE cupom_fiscal SET cont_coo = 3 WHERE cont_coo = 15",
     "coo-reutilizado: COO 3: 2 receipts share the number"},
    {"ItemsWithoutReceipt", "DELETE FROM cupom_fiscal WHERE cont_coo = 3",
     "item-sem-cupom: COO 3: 2 items without their receipt"},
    {"NonFiscalItemsWithoutReceipt", "DELETE FROM cupom_nf WHERE cont_coo = 10",
     "item-nf-sem-cupom: COO 10: 1 items without their receipt"},
    {"PaymentsWithoutReceipt", "DELETE FROM cupom_fiscal WHERE cont_coo = 15",
     "pagamento-sem-cupom: COO 15: 3 payments without their receipt"},
    {"ItemWithoutRow", "DELETE FROM item_cupom_fiscal WHERE cont_coo = 4 AND seq_item = 2",
     "item-ausente: COO 4: no row of item 2"},
    {"FirstNonFiscalItemsWithoutRows", "UPDATE item_cupom_nf SET seq_item = 3 WHERE cont_coo = 10",
     "item-ausente: COO 10: no row of item 1 to 2"},
    {"NonFiscalReceiptWithoutDocument", "DELETE FROM outros_documentos WHERE cont_coo = 10",
     "nf-sem-documento: COO 10: "},
    {"DocumentWithoutNonFiscalReceipt", "DELETE FROM cupom_nf WHERE cont_coo = 13",
     "documento-sem-nf: COO 13: "},
    {"ReductionWithoutDocument", "DELETE FROM outros_documentos WHERE cont_coo = 20",
     "reducao-sem-documento: COO 20: "},
    {"DocumentWithoutReduction", "DELETE FROM reducao_z WHERE cont_crz = 2",
     "documento-sem-reducao: COO 20: "},
    {"TotalizersWithoutReduction", "DELETE FROM reducao_z WHERE cont_crz = 2",
     "totalizador-sem-reducao: CRZ 2: 12 totalizers"},
    {"MeansWithoutReduction", "DELETE FROM reducao_z WHERE cont_crz = 2",
     "meio-sem-reducao: CRZ 2: 2 payment means"},
    {"ReductionWithoutFixedRow", "DELETE FROM totalizador_reducao WHERE totalizador = 'Can-S'",
     "reducao-incompleta: CRZ 1: no totalizer row Can-S"},
    {"ReductionWithoutChange",
     "DELETE FROM meio_pagamento_reducao WHERE descricao_meio_pagamento = 'TROCO'",
     "reducao-incompleta: CRZ 2: no row of the change"},
    {"DayWithoutReduction", "DELETE FROM reducao_z WHERE cont_crz = 2",
     "cupom-sem-reducao: CRZ 2: receipts from COO 15 to COO 17 and no Z"},
    {"ItemTwice",
     "INSERT INTO item_cupom_fiscal SELECT * FROM item_cupom_fiscal WHERE cont_coo = 3",
     "chave-repetida: item_cupom_fiscal COO 3: 2 rows of the same item"},
    {"NonFiscalItemTwice",
     "INSERT INTO item_cupom_nf SELECT * FROM item_cupom_nf WHERE cont_coo = 13",
     "chave-repetida: item_cupom_nf COO 13: "},
    {"NonFiscalReceiptTwice", "INSERT INTO cupom_nf SELECT * FROM cupom_nf WHERE cont_coo = 13",
     "chave-repetida: cupom_nf COO 13: "},
    {"TotalizerTwice",
     "INSERT INTO totalizador_reducao SELECT * FROM totalizador_reducao"
     " WHERE cont_crz = 2 AND totalizador = 'F1'",
     "chave-repetida: totalizador_reducao CRZ 2: "},
    {"MeansTwice",
     "INSERT INTO meio_pagamento_reducao SELECT * FROM meio_pagamento_reducao"
     " WHERE cont_crz = 2 AND indice_meio_pagamento = 1",
     "chave-repetida: meio_pagamento_reducao CRZ 2: "},
    {"InterventionTwice", "INSERT INTO intervencao SELECT * FROM intervencao",
     "chave-repetida: intervencao CRO 1: "},
    {"ReprintTwice", "INSERT INTO fita_detalhe SELECT * FROM fita_detalhe",
     "chave-repetida: fita_detalhe CFD 1: "},
    {"ProgrammedMeansTwice", "INSERT INTO meio_pagamento VALUES (2,1,'CARTAO','S')",
     "chave-repetida: meio_pagamento 2: "},
    {"ProgrammedTotalizerTwice", "INSERT INTO totalizador_nao_fiscal VALUES (3,'OUTRO')",
     "chave-repetida: totalizador_nao_fiscal 3: "},
    {"OwnerTwice", "INSERT INTO dados_usuario (seq_usuario) VALUES (1)",
     "chave-repetida: dados_usuario 1: "},
    {"VersionTwice", "INSERT INTO versao_sb VALUES (1,'02.00.00')",
     "chave-repetida: versao_sb 1: "},
    {"ReceiptLeftOpen", "DELETE FROM pagamento_cupom WHERE cont_coo = 11",
     "cupom-aberto: COO 11: never closed, paid 0.00 of 8.00"},
    {"ReceiptHalfPaid", "UPDATE pagamento_cupom SET valor_pagamento = 7.99 WHERE cont_coo = 11",
     "cupom-aberto: COO 11: never closed, paid 7.99 of 8.00"},
    {"AdditionalReceipt", "SELECT 1", "cupom-adicional: COO 11: "},
    {"TotalIsNotSubtotalWithAdjustment",
     "UPDATE cupom_fiscal SET valor_desconto = 1.49 WHERE cont_coo = 4",
     "cupom-total: COO 4: total 13.50, subtotal 15.00 less 1.49 plus 0.00"},
    {"ItemsDoNotAddUp",
     "UPDATE item_cupom_fiscal SET valor_unitario = 5.01, valor_total = 10.02"
     " WHERE cont_coo = 3 AND seq_item = 1",
     "cupom-itens: COO 3: live items 15.50, subtotal 15.48, total 15.48"},
    {"CancelledItemCountsAsLive",
     "UPDATE item_cupom_fiscal SET id_cancelado = 'N' WHERE cont_coo = 4", "cupom-itens: COO 4: "},
    {"PaymentsAreNotTheTotal", "UPDATE cupom_fiscal SET valor_troco = 4.51 WHERE cont_coo = 3",
     "cupom-pagamentos: COO 3: payments 20.00 less change 4.51, total 15.48"},
    {"ItemTotalIsRoundedInsteadOfCut",
     "UPDATE item_cupom_fiscal SET valor_total = 5.49 WHERE cont_coo = 3 AND seq_item = 2",
     "item-total: COO 3 item 2: total 5.49, quantity by price and adjustments 5.48"},
    {"NonFiscalReceiptLeftOpen",
     "UPDATE cupom_nf SET valor_subtotal = 0, valor_total_cupom = 0 WHERE cont_coo = 10",
     "nf-aberto: COO 10: never closed, live items 30.00"},
    {"NonFiscalTotalIsNotSubtotal",
     "UPDATE cupom_nf SET valor_total_cupom = 29.00 WHERE cont_coo = 10",
     "nf-total: COO 10: total 29.00, subtotal 30.00 less 0.00 plus 0.00"},
    {"NonFiscalItemsDoNotAddUp", "DELETE FROM item_cupom_nf WHERE cont_coo = 13",
     "nf-itens: COO 13: live items 0.00, subtotal 80.00"},
    {"NonFiscalReceiptNotPaid", "DELETE FROM pagamento_cupom WHERE cont_coo = 10",
     "nf-pagamentos: COO 10: payments 0.00, total 30.00"},
    {"NonFiscalItemNetIsWrong", "UPDATE item_cupom_nf SET valor_total = 31.00 WHERE cont_coo = 10",
     "item-nf-total: COO 10 item 1: net value 30.00, value and adjustments 29.00"},
    {"ReceiptAfterItsReduction",
     "UPDATE cupom_fiscal SET data_hora_emissao = '2024-03-01 18:00:01' WHERE cont_coo = 11",
     "cupom-fora-do-dia: COO 11: issued 2024-03-01 18:00:01, after CRZ 1"},
    {"ReceiptBeforeThePreviousReduction", "UPDATE cupom_fiscal SET cont_crz = 2 WHERE cont_coo = 4",
     "cupom-fora-do-dia: COO 4: issued 2024-03-01 09:00:00, filed under CRZ 2"},
    {"TotalizersDoNotAddUp",
     "UPDATE totalizador_reducao SET valor_base_calculo = 26.11 WHERE cont_crz = 1"
     " AND totalizador = '01T18.00'",
     "z-totalizadores: CRZ 1: base of ICMS 31.58, its rows 31.59"},
    {"TaxDoesNotAddUp", "UPDATE reducao_z SET valor_iss = 0.28 WHERE cont_crz = 1",
     "z-totalizadores: CRZ 1: tax of ISSQN 0.28, its rows 0.27"},
    {"FixedTotalizerIsNotItsSum", "UPDATE reducao_z SET valor_acres_icms = 2.01 WHERE cont_crz = 1",
     "z-totalizadores: CRZ 1: AT 2.01, its rows 2.00"},
    {"GrossSalesAreNotTheirParts", "UPDATE reducao_z SET valor_vb = 68.47 WHERE cont_crz = 1",
     "z-vb: CRZ 1: gross sales 68.47, net totalizers, discounts and cancellations 68.48"},
    {"GrandTotalDidNotGrow", "UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2",
     "z-gt: CRZ 2: grand total from 68.48 to 75.47, gross sales 7.00"},
    {"SalesAreNotTheReceipts", "UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = 4",
     "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 23.48"},
    {"NonFiscalTotalizersAreNotTheReceipts",
     "UPDATE totalizador_reducao SET valor_base_calculo = 79.00 WHERE cont_crz = 1"
     " AND totalizador = 'SANGRIA'",
     "z-nao-fiscais: CRZ 1: non-fiscal totalizers 209.00, valid non-fiscal receipts 210.00"},
    {"MeansIsNotItsPayments",
     "UPDATE meio_pagamento_reducao SET valor_acumulado = 13.49 WHERE cont_crz = 1"
     " AND indice_meio_pagamento = 2",
     "z-meio: CRZ 1 means 2: took in 13.49, payments 13.50"},
    {"PaymentInAMeansWithoutRow",
     "UPDATE pagamento_cupom SET indice_meio_pagamento = 9 WHERE cont_coo = 4",
     "z-meio: CRZ 1 means 9: took in 0.00, payments 13.50"},
    {"ChangeIsWrong",
     "UPDATE meio_pagamento_reducao SET valor_acumulado = 26.53 WHERE cont_crz = 1"
     " AND descricao_meio_pagamento = 'TROCO'",
     "z-troco: CRZ 1: payment means 93.50 less change 26.53, valid receipts 66.98"},
    {"DayOfAnotherDate",
     "UPDATE reducao_z SET data_movimento = '2024-03-03 00:00:00' WHERE cont_crz = 2",
     "z-data: CRZ 2: day of 2024-03-03, first receipt COO 15 of 2024-03-02 08:00:00"},
    {"TimesNotCrossed",
     "UPDATE reducao_z SET tempo_operacional = 36000, tempo_emitindo_doc = 300 WHERE cont_crz = 1",
     "z-tempos: CRZ 1: issuing documents 36000 s, operating 300 s"},
};

class Plantio : public BancoConferido, public testing::WithParamInterface<Plantado>
{
};

TEST_P(Plantio, IsFound)
{
    const Plantado& plantado = GetParam();
    Escreve(DIAS_LIMPOS);
    Escreve(plantado.sql);
    const std::string achado = plantado.achado;
    const std::string tipo = achado.substr(0, achado.find(':'));
    EXPECT_THAT(Confere(nullptr, tipo), Contains(StartsWith(achado)));
}

INSTANTIATE_TEST_SUITE_P(Check, Plantio, testing::ValuesIn(PLANTADOS),
                         [](const auto& caso) { return std::string(caso.param.nome); });

// The kinds that only a log gives are planted in check_Perdas.cpp.
TEST(TiposDeAchado, EachIsPlantedByATest)
{
    std::set<std::string> plantados = {"linha-perdida", "perda-prevista", "comando-perdido"};
    for (const Plantado& plantado : PLANTADOS) {
        const std::string achado = plantado.achado;
        plantados.insert(achado.substr(0, achado.find(':')));
    }
    std::set<std::string> tipos;
    for (const TipoAchado& tipo : TiposDeAchado()) {
        EXPECT_TRUE(tipos.insert(tipo.nome).second) << tipo.nome << " stands twice";
    }
    EXPECT_EQ(plantados, tipos);
}

TEST(BancoLeitura, RefusesWhatItCannotRead)
{
    const std::string pasta = testing::TempDir();
    EXPECT_THROW(BancoLeitura(pasta + "check_no_such_file"), Unusable);
    EXPECT_THROW(BancoLeitura{pasta}, Unusable);
}

} // namespace
} // namespace bancada
