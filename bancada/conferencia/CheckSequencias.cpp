// The counters of the documents. Every document takes the next COO; fiscal receipts also the next
// CCF, non-fiscal documents the next GNF. Some documents leave no row on purpose:
//  - the cancellation of a closed fiscal receipt takes a COO; the receipt's row says that it is
//    cancelled;
//  - a reprint of the detail tape takes a COO; it has its row in fita_detalhe;
//  - the reversal of a payment on a closed receipt takes a COO and a GNF; the payment that it made
//    carries that GNF;
//  - the reversal of a voucher takes a COO and a GNF; only the jump of both shows it, after the
//    voucher and before the next receipt.
// Any other number without a row is a fault.
#include "bancada/conferencia/Sequencias.h"

namespace bancada::conferencia
{

void CheckSequencias(CheckContext& context)
{
    DocumentStream documentos(context.Database(), context.Relogio());
    Gaps gaps;
    CooSequence coo(context, gaps);
    CcfSequence ccf(context, gaps);
    GnfSequence gnf(context, gaps);
    CrzSequence crz(context);
    ComprovanteSequence cdc(context, COUNTED_CDC);
    ComprovanteSequence grg(context, COUNTED_GRG);
    HoraSequence hora(context);
    while (const std::optional<Documento> documento = documentos.Next(coo.Last())) {
        coo.Check(*documento);
        if (documento->fiscal) {
            ccf.Check(*documento);
            crz.CheckFiscal(*documento);
        } else {
            gnf.Check(*documento);
            crz.Check(*documento);
        }
        cdc.Check(*documento);
        grg.Check(*documento);
        hora.Check(*documento);
        gaps.Saw(documento->fiscal);
        while (const std::optional<Gap> gap = gaps.TakeDecided()) {
            coo.ReportMissing(*gap);
        }
        coo.Follow(*documento);
    }
    while (!gaps.IsEmpty()) {
        if (!gnf.ExplainAtEnd()) {
            coo.ReportMissing(gaps.First());
            gaps.RemoveFirst();
        }
    }
}

} // namespace bancada::conferencia
