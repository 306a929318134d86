// A reference for the register: it keeps its own record of what was accepted and recomputes every
// total from it. It shares no arithmetic with the register: it counts cents in 64-bit integers.
#pragma once

#include "RtcClasses.h"
#include "libs/Financial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace bancada
{

using Cents = std::int64_t;

inline Cents ToCents(const Financial& valor)
{
    EXPECT_EQ(BigInt::FromInt64(valor.nr.ToInt64()), valor.nr) << "an amount fits 64 bits";
    EXPECT_EQ(valor.nr.ToInt64() % 100, 0) << "an amount is whole cents";
    return valor.nr.ToInt64() / 100;
}

struct ItemModel {
    int imposto = 0;
    int posicao = 0;
    Cents bruto = 0;
    Cents desconto = 0;
    Cents acrescimo = 0;
    Cents acrescimosCancelados = 0; // its own and its shares of the subtotal's
    Cents rateio = 0;               // negative for a discount
    bool cancelado = false;

    Cents Liquido() const { return bruto - desconto + acrescimo; }
    Cents Final() const { return Liquido() + rateio; }
};

struct CupomModel {
    bool fiscal = true;
    bool valid = true;
    bool sangria = false;
    std::vector<ItemModel> itens;
    std::vector<std::pair<int, Cents>> pagamentos; // position, amount
    UINT32 abertura = 0;
    UINT32 end = 0;

    Cents Total() const
    {
        Cents sum = 0;
        for (const ItemModel& item : itens) {
            sum += item.cancelado ? 0 : item.Final();
        }
        return sum;
    }
    Cents Pago() const
    {
        Cents sum = 0;
        for (const auto& pagamento : pagamentos) {
            sum += pagamento.second;
        }
        return sum;
    }
    Cents Troco() const { return std::max<Cents>(Pago() - Total(), 0); }
};

// Shares `ajuste` by handing out its cents one at a time after the whole parts: each to the item
// that is furthest below its exact share, the first of equals.
inline std::vector<Cents> Share(Cents ajuste, const std::vector<Cents>& liquidos)
{
    Cents sum = 0;
    for (const Cents liquido : liquidos) {
        sum += liquido;
    }
    std::vector<Cents> shares;
    Cents left = ajuste;
    for (const Cents liquido : liquidos) {
        shares.push_back(ajuste * liquido / sum);
        left -= shares.back();
    }
    for (; left > 0; --left) {
        std::size_t chosen = 0;
        Cents high = -sum;
        for (std::size_t i = 0; i < liquidos.size(); ++i) {
            const Cents missing = ajuste * liquidos[i] - shares[i] * sum;
            if (missing > high) {
                high = missing;
                chosen = i;
            }
        }
        ++shares[chosen];
    }
    return shares;
}

struct JornadaModel {
    std::vector<CupomModel> cupons;

    template <class F>
    void ForEachItem(bool fiscal, F f) const
    {
        for (const CupomModel& cupom : cupons) {
            if (cupom.fiscal == fiscal) {
                for (const ItemModel& item : cupom.itens) {
                    f(cupom, item);
                }
            }
        }
    }
    Cents Totalizador(bool fiscal, int imposto, int posicao) const
    {
        Cents sum = 0;
        ForEachItem(fiscal, [&](const CupomModel& cupom, const ItemModel& item) {
            if (cupom.valid && !item.cancelado && item.imposto == imposto &&
                item.posicao == posicao) {
                sum += item.Final();
            }
        });
        return sum;
    }
    Cents Descontos(int imposto) const
    {
        Cents sum = 0;
        ForEachItem(true, [&](const CupomModel&, const ItemModel& item) {
            if (item.imposto == imposto) {
                sum += item.desconto + std::max<Cents>(-item.rateio, 0);
            }
        });
        return sum;
    }
    Cents Acrescimos(int imposto) const
    {
        Cents sum = 0;
        ForEachItem(true, [&](const CupomModel&, const ItemModel& item) {
            if (item.imposto == imposto) {
                sum += item.acrescimo + item.acrescimosCancelados + std::max<Cents>(item.rateio, 0);
            }
        });
        return sum;
    }
    Cents Cancelamentos(int imposto) const
    {
        Cents sum = 0;
        ForEachItem(true, [&](const CupomModel& cupom, const ItemModel& item) {
            if (item.imposto == imposto) {
                sum +=
                    item.acrescimosCancelados + (item.cancelado || !cupom.valid ? item.Final() : 0);
            }
        });
        return sum;
    }
    Cents VendaBruta() const
    {
        Cents sum = Acrescimos(0) + Acrescimos(1);
        ForEachItem(true, [&](const CupomModel&, const ItemModel& item) { sum += item.bruto; });
        return sum;
    }
    Cents Meio(int posicao) const
    {
        Cents sum = 0;
        for (const CupomModel& cupom : cupons) {
            if (cupom.valid) {
                for (const auto& pagamento : cupom.pagamentos) {
                    sum += pagamento.first == posicao ? pagamento.second : 0;
                }
            }
        }
        return sum;
    }
    Cents Troco() const
    {
        Cents sum = 0;
        for (const CupomModel& cupom : cupons) {
            sum += cupom.valid && !cupom.sangria ? cupom.Troco() : 0;
        }
        return sum;
    }
    Cents Valid(bool fiscal) const
    {
        Cents sum = 0;
        for (const CupomModel& cupom : cupons) {
            if (cupom.fiscal == fiscal && cupom.valid && !cupom.sangria) {
                sum += cupom.Total();
            }
        }
        return sum;
    }
    UINT32 Emitindo() const
    {
        UINT32 sum = 0;
        for (const CupomModel& cupom : cupons) {
            if (cupom.fiscal) {
                sum += cupom.end - cupom.abertura;
            }
        }
        return sum;
    }
};

} // namespace bancada
