#include "bancada/comandos/Configura.h"

#include "bancada/Messages.h"
#include "bancada/registro/Registro.h"
#include "bancada/tape/TapeFields.h"

namespace bancada
{
namespace
{

// As long as a point-of-sale application and a basic software name themselves.
constexpr std::size_t MAX_APLICATIVO = 84;
constexpr std::size_t MAX_VERSAO = 20;

} // namespace

Configura::Configura(const Registro& registro)
    : m_ratearSubtotal(registro.GetRatearSubtotal()),
      m_aplicativo(registro.GetMemoria().aplicativo), m_versaoSB(registro.GetMemoria().ecf.versaoSB)
{
}

void Configura::Fields(FieldVisitor& fields)
{
    fields.Flag(
        "ratear_subtotal", m_ratearSubtotal, Presence::OPTIONAL,
        TrLater("whether the closing of a receipt rewrites every item's share of a subtotal "
                "discount or surcharge"),
        "true");
    fields.Text("aplicativo", m_aplicativo, MAX_APLICATIVO, Presence::OPTIONAL,
                TrLater("identification of the point-of-sale application"), "MERCEARIA PDV 2.1");
    fields.Text("versao_sb", m_versaoSB, MAX_VERSAO, Presence::OPTIONAL,
                TrLater("version of the basic software"), "01.00.01");
}

void Configura::Apply(Registro& registro) const
{
    registro.SetRatearSubtotal(m_ratearSubtotal);
    registro.SetAplicativo(m_aplicativo);
    registro.SetVersaoSB(m_versaoSB);
}

void ReadConfigura(const TapeCommand& line, Configura& settings, const FaultSink& sink)
{
    if (line.em) {
        ReportFault(sink, line.emPlace, Tr("configura takes no time, and no field \"em\""));
    }
    if (line.fim) {
        ReportFault(sink, line.fimPlace, Tr("configura takes no time, and no field \"fim\""));
    }
    TapeFields fields(line, sink);
    settings.Fields(fields);
    fields.Finish();
}

void ExecuteConfigura(const TapeCommand& line, Registro& registro)
{
    Configura settings(registro);
    ReadConfigura(line, settings, nullptr);
    settings.Apply(registro);
}

} // namespace bancada
