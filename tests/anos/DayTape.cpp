#include "tests/anos/DayTape.h"

#include "RtcClasses.h"

#include <random>

namespace anos
{
namespace
{

constexpr UINT32 FIRST_DAY = 1767225600; // 2026-01-01
constexpr UINT32 DAY_SECONDS = 86400;

constexpr char PROGRAMMING[] =
    R"({"cmd":"configura","aplicativo":"CAIXA 2.10","versao_sb":"01.00.00","ratear_subtotal":true}
{"cmd":"programa_nr_serie","em":"2026-01-01 07:40:00","marca":"BANCADA","modelo":"REGISTRO 1","tipo":"ECF-IF","num_serie":"BN0100260100000010"}
{"cmd":"programa_sequencia_ecf","numero":1}
{"cmd":"programa_usuario","razao_social":"MERCEARIA DA ESQUINA LTDA","nome_fantasia":"MERCEARIA DA ESQUINA","endereco":"RUA DAS FLORES, 123"}
{"cmd":"programa_cnpj_ie_im","cnpj":"50831264000165","ie":"0623079040081","im":"987654","uf":"MG"}
{"cmd":"insere_aliquota","tributacao":"T","indice":1,"percentual":"18.00"}
{"cmd":"insere_aliquota","tributacao":"T","indice":2,"percentual":"7.00"}
{"cmd":"habilita_totalizadores","codigo":"F","numero":1}
{"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"}
{"cmd":"insere_meio_pagamento","indice":2,"descricao":"CARTAO","vinculado_ccd":true}
{"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA CELULAR"}
)";

// Draws that are the same with every standard library: its distributions need not be.
class Day
{
  public:
    Day(int day, std::uint32_t seed) : m_chance(seed * 69069u + static_cast<std::uint32_t>(day)) {}

    std::string text;

    void Line(const std::string& cmd, const std::string& fields = "")
    {
        text += R"({"cmd":")" + cmd + '"' + fields + "}\n";
    }

    void Begin(const std::string& instant)
    {
        Line("sangria", R"(,"em":")" + instant + R"(","operacao":"fundo_troco","valor":"100.00")");
    }

    // `em` is the field of the instant, or empty: as the clock goes.
    void Reprint(const std::string& em, int lastCoo)
    {
        const std::uint32_t first = 1 + Below(static_cast<std::uint32_t>(lastCoo));
        Line("reimprime_mfd", em + R"(,"coo_inicial":)" + std::to_string(first) +
                                  R"(,"coo_final":)" + std::to_string(first));
    }

    void Document()
    {
        const std::uint32_t kind = Below(100);
        if (kind < 62) {
            Receipt(kind);
        } else if (kind < 68) {
            Line("abre_cnf");
            Line("vende_item_nf", R"(,"totalizador":3,"valor":"20.00")");
            Line("efetua_pagamento", R"(,"meio":1,"valor":"20.00")");
            Line("fecha_cupom_nf");
        } else if (kind < 72) {
            Line("sangria", R"(,"operacao":"sangria","valor":"1.50")");
        } else if (kind < 78) {
            Line("abre_gerencial");
            Line("fecha_ccd_gerencial");
        } else {
            Line("leitura_x");
        }
    }

  private:
    std::uint32_t Below(std::uint32_t end) { return static_cast<std::uint32_t>(m_chance()) % end; }

    void Item()
    {
        const std::uint32_t code = Below(400);
        const char* const rates[] = {R"("T","indice":1)", R"("T","indice":2)", R"("F","indice":1)"};
        Line("vende_item", R"(,"codigo":")" + std::to_string(1000 + code) +
                               R"(","descricao":"ARTIGO )" + std::to_string(code) +
                               R"(","quantidade":")" + std::to_string(1 + Below(3)) +
                               R"(","valor_unitario":")" + std::to_string(2 + code % 30) +
                               R"(.90","tributacao":)" + rates[code % 3]);
    }

    void Receipt(std::uint32_t kind)
    {
        Line("abre_cupom");
        for (std::uint32_t items = 1 + Below(3) / 2; items > 0; --items) {
            Item();
        }
        if (kind < 6) {
            Line("efetua_desc_acres_item",
                 R"(,"operacao":"desconto","tipo":"percentual","valor":"10.00")");
        } else if (kind < 10) {
            Line("efetua_desc_acres_subtotal",
                 R"(,"operacao":"acrescimo","tipo":"valor","valor":"1.00")");
        } else if (kind < 14) {
            Line("cancela_cupom_em_emissao");
            return;
        }
        if (kind % 5 == 0) {
            Line("efetua_pagamento", R"(,"meio":2,"valor":"1.00")");
        }
        Line("efetua_pagamento", R"(,"meio":1,"valor":"300.00")");
        Line("fecha_cupom");
        if (kind < 18) {
            Line("cancela_cupom");
        }
    }

    std::mt19937 m_chance;
};

std::string Instant(int day)
{
    const RtcAbsoluteTime opens(FIRST_DAY + static_cast<UINT32>(day) * DAY_SECONDS + 8 * 3600);
    char instant[32];
    return opens.ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", instant);
}

} // namespace

std::string DayTape(int day, int documents, std::uint32_t seed)
{
    Day tape(day, seed);
    if (day == 0) {
        tape.text = PROGRAMMING;
    }
    tape.Begin(Instant(day));
    // The float and the Z reduction are documents too.
    for (int i = 2; i < documents; ++i) {
        tape.Document();
    }
    tape.Line("reducao_z");
    return tape.text;
}

std::string ReprintTape(int day, std::int64_t reprints, int lastCoo, std::uint32_t seed)
{
    Day tape(day, seed);
    for (std::int64_t i = 0; i < reprints; ++i) {
        tape.Reprint(i == 0 ? R"(,"em":")" + Instant(day) + '"' : "", lastCoo);
    }
    return tape.text;
}

} // namespace anos
