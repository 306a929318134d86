// Document rows against the rows of what they document; interventions, reprints; the counters that
// every document shows; what the columns of receipts and payments say of one another.
#include "tests/bancada/conferencia/PlantedFault.h"

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"ReductionOfAnotherTime",
     "UPDATE outros_documentos SET data_hora_inicio_emissao = '2024-03-01 17:59:59',"
     " data_hora_fim_emissao = '2024-03-01 17:59:59' WHERE cont_coo = 14",
     {"documento-difere: COO 14: begins 2024-03-01 17:59:59, CRZ 1 of 2024-03-01 18:00:00"}},
    {"ReceiptUnderAnotherGnf",
     "UPDATE cupom_nf SET cont_gnf = 3 WHERE cont_coo = 10",
     {"pagamento-colunas: COO 10 means 1: GNF 4, its receipt has 3",
      "documento-difere: COO 10: GNF 4, its receipt has 3"}},
    {"ReadingThatLasts",
     "UPDATE outros_documentos SET data_hora_fim_emissao = '2024-03-01 08:02:00' WHERE cont_coo = 2",
     {}},
    {"ReadingThatEndsBeforeItBegins",
     "UPDATE outros_documentos SET data_hora_fim_emissao = '2024-03-01 08:00:59' WHERE cont_coo = 2",
     {"ordem: COO 2: begins 2024-03-01 08:01:00 and ends 2024-03-01 08:00:59"}},
    {"DocumentThatEndsBehindTheNext",
     "UPDATE outros_documentos SET data_hora_fim_emissao = '2024-03-01 10:05:00' WHERE cont_coo = 5",
     {"ordem: COO 7: of 2024-03-01 10:00:00, after COO 5, which ended 2024-03-01 10:05:00"}},
    {"ClockSetBack",
     "INSERT INTO outros_documentos VALUES"
     " (22,1,9,1,1,2,'2024-03-01 08:00:00','2024-03-01 08:00:00','LX')",
     {},
     {"cupom-adicional: COO 11: paid 10.00, closing never written",
      "documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10",
      "relogio-atrasado: COO 22: of 2024-03-01 08:00:00, after COO 21 of 2024-03-03 08:00:00"}},
    {"VoucherCounter",
     "UPDATE outros_documentos SET cont_cdc = 3 WHERE cont_coo = 13",
     {"contador-documento: COO 14: CDC 1, where 3 is due"}},
    {"InterventionWithoutReading",
     "UPDATE intervencao SET data_hora_intervencao = '2024-03-01 08:02:00'",
     {"intervencao: CRO 1: no X reading of 2024-03-01 08:02:00"}},
    // What stands behind an intervention that came after the Z is not taken for one before it.
    {"InterventionsOutOfTheirOrder",
     "INSERT INTO intervencao VALUES (1, 1, '2024-03-03 07:00:00', 'L', 'N');"
     "INSERT INTO intervencao VALUES (5, 1, '2024-03-01 10:00:00', 'L', 'N')",
     {"chave-repetida: intervencao CRO 1: 2 rows of the same intervention",
      "intervencao: CRO 1: no X reading of 2024-03-03 07:00:00",
      "intervencao: CRO 5: of 2024-03-01 10:00:00, after one of 2024-03-03 07:00:00",
      "intervencao: CRO 5: no X reading of 2024-03-01 10:00:00"}},
    {"RestartsOfTheReduction",
     "UPDATE reducao_z SET cont_cro = 3 WHERE cont_crz = 2",
     {"z-cro: CRZ 2: CRO 3, the interventions lead to 1 or 2"}},
    {"ReprintThatGoesBack",
     "UPDATE fita_detalhe SET coo_final = 2",
     {"fita-detalhe: CFD 1: from COO 3 to COO 2"}},
    {"ReprintOfWhatIsToCome",
     "UPDATE fita_detalhe SET coo_final = 900",
     {"fita-detalhe: CFD 1: to COO 900, which was not issued yet"}},
    {"PaymentReversedByNothing",
     "UPDATE pagamento_cupom SET valor_estornado = 1 WHERE cont_coo = 3",
     {"pagamento-colunas: COO 3 means 1: not reversed, amount reversed 1.00"}},
    {"PaymentOfAnEarlierGnf",
     "UPDATE pagamento_cupom SET cont_gnf = 1 WHERE cont_coo = 11",
     {"pagamento-colunas: COO 11 means 1: GNF 1, COO 11 comes after GNF 3"}},
    {"AddressWithoutItsComma",
     "UPDATE cupom_fiscal SET endereco_consumidor = 'RUA A' WHERE cont_coo = 9",
     {"cupom-colunas: COO 9: endereco_consumidor holds 'RUA A', where an address without apostrophes and a comma is due"}},
    {"ClosingOfAReceiptCancelledInIssue",
     "UPDATE cupom_fiscal SET valor_troco = 1 WHERE cont_coo = 9",
     {"cupom-colunas: COO 9: valor_troco holds '1.00', where 0.00 is due"}},
    {"MoreDecimalsThanSold",
     "UPDATE item_cupom_fiscal SET casas_decimais_quantidade = 2 WHERE cont_coo = 3 AND seq_item ="
     " 2",
     {"casas-decimais: COO 3 item 2: 1.375 sold with 2 decimals"}},
    {"PercentageOfADiscountByValue",
     "UPDATE item_cupom_fiscal SET perc_desconto = 5 WHERE cont_coo = 3 AND seq_item = 2",
     {"percentual: COO 3 item 2: discount of kind V, percentage 5.00"}},
    {"FloatWithAKind",
     "UPDATE item_cupom_nf SET tipo_desconto = 'V' WHERE cont_coo = 1",
     {"percentual: COO 1 item 1: kind V, percentage 0.00, on the till's totalizer"}},
    {"FloatWithACancelledSurcharge",
     "UPDATE item_cupom_nf SET valor_canc_acrescimo = 0.01 WHERE cont_coo = 1",
     {"percentual: COO 1 item 1: cancelled surcharge 0.01, on the till's totalizer"}},
    {"ConsumerWhomTheClosingDidNotName",
     "UPDATE cupom_fiscal SET texto_suplementar = 'CNPJ/CPF consumidor: 123.456.789-01', "
     " cpf_cnpj_consumidor = '12345678902' WHERE cont_coo = 4",
     {"cupom-colunas: COO 4: cpf_cnpj_consumidor holds '12345678902', where 12345678901 is due"}},
    {"FloatWithAConsumer",
     "UPDATE cupom_nf SET nome_consumidor = 'ANA' WHERE cont_coo = 1",
     {"cupom-colunas: COO 1: nome_consumidor holds 'ANA', where nothing is due"}},
    {"TaxThatIsNotItsRate",
     "UPDATE totalizador_reducao SET valor_imposto = 4.71 WHERE cont_crz = 1 AND totalizador ="
     " '01T18.00';"
     "UPDATE reducao_z SET valor_icms = 4.71 WHERE cont_crz = 1",
     {"z-imposto: CRZ 1 01T18.00: tax 4.71, base 26.10 comes to 4.69 to 4.70"}},
    {"TotalizersExchanged",
     "UPDATE totalizador_reducao SET valor_base_calculo = 25.10 WHERE cont_crz = 1 AND totalizador"
     " = '01T18.00';"
     "UPDATE totalizador_reducao SET valor_base_calculo = 6.48 WHERE cont_crz = 1 AND totalizador ="
     " 'F1'",
     {"z-imposto: CRZ 1 01T18.00: tax 4.69, base 25.10 comes to 4.51 to 4.52",
      "z-aliquota: CRZ 1 01T18.00: 25.10, valid items 26.10",
      "z-aliquota: CRZ 1 F1: 6.48, valid items 5.48"}},
    {"DiscountsOfTheDay",
     "UPDATE reducao_z SET valor_desc_icms = 2.00, valor_canc_icms = 28.90 WHERE cont_crz = 1;"
     "UPDATE totalizador_reducao SET valor_base_calculo = 2.00 WHERE cont_crz = 1 AND totalizador ="
     " 'DT';"
     "UPDATE totalizador_reducao SET valor_base_calculo = 28.90 WHERE cont_crz = 1 AND totalizador"
     " = 'Can-T'",
     {"z-registrado: CRZ 1: discounts 2.60, items of the day 2.50"}},
    {"MeansOfAnotherName",
     "UPDATE meio_pagamento_reducao SET descricao_meio_pagamento = 'CHEQUE' WHERE cont_crz = 2 AND"
     " indice_meio_pagamento = 2",
     {"z-nome: CRZ 2: means 2 CHEQUE, before and behind CARTAO"}},
    {"NonFiscalTotalizersExchanged",
     "UPDATE totalizador_reducao SET valor_base_calculo = 80.00 WHERE cont_crz = 1 AND totalizador"
     " = 'FUNDO DE TROCO';"
     "UPDATE totalizador_reducao SET valor_base_calculo = 100.00 WHERE cont_crz = 1 AND totalizador"
     " = 'SANGRIA'",
     {"z-nao-fiscais: CRZ 1 FUNDO DE TROCO: 80.00, valid non-fiscal items 100.00",
      "z-nao-fiscais: CRZ 1 SANGRIA: 100.00, valid non-fiscal items 80.00"}},
    {"GrandTotalOfTheFirstReduction",
     "UPDATE reducao_z SET valor_gt = valor_gt + 1",
     {"z-gt: CRZ 1: grand total 69.48, gross sales 68.48 of the first Z"}},
    {"ReceiptOfAnotherDay",
     "UPDATE cupom_fiscal SET cont_crz = 4 WHERE cont_coo = 21",
     {"cupom-fora-do-dia: COO 21: filed under CRZ 4, the next Z is CRZ 3"}},
    {"SearchKeyOfAnotherDocument",
     "UPDATE cupom_fiscal SET chave_cupom = '00000000000000-0001-' || strftime('%Y%m%d',"
     " data_hora_emissao) || printf('-%06d', cont_coo) WHERE trim(assinatura_documento) <> '';"
     "UPDATE cupom_fiscal SET chave_cupom = '00000000000000-0001-20240301-000005' WHERE cont_coo ="
     " 4;"
     "UPDATE cupom_fiscal SET chave_cupom = '00000000000000-0002-20240301-000007' WHERE cont_coo ="
     " 7",
     {"cupom-chave: COO 4: key 00000000000000-0001-20240301-000005, the receipt's ends with -20240301-000004",
      "cupom-chave: COO 7: key of 00000000000000-0002, and neither the programming nor a receipt before or behind says so"},
     {"cupom-adicional: COO 11: paid 10.00, closing never written",
      "assinatura-nao-conferida: signatures: none of them can be recomputed: another register made them",
      "documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10"}},
    {"CancellationThatTookNoNumber",
     "UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = 3",
     {"z-aliquota: CRZ 1 01T18.00: 26.10, valid items 16.10",
      "z-aliquota: CRZ 1 F1: 5.48, valid items 0.00",
      "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 21.50",
      "z-meio: CRZ 1 means 1: took in 80.00, payments 60.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 51.50",
      "cancelamento-ausente: COO 3: cancelled, and the next documents leave no number for its cancellation"}},
});

INSTANTIATE_TEST_SUITE_P(CheckDocumentos, Planted,
                         testing::ValuesIn(PLANTED.Begin(), PLANTED.End()), NameOf);

} // namespace
} // namespace bancada::conferencia_test
