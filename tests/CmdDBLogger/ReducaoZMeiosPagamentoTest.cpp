// The payment-means rows of a Z reduction.
#include "tests/CmdDBLogger/ReducaoZTest.h"

namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReducaoZMeiosPagamento : public ReducaoZTest
{
  protected:
    // The statements between the six fixed ones and the document's.
    std::vector<std::string> Means() const { return StatementsFrom(7, Statements().size() - 8); }

    // Positions without a programmed means; one behind the last is not to be asked for.
    void SetPositions(int count)
    {
        fiscal.numbers["BaseFormasPagamento_GetNumeroDeFormasDePagamento()"] = count;
        for (int position = 0; position < count; ++position) {
            fiscal.numbers["BaseFormasPagamento_GetMeioPagamentoProgramado(" +
                           std::to_string(position) + ")"] = 0;
        }
    }
};

TEST_F(ReducaoZMeiosPagamento, GapsLeaveGapsAndTheChangeIsOnePastTheLastPosition)
{
    SetPositions(20);
    ProgramaMeio(0, "Dinheiro", "1234.56");
    ProgramaMeio(2, "Cartao", "-10.00");
    fiscal.money["BaseFormasPagamento_GetTrocoTotal()"] = Money("1005.25");
    Reduz();
    EXPECT_THAT(
        Means(),
        ElementsAre(
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(1,12,'Dinheiro',1234.56)",
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(3,12,'Cartao',-10.00)",
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(21,12,'TROCO',1005.25)"));
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento_reducao"),
                ElementsAre("1|12|Dinheiro|1234.56", "3|12|Cartao|-10", "21|12|TROCO|1005.25"));
}

TEST_F(ReducaoZMeiosPagamento, PositionsAreCountedOnceAndAskedInOrder)
{
    SetPositions(3);
    ProgramaMeio(1, "Cheque", "1.00");
    Reduz();
    std::vector<std::string> asked;
    for (const std::string& call : fiscal.calls) {
        if (call.rfind("BaseFormasPagamento_", 0) == 0) {
            asked.push_back(call);
        }
    }
    EXPECT_THAT(asked, ElementsAre("BaseFormasPagamento_GetNumeroDeFormasDePagamento()",
                                   "BaseFormasPagamento_GetMeioPagamentoProgramado(0)",
                                   "BaseFormasPagamento_GetMeioPagamentoProgramado(1)",
                                   "BaseFormasPagamento_GetMeioPagamento(1,500)",
                                   "BaseFormasPagamento_GetFPTotal(1)",
                                   "BaseFormasPagamento_GetMeioPagamentoProgramado(2)",
                                   "BaseFormasPagamento_GetTrocoTotal()"));
}

TEST_F(ReducaoZMeiosPagamento, WithoutPositionsOnlyTheChangeIsWritten)
{
    SetPositions(0);
    Reduz();
    EXPECT_THAT(
        Means(),
        ElementsAre(
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(1,12,'TROCO',0.00)"));
}

TEST_F(ReducaoZMeiosPagamento, NegativeCountOfPositionsLeavesTheChangeItsIndex)
{
    for (const int count : {-1, -7, -2147483647}) {
        SetPositions(count);
        Reduz();
    }
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento_reducao"),
                ElementsAre("0|12|TROCO|0", "-6|12|TROCO|0", "-2147483646|12|TROCO|0"));
}

TEST_F(ReducaoZMeiosPagamento, MeansWhoseFlagIsNegativeIsWritten)
{
    SetPositions(1);
    ProgramaMeio(0, "Dinheiro", "1.00");
    fiscal.numbers["BaseFormasPagamento_GetMeioPagamentoProgramado(0)"] = -1;
    Reduz();
    EXPECT_EQ(Means().size(), 2u);
}

TEST_F(ReducaoZMeiosPagamento, DescriptionWithAnApostropheLosesItsRowAlone)
{
    SetPositions(2);
    ProgramaMeio(0, "CAIXA D'AGUA", "1.00");
    ProgramaMeio(1, "Cheque", "2.00");
    Reduz();
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'21', Erro:'near \"AGUA\": syntax error'",
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(1,12,'CAIXA D'AGUA',1.00)"));
    EXPECT_THAT(Rows("SELECT descricao_meio_pagamento FROM meio_pagamento_reducao"),
                ElementsAre("Cheque", "TROCO"));
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre("RZ"));
}

TEST_F(ReducaoZMeiosPagamento, DescriptionThatFillsItsArrayIsWrittenWhole)
{
    SetPositions(1);
    for (const std::size_t size : {498u, 499u}) {
        const std::string name(size, 'd');
        ProgramaMeio(0, name, "1.00");
        Reduz();
        EXPECT_EQ(
            Statements()[7],
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(1,12,'" +
                name + "',1.00)");
        EXPECT_THAT(LogEntries(), IsEmpty());
    }
}

TEST_F(ReducaoZMeiosPagamento, DescriptionOfNoBytesIsAnEmptyText)
{
    SetPositions(2);
    ProgramaMeio(0, "Dinheiro", "1.00");
    ProgramaMeio(1, "", "2.00");
    Reduz();
    EXPECT_THAT(
        Statements(),
        Contains(
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(2,12,'',2.00)"));
}

} // namespace
