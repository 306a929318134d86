#include "bancada/arquivo/Vinculados.h"

#include "bancada/arquivo/ImportaCupom.h"
#include "bancada/leitura/Counter.h"

#include <algorithm>
#include <map>

namespace bancada::arquivo
{
namespace
{

// A receipt's vouchers up to one of them.
struct Emitidos {
    std::size_t cupom = 0; // its place among the documents
    std::int64_t comprovantes = 0;
    std::size_t livres = 0; // numbers without a record before the last of them
};

// A payment that may have a voucher then.
struct Candidato {
    std::size_t meio = 0; // from 0
    bool allowed = false; // with it no reversal that is still to come is kept from being made
};

CupomLido ReadEmitido(ArquivoLido& arquivo, const Emitidos& emitidos)
{
    const std::int32_t coo = arquivo.Documentos()[emitidos.cupom];
    const CupomLido told =
        arquivo.Has("E14", coo) ? ReadCupom(arquivo, coo) : ReadCupomNf(arquivo, coo);
    return Interpretacoes(told, emitidos.livres > 0).front();
}

bool IsDaTroco(const ArquivoLido& arquivo, const Programacao& programacao, std::int64_t numero)
{
    const std::string& nome = programacao.meios[static_cast<std::size_t>(numero) - 1];
    return arquivo.MeiosComTroco().count(nome) != 0;
}

// What the payments held when they were made, and their reversals; as told where these cannot be.
PagamentosLidos ReadPagamentos(const ArquivoLido& arquivo, const Programacao& programacao,
                               const CupomLido& cupom)
{
    const auto found = FindPagamentos(programacao, cupom, [&](std::int64_t numero) {
        return IsDaTroco(arquivo, programacao, numero);
    });
    if (found) {
        return *found;
    }
    PagamentosLidos asTold;
    for (const Record& record : cupom.pagamentos) {
        asTold.valores.push_back(record.Integer("valor"));
    }
    return asTold;
}

// The payments that hold something, in means that never gave change. A number without a record is
// that of a payment's reversal, or else of a voucher's.
std::vector<Candidato> FindCandidatos(const ArquivoLido& arquivo, const Programacao& programacao,
                                      const CupomLido& cupom, const PagamentosLidos& pagamentos,
                                      const Emitidos& emitidos)
{
    const std::vector<EstornoLido>& estornos = pagamentos.estornos;
    const std::size_t before = std::min(estornos.size(), emitidos.livres);
    Comprovantes pagos;
    for (std::size_t i = 0; i < pagamentos.valores.size(); ++i) {
        pagos.Pay(programacao.Meio(cupom.pagamentos[i].Text("meio")), pagamentos.valores[i]);
    }
    for (std::size_t k = 0; k < before; ++k) {
        pagos.Move(estornos[k]);
    }
    // Where a number is left the voucher can have been reversed before they were made.
    std::vector<EstornoLido> kept;
    const std::size_t due = estornos.size() + (cupom.cancelado && cupom.IsFiscal() ? 1 : 0);
    if (arquivo.FreeNumbers(emitidos.cupom).numeros <= due) {
        kept.assign(estornos.begin() + static_cast<std::ptrdiff_t>(before), estornos.end());
    }
    std::vector<Candidato> candidatos;
    std::map<std::int64_t, Comprovantes> comprovantes; // those of one means alone
    for (std::size_t i = 0; i < pagamentos.valores.size() + before; ++i) {
        const std::int64_t numero = programacao.Meio(cupom.pagamentos[i].Text("meio"));
        if (numero == 0 || IsDaTroco(arquivo, programacao, numero)) {
            continue;
        }
        std::vector<bool> only(programacao.meios.size(), false);
        only[static_cast<std::size_t>(numero) - 1] = true;
        Comprovantes& doMeio = comprovantes.emplace(numero, pagos).first->second;
        if (doMeio.Open(only, {}) != 0) {
            candidatos.push_back({static_cast<std::size_t>(numero) - 1, doMeio.AllowsAll(kept)});
        }
    }
    return candidatos;
}

// As many of the receipt's payments as have a voucher at once are in means that may have one:
// rather in those of which a voucher is known, and in none whose voucher would have to be reversed.
void RequireVinculados(ArquivoLido& arquivo, const Emitidos& emitidos, Programacao& programacao)
{
    const CupomLido cupom = ReadEmitido(arquivo, emitidos);
    const PagamentosLidos pagamentos = ReadPagamentos(arquivo, programacao, cupom);
    const std::vector<Candidato> candidatos =
        FindCandidatos(arquivo, programacao, cupom, pagamentos, emitidos);
    const auto estornados = static_cast<std::int64_t>(
        emitidos.livres - std::min(emitidos.livres, pagamentos.estornos.size()));
    std::int64_t due = std::max<std::int64_t>(emitidos.comprovantes - estornados, 1);
    for (const bool allowed : {true, false}) {
        const auto count = [&candidatos, allowed](const auto& isOne) {
            return std::count_if(candidatos.begin(), candidatos.end(), [&](const Candidato& one) {
                return one.allowed == allowed && isOne(one);
            });
        };
        due -= count([&](const Candidato& one) { return programacao.vinculado[one.meio]; });
        for (const Candidato& other : candidatos) {
            if (due > 0 && other.allowed == allowed && !programacao.vinculado[other.meio]) {
                programacao.vinculado[other.meio] = true;
                due -= count([&](const Candidato& one) { return one.meio == other.meio; });
            }
        }
    }
}

} // namespace

void FindVinculados(ArquivoLido& arquivo, Programacao& programacao)
{
    programacao.vinculado.assign(programacao.meios.size(), false);
    const std::vector<std::int32_t>& documentos = arquivo.Documentos();
    Emitidos emitidos;
    bool begun = false; // a receipt was
    for (std::size_t at = 0; at < documentos.size(); ++at) {
        const std::int32_t coo = documentos[at];
        emitidos.livres +=
            at == 0 ? 0 : static_cast<std::size_t>(leitura::Steps(documentos[at - 1], coo) - 1);
        if (arquivo.Has("E14", coo) || arquivo.Has("E19", coo)) {
            emitidos = {at, 0, 0};
            begun = true;
        }
        if (arquivo.Simbolo(coo) == "CC" && begun) {
            ++emitidos.comprovantes;
            RequireVinculados(arquivo, emitidos, programacao);
        }
    }
}

} // namespace bancada::arquivo
