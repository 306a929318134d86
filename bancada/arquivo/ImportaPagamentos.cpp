// Payments of a receipt and their reversals, told by its records.
#include "bancada/arquivo/ImportaCupom.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

struct Pagamento {
    std::int64_t meio = 0;
    std::int64_t valor = 0;
    bool taken = false; // it is what a reversal gave to its means
};

// Finds the payments that a reversal made, and leaves the reversals in `estornos`.
std::vector<Pagamento> FindEstornos(const Importador& importing, const CupomLido& cupom,
                                    std::vector<SemRegistro>& estornos)
{
    std::vector<Pagamento> pagamentos;
    std::vector<std::int64_t> known; // sources whose reversal was found: its rows are all marked
    for (const Record& record : cupom.pagamentos) {
        pagamentos.push_back(
            {importing.programacao.Meio(record.Text("meio")), record.Integer("valor"), false});
    }
    std::int64_t due = cupom.Due();
    for (std::size_t i = 0; i < pagamentos.size(); ++i) {
        if (pagamentos[i].taken) {
            continue;
        }
        if (cupom.cancelado) {
            // All are told as reversed by the cancellation: one behind the last that was due was
            // made by a reversal.
            if (due > 0 || i == 0) {
                due -= pagamentos[i].valor;
                continue;
            }
            for (std::size_t from = 0; from < i; ++from) {
                if (pagamentos[from].meio != pagamentos[i].meio &&
                    pagamentos[from].valor >= pagamentos[i].valor) {
                    pagamentos[i].taken = true;
                    estornos.push_back({SemRegistro::Kind::ESTORNO_PAGAMENTO, pagamentos[from].meio,
                                        pagamentos[i].meio, pagamentos[i].valor});
                    break;
                }
            }
            continue;
        }
        const std::int64_t origem = pagamentos[i].meio;
        if (cupom.pagamentos[i].Text("estornado") == "N" ||
            std::find(known.begin(), known.end(), origem) != known.end()) {
            continue;
        }
        const std::int64_t valor = cupom.pagamentos[i].Integer("valor_estornado");
        for (std::size_t to = pagamentos.size(); to-- > i + 1;) {
            if (pagamentos[to].meio != origem && pagamentos[to].valor == valor &&
                !pagamentos[to].taken) {
                pagamentos[to].taken = true;
                known.push_back(origem);
                estornos.push_back(
                    {SemRegistro::Kind::ESTORNO_PAGAMENTO, origem, pagamentos[to].meio, valor});
                break;
            }
        }
    }
    return pagamentos;
}

void WriteEstorno(Importador& importing, const SemRegistro& estorno)
{
    importing.tape.Then("estorna_meio_pagamento")
        .Number("origem", estorno.origem)
        .Number("destino", estorno.destino)
        .Money("valor", estorno.valor);
}

} // namespace

void WritePagamentos(Importador& importing, const CupomLido& cupom)
{
    const bool closed = cupom.WasClosed();
    std::vector<SemRegistro> estornos;
    const std::vector<Pagamento> pagamentos = FindEstornos(importing, cupom, estornos);
    for (const Pagamento& pagamento : pagamentos) {
        if (pagamento.taken) {
            continue;
        }
        if (pagamento.meio == 0) {
            importing.Note("E21", "payments in a means without a name");
            continue;
        }
        importing.tape.Then("efetua_pagamento")
            .Number("meio", pagamento.meio)
            .Money("valor", pagamento.valor);
        importing.meiosDoCupom.push_back(pagamento.meio);
    }
    // A reversal of an issued receipt has a number of its own.
    const std::size_t later = cupom.cancelado && closed ? 1 : 0;
    for (const SemRegistro& estorno : estornos) {
        if (closed && importing.pendentes.size() + later < importing.numerosLivres) {
            importing.pendentes.push_back(estorno);
        } else {
            WriteEstorno(importing, estorno);
        }
    }
}

} // namespace bancada::arquivo
