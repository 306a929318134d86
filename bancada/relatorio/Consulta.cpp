#include "bancada/relatorio/Consulta.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace bancada::relatorio
{
namespace
{

// How long a reader waits for a writer that holds the whole database, which in WAL happens only
// while a log is recovered.
constexpr int ESPERA_MS = 2000;

// The path as an address that SQLite reads back to the same path.
std::string enderecoImutavel(const std::string& caminho)
{
    static constexpr char hexadecimal[] = "0123456789abcdef";
    std::string saida = "file:";
    for (const char c : std::filesystem::absolute(caminho).string()) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte <= ' ' || byte >= 0x7F || c == '%' || c == '?' || c == '#') {
            saida += '%';
            saida += hexadecimal[byte >> 4U];
            saida += hexadecimal[byte & 0xFU];
        } else {
            saida += c;
        }
    }
    return saida + "?immutable=1";
}

// Whether a write-ahead log with content stands beside the file.
bool temWal(const std::string& caminho)
{
    std::error_code erro;
    const std::uintmax_t tamanho = std::filesystem::file_size(caminho + "-wal", erro);
    return !erro && tamanho > 0;
}

} // namespace

BancoSomenteLeitura::BancoSomenteLeitura(std::string caminho) : m_caminho(std::move(caminho))
{
    std::error_code erro;
    const std::filesystem::file_status estado = std::filesystem::status(m_caminho, erro);
    if (estado.type() == std::filesystem::file_type::not_found) {
        throw Unusable(m_caminho + ": no such file");
    }
    if (estado.type() == std::filesystem::file_type::directory) {
        throw Unusable(m_caminho + ": is a directory");
    }
    // The first SELECT begins the read transaction that lasts to the end. A database in WAL needs
    // two files beside it; where they cannot be made (a read-only place) and there is no log whose
    // rows would be missed, it is read as the unchanging file that it is.
    int rc = abre(m_caminho, SQLITE_OPEN_READONLY);
    if (rc == SQLITE_CANTOPEN && !temWal(m_caminho)) {
        rc = abre(enderecoImutavel(m_caminho), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    }
    if (rc != SQLITE_OK) {
        falha();
    }
}

int BancoSomenteLeitura::abre(const std::string& nome, int opcoes)
{
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(nome.c_str(), &db, opcoes, nullptr);
    m_db.reset(db);
    if (rc != SQLITE_OK) {
        return rc;
    }
    sqlite3_busy_timeout(db, ESPERA_MS);
    // What the file's schema says must not run anything.
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    return sqlite3_exec(db, "BEGIN; SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
}

void BancoSomenteLeitura::falha() const
{
    const char* texto = m_db ? sqlite3_errmsg(m_db.get()) : "out of memory";
    throw Unusable(m_caminho + ": " + texto);
}

Consulta::Consulta(const BancoSomenteLeitura& banco, const char* sql) : m_banco(&banco)
{
    sqlite3_stmt* stmt = nullptr;
    const int rc = sqlite3_prepare_v2(banco.handle(), sql, -1, &stmt, nullptr);
    m_stmt.reset(stmt);
    if (rc == SQLITE_ERROR) {
        // A table or a column that is not there.
        throw Unusable(banco.caminho() + ": not a logging database (" +
                       sqlite3_errmsg(banco.handle()) + ")");
    }
    if (rc != SQLITE_OK) {
        banco.falha();
    }
}

bool Consulta::linha()
{
    switch (sqlite3_step(m_stmt.get())) {
    case SQLITE_ROW:
        return true;
    case SQLITE_DONE:
        sqlite3_reset(m_stmt.get());
        return false;
    default:
        m_banco->falha();
    }
}

std::string Consulta::texto(int coluna) const
{
    const unsigned char* dados = sqlite3_column_text(m_stmt.get(), coluna);
    const int tamanho = sqlite3_column_bytes(m_stmt.get(), coluna);
    return dados == nullptr ? std::string()
                            : std::string(reinterpret_cast<const char*>(dados),
                                          static_cast<std::size_t>(tamanho));
}

} // namespace bancada::relatorio
