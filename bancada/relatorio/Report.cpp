#include "bancada/relatorio/Report.h"

#include <utility>

namespace bancada::relatorio
{
namespace
{

const leitura::DatabaseReading& Accepted(const leitura::DatabaseReading& database)
{
    leitura::RequireTables(database);
    return database;
}

// Hands on what the filter admits, and the jornadas that have some of it.
class Sieve final : public JornadaVisitor
{
  public:
    Sieve(const Filtro& filtro, DocumentoReader& documentos, JornadaVisitor& visitor)
        : m_filtro(filtro), m_documentos(documentos), m_visitor(visitor)
    {
    }

    void BeginJornada(const Jornada& jornada) override
    {
        m_jornada = &jornada;
        m_begun = false;
    }

    void VisitDocumento(Documento& documento) override
    {
        if (!Admits(documento)) {
            return;
        }
        if (!m_begun) {
            m_visitor.BeginJornada(*m_jornada);
            m_begun = true;
        }
        m_visitor.VisitDocumento(documento);
    }

    void EndJornada(const Jornada& jornada) override
    {
        if (m_begun) {
            m_visitor.EndJornada(jornada);
        }
    }

  private:
    // The visitor completes the document itself.
    bool Admits(const Documento& documento)
    {
        if (!m_filtro.NeedsRows()) {
            return m_filtro.Admits(documento);
        }
        Documento complete = documento;
        m_documentos.Complete(complete);
        return m_filtro.Admits(complete);
    }

    const Filtro& m_filtro;
    DocumentoReader& m_documentos;
    JornadaVisitor& m_visitor;
    const Jornada* m_jornada = nullptr;
    bool m_begun = false;
};

} // namespace

Report::Report(const leitura::DatabaseReading& database, std::optional<std::int64_t> crz,
               Filtro filtro)
    : m_database(Accepted(database)), m_range(crz ? FindJornada(database, *crz) : JornadaRange()),
      m_cadastro(database), m_reducoes(database, m_range),
      m_documentos(database, m_range, m_cadastro, m_reducoes), m_filtro(std::move(filtro))
{
}

void Report::Walk(JornadaVisitor& visitor)
{
    if (m_filtro.IsNone()) {
        WalkJornadas(m_database, m_range, m_documentos, m_reducoes, visitor);
        return;
    }
    Sieve sieve(m_filtro, m_documentos, visitor);
    WalkJornadas(m_database, m_range, m_documentos, m_reducoes, sieve);
}

} // namespace bancada::relatorio
