// The directive that sets the bench itself.
#pragma once

#include "bancada/Messages.h"
#include "bancada/tape/FaultSink.h"
#include "bancada/tape/FieldVisitor.h"

#include <string>

namespace bancada
{

class Registro;
struct TapeCommand;

inline constexpr char CONFIGURA[] = "configura";
inline constexpr const char* CONFIGURA_SUMMARY =
    TrLater("sets the bench: not a command of the register, it takes no time and logs nothing");

// The settings of a register, as the directive's fields.
class Configura
{
  public:
    // Begins with what the register has, so that a field not given changes nothing.
    explicit Configura(const Registro& registro);

    void Fields(FieldVisitor& fields);
    void Apply(Registro& registro) const;

  private:
    bool m_ratearSubtotal;
    std::string m_aplicativo;
    std::string m_versaoSB;
};

// Reads a line of the tape into `settings`, its faults into `sink`.
void ReadConfigura(const TapeCommand& line, Configura& settings, const FaultSink& sink);

// Carries a line of the tape out. Throws TapeError.
void ExecuteConfigura(const TapeCommand& line, Registro& registro);

} // namespace bancada
