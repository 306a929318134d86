// The documents of both tables in the order of their issue.
#include "bancada/conferencia/DocumentStream.h"

#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using conferencia::Documento;
using conferencia::NumeroDoCancelamento;
using testing::ElementsAre;

class DocumentStreamTest : public CheckedDatabase
{
  protected:
    void AddFiscal(int coo, const std::string& hora) const
    {
        Execute("INSERT INTO cupom_fiscal (cont_coo, data_hora_emissao) VALUES (" +
                std::to_string(coo) + ", '" + hora + "')");
    }
    void AddOutro(int coo, const std::string& hora) const
    {
        Execute("INSERT INTO outros_documentos (cont_coo, data_hora_inicio_emissao) VALUES (" +
                std::to_string(coo) + ", '" + hora + "')");
    }

    // The numbers in their order, each taken as the last one.
    std::vector<std::int64_t> Coos() const
    {
        const leitura::DatabaseReading database(Path());
        const conferencia::RepeatedCoos repeated(database);
        const conferencia::Acertos acertos(database, repeated);
        conferencia::DocumentStream documentos(database, acertos);
        std::vector<std::int64_t> coos;
        std::optional<std::int64_t> last;
        while (const std::optional<Documento> documento = documentos.Next(last)) {
            last = documento->coo.Value();
            coos.push_back(*last);
        }
        return coos;
    }

    std::vector<NumeroDoCancelamento> Cancelados() const
    {
        const leitura::DatabaseReading database(Path());
        const conferencia::RepeatedCoos repeated(database);
        const conferencia::Acertos acertos(database, repeated);
        conferencia::DocumentStream documentos(database, acertos);
        std::vector<NumeroDoCancelamento> cancelados;
        while (const std::optional<Documento> documento = documentos.Next(std::nullopt)) {
            cancelados.push_back(documento->cancelamento);
        }
        return cancelados;
    }
};

TEST_F(DocumentStreamTest, OfAnEmptyDatabaseIsEmpty)
{
    EXPECT_THAT(Coos(), ElementsAre());
}

TEST_F(DocumentStreamTest, TheCleanDaysComeInOrder)
{
    Execute(CLEAN_DAYS);
    EXPECT_THAT(Coos(), ElementsAre(1, 2, 3, 4, 5, 7, 9, 10, 11, 13, 14, 15, 17, 18, 19, 20, 21));
}

TEST_F(DocumentStreamTest, TheSuccessorComesFirstWhateverItsTime)
{
    AddOutro(999998, "2024-03-01 08:00:00");
    AddOutro(2, "2024-03-01 08:00:05");
    AddFiscal(999999, "2024-03-01 09:00:00");
    AddFiscal(1, "2024-03-01 09:00:00");
    EXPECT_THAT(Coos(), ElementsAre(999998, 999999, 1, 2));
}

TEST_F(DocumentStreamTest, WithoutASuccessorTheEarlierThenTheNearerComesFirst)
{
    AddOutro(1, "2024-03-01 08:00:00");
    AddOutro(7, "2024-03-01 08:00:02");
    AddOutro(8, "2024-03-01 08:00:05");
    AddFiscal(9, "2024-03-01 08:00:01");
    AddFiscal(20, "2024-03-01 08:00:05");
    EXPECT_THAT(Coos(), ElementsAre(1, 9, 7, 8, 20));
}

// Neither is the successor of the last, and what was issued behind the setting has earlier times.
TEST_F(DocumentStreamTest, AcrossASettingOfTheClockTheNumbersTellTheOrder)
{
    Execute("INSERT INTO intervencao VALUES (1, 1, '2024-03-01 07:40:00', 'L', 'N')");
    AddOutro(1, "2024-03-01 11:00:00");
    AddFiscal(3, "2024-03-01 11:01:00");
    AddFiscal(5, "2024-03-01 12:00:00");
    AddOutro(6, "2024-03-01 07:40:00");
    Execute("UPDATE outros_documentos SET id_tipo_documento = 'LX' WHERE cont_coo = 6");
    AddFiscal(8, "2024-03-01 07:50:00");
    EXPECT_THAT(Coos(), ElementsAre(1, 3, 5, 6, 8));
}

TEST_F(DocumentStreamTest, AReceiptBehindASettingOfTheClockWaitsForTheReadingsBeforeIt)
{
    Execute("INSERT INTO intervencao VALUES (1, 1, '2024-03-01 07:40:00', 'L', 'N')");
    AddFiscal(1, "2024-03-01 11:00:00");
    AddOutro(3, "2024-03-01 12:00:00");
    AddOutro(4, "2024-03-01 07:40:00");
    Execute("UPDATE outros_documentos SET id_tipo_documento = 'LX' WHERE cont_coo = 4");
    AddFiscal(5, "2024-03-01 07:50:00");
    EXPECT_THAT(Coos(), ElementsAre(1, 3, 4, 5));
}

// A number out of its order is no setting of the clock.
TEST_F(DocumentStreamTest, BehindASettingOfTheClockTheTimesTellTheOrderAgain)
{
    Execute("INSERT INTO intervencao VALUES (1, 1, '2024-03-01 07:40:00', 'L', 'N')");
    AddOutro(1, "2024-03-01 11:00:00");
    AddOutro(2, "2024-03-01 07:40:00");
    Execute("UPDATE outros_documentos SET id_tipo_documento = 'LX' WHERE cont_coo = 2");
    AddOutro(9, "2024-03-01 07:50:00");
    AddFiscal(4, "2024-03-01 07:55:00");
    EXPECT_THAT(Coos(), ElementsAre(1, 2, 9, 4));
}

TEST_F(DocumentStreamTest, TheCancellationOfASignedReceiptTookANumberThatOfAPaidOnePerhaps)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo, assinatura_documento, id_cancelado) VALUES"
            " (1,'c2ln','S'), (2,'c2ln','N'), (3,' ','S'), (4,'','S'), (5,' ','N');"
            "INSERT INTO pagamento_cupom (cont_coo) VALUES (4), (5)");
    EXPECT_THAT(Cancelados(), ElementsAre(NumeroDoCancelamento::ONE, NumeroDoCancelamento::NONE,
                                          NumeroDoCancelamento::NONE, NumeroDoCancelamento::PERHAPS,
                                          NumeroDoCancelamento::NONE));
}

} // namespace
} // namespace bancada::conferencia_test
