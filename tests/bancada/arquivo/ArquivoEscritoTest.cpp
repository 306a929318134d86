// A file written by hand from the law's layouts, of every type, in which every field that a replay
// can have says something, and what import must make of it. Its amounts were reckoned by hand, its
// replay must yield it to the byte.
//
// Two days: an X reading, a float, a receipt with a discount, a surcharge and a cancelled surcharge
// of an item's own, a cancelled item, a cancelled surcharge and a discount on the subtotal (not
// shared), one with a surcharge by percentage (shared) and a voucher, one cancelled in issue and
// one cancelled later, a report, non-fiscal receipts (one whose payment was reversed in part, one
// cancelled), a withdrawal, a reprint, a fiscal-memory reading, an intervention, a reduction after
// midnight; then an additional receipt with an item of the detailed command, and an intervention
// that lost data.
#include "bancada/Unusable.h"
#include "bancada/arquivo/Exportacao.h"
#include "bancada/arquivo/Importacao.h"
#include "bancada/arquivo/Leiautes.h"
#include "tests/bancada/arquivo/Replay.h"

#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>

namespace bancada::arquivo
{
namespace
{

// clang-format off
const char* const FILE_LINES[] = {
    "E01SR0987654321ABCDEFGH ECF-MR MARCA-DE-FITA15     MODELO-COM-20-LETRAS01.07.00  2022110304050612311222333000181TDM0000410000422024030520240306BIB-2.34AC1704 01.00.00",
    "E02SR0987654321ABCDEFGH MODELO-COM-20-LETRAS11222333000181IE110042490114PADARIA E MERCEARIA DOIS IRMAOS LTDA EPPRUA DAS ACACIAS, 1789 - LOJA B - JARDIM DAS FLORES - CEP 01234-567 - CIDADE DO INTERIOR - SP - ENTRE AS RUAS CINCO E SEI2021060708091000000500000000123456789001",
    "E03SR0987654321ABCDEFGH MODELO-COM-20-LETRAS022020010203040522333444000155IE-PRESTADOR-2000000000000123456",
    "E04SR0987654321ABCDEFGH MODELO-COM-20-LETRAS032018020304050733444555000129IE-ANTERIOR--4000002000000000000987654",
    "E05SR0987654321ABCDEFGH MODELO-COM-20-LETRAS4455566600010320170304050608ZYXWVUTSRQ",
    "E06SR0987654321ABCDEFGH MODELO-COM-20-LETRAS5566677700018720160405060709CR$ ",
    "E07SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01.06.00  20210608",
    "E07SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01.07.00  20221103",
    "E08SR0987654321ABCDEFGH MODELO-COM-20-LETRAS66777888000161MFD-SERIE-00000000-8",
    "E09SR0987654321ABCDEFGH MODELO-COM-20-LETRAS00000620240305205950N",
    "E09SR0987654321ABCDEFGH MODELO-COM-20-LETRAS00000720240306180000S",
    "E10SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0000092024030500012100012211222333000181",
    "E11SR0987654321ABCDEFGH MODELO-COM-20-LETRAS00004200000700014100005200006500001100001200000800001300000900000000123456789020240307091011",
    "E12SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041000137000006202403052024030600051000000000011532S",
    "E12SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042000141000007202403062024030622000000000000000761S",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100004101T18000000000002622",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100004102S02500000000002728",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041N1     0000000000550",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041DT     0000000000034",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041DS     0000000000088",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041AT     0000000000264",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041AS     0000000000076",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041Can-T  0000000004534",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041Can-S  0000000000976",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100004202S02500000000000111",
    "E13SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042IS1    0000000000650",
    "E14SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100006100012220240305000000000032520000000000102V0000000000000V00000000003150N0000000000050DMARIA DAS DORES DA SILVA SOUSA          00052998224725",
    "E14SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100006200012320240305000000000025000000000000000V0000000000250P00000000002750N0000000000000A                                        11444777000161",
    "E14SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100006300012520240305000000000000000000000000000V0000000000000V00000000000000S0000000000000                                         00000000000000",
    "E14SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100006400012620240305000000000009000000000000000V0000000000000V00000000000900S0000000000000 JOAO                                    00000000000000",
    "E14SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100006500013920240306000000000000000000000000000V0000000000000V00000000000000N0000000000000                                         00000000000000",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001220000610017891000100103 ARROZ TIPO 1                                                                                        0001500KG 0000299900000020000000070000000000043601T1800N000000000000000000000000000000000T33",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000122000061002PRODUTO-000-14FARINHA DE TRIGO ESPECIAL TIPO 1 ENRIQUECIDA COM FERRO E ACIDO FOLICO, PACOTE DE PAPEL DE 5 QUILOS..0000003CX 00001250000000000000000000000000003750F1     S000000000000000000000000000000000A02",
    R"(E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000122000061003S-3           CORTE DE "TECIDO" \ LARGO                                                                           0000672MT 0004190800000000000000000000000000281602S0250N000000000000000000000000000000033A33)",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001230000620014             CAFE                                                                                                0000002PCT0000100000000000000002000000000000220001T1800N000000000000000000000000000000000T02",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001230000620025             LIVRO                                                                                               0000010UN 00000050000000000000005000000000000550N1     N000000000000000000000000000000000T11",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001250000630016             LEITE                                                                                               0000111L  00000007000000000000000000000000000777I2     S000000000000000000000000000000000T02",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001260000640017             FRETE                                                                                               0000005UN 0000018000000000000000000000000000090002S0250S000000000000000000000000000000000T11",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001390000650018             JORNAL                                                                                              0000002UN 00000325000000000000000000000000000650IS1    N000000000000000000000000000000000T02",
    "E15SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001390000650029             ENTREGA                                                                                             0000001UN 0000011100000000000000000000000000011102T0250N000000000000000000000000000000000T02",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001200000000000000000000000LX20240305075809",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001210000450000000000000000CN20240305080102",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001240000460000000003000000CC20240305082030",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001280000470000080000000000RG20240305120005",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001290000480000000000000000CN20240305123040",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001310000500000000000000000CN20240305124500",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001320000510000000000000000NC20240305124601",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001330000520000000000000000CN20240305130000",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001350000000000000000000000MF20240305140009",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001360000000000000000000000LX20240305210020",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001370000000000000000000041RZ20240306000540",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001380000000000000000000000LX20240306075959",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001400000000000000000000000LX20240306180100",
    "E16SR0987654321ABCDEFGH MODELO-COM-20-LETRAS010001410000000000000000000042RZ20240306220025",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041SUPRIMENTO     0000000015000",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041SANGRIA        0000000006000",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041RECARGA        0000000003100",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041DOACAO A CRECHE0000000000000",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042SUPRIMENTO     0000000000000",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042SANGRIA        0000000000000",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042RECARGA        0000000000000",
    "E17SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042DOACAO A CRECHE0000000000000",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041DINHEIRO       0000000018600",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041CARTAO         0000000003750",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041CHEQUE         0000000002000",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000041TROCO          0000000000350",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042DINHEIRO       0000000000761",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042CARTAO         0000000000000",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042CHEQUE         0000000000000",
    "E18SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000042TROCO          0000000000000",
    "E19SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100012100004520240305000000000150000000000000000V0000000000000V00000000015000N0000000000000                                         00000000000000",
    "E19SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100012900004820240305000000000029750000000000000V0000000000125V00000000003100N0000000000000AANA PAULA                               00039053344705",
    "E19SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100013100005020240305000000000008000000000000000V0000000000000V00000000000800S0000000000000                                         00000000000000",
    "E19SR0987654321ABCDEFGH MODELO-COM-20-LETRAS0100013300005220240305000000000060000000000000000V0000000000000V00000000006000N0000000000000                                         00000000000000",
    "E20SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000121000045001SUPRIMENTO     0000000015000000000000000000000000000000000000015000N0000000000000",
    "E20SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000129000048001RECARGA        0000000003000000000000005000000000000250000000002975N0000000000015",
    "E20SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000129000048002DOACAO A CRECHE0000000000400000000000000000000000000000000000000400S0000000000000",
    "E20SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000131000050001DOACAO A CRECHE0000000000800000000000000000000000000000000000000800S0000000000000",
    "E20SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000133000052001SANGRIA        0000000006000000000000000000000000000000000000006000N0000000000000",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000121000000000045DINHEIRO       0000000015000N0000000000000",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000122000061000000CARTAO         0000000001000N0000000000000",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000122000061000000DINHEIRO       0000000002500N0000000000000",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000123000062000000CARTAO         0000000002750N0000000000000",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000126000064000000DINHEIRO       0000000001000S0000000001000",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000129000000000048CHEQUE         0000000003100P0000000001100",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000129000000000048DINHEIRO       0000000001100N0000000000000",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000131000000000050DINHEIRO       0000000000800S0000000000800",
    "E21SR0987654321ABCDEFGH MODELO-COM-20-LETRAS01000139000065000000DINHEIRO       0000000000761N0000000000000",
    "EAD030A11181F262D343B424950575E656C737A81888F969DA4ABB2B9C0C7CED5DCE3EAF1F8FF060D141B222930373E454C535A61686F767D848B9299A0A7AEB5BCC3CAD1D8DFE6EDF4FB020910171E252C333A41484F565D646B727980878E959CA3AAB1B8BFC6CDD4DBE2E9F0F7FE050C131A21282F363D444B525960676E757C",
};

const char* const TAPE_LINES[] = {
    R"({"cmd":"programa_nr_serie","em":"2021-06-07 08:09:10","marca":"MARCA-DE-FITA15","modelo":"MODELO-COM-20-LETRAS","tipo":"ECF-MR","num_serie":"SR0987654321ABCDEFGH"})",
    R"({"cmd":"programa_sequencia_ecf","em":"2021-06-07 08:09:10","numero":123})",
    R"({"cmd":"programa_usuario","em":"2021-06-07 08:09:10","razao_social":"PADARIA E MERCEARIA DOIS IRMAOS LTDA EPP","nome_fantasia":"PADARIA E MERCEARIA DOIS IRMAOS LTDA EPP","endereco":"RUA DAS ACACIAS, 1789 - LOJA B - JARDIM DAS FLORES - CEP 01234-567 - CIDADE DO INTERIOR - SP - ENTRE AS RUAS CINCO E SEI"})",
    R"({"cmd":"programa_cnpj_ie_im","em":"2021-06-07 08:09:10","cnpj":"11222333000181","ie":"IE110042490114","im":"","uf":"SP"})",
    R"({"cmd":"insere_meio_pagamento","em":"2021-06-07 08:09:10","indice":1,"descricao":"DINHEIRO"})",
    R"({"cmd":"insere_meio_pagamento","em":"2021-06-07 08:09:10","indice":2,"descricao":"CARTAO","vinculado_ccd":true})",
    R"({"cmd":"insere_meio_pagamento","em":"2021-06-07 08:09:10","indice":3,"descricao":"CHEQUE"})",
    R"({"cmd":"insere_reg_ope_nf","em":"2021-06-07 08:09:10","indice":1,"descricao":"SUPRIMENTO"})",
    R"({"cmd":"insere_reg_ope_nf","em":"2021-06-07 08:09:10","indice":2,"descricao":"SANGRIA"})",
    R"({"cmd":"insere_reg_ope_nf","em":"2021-06-07 08:09:10","indice":3,"descricao":"RECARGA"})",
    R"({"cmd":"insere_reg_ope_nf","em":"2021-06-07 08:09:10","indice":4,"descricao":"DOACAO A CRECHE"})",
    R"({"cmd":"leitura_x","em":"2024-03-05 07:58:09"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 07:58:09"})",
    R"({"cmd":"sangria","em":"2024-03-05 08:01:02","operacao":"fundo_troco","valor":"150.00","meio":1})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 08:01:02"})",
    R"({"cmd":"abre_cupom","em":"2024-03-05 08:01:02","cpf_cnpj":"52998224725","nome":"MARIA DAS DORES DA SILVA SOUSA"})",
    R"({"cmd":"vende_item","em":"2024-03-05 08:01:02","codigo":"7891000100103","descricao":"ARROZ TIPO 1","quantidade":"1.500","unidade":"KG","valor_unitario":"2.999","tributacao":"T","indice":1,"arredonda":false})",
    R"({"cmd":"efetua_desc_acres_item","em":"2024-03-05 08:01:02","operacao":"acrescimo","tipo":"valor","valor":"0.07","item":1})",
    R"({"cmd":"efetua_desc_acres_item","em":"2024-03-05 08:01:02","operacao":"desconto","tipo":"valor","valor":"0.20","item":1})",
    R"({"cmd":"vende_item","em":"2024-03-05 08:01:02","codigo":"PRODUTO-000-14","descricao":"FARINHA DE TRIGO ESPECIAL TIPO 1 ENRIQUECIDA COM FERRO E ACIDO FOLICO, PACOTE DE PAPEL DE 5 QUILOS..","quantidade":"3","unidade":"CX","valor_unitario":"12.50","tributacao":"F","indice":1,"arredonda":true})",
    R"({"cmd":"cancela_item","em":"2024-03-05 08:01:02","item":2})",
    R"({"cmd":"vende_item","em":"2024-03-05 08:01:02","codigo":"S-3","descricao":"CORTE DE \"TECIDO\" \\ LARGO","quantidade":"0.672","unidade":"MT","valor_unitario":"41.908","tributacao":"S","indice":2,"arredonda":true})",
    R"({"cmd":"efetua_desc_acres_item","em":"2024-03-05 08:01:02","operacao":"acrescimo","tipo":"valor","valor":"0.33","item":3})",
    R"({"cmd":"cancela_desc_acres_item","em":"2024-03-05 08:01:02","operacao":"acrescimo","item":3})",
    R"({"cmd":"efetua_desc_acres_subtotal","em":"2024-03-05 08:01:02","operacao":"acrescimo","tipo":"valor","valor":"0.50"})",
    R"({"cmd":"cancela_desc_acres_subtotal","em":"2024-03-05 08:01:02","operacao":"acrescimo"})",
    R"({"cmd":"efetua_desc_acres_subtotal","em":"2024-03-05 08:01:02","operacao":"desconto","tipo":"valor","valor":"1.02"})",
    R"({"cmd":"efetua_pagamento","em":"2024-03-05 08:01:02","meio":2,"valor":"10.00"})",
    R"({"cmd":"efetua_pagamento","em":"2024-03-05 08:01:02","meio":1,"valor":"25.00"})",
    R"({"cmd":"fecha_cupom","em":"2024-03-05 08:01:02"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 08:01:02"})",
    R"({"cmd":"abre_cupom","em":"2024-03-05 08:01:02","cpf_cnpj":"11444777000161"})",
    R"({"cmd":"vende_item","em":"2024-03-05 08:01:02","codigo":"4","descricao":"CAFE","quantidade":"2","unidade":"PCT","valor_unitario":"10.00","tributacao":"T","indice":1,"arredonda":false})",
    R"({"cmd":"vende_item","em":"2024-03-05 08:01:02","codigo":"5","descricao":"LIVRO","quantidade":"1.0","unidade":"UN","valor_unitario":"5.0","tributacao":"N","indice":1,"arredonda":false})",
    R"({"cmd":"efetua_desc_acres_subtotal","em":"2024-03-05 08:01:02","operacao":"acrescimo","tipo":"percentual","valor":"10.00"})",
    R"({"cmd":"efetua_pagamento","em":"2024-03-05 08:01:02","meio":2,"valor":"27.50"})",
    R"({"cmd":"configura","ratear_subtotal":true})",
    R"({"cmd":"fecha_cupom","em":"2024-03-05 08:01:02"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 08:01:02"})",
    R"({"cmd":"abre_ccd","em":"2024-03-05 08:20:30","meio":2})",
    R"({"cmd":"fecha_ccd_gerencial","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"abre_cupom","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"vende_item","em":"2024-03-05 08:20:30","codigo":"6","descricao":"LEITE","quantidade":"111","unidade":"L","valor_unitario":"0.07","tributacao":"I","indice":2,"arredonda":false})",
    R"({"cmd":"cancela_cupom_em_emissao","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"abre_cupom","em":"2024-03-05 08:20:30","nome":"JOAO"})",
    R"({"cmd":"vende_item","em":"2024-03-05 08:20:30","codigo":"7","descricao":"FRETE","quantidade":"0.5","unidade":"UN","valor_unitario":"18.0","tributacao":"S","indice":2,"arredonda":false})",
    R"({"cmd":"efetua_pagamento","em":"2024-03-05 08:20:30","meio":1,"valor":"10.00"})",
    R"({"cmd":"fecha_cupom","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"cancela_cupom","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 08:20:30"})",
    R"({"cmd":"abre_gerencial","em":"2024-03-05 12:00:05"})",
    R"({"cmd":"fecha_ccd_gerencial","em":"2024-03-05 12:00:05"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 12:00:05"})",
    R"({"cmd":"abre_cnf","em":"2024-03-05 12:00:05","cpf_cnpj":"39053344705","nome":"ANA PAULA"})",
    R"({"cmd":"vende_item_nf","em":"2024-03-05 12:00:05","totalizador":3,"valor":"30.00"})",
    R"({"cmd":"efetua_desc_acres_item","em":"2024-03-05 12:00:05","operacao":"acrescimo","tipo":"valor","valor":"0.15","item":1})",
    R"({"cmd":"cancela_desc_acres_item","em":"2024-03-05 12:00:05","operacao":"acrescimo","item":1})",
    R"({"cmd":"efetua_desc_acres_item","em":"2024-03-05 12:00:05","operacao":"acrescimo","tipo":"valor","valor":"0.25","item":1})",
    R"({"cmd":"efetua_desc_acres_item","em":"2024-03-05 12:00:05","operacao":"desconto","tipo":"valor","valor":"0.50","item":1})",
    R"({"cmd":"vende_item_nf","em":"2024-03-05 12:00:05","totalizador":4,"valor":"4.00"})",
    R"({"cmd":"cancela_item","em":"2024-03-05 12:00:05","item":2})",
    R"({"cmd":"efetua_desc_acres_subtotal","em":"2024-03-05 12:00:05","operacao":"acrescimo","tipo":"valor","valor":"1.25"})",
    R"({"cmd":"efetua_pagamento","em":"2024-03-05 12:00:05","meio":3,"valor":"31.00"})",
    R"({"cmd":"fecha_cupom_nf","em":"2024-03-05 12:30:40"})",
    R"({"cmd":"estorna_meio_pagamento","em":"2024-03-05 12:30:40","origem":3,"destino":1,"valor":"11.00"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 12:30:40"})",
    R"({"cmd":"abre_cnf","em":"2024-03-05 12:30:40"})",
    R"({"cmd":"vende_item_nf","em":"2024-03-05 12:30:40","totalizador":4,"valor":"8.00"})",
    R"({"cmd":"efetua_pagamento","em":"2024-03-05 12:30:40","meio":1,"valor":"8.00"})",
    R"({"cmd":"fecha_cupom_nf","em":"2024-03-05 12:45:00"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 12:45:00"})",
    R"({"cmd":"cancela_cupom","em":"2024-03-05 12:46:01"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 12:46:01"})",
    R"({"cmd":"sangria","em":"2024-03-05 13:00:00","operacao":"sangria","valor":"60.00"})",
    R"({"cmd":"reimprime_mfd","em":"2024-03-05 13:00:01","coo_inicial":121,"coo_final":122})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 13:00:01"})",
    R"({"cmd":"leitura_mf","em":"2024-03-05 14:00:09"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 14:00:09"})",
    R"({"cmd":"entrada_mit_interno","em":"2024-03-05 20:59:50"})",
    R"({"cmd":"saida_mit_interno","em":"2024-03-05 21:00:20"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-05 21:00:20"})",
    R"({"cmd":"reducao_z","em":"2024-03-06 00:05:10","fim":"2024-03-06 00:05:40"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-06 00:05:40"})",
    R"({"cmd":"leitura_x","em":"2024-03-06 07:59:59"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-06 07:59:59"})",
    R"({"cmd":"abre_cupom","em":"2024-03-06 07:59:59"})",
    R"({"cmd":"vende_item","em":"2024-03-06 07:59:59","codigo":"8","descricao":"JORNAL","quantidade":"2","unidade":"UN","valor_unitario":"3.25","tributacao":"IS","indice":1,"arredonda":false})",
    R"({"cmd":"vende_item_detalhado","em":"2024-03-06 07:59:59","codigo":"9","descricao":"ENTREGA","quantidade":"1","unidade":"UN","valor_unitario":"1.11","tributacao":"S","indice":2,"arredonda":false})",
    R"({"cmd":"efetua_pagamento","em":"2024-03-06 07:59:59","meio":1,"valor":"7.61"})",
    R"({"cmd":"fecha_cupom","em":"2024-03-06 07:59:59","adicional":true})",
    R"({"cmd":"cancela_aberto","em":"2024-03-06 07:59:59"})",
    R"({"cmd":"entrada_mit_interno","em":"2024-03-06 18:00:00"})",
    R"({"cmd":"saida_mit_interno","em":"2024-03-06 18:01:00"})",
    R"({"cmd":"cancela_aberto","em":"2024-03-06 18:01:00"})",
    R"({"cmd":"reducao_z","em":"2024-03-06 22:00:00","fim":"2024-03-06 22:00:25"})",
};
// What no tape makes: another letter, owner and version of the act, a make and a name longer than the
// register's, both a discount by percentage and a surcharge, an item cancelled in part, four decimals,
// counters and a document that nothing moves, a reprint before the tape, a withdrawal with a discount
// and a payment.
const char* const STRANGE_LINES[] = {
    "E01SR7                 AECF-IF MARCA-DE-20-LETRAS-XM7                  01.00.00  2022110304050600022333444000155MFD0000030000092024030420240309        AC1704 02.00.00",
    "E02SR7                 AM7                  11222333000181IE1           LOJA                                    RUA                                                                                                                     2021060708091000000400000000000000077702",
    "E09SR7                 AM7                  00000920240305200000X",
    "E10SR7                 AM7                  0000042024030300000100000222333444000155",
    "E11SR7                 AM7                  00000300000900001500000900000900000000000000000900000000000900000000000000088820240307091011",
    "E12SR7                 AM7                  01000002000013000006202403062024030522000000000000005000S",
    "E14SR7                 AM7                  0100000500001020240305000000000020000000000000100P0000000000050V00000000001950N0000000000000ANOME DE QUARENTA LETRAS QUE NAO CABE TDO00052998224725",
    "E14SR7                 AM7                  0100000700001120240305000000000003000000000000000 0000000000000P00000000000400N0000000000000D                                        00000000000000",
    "E15SR7                 AM7                  010000100000050011             A                                                                                                   0000002UN 0000100000000000000000000000000000200001T1800P000000100000000010000000000000000 02",
    "E15SR7                 AM7                  010000110000090031             B                                                                                                   0030000UN 00010000000000000000000000000000000300F1     N000000000000000000000000000000000T44",
    "E16SR7                 AM7                  010000120000080000010001000001XX20240305210000",
    "E16SR7                 AM7                  010000130000000000000000000002RZ20240305220009",
    "E16SR7                 AM7                  010000140000030000000000000000LX00000000000000",
    "E17SR7                 AM7                  01000004NOME           0000000000001",
    "E18SR7                 AM7                  01000002DINHEIRO       0000000000002",
    "E19SR7                 AM7                  0100001500000420240304000000000000000000000000000V0000000000000V00000000000000N0000000000000                                         00000000000000",
    "E20SR7                 AM7                  01000015000007002SANGRIA        0000000000500000000000001000000000000000000000000480S0000000000000",
    "E21SR7                 AM7                  01000010000006000001DINHEIRO       0000000001950P0000000001950",
    "E21SR7                 AM7                  01000011000007000000               0000000000300N0000000000000",
    "E21SR7                 AM7                  01000015000000000004DINHEIRO       0000000000500S0000000000500",
};

const char* const STRANGE_NOTES[] = {
    "neutral: E01 cnpj: not the owner's of E02 (1 record)",
    "neutral: E01 crz_final: not those of the first and the last Z reduction (1 record)",
    "neutral: E01 crz_inicial: not those of the first and the last Z reduction (1 record)",
    "neutral: E01 data_final: not those of the first and the last Z reduction (1 record)",
    "neutral: E01 data_inicial: not those of the first and the last Z reduction (1 record)",
    "neutral: E01 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E01 marca: the register has room for 15 letters (1 record)",
    "neutral: E01 versao_ato: another version of the act than that of these layouts (1 record)",
    "neutral: E02 cro: the owner is programmed under the counter of the first document (1 record)",
    "neutral: E02 gt: not that of E11 (1 record)",
    "neutral: E02 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E02 usuario: the register has one owner (1 record)",
    "neutral: E09 cro: not what the documents come to (1 record)",
    "neutral: E09 data, hora: not when the tape comes to it (1 record)",
    "neutral: E09 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E09 perda_dados: no value that the register gives it (1 record)",
    "neutral: E10 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E11 ccf: not what the documents come to (1 record)",
    "neutral: E11 cfd: not what the documents come to (1 record)",
    "neutral: E11 cro: not what the documents come to (1 record)",
    "neutral: E11 crz: not what the documents come to (1 record)",
    "neutral: E11 gnf: not what the documents come to (1 record)",
    "neutral: E11 grg: not what the documents come to (1 record)",
    "neutral: E11 gt: less than the receipts come to (1 record)",
    "neutral: E11 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E12 data_movimento: not when the tape comes to it (1 record)",
    "neutral: E12 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E14 acrescimo: the register has one adjustment of a subtotal at a time (1 record)",
    "neutral: E14 ccf: not what the documents come to (1 record)",
    "neutral: E14 letra_adicional: the register has no additional fiscal memory (2 records)",
    "neutral: E14 nome: the register has room for 30 letters (1 record)",
    "neutral: E14 ordem: not that of the adjustment (2 records)",
    "neutral: E14 tipo_acrescimo: the percentage of no surcharge (1 record)",
    "neutral: E14 tipo_desconto: a percentage of discount is logged as V (1 record)",
    "neutral: E14 tipo_desconto: no value that the register gives it (1 record)",
    "neutral: E14 total: not the subtotal with its adjustment (1 record)",
    "neutral: E15 arredonda_trunca: no value that the register gives it (1 record)",
    "neutral: E15 cancelado: an item is cancelled whole or not at all (1 record)",
    "neutral: E15 ccf: not its receipt's (1 record)",
    "neutral: E15 decimais_quantidade: the register has three decimals at most (1 record)",
    "neutral: E15 decimais_valor: the register has three decimals at most (1 record)",
    "neutral: E15 item: not one more than the item before it (1 record)",
    "neutral: E15 letra_adicional: the register has no additional fiscal memory (2 records)",
    "neutral: E15 quantidade_cancelada: an item is cancelled whole or not at all (1 record)",
    "neutral: E15 totalizador: of either tax, of which the day's totals tell neither (1 record)",
    "neutral: E15 valor_cancelado: an item is cancelled whole or not at all (1 record)",
    "neutral: E16 cdc: not what the documents come to (1 record)",
    "neutral: E16 crz: not what the documents come to (1 record)",
    "neutral: E16 data_fim, hora_fim: before the end of the document before it (1 record)",
    "neutral: E16 gnf: not what the documents come to (2 records)",
    "neutral: E16 grg: not what the documents come to (1 record)",
    "neutral: E16 letra_adicional: the register has no additional fiscal memory (3 records)",
    "neutral: E16 simbolo: not of the document that has the number (1 record)",
    "neutral: E17 crz: no Z reduction of the file has the number (1 record)",
    "neutral: E17 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E18 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E19 data_abertura: not when the tape comes to it (1 record)",
    "neutral: E19 gnf: not what the documents come to (1 record)",
    "neutral: E19 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E19 subtotal: a float or a withdrawal is one item without adjustments (1 record)",
    "neutral: E20 gnf: not its receipt's (1 record)",
    "neutral: E20 item: not one more than the item before it (1 record)",
    "neutral: E20 letra_adicional: the register has no additional fiscal memory (1 record)",
    "neutral: E20 total: not the amount with its adjustments (1 record)",
    "neutral: E21 ccf: not its receipt's (1 record)",
    "neutral: E21 estornado, valor_estornado: not of the amount that was paid (1 record)",
    "neutral: E21 gnf: not its receipt's (1 record)",
    "neutral: E21 letra_adicional: the register has no additional fiscal memory (3 records)",
    "neutral: E21 valor, estornado, valor_estornado: not what payments and reversals of the receipt come to (1 record)",
    "neutral: E21 valor: a float has one payment, of its amount, a withdrawal none (1 record)",
    "left out: E10: reprints for which no number is left (1)",
    "left out: E16: documents XX, for which there is no command (1)",
    "left out: E21: payments in a means without a name (1)",
};
// clang-format on

constexpr char MEMORY[] = R"({
    "formato": "ecf-bancada memoria",
    "versao": 1,
    "registro": {
        "contadores": {
            "ccf": 60,
            "cdc": 2,
            "cfd": 8,
            "coo": 119,
            "cro": 5,
            "crz": 40,
            "gnf": 44,
            "grg": 7
        },
        "gt": "12345555.97",
        "gt_ultima_rz": "12345555.97",
        "fiscal": {
            "icms": {
                "totalizadores": {
                    "T1": {
                        "programado": true,
                        "aliquota": "18.00"
                    },
                    "F1": {
                        "programado": true
                    },
                    "I2": {
                        "programado": true
                    },
                    "N1": {
                        "programado": true
                    }
                }
            },
            "issqn": {
                "totalizadores": {
                    "S2": {
                        "programado": true,
                        "aliquota": "2.50"
                    },
                    "IS1": {
                        "programado": true
                    }
                }
            }
        },
        "ecf": {
            "versao_sb": "01.06.00"
        }
    }
})";

constexpr char FACTS[] = R"({
    "formato": "ecf-bancada fatos",
    "versao": 1,
    "extracao": "2024-03-07 09:10:11",
    "biblioteca": "BIB-2.34",
    "software": {
        "versao": "01.07.00",
        "data_hora": "2022-11-03 04:05:06"
    },
    "versoes_software": [
        {
            "versao": "01.06.00",
            "data_hora": "2021-06-08 00:00:00"
        },
        {
            "versao": "01.07.00",
            "data_hora": "2022-11-03 00:00:00"
        }
    ],
    "prestadores": [
        {
            "numero": 2,
            "data_hora": "2020-01-02 03:04:05",
            "cnpj": "22333444000155",
            "ie": "IE-PRESTADOR-2",
            "vendas": 123456
        }
    ],
    "proprietarios_anteriores": [
        {
            "usuario": 3,
            "data_hora": "2018-02-03 04:05:07",
            "cnpj": "33444555000129",
            "ie": "IE-ANTERIOR--4",
            "cro": 2,
            "gt": 987654
        }
    ],
    "cifras_gt": [
        {
            "cnpj": "44555666000103",
            "data_hora": "2017-03-04 05:06:08",
            "simbolo": "ZYXWVUTSRQ"
        }
    ],
    "moedas": [
        {
            "cnpj": "55666777000187",
            "data_hora": "2016-04-05 06:07:09",
            "simbolo": "CR$"
        }
    ],
    "memorias_detalhe": [
        {
            "cnpj": "66777888000161",
            "numero_serie": "MFD-SERIE-00000000-8"
        }
    ],
    "intervencoes": [
        {
            "cro": 7,
            "data_hora": "2024-03-06 18:00:00",
            "perda_dados": true
        }
    ],
    "contadores": {
        "cbp": 12,
        "cmv": 13,
        "cvc": 11
    },
    "desconto_issqn": true,
    "meio_fundo_troco": "DINHEIRO",
    "assinatura": "030A11181F262D343B424950575E656C737A81888F969DA4ABB2B9C0C7CED5DCE3EAF1F8FF060D141B222930373E454C535A61686F767D848B9299A0A7AEB5BCC3CAD1D8DFE6EDF4FB020910171E252C333A41484F565D646B727980878E959CA3AAB1B8BFC6CDD4DBE2E9F0F7FE050C131A21282F363D444B525960676E757C"
})";

template <std::size_t N>
std::string Joined(const char* const (&lines)[N], const char* end)
{
    std::string text;
    for (const char* line : lines) {
        text += std::string(line) + end;
    }
    return text;
}

class ArquivoEscritoTest : public testing::Test
{
  protected:
    struct Imported {
        std::string tape, memory, facts, notes;
    };

    Imported ImportText(const std::string& text)
    {
        folder.Write("file", text);
        std::ostringstream tape;
        std::ostringstream notes;
        const ImportResult result = Import(folder.File("file"), tape, notes);
        return {tape.str(), result.memory, FatosText(result.fatos), notes.str()};
    }

    test_support::TempFolder folder;
};

TEST_F(ArquivoEscritoTest, ItsTapeItsMemoryAndItsFacts)
{
    const Imported made = ImportText(Joined(FILE_LINES, "\r\n"));
    EXPECT_EQ(made.tape, Joined(TAPE_LINES, "\n"));
    EXPECT_EQ(made.memory, std::string(MEMORY) + "\n");
    EXPECT_EQ(made.facts, std::string(FACTS) + "\n");
    EXPECT_EQ(made.notes, "");
    EXPECT_EQ(ImportText(Joined(FILE_LINES, "\n")).tape, made.tape) << "lines ended by LF alone";
}

TEST_F(ArquivoEscritoTest, WhatIsRunAndExportedIsTheSameFile)
{
    const Imported made = ImportText(Joined(FILE_LINES, "\r\n"));
    folder.Write("tape", made.tape);
    folder.Write("facts", made.facts);
    folder.Write("start", made.memory);
    std::string reason;
    EXPECT_EQ(arquivo_test::Replay(folder, "tape", arquivo_test::ReadMemory(folder.File("start")),
                                   "again", reason),
              0)
        << reason;
    ExportOptions options;
    options.database = folder.File("again.db");
    options.memory = folder.File("again.memory");
    options.facts = folder.File("facts");
    std::ostringstream file;
    std::ostringstream notes;
    Export(options, file, notes);
    EXPECT_EQ(file.str(), Joined(FILE_LINES, "\r\n"));
    EXPECT_EQ(notes.str(), "");
}

TEST_F(ArquivoEscritoTest, WhatNoTapeCanSayIsListed)
{
    const Imported made = ImportText(Joined(STRANGE_LINES, "\r\n"));
    EXPECT_EQ(made.notes, Joined(STRANGE_NOTES, "\n"));
    folder.Write("tape", made.tape);
    folder.Write("start", made.memory);
    std::string reason;
    EXPECT_EQ(arquivo_test::Replay(folder, "tape", arquivo_test::ReadMemory(folder.File("start")),
                                   "again", reason),
              2)
        << "the receipt that was not paid is cancelled by the line before the next document";
    EXPECT_EQ(reason, "fecha_cupom at line 15: 3.00 is still to be paid");
}

// Any one letter of a field, changed to another value that the field may have.
std::string Changed(const Field& field, std::string text)
{
    if (field.form == Form::X) {
        text.front() = text.front() == 'Q' ? 'W' : 'Q';
    } else if (text.find_first_not_of('0') == std::string::npos && field.form == Form::D) {
        text = "20240101";
    } else {
        text.back() = text.back() == '1' ? '2' : '1';
    }
    return text;
}

// A changed field changes what is made, or it is listed as what no tape can say, or refused. What
// the totalizers of the Z reductions hold is the register's to say, and the command the user's:
// those are seen when the replay's file is compared.
TEST_F(ArquivoEscritoTest, NoFieldIsLostInSilence)
{
    const std::set<std::string> elsewhere = {"E01 comando", "E13 crz",  "E13 totalizador",
                                             "E13 valor",   "E17 crz",  "E17 valor",
                                             "E18 crz",     "E18 valor"};
    const std::string whole = Joined(FILE_LINES, "\n");
    const Imported made = ImportText(whole);
    std::size_t begin = 0;
    std::set<std::string> silent;
    for (const std::string line : FILE_LINES) {
        const Leiaute& leiaute = *FindLeiaute(line.substr(0, 3));
        for (const Field& field : leiaute.fields) {
            std::string other = whole;
            other.replace(begin + field.Begin(), field.Size(),
                          Changed(field, line.substr(field.Begin(), field.Size())));
            try {
                const Imported now = ImportText(other);
                if (now.tape == made.tape && now.memory == made.memory && now.facts == made.facts &&
                    now.notes == made.notes) {
                    silent.insert(std::string(leiaute.type) + " " + field.name);
                }
            } catch (const Unusable&) {
            }
        }
        begin += line.size() + 1;
    }
    EXPECT_EQ(silent, elsewhere);
}

} // namespace
} // namespace bancada::arquivo
