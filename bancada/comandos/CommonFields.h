// Tape fields that several commands have.
#pragma once

#include "FiscalCommands.h"
#include "bancada/registro/Decimal.h"
#include "bancada/tape/FieldVisitor.h"

#include <initializer_list>

namespace bancada
{

// A field that is one of several words, kept in an enumeration of the firmware.
template <class Enum>
void ChoiceField(FieldVisitor& fields, const char* name, Enum& valor,
                 std::initializer_list<FieldVisitor::Option> options, Presence presence,
                 const char* doc, const char* example)
{
    int chosen = valor;
    fields.Choice(name, chosen, options, presence, doc, example);
    valor = static_cast<Enum>(chosen);
}

// A required field that is one of several words, kept as the word itself. The options are numbered
// from 0.
void SiglaField(FieldVisitor& fields, const char* name, char (&sigla)[4],
                std::initializer_list<FieldVisitor::Option> options, const char* doc,
                const char* example);

// Discount or surcharge.
void OperacaoField(FieldVisitor& fields, EOperacao& operacao);

// How an adjustment's value is meant, and the value: both kinds are written alike.
void TipoValorField(FieldVisitor& fields, ETipoValor& tipo);
void ValorAjusteField(FieldVisitor& fields, Decimal& valor);
// The value as the command carries it: money counted as Financial does, or hundredths of a percent.
BigInt CommandedValor(ETipoValor tipo, const Decimal& valor);

// Number of a payment means, from 1.
void MeioPagamentoField(FieldVisitor& fields, const char* name, int& numero, const char* doc);

void ParcelasField(FieldVisitor& fields, int& parcelas);
void InfoAdicionalField(FieldVisitor& fields, char (&info)[85]);

} // namespace bancada
