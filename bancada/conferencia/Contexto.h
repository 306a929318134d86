// What the checks share while they run.
#pragma once

#include "bancada/conferencia/Conferencia.h"
#include "bancada/conferencia/LossIndex.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace bancada
{

// The counters of documents have six digits, and 1 follows 999999.
constexpr std::int64_t MAX_CONTADOR = 999999;

// How far `b` is ahead of `a` on the circle of a counter, 0 to MAX_CONTADOR - 1.
std::int64_t Avanco(std::int64_t a, std::int64_t b);

// An amount of which only the bounds are known, in cents.
struct Faixa {
    std::int64_t menor = 0;
    std::int64_t maior = 0;

    void Soma(std::int64_t valor);
    void Soma(std::int64_t deste, std::int64_t ateEste);
    bool Contem(std::int64_t valor) const { return menor <= valor && valor <= maior; }
    std::string Texto() const;
};

// One fiscal day, by the receipts filed under the Z that closes it.
struct Dia {
    // Totals of the valid fiscal receipts; of all valid receipts that were paid; of the valid
    // non-fiscal receipts, floats and withdrawals included.
    Faixa vendas, recebido;
    std::int64_t naoFiscais = 0;
    // What each payment means took in.
    std::map<std::int64_t, std::int64_t> meios;
    // Why the means cannot be told from the rows; empty when they can.
    std::string meiosIncertos;
    // The receipts issued first and last.
    std::string primeiraHora, ultimaHora;
    std::int64_t primeiroCoo = 0, ultimoCoo = 0;

    void Junta(std::int64_t coo, const std::string& hora);
};

// The document issued last: nothing follows it, so it may still be open.
struct UltimoDocumento {
    std::int64_t coo = 0;
    bool fiscal = false;
};

// What a receipt was paid with.
struct Pagamentos {
    std::map<std::int64_t, std::int64_t> porMeio;
    std::int64_t soma = 0;
    // A reversal marks every payment of its means on the receipt, so that with several of them the
    // amount reversed is recorded several times. It is counted once here, which is right unless
    // there was more than one reversal.
    bool incerto = false;
};

class Contexto
{
  public:
    Contexto(sqlite3* db, const LossIndex* losses, const DestinoAchados& destino);

    sqlite3* Db() const { return m_db; }
    // Hands out a finding. `coo` and `crz` (0: none) tie it to the losses that may explain it.
    void Relata(const char* tipo, const std::string& chave, const std::string& texto,
                std::int64_t coo, std::int64_t crz);
    void Relata(const char* tipo, const std::string& chave, const std::string& texto,
                bool explicado);
    // Hands out the items of a receipt that have no row between one that has and the next.
    void RelataItensAusentes(std::int64_t coo, std::int64_t anterior, std::int64_t item);
    // What the firmware log names; null when none was given.
    const LossIndex* Log() const { return m_losses; }
    const UltimoDocumento& Ultimo() const { return m_ultimo; }

    // How many receipts of either kind carry this number.
    std::int64_t CuponsComCoo(std::int64_t coo);
    Pagamentos PagamentosDe(std::int64_t coo);

    std::map<std::int64_t, Dia> dias;
    // The GNFs taken by reversals of payments, as the payments they made show; complete once every
    // receipt was asked for its payments.
    std::set<std::int64_t> gnfsDeEstorno;
    ResumoConferencia resumo;

  private:
    sqlite3* m_db;
    const LossIndex* m_losses;
    const DestinoAchados& m_destino;
    UltimoDocumento m_ultimo;
    Consulta m_cuponsComCoo, m_pagamentos;
};

// Text forms: cents as "1234.56", keys as "COO 120".
std::string Dinheiro(std::int64_t centavos);
std::string Coo(std::int64_t coo);
std::string Crz(std::int64_t crz);

// The checks. ConfereReducoes needs the days that the two before it gather.
void ConfereCupons(Contexto& contexto);
void ConfereCuponsNf(Contexto& contexto);
void ConfereReducoes(Contexto& contexto);
void ConfereSequencias(Contexto& contexto);
void ConfereLigacoes(Contexto& contexto);

} // namespace bancada
