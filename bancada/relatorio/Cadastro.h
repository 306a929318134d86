// What is programmed into the register: its owner, its identity, the names on its documents.
#pragma once

#include "bancada/leitura/Tables.h"
#include "bancada/relatorio/Documento.h"

namespace bancada::relatorio
{

// Reads what stands in the database today. Throws Unusable where it cannot be read.
class Cadastro
{
  public:
    explicit Cadastro(const leitura::DatabaseReading& database);

    // Its texts without the blanks that fill their fields up.
    Estabelecimento ReadEstabelecimento();
    // Empty where the means is not programmed.
    Text FindMeio(const Integer& indice);
    // Of a non-fiscal totalizer; empty where it is not programmed and not one of the two that every
    // register has.
    Text FindTotalizador(const Integer& indice);

  private:
    leitura::Rows<leitura::DadosUsuarioRow> m_usuario;
    leitura::Rows<leitura::DadosEcfRow> m_ecf;
    leitura::Rows<leitura::VersaoSbRow> m_versao;
    leitura::Rows<leitura::MeioPagamentoRow> m_meio;
    leitura::Rows<leitura::TotalizadorNaoFiscalRow> m_totalizador;
};

} // namespace bancada::relatorio
