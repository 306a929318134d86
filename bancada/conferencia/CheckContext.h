// What the checks share while they run, and the checks.
#pragma once

#include "bancada/conferencia/Acertos.h"
#include "bancada/conferencia/Aplicativos.h"
#include "bancada/conferencia/Chaves.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/conferencia/FindingReport.h"
#include "bancada/conferencia/Jornada.h"
#include "bancada/conferencia/LossIndex.h"
#include "bancada/conferencia/Pagamentos.h"
#include "bancada/conferencia/RepeatedCoos.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace bancada::conferencia
{

// The document issued last: nothing follows it, so it may still be open.
struct UltimoDocumento {
    leitura::Integer coo;
    bool fiscal = false;
};

class CheckContext
{
  public:
    // All three outlive this object; `losses` is null when no firmware log was given.
    CheckContext(const leitura::DatabaseReading& database, const LossIndex* losses,
                 const FindingSink& sink);

    const leitura::DatabaseReading& Database() const { return m_database; }
    // What the firmware log names; null when none was given.
    const LossIndex* Losses() const { return m_losses; }
    const RepeatedCoos& Repeated() const { return m_repeated; }
    const Acertos& Relogio() const { return m_acertos; }
    // The lost rows of a receipt; none where no firmware log was given.
    const LostRows& LostOf(std::int64_t coo) const;
    // Whether the firmware log names a lost row of this table, or commands of which all rows are
    // lost.
    bool MayHaveLost(const std::string& table) const;
    // Runs the check of a Z twice: with what the rows that were lost of its day would have added to
    // it, which tells what they do not account for, then without it.
    template <typename Check>
    void CheckWithLosses(std::int64_t crz, const Check& check)
    {
        if (const auto lost = perdidas.find(crz); lost != perdidas.end()) {
            const Jornada rowsAlone = jornadas[crz];
            jornadas[crz].Add(lost->second);
            findings.FindResidue(check);
            jornadas[crz] = rowsAlone;
        }
        check();
        findings.ForgetResidue();
    }
    // Whether it is the document issued last.
    bool IsUltimo(const leitura::Integer& coo, bool fiscal) const;

    // Whether the rows begin with the first document of the register.
    bool BeginsAtFactory() const { return m_beginsAtFactory; }

    // The payments of a receipt. Their reversals are known from then on.
    Pagamentos ReadPagamentos(std::int64_t coo);
    // Whether this GNF was taken by the reversal of a payment, as the payments that it made show;
    // certain once every receipt was asked for its payments.
    bool IsGnfDeEstorno(std::int64_t gnf) const { return m_gnfsDeEstorno.count(gnf) != 0; }

    FindingReport findings;
    // The days by their Z, as the checks of the receipts gather them.
    std::map<std::int64_t, Jornada> jornadas;
    // What the rows that were lost of each day would have added.
    std::map<std::int64_t, Jornada> perdidas;
    RowCounts rows;
    Chaves chaves;
    Aplicativos aplicativos;
    // The GNF of the payments of the fiscal receipts so far.
    std::optional<std::int64_t> gnfDePagamentos;

  private:
    const leitura::DatabaseReading& m_database;
    const LossIndex* m_losses;
    RepeatedCoos m_repeated;
    Acertos m_acertos;
    UltimoDocumento m_ultimo;
    bool m_beginsAtFactory = false;
    PagamentosReader m_pagamentos;
    std::set<std::int64_t> m_gnfsDeEstorno;
};

// Reports the items without a row between `previous` and `item`, two rows of a receipt.
void ReportMissingItens(CheckContext& context, std::int64_t coo, std::int64_t previous,
                        std::int64_t item);

// Each payment of a receipt by itself, and its GNF: that of a non-fiscal receipt is `gnf`, that of
// a fiscal one, where `gnf` is left out, is none before those of the receipts before it.
void CheckPagamentos(CheckContext& context, const leitura::Integer& coo,
                     const Pagamentos& pagamentos, const leitura::Integer& gnf);

// What may be read at all: the file as the engine sees it, its schema, each value by itself.
void CheckArquivo(CheckContext& context);
void CheckEsquema(CheckContext& context);
void CheckDominios(CheckContext& context);

// The checks. CheckReducoes and CheckSequencias need what the two before them gather.
void CheckCupons(CheckContext& context);
void CheckCuponsNf(CheckContext& context);
void CheckAssinaturas(CheckContext& context);
void CheckReducoes(CheckContext& context);
void CheckSequencias(CheckContext& context);
void CheckLinks(CheckContext& context);
void CheckOutrosDocumentos(CheckContext& context);
void CheckIdentidade(CheckContext& context);
void CheckIntervencoes(CheckContext& context);
void CheckFitaDetalhe(CheckContext& context);
void CheckNomes(CheckContext& context);

} // namespace bancada::conferencia
