// The losses of a firmware log: which findings they are and which they explain.
#include "tests/bancada/check_Banco.h"

#include <gmock/gmock.h>

namespace bancada
{
namespace
{

using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

void AddRejected(Losses& losses, int command, const std::string& error,
                 const std::string& statement)
{
    losses.rejected.push_back({1, "2024-03-01 08:00:00", command, error, statement});
}

const char CURRENCY[] = "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES "
                        "(1,2024-03-01 08:00:00'R$')";
const char ADDITIONAL[] =
    "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 8.00, valor_total = "
    "8.00, valor_troco = 2.00, texto_suplementar = 'Obrigado', texto_complementar = '', chave_cupom "
    "= '1' id_cupom_adicional = 'S' WHERE cont_coo = 11";

TEST_F(BancoConferido, TheClosingOfAnAdditionalReceiptAndACurrencyAreNoFaults)
{
    Escreve(DIAS_LIMPOS);
    Losses losses;
    AddRejected(losses, 5, "near \"id_cupom_adicional\": syntax error", ADDITIONAL);
    AddRejected(losses, 98, "near \"08\": syntax error", CURRENCY);
    EXPECT_THAT(Confere(&losses), IsEmpty());
    EXPECT_THAT(Confere(&losses, "perda-prevista"),
                ElementsAre("perda-prevista: cupom_fiscal cont_coo 11: UPDATE of cupom_fiscal by "
                            "command 5 was rejected: near \"id_cupom_adicional\": syntax error",
                            "perda-prevista: moeda ?: INSERT of moeda by command 98 was rejected: "
                            "near \"08\": syntax error"));
}

TEST_F(BancoConferido, WithALogAClosingThatItDoesNotNameWasNone)
{
    Escreve(DIAS_LIMPOS);
    const Losses losses;
    EXPECT_THAT(Confere(&losses),
                ElementsAre("cupom-aberto: COO 11: paid 10.00, closing neither in "
                            "the row nor in the log"));
}

TEST_F(BancoConferido, ALostItemExplainsWhatItLeaves)
{
    Escreve(DIAS_LIMPOS);
    Escreve("DELETE FROM item_cupom_fiscal WHERE cont_coo = 3 AND seq_item = 1");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 157, "near \"AGUA\": syntax error",
                "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao) VALUES "
                "(1,3,'789','PAO D'AGUA')");
    EXPECT_THAT(
        Confere(&losses),
        ElementsAre(
            "linha-perdida: item_cupom_fiscal cont_coo 3, seq_item 1: INSERT of "
            "item_cupom_fiscal by command 157 was rejected: near \"AGUA\": syntax error",
            "item-ausente: COO 3: no row of item 1 (explained)",
            "cupom-itens: COO 3: live items 5.48, subtotal 15.48, total 15.48 (explained)"));
    EXPECT_EQ(m_resumo.faltas, 3);
    EXPECT_EQ(m_resumo.explicadas, 2);
}

TEST_F(BancoConferido, ALostReceiptExplainsItsDay)
{
    Escreve(DIAS_LIMPOS);
    Escreve("DELETE FROM cupom_fiscal WHERE cont_coo = 4");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 1, "near \"AGUA\": syntax error",
                "INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, "
                "cpf_cnpj_consumidor, nome_consumidor, chave_cupom) VALUES (4,2,1,'2024-03-01 "
                "09:00:00','','JOANA D'ARC',' ')");
    const std::vector<std::string> achados = Confere(&losses);
    EXPECT_THAT(achados, Each(AnyOf(StartsWith("linha-perdida: "), EndsWith(" (explained)"))));
    EXPECT_THAT(achados, Contains(StartsWith("z-vendas: CRZ 1: ")));
    EXPECT_THAT(achados, Contains(StartsWith("ccf-ausente: CCF 2: ")));
    EXPECT_THAT(achados, Not(Contains(StartsWith("coo-ausente"))));
}

TEST_F(BancoConferido, ALostRowOfAnotherDocumentExplainsNothing)
{
    Escreve(DIAS_LIMPOS);
    Escreve("UPDATE cupom_fiscal SET valor_troco = 4.51 WHERE cont_coo = 3");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 4, "syntax error",
                "INSERT INTO pagamento_cupom (cont_coo, cont_gnf) VALUES (15,'D'AGUA')");
    EXPECT_THAT(
        Confere(&losses, "cupom-pagamentos"),
        ElementsAre("cupom-pagamentos: COO 3: payments 20.00 less change 4.51, total 15.48"));
}

TEST_F(BancoConferido, ALostCommandIsAFault)
{
    Escreve(DIAS_LIMPOS);
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    losses.lost.push_back({1, "2024-03-01 09:00:00", "disk I/O error"});
    EXPECT_THAT(Confere(&losses), ElementsAre("comando-perdido: 2024-03-01 09:00:00: the rows of a "
                                              "command are lost: disk I/O error"));
}

} // namespace
} // namespace bancada
