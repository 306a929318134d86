// A logging database written row by row, as the loggers would have written it.
#pragma once

#include "bancada/banco/LogSchema.h"
#include "bancada/conferencia/Conferencia.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace bancada::conferencia_test
{

// Two closed days and the beginning of a third, with everything that the loggers leave on purpose:
// an additional receipt that keeps its opening values (COO 11), percentages whose kind stays 'V',
// an apportioned subtotal discount (COO 4), a voucher and its reversal without a row (COO 5 and 6),
// a receipt cancelled after its closing (COO 7, the cancellation is COO 8), one cancelled in issue
// (COO 9), a reprint (COO 12), float and withdrawal without payments (COO 1 and 13), a reversal
// that leaves the payment's value as it was (COO 15, the reversal is COO 16), a cancelled
// non-fiscal receipt (COO 17, the cancellation is COO 18), the two times of the Z crossed, and a
// receipt that is still open (COO 21).
inline constexpr char CLEAN_DAYS[] = R"sql(
INSERT INTO outros_documentos VALUES
 ( 1,1,1,0,0,1,'2024-03-01 08:00:00','2024-03-01 08:00:00','CN'),
 ( 2,1,1,0,0,1,'2024-03-01 08:01:00','2024-03-01 08:01:00','LX'),
 ( 5,1,2,0,1,1,'2024-03-01 09:05:00','2024-03-01 09:05:30','CC'),
 (10,1,4,0,1,1,'2024-03-01 11:00:00','2024-03-01 11:00:30','CN'),
 (13,1,5,0,1,1,'2024-03-01 17:00:00','2024-03-01 17:00:00','CN'),
 (14,1,5,0,1,1,'2024-03-01 18:00:00','2024-03-01 18:00:00','RZ'),
 (17,1,7,0,1,1,'2024-03-02 09:00:00','2024-03-02 09:00:30','CN'),
 (18,1,8,0,1,1,'2024-03-02 09:01:00','2024-03-02 09:01:00','NC'),
 (19,1,9,1,1,1,'2024-03-02 09:02:00','2024-03-02 09:02:30','RG'),
 (20,1,9,1,1,2,'2024-03-02 18:00:00','2024-03-02 18:00:00','RZ');

INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor,
  nome_consumidor, endereco_consumidor, texto_suplementar, texto_complementar, chave_cupom,
  assinatura_documento, valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo,
  valor_acrescimo, valor_canc_acrescimo, valor_troco, id_cancelado, id_cupom_adicional,
  perc_acrescimo, perc_desconto) VALUES
 ( 3,1,1,'2024-03-01 08:10:00','','',',',' ',' ',' ','c2ln',15.48,15.48,'V',0,'V',0,0,4.52,'N','N',0,0),
 ( 4,2,1,'2024-03-01 09:00:00','','',',',' ',' ',' ','c2ln',15.00,13.50,'V',1.50,'V',0,0,0.00,'N','N',0,10.00),
 ( 7,3,1,'2024-03-01 10:00:00','','',',',' ',' ',' ','c2ln',20.00,22.00,'V',0,'V',2.00,0,0.00,'S','N',0,0),
 ( 9,4,1,'2024-03-01 10:30:00','','',',',' ',' ',' ',' ',0,0,'V',0,'V',0,0,0,'S','N',0,0),
 (11,5,1,'2024-03-01 12:00:00','','',',',' ',' ',' ',' ',0,0,'V',0,'V',0,0,0,'N','N',0,0),
 (15,6,2,'2024-03-02 08:00:00','','',',',' ',' ',' ','c2ln',7.00,7.00,'V',0,'V',0,0,0.00,'N','N',0,0),
 (21,7,3,'2024-03-03 08:00:00','','',',',' ',' ',' ',' ',0,0,'V',0,'V',0,0,0,'N','N',0,0);

INSERT INTO item_cupom_fiscal (cod_item, descricao, un_medida, tipo_acrescimo, tipo_desconto,
  perc_acrescimo, perc_desconto, seq_item, cont_coo, quantidade, aliquota, valor_unitario,
  valor_acrescimo, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade,
  casas_decimais_valor, id_arred_trunc_valor, id_cancelado) VALUES
 ('7','ITEM','UN','V','V',0,0,1,3,2,    '01T18.00', 5.00,0,0,   0,10.00,0,2,'T','N'),
 ('7','ITEM','UN','V','V',0,0,2,3,1.375,'F1',       3.99,0,0,   0, 5.48,3,2,'T','N'),
 ('7','ITEM','UN','V','V',0,0,1,4,1,    '01T18.00',10.00,0,1.90,0, 8.10,0,2,'T','N'),
 ('7','ITEM','UN','V','V',0,0,2,4,1,    '01T18.00', 4.00,0,0.00,0, 4.00,0,2,'T','S'),
 ('7','ITEM','UN','V','V',0,0,3,4,1,    '01S05.00', 6.00,0,0.60,0, 5.40,0,2,'T','N'),
 ('7','ITEM','UN','V','V',0,0,1,7,1,    '01T18.00',20.00,0,0,   0,20.00,0,2,'T','N'),
 ('7','ITEM','UN','V','V',0,0,1,9,1,    '01T18.00', 3.00,0,0,   0, 3.00,0,2,'T','N'),
 ('7','ITEM','UN','V','V',0,0,1,11,0.5,  '01T18.00',15.999,0,0,  0, 8.000,1,3,'A','N'),
 ('7','ITEM','UN','V','V',0,0,1,15,1,    '01T18.00', 7.00,0,0,   0, 7.00,0,2,'T','N'),
 ('7','ITEM','UN','V','V',0,0,1,21,1,    '01T18.00', 9.00,0,0,   0, 9.00,0,2,'T','N');

INSERT INTO pagamento_cupom VALUES
 ( 3,1,20.00,1,'',1,'N',0),
 ( 4,1,13.50,1,'',2,'N',0),
 ( 7,3,22.00,1,'',1,'N',0),
 (10,4,50.00,1,'',1,'N',0),
 (11,4,10.00,1,'',1,'N',0),
 (15,5, 3.00,1,'',1,'S',3.00),
 (15,5, 4.00,1,'',2,'N',0),
 (15,6, 3.00,1,'',2,'N',0),
 (17,7, 5.00,1,'',2,'N',0);

INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal,
  valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto,
  valor_canc_acrescimo, id_cancelado, perc_acrescimo, perc_desconto, nome_consumidor,
  cpf_cnpj_consumidor) VALUES
 ( 1,1,1,1,'2024-03-01 08:00:00',100.00,100.00,'V',0,'V',0,0,'N',0,0,'',''),
 (10,1,4,1,'2024-03-01 11:00:00', 30.00, 30.00,'V',0,'V',0,0,'N',0,0,'',''),
 (13,1,5,1,'2024-03-01 17:00:00', 80.00, 80.00,'V',0,'V',0,0,'N',0,0,'',''),
 (17,2,7,1,'2024-03-02 09:00:00',  5.00,  5.00,'V',0,'V',0,0,'S',0,0,'','');

INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total,
  valor_total_liquido, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto,
  valor_canc_acrescimo, id_cancelado) VALUES
 (1, 1,1,100.00,100.00,NULL,0,NULL,0,0,'N'),
 (1,10,3, 32.00, 30.00,'V',0,'V',2.00,0,'N'),
 (1,13,2, 80.00, 80.00,NULL,0,NULL,0,0,'N'),
 (1,17,3,  5.00,  5.00,'V',0,'V',0,0,'N');

INSERT INTO fita_detalhe VALUES (1,1,'2024-03-01 13:00:00',3,4);

INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, cont_coo, cont_gnf,
  cont_cro, valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms,
  valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss,
  tempo_operacional, tempo_emitindo_doc) VALUES
 (1,1,'2024-03-01 18:00:00','2024-03-01 00:00:00',14,5,1,68.48,68.48,
  31.58,4.69,1.90,2.00,29.00,5.40,0.27,0.60,0.00,0.00,300,36000),
 (2,1,'2024-03-02 18:00:00','2024-03-02 00:00:00',20,9,1,75.48,7.00,
  7.00,1.26,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,60,36000);

INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal,
  valor_imposto) VALUES
 (1,'01T18.00',26.10,'S',4.69), (1,'01S05.00',5.40,'S',0.27), (1,'F1',5.48,'S',0),
 (1,'DT',1.90,'S',0), (1,'DS',0.60,'S',0), (1,'AT',2.00,'S',0), (1,'AS',0.00,'S',0),
 (1,'Can-T',29.00,'S',0), (1,'Can-S',0.00,'S',0),
 (1,'FUNDO DE TROCO',100.00,'N',0), (1,'SANGRIA',80.00,'N',0), (1,'DOACAO',30.00,'N',0),
 (2,'01T18.00',7.00,'S',1.26), (2,'01S05.00',0.00,'S',0.00), (2,'F1',0.00,'S',0),
 (2,'DT',0.00,'S',0), (2,'DS',0.00,'S',0), (2,'AT',0.00,'S',0), (2,'AS',0.00,'S',0),
 (2,'Can-T',0.00,'S',0), (2,'Can-S',0.00,'S',0),
 (2,'FUNDO DE TROCO',0.00,'N',0), (2,'SANGRIA',0.00,'N',0), (2,'DOACAO',0.00,'N',0);

INSERT INTO meio_pagamento_reducao VALUES
 (1,1,'DINHEIRO',80.00), (2,1,'CARTAO',13.50), (21,1,'TROCO',26.52),
 (1,2,'DINHEIRO',0.00), (2,2,'CARTAO',7.00), (21,2,'TROCO',0.00);

INSERT INTO meio_pagamento VALUES (1,1,'DINHEIRO','N'), (2,1,'CARTAO','S');
INSERT INTO totalizador_nao_fiscal VALUES (3,'DOACAO');
INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, data_hora_gravacao,
  cont_cro, valor_gt) VALUES (1,'RUA A','MERCEARIA','MERCEARIA','2024-02-29 12:00:00',1,0);
INSERT INTO dados_ecf VALUES (1,'0001','M','T','ECF-IF',1);
INSERT INTO versao_sb VALUES (1,'01.00.00');
INSERT INTO intervencao VALUES (1,1,'2024-03-01 08:01:00','L','N');
)sql";

class CheckedDatabase : public testing::Test
{
  protected:
    CheckedDatabase() { Execute(LOG_SCHEMA); }

    std::string Path() const { return folder.File("registro.db"); }

    void Execute(const std::string& sql) const
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(Path().c_str(), &db), SQLITE_OK);
        // Nothing here needs to survive a power cut.
        sqlite3_exec(db, "PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY", nullptr, nullptr,
                     nullptr);
        char* error = nullptr;
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK)
            << (error == nullptr ? "" : error);
        sqlite3_free(error);
        sqlite3_close(db);
    }

    // Reconciles the database: its faults and its notes, each as "kind: key: text", with
    // " (explained)" behind one that the log explains, and the summary.
    void Check(const Losses* losses = nullptr)
    {
        faults.clear();
        notes.clear();
        const leitura::DatabaseReading database(Path());
        summary = conferencia::CheckDatabase(
            database, losses, [this](const conferencia::Finding& finding) {
                const conferencia::FindingKindInfo& kind = conferencia::InfoOf(finding.kind);
                const bool fault = kind.weight == conferencia::Weight::FAULT;
                (fault ? faults : notes)
                    .push_back(std::string(kind.name) + ": " + finding.key + ": " + finding.text +
                               (finding.explained ? " (explained)" : ""));
            });
    }

    // The faults alone.
    std::vector<std::string> Faults(const Losses* losses = nullptr)
    {
        Check(losses);
        return faults;
    }

    test_support::TempFolder folder;
    std::vector<std::string> faults, notes;
    conferencia::CheckSummary summary;
};

} // namespace bancada::conferencia_test
