// One database and everything that the reports read of it.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/relatorio/Cadastro.h"
#include "bancada/relatorio/DocumentoReader.h"
#include "bancada/relatorio/Filtro.h"
#include "bancada/relatorio/JornadaRange.h"
#include "bancada/relatorio/JornadaWalk.h"
#include "bancada/relatorio/ReducaoReader.h"

#include <cstdint>
#include <optional>

namespace bancada::relatorio
{

// The readers share one state of the database.
class Report
{
  public:
    // Lives no longer than the database. With `crz` its readers know that jornada, at least, and
    // need not read the rest. Its walk meets the documents alone that `filtro` admits, and jornadas
    // that have some. Throws Unusable for another program's database, before anything is told of
    // it.
    explicit Report(const leitura::DatabaseReading& database, std::optional<std::int64_t> crz = {},
                    Filtro filtro = {});
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    const leitura::DatabaseReading& Database() const { return m_database; }
    const JornadaRange& Range() const { return m_range; }
    const Filtro& Filter() const { return m_filtro; }
    Cadastro& Names() { return m_cadastro; }
    ReducaoReader& Reducoes() { return m_reducoes; }
    DocumentoReader& Documentos() { return m_documentos; }

    void Walk(JornadaVisitor& visitor);

  private:
    const leitura::DatabaseReading& m_database;
    JornadaRange m_range;
    Cadastro m_cadastro;
    ReducaoReader m_reducoes;
    DocumentoReader m_documentos;
    Filtro m_filtro;
};

} // namespace bancada::relatorio
