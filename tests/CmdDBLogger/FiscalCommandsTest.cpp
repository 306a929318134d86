// What a new command object holds.
#include "FiscalCommands.h"

#include <cstring>
#include <gtest/gtest.h>
#include <type_traits>

namespace
{

template <class Member>
bool IsZero(const Member& member)
{
    unsigned char bytes[sizeof(Member)];
    std::memcpy(bytes, &member, sizeof(Member));
    for (const unsigned char byte : bytes) {
        if (byte != 0) {
            return false;
        }
    }
    return true;
}

// A new object of a class, made where memory held other bytes before.
template <class CommandClass>
class NewObject
{
  public:
    NewObject()
    {
        std::memset(m_memory, 0xAA, sizeof m_memory);
        volatile unsigned char* dirty = m_memory; // keeps the fill from being optimised away
        EXPECT_EQ(dirty[0], 0xAA);
        m_command = new (m_memory) CommandClass;
    }

    const CommandClass* operator->() const { return m_command; }
    const CommandClass& operator*() const { return *m_command; }

  private:
    alignas(CommandClass) unsigned char m_memory[sizeof(CommandClass)];
    CommandClass* m_command;
};

// Every member of Command but the code, which must be `code`.
void ExpectNewCommand(const Command& command, int code)
{
    EXPECT_EQ(command.m_eCmdType, code);
    EXPECT_EQ(command.m_CmdManager, nullptr);
    EXPECT_EQ(command.FDController, nullptr);
    EXPECT_EQ(command.m_PrinterDevice, nullptr);
    EXPECT_EQ(command.m_iCmdVersion, 0);
    EXPECT_EQ(command.m_CmdRAW, nullptr);
    EXPECT_EQ(command.m_bSignedDoc, FALSE);
    EXPECT_EQ(command.m_bSizedDoc, FALSE);
    EXPECT_TRUE(IsZero(command.m_sAssinaturaDigitalDocumento));
    EXPECT_EQ(sizeof command.m_sAssinaturaDigitalDocumento, 32u);
    EXPECT_EQ(command.m_State, 0);
    EXPECT_EQ(command.m_bValidCmd, FALSE);
    EXPECT_EQ(command.m_eError, 0);
    EXPECT_EQ(command.m_eErrorDetailed, 0);
    EXPECT_EQ(command.m_eStatusCmd, 0);
    EXPECT_EQ(command.m_iMode, 0);
    EXPECT_EQ(command.m_iQtParameters, 0);
    EXPECT_EQ(command.m_iCmdSeq, 0);
    EXPECT_EQ(command.m_iCondicoes, 0);
    EXPECT_EQ(command.m_iMFDFreeSpace, 0u);
    EXPECT_EQ(command.m_eOrigem, 0);
    EXPECT_EQ(command.m_eInstanceType, 0);
    EXPECT_EQ(command.m_dtExecStart.s, 0u);
    EXPECT_EQ(command.m_dtExecEnd.s, 0u);
    EXPECT_EQ(command.m_bDoFiscalCheck, FALSE);
    EXPECT_EQ(command.m_bDoFiscal, FALSE);
    EXPECT_EQ(command.m_bDoPrint, FALSE);
    EXPECT_EQ(command.m_bDoFiscalPostPrint, FALSE);
    EXPECT_EQ(command.m_bDoLog, FALSE);
    EXPECT_EQ(command.m_bDoFillReply, FALSE);
    EXPECT_EQ(command.m_Next, nullptr);
}

// A command class, as the table below hands it on.
template <class CommandClass>
struct Class {
};

// Hands every command class that has a logger, its name and its code to `visit`.
template <class Visitor>
void ForEveryClass(Visitor visit)
{
    visit(Class<CmdAbreCupom>(), "CmdAbreCupom", 1);
    visit(Class<CmdVendeItem>(), "CmdVendeItem", 2);
    visit(Class<CmdCancelaItem>(), "CmdCancelaItem", 3);
    visit(Class<CmdEfetuaPagamento>(), "CmdEfetuaPagamento", 4);
    visit(Class<CmdFechaCupom>(), "CmdFechaCupom", 5);
    visit(Class<CmdCancelaCupom>(), "CmdCancelaCupom", 7);
    visit(Class<CmdAbreCCD>(), "CmdAbreCCD", 8);
    visit(Class<CmdFechaCCDGerencial>(), "CmdFechaCCDGerencial", 10);
    visit(Class<CmdAbreGerencial>(), "CmdAbreGerencial", 12);
    visit(Class<CmdAbreEstornoCCD>(), "CmdAbreEstornoCCD", 13);
    visit(Class<CmdAbreCNF>(), "CmdAbreCNF", 16);
    visit(Class<CmdVendeItemNF>(), "CmdVendeItemNF", 17);
    visit(Class<CmdFechaCupomNF>(), "CmdFechaCupomNF", 18);
    visit(Class<CmdEstornaMeioPagamento>(), "CmdEstornaMeioPagamento", 19);
    visit(Class<CmdLeituraX>(), "CmdLeituraX", 20);
    visit(Class<CmdReducaoZ>(), "CmdReducaoZ", 21);
    visit(Class<CmdLeituraMF>(), "CmdLeituraMF", 22);
    visit(Class<CmdSangria>(), "CmdSangria", 23);
    visit(Class<CmdEfetuaDescAcresItem>(), "CmdEfetuaDescAcresItem", 27);
    visit(Class<CmdCancelaDescAcresItem>(), "CmdCancelaDescAcresItem", 28);
    visit(Class<CmdEfetuaDescAcresSubtotal>(), "CmdEfetuaDescAcresSubtotal", 29);
    visit(Class<CmdCancelaDescAcresSubtotal>(), "CmdCancelaDescAcresSubtotal", 30);
    visit(Class<CmdCancelaCupomFiscalNfEmEmissao>(), "CmdCancelaCupomFiscalNfEmEmissao", 31);
    visit(Class<CmdInsereAliquota>(), "CmdInsereAliquota", 81);
    visit(Class<CmdHabilitaTotalizadores>(), "CmdHabilitaTotalizadores", 82);
    visit(Class<CmdDesabilitaTotalizadores>(), "CmdDesabilitaTotalizadores", 83);
    visit(Class<CmdInsereMeiosPagamento>(), "CmdInsereMeiosPagamento", 84);
    visit(Class<CmdInsereRegOpeNF>(), "CmdInsereRegOpeNF", 85);
    visit(Class<CmdProgramaLoja>(), "CmdProgramaLoja", 91);
    visit(Class<CmdProgramaSequenciaECF>(), "CmdProgramaSequenciaECF", 92);
    visit(Class<CmdProgramaUsuario>(), "CmdProgramaUsuario", 93);
    visit(Class<CmdProgramaCNPJ_IE_IM>(), "CmdProgramaCNPJ_IE_IM", 95);
    visit(Class<CmdProgramaMoeda>(), "CmdProgramaMoeda", 98);
    visit(Class<CmdReimprimeMFD>(), "CmdReimprimeMFD", 100);
    visit(Class<CmdVendeItemDetalhado>(), "CmdVendeItemDetalhado", 157);
    visit(Class<CmdProgramaNrSerie>(), "CmdProgramaNrSerie", 257);
    visit(Class<CmdEntradaMILInterno>(), "CmdEntradaMILInterno", 259);
    visit(Class<CmdSaidaMILInterno>(), "CmdSaidaMILInterno", 260);
    visit(Class<CmdSaidaMITInterno>(), "CmdSaidaMITInterno", 261);
    visit(Class<CmdEntradaMITInterno>(), "CmdEntradaMITInterno", 267);
}

template <class CommandClass>
void ExpectNew(Class<CommandClass>, int code)
{
    const NewObject<CommandClass> command;
    ExpectNewCommand(*command, code);
}

// Whether the class declares a logger, and does not just inherit Command's.
template <class CommandClass>
constexpr bool HasItsOwnLogger(Class<CommandClass>)
{
    return std::is_same_v<decltype(&CommandClass::DBLogger), BOOL (CommandClass::*)(sqlite3*)>;
}

TEST(FiscalCommands, EveryClassCarriesItsCodeAndNothingElse)
{
    int classes = 0;
    ForEveryClass([&](auto type, const char* name, int code) {
        SCOPED_TRACE(name);
        ExpectNew(type, code);
        ++classes;
    });
    EXPECT_EQ(classes, 40);
}

TEST(FiscalCommands, EveryClassHasALoggerOfItsOwn)
{
    ForEveryClass(
        [](auto type, const char* name, int) { EXPECT_TRUE(HasItsOwnLogger(type)) << name; });

    class Documento : public Command
    {
    };
    EXPECT_FALSE(HasItsOwnLogger(Class<Documento>()));
}

TEST(FiscalCommands, ParametersOfFiscalReceiptsAreZero)
{
    const NewObject<CmdAbreCupom> abre;
    EXPECT_TRUE(IsZero(abre->m_sCPF_CNPJ));
    EXPECT_TRUE(IsZero(abre->m_sNomeConsumidor));
    EXPECT_TRUE(IsZero(abre->m_sEnderecoConsumidor));

    const NewObject<CmdVendeItem> vende;
    EXPECT_TRUE(IsZero(vende->m_iReservado));
    EXPECT_TRUE(IsZero(vende->m_sCodigoItem));
    EXPECT_TRUE(IsZero(vende->m_sDescricao));
    EXPECT_TRUE(IsZero(vende->m_sTributacao));
    EXPECT_TRUE(IsZero(vende->m_iIndiceTributacao));
    EXPECT_TRUE(IsZero(vende->m_sUnidadeMedida));
    EXPECT_TRUE(IsZero(vende->m_iCasasDecimaisQtde));
    EXPECT_TRUE(IsZero(vende->m_iCasasDecimaisValor));
    EXPECT_TRUE(IsZero(vende->m_cArredTrunc));

    const NewObject<CmdVendeItemDetalhado> detalhado;
    EXPECT_TRUE(IsZero(detalhado->m_sCodigoItem));
    EXPECT_TRUE(IsZero(detalhado->m_sDescricao));
    EXPECT_TRUE(IsZero(detalhado->m_sTributacao));
    EXPECT_TRUE(IsZero(detalhado->m_iIndiceTributacao));
    EXPECT_TRUE(IsZero(detalhado->m_sUnidadeMedida));
    EXPECT_TRUE(IsZero(detalhado->m_iCasasDecimaisQtde));
    EXPECT_TRUE(IsZero(detalhado->m_iCasasDecimaisValor));
    EXPECT_TRUE(IsZero(detalhado->m_cArredTrunc));

    const NewObject<CmdEfetuaPagamento> paga;
    EXPECT_TRUE(IsZero(paga->m_iMeioPagamento));
    EXPECT_TRUE(IsZero(paga->m_finValor));
    EXPECT_TRUE(IsZero(paga->m_iNumParcelas));
    EXPECT_TRUE(IsZero(paga->m_sInfoAdicional));

    const NewObject<CmdFechaCupom> fecha;
    EXPECT_TRUE(IsZero(fecha->m_bCupomAdicional));
    EXPECT_TRUE(IsZero(fecha->m_iReservado));
    EXPECT_TRUE(IsZero(fecha->m_sMsgPromocional));

    EXPECT_TRUE(IsZero(NewObject<CmdCancelaItem>()->m_iNumeroItem));
    EXPECT_TRUE(IsZero(NewObject<CmdCancelaCupom>()->m_iCOOCancelado));
}

TEST(FiscalCommands, ParametersOfAdjustmentsAreZero)
{
    const NewObject<CmdEfetuaDescAcresItem> item;
    EXPECT_TRUE(IsZero(item->m_eOperacao));
    EXPECT_TRUE(IsZero(item->m_eTipoValor));
    EXPECT_TRUE(IsZero(item->m_Valor));
    EXPECT_TRUE(IsZero(item->m_iNumeroItem));

    const NewObject<CmdCancelaDescAcresItem> cancelaItem;
    EXPECT_TRUE(IsZero(cancelaItem->m_eOperacao));
    EXPECT_TRUE(IsZero(cancelaItem->m_iNumeroItem));

    const NewObject<CmdEfetuaDescAcresSubtotal> subtotal;
    EXPECT_TRUE(IsZero(subtotal->m_eOperacao));
    EXPECT_TRUE(IsZero(subtotal->m_eTipoValor));
    EXPECT_TRUE(IsZero(subtotal->m_Valor));

    EXPECT_TRUE(IsZero(NewObject<CmdCancelaDescAcresSubtotal>()->m_eOperacao));
}

TEST(FiscalCommands, ParametersOfNonFiscalReceiptsAreZero)
{
    const NewObject<CmdAbreCNF> abre;
    EXPECT_TRUE(IsZero(abre->m_sCPF_CNPJ));
    EXPECT_TRUE(IsZero(abre->m_sNomeConsumidor));

    EXPECT_TRUE(IsZero(NewObject<CmdVendeItemNF>()->m_iIndiceTotalizador));

    const NewObject<CmdEstornaMeioPagamento> estorna;
    EXPECT_TRUE(IsZero(estorna->m_iMeioPagamentoOrigem));
    EXPECT_TRUE(IsZero(estorna->m_iMeioPagamentoDestino));
    EXPECT_TRUE(IsZero(estorna->m_finValor));
    EXPECT_TRUE(IsZero(estorna->m_iNumParcelas));
    EXPECT_TRUE(IsZero(estorna->m_sInfoAdicional));

    EXPECT_TRUE(IsZero(NewObject<CmdSangria>()->m_eTipoOperacao));
}

TEST(FiscalCommands, ParametersOfReadingsAndProgrammingAreZero)
{
    EXPECT_TRUE(IsZero(NewObject<CmdLeituraX>()->m_eMidia));

    const NewObject<CmdReimprimeMFD> reimprime;
    EXPECT_TRUE(IsZero(reimprime->m_iCooInicial));
    EXPECT_TRUE(IsZero(reimprime->m_iCooFinal));

    const NewObject<CmdInsereMeiosPagamento> meio;
    EXPECT_TRUE(IsZero(meio->m_iIndice));
    EXPECT_TRUE(IsZero(meio->m_sDescricao));
    EXPECT_TRUE(IsZero(meio->m_eVinculacaoCCD));

    const NewObject<CmdInsereRegOpeNF> totalizador;
    EXPECT_TRUE(IsZero(totalizador->m_iIndice));
    EXPECT_TRUE(IsZero(totalizador->m_sDescricao));

    EXPECT_TRUE(IsZero(NewObject<CmdProgramaSequenciaECF>()->m_iNumCaixa));

    const NewObject<CmdProgramaCNPJ_IE_IM> cnpj;
    EXPECT_TRUE(IsZero(cnpj->m_sCNPJ));
    EXPECT_TRUE(IsZero(cnpj->m_sIE));
    EXPECT_TRUE(IsZero(cnpj->m_sIM));
    EXPECT_TRUE(IsZero(cnpj->m_sUF));

    const NewObject<CmdProgramaNrSerie> serie;
    EXPECT_TRUE(IsZero(serie->m_sMarca));
    EXPECT_TRUE(IsZero(serie->m_sModelo));
    EXPECT_TRUE(IsZero(serie->m_sTipo));
    EXPECT_TRUE(IsZero(serie->m_sNumSerie));

    EXPECT_TRUE(IsZero(NewObject<CmdProgramaMoeda>()->m_sSimboloMoeda));
}

TEST(FiscalCommands, StepsOfACommandWithoutItsOwnAnswerTrue)
{
    class Documento : public Command
    {
    } command;

    command.Free();
    command.Destroy();
    EXPECT_EQ(command.InitCheck(nullptr), TRUE);
    EXPECT_EQ(command.FiscalCheck(), TRUE);
    EXPECT_EQ(command.Fiscal(), TRUE);
    EXPECT_EQ(command.Print(), TRUE);
    EXPECT_EQ(command.DBLogger(nullptr), TRUE);
    EXPECT_EQ(command.FiscalPostPrint(), TRUE);
    EXPECT_EQ(command.Log(), TRUE);
    EXPECT_EQ(command.FillReply(0), TRUE);
}

} // namespace
