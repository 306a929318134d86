#include "bancada/conferencia/BancoLeitura.h"

#include <cmath>
#include <filesystem>

namespace bancada
{

namespace
{

// A money column holds an integer or the nearest double to a decimal of the register, so that the
// nearest scaled integer is that decimal, exactly.
template <int escala>
void Escala(sqlite3_context* contexto, int, sqlite3_value** valores)
{
    switch (sqlite3_value_type(valores[0])) {
    case SQLITE_INTEGER:
        sqlite3_result_int64(contexto, sqlite3_value_int64(valores[0]) * escala);
        break;
    case SQLITE_FLOAT:
        sqlite3_result_int64(contexto, std::llround(sqlite3_value_double(valores[0]) * escala));
        break;
    default:
        sqlite3_result_null(contexto);
    }
}

// What the checks read. A database of another program lacks some of it.
const char* const LIDOS[] = {
    "SELECT cont_coo, cont_gnf, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao,"
    " id_tipo_documento FROM outros_documentos LIMIT 0",
    "SELECT cont_coo, cont_ccf, cont_crz, data_hora_emissao, assinatura_documento, valor_subtotal,"
    " valor_total, valor_desconto, valor_acrescimo, valor_troco, id_cancelado"
    " FROM cupom_fiscal LIMIT 0",
    "SELECT seq_item, cont_coo, quantidade, valor_unitario, valor_acrescimo, valor_desconto,"
    " valor_total, id_arred_trunc_valor, id_cancelado FROM item_cupom_fiscal LIMIT 0",
    "SELECT cont_coo, cont_gnf, valor_pagamento, indice_meio_pagamento, id_estornado,"
    " valor_estornado FROM pagamento_cupom LIMIT 0",
    "SELECT cont_coo, cont_crz, cont_gnf, data_hora_emissao, valor_subtotal, valor_total_cupom,"
    " valor_acrescimo, valor_desconto, id_cancelado FROM cupom_nf LIMIT 0",
    "SELECT seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido,"
    " valor_acrescimo, valor_desconto, id_cancelado FROM item_cupom_nf LIMIT 0",
    "SELECT cont_crz, data_hora_emissao, data_movimento, cont_coo, valor_gt, valor_vb,"
    " valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms, valor_canc_icms,"
    " valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss,"
    " tempo_operacional, tempo_emitindo_doc FROM reducao_z LIMIT 0",
    "SELECT cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto"
    " FROM totalizador_reducao LIMIT 0",
    "SELECT indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado"
    " FROM meio_pagamento_reducao LIMIT 0",
    "SELECT cont_cro FROM intervencao LIMIT 0",
    "SELECT cont_cfd, data_hora_emissao FROM fita_detalhe LIMIT 0",
    "SELECT num_indice FROM meio_pagamento LIMIT 0",
    "SELECT num_indice FROM totalizador_nao_fiscal LIMIT 0",
    "SELECT seq_usuario FROM dados_usuario LIMIT 0",
    "SELECT num_ecf FROM moeda LIMIT 0",
    "SELECT num_ecf FROM dados_ecf LIMIT 0",
    "SELECT num_ecf FROM versao_sb LIMIT 0",
};

void Funcao(sqlite3* db, const char* nome, void (*f)(sqlite3_context*, int, sqlite3_value**))
{
    if (sqlite3_create_function_v2(db, nome, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, f,
                                   nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw Unusable(sqlite3_errmsg(db));
    }
}

void Prepara(sqlite3* db)
{
    sqlite3_busy_timeout(db, 5000);
    if (sqlite3_exec(db, "PRAGMA temp_store = MEMORY; PRAGMA trusted_schema = OFF", nullptr,
                     nullptr, nullptr) != SQLITE_OK) {
        throw Unusable(sqlite3_errmsg(db));
    }
    Funcao(db, "centavos", Escala<100>);
    Funcao(db, "milesimos", Escala<1000>);
    // One picture of the database for all the checks, however long they take.
    if (sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw Unusable(sqlite3_errmsg(db));
    }
    for (const char* sql : LIDOS) {
        sqlite3_stmt* stmt = nullptr;
        const int rc = sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr);
        sqlite3_finalize(stmt);
        if (rc == SQLITE_ERROR) {
            throw Unusable(std::string("not a logging database: ") + sqlite3_errmsg(db));
        }
        if (rc != SQLITE_OK) {
            throw Unusable(sqlite3_errmsg(db));
        }
    }
}

} // namespace

Consulta::Consulta(sqlite3* db, const char* sql) : m_db(db)
{
    if (sqlite3_prepare_v2(db, sql, -1, &m_stmt, nullptr) != SQLITE_OK) {
        throw Unusable(sqlite3_errmsg(db));
    }
}

Consulta::~Consulta()
{
    sqlite3_finalize(m_stmt);
}

Consulta& Consulta::Com(std::int64_t primeiro)
{
    sqlite3_reset(m_stmt);
    sqlite3_bind_int64(m_stmt, 1, primeiro);
    return *this;
}

Consulta& Consulta::Com(std::int64_t primeiro, std::int64_t segundo)
{
    Com(primeiro);
    sqlite3_bind_int64(m_stmt, 2, segundo);
    return *this;
}

bool Consulta::Avanca()
{
    const int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW) {
        return true;
    }
    if (rc == SQLITE_DONE) {
        return false;
    }
    throw Unusable(sqlite3_errmsg(m_db));
}

std::int64_t Consulta::Inteiro(int coluna) const
{
    return sqlite3_column_int64(m_stmt, coluna);
}

std::string Consulta::Texto(int coluna) const
{
    const unsigned char* texto = sqlite3_column_text(m_stmt, coluna);
    return texto == nullptr ? std::string() : reinterpret_cast<const char*>(texto);
}

BancoLeitura::BancoLeitura(const std::string& caminho)
{
    std::error_code erroArquivo;
    if (!std::filesystem::exists(caminho, erroArquivo)) {
        throw Unusable(caminho + ": no such file");
    }
    if (!std::filesystem::is_regular_file(caminho, erroArquivo)) {
        throw Unusable(caminho + ": not a file");
    }
    try {
        if (sqlite3_open_v2(caminho.c_str(), &m_db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
            throw Unusable(m_db == nullptr ? "out of memory" : sqlite3_errmsg(m_db));
        }
        Prepara(m_db);
    } catch (const Unusable& erro) {
        const std::string texto = caminho + ": " + erro.what();
        sqlite3_close(m_db);
        throw Unusable(texto);
    }
}

BancoLeitura::~BancoLeitura()
{
    sqlite3_close(m_db);
}

} // namespace bancada
