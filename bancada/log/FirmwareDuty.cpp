#include "bancada/log/FirmwareDuty.h"

#include "FiscalData/RateioSubtotal.h"
#include "MfdServices/GravaLog.h"
#include "bancada/log/FirmwareLog.h"

#include <cstdio>
#include <utility>

namespace bancada
{
namespace
{

// The module calls plain functions, so who answers them must be found from here.
const FirmwareDuty* onDuty = nullptr;

} // namespace

FirmwareDuty::FirmwareDuty(FirmwareLog& log, Setting ratearSubtotal)
    : m_log(log), m_ratearSubtotal(std::move(ratearSubtotal)), m_before(onDuty)
{
    onDuty = this;
}

FirmwareDuty::~FirmwareDuty()
{
    onDuty = m_before;
}

const FirmwareDuty* FirmwareDuty::OnDuty()
{
    return onDuty;
}

} // namespace bancada

void Vindral_GravaLog(char* text)
{
    if (const bancada::FirmwareDuty* duty = bancada::FirmwareDuty::OnDuty()) {
        duty->Log().Write(text);
    } else {
        std::fprintf(stderr, "%s\n", text);
    }
}

int GetRatearSubtotal()
{
    const bancada::FirmwareDuty* duty = bancada::FirmwareDuty::OnDuty();
    return duty != nullptr && duty->RatearSubtotal() ? 1 : 0;
}
