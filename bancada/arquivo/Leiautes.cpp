#include "bancada/arquivo/Leiautes.h"

#include <algorithm>
#include <stdexcept>

namespace bancada::arquivo
{
namespace
{

// A record that begins as all but E01 and EAD do.
Leiaute Prefixed(const char* type, const char* meaning, const std::vector<Field>& rest)
{
    Leiaute leiaute{type,
                    meaning,
                    {
                        {"tipo", Form::X, 1, 3},
                        {"numero_serie", Form::X, 4, 23},
                        {"letra_adicional", Form::X, 24, 24},
                        {"modelo", Form::X, 25, 44},
                    }};
    leiaute.fields.insert(leiaute.fields.end(), rest.begin(), rest.end());
    return leiaute;
}

std::vector<Leiaute> MakeLeiautes()
{
    std::vector<Leiaute> all;
    all.push_back({"E01",
                   "identification of the register",
                   {
                       {"tipo", Form::X, 1, 3},
                       {"numero_serie", Form::X, 4, 23},
                       {"letra_adicional", Form::X, 24, 24},
                       {"tipo_ecf", Form::X, 25, 31},
                       {"marca", Form::X, 32, 51},
                       {"modelo", Form::X, 52, 71},
                       {"versao_sb", Form::X, 72, 81},
                       {"data_sb", Form::D, 82, 89},
                       {"hora_sb", Form::H, 90, 95},
                       {"numero_caixa", Form::N, 96, 98},
                       {"cnpj", Form::N, 99, 112},
                       {"comando", Form::X, 113, 115},
                       {"crz_inicial", Form::N, 116, 121},
                       {"crz_final", Form::N, 122, 127},
                       {"data_inicial", Form::D, 128, 135},
                       {"data_final", Form::D, 136, 143},
                       {"versao_biblioteca", Form::X, 144, 151},
                       {"versao_ato", Form::X, 152, 166},
                   }});
    all.push_back(Prefixed("E02", "owner",
                           {
                               {"cnpj", Form::N, 45, 58},
                               {"ie", Form::X, 59, 72},
                               {"nome", Form::X, 73, 112},
                               {"endereco", Form::X, 113, 232},
                               {"data_cadastro", Form::D, 233, 240},
                               {"hora_cadastro", Form::H, 241, 246},
                               {"cro", Form::N, 247, 252},
                               {"gt", Form::N, 253, 270},
                               {"usuario", Form::N, 271, 272, Key::YES},
                           }));
    all.push_back(Prefixed("E03", "service provider",
                           {
                               {"numero", Form::N, 45, 46, Key::YES},
                               {"data", Form::D, 47, 54, Key::YES},
                               {"hora", Form::H, 55, 60, Key::YES},
                               {"cnpj", Form::N, 61, 74},
                               {"ie", Form::X, 75, 88},
                               {"vendas", Form::N, 89, 106},
                           }));
    all.push_back(Prefixed("E04", "former owner",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"data", Form::D, 47, 54, Key::YES},
                               {"hora", Form::H, 55, 60, Key::YES},
                               {"cnpj", Form::N, 61, 74},
                               {"ie", Form::X, 75, 88},
                               {"cro", Form::N, 89, 94},
                               {"gt", Form::N, 95, 112},
                           }));
    all.push_back(Prefixed("E05", "cipher of the grand total",
                           {
                               {"cnpj", Form::N, 45, 58, Key::YES},
                               {"data", Form::D, 59, 66, Key::YES},
                               {"hora", Form::H, 67, 72, Key::YES},
                               {"letras", Form::X, 73, 82},
                           }));
    all.push_back(Prefixed("E06", "currency symbol",
                           {
                               {"cnpj", Form::N, 45, 58, Key::YES},
                               {"data", Form::D, 59, 66, Key::YES},
                               {"hora", Form::H, 67, 72, Key::YES},
                               {"simbolo", Form::X, 73, 76},
                           }));
    all.push_back(Prefixed("E07", "version of the basic software",
                           {
                               {"versao_sb", Form::X, 45, 54, Key::YES},
                               {"data", Form::D, 55, 62},
                           }));
    all.push_back(Prefixed("E08", "detail memory",
                           {
                               {"cnpj", Form::N, 45, 58, Key::YES},
                               {"numero_serie_mfd", Form::X, 59, 78, Key::YES},
                           }));
    all.push_back(Prefixed("E09", "technical intervention",
                           {
                               {"cro", Form::N, 45, 50, Key::YES},
                               {"data", Form::D, 51, 58},
                               {"hora", Form::H, 59, 64},
                               {"perda_dados", Form::X, 65, 65},
                           }));
    all.push_back(Prefixed("E10", "reprint of the detail tape",
                           {
                               {"cfd", Form::N, 45, 50, Key::YES},
                               {"data", Form::D, 51, 58},
                               {"coo_inicial", Form::N, 59, 64},
                               {"coo_final", Form::N, 65, 70},
                               {"cnpj", Form::N, 71, 84},
                           }));
    all.push_back(Prefixed("E11", "counters",
                           {
                               {"crz", Form::N, 45, 50},
                               {"cro", Form::N, 51, 56},
                               {"coo", Form::N, 57, 62},
                               {"gnf", Form::N, 63, 68},
                               {"ccf", Form::N, 69, 74},
                               {"cvc", Form::N, 75, 80},
                               {"cbp", Form::N, 81, 86},
                               {"grg", Form::N, 87, 92},
                               {"cmv", Form::N, 93, 98},
                               {"cfd", Form::N, 99, 104},
                               {"gt", Form::N, 105, 122},
                               {"data_extracao", Form::D, 123, 130},
                               {"hora_extracao", Form::H, 131, 136},
                           }));
    all.push_back(Prefixed("E12", "Z reduction",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"crz", Form::N, 47, 52, Key::YES},
                               {"coo", Form::N, 53, 58},
                               {"cro", Form::N, 59, 64},
                               {"data_movimento", Form::D, 65, 72},
                               {"data_emissao", Form::D, 73, 80},
                               {"hora_emissao", Form::H, 81, 86},
                               {"venda_bruta", Form::N, 87, 100},
                               {"desconto_issqn", Form::X, 101, 101},
                           }));
    all.push_back(Prefixed("E13", "totalizer of a Z reduction",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"crz", Form::N, 47, 52, Key::YES},
                               {"totalizador", Form::X, 53, 59, Key::YES},
                               {"valor", Form::N, 60, 72},
                           }));
    all.push_back(Prefixed("E14", "fiscal receipt",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"ccf", Form::N, 47, 52, Key::YES},
                               {"coo", Form::N, 53, 58},
                               {"data_abertura", Form::D, 59, 66},
                               {"subtotal", Form::N, 67, 80},
                               {"desconto", Form::N, 81, 93},
                               {"tipo_desconto", Form::X, 94, 94},
                               {"acrescimo", Form::N, 95, 107},
                               {"tipo_acrescimo", Form::X, 108, 108},
                               {"total", Form::N, 109, 122},
                               {"cancelado", Form::X, 123, 123},
                               {"acrescimo_cancelado", Form::N, 124, 136},
                               {"ordem", Form::X, 137, 137},
                               {"nome", Form::X, 138, 177},
                               {"cpf_cnpj", Form::N, 178, 191},
                           }));
    all.push_back(Prefixed("E15", "item of a fiscal receipt",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"coo", Form::N, 47, 52},
                               {"ccf", Form::N, 53, 58, Key::YES},
                               {"item", Form::N, 59, 61, Key::YES},
                               {"codigo", Form::X, 62, 75},
                               {"descricao", Form::X, 76, 175},
                               {"quantidade", Form::N, 176, 182},
                               {"unidade", Form::X, 183, 185},
                               {"valor_unitario", Form::N, 186, 193},
                               {"desconto", Form::N, 194, 201},
                               {"acrescimo", Form::N, 202, 209},
                               {"total", Form::N, 210, 223},
                               {"totalizador", Form::X, 224, 230},
                               {"cancelado", Form::X, 231, 231},
                               {"quantidade_cancelada", Form::N, 232, 238},
                               {"valor_cancelado", Form::N, 239, 251},
                               {"acrescimo_cancelado", Form::N, 252, 264},
                               {"arredonda_trunca", Form::X, 265, 265},
                               {"decimais_quantidade", Form::N, 266, 266},
                               {"decimais_valor", Form::N, 267, 267},
                           }));
    all.push_back(Prefixed("E16", "other document",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"coo", Form::N, 47, 52, Key::YES},
                               {"gnf", Form::N, 53, 58},
                               {"grg", Form::N, 59, 64},
                               {"cdc", Form::N, 65, 68},
                               {"crz", Form::N, 69, 74},
                               {"simbolo", Form::X, 75, 76},
                               {"data_fim", Form::D, 77, 84},
                               {"hora_fim", Form::H, 85, 90},
                           }));
    for (const char* type : {"E17", "E18"}) {
        const bool means = std::string_view(type) == "E18";
        all.push_back(Prefixed(type,
                               means ? "payment means of a Z reduction"
                                     : "non-fiscal totalizer of a Z reduction",
                               {
                                   {"usuario", Form::N, 45, 46, Key::YES},
                                   {"crz", Form::N, 47, 52, Key::YES},
                                   {"nome", Form::X, 53, 67, Key::YES},
                                   {"valor", Form::N, 68, 80},
                               }));
    }
    all.push_back(Prefixed("E19", "non-fiscal receipt",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"coo", Form::N, 47, 52, Key::YES},
                               {"gnf", Form::N, 53, 58},
                               {"data_abertura", Form::D, 59, 66},
                               {"subtotal", Form::N, 67, 80},
                               {"desconto", Form::N, 81, 93},
                               {"tipo_desconto", Form::X, 94, 94},
                               {"acrescimo", Form::N, 95, 107},
                               {"tipo_acrescimo", Form::X, 108, 108},
                               {"total", Form::N, 109, 122},
                               {"cancelado", Form::X, 123, 123},
                               {"acrescimo_cancelado", Form::N, 124, 136},
                               {"ordem", Form::X, 137, 137},
                               {"nome", Form::X, 138, 177},
                               {"cpf_cnpj", Form::N, 178, 191},
                           }));
    all.push_back(Prefixed("E20", "item of a non-fiscal receipt",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"coo", Form::N, 47, 52, Key::YES},
                               {"gnf", Form::N, 53, 58},
                               {"item", Form::N, 59, 61, Key::YES},
                               {"nome", Form::X, 62, 76},
                               {"valor", Form::N, 77, 89},
                               {"desconto", Form::N, 90, 102},
                               {"acrescimo", Form::N, 103, 115},
                               {"total", Form::N, 116, 128},
                               {"cancelado", Form::X, 129, 129},
                               {"acrescimo_cancelado", Form::N, 130, 142},
                           }));
    all.push_back(Prefixed("E21", "payment",
                           {
                               {"usuario", Form::N, 45, 46, Key::YES},
                               {"coo", Form::N, 47, 52, Key::YES},
                               {"ccf", Form::N, 53, 58},
                               {"gnf", Form::N, 59, 64},
                               {"meio", Form::X, 65, 79},
                               {"valor", Form::N, 80, 92},
                               {"estornado", Form::X, 93, 93},
                               {"valor_estornado", Form::N, 94, 106},
                           }));
    all.push_back({"EAD",
                   "signature",
                   {
                       {"tipo", Form::X, 1, 3},
                       {"assinatura", Form::X, 4, 259},
                   }});
    return all;
}

} // namespace

bool Leiaute::IsPrefixed() const
{
    return fields.size() > 4 && fields[3].Begin() + fields[3].Size() == PREFIX_WIDTH;
}

std::size_t Leiaute::IndexOf(std::string_view name) const
{
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (name == fields[i].name) {
            return i;
        }
    }
    throw std::logic_error(std::string(type) + " has no field " + std::string(name));
}

const std::vector<Leiaute>& Leiautes()
{
    static const std::vector<Leiaute> all = MakeLeiautes();
    return all;
}

const Leiaute* FindLeiaute(std::string_view type)
{
    const std::vector<Leiaute>& all = Leiautes();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Leiaute& leiaute) { return type == leiaute.type; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace bancada::arquivo
