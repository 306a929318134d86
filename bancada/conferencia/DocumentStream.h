// The documents of a database in the order of their issue.
#pragma once

#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bancada::conferencia
{

struct Documento {
    bool fiscal = false;
    leitura::Integer coo;
    leitura::Integer contador; // CCF of a fiscal receipt, GNF of another document
    leitura::Integer crz;
    std::string hora;
    std::string tipo; // of a document that is not a fiscal receipt
    // A fiscal receipt that was cancelled after its closing, as far as its row tells.
    bool canceladoFechado = false;
};

class DocumentStream
{
  public:
    explicit DocumentStream(const leitura::DatabaseReading& database);

    // The document that was issued next after the one numbered `last`, which is nothing as long as
    // no number is known. Nothing after the last document.
    std::optional<Documento> Next(const std::optional<std::int64_t>& last);

  private:
    bool IsNextFiscal(const std::optional<std::int64_t>& last) const;
    void ReadFiscal();
    void ReadOutro();
    bool WasFechado(const leitura::CupomFiscalRow& cupom);

    leitura::Rows<leitura::CupomFiscalRow> m_fiscais;
    leitura::Rows<leitura::OutroDocumentoRow> m_outros;
    leitura::Query m_pagamento;
    // The next one of each table.
    std::optional<Documento> m_fiscal, m_outro;
};

} // namespace bancada::conferencia
