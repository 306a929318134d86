// Document rows by themselves and against the rows of what they document: a Z reduction, a
// non-fiscal receipt.
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Gaps.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Tables.h"

#include <map>

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
          m_sameCoo(context.Database(), "SELECT count(*) AS row_count FROM outros_documentos WHERE"
                                        " cont_coo = ?1")
    {
        leitura::Rows<ReducaoZRow> rows(context.Database(), leitura::ReducaoZTable(),
                                        "ORDER BY rowid");
        ReducaoZRow z;
        while (rows.Next(z)) {
            m_reducoes.emplace(z.coo.Value(),
                               Said{Crz(z.crz), z.dataHoraEmissao.Value(), z.gnf, z.crz});
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
        const std::string& tipo = row.tipoDocumento.Value();
        const std::string& begin = row.dataHoraInicioEmissao.Value();
        const std::string& end = row.dataHoraFimEmissao.Value();
        const bool lasts = tipo == "CN" || tipo == "CC" || tipo == "RG";
        if ((lasts ? end < begin : end != begin) && IsSingle(row)) {
            Report(row, FindingKind::ORDEM, "data_hora_fim_emissao", begin, end,
                   "begins " + begin + " and ends " + end);
        }
    }

    void CheckReducao(const OutroDocumentoRow& row)
    {
        const auto [begin, end] = m_reducoes.equal_range(row.coo.Value());
        if (begin == end) {
            return; // told as a document without its Z
        }
        // A number that came round again names several.
        for (auto z = begin; z != end; ++z) {
            if (z->second.crz.Value() == row.crz.Value() || std::next(z) == end) {
                Compare(row, z->second, row.crz.Value() == z->second.crz.Value());
                return;
            }
        }
    }

    void CheckCupom(const OutroDocumentoRow& row)
    {
        m_cupons.With(row.coo.Value());
        CupomNfRow cupom;
        std::optional<Said> said;
        while (m_cupons.Next(cupom)) {
            said = Said{"its receipt", cupom.dataHoraEmissao.Value(), cupom.gnf, cupom.crz};
            if (said->hora == row.dataHoraInicioEmissao.Value()) {
                break;
            }
        }
        m_cupons.End();
        if (said) {
            // A receipt is filed under the Z to come, its document under the one made last, and
            // under 1 before the first.
            const std::int64_t next = Following(row.crz.Value(), 1);
            const std::int64_t crz = Following(said->crz.Value(), 0);
            Compare(row, *said, crz == next || (crz == 1 && row.crz.Value() == 1));
        }
    }

    void Compare(const OutroDocumentoRow& row, const Said& said, bool sameCrz)
    {
        const std::string& hora = row.dataHoraInicioEmissao.Value();
        if (hora != said.hora) {
            Report(row, FindingKind::DOCUMENTO_DIFERE, "data_hora_inicio_emissao", said.hora, hora,
                   "begins " + hora + ", " + said.where + " of " + said.hora);
        }
        if (row.gnf.Value() != said.gnf.Value() || row.gnf.IsKnown() != said.gnf.IsKnown()) {
            Report(row, FindingKind::DOCUMENTO_DIFERE, "cont_gnf", Number(said.gnf),
                   Number(row.gnf),
                   "GNF " + Number(row.gnf) + ", " + said.where + " has " + Number(said.gnf));
        }
        if (!sameCrz) {
            Report(row, FindingKind::DOCUMENTO_DIFERE, "cont_crz", Number(said.crz),
                   Number(row.crz),
                   "filed under " + Crz(row.crz) + ", " + said.where + " under " + Crz(said.crz));
        }
    }

    CheckContext& m_context;
    leitura::Rows<CupomNfRow> m_cupons;
    leitura::Query m_sameCoo;
    // By their documents' numbers.
    std::multimap<std::int64_t, Said> m_reducoes;
};

} // namespace

void CheckOutrosDocumentos(CheckContext& context)
{
    OutrosDocumentos(context).Check();
}

} // namespace bancada::conferencia
