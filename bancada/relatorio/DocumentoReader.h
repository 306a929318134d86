// Documents by their number, complete: what the rows of several tables say of one document.
#pragma once

#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"
#include "bancada/relatorio/Cadastro.h"
#include "bancada/relatorio/Documento.h"
#include "bancada/relatorio/JornadaRange.h"
#include "bancada/relatorio/ReducaoReader.h"
#include "bancada/relatorio/RepeatedNumber.h"

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace bancada::relatorio
{

// Every operation throws Unusable where the database cannot be read. Lives no longer than what it
// is given.
//
// Document numbers wrap, so a COO can come twice. Its receipts are told apart by the order of the
// rows: an item whose number does not go on from the one before begins the next receipt, and
// payments are grouped by the GNF that they carry. The rows of such a number are read in order once
// and remembered by their places, 8 bytes a row, so that time grows with them however many
// documents bear the number.
class DocumentoReader
{
  public:
    // Counts receipts in `range`; a document is read whole wherever its rows are.
    DocumentoReader(const leitura::DatabaseReading& database, const JornadaRange& range,
                    Cadastro& cadastro, ReducaoReader& reducoes);

    // Everything that bears the number, complete, in the order of issue: receipts whose opening is
    // lost included. Empty where there is nothing.
    std::vector<Documento> WithCoo(std::int64_t coo);

    // A non-fiscal receipt with its end.
    Documento ReadComprovante(const leitura::CupomNfRow& row);
    // False of the row that tells the end of a non-fiscal receipt, or of the document that a Z
    // reduction is, where that has its own row.
    bool IsDocumentoItself(const leitura::OutroDocumentoRow& row);
    // Reads what a document of the walk lacks: items, payments, totalizers and means.
    void Complete(Documento& documento);

    // How many receipts of either kind say that the Z reduction `crz` closes their jornada.
    std::int64_t CountCuponsOf(std::int64_t crz);

  private:
    std::vector<Documento> WithoutAbertura(std::int64_t coo);
    // Documents that share a number, and their rows.
    struct Repeated {
        std::vector<std::int64_t> fiscais, nfs;
        RowGroups itensFiscais, itensNf, pagamentosFiscais;
        // Non-fiscal receipts and their payments by GNF.
        struct OfGnf {
            std::vector<std::int64_t> nfs;
            RowGroups pagamentos;
        };
        std::map<std::int64_t, OfGnf> byGnf;
    };

    bool IsRepeated(std::int64_t coo);
    const Repeated& RepeatedOf(std::int64_t coo);
    void CompleteRepeated(Documento& documento);
    void CompleteSingle(Documento& documento);
    Item ReadItem(const leitura::ItemCupomNfRow& row);
    Pagamento ReadPagamento(const leitura::PagamentoCupomRow& row);

    Cadastro& m_cadastro;
    ReducaoReader& m_reducoes;
    leitura::Rows<leitura::CupomFiscalRow> m_fiscais;
    leitura::Rows<leitura::CupomNfRow> m_nfs;
    leitura::Rows<leitura::OutroDocumentoRow> m_outros;
    leitura::Rows<leitura::ItemCupomFiscalRow> m_itensFiscais;
    leitura::Rows<leitura::ItemCupomNfRow> m_itensNf;
    leitura::Rows<leitura::PagamentoCupomRow> m_pagamentos;
    leitura::Rows<leitura::ItemCupomFiscalRow> m_itemFiscal;
    leitura::Rows<leitura::ItemCupomNfRow> m_itemNf;
    leitura::Rows<leitura::PagamentoCupomRow> m_pagamento;
    leitura::Query m_firstTwo;
    leitura::Query m_fiscaisInOrder;
    leitura::Query m_nfsInOrder;
    leitura::Query m_itensFiscaisInOrder;
    leitura::Query m_itensNfInOrder;
    leitura::Query m_pagamentosInOrder;
    leitura::Query m_fimOfComprovante;
    leitura::Query m_hasComprovante;
    leitura::Query m_cuponsOfCrz;
    std::unordered_map<std::int64_t, std::unique_ptr<Repeated>> m_repeated;
    // The ends of non-fiscal receipts whose number came twice.
    std::unordered_map<std::int64_t, Text> m_fins;
};

// The order of issue: by the instant of the beginning, within one second by the number. Of two that
// begin in the same second with the same number neither comes first.
bool IsIssuedBefore(const Documento& a, const Documento& b);

} // namespace bancada::relatorio
