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

Report::Report(const leitura::DatabaseReading& database, std::optional<std::int64_t> crz)
    : m_database(Accepted(database)), m_range(crz ? FindJornada(database, *crz) : JornadaRange()),
      m_cadastro(database), m_reducoes(database, m_range),
      m_documentos(database, m_range, m_cadastro, m_reducoes)
{
}

void Report::Walk(JornadaVisitor& visitor)
{
    WalkJornadas(m_database, m_range, m_documentos, m_reducoes, visitor);
}

} // namespace bancada::relatorio
