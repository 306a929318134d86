// Document rows by themselves and against the rows of what they document: a Z reduction, a
// non-fiscal receipt.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Gaps.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Tables.h"

#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

namespace bancada::conferencia
{
namespace
{

using leitura::CupomNfRow;
using leitura::OutroDocumentoRow;
using leitura::ReducaoZRow;

// What another row says of a document.
struct Said {
    std::string where; // "CRZ 9", "its receipt"
    std::string hora;
    leitura::Integer gnf;
    leitura::Integer crz;
};

class OutrosDocumentos
{
  public:
    explicit OutrosDocumentos(CheckContext& context)
        : m_context(context),
          m_cupons(context.Database(), leitura::CupomNfTable(), "WHERE cont_coo = ?1"),
          m_sameCoo(context.Database(), "SELECT count(*) AS row_count FROM (SELECT 1 FROM"
                                        " outros_documentos WHERE cont_coo = ?1 LIMIT 2)")
    {
        leitura::Rows<ReducaoZRow> rows(context.Database(), leitura::ReducaoZTable(),
                                        "ORDER BY rowid");
        ReducaoZRow z;
        while (rows.Next(z)) {
            const Said said{Crz(z.crz), z.dataHoraEmissao.Value(), z.gnf, z.crz};
            m_reducoes.emplace(std::pair(z.coo.Value(), z.crz.Value()), said);
            m_lastReducoes.insert_or_assign(z.coo.Value(), said);
        }
    }

    void Check()
    {
        leitura::Rows<OutroDocumentoRow> rows(m_context.Database(), leitura::OutroDocumentoTable(),
                                              "ORDER BY rowid");
        OutroDocumentoRow row;
        while (rows.Next(row)) {
            CheckEnd(row);
            if (row.tipoDocumento.Value() == "RZ") {
                CheckReducao(row);
            } else if (row.tipoDocumento.Value() == "CN") {
                CheckCupom(row);
            }
        }
    }

  private:
    void Report(const OutroDocumentoRow& row, FindingKind kind, const char* column,
                const std::string& expected, const std::string& found, const std::string& text)
    {
        m_context.findings.ReportExplained(
            kind, Coo(row.coo), text, false, DocumentOf(row.coo.Value()),
            {"outros_documentos", row.rowid, column, expected, found});
    }

    // The end of a receipt, a voucher or a report is written to every row of its number.
    bool IsSingle(const OutroDocumentoRow& row)
    {
        m_sameCoo.With(row.coo.Value()).Next();
        const bool single = m_sameCoo.ReadInteger("row_count").Value() == 1;
        m_sameCoo.End();
        return single;
    }

    void CheckEnd(const OutroDocumentoRow& row)
    {
        const std::string& begin = row.dataHoraInicioEmissao.Value();
        const std::string& end = row.dataHoraFimEmissao.Value();
        if (end < begin && IsSingle(row)) {
            Report(row, FindingKind::ORDEM, "data_hora_fim_emissao", begin, end,
                   Tr("begins %1 and ends %2", {begin, end}));
        }
    }

    void CheckReducao(const OutroDocumentoRow& row)
    {
        const auto last = m_lastReducoes.find(row.coo.Value());
        if (last == m_lastReducoes.end()) {
            return; // told as a document without its Z
        }
        // A number that came round again names several.
        const auto same = m_reducoes.find({row.coo.Value(), row.crz.Value()});
        Compare(row, same != m_reducoes.end() ? same->second : last->second,
                same != m_reducoes.end());
    }

    void CheckCupom(const OutroDocumentoRow& row)
    {
        const Said* said = SaidByCupom(row.coo.Value(), row.dataHoraInicioEmissao.Value());
        if (said != nullptr) {
            // A receipt is filed under the Z to come, its document under the one made last, and
            // under 1 before the first.
            const std::int64_t next = Following(row.crz.Value(), 1);
            const std::int64_t crz = Following(said->crz.Value(), 0);
            Compare(row, *said, crz == next || (crz == 1 && row.crz.Value() == 1));
        }
    }

    // The first receipt of the number that began at the hour, or else the number's last; null where
    // it has none. Stays valid until the next call.
    const Said* SaidByCupom(std::int64_t coo, const std::string& hora)
    {
        const auto remembered = m_remembered.find(coo);
        Cupons& cupons = remembered != m_remembered.end() ? remembered->second : m_read;
        if (remembered == m_remembered.end()) {
            Read(coo, m_read);
        }
        const auto same = cupons.byHora.find(hora);
        if (same != cupons.byHora.end()) {
            return &same->second;
        }
        return cupons.last ? &*cupons.last : nullptr;
    }

    struct Cupons {
        std::unordered_map<std::string, Said> byHora;
        std::optional<Said> last;
    };

    // Those of a number that came many times are remembered: it is asked for as often.
    void Read(std::int64_t coo, Cupons& cupons)
    {
        constexpr int MANY = 16;
        cupons = {};
        m_cupons.With(coo);
        CupomNfRow cupom;
        int read = 0;
        for (; m_cupons.Next(cupom); ++read) {
            cupons.last =
                Said{Tr("its receipt"), cupom.dataHoraEmissao.Value(), cupom.gnf, cupom.crz};
            cupons.byHora.emplace(cupons.last->hora, *cupons.last);
        }
        m_cupons.End();
        if (read > MANY) {
            m_remembered.emplace(coo, cupons);
        }
    }

    void Compare(const OutroDocumentoRow& row, const Said& said, bool sameCrz)
    {
        const std::string& hora = row.dataHoraInicioEmissao.Value();
        if (hora != said.hora) {
            Report(row, FindingKind::DOCUMENTO_DIFERE, "data_hora_inicio_emissao", said.hora, hora,
                   Tr("begins %1, %2 of %3", {hora, said.where, said.hora}));
        }
        if (row.gnf.Value() != said.gnf.Value() || row.gnf.IsKnown() != said.gnf.IsKnown()) {
            Report(row, FindingKind::DOCUMENTO_DIFERE, "cont_gnf", Number(said.gnf),
                   Number(row.gnf),
                   Tr("GNF %1, %2 has %3", {Number(row.gnf), said.where, Number(said.gnf)}));
        }
        if (!sameCrz) {
            Report(row, FindingKind::DOCUMENTO_DIFERE, "cont_crz", Number(said.crz),
                   Number(row.crz),
                   Tr("filed under %1, %2 under %3", {Crz(row.crz), said.where, Crz(said.crz)}));
        }
    }

    CheckContext& m_context;
    leitura::Rows<CupomNfRow> m_cupons;
    leitura::Query m_sameCoo;
    Cupons m_read;
    std::unordered_map<std::int64_t, Cupons> m_remembered;
    // By their documents' numbers and their own; the last of each document's number.
    std::map<std::pair<std::int64_t, std::int64_t>, Said> m_reducoes;
    std::unordered_map<std::int64_t, Said> m_lastReducoes;
};

} // namespace

void CheckOutrosDocumentos(CheckContext& context)
{
    OutrosDocumentos(context).Check();
}

} // namespace bancada::conferencia
