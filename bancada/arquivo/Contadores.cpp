#include "bancada/arquivo/Contadores.h"

#include "bancada/arquivo/Instante.h"

#include <initializer_list>

namespace bancada::arquivo
{
namespace
{

constexpr std::int64_t SECONDS_A_DAY = 86400;

std::int64_t Before(std::int64_t number)
{
    return number <= 0 ? 0 : number - 1;
}

// The first value of a counter, of the records in the order of the documents.
std::int64_t FirstOf(ArquivoLido& arquivo, std::initializer_list<const char*> types,
                     const char* field)
{
    for (const std::int32_t coo : arquivo.Documentos()) {
        for (const char* type : types) {
            if (arquivo.Has(type, coo)) {
                const std::int64_t number = arquivo.Read(type, coo).front().Integer(field);
                if (number != 0) {
                    return number;
                }
            }
        }
    }
    return 0;
}

std::int64_t Told(ArquivoLido& arquivo, const char* field)
{
    return arquivo.Small("E11").empty() ? 0 : arquivo.Small("E11").front().Integer(field);
}

// A counter before the first document: one less than the first that is told; the present one where
// none is.
std::int64_t CounterBefore(ArquivoLido& arquivo, std::initializer_list<const char*> types,
                           const char* field)
{
    const std::int64_t first = FirstOf(arquivo, types, field);
    if (first == 0) {
        return Told(arquivo, field);
    }
    return first == 1 && Told(arquivo, field) < first ? 0 : Before(first);
}

} // namespace

std::int64_t FirstInstant(ArquivoLido& arquivo)
{
    std::int64_t first = 0;
    for (const std::int32_t coo : arquivo.Documentos()) {
        const auto reducao = arquivo.Reducoes().find(coo);
        if (arquivo.Has("E14", coo)) {
            first = SecondsOf(arquivo.Read("E14", coo).front().Raw("data_abertura"));
        } else if (arquivo.Has("E19", coo)) {
            first = SecondsOf(arquivo.Read("E19", coo).front().Raw("data_abertura"));
        } else if (arquivo.Has("E16", coo)) {
            const Record record = arquivo.Read("E16", coo).front();
            first = SecondsOf(record.Raw("data_fim"), record.Raw("hora_fim"));
        } else if (reducao != arquivo.Reducoes().end()) {
            first =
                SecondsOf(reducao->second.Raw("data_emissao"), reducao->second.Raw("hora_emissao"));
        }
        if (first != 0) {
            return first;
        }
    }
    return 1;
}

std::optional<std::int64_t> CroDoCadastro(ArquivoLido& arquivo)
{
    if (arquivo.Small("E02").empty()) {
        return std::nullopt;
    }
    const Record& usuario = arquivo.Small("E02").front();
    const std::int64_t cadastro = SecondsOf(usuario.Raw("data_cadastro"));
    if (cadastro == 0 || cadastro + SECONDS_A_DAY <= FirstInstant(arquivo)) {
        return std::nullopt;
    }
    return usuario.Integer("cro");
}

std::map<std::string, std::int64_t> ContadoresBefore(ArquivoLido& arquivo)
{
    const std::vector<std::int32_t>& documentos = arquivo.Documentos();
    std::map<std::string, std::int64_t> contadores;
    contadores["coo"] = documentos.empty() ? Told(arquivo, "coo") : Before(documentos.front());
    std::int64_t crz = Told(arquivo, "crz");
    std::int64_t cro = Told(arquivo, "cro");
    for (const std::int32_t coo : documentos) {
        const auto reducao = arquivo.Reducoes().find(coo);
        if (reducao != arquivo.Reducoes().end()) {
            crz = Before(reducao->second.Integer("crz"));
            cro = reducao->second.Integer("cro");
            for (const Record& intervencao : arquivo.Small("E09")) {
                const std::int64_t time =
                    SecondsOf(intervencao.Raw("data"), intervencao.Raw("hora"));
                const std::int64_t emissao = SecondsOf(reducao->second.Raw("data_emissao"),
                                                       reducao->second.Raw("hora_emissao"));
                cro -= time <= emissao && cro > 0 ? 1 : 0;
            }
            break;
        }
    }
    contadores["crz"] = crz;
    contadores["cro"] = CroDoCadastro(arquivo).value_or(cro);
    contadores["ccf"] = CounterBefore(arquivo, {"E14"}, "ccf");
    contadores["gnf"] = CounterBefore(arquivo, {"E16", "E19"}, "gnf");
    contadores["grg"] = CounterBefore(arquivo, {"E16"}, "grg");
    contadores["cdc"] = Before(FirstOf(arquivo, {"E16"}, "cdc"));
    contadores["cfd"] = arquivo.Small("E10").empty()
                            ? Told(arquivo, "cfd")
                            : Before(arquivo.Small("E10").front().Integer("cfd"));
    return contadores;
}

} // namespace bancada::arquivo
