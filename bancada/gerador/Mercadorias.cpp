#include "bancada/gerador/Mercadorias.h"

#include <numeric>

namespace bancada
{

const std::vector<Mercadoria>& Mercadorias()
{
    static const std::vector<Mercadoria> list = {
        {"101", "PAO FRANCES", "KG", 15900, false, true, "I", 1, 60},
        {"102", "BANANA NANICA", "KG", 5490, false, true, "I", 1, 45},
        {"103", "TOMATE ITALIANO", "KG", 7990, false, true, "I", 1, 35},
        {"104", "BATATA LAVADA", "KG", 6490, false, true, "I", 1, 30},
        {"105", "CEBOLA", "KG", 5990, false, true, "I", 1, 25},
        {"106", "QUEIJO MUSSARELA FATIADO", "KG", 44900, false, true, "T", 3, 25},
        {"107", "PRESUNTO COZIDO FATIADO", "KG", 32900, false, true, "T", 3, 20},
        {"108", "MACA GALA", "KG", 9980, false, true, "I", 1, 20},
        {"109", "LARANJA PERA", "KG", 4290, false, true, "I", 1, 20},
        {"110", "ALHO", "KG", 29900, false, true, "I", 1, 8},
        {"111", "CARNE MOIDA", "KG", 36900, false, true, "T", 3, 18},
        {"112", "FILE DE FRANGO", "KG", 22900, false, true, "T", 3, 18},
        {"113", "COSTELA BOVINA", "KG", 27900, false, true, "T", 3, 8},
        {"114", "ARROZ A GRANEL", "KG", 4899, true, true, "T", 3, 6},
        {"115", "FEIJAO A GRANEL", "KG", 8349, true, true, "T", 3, 6},
        {"116", "RACAO A GRANEL", "KG", 12495, true, true, "T", 1, 4},
        {"117", "AZEITONA VERDE", "KG", 34900, false, true, "T", 1, 4},
        {"789600010060", "LEITE INTEGRAL 1L", "UN", 5190, false, false, "I", 1, 50},
        {"789600020011", "ARROZ TIPO 1 5KG", "UN", 27900, false, false, "T", 3, 18},
        {"789600020028", "FEIJAO CARIOCA 1KG", "UN", 8490, false, false, "T", 3, 20},
        {"789600020035", "ACUCAR REFINADO 1KG", "UN", 4990, false, false, "T", 3, 20},
        {"789600020042", "CAFE TORRADO 500G", "UN", 17900, false, false, "T", 3, 22},
        {"789600020059", "OLEO DE SOJA 900ML", "UN", 7290, false, false, "T", 3, 20},
        {"789600020066", "MACARRAO ESPAGUETE 500G", "UN", 4190, false, false, "T", 3, 22},
        {"789600020073", "FARINHA DE TRIGO 1KG", "UN", 5290, false, false, "T", 3, 14},
        {"789600020080", "SAL REFINADO 1KG", "UN", 2490, false, false, "T", 3, 8},
        {"789600020097", "MOLHO DE TOMATE 340G", "UN", 3290, false, false, "T", 2, 20},
        {"789600020103", "MANTEIGA COM SAL 200G", "UN", 11900, false, false, "T", 2, 14},
        {"789600020110", "IOGURTE MORANGO 170G", "UN", 3490, false, false, "T", 2, 16},
        {"789600020127", "BISCOITO RECHEADO 130G", "UN", 2990, false, false, "T", 1, 22},
        {"789600020134", "CHOCOLATE AO LEITE 90G", "UN", 6990, false, false, "T", 1, 18},
        {"789600020141", "OVOS BRANCOS DUZIA", "DZ", 12900, false, false, "I", 1, 22},
        {"789600030019", "REFRIGERANTE COLA 2L", "UN", 9990, false, false, "F", 1, 28},
        {"789600030026", "REFRIGERANTE LARANJA 2L", "UN", 7990, false, false, "F", 1, 16},
        {"789600030033", "CERVEJA PILSEN LATA 350ML", "UN", 3790, false, false, "F", 1, 30},
        {"789600030040", "AGUA MINERAL 500ML", "UN", 2500, false, false, "F", 1, 22},
        {"789600030057", "SUCO DE UVA 1L", "UN", 9490, false, false, "F", 1, 10},
        {"789600030064", "SORVETE NAPOLITANO 1,5L", "UN", 24900, false, false, "F", 1, 6},
        {"789600040018", "SABAO EM PO 800G", "UN", 12990, false, false, "T", 1, 14},
        {"789600040025", "DETERGENTE NEUTRO 500ML", "UN", 2590, false, false, "T", 1, 20},
        {"789600040032", "AGUA SANITARIA 1L", "UN", 3990, false, false, "T", 1, 12},
        {"789600040049", "PAPEL HIGIENICO 12 ROLOS", "PC", 19900, false, false, "T", 1, 16},
        {"789600040056", "SABONETE 85G", "UN", 2290, false, false, "T", 1, 18},
        {"789600040063", "CREME DENTAL 90G", "UN", 4490, false, false, "T", 1, 16},
        {"789600040070", "SHAMPOO 325ML", "UN", 14900, false, false, "T", 1, 8},
        {"789600040087", "PILHA ALCALINA AA 4UN", "CT", 22900, false, false, "T", 1, 4},
        {"789600050017", "REVISTA SEMANAL", "UN", 16900, false, false, "N", 1, 5},
        {"789600050024", "JORNAL DO DIA", "UN", 5000, false, false, "N", 1, 8},
        {"201", "ENTREGA EM DOMICILIO", "UN", 8000, false, false, "S", 1, 4},
    };
    return list;
}

const Mercadoria& DrawMercadoria(Draw& draw)
{
    static const auto total =
        std::accumulate(Mercadorias().begin(), Mercadorias().end(), std::uint64_t{0},
                        [](std::uint64_t sum, const Mercadoria& mercadoria) {
                            return sum + static_cast<std::uint64_t>(mercadoria.weight);
                        });
    auto drawn = static_cast<std::int64_t>(draw.Below(total));
    for (const Mercadoria& mercadoria : Mercadorias()) {
        if (drawn < mercadoria.weight) {
            return mercadoria;
        }
        drawn -= mercadoria.weight;
    }
    return Mercadorias().back();
}

std::string CodigoDeBarras(const std::string& codigo)
{
    if (codigo.size() != 12) {
        return codigo;
    }
    int sum = 0;
    for (std::size_t i = 0; i < codigo.size(); ++i) {
        sum += (codigo[i] - '0') * (i % 2 == 0 ? 1 : 3);
    }
    return codigo + static_cast<char>('0' + (10 - sum % 10) % 10);
}

} // namespace bancada
