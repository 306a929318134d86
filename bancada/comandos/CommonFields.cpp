#include "bancada/comandos/CommonFields.h"

#include "bancada/Messages.h"
#include "bancada/registro/Registro.h"

#include <cstring>

namespace bancada
{

void SiglaField(FieldVisitor& fields, const char* name, char (&sigla)[4],
                std::initializer_list<FieldVisitor::Option> options, const char* doc,
                const char* example)
{
    int chosen = 0;
    fields.Choice(name, chosen, options, Presence::REQUIRED, doc, example);
    for (const FieldVisitor::Option& option : options) {
        if (option.second == chosen) {
            std::strncpy(sigla, option.first, sizeof sigla - 1);
        }
    }
}

void OperacaoField(FieldVisitor& fields, EOperacao& operacao)
{
    ChoiceField(fields, "operacao", operacao, {{"desconto", DESCONTO}, {"acrescimo", ACRESCIMO}},
                Presence::REQUIRED, TrLater("discount or surcharge"), "desconto");
}

void TipoValorField(FieldVisitor& fields, ETipoValor& tipo)
{
    ChoiceField(fields, "tipo", tipo, {{"valor", VALOR}, {"percentual", PERCENTUAL}},
                Presence::REQUIRED, TrLater("what `valor` is: an amount or a percentage"),
                "percentual");
}

void ValorAjusteField(FieldVisitor& fields, Decimal& valor)
{
    fields.Quantity("valor", valor, 2, Presence::REQUIRED,
                    TrLater("amount of money, or percentage when `tipo` says so; up to 2 decimals"),
                    "10.50");
}

BigInt CommandedValor(ETipoValor tipo, const Decimal& valor)
{
    constexpr int PERCENT_DECIMALS = 2;
    const int decimals = tipo == PERCENTUAL ? PERCENT_DECIMALS : Financial::DECIMALS;
    BigInt counted = BigInt::FromInt64(valor.unscaled);
    for (int i = valor.decimals; i < decimals; ++i) {
        counted *= BigInt(10);
    }
    return counted;
}

void MeioPagamentoField(FieldVisitor& fields, const char* name, int& numero, const char* doc)
{
    fields.Integer(name, numero, 1, MAX_MEIOS_PAGAMENTO, Presence::REQUIRED, doc, "1");
}

void ParcelasField(FieldVisitor& fields, int& parcelas)
{
    fields.Integer("parcelas", parcelas, 1, MAX_PARCELAS, Presence::OPTIONAL,
                   TrLater("number of instalments"), "3");
}

void InfoAdicionalField(FieldVisitor& fields, char (&info)[85])
{
    fields.Text("info", info, Presence::OPTIONAL, TrLater("additional information on the payment"),
                "NSU 004512");
}

} // namespace bancada
