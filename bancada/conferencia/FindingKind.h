// The kinds of findings.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace bancada::conferencia
{

enum class FindingKind : std::uint8_t {
    // The counters of the documents.
    COO_AUSENTE,
    COO_REPETIDO,
    CANCELAMENTO_AUSENTE,
    CCF_AUSENTE,
    CCF_REPETIDO,
    GNF_AUSENTE,
    GNF_REPETIDO,
    CRZ_AUSENTE,
    CRZ_REPETIDO,
    CRZ_DOCUMENTO,
    DOCUMENTO_SEM_LINHA,
    COO_REUTILIZADO,
    // Rows whose document is missing.
    ITEM_SEM_CUPOM,
    ITEM_NF_SEM_CUPOM,
    PAGAMENTO_SEM_CUPOM,
    ITEM_AUSENTE,
    NF_SEM_DOCUMENTO,
    DOCUMENTO_SEM_NF,
    REDUCAO_SEM_DOCUMENTO,
    DOCUMENTO_SEM_REDUCAO,
    TOTALIZADOR_SEM_REDUCAO,
    MEIO_SEM_REDUCAO,
    REDUCAO_INCOMPLETA,
    CUPOM_SEM_REDUCAO,
    // Rows that come twice.
    CHAVE_REPETIDA,
    // Receipts.
    CUPOM_ABERTO,
    CUPOM_ADICIONAL,
    CUPOM_TOTAL,
    CUPOM_ITENS,
    CUPOM_PAGAMENTOS,
    ITEM_TOTAL,
    PERCENTUAL,
    CASAS_DECIMAIS,
    CUPOM_COLUNAS,
    CUPOM_CHAVE,
    CUPOM_ASSINATURA,
    ASSINATURA_NAO_CONFERIDA,
    PAGAMENTO_COLUNAS,
    NF_ABERTO,
    NF_TOTAL,
    NF_ITENS,
    NF_PAGAMENTOS,
    ITEM_NF_TOTAL,
    // Z reductions.
    CUPOM_FORA_DO_DIA,
    Z_TOTALIZADORES,
    Z_VB,
    Z_GT,
    Z_VENDAS,
    Z_NAO_FISCAIS,
    Z_MEIO,
    Z_TROCO,
    Z_ALIQUOTA,
    Z_REGISTRADO,
    Z_IMPOSTO,
    Z_NOME,
    Z_CRO,
    Z_DATA,
    Z_TEMPOS,
    // The file and its schema.
    ARQUIVO_DANIFICADO,
    ESQUEMA,
    // Every row.
    VALOR_INVALIDO,
    LINHA_AUSENTE,
    LINHA_ALHEIA,
    ORDEM,
    RELOGIO_ATRASADO,
    CONTADOR_DOCUMENTO,
    DOCUMENTO_DIFERE,
    INTERVENCAO,
    FITA_DETALHE,
    PROGRAMACAO,
    // What is known from outside the database.
    ANCORA,
    // Several databases of one register.
    EMENDA,
    // The firmware log.
    LINHA_PERDIDA,
    COMANDO_PERDIDO,
    PERDA_PREVISTA,
    // No kind: how many there are.
    END
};

// A fault is something that the rows should not show. A note is something that the loggers leave on
// purpose, or that the rows cannot decide, and that a reader of the rows should know.
enum class Weight : std::uint8_t {
    FAULT,
    NOTE
};

struct FindingKindInfo {
    FindingKind kind;
    // The word for programs: it is printed, stands in JSON, and never changes.
    const char* name;
    Weight weight;
    const char* meaning; // in English, for Tr
};

using FindingKindTable = std::array<FindingKindInfo, static_cast<std::size_t>(FindingKind::END)>;

// Every kind, in the order of the enumeration.
const FindingKindTable& FindingKinds();

const FindingKindInfo& InfoOf(FindingKind kind);

// What to do next about a finding of this kind, one sentence in English, for Tr.
const char* NextStepOf(FindingKind kind);

} // namespace bancada::conferencia
