// The commands of a fiscal receipt, told by its records.
#include "bancada/arquivo/ImportaCupom.h"

#include "bancada/Messages.h"
#include "bancada/arquivo/Coerencia.h"
#include "bancada/arquivo/Instante.h"

namespace bancada::arquivo
{
namespace
{

Tributacao TributacaoOf(const Importador& importing, const CupomLido& cupom, const ItemLido& item)
{
    return TributacaoOf(importing.arquivo, importing.programacao, importing.crzDoDia, cupom,
                        item.record.Text("totalizador"));
}

// The rates as the items were sold at, programmed anew where they are others.
void WriteAliquotas(Importador& importing, const CupomLido& cupom)
{
    for (const ItemLido& item : cupom.itens) {
        const Tributacao tributacao = TributacaoOf(importing, cupom, item);
        if (!tributacao.taxa) {
            continue;
        }
        std::int64_t& present =
            importing.aliquotas[tributacao.codigo + std::to_string(tributacao.indice)];
        if (present != *tributacao.taxa) {
            present = *tributacao.taxa;
            importing.tape.Then("insere_aliquota")
                .Text("tributacao", tributacao.codigo)
                .Number("indice", tributacao.indice)
                .Decimal("percentual", present, 2);
        }
    }
}

// A number of an item with its decimals, of which the register has three at most.
struct Decimal {
    Decimal(Importador& importing, const Record& record, const char* field, const char* count)
        : units(record.Integer(field)), decimals(static_cast<int>(record.Integer(count)))
    {
        constexpr int MAX_DECIMALS = 3;
        if (decimals > MAX_DECIMALS) {
            importing.naoDito.AddField("E15", count, Tr("the register has three decimals at most"));
        }
        for (; decimals > MAX_DECIMALS; --decimals) {
            units /= 10;
        }
    }

    std::int64_t units;
    int decimals;
};

void WriteItem(Importador& importing, const CupomLido& cupom, const ItemLido& item)
{
    const Record& record = item.record;
    const Decimal quantidade(importing, record, "quantidade", "decimais_quantidade");
    const Decimal unitario(importing, record, "valor_unitario", "decimais_valor");
    const Tributacao tributacao = TributacaoOf(importing, cupom, item);
    importing.tape.Then(tributacao.detalhado ? "vende_item_detalhado" : "vende_item")
        .Text("codigo", record.Text("codigo"))
        .Text("descricao", record.Text("descricao"))
        .Decimal("quantidade", quantidade.units, quantidade.decimals)
        .Text("unidade", record.Text("unidade"))
        .Decimal("valor_unitario", unitario.units, unitario.decimals)
        .Text("tributacao", tributacao.codigo)
        .Number("indice", tributacao.indice)
        .Flag("arredonda", record.Text("arredonda_trunca") == "A");
    if (item.bruto + item.record.Integer("acrescimo") - item.record.Integer("desconto") !=
        item.liquido) {
        importing.naoDito.AddField("E15", "total",
                                   Tr("not quantity times price with its adjustments"));
    }
}

void Registra(Importador& importing, std::int64_t cents)
{
    importing.registrado += cents;
    importing.vendaDoDia += cents;
}

} // namespace

void WriteCupom(Importador& importing, std::size_t at)
{
    const CupomLido cupom = importing.dias.Read(at);
    if (!cupom.somado) {
        importing.naoDito.AddField("E14", "subtotal", Tr("not what the items come to"));
    }
    if (!cupom.semCotas) {
        importing.naoDito.AddField(
            "E15", "desconto, acrescimo",
            Tr("the share of the receipt's cannot be told from the item's own"));
    }
    if (cupom.duvidoso) {
        importing.naoDito.AddField("E15", "cancelado, desconto, acrescimo",
                                   Tr("of a receipt that can have been several, of which the day's "
                                      "totals tell none"));
    }
    if (cupom.impostoDuvidoso) {
        importing.naoDito.AddField("E15", "totalizador",
                                   Tr("of either tax, of which the day's totals tell neither"));
    }
    WriteAliquotas(importing, cupom);
    importing.Count("ccf");
    HoldCupom(importing, cupom,
              WriteAbertura(importing, cupom, "abre_cupom",
                            SecondsOf(cupom.record.Raw("data_abertura"))));
    std::int64_t numero = 0;
    for (const ItemLido& item : cupom.itens) {
        if (numero == MAX_ITENS) {
            importing.Note("E15", Tr("items behind the last number that a receipt has for them"));
            break;
        }
        ++numero;
        WriteItem(importing, cupom, item);
        WriteAjustesItem(importing, item, numero);
        Registra(importing,
                 item.bruto + item.acrescimo + item.record.Integer("acrescimo_cancelado"));
    }
    Registra(importing, cupom.acrescimo + cupom.acrescimoCancelado);
    WriteAjustesSubtotal(importing, cupom);
    WritePagamentos(importing, cupom);
    if (cupom.cancelado && !cupom.WasClosed()) {
        importing.tape.Then("cancela_cupom_em_emissao");
        return;
    }
    if (!cupom.WasClosed()) {
        return; // still open
    }
    if (cupom.IsAdjusted() && importing.ratear != cupom.rateado) {
        importing.ratear = cupom.rateado;
        importing.tape.Directive("configura").Flag("ratear_subtotal", cupom.rateado);
    }
    TapeLine fecha = importing.tape.Then("fecha_cupom");
    if (cupom.adicional) {
        fecha.Flag("adicional", true);
    }
    if (cupom.cancelado) {
        importing.pendentes.push_back({SemRegistro::Kind::CANCELAMENTO});
    }
}

} // namespace bancada::arquivo
