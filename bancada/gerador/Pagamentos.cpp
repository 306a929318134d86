#include "bancada/gerador/Pagamentos.h"

#include "bancada/gerador/Meios.h"

#include <string>

namespace bancada
{

namespace
{

void WritePagamento(Shop& shop, int meio, std::int64_t valor)
{
    LineWriter line = shop.tape.Line("efetua_pagamento");
    line.Number("meio", meio).Money("valor", valor);
    if (meio == CREDITO && shop.draw.PerMille(200)) {
        line.Number("parcelas", shop.draw.Between(2, 6));
    }
    if (!GivesTroco(meio)) {
        line.Text("info", "AUT " + std::to_string(shop.draw.Between(100000, 999999)));
    }
}

} // namespace

int WritePagamentos(Shop& shop, std::int64_t total)
{
    shop.lastCash = 0;
    const int meios[] = {DINHEIRO, CREDITO, DEBITO, VALE, CHEQUE};
    const int meio = meios[shop.draw.Weighted({45, 25, 20, 7, 3})];
    if (!GivesTroco(meio) && total > 4000 && shop.draw.PerMille(80)) {
        const std::int64_t byCard = total / 2;
        WritePagamento(shop, meio, byCard);
        WritePagamentoEmDinheiro(shop, total - byCard);
    } else if (meio == DINHEIRO) {
        WritePagamentoEmDinheiro(shop, total);
    } else {
        WritePagamento(shop, meio, total);
    }
    return meio;
}

void WritePagamentoEmDinheiro(Shop& shop, std::int64_t total)
{
    const std::int64_t notes[] = {1, 100, 500, 1000, 2000, 5000};
    const std::int64_t note = notes[shop.draw.Weighted({25, 20, 15, 15, 13, 12})];
    WritePagamento(shop, DINHEIRO, (total + note - 1) / note * note);
    shop.lastCash = total;
    shop.cash += total;
}

void WriteEstorno(Shop& shop, int origem, int destino, std::int64_t valor)
{
    shop.tape.Line("estorna_meio_pagamento")
        .Number("origem", origem)
        .Number("destino", destino)
        .Money("valor", valor);
    shop.tape.Documento();
    shop.cash += destino == DINHEIRO ? valor : 0;
}

} // namespace bancada
