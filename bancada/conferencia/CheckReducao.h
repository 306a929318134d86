// What is checked of one Z reduction.
#pragma once

#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/ReducaoParts.h"
#include "bancada/leitura/Tables.h"

namespace bancada::conferencia
{

// Its sums against its totalizers, and these against the receipts of the day.
void CheckTotalizadores(CheckContext& context, const leitura::ReducaoZRow& z,
                        const ReducaoParts& parts);

// Its date and its time against the receipts of the day; `anterior` is the Z before it, null before
// the first. What the clock was set back behind is not held against the times.
void CheckHoras(CheckContext& context, const leitura::ReducaoZRow& z,
                const leitura::ReducaoZRow* anterior);

// Its payment means and its change against the payments of the day.
void CheckMeios(CheckContext& context, const leitura::ReducaoZRow& z, const ReducaoParts& parts);

// What a finding on a Z is about: its document and its day.
Subject SubjectOf(const leitura::ReducaoZRow& z);

} // namespace bancada::conferencia
