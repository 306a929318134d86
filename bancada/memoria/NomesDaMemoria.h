// The words and the limits of a memory file.
#pragma once

#include "FiscalCommands.h"
#include "FiscalData/FiscalDataTypes.h"
#include "bancada/registro/Memoria.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace bancada
{

inline constexpr int MAX_CONTADOR = 999999;    // six digits
inline constexpr int MAX_SEQUENCIA_ECF = 999;  // what can be programmed
inline constexpr int MAX_NUMERO_LOJA = 9999;   // likewise
inline constexpr std::size_t MAX_TEXTO = 1499; // bytes; the longest text of the tape

// Each table in the order of its enumeration's values, which count from 0.
inline constexpr std::array<const char*, 5> NOMES_SITUACAO = {"nenhum", "em_itens", "em_pagamento",
                                                              "fechado", "cancelado"};
inline constexpr std::array<const char*, 2> NOMES_TIPO_CUPOM = {"nao_fiscal", "fiscal"};
inline constexpr std::array<const char*, 2> NOMES_OPERACAO = {"desconto", "acrescimo"};
inline constexpr std::array<const char*, 4> NOMES_DOCUMENTO = {"nenhum", "ccd", "estorno_ccd",
                                                               "gerencial"};
inline constexpr std::array<const char*, 3> NOMES_MODO = {"nenhum", "mil", "mit"};
inline constexpr std::array<const char*, 2> NOMES_VINCULACAO = {"com_ccd", "sem_ccd"};
inline constexpr std::array<const char*, BASES_DE_IMPOSTO> NOMES_IMPOSTOS = {"icms", "issqn"};
inline constexpr std::array<const char*, COUNTER_MAX_SIZE> NOMES_CONTADORES = {"coo",
                                                                               "crz",
                                                                               "cro",
                                                                               "ccf",
                                                                               "gnf",
                                                                               "cfd",
                                                                               "cdc",
                                                                               "grg",
                                                                               "nfc",
                                                                               "gfc",
                                                                               "cfc",
                                                                               "ctm",
                                                                               "con",
                                                                               "cer",
                                                                               "ncn",
                                                                               "coo_inseridos",
                                                                               "coo_restantes_ref"};

static_assert(static_cast<int>(ESituacaoCupom::CANCELADO) == NOMES_SITUACAO.size() - 1 &&
                  CUPOM_FISCAL == NOMES_TIPO_CUPOM.size() - 1 &&
                  ACRESCIMO == NOMES_OPERACAO.size() - 1 &&
                  static_cast<int>(EDocumentoAberto::GERENCIAL) == NOMES_DOCUMENTO.size() - 1 &&
                  static_cast<int>(EModoIntervencao::MIT) == NOMES_MODO.size() - 1 &&
                  SEM_CCD == NOMES_VINCULACAO.size() - 1 && NOMES_CONTADORES.back() != nullptr,
              "every value has its name");

// The totalizers of a tax base by position: T1 to T30, F1, ... and S1 to S30, FS1, ...
const std::vector<std::string>& NomesDosTotalizadores(std::size_t baseImposto);

// "1" to `quantidade`.
std::vector<std::string> NumerosAPartirDeUm(int quantidade);

} // namespace bancada
