#include "bancada/conferencia/Achado.h"

namespace bancada
{

const std::vector<TipoAchado>& TiposDeAchado()
{
    static const std::vector<TipoAchado> tipos = {
        // The counters of the documents.
        {"coo-ausente", Peso::FALTA,
         "document numbers without a row, and nothing logged that explains them"},
        {"coo-repetido", Peso::FALTA, "a document number that comes again, or goes back"},
        {"ccf-ausente", Peso::FALTA, "fiscal receipts without a row"},
        {"ccf-repetido", Peso::FALTA, "a fiscal receipt number that comes again, or goes back"},
        {"gnf-ausente", Peso::FALTA,
         "non-fiscal documents without a row that no voucher reversal explains"},
        {"gnf-repetido", Peso::FALTA,
         "a non-fiscal document number that comes again, or goes back"},
        {"crz-ausente", Peso::FALTA, "Z reductions without a row"},
        {"crz-repetido", Peso::FALTA, "a Z reduction number that comes again, or goes back"},
        {"crz-documento", Peso::FALTA,
         "a document that is not a fiscal receipt, filed under another Z than the last one made"},
        {"documento-sem-linha", Peso::AVISO,
         "a document that leaves no row on purpose: the reversal of a voucher"},
        {"coo-reutilizado", Peso::AVISO,
         "a document number that names several receipts: their items and payments cannot be told "
         "apart"},
        // Rows whose document is missing.
        {"item-sem-cupom", Peso::FALTA, "items of a fiscal receipt that has no row"},
        {"item-nf-sem-cupom", Peso::FALTA, "items of a non-fiscal receipt that has no row"},
        {"pagamento-sem-cupom", Peso::FALTA, "payments of a receipt that has no row"},
        {"item-ausente", Peso::FALTA, "item numbers of a receipt without a row"},
        {"nf-sem-documento", Peso::FALTA, "a non-fiscal receipt without its document row"},
        {"documento-sem-nf", Peso::FALTA, "a document row of a non-fiscal receipt that has no row"},
        {"reducao-sem-documento", Peso::FALTA, "a Z reduction without its document row"},
        {"documento-sem-reducao", Peso::FALTA, "a document row of a Z reduction that has no row"},
        {"totalizador-sem-reducao", Peso::FALTA, "totalizers of a Z reduction that has no row"},
        {"meio-sem-reducao", Peso::FALTA, "payment means of a Z reduction that has no row"},
        {"reducao-incompleta", Peso::FALTA, "a Z reduction without a row that every Z writes"},
        {"cupom-sem-reducao", Peso::FALTA,
         "receipts of a day that no Z closes, though later ones do"},
        // Rows that come twice.
        {"chave-repetida", Peso::FALTA, "a key that should name one row and names several"},
        // Receipts.
        {"cupom-aberto", Peso::FALTA, "a fiscal receipt never closed, though documents follow it"},
        {"cupom-adicional", Peso::AVISO,
         "a fiscal receipt paid in full that keeps its opening values: an additional receipt, whose "
         "closing is always rejected"},
        {"cupom-total", Peso::FALTA,
         "a fiscal receipt whose total is not its subtotal with the subtotal adjustment"},
        {"cupom-itens", Peso::FALTA, "a fiscal receipt that its live items do not add up to"},
        {"cupom-pagamentos", Peso::FALTA,
         "a fiscal receipt whose payments less the change are not its total"},
        {"item-total", Peso::FALTA,
         "an item whose total is not quantity by price with its adjustments"},
        {"nf-aberto", Peso::FALTA, "a non-fiscal receipt never closed, though documents follow it"},
        {"nf-total", Peso::FALTA,
         "a non-fiscal receipt whose total is not its subtotal with the subtotal adjustment"},
        {"nf-itens", Peso::FALTA, "a non-fiscal receipt that its live items do not add up to"},
        {"nf-pagamentos", Peso::FALTA,
         "a non-fiscal receipt whose payments do not cover its total"},
        {"item-nf-total", Peso::FALTA,
         "a non-fiscal item whose net value is not its value with its adjustments"},
        // Z reductions.
        {"cupom-fora-do-dia", Peso::FALTA,
         "a receipt issued before the previous Z or after the Z that it is filed under"},
        {"z-totalizadores", Peso::FALTA, "a sum of the Z that its totalizer rows do not add up to"},
        {"z-vb", Peso::FALTA,
         "gross sales that are not net totalizers, discounts and cancellations together"},
        {"z-gt", Peso::FALTA, "a grand total that did not grow by the gross sales of the day"},
        {"z-vendas", Peso::FALTA,
         "tax totalizers that are not the valid fiscal receipts of the day"},
        {"z-nao-fiscais", Peso::FALTA,
         "non-fiscal totalizers that are not the valid non-fiscal receipts of the day"},
        {"z-meio", Peso::FALTA, "a payment means that is not the payments of the day"},
        {"z-troco", Peso::FALTA,
         "payment means less the change that are not the valid receipts of the day"},
        {"z-data", Peso::FALTA, "a fiscal day that is not the date of its first receipt"},
        {"z-tempos", Peso::FALTA,
         "more time issuing documents than operating (the two columns are crossed on purpose)"},
        // The firmware log.
        {"linha-perdida", Peso::FALTA, "a statement that the engine rejected: the row is missing"},
        {"comando-perdido", Peso::FALTA, "a command whose rows the caller of the loggers lost"},
        {"perda-prevista", Peso::AVISO,
         "a statement that the engine always rejects: the closing of an additional receipt, a "
         "currency symbol"},
    };
    return tipos;
}

} // namespace bancada
