// Where the clock was set back.
#pragma once

#include "bancada/conferencia/RepeatedCoos.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bancada::conferencia
{

struct Acerto {
    std::int64_t coo = 0; // of the first document behind it
    std::string de;       // when the document before that was issued
    std::string para;     // when it was issued itself
};

// The clock goes back in an intervention alone, and nothing but readings and reprints is issued
// there: the first document of an earlier time than the one before it is a reading. In a database
// without an intervention nothing set the clock. A reading behind receipts whose number comes again
// is left out.
class Acertos
{
  public:
    // Reads the readings and, of each, the document before it.
    Acertos(const leitura::DatabaseReading& database, const RepeatedCoos& repeated);

    // In the order of the rows.
    const std::vector<Acerto>& All() const { return m_all; }
    // The one whose first document has this number; null where there is none.
    const Acerto* FindAt(std::int64_t coo) const;
    // Whether the clock was set back behind the document `first`, up to the issue of `last`.
    bool HasBetween(std::int64_t first, std::int64_t last) const;
    // Whether it may have been set, back or forward, from one instant to another: in an
    // intervention, which prints a reading.
    bool MayBeWithin(const std::string& from, const std::string& to) const;
    // Whether the clock passed some instant of those from `from` to `to` twice.
    bool Cover(const std::string& from, const std::string& to) const;

  private:
    std::vector<Acerto> m_all;
    std::vector<std::string> m_leituras; // instants, in their order
};

} // namespace bancada::conferencia
