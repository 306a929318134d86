// Readings.
#include "tests/CmdDBLogger/DelegatingTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Leituras : public DelegatingTest
{
};

TEST_F(Leituras, PrintedXReadingIsADocumentLX)
{
    auto command = NewCommand<CmdLeituraX>();
    command.m_eMidia = IMPRESSAO;
    EXPECT_EQ(
        Logged(command, insertQuestions),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','LX')");
}

TEST_F(Leituras, XReadingToAFileIsNotLogged)
{
    CmdLeituraX command;
    command.m_eMidia = ARQUIVO;

    EXPECT_EQ(command.DBLogger(nullptr), TRUE);

    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_EQ(command.m_dtExecEnd.s, 0u);
}

TEST_F(Leituras, XReadingToAnyOtherMediumIsADocumentLX)
{
    for (const int medium : {0, 1, 3, 4, -1}) {
        auto command = NewCommand<CmdLeituraX>();
        command.m_eMidia = static_cast<EMidia>(medium);
        command.DBLogger(db);
    }
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"),
                ElementsAre("LX", "LX", "LX", "LX", "LX"));
}

TEST_F(Leituras, FiscalMemoryReadingIsADocumentMF)
{
    EXPECT_EQ(
        Logged<CmdLeituraMF>(insertQuestions),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','MF')");
}

TEST_F(Leituras, RejectedDocumentLeavesTheCommandUnaffected)
{
    Execute("DROP TABLE outros_documentos");

    EXPECT_EQ(NewCommand<CmdLeituraMF>().DBLogger(db), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'22', Erro:'no such table: outros_documentos'",
            "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:15:30','MF')"));
}

} // namespace
