#include "bancada/relatorio/Report.h"

namespace bancada::relatorio
{
namespace
{

const leitura::DatabaseReading& Accepted(const leitura::DatabaseReading& database)
{
    leitura::RequireTables(database);
    return database;
}

} // namespace

Report::Report(const std::string& path, std::optional<std::int64_t> crz)
    : m_database(path), m_range(crz ? FindJornada(Accepted(m_database), *crz) : JornadaRange()),
      m_cadastro(Accepted(m_database)), m_reducoes(m_database, m_range),
      m_documentos(m_database, m_range, m_cadastro, m_reducoes)
{
}

void Report::Walk(JornadaVisitor& visitor)
{
    WalkJornadas(m_database, m_range, m_documentos, m_reducoes, visitor);
}

} // namespace bancada::relatorio
