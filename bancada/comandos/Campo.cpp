#include "bancada/comandos/Campo.h"

#include "bancada/registro/Registro.h"

#include <cstring>

namespace bancada
{

void CampoSigla(FieldVisitor& campos, const char* nome, char (&sigla)[4],
                std::initializer_list<FieldVisitor::Option> opcoes, const char* doc,
                const char* exemplo)
{
    int escolhida = 0;
    campos.Choice(nome, escolhida, opcoes, Presence::REQUIRED, doc, exemplo);
    for (const FieldVisitor::Option& opcao : opcoes) {
        if (opcao.second == escolhida) {
            std::strncpy(sigla, opcao.first, sizeof sigla - 1);
        }
    }
}

void CampoOperacao(FieldVisitor& campos, EOperacao& operacao)
{
    CampoEscolha(campos, "operacao", operacao, {{"desconto", DESCONTO}, {"acrescimo", ACRESCIMO}},
                 Presence::REQUIRED, "discount or surcharge", "desconto");
}

void CampoTipoValor(FieldVisitor& campos, ETipoValor& tipo)
{
    CampoEscolha(campos, "tipo", tipo, {{"valor", VALOR}, {"percentual", PERCENTUAL}},
                 Presence::REQUIRED, "what `valor` is: an amount or a percentage", "percentual");
}

void CampoValorAjuste(FieldVisitor& campos, Decimal& valor)
{
    campos.Quantity("valor", valor, 2, Presence::REQUIRED,
                    "amount of money, or percentage when `tipo` says so; up to 2 decimals",
                    "10.50");
}

BigInt ValorComandado(ETipoValor tipo, const Decimal& valor)
{
    constexpr int CASAS_PERCENTUAL = 2;
    const int casas = tipo == PERCENTUAL ? CASAS_PERCENTUAL : Financial::DECIMALS;
    BigInt contado = BigInt::FromInt64(valor.unscaled);
    for (int i = valor.casas; i < casas; ++i) {
        contado *= BigInt(10);
    }
    return contado;
}

void CampoMeioPagamento(FieldVisitor& campos, const char* nome, int& numero, const char* doc)
{
    campos.Integer(nome, numero, 1, MAX_MEIOS_PAGAMENTO, Presence::REQUIRED, doc, "1");
}

void CampoParcelas(FieldVisitor& campos, int& parcelas)
{
    campos.Integer("parcelas", parcelas, 1, 99, Presence::OPTIONAL, "number of instalments", "3");
}

void CampoInfoAdicional(FieldVisitor& campos, char (&info)[85])
{
    campos.Text("info", info, Presence::OPTIONAL, "additional information on the payment",
                "NSU 004512");
}

} // namespace bancada
