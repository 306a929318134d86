#include "bancada/relatorio/JornadaWalk.h"

#include "bancada/leitura/Query.h"
#include "bancada/relatorio/DocumentoRows.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace bancada::relatorio
{
namespace
{

// The documents of one table, in the order of its rows, one ahead.
class Stream
{
  public:
    // `read` answers the next one, nothing after the last.
    explicit Stream(std::function<std::optional<Documento>()> read) : m_read(std::move(read))
    {
        m_head = m_read();
    }

    const std::optional<Documento>& Head() const { return m_head; }

    Documento Take()
    {
        Documento documento = std::move(*m_head);
        m_head = m_read();
        return documento;
    }

  private:
    std::function<std::optional<Documento>()> m_read;
    std::optional<Documento> m_head;
};

// A stream of a table's rows, each made a document by `documentoOf`, which answers nothing for a
// row that is none.
template <typename Record, typename DocumentoOf>
Stream StreamOf(leitura::Rows<Record>& rows, DocumentoOf documentoOf)
{
    return Stream([&rows, documentoOf]() -> std::optional<Documento> {
        Record row;
        while (rows.Next(row)) {
            if (std::optional<Documento> documento = documentoOf(row)) {
                return documento;
            }
        }
        return {};
    });
}

// The jornada of each document of a walk, in its order.
class Calendar
{
  public:
    // `firstCrz` is the first jornada that a reduction or a receipt of the database names: one that
    // was begun later than its register has no rows of those before.
    explicit Calendar(const Integer& firstCrz) : m_lastZ(firstCrz.Value() == 2 ? 1 : 0) {}

    Integer CrzOf(const Documento& d)
    {
        if (d.tipo == TipoDocumento::OUTRO && d.codigo.Value() != "RZ") {
            // Filed under the last reduction made; under 1 both before and after the first.
            if (d.crz.Value() > 1) {
                return m_crz = Next(d.crz);
            }
            return m_crz = m_lastZ == 1 || m_crz.Value() == 2 ? 2 : 1;
        }
        if (!d.IsCupom()) {
            m_lastZ = d.crz.Value();
        }
        return m_crz = d.crz;
    }

  private:
    // The one after, where there is any.
    static Integer Next(const Integer& crz)
    {
        return crz.Value() < INT64_MAX ? Integer(crz.Value() + 1) : crz;
    }

    std::int64_t m_lastZ;
    Integer m_crz;
};

std::string InOrder(const leitura::RowRange& range)
{
    return "WHERE " + Within(range) + " ORDER BY rowid";
}

bool IsSameCrz(const Integer& a, const Integer& b)
{
    return a.Value() == b.Value() && a.Raw() == b.Raw();
}

} // namespace

void WalkJornadas(const leitura::DatabaseReading& database, const JornadaRange& range,
                  DocumentoReader& documentos, ReducaoReader& reducoes, JornadaVisitor& visitor)
{
    leitura::Rows<leitura::CupomFiscalRow> fiscais(database, leitura::CupomFiscalTable(),
                                                   InOrder(range.cuponsFiscais));
    leitura::Rows<leitura::CupomNfRow> nfs(database, leitura::CupomNfTable(),
                                           InOrder(range.cuponsNf));
    leitura::Rows<leitura::OutroDocumentoRow> outros(database, leitura::OutroDocumentoTable(),
                                                     InOrder(range.outros));
    leitura::Rows<leitura::ReducaoZRow> zs(database, leitura::ReducaoZTable(),
                                           InOrder(range.reducoes));
    using Found = std::optional<Documento>;
    std::array<Stream, 4> streams{
        StreamOf(fiscais, [](const auto& row) -> Found { return CupomFiscalOf(row); }),
        StreamOf(nfs, [&](const auto& row) -> Found { return documentos.ReadComprovante(row); }),
        StreamOf(outros,
                 [&](const auto& row) -> Found {
                     return documentos.IsDocumentoItself(row) ? Found(OutroDocumentoOf(row))
                                                              : Found();
                 }),
        StreamOf(zs,
                 [&](const auto& row) -> Found { return DocumentoOf(reducoes.ReadReducao(row)); }),
    };

    leitura::Query first(database,
                         "SELECT min(crz) AS crz FROM (SELECT cont_crz AS crz FROM reducao_z WHERE"
                         " rowid = (SELECT min(rowid) FROM reducao_z) UNION ALL SELECT cont_crz"
                         " FROM cupom_fiscal WHERE rowid = (SELECT min(rowid) FROM cupom_fiscal)"
                         " UNION ALL SELECT cont_crz FROM cupom_nf WHERE rowid = (SELECT min(rowid)"
                         " FROM cupom_nf))");
    first.Next();
    Calendar calendar(first.ReadInteger("crz"));
    first.End();
    std::optional<Jornada> jornada;
    for (;;) {
        Stream* next = nullptr;
        for (Stream& stream : streams) {
            if (stream.Head() && (!next || IsIssuedBefore(*stream.Head(), *next->Head()))) {
                next = &stream;
            }
        }
        if (!next) {
            break;
        }
        Documento documento = next->Take();
        const Integer crz = calendar.CrzOf(documento);
        if (!jornada || !IsSameCrz(jornada->crz, crz)) {
            if (jornada) {
                visitor.EndJornada(*jornada);
            }
            jornada = Jornada{crz, reducoes.ClosingOf(crz, documento.inicio)};
            visitor.BeginJornada(*jornada);
        }
        visitor.VisitDocumento(documento);
    }
    if (jornada) {
        visitor.EndJornada(*jornada);
    }
}

} // namespace bancada::relatorio
