// Tape fields that several commands have.
#pragma once

#include "FiscalCommands.h"
#include "bancada/fita/FieldVisitor.h"
#include "bancada/registro/Decimal.h"

#include <initializer_list>

namespace bancada
{

// A field that is one of several words, kept in an enumeration of the firmware.
template <class Enum>
void CampoEscolha(FieldVisitor& campos, const char* nome, Enum& valor,
                  std::initializer_list<FieldVisitor::Option> opcoes, Presence presenca,
                  const char* doc, const char* exemplo)
{
    int escolhido = valor;
    campos.Choice(nome, escolhido, opcoes, presenca, doc, exemplo);
    valor = static_cast<Enum>(escolhido);
}

// A required field that is one of several words, kept as the word itself. The options are numbered
// from 0.
void CampoSigla(FieldVisitor& campos, const char* nome, char (&sigla)[4],
                std::initializer_list<FieldVisitor::Option> opcoes, const char* doc,
                const char* exemplo);

// Discount or surcharge.
void CampoOperacao(FieldVisitor& campos, EOperacao& operacao);

// How an adjustment's value is meant, and the value: both kinds are written alike.
void CampoTipoValor(FieldVisitor& campos, ETipoValor& tipo);
void CampoValorAjuste(FieldVisitor& campos, Decimal& valor);
// The value as the command carries it: money counted as Financial does, or hundredths of a percent.
BigInt ValorComandado(ETipoValor tipo, const Decimal& valor);

// Number of a payment means, from 1.
void CampoMeioPagamento(FieldVisitor& campos, const char* nome, int& numero, const char* doc);

void CampoParcelas(FieldVisitor& campos, int& parcelas);
void CampoInfoAdicional(FieldVisitor& campos, char (&info)[85]);

} // namespace bancada
