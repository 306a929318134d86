// Z reductions with their totalizers and payment means.
#pragma once

#include "bancada/leitura/Query.h"
#include "bancada/leitura/RowIndex.h"
#include "bancada/leitura/Tables.h"
#include "bancada/relatorio/Documento.h"
#include "bancada/relatorio/JornadaRange.h"
#include "bancada/relatorio/RepeatedNumber.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace bancada::relatorio
{

// No table of the reductions has an index on their numbers, so that what a long history asks for is
// found through row indexes, made when they are first needed: time grows with the rows, not with
// their product. Lives no longer than its database. Throws Unusable where it cannot be read.
//
// Numbers wrap: reductions of one number have the rows that stand in their order. Those are read
// once and remembered by their places, so that time grows with them however many reductions bear
// it.
class ReducaoReader
{
  public:
    // Of the rows in `range`.
    ReducaoReader(const leitura::DatabaseReading& database, const JornadaRange& range);

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
        LazyIndex(const leitura::DatabaseReading& database, std::string table, std::string column,
                  const leitura::RowRange& range);
        const leitura::RowIndex& Get();

      private:
        const leitura::DatabaseReading* m_database;
        std::string m_table;
        std::string m_column;
        leitura::RowRange m_range;
        std::unique_ptr<leitura::RowIndex> m_index;
    };

    // Reductions that share a number, and their rows.
    struct Repeated {
        std::vector<std::int64_t> reducoes;
        // Of each the latest issue up to it, as far as any is known.
        std::vector<std::string> latest;
        RowGroups totalizadores, meios;
    };

    ReducaoZ Read(std::int64_t rowid);
    const Repeated& RepeatedOf(std::int64_t crz);
    void AddTotalizador(std::int64_t rowid, ReducaoZ& reducao);
    void AddMeio(std::int64_t rowid, ReducaoZ& reducao);
    Text FimOf(const ReducaoZ& reducao);

    LazyIndex m_byCrz;
    LazyIndex m_byCoo;
    LazyIndex m_totalizadoresByCrz;
    LazyIndex m_meiosByCrz;
    leitura::Rows<leitura::ReducaoZRow> m_reducao;
    leitura::Rows<leitura::TotalizadorReducaoRow> m_totalizador;
    leitura::Rows<leitura::MeioPagamentoReducaoRow> m_meio;
    leitura::Query m_fim;
    leitura::Query m_fins;
    std::unordered_map<std::int64_t, std::unique_ptr<Repeated>> m_repeated;
    // The ends of the reductions whose document number came twice, by it and by their beginning.
    std::unordered_map<std::int64_t, std::unordered_map<std::string, Text>> m_finsByInicio;
};

} // namespace bancada::relatorio
