// One database and everything that the reports read of it.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/relatorio/Cadastro.h"
#include "bancada/relatorio/DocumentoReader.h"
#include "bancada/relatorio/JornadaWalk.h"
#include "bancada/relatorio/ReducaoReader.h"

#include <string>

namespace bancada::relatorio
{

// The readers share one state of the database.
class Report
{
  public:
    // Throws Unusable where the file cannot be read or is another program's, before anything is
    // told of it.
    explicit Report(const std::string& path);
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    const leitura::DatabaseReading& Database() const { return m_database; }
    Cadastro& Names() { return m_cadastro; }
    ReducaoReader& Reducoes() { return m_reducoes; }
    DocumentoReader& Documentos() { return m_documentos; }

    void Walk(JornadaVisitor& visitor);

  private:
    leitura::DatabaseReading m_database;
    Cadastro m_cadastro;
    ReducaoReader m_reducoes;
    DocumentoReader m_documentos;
};

} // namespace bancada::relatorio
