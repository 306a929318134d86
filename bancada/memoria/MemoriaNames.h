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

// Each table in the order of its enumeration's values, which count from 0.
inline constexpr std::array<const char*, 5> SITUACAO_NAMES = {"nenhum", "em_itens", "em_pagamento",
                                                              "fechado", "cancelado"};
inline constexpr std::array<const char*, 2> TIPO_CUPOM_NAMES = {"nao_fiscal", "fiscal"};
inline constexpr std::array<const char*, 2> OPERACAO_NAMES = {"desconto", "acrescimo"};
inline constexpr std::array<const char*, 4> DOCUMENTO_NAMES = {"nenhum", "ccd", "estorno_ccd",
                                                               "gerencial"};
inline constexpr std::array<const char*, 3> MODO_NAMES = {"nenhum", "mil", "mit"};
inline constexpr std::array<const char*, 2> VINCULACAO_NAMES = {"com_ccd", "sem_ccd"};
inline constexpr std::array<const char*, BASES_DE_IMPOSTO> IMPOSTO_NAMES = {"icms", "issqn"};
inline constexpr std::array<const char*, COUNTER_MAX_SIZE> CONTADOR_NAMES = {"coo",
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

static_assert(static_cast<int>(ESituacaoCupom::CANCELADO) == SITUACAO_NAMES.size() - 1 &&
                  CUPOM_FISCAL == TIPO_CUPOM_NAMES.size() - 1 &&
                  ACRESCIMO == OPERACAO_NAMES.size() - 1 &&
                  static_cast<int>(EDocumentoAberto::GERENCIAL) == DOCUMENTO_NAMES.size() - 1 &&
                  static_cast<int>(EModoIntervencao::MIT) == MODO_NAMES.size() - 1 &&
                  SEM_CCD == VINCULACAO_NAMES.size() - 1 && CONTADOR_NAMES.back() != nullptr,
              "every value has its name");

// The totalizers of a tax base by position: T1 to T30, F1, ... and S1 to S30, FS1, ...
const std::vector<std::string>& TotalizadorNames(std::size_t baseImposto);

// "1" to `count`.
template <int count>
const std::vector<std::string>& NumbersFromOne()
{
    static const std::vector<std::string> numbers = [] {
        std::vector<std::string> all;
        for (int number = 1; number <= count; ++number) {
            all.push_back(std::to_string(number));
        }
        return all;
    }();
    return numbers;
}

} // namespace bancada
