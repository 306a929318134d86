#include "bancada/conferencia/FindingKind.h"

#include "bancada/Messages.h"

namespace bancada::conferencia
{
namespace
{

constexpr FindingKindTable KINDS = {{
    // The counters of the documents.
    {FindingKind::COO_AUSENTE, "coo-ausente", Weight::FAULT,
     TrLater("document numbers without a row, and nothing logged that explains them")},
    {FindingKind::COO_REPETIDO, "coo-repetido", Weight::FAULT,
     TrLater("a document number that comes again, or goes back")},
    {FindingKind::CANCELAMENTO_AUSENTE, "cancelamento-ausente", Weight::FAULT,
     TrLater(
         "a receipt marked as cancelled after its closing, though no cancellation took a number")},
    {FindingKind::CCF_AUSENTE, "ccf-ausente", Weight::FAULT,
     TrLater("fiscal receipts without a row")},
    {FindingKind::CCF_REPETIDO, "ccf-repetido", Weight::FAULT,
     TrLater("a fiscal receipt number that comes again, or goes back")},
    {FindingKind::GNF_AUSENTE, "gnf-ausente", Weight::FAULT,
     TrLater("non-fiscal documents without a row that no voucher reversal explains")},
    {FindingKind::GNF_REPETIDO, "gnf-repetido", Weight::FAULT,
     TrLater("a non-fiscal document number that comes again, or goes back")},
    {FindingKind::CRZ_AUSENTE, "crz-ausente", Weight::FAULT, TrLater("Z reductions without a row")},
    {FindingKind::CRZ_REPETIDO, "crz-repetido", Weight::FAULT,
     TrLater("a Z reduction number that comes again, or goes back")},
    {FindingKind::CRZ_DOCUMENTO, "crz-documento", Weight::FAULT,
     TrLater(
         "a document that is not a fiscal receipt, filed under another Z than the last one made")},
    {FindingKind::DOCUMENTO_SEM_LINHA, "documento-sem-linha", Weight::NOTE,
     TrLater("a document that leaves no row on purpose: the reversal of a voucher")},
    {FindingKind::COO_REUTILIZADO, "coo-reutilizado", Weight::NOTE,
     TrLater(
         "a document number that came round and names several documents: what was written for the "
         "last may stand in the rows of all")},
    // Rows whose document is missing.
    {FindingKind::ITEM_SEM_CUPOM, "item-sem-cupom", Weight::FAULT,
     TrLater("items of a fiscal receipt that has no row")},
    {FindingKind::ITEM_NF_SEM_CUPOM, "item-nf-sem-cupom", Weight::FAULT,
     TrLater("items of a non-fiscal receipt that has no row")},
    {FindingKind::PAGAMENTO_SEM_CUPOM, "pagamento-sem-cupom", Weight::FAULT,
     TrLater("payments of a receipt that has no row")},
    {FindingKind::ITEM_AUSENTE, "item-ausente", Weight::FAULT,
     TrLater("item numbers of a receipt without a row")},
    {FindingKind::NF_SEM_DOCUMENTO, "nf-sem-documento", Weight::FAULT,
     TrLater("a non-fiscal receipt without its document row")},
    {FindingKind::DOCUMENTO_SEM_NF, "documento-sem-nf", Weight::FAULT,
     TrLater("a document row of a non-fiscal receipt that has no row")},
    {FindingKind::REDUCAO_SEM_DOCUMENTO, "reducao-sem-documento", Weight::FAULT,
     TrLater("a Z reduction without its document row")},
    {FindingKind::DOCUMENTO_SEM_REDUCAO, "documento-sem-reducao", Weight::FAULT,
     TrLater("a document row of a Z reduction that has no row")},
    {FindingKind::TOTALIZADOR_SEM_REDUCAO, "totalizador-sem-reducao", Weight::FAULT,
     TrLater("totalizers of a Z reduction that has no row")},
    {FindingKind::MEIO_SEM_REDUCAO, "meio-sem-reducao", Weight::FAULT,
     TrLater("payment means of a Z reduction that has no row")},
    {FindingKind::REDUCAO_INCOMPLETA, "reducao-incompleta", Weight::FAULT,
     TrLater("a Z reduction without a row that every Z writes")},
    {FindingKind::CUPOM_SEM_REDUCAO, "cupom-sem-reducao", Weight::FAULT,
     TrLater("receipts of a day that no Z closes, though later ones do")},
    // Rows that come twice.
    {FindingKind::CHAVE_REPETIDA, "chave-repetida", Weight::FAULT,
     TrLater("a key that should name one row and names several")},
    // Receipts.
    {FindingKind::CUPOM_ABERTO, "cupom-aberto", Weight::FAULT,
     TrLater("a fiscal receipt never closed, though documents follow it")},
    {FindingKind::CUPOM_ADICIONAL, "cupom-adicional", Weight::NOTE,
     TrLater(
         "a fiscal receipt paid in full that keeps its opening values: an additional receipt, whose "
         "closing is always rejected")},
    {FindingKind::CUPOM_TOTAL, "cupom-total", Weight::FAULT,
     TrLater("a fiscal receipt whose total is not its subtotal with the subtotal adjustment")},
    {FindingKind::CUPOM_ITENS, "cupom-itens", Weight::FAULT,
     TrLater("a fiscal receipt that its live items do not add up to")},
    {FindingKind::CUPOM_PAGAMENTOS, "cupom-pagamentos", Weight::FAULT,
     TrLater("a fiscal receipt whose payments less the change are not its total")},
    {FindingKind::ITEM_TOTAL, "item-total", Weight::FAULT,
     TrLater("an item whose total is not quantity by price with its adjustments")},
    {FindingKind::PERCENTUAL, "percentual", Weight::FAULT,
     TrLater("a percentage that its kind or its amount does not agree with")},
    {FindingKind::CASAS_DECIMAIS, "casas-decimais", Weight::FAULT,
     TrLater("a quantity or a price with more decimals than the item was sold with")},
    {FindingKind::CUPOM_COLUNAS, "cupom-colunas", Weight::FAULT,
     TrLater("a column of a receipt that holds what its commands never write there")},
    {FindingKind::CUPOM_CHAVE, "cupom-chave", Weight::FAULT,
     TrLater(
         "a search key that is not made of the owner, the register, the day and the document number")},
    {FindingKind::CUPOM_ASSINATURA, "cupom-assinatura", Weight::FAULT,
     TrLater("a fiscal receipt whose rows are not what was signed")},
    {FindingKind::ASSINATURA_NAO_CONFERIDA, "assinatura-nao-conferida", Weight::NOTE,
     TrLater("a signature that the rows are not enough to recompute")},
    {FindingKind::PAGAMENTO_COLUNAS, "pagamento-colunas", Weight::FAULT,
     TrLater("a payment whose columns do not agree with one another or with its receipt")},
    {FindingKind::NF_ABERTO, "nf-aberto", Weight::FAULT,
     TrLater("a non-fiscal receipt never closed, though documents follow it")},
    {FindingKind::NF_TOTAL, "nf-total", Weight::FAULT,
     TrLater("a non-fiscal receipt whose total is not its subtotal with the subtotal adjustment")},
    {FindingKind::NF_ITENS, "nf-itens", Weight::FAULT,
     TrLater("a non-fiscal receipt that its live items do not add up to")},
    {FindingKind::NF_PAGAMENTOS, "nf-pagamentos", Weight::FAULT,
     TrLater("a non-fiscal receipt whose payments do not cover its total")},
    {FindingKind::ITEM_NF_TOTAL, "item-nf-total", Weight::FAULT,
     TrLater("a non-fiscal item whose net value is not its value with its adjustments")},
    // Z reductions.
    {FindingKind::CUPOM_FORA_DO_DIA, "cupom-fora-do-dia", Weight::FAULT,
     TrLater("a receipt issued before the previous Z or after the Z that it is filed under")},
    {FindingKind::Z_TOTALIZADORES, "z-totalizadores", Weight::FAULT,
     TrLater("a sum of the Z that its totalizer rows do not add up to")},
    {FindingKind::Z_VB, "z-vb", Weight::FAULT,
     TrLater("gross sales that are not net totalizers, discounts and cancellations together")},
    {FindingKind::Z_GT, "z-gt", Weight::FAULT,
     TrLater("a grand total that did not grow by the gross sales of the day")},
    {FindingKind::Z_VENDAS, "z-vendas", Weight::FAULT,
     TrLater("tax totalizers that are not the valid fiscal receipts of the day")},
    {FindingKind::Z_NAO_FISCAIS, "z-nao-fiscais", Weight::FAULT,
     TrLater("non-fiscal totalizers that are not the valid non-fiscal receipts of the day")},
    {FindingKind::Z_MEIO, "z-meio", Weight::FAULT,
     TrLater("a payment means that is not the payments of the day")},
    {FindingKind::Z_TROCO, "z-troco", Weight::FAULT,
     TrLater("payment means less the change that are not the valid receipts of the day")},
    {FindingKind::Z_ALIQUOTA, "z-aliquota", Weight::FAULT,
     TrLater("a tax totalizer that is not the valid items of its tax code")},
    {FindingKind::Z_REGISTRADO, "z-registrado", Weight::FAULT,
     TrLater("gross sales, discounts or surcharges that are not those of the items of the day")},
    {FindingKind::Z_IMPOSTO, "z-imposto", Weight::FAULT,
     TrLater("a tax that is not its totalizer by its rate")},
    {FindingKind::Z_NOME, "z-nome", Weight::FAULT,
     TrLater("a means or a non-fiscal totalizer under a name that was not programmed")},
    {FindingKind::Z_CRO, "z-cro", Weight::FAULT,
     TrLater("a counter of restarts that the interventions do not lead to")},
    {FindingKind::Z_DATA, "z-data", Weight::FAULT,
     TrLater("a fiscal day that is not the date of its first receipt")},
    {FindingKind::Z_TEMPOS, "z-tempos", Weight::FAULT,
     TrLater(
         "more time issuing documents than operating (the two columns are crossed on purpose)")},
    // The file and its schema.
    {FindingKind::ARQUIVO_DANIFICADO, "arquivo-danificado", Weight::FAULT,
     TrLater("a file that the engine finds damaged, or that is not as long as it says")},
    {FindingKind::ESQUEMA, "esquema", Weight::FAULT,
     TrLater("a table, column, index or program that is not the schema's")},
    // Every row.
    {FindingKind::VALOR_INVALIDO, "valor-invalido", Weight::FAULT,
     TrLater("a value that the loggers cannot have written into its column")},
    {FindingKind::LINHA_AUSENTE, "linha-ausente", Weight::FAULT,
     TrLater("a table's row numbers with a gap, though nothing is ever deleted")},
    {FindingKind::LINHA_ALHEIA, "linha-alheia", Weight::FAULT,
     TrLater("a row where the loggers never leave one, or one more than they write")},
    {FindingKind::ORDEM, "ordem", Weight::FAULT,
     TrLater("a row out of the order of issue, or a time out of its document's")},
    {FindingKind::RELOGIO_ATRASADO, "relogio-atrasado", Weight::NOTE,
     TrLater("a clock that went back before a reading, as when it is set in an intervention")},
    {FindingKind::CONTADOR_DOCUMENTO, "contador-documento", Weight::FAULT,
     TrLater("a counter of vouchers or reports that did not move as its documents did")},
    {FindingKind::DOCUMENTO_DIFERE, "documento-difere", Weight::FAULT,
     TrLater("a document row that says another time or number than the row of what it documents")},
    {FindingKind::INTERVENCAO, "intervencao", Weight::FAULT,
     TrLater("an intervention out of its order, or without the reading that it begins with")},
    {FindingKind::FITA_DETALHE, "fita-detalhe", Weight::FAULT,
     TrLater("a reprint out of its order, or of documents that it cannot hold")},
    {FindingKind::PROGRAMACAO, "programacao", Weight::FAULT,
     TrLater("programming that the documents say was otherwise")},
    // What is known from outside the database.
    {FindingKind::ANCORA, "ancora", Weight::FAULT,
     TrLater("a database that does not reach what is known of its register from outside")},
    // Several databases of one register.
    {FindingKind::EMENDA, "emenda", Weight::FAULT,
     TrLater("a database that does not continue the one before it")},
    // The firmware log.
    {FindingKind::LINHA_PERDIDA, "linha-perdida", Weight::FAULT,
     TrLater("a statement that the engine rejected: the row is missing")},
    {FindingKind::COMANDO_PERDIDO, "comando-perdido", Weight::FAULT,
     TrLater("a command whose rows the caller of the loggers lost")},
    {FindingKind::PERDA_PREVISTA, "perda-prevista", Weight::NOTE,
     TrLater("a statement that the engine always rejects: the closing of an additional receipt, a "
             "currency symbol")},
}};

// Each kind stands at its place, so that none is missing and none stands twice.
constexpr bool IsComplete()
{
    for (std::size_t i = 0; i < KINDS.size(); ++i) {
        if (KINDS[i].name == nullptr || KINDS[i].kind != static_cast<FindingKind>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(IsComplete());

} // namespace

const FindingKindTable& FindingKinds()
{
    return KINDS;
}

// The sections of the enumeration, each by its last kind.
const char* NextStepOf(FindingKind kind)
{
    if (kind <= FindingKind::COO_REUTILIZADO) {
        return TrLater(
            "Look for the document on the register's paper or detail tape, and give the firmware "
            "log with --log.");
    }
    if (kind <= FindingKind::CHAVE_REPETIDA) {
        return TrLater(
            "Compare the rows of the document with its paper, and give the firmware log with "
            "--log.");
    }
    if (kind <= FindingKind::ITEM_NF_TOTAL) {
        return TrLater("Print the document with show --coo and compare it with its paper.");
    }
    if (kind <= FindingKind::Z_TEMPOS) {
        return TrLater("Print the reduction with show --crz and compare it with its paper.");
    }
    if (kind <= FindingKind::ESQUEMA) {
        return TrLater(
            "Take the database from its device again, with its log, and compare both files.");
    }
    if (kind <= FindingKind::PROGRAMACAO) {
        return TrLater("Compare the row with another copy of the database and with the paper.");
    }
    if (kind == FindingKind::ANCORA) {
        return TrLater("Ask for the rest of the documents: the file ends before they do.");
    }
    if (kind == FindingKind::EMENDA) {
        return TrLater(
            "Ask for the database that lies between them, and give all of them in their order.");
    }
    return TrLater("Ask why the register could not write the row; the log tells its reason.");
}

const FindingKindInfo& InfoOf(FindingKind kind)
{
    return KINDS[static_cast<std::size_t>(kind)];
}

} // namespace bancada::conferencia
