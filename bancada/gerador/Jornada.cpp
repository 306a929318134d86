#include "bancada/gerador/Jornada.h"

#include "bancada/gerador/Cupons.h"

#include <iterator>

namespace bancada
{

namespace
{

constexpr std::int64_t FIRST_DAY = 19723; // 2024-01-01, counted from 1970-01-01
constexpr std::int64_t SECONDS_A_DAY = 86400;
constexpr std::int64_t SECONDS_AN_HOUR = 3600;
constexpr std::int64_t OPENING_HOUR = 6;

// How busy the shop is, hour by hour from its opening.
constexpr int MOVIMENTO[] = {2, 5, 8, 7, 6, 9, 10, 7, 5, 5, 7, 11, 12, 8, 4, 2};

// The instant of the receipt `number` (from 0) of `count`, in seconds after the opening: as many
// receipts in an hour as its share of the movement. `chance` is 0 to 999.
std::int64_t CupomInstant(int number, int count, std::int64_t chance)
{
    std::int64_t sum = 0;
    for (const int movimento : MOVIMENTO) {
        sum += movimento;
    }
    std::int64_t rest = (number * std::int64_t{1000} + chance) * sum * SECONDS_AN_HOUR /
                        (count * std::int64_t{1000});
    std::int64_t hour = 0;
    for (const int movimento : MOVIMENTO) {
        const std::int64_t share = movimento * SECONDS_AN_HOUR;
        if (rest < share) {
            return hour * SECONDS_AN_HOUR + rest / movimento;
        }
        rest -= share;
        ++hour;
    }
    return hour * SECONDS_AN_HOUR;
}

// A reading or the Z reduction.
void WriteLeitura(TapeWriter& tape, const char* comando)
{
    LineWriter line = tape.Line(comando);
    tape.Start(line);
    tape.Documento();
}

// Entering L prints, entering T does not; leaving either prints.
void WriteIntervencao(TapeWriter& tape, bool tecnica)
{
    tape.Line(tecnica ? "entrada_mit_interno" : "entrada_mil_interno");
    if (!tecnica) {
        tape.Documento();
    }
    tape.Line(tecnica ? "saida_mit_interno" : "saida_mil_interno");
    tape.Documento();
}

void WriteMovimentoDeCaixa(TapeWriter& tape, const char* operacao, std::int64_t valor)
{
    LineWriter line = tape.Line("sangria");
    tape.Start(line).Text("operacao", operacao).Money("valor", valor);
    tape.Documento();
}

void WriteReimpressao(Shop& shop)
{
    LineWriter line = shop.tape.Line("reimprime_mfd");
    shop.tape.Start(line)
        .Number("coo_inicial", shop.tape.COO() - shop.draw.Between(1, 10))
        .Number("coo_final", shop.tape.COO());
    shop.tape.Documento();
}

void WriteGerencial(TapeWriter& tape)
{
    {
        LineWriter line = tape.Line("abre_gerencial");
        tape.Start(line);
    }
    tape.Documento();
    tape.Line("fecha_ccd_gerencial");
}

// Before the shop opens. The first day has a fiscal-memory reading and an intervention, too.
void WriteManha(Shop& shop, int number)
{
    WriteLeitura(shop.tape, "leitura_x");
    if (number % 30 == 0) {
        WriteLeitura(shop.tape, "leitura_mf");
    }
    if (number % 90 == 0) {
        WriteIntervencao(shop.tape, number % 180 == 0);
    }
    shop.cash = 15000;
    WriteMovimentoDeCaixa(shop.tape, "fundo_troco", shop.cash);
}

// After it closed.
void WriteNoite(Shop& shop)
{
    if (shop.tape.COO() > 20 && shop.draw.PerMille(100)) {
        WriteReimpressao(shop);
    }
    if (shop.cash > 0) {
        WriteMovimentoDeCaixa(shop.tape, "sangria", shop.cash);
    }
    WriteGerencial(shop.tape);
    WriteLeitura(shop.tape, "reducao_z");
}

} // namespace

std::int64_t SwitchedOnAt()
{
    return FIRST_DAY * SECONDS_A_DAY + (OPENING_HOUR - 1) * SECONDS_AN_HOUR;
}

void WriteJornada(Shop& shop, int number, int cupons)
{
    const std::int64_t opening =
        (FIRST_DAY + number) * SECONDS_A_DAY + OPENING_HOUR * SECONDS_AN_HOUR;
    shop.tape.Wait(opening - 900);
    WriteManha(shop, number);
    for (int cupom = 0; cupom < cupons && shop.tape.Good(); ++cupom) {
        shop.tape.Wait(opening + CupomInstant(cupom, cupons, shop.draw.Between(0, 999)));
        WriteCupomFiscal(shop);
        if (shop.draw.PerMille(20)) {
            WriteCupomNaoFiscal(shop);
        }
        if (shop.cash > 150000) {
            WriteMovimentoDeCaixa(shop.tape, "sangria", 100000);
            shop.cash -= 100000;
        }
    }
    shop.tape.Wait(opening + static_cast<std::int64_t>(std::size(MOVIMENTO)) * SECONDS_AN_HOUR);
    WriteNoite(shop);
}

} // namespace bancada
