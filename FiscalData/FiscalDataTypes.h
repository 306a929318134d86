// The indexes by which the fiscal data model is asked: counters, accounting bases, tax bases and
// the type of the open receipt.
#pragma once

#include <cstdint>

// The fiscal counters.
enum FISCALDATA_COUNTER_INDEX : std::int32_t {
    COUNTER_COO = 0, // order of operation: the document number
    COUNTER_CRZ = 1, // Z reductions
    COUNTER_CRO = 2, // restarts of operation
    COUNTER_CCF = 3, // fiscal receipts
    COUNTER_GNF = 4, // general non-fiscal operations
    COUNTER_CFD = 5, // detail-tape reprints
    COUNTER_CDC = 6, // credit/debit vouchers
    COUNTER_GRG = 7, // management reports
    COUNTER_NFC = 8,
    COUNTER_GFC = 9,
    COUNTER_CFC = 10,
    COUNTER_CTM = 11,
    COUNTER_CON = 12,
    COUNTER_CER = 13,
    COUNTER_NCN = 14,
    COUNTER_COO_INSERIDOS = 15,
    COUNTER_COO_RESTANTES_REF = 16,
    COUNTER_MAX_SIZE = 17, // how many counters there are; not a counter
};

// The accounting bases: the live day's and those of the day that the last Z reduction closed.
enum BASE_CONTABIL_INDEXES : std::int32_t {
    BC_IND_FISCAL = 0,
    BC_IND_NAO_FISCAL = 1,
    BC_IND_FISCAL_ULTIMA_RZ = 2,
    BC_IND_NAO_FISCAL_ULTIMA_RZ = 3,
};

// The tax bases of a fiscal accounting base.
enum BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES : std::int32_t {
    BC_IND_FISCAL_BI_IND_ICMS = 0,
    BC_IND_FISCAL_BI_IND_ISSQN = 1,
};

// The two sides of a non-fiscal accounting base.
enum BASE_CONTABIL_NAO_FISCAL_BASE_IMPOSTO_INDEXES : std::int32_t {
    BC_IND_NAO_FISCAL_BI_ENTRADA = 0,
    BC_IND_NAO_FISCAL_BI_SAIDA = 1,
};

// The type of the open receipt.
enum FD_TIPO_CUPOM : std::int32_t {
    COMPROVANTE_NAO_FISCAL = 0,
    CUPOM_FISCAL = 1,
};
