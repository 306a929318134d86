// Which documents are shown.
#pragma once

#include "bancada/relatorio/Documento.h"

#include <optional>
#include <string>

namespace bancada::relatorio
{

// What a document has to be, all of it; nothing is asked of it until something is set. A condition
// on receipts keeps every other document out.
struct Filtro {
    // Cancelled receipts.
    bool cancelado = false;
    // Receipts with this in the consumer's CPF, CNPJ or name; of a number its punctuation does not
    // count. Letters as for `texto`.
    std::string consumidor;
    // Receipts whose total is known, and at least and at most this.
    std::optional<Amount> minimo, maximo;
    // Documents with this in one of their texts: what they are called, consumer, address, messages,
    // key, items, payments, totalizers. Small and capital letters are one, also with accents.
    std::string texto;
    // Documents begun on this day, yyyy-mm-dd, or later; or earlier.
    std::string desde, ate;

    [[nodiscard]] bool IsNone() const;
    // Whether the document has to be complete to be judged.
    [[nodiscard]] bool NeedsRows() const { return !texto.empty(); }
    [[nodiscard]] bool Admits(const Documento& documento) const;
    // What is asked for, in the language chosen; empty where nothing is.
    [[nodiscard]] std::string Described() const;
};

} // namespace bancada::relatorio
