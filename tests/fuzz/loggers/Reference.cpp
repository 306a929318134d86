#include "tests/fuzz/loggers/Reference.h"

#include "tests/fuzz/Decimal128.h"

#include <ctime>

namespace reference
{

std::string Replaced(std::string text, char from, char to)
{
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

std::string Removed(std::string text, char character)
{
    text.erase(std::remove(text.begin(), text.end(), character), text.end());
    return text;
}

std::string Money(const Financial& value, int decimals)
{
    return MoneyOf(WideOf(value.nr), decimals, false, ".");
}

std::string InstantOf(UINT32 seconds, const char* format)
{
    const std::time_t time = seconds;
    std::tm parts = {};
    gmtime_r(&time, &parts);
    char text[64];
    std::strftime(text, sizeof text, format, &parts);
    return text;
}

std::string Percent(const BigInt& value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value.number[0] / 100.0);
    return text;
}

std::string TaxCode(int number, char letter, int rate)
{
    char text[64];
    std::snprintf(text, sizeof text, "%02d%c%02d.%02d", number, letter, rate / 100, rate % 100);
    return text;
}

std::string Reference::Started() const
{
    return InstantOf(m_command.m_dtExecStart.s, "%Y-%m-%d %H:%M:%S");
}

// An end that nobody knows is the beginning.
void Reference::SetEnd()
{
    if (m_expected.end == matlong[0]) {
        m_expected.end = m_command.m_dtExecStart.s;
    }
}

void Reference::Documento(const char* tipo)
{
    SetEnd();
    const int crz = m_model.Contador_Get(COUNTER_CRZ);
    Say("INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, "
        "data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (" +
            Counter(COUNTER_COO) + ",1," + Counter(COUNTER_GNF) + "," + Counter(COUNTER_GRG) + "," +
            Counter(COUNTER_CDC) + "," + std::to_string(crz == 0 ? 1 : crz) + ",'" + Started() +
            "','" + InstantOf(m_expected.end, "%Y-%m-%d %H:%M:%S") + "','" + tipo + "')",
        LARGE_STATEMENT);
}

void Reference::FimDoDocumento()
{
    SetEnd();
    Say("UPDATE outros_documentos SET data_hora_fim_emissao = '" +
            InstantOf(m_expected.end, "%Y-%m-%d %H:%M:%S") +
            "' WHERE cont_coo = " + Counter(COUNTER_COO),
        END_STATEMENT);
}

} // namespace reference
