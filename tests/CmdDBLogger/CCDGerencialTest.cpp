// Credit/debit vouchers and management reports.
#include "tests/CmdDBLogger/DelegatingTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CCDGerencial : public DelegatingTest
{
};

TEST_F(CCDGerencial, OpeningAVoucherIsADocumentCC)
{
    EXPECT_EQ(
        Logged<CmdAbreCCD>(insertQuestions),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','CC')");
}

TEST_F(CCDGerencial, OpeningAManagementReportIsADocumentRG)
{
    EXPECT_EQ(
        Logged<CmdAbreGerencial>(insertQuestions),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','RG')");
}

TEST_F(CCDGerencial, ClosingAVoucherOrReportUpdatesItsEnd)
{
    EXPECT_EQ(
        Logged<CmdFechaCCDGerencial>(endQuestions),
        "UPDATE outros_documentos SET data_hora_fim_emissao = '2026-03-02 08:16:01' WHERE cont_coo = 1234");
}

TEST_F(CCDGerencial, VoucherOpenedAndClosedIsOneRowWithItsEnd)
{
    auto open = NewCommand<CmdAbreCCD>();
    open.DBLogger(db);
    EXPECT_THAT(
        Rows("SELECT data_hora_inicio_emissao, data_hora_fim_emissao FROM outros_documentos"),
        ElementsAre("2026-03-02 08:15:30|2026-03-02 08:15:30"));

    auto close = NewCommand<CmdFechaCCDGerencial>();
    close.m_dtExecStart = Instant("2026-03-02 08:17:00");
    close.DBLogger(db);

    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("1234|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 08:17:00|CC"));
}

TEST_F(CCDGerencial, VoucherWhoseInsertFailedIsClosedWithoutError)
{
    Execute("ALTER TABLE outros_documentos RENAME TO away");
    NewCommand<CmdAbreCCD>().DBLogger(db);
    Execute("ALTER TABLE away RENAME TO outros_documentos");
    EXPECT_EQ(LogEntries().size(), 2u);
    Forget();

    EXPECT_EQ(NewCommand<CmdFechaCCDGerencial>().DBLogger(db), TRUE);

    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(CCDGerencial, ReversingAVoucherIsNotLogged)
{
    ExpectNothingLogged<CmdAbreEstornoCCD>();
}

} // namespace
