// The catalogue against the command classes, the protocol's codes and the database.
#include "FiscalCommands.h"
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using ::testing::HasSubstr;

struct Expected {
    int code;
    const char* commandClass;
    const char* name;
};

// Every class of FiscalCommands.h.
constexpr Expected EXPECTED[] = {
    {1, "CmdAbreCupom", "abre_cupom"},
    {2, "CmdVendeItem", "vende_item"},
    {3, "CmdCancelaItem", "cancela_item"},
    {4, "CmdEfetuaPagamento", "efetua_pagamento"},
    {5, "CmdFechaCupom", "fecha_cupom"},
    {7, "CmdCancelaCupom", "cancela_cupom"},
    {8, "CmdAbreCCD", "abre_ccd"},
    {10, "CmdFechaCCDGerencial", "fecha_ccd_gerencial"},
    {12, "CmdAbreGerencial", "abre_gerencial"},
    {13, "CmdAbreEstornoCCD", "abre_estorno_ccd"},
    {16, "CmdAbreCNF", "abre_cnf"},
    {17, "CmdVendeItemNF", "vende_item_nf"},
    {18, "CmdFechaCupomNF", "fecha_cupom_nf"},
    {19, "CmdEstornaMeioPagamento", "estorna_meio_pagamento"},
    {20, "CmdLeituraX", "leitura_x"},
    {21, "CmdReducaoZ", "reducao_z"},
    {22, "CmdLeituraMF", "leitura_mf"},
    {23, "CmdSangria", "sangria"},
    {27, "CmdEfetuaDescAcresItem", "efetua_desc_acres_item"},
    {28, "CmdCancelaDescAcresItem", "cancela_desc_acres_item"},
    {29, "CmdEfetuaDescAcresSubtotal", "efetua_desc_acres_subtotal"},
    {30, "CmdCancelaDescAcresSubtotal", "cancela_desc_acres_subtotal"},
    {31, "CmdCancelaCupomFiscalNfEmEmissao", "cancela_cupom_em_emissao"},
    {81, "CmdInsereAliquota", "insere_aliquota"},
    {82, "CmdHabilitaTotalizadores", "habilita_totalizadores"},
    {83, "CmdDesabilitaTotalizadores", "desabilita_totalizadores"},
    {84, "CmdInsereMeiosPagamento", "insere_meio_pagamento"},
    {85, "CmdInsereRegOpeNF", "insere_reg_ope_nf"},
    {91, "CmdProgramaLoja", "programa_loja"},
    {92, "CmdProgramaSequenciaECF", "programa_sequencia_ecf"},
    {93, "CmdProgramaUsuario", "programa_usuario"},
    {95, "CmdProgramaCNPJ_IE_IM", "programa_cnpj_ie_im"},
    {98, "CmdProgramaMoeda", "programa_moeda"},
    {100, "CmdReimprimeMFD", "reimprime_mfd"},
    {157, "CmdVendeItemDetalhado", "vende_item_detalhado"},
    {257, "CmdProgramaNrSerie", "programa_nr_serie"},
    {259, "CmdEntradaMILInterno", "entrada_mil_interno"},
    {260, "CmdSaidaMILInterno", "saida_mil_interno"},
    {261, "CmdSaidaMITInterno", "saida_mit_interno"},
    {267, "CmdEntradaMITInterno", "entrada_mit_interno"},
};

// What stands between ", ".
std::vector<std::string> Parts(const std::string& list)
{
    std::vector<std::string> parts;
    std::istringstream input(list);
    for (std::string part; std::getline(input, part, ',');) {
        parts.push_back(part.substr(part.find_first_not_of(' ')));
    }
    return parts;
}

using ComandoCatalogue = ComandoTest;

TEST_F(ComandoCatalogue, HoldsEveryCommandClassExactlyOnce)
{
    ASSERT_EQ(bancada::Catalogue().size(), std::size(EXPECTED));
    std::size_t i = 0;
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        const Expected& expected = EXPECTED[i++];
        EXPECT_EQ(item.code, expected.code);
        EXPECT_STREQ(item.commandClass, expected.commandClass);
        EXPECT_STREQ(item.name, expected.name);
        EXPECT_STRNE(item.summary, "") << item.name;
    }
}

// The header is read as text, so that a class added to it cannot be forgotten here.
TEST_F(ComandoCatalogue, HoldsEveryClassThatTheHeaderDeclares)
{
    std::ifstream header(ECF_SOURCE_DIR "/FiscalCommands.h");
    ASSERT_TRUE(header) << ECF_SOURCE_DIR;
    std::set<std::string> declared;
    for (std::string line; std::getline(header, line);) {
        const std::string begin = "class ";
        const std::size_t end = line.find(" : public Command");
        if (line.rfind(begin, 0) == 0 && end != std::string::npos) {
            declared.insert(line.substr(begin.size(), end - begin.size()));
        }
    }
    std::set<std::string> listed;
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        listed.insert(item.commandClass);
    }
    EXPECT_EQ(declared, listed);
}

TEST_F(ComandoCatalogue, MakesObjectsOfTheClassItNames)
{
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        const auto comando = item.make(registro);
        ASSERT_NE(comando, nullptr) << item.name;
        EXPECT_EQ(comando->GetCommand().m_eCmdType, item.code) << item.name;
        EXPECT_EQ(&comando->GetCommand(), dynamic_cast<Command*>(comando.get())) << item.name;
    }
}

TEST_F(ComandoCatalogue, FindsACommandByItsNameAlone)
{
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        EXPECT_EQ(bancada::FindComando(item.name), &item);
    }
    EXPECT_EQ(bancada::FindComando("configura"), nullptr);
    EXPECT_EQ(bancada::FindComando("ABRE_CUPOM"), nullptr);
    EXPECT_EQ(bancada::FindComando(""), nullptr);
}

TEST_F(ComandoCatalogue, NamesTablesThatExistAndTypesThatAreInUse)
{
    const std::set<std::string> types = {"", "LX", "MF", "CC", "RG", "NC", "CN", "RZ"};
    const auto& tables = database.Counts().rows;
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        for (const std::string& table : Parts(item.tables)) {
            EXPECT_EQ(tables.count(table), 1u) << item.name << ": " << table;
        }
        EXPECT_EQ(types.count(item.documentType), 1u) << item.name;
        if (*item.documentType != '\0') {
            EXPECT_THAT(item.tables, HasSubstr("outros_documentos")) << item.name;
        }
    }
}

} // namespace
