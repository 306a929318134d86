#include "bancada/arquivo/Contadores.h"

#include "bancada/arquivo/ImportaCupom.h"
#include "bancada/arquivo/Instante.h"
#include "bancada/arquivo/Reinicios.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>
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

// The payments reversed before the first document that tells its GNF, which moved it unseen.
std::int64_t EstornosBeforeGnf(Importador& importing)
{
    ArquivoLido& arquivo = importing.arquivo;
    const Programacao& programacao = importing.programacao;
    const auto daTroco = [&programacao](std::int64_t meio) {
        return !programacao.vinculado[static_cast<std::size_t>(meio) - 1];
    };
    std::size_t estornos = 0;
    std::size_t missing = 0; // numbers without a record up to the document
    const std::vector<std::int32_t>& documentos = arquivo.Documentos();
    for (std::size_t at = 0; at < documentos.size(); ++at) {
        missing +=
            at == 0
                ? 0
                : static_cast<std::size_t>(leitura::Steps(documentos[at - 1], documentos[at]) - 1);
        for (const char* type : {"E16", "E19"}) {
            if (arquivo.Has(type, documentos[at]) &&
                arquivo.Read(type, documentos[at]).front().Integer("gnf") != 0) {
                return static_cast<std::int64_t>(std::min(estornos, missing));
            }
        }
        if (arquivo.Has("E14", documentos[at])) {
            const auto found = FindPagamentos(programacao, importing.dias.Read(at), daTroco);
            estornos +=
                found ? std::min(found->estornos.size(), arquivo.FreeNumbers(at).numeros) : 0;
        }
    }
    return 0;
}

// Of a longer number than E16 has room for, one that ends alike.
std::int64_t CdcBefore(ArquivoLido& arquivo)
{
    for (const std::int32_t coo : arquivo.Documentos()) {
        if (arquivo.Simbolo(coo) == "CC") {
            const std::int64_t cdc = arquivo.Read("E16", coo).front().Integer("cdc");
            return cdc == 0 ? CDC_ROOM - 1 : cdc - 1;
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

std::int64_t EndAt(ArquivoLido& arquivo, std::int32_t coo)
{
    const auto reducao = arquivo.Reducoes().find(coo);
    if (reducao != arquivo.Reducoes().end()) {
        return SecondsOf(reducao->second.Raw("data_emissao"), reducao->second.Raw("hora_emissao"));
    }
    if (!arquivo.Has("E16", coo)) {
        return 0;
    }
    const Record record = arquivo.Read("E16", coo).front();
    return SecondsOf(record.Raw("data_fim"), record.Raw("hora_fim"));
}

std::int64_t FirstInstant(ArquivoLido& arquivo)
{
    for (const std::int32_t coo : arquivo.Documentos()) {
        std::int64_t first = EndAt(arquivo, coo);
        for (const char* type : {"E14", "E19"}) {
            if (arquivo.Has(type, coo)) {
                first = SecondsOf(arquivo.Read(type, coo).front().Raw("data_abertura"));
            }
        }
        if (first != 0) {
            return first;
        }
    }
    return 1;
}

std::int64_t LastFirstInstant(ArquivoLido& arquivo)
{
    const std::int64_t first = FirstInstant(arquivo);
    std::int64_t last = first - first % SECONDS_A_DAY + SECONDS_A_DAY - 1;
    for (const std::int32_t coo : arquivo.Documentos()) {
        const std::int64_t end = EndAt(arquivo, coo);
        if (end != 0) {
            return end < first ? first : std::min(end, last);
        }
    }
    return last;
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

std::map<std::string, std::int64_t> ContadoresBefore(Importador& importing)
{
    ArquivoLido& arquivo = importing.arquivo;
    const std::vector<std::int32_t>& documentos = arquivo.Documentos();
    const std::int64_t first = FirstInstant(arquivo);
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
                const bool isOfFile = TimeOf(intervencao) + SECONDS_A_DAY > first &&
                                      !leitura::ComesBefore(reducao->second.Integer("cro"),
                                                            intervencao.Integer("cro"));
                cro -= isOfFile && cro > 0 ? 1 : 0;
            }
            break;
        }
    }
    contadores["crz"] = crz;
    contadores["cro"] = CroDoCadastro(arquivo).value_or(cro);
    contadores["ccf"] = CounterBefore(arquivo, {"E14"}, "ccf");
    contadores["gnf"] = CounterBefore(arquivo, {"E16", "E19"}, "gnf");
    for (std::int64_t i = EstornosBeforeGnf(importing); i > 0; --i) {
        // 1 follows the last number as it follows none.
        std::int64_t& gnf = contadores["gnf"];
        gnf = gnf == 0 ? leitura::LAST_COUNTER - 1 : gnf - 1;
    }
    contadores["grg"] = CounterBefore(arquivo, {"E16"}, "grg");
    contadores["cdc"] = CdcBefore(arquivo);
    contadores["cfd"] = arquivo.Small("E10").empty()
                            ? Told(arquivo, "cfd")
                            : Before(arquivo.Small("E10").front().Integer("cfd"));
    return contadores;
}

} // namespace bancada::arquivo
