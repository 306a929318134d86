// The documents of a database in the order of their issue.
#pragma once

#include "bancada/conferencia/Acertos.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bancada::conferencia
{

// Whether a fiscal receipt's cancellation took a number, as far as its rows tell: one that was
// closed has one; one that was paid may have been an additional receipt, whose closing is rejected,
// or cancelled while it was issued, which takes none.
enum class NumeroDoCancelamento {
    NONE,
    PERHAPS,
    ONE
};

struct Documento {
    bool fiscal = false;
    leitura::Integer coo;
    leitura::Integer contador; // CCF of a fiscal receipt, GNF of another document
    leitura::Integer grg, cdc; // of a document that is not a fiscal receipt
    leitura::Integer crz;
    std::string hora;
    std::string fim;  // when it ended, as far as its row tells
    std::string tipo; // of a document that is not a fiscal receipt
    NumeroDoCancelamento cancelamento = NumeroDoCancelamento::NONE; // of a fiscal receipt
    // Where it stands.
    const char* table = "";
    std::int64_t rowid = 0;
};

class DocumentStream
{
  public:
    // Both outlive this object. Across a setting of the clock the times tell no order.
    DocumentStream(const leitura::DatabaseReading& database, const Acertos& acertos);

    // The document that was issued next after the one numbered `last`, which is nothing as long as
    // no number is known. Nothing after the last document.
    std::optional<Documento> Next(const std::optional<std::int64_t>& last);

  private:
    bool IsNextFiscal(const std::optional<std::int64_t>& last) const;
    bool IsFiscalEarlier() const;
    void ReadFiscal();
    void ReadOutro();
    void ReadReducao();
    NumeroDoCancelamento NumeroDe(const leitura::CupomFiscalRow& cupom);

    const Acertos& m_acertos;
    leitura::Rows<leitura::CupomFiscalRow> m_fiscais;
    leitura::Rows<leitura::OutroDocumentoRow> m_outros;
    // Z reductions whose document row is missing: their own row tells as much.
    leitura::Query m_reducoes;
    leitura::Query m_pagamento;
    // The next one of each table.
    std::optional<Documento> m_fiscal, m_outro, m_reducao;
    // The document behind a Z that stands in m_outro.
    std::optional<Documento> m_behind;
    bool m_outrosEnded = false;
};

} // namespace bancada::conferencia
