// What a receipt was paid with, reversals taken off.
#include "bancada/conferencia/Pagamentos.h"

#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class PagamentosTest : public CheckedDatabase
{
  protected:
    conferencia::Pagamentos Read(std::int64_t coo) const
    {
        const leitura::DatabaseReading database(Path());
        return conferencia::PagamentosReader(database).Read(coo);
    }
};

TEST_F(PagamentosTest, OfAReceiptWithoutPaymentsAreNothing)
{
    const conferencia::Pagamentos pagamentos = Read(3);
    EXPECT_TRUE(pagamentos.soma.IsZero());
    EXPECT_TRUE(pagamentos.porMeio.empty());
    EXPECT_FALSE(pagamentos.incerto);
    EXPECT_THAT(pagamentos.gnfsDeEstorno, IsEmpty());
}

TEST_F(PagamentosTest, AReversalIsTakenOffItsMeansAndTakesAGnf)
{
    Execute(CLEAN_DAYS);
    const conferencia::Pagamentos pagamentos = Read(15);
    EXPECT_EQ(pagamentos.soma.Units(), 700);
    ASSERT_EQ(pagamentos.porMeio.size(), 2U);
    EXPECT_EQ(pagamentos.porMeio.at(1).Units(), 0);
    EXPECT_EQ(pagamentos.porMeio.at(2).Units(), 700);
    EXPECT_THAT(pagamentos.gnfsDeEstorno, ElementsAre(6));
}

TEST_F(PagamentosTest, AnAmountThatIsNoneMakesTheSumUnknown)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE pagamento_cupom SET valor_pagamento = 'x' WHERE cont_coo = 15 AND"
            " indice_meio_pagamento = 1");
    const conferencia::Pagamentos pagamentos = Read(15);
    EXPECT_FALSE(pagamentos.soma.IsKnown());
    EXPECT_FALSE(pagamentos.porMeio.at(1).IsKnown());
    EXPECT_EQ(pagamentos.porMeio.at(2).Units(), 700);
}

TEST_F(PagamentosTest, TwoReversalsOfOneMeansAddUp)
{
    Execute(CLEAN_DAYS);
    // 1.00 and then 2.00 of the 3.00: the second statement takes the first amount off the value.
    Execute("UPDATE pagamento_cupom SET valor_pagamento = 2.00, valor_estornado = 2.00"
            " WHERE cont_coo = 15 AND indice_meio_pagamento = 1;"
            "UPDATE pagamento_cupom SET valor_pagamento = 1.00 WHERE cont_gnf = 6;"
            "UPDATE pagamento_cupom SET rowid = 10 WHERE cont_coo = 17;"
            "INSERT INTO pagamento_cupom (rowid, cont_coo, cont_gnf, valor_pagamento, num_parcelas,"
            " info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES"
            " (9,15,6,2.00,1,'',2,'N',0)");
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(PagamentosTest, AReversalOfEachOfTwoMeansIsTakenOffItsOwn)
{
    Execute(CLEAN_DAYS);
    // 2.00 of the 3.00 in cash, then 1.00 of the 4.00 by card, each to a third means.
    Execute("UPDATE pagamento_cupom SET valor_estornado = 2.00 WHERE cont_coo = 15 AND"
            " indice_meio_pagamento = 1;"
            "UPDATE pagamento_cupom SET id_estornado = 'S', valor_estornado = 1.00 WHERE cont_coo ="
            " 15 AND cont_gnf = 5 AND indice_meio_pagamento = 2;"
            "UPDATE pagamento_cupom SET valor_pagamento = 2.00, indice_meio_pagamento = 3 WHERE"
            " cont_gnf = 6;"
            "UPDATE pagamento_cupom SET rowid = 10 WHERE cont_coo = 17;"
            "INSERT INTO pagamento_cupom (rowid, cont_coo, cont_gnf, valor_pagamento, num_parcelas,"
            " info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES"
            " (9,15,7,1.00,1,'',3,'N',0)");
    const conferencia::Pagamentos pagamentos = Read(15);
    EXPECT_FALSE(pagamentos.incerto);
    EXPECT_EQ(pagamentos.soma.Units(), 700);
    EXPECT_EQ(pagamentos.porMeio.at(1).Units(), 100);
    EXPECT_EQ(pagamentos.porMeio.at(2).Units(), 300);
    EXPECT_EQ(pagamentos.porMeio.at(3).Units(), 300);
    EXPECT_THAT(pagamentos.gnfsDeEstorno, ElementsAre(6, 7));
}

TEST_F(PagamentosTest, TwoReversalsOfTwoPaymentsInOneMeansCannotBeTold)
{
    Execute(CLEAN_DAYS);
    // The 3.00 in cash were 1.00 and 2.00; 0.50 and then 0.75 of them were reversed: the second
    // statement takes the first amount off both rows.
    Execute("UPDATE pagamento_cupom SET valor_pagamento = 0.50, valor_estornado = 0.75"
            " WHERE cont_coo = 15 AND indice_meio_pagamento = 1;"
            "UPDATE pagamento_cupom SET valor_pagamento = 0.50 WHERE cont_gnf = 6;"
            "UPDATE pagamento_cupom SET rowid = 11 WHERE cont_coo = 17;"
            "UPDATE pagamento_cupom SET rowid = 9 WHERE cont_gnf = 6;"
            "INSERT INTO pagamento_cupom (rowid, cont_coo, cont_gnf, valor_pagamento, num_parcelas,"
            " info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES"
            " (8,15,5,1.50,1,'',1,'S',0.75), (10,15,6,0.75,1,'',2,'N',0)");
    const conferencia::Pagamentos pagamentos = Read(15);
    EXPECT_TRUE(pagamentos.incerto);
    EXPECT_EQ(pagamentos.soma.Units(), 650);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(PagamentosTest, AReversalOfTwoPaymentsInOneMeansIsCountedOnce)
{
    Execute(CLEAN_DAYS);
    // The 3.00 in cash were 1.00 and 2.00: both rows carry the amount reversed.
    Execute("UPDATE pagamento_cupom SET valor_pagamento = 1.00 WHERE cont_coo = 15"
            " AND indice_meio_pagamento = 1;"
            "UPDATE pagamento_cupom SET rowid = 10 WHERE cont_coo = 17;"
            "UPDATE pagamento_cupom SET rowid = 9 WHERE cont_gnf = 6;"
            "INSERT INTO pagamento_cupom (rowid, cont_coo, cont_gnf, valor_pagamento, num_parcelas,"
            " info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES"
            " (8,15,5,2.00,1,'',1,'S',3.00)");
    EXPECT_THAT(Faults(), IsEmpty());
}

} // namespace
} // namespace bancada::conferencia_test
