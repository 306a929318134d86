// The numbers and the order of what other modules of the firmware reach by position.
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataTypes.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

namespace
{

// The slot of a virtual operation, as the C++ ABI keeps it in a pointer to it: on some targets the
// lowest bit says that the operation is virtual.
template <class Operation>
std::uintptr_t SlotOf(Operation operation)
{
    std::uintptr_t offset;
    static_assert(sizeof operation >= sizeof offset);
    std::memcpy(&offset, &operation, sizeof offset);
    return (offset & ~std::uintptr_t{1}) / sizeof(void*);
}

TEST(Interpreter, VirtualOperationsStandInTheirSlots)
{
    EXPECT_EQ(SlotOf(&Command::Free), 0u);
    EXPECT_EQ(SlotOf(&Command::Destroy), 1u);
    EXPECT_EQ(SlotOf(&Command::InitCheck), 2u);
    EXPECT_EQ(SlotOf(&Command::FiscalCheck), 3u);
    EXPECT_EQ(SlotOf(&Command::Fiscal), 4u);
    EXPECT_EQ(SlotOf(&Command::Print), 5u);
    EXPECT_EQ(SlotOf(&Command::DBLogger), 6u);
    EXPECT_EQ(SlotOf(&Command::FiscalPostPrint), 7u);
    EXPECT_EQ(SlotOf(&Command::Log), 8u);
    EXPECT_EQ(SlotOf(&Command::FillReply), 9u);
}

TEST(Interpreter, CommandStatesHaveTheirNumbers)
{
    EXPECT_EQ(CMD_LOST, 0);
    EXPECT_EQ(CMD_FREE, 1);
    EXPECT_EQ(CMD_EXEC, 2);
    EXPECT_EQ(CMD_TOREPLY, 3);
    EXPECT_EQ(CMD_INTERNAL_FREE, 4);
    EXPECT_EQ(CMD_INTERNAL_EXEC, 5);
    EXPECT_EQ(CMD_IN_EXECUTION, 6);
    EXPECT_EQ(CMD_PF_RECOVER, 7);

    EXPECT_EQ(CMD_NEW, 0);
    EXPECT_EQ(CMD_NAK, 1);
    EXPECT_EQ(CMD_WAK, 2);
    EXPECT_EQ(CMD_ACK, 3);
    EXPECT_EQ(CMD_INIT_OK, 4);
    EXPECT_EQ(CMD_LOG_OK, 5);
    EXPECT_EQ(CMD_FILL_REPLY_OK, 6);
    EXPECT_EQ(CMD_PRINT_OK, 7);
    EXPECT_EQ(CMD_END_EXEC_OK, 8);
    EXPECT_EQ(CMD_REPLY_ON_POWERFAIL, 9);

    EXPECT_EQ(CMD_INTERNO, 0);
    EXPECT_EQ(CMD_EXTERNO, 1);

    EXPECT_EQ(IT_EXEC_NORMAL, 0);
    EXPECT_EQ(IT_REIMPRESSAO, 1);
    EXPECT_EQ(IT_DLL, 2);
    EXPECT_EQ(IT_RECOVER_MFD, 3);
}

TEST(Interpreter, CountersHaveTheirNumbers)
{
    EXPECT_EQ(COUNTER_COO, 0);
    EXPECT_EQ(COUNTER_CRZ, 1);
    EXPECT_EQ(COUNTER_CRO, 2);
    EXPECT_EQ(COUNTER_CCF, 3);
    EXPECT_EQ(COUNTER_GNF, 4);
    EXPECT_EQ(COUNTER_CFD, 5);
    EXPECT_EQ(COUNTER_CDC, 6);
    EXPECT_EQ(COUNTER_GRG, 7);
    EXPECT_EQ(COUNTER_NFC, 8);
    EXPECT_EQ(COUNTER_GFC, 9);
    EXPECT_EQ(COUNTER_CFC, 10);
    EXPECT_EQ(COUNTER_CTM, 11);
    EXPECT_EQ(COUNTER_CON, 12);
    EXPECT_EQ(COUNTER_CER, 13);
    EXPECT_EQ(COUNTER_NCN, 14);
    EXPECT_EQ(COUNTER_COO_INSERIDOS, 15);
    EXPECT_EQ(COUNTER_COO_RESTANTES_REF, 16);
    EXPECT_EQ(COUNTER_MAX_SIZE, 17);
}

TEST(Interpreter, BasesAndReceiptTypesHaveTheirNumbers)
{
    EXPECT_EQ(BC_IND_FISCAL, 0);
    EXPECT_EQ(BC_IND_NAO_FISCAL, 1);
    EXPECT_EQ(BC_IND_FISCAL_ULTIMA_RZ, 2);
    EXPECT_EQ(BC_IND_NAO_FISCAL_ULTIMA_RZ, 3);
    EXPECT_EQ(BC_IND_FISCAL_BI_IND_ICMS, 0);
    EXPECT_EQ(BC_IND_FISCAL_BI_IND_ISSQN, 1);
    EXPECT_EQ(BC_IND_NAO_FISCAL_BI_ENTRADA, 0);
    EXPECT_EQ(BC_IND_NAO_FISCAL_BI_SAIDA, 1);
    EXPECT_EQ(COMPROVANTE_NAO_FISCAL, 0);
    EXPECT_EQ(CUPOM_FISCAL, 1);
}

TEST(Interpreter, ParameterValuesHaveTheirNumbers)
{
    EXPECT_EQ(DESCONTO, 0);
    EXPECT_EQ(ACRESCIMO, 1);
    EXPECT_EQ(VALOR, 0);
    EXPECT_EQ(PERCENTUAL, 1);
    EXPECT_EQ(FUNDO_TROCO, 0);
    EXPECT_EQ(SANGRIA, 1);
    EXPECT_EQ(COM_CCD, 0);
    EXPECT_EQ(SEM_CCD, 1);
    EXPECT_EQ(IMPRESSAO, 1);
    EXPECT_EQ(ARQUIVO, 2);
    EXPECT_EQ(ARQUIVO_DLL, 3);
    EXPECT_EQ(SIZE_NUM_SERIE, 20);
}

} // namespace
