// The walk through a database's jornadas and documents, in the order of their issue.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/relatorio/Documento.h"
#include "bancada/relatorio/DocumentoReader.h"
#include "bancada/relatorio/JornadaRange.h"
#include "bancada/relatorio/ReducaoReader.h"

#include <optional>

namespace bancada::relatorio
{

// The documents from one Z reduction to the next.
struct Jornada {
    // The reduction that closes it.
    Integer crz;
    // Without its totalizers and payment means; nothing while the jornada is open.
    std::optional<ReducaoZ> reducao;
};

// Who walks.
class JornadaVisitor
{
  public:
    virtual ~JornadaVisitor() = default;
    virtual void BeginJornada(const Jornada& jornada) = 0;
    // The document without its items, payments and totalizers; DocumentoReader::Complete reads
    // them.
    virtual void VisitDocumento(Documento& documento) = 0;
    virtual void EndJornada(const Jornada& jornada) = 0;
};

// One pass over the rows of `range` of each table, in their order, holding one document of each at
// a time. Throws Unusable where the database cannot be read.
void WalkJornadas(const leitura::DatabaseReading& database, const JornadaRange& range,
                  DocumentoReader& documentos, ReducaoReader& reducoes, JornadaVisitor& visitor);

} // namespace bancada::relatorio
