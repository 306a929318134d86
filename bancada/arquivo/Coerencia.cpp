#include "bancada/arquivo/Coerencia.h"

#include "bancada/Messages.h"
#include "bancada/arquivo/Importador.h"
#include "bancada/arquivo/Instante.h"
#include "bancada/arquivo/Reinicios.h"

#include <initializer_list>

namespace bancada::arquivo
{
namespace
{

constexpr std::int64_t SECONDS_A_DAY = 86400;
constexpr const char* WHOLE = TrLater("an item is cancelled whole or not at all");
constexpr const char* OF_THE_DOCUMENTS = TrLater("not what the documents come to");

// Lists the field where it does not hold.
class Holding
{
  public:
    Holding(Importador& importing, const Record& record) : m_importing(importing), m_record(record)
    {
    }

    void That(bool holds, const char* field, const char* reason) const
    {
        if (!holds) {
            m_importing.naoDito.AddField(std::string(m_record.Type()), field, Tr(reason));
        }
    }
    void Number(const char* field, std::int64_t due, const char* reason = OF_THE_DOCUMENTS) const
    {
        That(m_record.Integer(field) == due, field, reason);
    }
    void OneOf(const char* field, std::initializer_list<const char*> values) const
    {
        const std::string text = m_record.Text(field);
        for (const char* value : values) {
            if (text == value) {
                return;
            }
        }
        That(false, field, TrLater("no value that the register gives it"));
    }
    // The date of an instant.
    void Date(const char* field, std::int64_t instant) const
    {
        That(SecondsOf(m_record.Raw(field)) == instant - instant % SECONDS_A_DAY, field,
             TrLater("not when the tape comes to it"));
    }

  private:
    Importador& m_importing;
    const Record& m_record;
};

const Record* FirstOf(Importador& importing, const char* type)
{
    const std::vector<Record>& all = importing.arquivo.Small(type);
    if (all.size() > 1) {
        importing.naoDito.AddMissing(type, Tr("records behind the first"),
                                     static_cast<std::int64_t>(all.size()) - 1);
    }
    return all.empty() ? nullptr : &all.front();
}

void HoldIdentificacao(Importador& importing, const Record& ecf, const Record* usuario)
{
    const Holding holding(importing, ecf);
    holding.That(ecf.Text("letra_adicional").empty(), "letra_adicional",
                 TrLater("the register has no additional fiscal memory"));
    holding.That(ecf.Text("versao_ato") == VERSAO_ATO, "versao_ato",
                 TrLater("another version of the act than that of these layouts"));
    if (usuario != nullptr) {
        holding.That(ecf.Raw("cnpj") == usuario->Raw("cnpj"), "cnpj",
                     TrLater("not the owner's of E02"));
    }
    const Record* first = nullptr;
    const Record* last = nullptr;
    for (const std::int32_t coo : importing.arquivo.Documentos()) {
        const auto reducao = importing.arquivo.Reducoes().find(coo);
        if (reducao != importing.arquivo.Reducoes().end()) {
            first = first == nullptr ? &reducao->second : first;
            last = &reducao->second;
        }
    }
    if (first != nullptr) {
        constexpr const char* RANGE = TrLater("not those of the first and the last Z reduction");
        holding.Number("crz_inicial", first->Integer("crz"), RANGE);
        holding.Number("crz_final", last->Integer("crz"), RANGE);
        holding.That(ecf.Raw("data_inicial") == first->Raw("data_movimento"), "data_inicial",
                     RANGE);
        holding.That(ecf.Raw("data_final") == last->Raw("data_movimento"), "data_final", RANGE);
    }
}

std::string OrdemDue(const CupomLido& cupom)
{
    return cupom.desconto != 0 ? "D" : cupom.acrescimo != 0 ? "A" : "";
}

void HoldTotais(Importador& importing, const CupomLido& cupom)
{
    const Holding holding(importing, cupom.record);
    holding.OneOf("cancelado", {"S", "N"});
    holding.OneOf("tipo_desconto", {"V", "P"});
    holding.OneOf("tipo_acrescimo", {"V", "P"});
    holding.That(cupom.record.Text("tipo_acrescimo") != "P" || cupom.acrescimo != 0 ||
                     cupom.acrescimoCancelado != 0,
                 "tipo_acrescimo", TrLater("the percentage of no surcharge"));
    holding.That(!cupom.HasTotals() ||
                     cupom.total == cupom.subtotal - cupom.desconto + cupom.acrescimo,
                 "total", TrLater("not the subtotal with its adjustment"));
    holding.That(cupom.record.Text("ordem") == OrdemDue(cupom), "ordem",
                 TrLater("not that of the adjustment"));
}

void HoldItens(Importador& importing, const CupomLido& cupom, const char* counter)
{
    std::int64_t numero = 0;
    for (const ItemLido& item : cupom.itens) {
        const Holding holding(importing, item.record);
        holding.Number(counter, cupom.record.Integer(counter), TrLater("not its receipt's"));
        holding.Number("item", ++numero, TrLater("not one more than the item before it"));
        if (cupom.cancelado) {
            holding.OneOf("cancelado", {"S"});
        } else if (item.record.Text("cancelado") == "P") {
            holding.That(false, "cancelado", WHOLE);
        } else {
            holding.OneOf("cancelado", {"S", "N"});
        }
        if (!cupom.IsFiscal()) {
            holding.That(item.liquido == item.bruto + item.acrescimo - item.desconto, "total",
                         TrLater("not the amount with its adjustments"));
            continue;
        }
        holding.OneOf("arredonda_trunca", {"A", "T"});
        for (const char* field : {"quantidade_cancelada", "valor_cancelado"}) {
            holding.Number(field, 0, WHOLE);
        }
    }
}

void HoldPagamentos(Importador& importing, const CupomLido& cupom)
{
    const bool fiscal = cupom.IsFiscal();
    for (const Record& pagamento : cupom.pagamentos) {
        const Holding holding(importing, pagamento);
        holding.Number("ccf", fiscal ? cupom.record.Integer("ccf") : 0,
                       TrLater("not its receipt's"));
        holding.Number("gnf", fiscal ? 0 : cupom.record.Integer("gnf"),
                       TrLater("not its receipt's"));
        const std::int64_t valor = pagamento.Integer("valor");
        const std::int64_t estornado = pagamento.Integer("valor_estornado");
        if (cupom.cancelado) {
            holding.OneOf("estornado", {"S"});
            holding.Number("valor_estornado", valor,
                           TrLater("of a cancelled receipt all is reversed"));
            continue;
        }
        const bool none = estornado == 0 && pagamento.Text("estornado") == "N";
        const bool whole = estornado >= valor && pagamento.Text("estornado") == "S";
        const bool part = estornado > 0 && estornado < valor && pagamento.Text("estornado") == "P";
        holding.That(none || whole || part, "estornado, valor_estornado",
                     TrLater("not of the amount that was paid"));
    }
}

} // namespace

void HoldCadastro(Importador& importing)
{
    const Record* ecf = FirstOf(importing, "E01");
    const Record* usuario = FirstOf(importing, "E02");
    const Record* contadores = FirstOf(importing, "E11");
    if (ecf != nullptr) {
        HoldIdentificacao(importing, *ecf, usuario);
    }
    if (usuario != nullptr) {
        const Holding holding(importing, *usuario);
        holding.Number("cro", importing.contadores["cro"],
                       TrLater("the owner is programmed under the counter of the first document"));
        if (contadores != nullptr) {
            holding.Number("gt", contadores->Integer("gt"), TrLater("not that of E11"));
        }
    }
}

void HoldIntervencao(Importador& importing, const Record& intervencao, std::int64_t em)
{
    const Holding holding(importing, intervencao);
    holding.OneOf("perda_dados", {"S", "N"});
    if (intervencao.Text("perda_dados") != "S") {
        holding.Number("cro", importing.contadores["cro"]);
        holding.That(TimeOf(intervencao) == em, "data, hora",
                     TrLater("not when the tape comes to it"));
    }
}

void HoldFita(Importador& importing, const Record& fita, std::int64_t cfd, std::int64_t em)
{
    const Holding holding(importing, fita);
    holding.Number("cfd", cfd);
    holding.Date("data", em);
    const std::vector<Record>& usuarios = importing.arquivo.Small("E02");
    holding.That(!usuarios.empty() && fita.Raw("cnpj") == usuarios.front().Raw("cnpj"), "cnpj",
                 TrLater("not the owner's of E02"));
}

void HoldContadores(Importador& importing)
{
    const std::vector<Record>& contadores = importing.arquivo.Small("E11");
    if (contadores.empty()) {
        return;
    }
    const Holding holding(importing, contadores.front());
    for (const char* name : {"crz", "cro", "gnf", "ccf", "grg", "cfd"}) {
        holding.Number(name, importing.contadores[name]);
    }
}

void HoldReducao(Importador& importing, const Record& reducao)
{
    const Holding holding(importing, reducao);
    holding.Number("crz", importing.contadores["crz"]);
    holding.Number("cro", importing.contadores["cro"]);
    if (importing.movimento != 0) {
        holding.Date("data_movimento", importing.movimento);
    }
    const std::optional<bool>& issqn = importing.fatos.descontoIssqn;
    const char* due = !issqn ? "" : *issqn ? "S" : "N";
    holding.That(reducao.Text("desconto_issqn") == due, "desconto_issqn",
                 TrLater("not that of the other Z reductions"));
}

void HoldOutro(Importador& importing, const Record& record, const OutroNumeros& due)
{
    const Holding holding(importing, record);
    holding.That(record.Text("simbolo") == due.simbolo, "simbolo",
                 TrLater("not of the document that has the number"));
    holding.Number("gnf", due.gnf);
    holding.Number("grg", due.grg);
    holding.Number("cdc", due.cdc % CDC_ROOM);
    holding.Number("crz", due.crz);
}

void HoldCupom(Importador& importing, const CupomLido& cupom, std::int64_t em)
{
    const char* counter = cupom.IsFiscal() ? "ccf" : "gnf";
    const Holding holding(importing, cupom.record);
    holding.Number(counter, importing.contadores[counter]);
    holding.Date("data_abertura", em);
    HoldTotais(importing, cupom);
    HoldItens(importing, cupom, counter);
    HoldPagamentos(importing, cupom);
}

void HoldCaixa(Importador& importing, const CupomLido& cupom, bool fundoTroco)
{
    const ItemLido& item = cupom.itens.front();
    const bool plain = cupom.itens.size() == 1 && !cupom.IsAdjusted() && !cupom.cancelado &&
                       cupom.acrescimoCancelado == 0 && item.acrescimo == 0 && item.desconto == 0 &&
                       !item.cancelado && item.record.Integer("acrescimo_cancelado") == 0;
    const bool payments = cupom.pagamentos.empty() || (fundoTroco && cupom.pagamentos.size() == 1);
    const Holding holding(importing, cupom.record);
    holding.That(plain && cupom.subtotal == item.bruto, "subtotal",
                 TrLater("a float or a withdrawal is one item without adjustments"));
    holding.That(cupom.record.Text("nome").empty() && cupom.record.Integer("cpf_cnpj") == 0,
                 "nome, cpf_cnpj", TrLater("a float or a withdrawal has no buyer"));
    for (const Record& pagamento : cupom.pagamentos) {
        Holding(importing, pagamento)
            .That(payments && pagamento.Integer("valor") == item.bruto &&
                      pagamento.Text("estornado") == "N",
                  "valor", TrLater("a float has one payment, of its amount, a withdrawal none"));
    }
}

} // namespace bancada::arquivo
