// The commands of a non-fiscal receipt, told by its records.
#include "bancada/Messages.h"
#include "bancada/arquivo/ImportaCupom.h"

#include "bancada/arquivo/Coerencia.h"
#include "bancada/arquivo/Instante.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

constexpr std::int64_t SECONDS_A_DAY = 86400;

} // namespace

void WriteCupomNf(Importador& importing, std::int64_t coo, std::int64_t end)
{
    const CupomLido cupom =
        Interpretacoes(ReadCupomNf(importing.arquivo, coo), importing.livres.numeros > 0).front();
    const std::int64_t abertura = SecondsOf(cupom.record.Raw("data_abertura"));
    importing.Count("gnf");

    const Programacao& programacao = importing.programacao;
    const std::int64_t first =
        cupom.itens.empty() ? 0 : programacao.Totalizador(cupom.itens.front().record.Text("nome"));
    if (first == 1 || first == 2) {
        importing.pendentes.clear();
        importing.comprovantes.Clear();
        const std::int64_t em = end == 0 ? abertura : std::min(end, abertura + SECONDS_A_DAY - 1);
        const std::int64_t began = std::max(importing.tape.Now(), em);
        OpenMovimento(importing, began);
        HoldCupom(importing, cupom, began);
        HoldCaixa(importing, cupom, first == 1);
        TapeLine caixa = importing.tape.At("sangria", began, end);
        caixa.Text("operacao", first == 1 ? "fundo_troco" : "sangria")
            .Money("valor", cupom.itens.front().bruto);
        if (first == 1 && !cupom.pagamentos.empty()) {
            const std::string meio = cupom.pagamentos.front().Text("meio");
            importing.fatos.meioFundoTroco = meio;
            caixa.Number("meio", programacao.Meio(meio));
        }
        return;
    }
    if (!cupom.somado) {
        importing.naoDito.AddField("E19", "subtotal", Tr("not what the items come to"));
    }
    // The document of one that was not closed ends with its opening.
    HoldCupom(importing, cupom,
              WriteAbertura(importing, cupom, "abre_cnf",
                            cupom.WasClosed() || end == 0 ? abertura : end));
    std::int64_t numero = 0;
    for (const ItemLido& item : cupom.itens) {
        const std::int64_t totalizador = programacao.Totalizador(item.record.Text("nome"));
        if (totalizador < 3) {
            importing.Note("E20", Tr("items of a totalizer that takes none"));
        }
        if (totalizador == 0) {
            continue; // no totalizer has its name: a tape cannot say it
        }
        if (numero == MAX_ITENS) {
            importing.Note("E20", Tr("items behind the last number that a receipt has for them"));
            break;
        }
        ++numero;
        importing.tape.Then("vende_item_nf")
            .Number("totalizador", totalizador)
            .Money("valor", item.bruto);
        WriteAjustesItem(importing, item, numero);
    }
    WriteAjustesSubtotal(importing, cupom);
    WritePagamentos(importing, cupom);
    const std::int64_t em = std::max(importing.tape.Now(), end);
    if (cupom.cancelado && !cupom.WasClosed()) {
        importing.tape.At("cancela_cupom_em_emissao", importing.tape.Now());
    } else if (cupom.WasClosed()) {
        importing.tape.At("fecha_cupom_nf", em);
    }
}

} // namespace bancada::arquivo
