// Programming that leaves no trace in the logging database.
#include "tests/CmdDBLogger/DelegatingTest.h"

namespace
{

class ProgramacaoNaoRegistrada : public DelegatingTest
{
};

TEST_F(ProgramacaoNaoRegistrada, ProgrammingATaxRateIsNotLogged)
{
    ExpectNothingLogged<CmdInsereAliquota>();
}

TEST_F(ProgramacaoNaoRegistrada, EnablingTotalizersIsNotLogged)
{
    ExpectNothingLogged<CmdHabilitaTotalizadores>();
}

TEST_F(ProgramacaoNaoRegistrada, DisablingTotalizersIsNotLogged)
{
    ExpectNothingLogged<CmdDesabilitaTotalizadores>();
}

TEST_F(ProgramacaoNaoRegistrada, ProgrammingTheShopIsNotLogged)
{
    ExpectNothingLogged<CmdProgramaLoja>();
}

} // namespace
