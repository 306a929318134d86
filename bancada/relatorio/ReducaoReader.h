// Z reductions with their totalizers and payment means.
#pragma once

#include "bancada/leitura/Query.h"
#include "bancada/leitura/RowIndex.h"
#include "bancada/leitura/Tables.h"
#include "bancada/relatorio/Documento.h"
#include "bancada/relatorio/RepeatedNumber.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bancada::relatorio
{

// No table of the reductions has an index on their numbers, so that what a long history asks for is
// found through row indexes, made when they are first needed: time grows with the rows, not with
// their product. Lives no longer than its database. Throws Unusable where it cannot be read.
//
// Numbers wrap: reductions of one number have the rows that stand in their order.
class ReducaoReader
{
  public:
    explicit ReducaoReader(const leitura::DatabaseReading& database);

    // Those of a number or of a document's number, in the order of their rows, without totalizers
    // and means.
    std::vector<ReducaoZ> WithCrz(const Integer& crz);
    std::vector<ReducaoZ> WithCoo(const Integer& coo);
    bool HasCoo(const Integer& coo);

    // The first of this number issued at `desde` or later, without totalizers and means; nothing
    // while the jornada is open.
    std::optional<ReducaoZ> ClosingOf(const Integer& crz, const Text& desde);

    // A reduction with its end, which its document's row tells, without totalizers and means.
    ReducaoZ ReadReducao(const leitura::ReducaoZRow& row);

    // Reads the totalizers and the payment means.
    void Complete(ReducaoZ& reducao);

  private:
    // An index made at its first use.
    class LazyIndex
    {
      public:
        LazyIndex(const leitura::DatabaseReading& database, std::string table, std::string column);
        const leitura::RowIndex& Get();

      private:
        const leitura::DatabaseReading* m_database;
        std::string m_table;
        std::string m_column;
        std::unique_ptr<leitura::RowIndex> m_index;
    };

    ReducaoZ Read(std::int64_t rowid);

    LazyIndex m_byCrz;
    LazyIndex m_byCoo;
    LazyIndex m_totalizadoresByCrz;
    LazyIndex m_meiosByCrz;
    leitura::Rows<leitura::ReducaoZRow> m_reducao;
    leitura::Rows<leitura::TotalizadorReducaoRow> m_totalizador;
    leitura::Rows<leitura::MeioPagamentoReducaoRow> m_meio;
    leitura::Query m_fim;
};

} // namespace bancada::relatorio
