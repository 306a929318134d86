// What the firmware half asks of the firmware around it: Vindral_GravaLog and GetRatearSubtotal.
#pragma once

#include <functional>

namespace bancada
{

class FirmwareLog;

// While one of these lives, the texts of Vindral_GravaLog go to its log, and GetRatearSubtotal
// answers what its setting says at that moment. They nest: the newest is on duty, and when it ends
// the one before it is again. Without any, texts go to standard error and the setting is off.
// One thread, as the module itself.
class FirmwareDuty
{
  public:
    using Setting = std::function<bool()>;

    // `log` must outlive this object.
    explicit FirmwareDuty(FirmwareLog& log, Setting ratearSubtotal = nullptr);
    ~FirmwareDuty();
    FirmwareDuty(const FirmwareDuty&) = delete;
    FirmwareDuty& operator=(const FirmwareDuty&) = delete;

    FirmwareLog& Log() const { return m_log; }
    bool RatearSubtotal() const { return m_ratearSubtotal && m_ratearSubtotal(); }

    static const FirmwareDuty* OnDuty();

  private:
    FirmwareLog& m_log;
    Setting m_ratearSubtotal;
    const FirmwareDuty* m_before;
};

} // namespace bancada
