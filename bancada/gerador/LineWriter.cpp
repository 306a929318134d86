#include "bancada/gerador/LineWriter.h"

namespace bancada
{

namespace
{

std::string DoisDigitos(std::int64_t numero)
{
    return (numero < 10 ? "0" : "") + std::to_string(numero);
}

// The civil date of a day counted from 1970-01-01, years beginning in March so that the leap day
// comes last.
std::string Data(std::int64_t dia)
{
    const std::int64_t z = dia + 719468;
    const std::int64_t era = z / 146097;
    const std::int64_t diaDaEra = z % 146097;
    const std::int64_t anoDaEra =
        (diaDaEra - diaDaEra / 1460 + diaDaEra / 36524 - diaDaEra / 146096) / 365;
    const std::int64_t diaDoAno = diaDaEra - (365 * anoDaEra + anoDaEra / 4 - anoDaEra / 100);
    const std::int64_t mesDeMarco = (5 * diaDoAno + 2) / 153;
    const std::int64_t diaDoMes = diaDoAno - (153 * mesDeMarco + 2) / 5 + 1;
    const std::int64_t mes = mesDeMarco < 10 ? mesDeMarco + 3 : mesDeMarco - 9;
    const std::int64_t ano = anoDaEra + era * 400 + (mes <= 2 ? 1 : 0);
    return std::to_string(ano) + "-" + DoisDigitos(mes) + "-" + DoisDigitos(diaDoMes);
}

} // namespace

LineWriter::LineWriter(std::ostream& saida, const char* comando) : m_saida(saida)
{
    m_saida << "{\"cmd\":\"" << comando << '"';
}

LineWriter::~LineWriter()
{
    m_saida << "}\n";
}

LineWriter& LineWriter::Texto(const char* campo, const std::string& valor)
{
    m_saida << ",\"" << campo << "\":\"" << valor << '"';
    return *this;
}

LineWriter& LineWriter::Numero(const char* campo, std::int64_t valor)
{
    // By to_string: a stream may group the digits of a number.
    m_saida << ",\"" << campo << "\":" << std::to_string(valor);
    return *this;
}

LineWriter& LineWriter::Sim(const char* campo)
{
    m_saida << ",\"" << campo << "\":true";
    return *this;
}

LineWriter& LineWriter::Dinheiro(const char* campo, std::int64_t centavos)
{
    return Decimal(campo, centavos, 2);
}

LineWriter& LineWriter::Decimal(const char* campo, std::int64_t unidades, int casas)
{
    std::string texto = std::to_string(unidades);
    const auto decimais = static_cast<std::size_t>(casas);
    if (decimais > 0) {
        if (texto.size() <= decimais) {
            texto.insert(0, decimais + 1 - texto.size(), '0');
        }
        texto.insert(texto.size() - decimais, ".");
    }
    return Texto(campo, texto);
}

LineWriter& LineWriter::Em(std::int64_t segundos)
{
    const std::int64_t noDia = segundos % 86400;
    return Texto("em", Data(segundos / 86400) + " " + DoisDigitos(noDia / 3600) + ":" +
                           DoisDigitos(noDia / 60 % 60) + ":" + DoisDigitos(noDia % 60));
}

} // namespace bancada
