// The reading side's limits against those of the side that writes.
#include "bancada/leitura/Limits.h"

#include "FiscalCommands.h"
#include "FiscalData/Cupom.h"
#include "bancada/registro/Limits.h"

#include <gtest/gtest.h>

namespace bancada
{
namespace
{

TEST(Limits, AreThoseOfTheRegister)
{
    EXPECT_EQ(leitura::LAST_COUNTER, MAX_CONTADOR);
    EXPECT_EQ(leitura::MAX_ITENS, Cupom::MAX_ITENS);
    EXPECT_EQ(leitura::MAX_PAGAMENTOS, Cupom::MAX_PAGAMENTOS);
    EXPECT_EQ(leitura::MAX_MEIOS_PAGAMENTO, MAX_MEIOS_PAGAMENTO);
    EXPECT_EQ(leitura::MAX_TOTALIZADORES_NF, MAX_TOTALIZADORES_NF);
    EXPECT_EQ(leitura::MAX_CASAS, MAX_DECIMALS);
    EXPECT_EQ(leitura::MAX_CONTRIBUINTE, MAX_CONTRIBUINTE_TEXT);
}

// Each member holds its text and the byte that ends it.
TEST(Limits, AreThoseOfTheCommandsTexts)
{
    const auto most = [](std::size_t size) { return static_cast<std::int64_t>(size) - 1; };
    EXPECT_EQ(leitura::MAX_NOME_CONSUMIDOR, most(sizeof CmdAbreCupom::m_sNomeConsumidor));
    EXPECT_EQ(leitura::MAX_NOME_CONSUMIDOR, most(sizeof CmdAbreCNF::m_sNomeConsumidor));
    EXPECT_EQ(leitura::MAX_ENDERECO_CONSUMIDOR, most(sizeof CmdAbreCupom::m_sEnderecoConsumidor));
    EXPECT_EQ(leitura::MAX_CODIGO_ITEM, most(sizeof CmdVendeItem::m_sCodigoItem));
    EXPECT_EQ(leitura::MAX_DESCRICAO_ITEM, most(sizeof CmdVendeItem::m_sDescricao));
    EXPECT_EQ(leitura::MAX_UNIDADE, most(sizeof CmdVendeItem::m_sUnidadeMedida));
    EXPECT_EQ(leitura::MAX_INFO_ADICIONAL, most(sizeof CmdEfetuaPagamento::m_sInfoAdicional));
    EXPECT_EQ(leitura::MAX_MENSAGEM, most(sizeof CmdFechaCupom::m_sMsgPromocional));
    EXPECT_EQ(leitura::MAX_NOME_MEIO, most(sizeof CmdInsereMeiosPagamento::m_sDescricao));
    EXPECT_EQ(leitura::MAX_NOME_TOTALIZADOR, most(sizeof CmdInsereRegOpeNF::m_sDescricao));
    EXPECT_EQ(leitura::MAX_INSCRICAO, most(sizeof CmdProgramaCNPJ_IE_IM::m_sIE));
    EXPECT_EQ(leitura::MAX_INSCRICAO, most(sizeof CmdProgramaCNPJ_IE_IM::m_sIM));
    EXPECT_EQ(leitura::MAX_MARCA, most(sizeof CmdProgramaNrSerie::m_sMarca));
    EXPECT_EQ(leitura::MAX_MODELO, most(sizeof CmdProgramaNrSerie::m_sModelo));
    EXPECT_EQ(leitura::MAX_NUM_SERIE, most(sizeof CmdProgramaNrSerie::m_sNumSerie));
}

} // namespace
} // namespace bancada
