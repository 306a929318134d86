// The opening of a receipt, told by its record.
#include "bancada/CheckDigits.h"
#include "bancada/Messages.h"
#include "bancada/arquivo/ImportaCupom.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

constexpr std::int64_t SECONDS_A_DAY = 86400;
constexpr std::size_t MAX_NOME = 30; // what the array of the opening has room for

void WriteConsumidor(Importador& importing, const CupomLido& cupom, TapeLine& line)
{
    std::string digits(cupom.record.Raw("cpf_cnpj"));
    if (digits.find_first_not_of('0') == std::string::npos) {
        digits.clear();
    } else if (!IsCNPJ(digits) && digits.compare(0, digits.size() - CPF_DIGITS, "000") == 0) {
        digits.erase(0, digits.size() - CPF_DIGITS);
    }
    std::string nome = cupom.record.Text("nome");
    if (nome.size() > MAX_NOME) {
        nome.resize(MAX_NOME);
        importing.naoDito.AddField(std::string(cupom.record.Type()), "nome",
                                   Tr("the register has room for 30 letters"));
    }
    if (!digits.empty()) {
        line.Text("cpf_cnpj", digits);
    }
    if (!nome.empty()) {
        line.Text("nome", nome);
    }
}

} // namespace

std::int64_t BeginOf(const Importador& importing, std::int64_t em)
{
    const std::int64_t earliest = std::max(importing.tape.Now(), em);
    const std::int64_t latest = importing.tape.Latest();
    const bool isOfDay = latest / SECONDS_A_DAY == earliest / SECONDS_A_DAY;
    return isOfDay && latest <= importing.proximaHora ? std::max(earliest, latest) : earliest;
}

void OpenMovimento(Importador& importing, std::int64_t em)
{
    if (importing.movimento == 0) {
        importing.movimento = em;
    }
}

std::int64_t WriteAbertura(Importador& importing, const CupomLido& cupom, const char* command,
                           std::int64_t em)
{
    importing.pendentes.clear();
    importing.comprovantes.Clear();
    const std::int64_t began = BeginOf(importing, em);
    OpenMovimento(importing, began);
    TapeLine line = importing.tape.At(command, began);
    WriteConsumidor(importing, cupom, line);
    return began;
}

} // namespace bancada::arquivo
