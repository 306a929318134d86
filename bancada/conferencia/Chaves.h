// The search keys of closed receipts, where the bench made them: CNPJ, serial number, day and
// document number, joined by "-".
#pragma once

#include "bancada/conferencia/Acertos.h"
#include "bancada/conferencia/FindingReport.h"
#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <string>

namespace bancada::conferencia
{

class Chaves
{
  public:
    explicit Chaves(const leitura::DatabaseReading& database);

    // A key of the receipt's day and number, of the owner and the register that are programmed or
    // were so before: those of a key that its neighbours do not share were never. Receipts are
    // given in their order. Nothing is asked of the keys of a register that makes others.
    void Check(FindingReport& findings, const leitura::CupomFiscalRow& cupom);
    // Behind the last one, whose owner and register are those programmed unless there was an
    // intervention since. What is not programmed in a database that begins later than its register
    // is not held against its keys.
    void End(FindingReport& findings, const Acertos& relogio, bool beginsAtFactory);

    // CNPJ and serial number of a key, as the text up to the day; empty of one of another form.
    static std::string PrefixOf(const std::string& key);
    // That of a receipt's key, or the programmed one where the key is of another form.
    std::string OwnPrefixOf(const std::string& key) const;

    // Whether the keys are the bench's.
    bool AreKnown() const { return m_known; }

  private:
    void Report(FindingReport& findings, const leitura::CupomFiscalRow& cupom,
                const std::string& expected, const std::string& text) const;
    void Decide(FindingReport& findings, const std::string& next);

    bool m_known = false;
    // Of the owner and the register as they are programmed.
    std::string m_programmed;
    bool m_isProgrammed = false; // both of them are
    // Of the receipt before the one that waits for its neighbour behind.
    std::string m_before;
    std::string m_last;     // of the last key
    std::string m_lastHora; // of its receipt
    bool m_waits = false;
    leitura::CupomFiscalRow m_waiting;
};

} // namespace bancada::conferencia
