#include "tests/bancada/arquivo/RandomTape.h"

#include <random>
#include <vector>

namespace bancada::arquivo_test
{
namespace
{

class Writer
{
  public:
    explicit Writer(std::uint64_t seed) : m_random(seed) {}

    std::string Write(int days)
    {
        Line("configura", R"("versao_sb":"01.00.00")");
        At(1, 7, 0);
        const bool inIntervencao = Chance(25);
        Programming(inIntervencao);
        m_semLeitura = !inIntervencao && Chance(25);
        for (int day = 1; day <= days; ++day) {
            Day(day);
        }
        if (Chance(20)) {
            Line("abre_cupom");
            Item();
        }
        return m_tape;
    }

  private:
    int Draw(int least, int most)
    {
        return std::uniform_int_distribution<int>(least, most)(m_random);
    }
    bool Chance(int percent) { return Draw(1, 100) <= percent; }

    void At(int day, int hour, int minute)
    {
        char text[40];
        std::snprintf(text, sizeof text, "2024-03-%02d %02d:%02d:%02d", day, hour, minute,
                      Draw(0, 59));
        m_em = text;
    }

    void Line(const std::string& cmd, const std::string& fields = "")
    {
        m_tape += "{\"cmd\":\"" + cmd + "\"";
        if (!m_em.empty()) {
            m_tape += ",\"em\":\"" + m_em + "\"";
            m_em.clear();
        }
        m_tape += (fields.empty() ? "" : ",") + fields + "}\n";
    }

    // Takes no time, and none of a command's.
    void Directive(const std::string& cmd, const std::string& fields)
    {
        m_tape += "{\"cmd\":\"" + cmd + "\"," + fields + "}\n";
    }

    static std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

    std::string Money(int least, int most)
    {
        const int cents = Draw(least, most);
        std::string digits = std::to_string(cents % 100);
        return Quoted(std::to_string(cents / 100) + "." + (digits.size() < 2 ? "0" : "") + digits);
    }

    void Usuario()
    {
        Line("programa_usuario",
             R"("razao_social":"RAZAO","nome_fantasia":"FANTASIA","endereco":"RUA, 1")");
        Line("programa_cnpj_ie_im",
             R"("cnpj":"11222333000181","ie":"110042490114","im":"","uf":"SP")");
    }

    // The owner may be programmed in the register's first intervention.
    void Programming(bool inIntervencao)
    {
        if (!inIntervencao) {
            Usuario();
        }
        Line("programa_nr_serie",
             R"("marca":"MARCA","modelo":"MODELO","tipo":"ECF-IF","num_serie":"SERIE7")");
        Line("programa_sequencia_ecf", R"("numero":3)");
        Line("insere_aliquota", R"("tributacao":"T","indice":1,"percentual":"18.00")");
        Line("insere_aliquota", R"("tributacao":"T","indice":2,"percentual":"7.00")");
        Line("insere_aliquota", R"("tributacao":"S","indice":3,"percentual":"5.00")");
        Line("insere_aliquota", R"("tributacao":"S","indice":1,"percentual":"2.00")");
        for (const char* codigo : {"F", "I", "N", "FS", "IS", "NS"}) {
            for (int numero = 1; numero <= 3; ++numero) {
                Line("habilita_totalizadores", R"("codigo":")" + std::string(codigo) +
                                                   R"(","numero":)" + std::to_string(numero));
            }
        }
        Line("insere_meio_pagamento", R"("indice":1,"descricao":"DINHEIRO")");
        Line("insere_meio_pagamento", R"("indice":2,"descricao":"CARTAO","vinculado_ccd":true)");
        Line("insere_meio_pagamento", R"("indice":3,"descricao":"VALE","vinculado_ccd":true)");
        Line("insere_reg_ope_nf", R"("indice":3,"descricao":"RECARGA")");
        Line("insere_reg_ope_nf", R"("indice":4,"descricao":"DOACAO")");
        if (inIntervencao) {
            At(1, 7, 10);
            Line("entrada_mit_interno");
            At(1, 7, 20);
            Usuario();
            if (Chance(30)) {
                At(1, 7, 30);
            }
            Line("saida_mit_interno");
        }
    }

    void Item()
    {
        static const std::pair<const char*, int> codes[] = {
            {"T", 1}, {"T", 2}, {"S", 1},  {"S", 3},  {"F", 1},
            {"I", 2}, {"N", 3}, {"FS", 2}, {"IS", 1}, {"NS", 3}};
        const auto& code = codes[Draw(0, 9)];
        static const char* const quantities[] = {"1", "2", "0.5", "1.375", "12.25", "3.000"};
        static const char* const prices[] = {"1.99", "24.90", "0.209", "7", "10.5", "3.333"};
        Line(m_detalhado ? "vende_item_detalhado" : "vende_item",
             R"("codigo":")" + std::to_string(Draw(1, 99999)) + R"(","descricao":"ITEM )" +
                 std::to_string(Draw(1, 99)) + R"(","quantidade":")" + quantities[Draw(0, 5)] +
                 R"(","unidade":"KG","valor_unitario":")" + prices[Draw(0, 5)] +
                 R"(","tributacao":")" + code.first + R"(","indice":)" +
                 std::to_string(code.second) + R"(,"arredonda":)" +
                 (Chance(50) ? "true" : "false"));
    }

    void AjusteItem(int itens)
    {
        const std::string item = R"(,"item":)" + std::to_string(Draw(1, itens));
        const char* operacao = Chance(50) ? "desconto" : "acrescimo";
        Line("efetua_desc_acres_item",
             std::string(R"("operacao":")") + operacao + R"(","tipo":")" +
                 (Chance(50) ? R"(valor","valor":)" : R"(percentual","valor":)") + Money(1, 90) +
                 item);
        // Of two cancelled surcharges of an item the row keeps the last alone.
        if (!m_ajusteCancelado && Chance(25)) {
            m_ajusteCancelado = true;
            Line("cancela_desc_acres_item",
                 std::string(R"("operacao":")") + operacao + "\"" + item);
        }
    }

    void AjusteSubtotal()
    {
        const char* operacao = Chance(50) ? "desconto" : "acrescimo";
        Line("efetua_desc_acres_subtotal",
             std::string(R"("operacao":")") + operacao + R"(","tipo":")" +
                 (Chance(50) ? R"(valor","valor":)" : R"(percentual","valor":)") + Money(1, 190));
        // Of two cancelled surcharges the row keeps the last alone.
        if (!m_subtotalCancelado && Chance(25)) {
            m_subtotalCancelado = true;
            Line("cancela_desc_acres_subtotal", std::string(R"("operacao":")") + operacao + "\"");
            if (Chance(50)) {
                AjusteSubtotal();
            }
        }
    }

    // Pays by amounts until it must be enough: what is too much of a means without change is
    // refused.
    void Pagamentos()
    {
        if (Chance(40)) {
            Line("efetua_pagamento",
                 R"("meio":)" + std::to_string(Draw(2, 3)) + R"(,"valor":)" + Money(1, 300));
        }
        Line("efetua_pagamento", R"("meio":1,"valor":"900.00")");
    }

    void Cupom()
    {
        Line("abre_cupom", Chance(30) ? R"("cpf_cnpj":"52998224725","nome":"MARIA")" : "");
        const int itens = Draw(1, 6);
        m_ajusteCancelado = false;
        m_subtotalCancelado = false;
        m_detalhado = Chance(30);
        for (int i = 0; i < itens; ++i) {
            Item();
        }
        while (Chance(35)) {
            AjusteItem(itens);
        }
        while (Chance(20)) {
            Line("cancela_item", R"("item":)" + std::to_string(Draw(1, itens)));
        }
        if (Chance(40)) {
            AjusteSubtotal();
        }
        if (Chance(8)) {
            Line("cancela_cupom_em_emissao");
            return;
        }
        Pagamentos();
        Line("fecha_cupom", Chance(5) ? R"("adicional":true)" : "");
        Line("cancela_aberto");
        After();
    }

    void Estorno(int origem)
    {
        Line("estorna_meio_pagamento", R"("origem":)" + std::to_string(origem) + R"(,"destino":)" +
                                           std::to_string(origem % 3 + 1) + R"(,"valor":)" +
                                           Money(1, 100));
    }

    void Comprovante()
    {
        Line("abre_ccd", R"("meio":)" + std::to_string(Draw(2, 3)));
        Line("cancela_aberto");
    }

    // What may follow a receipt: a reversal, a voucher, its own cancellation. What has a voucher is
    // not reversed, nor its receipt cancelled, before the voucher is.
    void After()
    {
        if (Chance(10)) {
            int origem = Draw(1, 3);
            Estorno(origem);
            // A second one from the same means takes from what every payment in it holds, which a
            // small one has not: no field has room for what is below zero.
            if (Chance(40)) {
                origem = origem == 1 && Chance(50) ? 1 : origem % 3 + 1;
                Estorno(origem);
            }
        }
        if (Chance(30)) {
            Comprovante();
            if (Chance(30)) {
                Line("abre_estorno_ccd");
                Line("cancela_aberto");
            }
            if (Chance(30)) {
                Estorno(Draw(1, 3));
            }
            if (Chance(10)) {
                Comprovante();
            }
        }
        if (Chance(10)) {
            Line("cancela_cupom");
        }
    }

    void CupomNf()
    {
        Line("abre_cnf", Chance(30) ? R"("cpf_cnpj":"11222333000181","nome":"LOJA")" : "");
        const int itens = Draw(1, 3);
        m_ajusteCancelado = false;
        m_subtotalCancelado = false;
        for (int i = 0; i < itens; ++i) {
            Line("vende_item_nf", R"("totalizador":)" + std::to_string(Draw(3, 4)) +
                                      R"(,"valor":)" + Money(100, 2000));
        }
        if (Chance(40)) {
            AjusteItem(itens);
        }
        if (Chance(40)) {
            AjusteSubtotal();
        }
        if (Chance(10)) {
            Line("cancela_cupom_em_emissao");
            return;
        }
        Pagamentos();
        Line("fecha_cupom_nf");
        Line("cancela_aberto");
        if (Chance(20)) {
            Line("cancela_cupom");
        }
    }

    void Intervencoes(int day)
    {
        if (Chance(20)) {
            Line("entrada_mil_interno");
            Line("saida_mil_interno");
        }
        if (Chance(20)) {
            Line("entrada_mit_interno");
            // Back before the readings, or behind them.
            if (Chance(50)) {
                At(day, 7, 40);
                Line("acerta_relogio");
            } else if (Chance(30)) {
                At(day, 8, 30);
                Line("leitura_x");
                At(day, 8, 15);
                Line("acerta_relogio");
            }
            Line("saida_mit_interno");
        }
    }

    // Rates are programmed anew where nothing was sold at them since the Z reduction.
    void Aliquotas()
    {
        static const char* const rates[] = {"7.00", "12.00", "0.50", "25.00"};
        Line("insere_aliquota", std::string(R"("tributacao":"T","indice":2,"percentual":")") +
                                    rates[Draw(0, 3)] + "\"");
        Line("insere_aliquota", std::string(R"("tributacao":"S","indice":3,"percentual":")") +
                                    rates[Draw(0, 3)] + "\"");
    }

    void Day(int day)
    {
        At(day, 8, 0);
        const bool begins = !(m_semLeitura && day == 1); // with what tells a time
        if (begins) {
            for (int i = Draw(1, 2); i > 0; --i) {
                Line("leitura_x", R"("midia":"impressao")");
            }
            Intervencoes(day);
            if (Chance(30)) {
                Line("leitura_mf");
            }
        }
        if (Chance(25)) {
            Aliquotas();
        }
        if (begins) {
            Line("sangria", R"("operacao":"fundo_troco","valor":)" + Money(1000, 20000));
        }
        for (int i = 0; i < 12; ++i) {
            At(day, 9 + i, Draw(0, 30));
            if (Chance(25)) {
                Directive("configura",
                          std::string(R"("ratear_subtotal":)") + (Chance(50) ? "true" : "false"));
            }
            if (Chance(75)) {
                Cupom();
            } else {
                CupomNf();
            }
        }
        At(day, 21, 40);
        if (Chance(50)) {
            Line("abre_gerencial");
            Line("fecha_ccd_gerencial");
        }
        Line("sangria", R"("operacao":"sangria","valor":)" + Money(1000, 20000));
        if (Chance(30)) {
            Line("reimprime_mfd", R"("coo_inicial":2,"coo_final":5)");
        }
        const bool late = Chance(30);
        At(late ? day + 1 : day, late ? 1 : 23, 10);
        Line("reducao_z", late ? "\"fim\":\"2024-03-" + std::string(day + 1 < 10 ? "0" : "") +
                                     std::to_string(day + 1) + " 01:59:07\""
                               : "");
        if (Chance(10)) {
            Line("reducao_z");
        }
    }

    std::mt19937_64 m_random;
    std::string m_tape;
    std::string m_em;
    bool m_detalhado = false;
    bool m_ajusteCancelado = false; // of the receipt at hand
    bool m_subtotalCancelado = false;
    bool m_semLeitura = false; // the first day begins with a receipt
};

} // namespace

std::string RandomTape(std::uint64_t seed, int days)
{
    return Writer(seed).Write(days);
}

} // namespace bancada::arquivo_test
