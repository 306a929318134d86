// Documents by their number, complete: what the rows of several tables say of one document.
#pragma once

#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"
#include "bancada/relatorio/Cadastro.h"
#include "bancada/relatorio/Documento.h"
#include "bancada/relatorio/ReducaoReader.h"
#include "bancada/relatorio/RepeatedNumber.h"

#include <cstdint>
#include <vector>

namespace bancada::relatorio
{

// Every operation throws Unusable where the database cannot be read. Lives no longer than what it
// is given.
//
// Document numbers wrap, so a COO can come twice. Its receipts are told apart by the order of the
// rows: an item whose number does not go on from the one before begins the next receipt, and
// payments are grouped by the GNF that they carry.
class DocumentoReader
{
  public:
    DocumentoReader(const leitura::DatabaseReading& database, Cadastro& cadastro,
                    ReducaoReader& reducoes);

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
    PlaceAmongEqual PlaceOf(leitura::Query& query, const Documento& documento);
    std::vector<Item> ReadItens(const Documento& documento, bool& uncertain);
    std::vector<Pagamento> ReadPagamentos(const Documento& documento, bool& uncertain);

    Cadastro& m_cadastro;
    ReducaoReader& m_reducoes;
    leitura::Rows<leitura::CupomFiscalRow> m_fiscais;
    leitura::Rows<leitura::CupomNfRow> m_nfs;
    leitura::Rows<leitura::OutroDocumentoRow> m_outros;
    leitura::Rows<leitura::ItemCupomFiscalRow> m_itensFiscais;
    leitura::Rows<leitura::ItemCupomNfRow> m_itensNf;
    leitura::Rows<leitura::PagamentoCupomRow> m_pagamentos;
    leitura::Query m_placeOfFiscal;
    leitura::Query m_placeOfNf;
    leitura::Query m_gnfs;
    leitura::Query m_fimOfComprovante;
    leitura::Query m_hasComprovante;
    leitura::Query m_cuponsOfCrz;
};

// The order of issue: by the instant of the beginning, within one second by the number. Of two that
// begin in the same second with the same number neither comes first.
bool IsIssuedBefore(const Documento& a, const Documento& b);

} // namespace bancada::relatorio
