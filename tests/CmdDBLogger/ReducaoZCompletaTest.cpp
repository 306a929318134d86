// A Z reduction of a day with everything programmed: every one of its statements, in order.
#include "tests/CmdDBLogger/ReducaoZTest.h"

#include <sqlite3.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

const std::
    vector<std::string>
        STATEMENTS =
            {
                "INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, cont_coo, cont_gnf, cont_cro, valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms, valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss, tempo_operacional, tempo_emitindo_doc) VALUES (12,1,'2026-03-02 08:15:30','2026-03-02 00:00:00',321,45,3,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0,0)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'01T00.25',1000.25,'S',300.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'02T01.25',1001.25,'S',301.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'03T02.25',1002.25,'S',302.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'04T03.25',1003.25,'S',303.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'05T04.25',1004.25,'S',304.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'06T05.25',1005.25,'S',305.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'07T06.25',1006.25,'S',306.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'08T07.25',1007.25,'S',307.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'09T08.25',1008.25,'S',308.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'10T09.25',1009.25,'S',309.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'11T10.25',1010.25,'S',310.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'12T11.25',1011.25,'S',311.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'13T12.25',1012.25,'S',312.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'14T13.25',1013.25,'S',313.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'15T14.25',1014.25,'S',314.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'16T15.25',1015.25,'S',315.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'17T16.25',1016.25,'S',316.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'18T17.25',1017.25,'S',317.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'19T18.25',1018.25,'S',318.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'20T19.25',1019.25,'S',319.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'21T20.25',1020.25,'S',320.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'22T21.25',1021.25,'S',321.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'23T22.25',1022.25,'S',322.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'24T23.25',1023.25,'S',323.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'25T24.25',1024.25,'S',324.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'26T25.25',1025.25,'S',325.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'27T26.25',1026.25,'S',326.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'28T27.25',1027.25,'S',327.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'29T28.25',1028.25,'S',328.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'30T29.25',1029.25,'S',329.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'01S00.26',1100.25,'S',400.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'02S01.26',1101.25,'S',401.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'03S02.26',1102.25,'S',402.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'04S03.26',1103.25,'S',403.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'05S04.26',1104.25,'S',404.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'06S05.26',1105.25,'S',405.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'07S06.26',1106.25,'S',406.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'08S07.26',1107.25,'S',407.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'09S08.26',1108.25,'S',408.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'10S09.26',1109.25,'S',409.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'11S10.26',1110.25,'S',410.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'12S11.26',1111.25,'S',411.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'13S12.26',1112.25,'S',412.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'14S13.26',1113.25,'S',413.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'15S14.26',1114.25,'S',414.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'16S15.26',1115.25,'S',415.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'17S16.26',1116.25,'S',416.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'18S17.26',1117.25,'S',417.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'19S18.26',1118.25,'S',418.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'20S19.26',1119.25,'S',419.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'21S20.26',1120.25,'S',420.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'22S21.26',1121.25,'S',421.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'23S22.26',1122.25,'S',422.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'24S23.26',1123.25,'S',423.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'25S24.26',1124.25,'S',424.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'26S25.26',1125.25,'S',425.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'27S26.26',1126.25,'S',426.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'28S27.26',1127.25,'S',427.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'29S28.26',1128.25,'S',428.75)",
                "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'30S29.26',1129.25,'S',429.75)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('F1',12,1030.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('I1',12,1031.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('N1',12,1032.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('F2',12,1033.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('I2',12,1034.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('N2',12,1035.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('F3',12,1036.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('I3',12,1037.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('N3',12,1038.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('FS1',12,1130.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('IS1',12,1131.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NS1',12,1132.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('FS2',12,1133.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('IS2',12,1134.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NS2',12,1135.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('FS3',12,1136.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('IS3',12,1137.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NS3',12,1138.25,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DT',12,0.00,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DS',12,0.00,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('AT',12,0.00,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('AS',12,0.00,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('Can-T',12,0.00,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('Can-S',12,0.00,'S',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 0',12,2000.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 1',12,2001.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 2',12,2002.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 3',12,2003.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 4',12,2004.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 5',12,2005.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 6',12,2006.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 7',12,2007.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 8',12,2008.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 9',12,2009.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 10',12,2010.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 11',12,2011.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 12',12,2012.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 13',12,2013.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 14',12,2014.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 15',12,2015.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 16',12,2016.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 17',12,2017.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 18',12,2018.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 19',12,2019.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 20',12,2020.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 21',12,2021.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 22',12,2022.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 23',12,2023.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 24',12,2024.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 25',12,2025.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 26',12,2026.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 27',12,2027.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 28',12,2028.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 29',12,2029.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 30',12,2030.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 31',12,2031.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 32',12,2032.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 33',12,2033.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 34',12,2034.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 35',12,2035.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 36',12,2036.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 37',12,2037.50,'N',0)",
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NF 38',12,2038.50,'N',0)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(1,12,'FP 0',500.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(2,12,'FP 1',501.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(3,12,'FP 2',502.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(4,12,'FP 3',503.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(5,12,'FP 4',504.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(6,12,'FP 5',505.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(7,12,'FP 6',506.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(8,12,'FP 7',507.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(9,12,'FP 8',508.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(10,12,'FP 9',509.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(11,12,'FP 10',510.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(12,12,'FP 11',511.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(13,12,'FP 12',512.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(14,12,'FP 13',513.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(15,12,'FP 14',514.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(16,12,'FP 15',515.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(17,12,'FP 16',516.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(18,12,'FP 17',517.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(19,12,'FP 18',518.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(20,12,'FP 19',519.10)",
                "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(21,12,'TROCO',77.77)",
                "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (321,1,45,6,7,12,'2026-03-02 08:15:30','2026-03-02 08:15:30','RZ')",
};

class ReducaoZCompleta : public ReducaoZTest
{
  protected:
    ReducaoZCompleta()
    {
        for (int taxBase = 0; taxBase < 2; ++taxBase) {
            // Rates in the first thirty positions, special totalizers in the nine behind them.
            for (int i = 0; i < 39; ++i) {
                Programa(taxBase, i, 100 * i + 25 + taxBase,
                         std::to_string(1000 + 100 * taxBase + i) + ".25",
                         std::to_string(300 + 100 * taxBase + i) + ".75");
            }
            int position = 30;
            for (const char* number : {"1", "2", "3"}) {
                for (const char* code : {"F", "I", "N"}) {
                    const std::string what = code + std::string(taxBase == 0 ? "," : "S,") + number;
                    fiscal
                        .numbers["ResolveTotIndex(" + std::to_string(taxBase) + "," + what + ")"] =
                        position++;
                }
            }
        }
        for (int i = 0; i < 39; ++i) {
            ProgramaNaoFiscal(i, i + 1, "NF " + std::to_string(i),
                              std::to_string(2000 + i) + ".50");
        }
        fiscal.numbers["BaseFormasPagamento_GetNumeroDeFormasDePagamento()"] = 20;
        for (int i = 0; i < 20; ++i) {
            ProgramaMeio(i, "FP " + std::to_string(i), std::to_string(500 + i) + ".10");
        }
        fiscal.money["BaseFormasPagamento_GetTrocoTotal()"] = Money("77.77");
    }
};

TEST_F(ReducaoZCompleta, EveryStatementIsExecutedInOrder)
{
    Reduz();
    EXPECT_THAT(Statements(), ElementsAreArray(STATEMENTS));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT count(*), count(DISTINCT totalizador) FROM totalizador_reducao"),
                ElementsAre("123|123"));
    EXPECT_THAT(Rows("SELECT count(*) FROM meio_pagamento_reducao"), ElementsAre("21"));
    EXPECT_EQ(sqlite3_total_changes(db), 146);
}

TEST_F(ReducaoZCompleta, NumberOfTheReductionIsReadAfreshForEveryRow)
{
    Reduz();
    EXPECT_EQ(fiscal.CallsOf("Contador_Get(COUNTER_CRZ)"), 146);
}

// For each of its statements: none follows, and it answers 0.
TEST_F(ReducaoZCompleta, StatementThatReportsZeroIsTheLast)
{
    for (int passed = 0; passed < 146; ++passed) {
        Forget();
        RejectNextExecutions(1, passed);
        EXPECT_EQ(command.DBLogger(db), 0) << passed;
        ASSERT_EQ(Statements().size(), static_cast<std::size_t>(passed) + 1);
    }
    EXPECT_EQ(Statements().back(), STATEMENTS.back());
    EXPECT_THAT(Rows("SELECT count(*) FROM outros_documentos"), ElementsAre("1"));
}

} // namespace
