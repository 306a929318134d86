// Closing of a fiscal receipt, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>

namespace
{

using ::testing::ElementsAre;
using ::testing::SizeIs;

class ComandoFechamento : public ProgrammedComandoTest
{
};

TEST_F(ComandoFechamento, ClosingCompletesTheReceipt)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor",)"
        R"("valor":"0.98"})");
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"30.00"})");
    Run(R"({"cmd":"fecha_cupom","mensagem":"Volte! CNPJ/CPF consumidor: 529.982.247-25"})");
    EXPECT_THAT(Rows("SELECT valor_subtotal, valor_total, valor_troco, cpf_cnpj_consumidor, "
                     "texto_suplementar, id_cupom_adicional FROM cupom_fiscal"),
                ElementsAre("28.98|28|2|52998224725|"
                            "Volte! CNPJ/CPF consumidor: 529.982.247-25|N"));
    EXPECT_THAT(Rows("SELECT assinatura_documento FROM cupom_fiscal"), ElementsAre(SizeIs(44)));
    // Without the setting the items stay as they were sold.
    EXPECT_THAT(Rows("SELECT valor_desconto, valor_total FROM item_cupom_fiscal"),
                ElementsAre("0|20", "0|8.98"));
}

TEST_F(ComandoFechamento, ClosingWithTheSettingRewritesEveryItem)
{
    registro.SetRatearSubtotal(true);
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor",)"
        R"("valor":"0.98"})");
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"28.00"})");
    Run(R"({"cmd":"fecha_cupom"})");
    EXPECT_THAT(Rows("SELECT valor_desconto, valor_total FROM item_cupom_fiscal"),
                ElementsAre("0.68|19.32", "0.3|8.68"));
}

TEST_F(ComandoFechamento, ClosingWithAdditionalReceiptIsRejectedByTheDatabase)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"28.98"})");
    Run(R"({"cmd":"fecha_cupom","adicional":true})");
    EXPECT_EQ(database.Counts().statementsRejected, 1);
    EXPECT_THAT(Rows("SELECT valor_total, id_cupom_adicional FROM cupom_fiscal"),
                ElementsAre("0|N"));
    EXPECT_EQ(registro.GetMemoria().cupom.situacao, bancada::ESituacaoCupom::FECHADO);
}

TEST_F(ComandoFechamento, SignatureIsThatOfTheRegister)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"28.98"})");
    const auto close = Read(R"({"cmd":"fecha_cupom"})");
    ASSERT_TRUE(caixa.Execute(*close, RtcAbsoluteTime(now)).Executed());
    const Command& comando = close->GetCommand();
    const auto& assinatura = registro.GetAssinatura();
    EXPECT_TRUE(
        std::equal(assinatura.begin(), assinatura.end(), comando.m_sAssinaturaDigitalDocumento,
                   [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); }));
    EXPECT_NE(std::count(assinatura.begin(), assinatura.end(), 0), 32);
}

} // namespace
