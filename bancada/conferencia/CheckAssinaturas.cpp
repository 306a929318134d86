// The signatures of the closed fiscal receipts, where the bench made them, and what the instants of
// the closings tell of the days.
#include "bancada/Messages.h"
#include "bancada/conferencia/Assinatura.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Gaps.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace bancada::conferencia
{
namespace
{

using leitura::CupomFiscalRow;

// A receipt begun on a fiscal day is closed no later than so many seconds behind its opening: the
// day is overdue two hours into the next.
constexpr std::int64_t LONGEST = 26 * 60 * 60;
// So many signatures none of which can be recomputed were made by another register.
constexpr std::size_t ENOUGH = 3;

class Assinaturas
{
  public:
    explicit Assinaturas(CheckContext& context)
        : m_context(context), m_itens(context.Database(), leitura::ItemCupomFiscalTable(),
                                      "WHERE cont_coo = ?1 ORDER BY seq_item"),
          m_outros(context.Database(), "SELECT min(data_hora_inicio_emissao) AS begin FROM"
                                       " outros_documentos WHERE cont_coo = ?1")
    {
    }

    void Check()
    {
        const bool recognised = Recognise();
        ForEachCupom([this, recognised](const CupomFiscalRow& cupom, std::int64_t opening,
                                        std::int64_t until) {
            SignatureSearch search;
            if (recognised && IsSearched(cupom)) {
                search = Search(cupom, until, Reach::FAR);
                Report(cupom, search.result);
            }
            SecondsRange& emissao = m_context.jornadas[JornadaNumber(cupom.crz)].emissao;
            if (search.result == Signed::FOUND) {
                emissao.Add(search.fechamento - opening, search.fechamento - opening);
            } else {
                emissao.Add(0, until - opening);
            }
            return true;
        });
        if (!recognised) {
            m_context.findings.Report(
                FindingKind::ASSINATURA_NAO_CONFERIDA, Tr("signatures"),
                Tr("none of them can be recomputed: another register made them"), {});
        }
    }

  private:
    // The last instant at which the receipt can have been closed: the beginning of the next
    // document, unless the clock was set back between them.
    std::int64_t Until(const CupomFiscalRow& cupom, std::int64_t opening,
                       const CupomFiscalRow* next)
    {
        std::int64_t until = opening + LONGEST;
        const auto bound = [&](std::int64_t coo, const std::string& begin) {
            const std::optional<std::int64_t> end = SecondsOf(begin);
            if (end && *end >= opening && !m_context.Relogio().HasBetween(cupom.coo.Value(), coo)) {
                until = std::min(until, *end);
            }
        };
        if (next != nullptr) {
            bound(next->coo.Value(), next->dataHoraEmissao.Value());
        }
        if (m_context.Repeated().IsSingle(cupom.coo)) {
            const std::int64_t following = Following(cupom.coo.Value(), 1);
            m_outros.With(following).Next();
            bound(following, m_outros.ReadText("begin").Value());
            m_outros.End();
        }
        return until;
    }

    // Calls with each receipt, its opening and the last instant at which it can have been closed,
    // as long as `each` answers true.
    template <typename Each>
    void ForEachCupom(const Each& each)
    {
        leitura::Rows<CupomFiscalRow> rows(m_context.Database(), leitura::CupomFiscalTable(),
                                           "ORDER BY rowid");
        CupomFiscalRow cupom;
        CupomFiscalRow next;
        bool more = rows.Next(cupom);
        while (more) {
            more = rows.Next(next);
            const std::int64_t opening = SecondsOf(cupom.dataHoraEmissao.Value()).value_or(0);
            if (!each(cupom, opening, Until(cupom, opening, more ? &next : nullptr))) {
                return;
            }
            cupom = next;
        }
    }

    bool IsSearched(const CupomFiscalRow& cupom) const
    {
        return cupom.assinaturaDocumento.Value() != " " && m_context.Repeated().IsSingle(cupom.coo);
    }

    // Whether the signatures are the bench's: one of them is found, or there are too few to tell.
    // Those of another register are told by the first, so that the others cost no long search.
    bool Recognise()
    {
        bool found = false;
        std::size_t missed = 0;
        ForEachCupom([&](const CupomFiscalRow& cupom, std::int64_t, std::int64_t until) {
            if (IsSearched(cupom) && !IsLost(cupom)) {
                const SignatureSearch search =
                    Search(cupom, until, missed < ENOUGH ? Reach::FAR : Reach::NEAR);
                found = search.result == Signed::FOUND;
                missed += search.result == Signed::NOT_FOUND ? 1 : 0;
            }
            return !found;
        });
        return found || missed < ENOUGH;
    }

    SignatureSearch Search(const CupomFiscalRow& cupom, std::int64_t until, Reach reach)
    {
        SignedCupom documento;
        documento.cupom = cupom;
        documento.prefix = m_context.chaves.OwnPrefixOf(cupom.chaveCupom.Value());
        leitura::ItemCupomFiscalRow item;
        m_itens.With(cupom.coo.Value());
        while (m_itens.Next(item)) {
            documento.itens.push_back(item);
        }
        documento.pagamentos = m_context.ReadPagamentos(cupom.coo.Value());
        return SearchSignature(documento, until, reach);
    }

    void Report(const CupomFiscalRow& cupom, Signed result)
    {
        if (result == Signed::FOUND) {
            return;
        }
        if (IsLost(cupom)) {
            Note(cupom, Tr("a row of the receipt was lost"));
        } else if (result == Signed::UNDECIDED) {
            Note(cupom, Tr("the rows do not tell all that was signed"));
        } else {
            m_context.findings.Report(FindingKind::CUPOM_ASSINATURA, Coo(cupom.coo),
                                      Tr("the rows of the receipt are not what was signed"),
                                      DocumentOf(cupom.coo.Value()),
                                      {"cupom_fiscal", cupom.rowid, "assinatura_documento", "",
                                       cupom.assinaturaDocumento.Shown()});
        }
    }

    bool IsLost(const CupomFiscalRow& cupom) const
    {
        const LossIndex* losses = m_context.Losses();
        if (losses == nullptr) {
            return false;
        }
        const std::string day = cupom.dataHoraEmissao.Value().substr(0, 10);
        const std::vector<LostCommand>& lost = losses->All().lost;
        return losses->HasCoo(cupom.coo.Value()) ||
               std::any_of(lost.begin(), lost.end(), [&day](const LostCommand& command) {
                   return command.time.substr(0, day.size()) == day;
               });
    }

    void Note(const CupomFiscalRow& cupom, const std::string& why)
    {
        m_context.findings.ReportExplained(
            FindingKind::ASSINATURA_NAO_CONFERIDA, Coo(cupom.coo), why, false,
            DocumentOf(cupom.coo.Value()),
            {"cupom_fiscal", cupom.rowid, "assinatura_documento", "", ""});
    }

    CheckContext& m_context;
    leitura::Rows<leitura::ItemCupomFiscalRow> m_itens;
    leitura::Query m_outros;
};

} // namespace

void CheckAssinaturas(CheckContext& context)
{
    if (context.chaves.AreKnown()) {
        Assinaturas(context).Check();
    }
}

} // namespace bancada::conferencia
