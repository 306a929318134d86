// The log of documents other than fiscal receipts.
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

// A document of no command in particular.
class Documento : public Command
{
};

class OutrosDocumentos : public LoggerTest
{
};

TEST_F(OutrosDocumentos, InsertCarriesCountersTimesAndType)
{
    fiscal.SetCounter(COUNTER_COO, 1234);
    fiscal.SetCounter(COUNTER_GNF, 56);
    fiscal.SetCounter(COUNTER_GRG, 7);
    fiscal.SetCounter(COUNTER_CDC, 8);
    fiscal.SetCounter(COUNTER_CRZ, 9);
    auto command = NewCommand<Documento>();
    command.m_dtExecEnd = Instant("2026-03-02 08:16:01");

    EXPECT_EQ(command.OutrosDocumentosDBLogger(db, "MF"), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','MF')");
    EXPECT_THAT(
        Rows("SELECT * FROM outros_documentos"),
        ::testing::ElementsAre("1234|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 08:16:01|MF"));
    EXPECT_THAT(LogEntries(), ::testing::IsEmpty());
}

} // namespace
