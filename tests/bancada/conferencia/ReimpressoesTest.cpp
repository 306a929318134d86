// Reprints of the detail tape between the documents.
#include "bancada/conferencia/Reimpressoes.h"

#include "tests/bancada/conferencia/CheckedDatabase.h"

namespace bancada::conferencia_test
{
namespace
{

using ReimpressoesTest = CheckedDatabase;

TEST_F(ReimpressoesTest, AreCountedUpToADocument)
{
    Execute("INSERT INTO fita_detalhe (cont_cfd, data_hora_emissao) VALUES"
            " (1,'10:00:00'), (2,'10:00:00'), (3,'10:00:01'), (4,'10:00:09')");
    const leitura::DatabaseReading database(Path());
    conferencia::Reimpressoes reimpressoes(database);
    EXPECT_EQ(reimpressoes.CountUntil("09:59:59"), 0);
    EXPECT_EQ(reimpressoes.CountUntil("10:00:00"), 2);
    reimpressoes.Consume(1);
    // One of the last document's second may stand behind it.
    EXPECT_EQ(reimpressoes.CountUntil("10:00:01"), 2);
    // Those of an earlier second than the last document do not.
    EXPECT_EQ(reimpressoes.CountUntil("10:00:05"), 1);
    EXPECT_EQ(reimpressoes.CountUntil("10:00:20"), 1);
    reimpressoes.Consume(1);
    EXPECT_EQ(reimpressoes.CountUntil("10:00:30"), 0);
}

TEST_F(ReimpressoesTest, AreCountedAcrossASettingOfTheClock)
{
    Execute("INSERT INTO fita_detalhe (cont_cfd, data_hora_emissao) VALUES"
            " (1,'2024-03-01 18:00:00'), (2,'2024-03-01 07:00:00'), (3,'2024-03-01 09:00:00'),"
            " (4,'2024-03-02 08:00:00')");
    const leitura::DatabaseReading database(Path());
    conferencia::Reimpressoes reimpressoes(database);
    EXPECT_EQ(reimpressoes.CountUntil("2024-03-01 17:00:00"), 0);
    EXPECT_EQ(reimpressoes.CountAcross("2024-03-01 17:00:00"), 3);
    reimpressoes.Consume(1);
    EXPECT_EQ(reimpressoes.CountUntil("2024-03-01 06:59:59"), 0);
    EXPECT_EQ(reimpressoes.CountUntil("2024-03-01 08:00:00"), 1);
    reimpressoes.Consume(1);
    EXPECT_EQ(reimpressoes.CountUntil("2024-03-01 10:00:00"), 1);
    reimpressoes.Consume(1);
    EXPECT_EQ(reimpressoes.CountUntil("2024-03-02 09:00:00"), 1);
}

} // namespace
} // namespace bancada::conferencia_test
