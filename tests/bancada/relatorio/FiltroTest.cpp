// Which documents of the sample each filter leaves.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using relatorio::Amount;
using relatorio::Filtro;

class FiltroShow : public Sample
{
  protected:
    // The numbers of the documents listed.
    std::string Shown(const Filtro& filtro)
    {
        if (!std::filesystem::exists(Database())) {
            WriteSample();
        }
        ShowOptions options;
        options.filtro = filtro;
        std::string coos;
        const nlohmann::json listed = ShowJson(options);
        for (const auto& dia : listed["dias"]) {
            EXPECT_FALSE(dia["documentos"].empty());
            for (const auto& documento : dia["documentos"]) {
                coos += (coos.empty() ? "" : " ") + documento["coo"].dump();
            }
        }
        return coos;
    }

    std::string OfConsumidor(const char* consumidor)
    {
        Filtro filtro;
        filtro.consumidor = consumidor;
        return Shown(filtro);
    }

    std::string OfTexto(const char* texto)
    {
        Filtro filtro;
        filtro.texto = texto;
        return Shown(filtro);
    }
};

TEST_F(FiltroShow, CancelledReceipts)
{
    Filtro filtro;
    EXPECT_TRUE(filtro.IsNone());
    filtro.cancelado = true;
    EXPECT_FALSE(filtro.IsNone());
    EXPECT_EQ(Shown(filtro), "103 108");
}

TEST_F(FiltroShow, AConsumerByNumberOrName)
{
    EXPECT_EQ(OfConsumidor("123.456.789-09"), "102");
    EXPECT_EQ(OfConsumidor("12345678909"), "102");
    EXPECT_EQ(OfConsumidor("12.345.678"), "102 105");
    EXPECT_EQ(OfConsumidor("JOSÉ DA CONCEIÇÃO"), "102");
    EXPECT_EQ(OfConsumidor("Ana"), "108");
    // No name is a number with other marks.
    EXPECT_EQ(OfConsumidor("a1"), "");
    EXPECT_EQ(OfConsumidor("-"), "");
}

TEST_F(FiltroShow, TotalsFromAndUpToBothIncluded)
{
    Filtro filtro;
    filtro.minimo = Amount(2932, 2);
    EXPECT_EQ(Shown(filtro), "101 102 105 110");
    filtro.maximo = Amount(10000, 2);
    EXPECT_EQ(Shown(filtro), "101 102 110");
    filtro.minimo = Amount(2933, 2);
    EXPECT_EQ(Shown(filtro), "101 110");
    filtro.maximo = Amount(9999, 2);
    EXPECT_EQ(Shown(filtro), "110");
    filtro.minimo.reset();
    EXPECT_EQ(Shown(filtro), "102 103 104 108 110 113");
    Write("UPDATE cupom_fiscal SET valor_total = 'x' WHERE cont_coo = 102");
    EXPECT_EQ(Shown(filtro), "103 104 108 110 113");
    filtro.maximo.reset();
    filtro.minimo = Amount(0, 2);
    EXPECT_EQ(Shown(filtro), "101 103 104 105 108 110 113");
}

TEST_F(FiltroShow, TextsOfDocumentsAndTheirRows)
{
    EXPECT_EQ(OfTexto("leitura x"), "112");
    EXPECT_EQ(OfTexto("GÁS DE COZINHA"), "102");
    EXPECT_EQ(OfTexto("7891000315507"), "102");
    EXPECT_EQ(OfTexto("03s05"), "105 111");
    EXPECT_EQ(OfTexto("sangria"), "110 111");
    EXPECT_EQ(OfTexto("cheque"), "105 111");
    EXPECT_EQ(OfTexto("ana lúcia"), "108");
    EXPECT_EQ(OfTexto("nothing of the kind"), "");
}

TEST_F(FiltroShow, DaysFromAndUpToBothIncluded)
{
    Filtro filtro;
    filtro.desde = "2024-03-16";
    EXPECT_EQ(Shown(filtro), "112 113");
    filtro.desde = "2024-03-15";
    filtro.ate = "2024-03-15";
    EXPECT_EQ(Shown(filtro), "101 102 103 104 105 106 107 108 109 110 111");
    filtro.desde = "2024-03-17";
    filtro.ate.clear();
    EXPECT_EQ(Shown(filtro), "");
    filtro.desde.clear();
    filtro.ate = "2024-03-14";
    EXPECT_EQ(Shown(filtro), "");
}

TEST_F(FiltroShow, AllThatIsAskedAtOnce)
{
    Filtro filtro;
    filtro.consumidor = "12345678";
    filtro.minimo = Amount(10000, 2);
    filtro.texto = "forno";
    filtro.ate = "2024-03-15";
    EXPECT_EQ(Shown(filtro), "105");
    EXPECT_EQ(filtro.Described(), "consumer 12345678; total of at least R$ 100,00; with the text "
                                  "forno; up to 15/03/2024");
    filtro.cancelado = true;
    EXPECT_EQ(Shown(filtro), "");
    filtro = {};
    EXPECT_EQ(filtro.Described(), "");
    filtro.cancelado = true;
    filtro.maximo = Amount(10000, 2);
    filtro.desde = "2024-03-15";
    EXPECT_EQ(filtro.Described(), "cancelled receipts; total of at most R$ 100,00; from 15/03/2024 "
                                  "on");
}

} // namespace
} // namespace bancada::show_test
