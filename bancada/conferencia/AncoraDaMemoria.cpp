#include "bancada/conferencia/AncoraDaMemoria.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

namespace bancada::conferencia
{
namespace
{

// A counter of the register and the column whose last row holds it.
struct AnchoredCounter {
    const char* label;
    const char* table;
    const char* column;
    std::int64_t MemoriaAnchor::*value;
};

constexpr AnchoredCounter COUNTERS[] = {
    {"CCF ", "cupom_fiscal", "cont_ccf", &MemoriaAnchor::ccf},
    {"CRZ ", "reducao_z", "cont_crz", &MemoriaAnchor::crz},
    {"CFD ", "fita_detalhe", "cont_cfd", &MemoriaAnchor::cfd},
    {"CDC ", "outros_documentos", "cont_cdc", &MemoriaAnchor::cdc},
    {"GRG ", "outros_documentos", "cont_grg", &MemoriaAnchor::grg},
};

// Whether the register has gone on from the number to the other; 0 is before every number.
bool IsBehind(std::int64_t last, std::int64_t counter)
{
    return last == 0 ? counter != 0 : leitura::ComesBefore(last, counter);
}

class AncoraDaMemoria
{
  public:
    AncoraDaMemoria(const leitura::DatabaseReading& database, const LookedAt& lookedAt,
                    const MemoriaAnchor& anchor, const FindingSink& sink)
        : m_database(database), m_lookedAt(lookedAt), m_anchor(anchor), m_sink(sink)
    {
    }

    std::int64_t Check()
    {
        CheckCommand();
        for (const AnchoredCounter& counter : COUNTERS) {
            CheckCounter(counter);
        }
        CheckCoo();
        CheckGt();
        if (!IsOlder()) {
            CheckRegistro();
        }
        return m_findings;
    }

  private:
    // The number that a query answers as `number`; nothing where there is no row.
    leitura::Integer Read(const std::string& sql) const
    {
        leitura::Query query(m_database, sql);
        return query.Next() ? query.ReadInteger("number")
                            : leitura::Integer(leitura::CellState::NULL_VALUE, "none");
    }

    leitura::Integer Last(const std::string& table, const std::string& column) const
    {
        return Read("SELECT " + column + " AS number FROM " + table +
                    " ORDER BY rowid DESC LIMIT 1");
    }

    void Report(const std::string& key, const Place& place)
    {
        ++m_findings;
        m_sink({FindingKind::ANCORA,
                {},
                key,
                Tr("the register's memory says %1, the rows %2", {place.expected, place.found}),
                false,
                place});
    }

    bool IsWhole() const { return !m_lookedAt.IsEmpty() && m_lookedAt.primeiroCoo.Value() == 1; }

    // A database that was recovered carries none.
    void CheckCommand()
    {
        leitura::Query query(m_database, "PRAGMA user_version");
        const leitura::Integer number =
            query.Next() ? query.ReadInteger("user_version") : leitura::Integer(0);
        if (m_anchor.command && number.Value() != 0 && number.Value() < *m_anchor.command) {
            Report(Tr("command %1", {std::to_string(*m_anchor.command)}),
                   {"", 0, "user_version", std::to_string(*m_anchor.command), Number(number)});
        }
    }

    void CheckCounter(const AnchoredCounter& counter)
    {
        const leitura::Integer last = Last(counter.table, counter.column);
        const std::int64_t value = m_anchor.*counter.value;
        if ((last.IsKnown() || IsWhole()) && IsBehind(last.Value(), value)) {
            Report(counter.label + std::to_string(value),
                   {counter.table, 0, counter.column, std::to_string(value), Number(last)});
        }
    }

    // Behind the last row there may be documents that leave none: the cancellation of the last
    // receipt, reprints, reversals, which take a GNF each.
    void CheckCoo()
    {
        const std::int64_t last = m_lookedAt.ultimoCoo.Value();
        if (!IsBehind(last, m_anchor.coo)) {
            return;
        }
        const std::int64_t cancelled =
            Read("SELECT count(*) AS number FROM cupom_fiscal WHERE rowid = (SELECT max(rowid) FROM"
                 " cupom_fiscal) AND id_cancelado = 'S' AND cont_coo = " +
                 std::to_string(last))
                .Value();
        leitura::Query reprinted(m_database, "SELECT count(*) AS number FROM fita_detalhe WHERE"
                                             " data_hora_emissao >= ?1");
        const std::int64_t reprints = reprinted.With(m_lookedAt.ultimaHora).Next()
                                          ? reprinted.ReadInteger("number").Value()
                                          : 0;
        const std::int64_t gnf = Last("outros_documentos", "cont_gnf").Value();
        const std::int64_t reversals =
            IsBehind(gnf, m_anchor.gnf) ? leitura::Steps(gnf, m_anchor.gnf) : 0;
        const std::int64_t missing = leitura::Steps(last, m_anchor.coo);
        if (missing > cancelled + reprints + reversals || reversals > missing) {
            Report("COO " + std::to_string(m_anchor.coo),
                   {"", 0, "cont_coo", std::to_string(m_anchor.coo), Number(m_lookedAt.ultimoCoo)});
        }
    }

    // Of the Z that the memory closed last, which has later ones behind it where the memory is
    // older.
    void CheckGt()
    {
        leitura::Rows<leitura::ReducaoZRow> rows(m_database, leitura::ReducaoZTable(),
                                                 "WHERE cont_crz = ?1 ORDER BY rowid DESC LIMIT 1");
        leitura::ReducaoZRow z;
        if (rows.With(m_anchor.crz).Next(z) && !IsSame(z.valorGt, m_anchor.gtUltimaReducao)) {
            Report(Crz(z.crz) + " GT", {"reducao_z", z.rowid, "valor_gt",
                                        Money(m_anchor.gtUltimaReducao), Money(z.valorGt)});
        }
    }

    // Whether the rows go on behind the memory.
    bool IsOlder() const
    {
        return m_anchor.coo == 0 ? !m_lookedAt.IsEmpty()
                                 : leitura::ComesBefore(m_anchor.coo, m_lookedAt.ultimoCoo.Value());
    }

    void CheckText(const char* table, const char* column, std::int64_t row,
                   const leitura::Text& found, const std::string& due)
    {
        if (found.Value() != due) {
            const bool leftOut = found.State() == leitura::CellState::LEFT_OUT;
            Report(std::string(table) + '.' + column,
                   {table, row, column, due, leftOut ? "NULL" : found.Shown()});
        }
    }

    void CheckRegistro()
    {
        leitura::Rows<leitura::DadosEcfRow> ecfs(m_database, leitura::DadosEcfTable(),
                                                 "ORDER BY rowid LIMIT 1");
        leitura::DadosEcfRow ecf;
        if (ecfs.Next(ecf)) {
            CheckText("dados_ecf", "num_serie", ecf.rowid, ecf.numSerie, m_anchor.numSerie);
        }
        leitura::Rows<leitura::DadosUsuarioRow> usuarios(m_database, leitura::DadosUsuarioTable(),
                                                         "ORDER BY rowid LIMIT 1");
        leitura::DadosUsuarioRow usuario;
        if (!usuarios.Next(usuario)) {
            return;
        }
        CheckText("dados_usuario", "cnpj", usuario.rowid, usuario.cnpj, m_anchor.cnpj);
        CheckText("dados_usuario", "razao_social", usuario.rowid, usuario.razaoSocial,
                  m_anchor.razaoSocial);
        if (!IsSame(usuario.valorGt, m_anchor.gtInicial)) {
            Report("dados_usuario.valor_gt", {"dados_usuario", usuario.rowid, "valor_gt",
                                              Money(m_anchor.gtInicial), Money(usuario.valorGt)});
        }
    }

    const leitura::DatabaseReading& m_database;
    const LookedAt& m_lookedAt;
    const MemoriaAnchor& m_anchor;
    const FindingSink& m_sink;
    std::int64_t m_findings = 0;
};

} // namespace

std::int64_t CheckMemoriaAnchor(const leitura::DatabaseReading& database, const LookedAt& lookedAt,
                                const MemoriaAnchor& anchor, const FindingSink& sink)
{
    return AncoraDaMemoria(database, lookedAt, anchor, sink).Check();
}

} // namespace bancada::conferencia
