// The rejected statements that a firmware log names.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace bancada
{

// One rejected statement and the row that it should have written.
struct Perda {
    int comando = 0;      // code of the command
    std::string erro;     // the engine's text
    std::string operacao; // INSERT or UPDATE
    std::string tabela;
    // The key columns that the statement still shows, e.g. {"cont_coo", 120}, {"seq_item", 2}.
    std::map<std::string, std::int64_t> chave;
    // The engine rejects this statement always, as it is required to read: a currency symbol, the
    // closing of an additional receipt.
    bool prevista = false;

    std::optional<std::int64_t> Valor(const std::string& coluna) const;
    // The key as text, e.g. "cont_coo 120, seq_item 2"; "?" when the statement shows none.
    std::string Chave() const;
};

// Reads a statement of the loggers as far as its key goes. The statement need not be well formed: a
// text in it may hold apostrophes, and its end may be missing.
Perda LeStatement(const std::string& sql);

// What a firmware log says was lost, given in the log's order.
class Perdas
{
  public:
    // A rejected statement: the command's code, the engine's text, the statement (empty when the
    // log does not hold it).
    void Rejeitado(int comando, const std::string& erro, const std::string& sql);
    // A command whose rows are all lost: when, and why.
    void ComandoPerdido(const std::string& hora, const std::string& motivo);

    const std::vector<Perda>& Todas() const { return m_todas; }
    const std::vector<std::pair<std::string, std::string>>& Comandos() const { return m_comandos; }
    // Whether a loss concerns this document, this fiscal or non-fiscal number, this Z.
    bool TemCoo(std::int64_t coo) const { return m_coos.count(coo) != 0; }
    bool TemCcf(std::int64_t ccf) const { return m_ccfs.count(ccf) != 0; }
    bool TemGnf(std::int64_t gnf) const { return m_gnfs.count(gnf) != 0; }
    bool TemCrz(std::int64_t crz) const { return m_crzs.count(crz) != 0; }
    // Whether the closing of this receipt was rejected as that of an additional receipt.
    bool Adicional(std::int64_t coo) const { return m_adicionais.count(coo) != 0; }
    // The documents that a loss concerns, and the days: a day is known by its receipts.
    const std::set<std::int64_t>& Coos() const { return m_coos; }
    void JuntaCrz(std::int64_t crz) { m_crzs.insert(crz); }

  private:
    std::vector<Perda> m_todas;
    std::vector<std::pair<std::string, std::string>> m_comandos;
    std::set<std::int64_t> m_coos, m_ccfs, m_gnfs, m_crzs, m_adicionais;
};

} // namespace bancada
