// Document numbers without a row that nothing explains yet.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace bancada::conferencia
{

// The number so many steps further on the circle of a counter. Defined for any number.
std::int64_t Following(std::int64_t number, std::int64_t steps);

// "17" or "17 to 19".
std::string NumbersText(std::int64_t first, std::int64_t count);

// Numbers in a row, COOs. What took them shows in the CCF of the next fiscal receipt and in the GNF
// of the next other document.
struct Gap {
    std::int64_t first = 0;
    std::int64_t count = 0;
    // How many of them can be reversals of the last receipt's vouchers.
    std::int64_t maybeEstornos = 0;
    // Which of the cancelled receipts, counted from 1, may have its cancellation among them, 0 for
    // none.
    std::int64_t cancelado = 0;
    // How many are kept for that, 1 or none: they are explained by something else last.
    std::int64_t kept = 0;
    bool sawFiscal = false;
    bool sawOutro = false;
};

// What a number without a row may turn out to be.
enum class Absent : std::uint8_t {
    ESTORNO_COMPROVANTE, // the reversal of a voucher, which leaves no row on purpose
    ANOTHER
};

class Gaps
{
  public:
    void Add(const Gap& gap) { m_gaps.push_back(gap); }

    // A document follows. Answers, one by one, the gaps that no later document can explain any
    // more, both kinds having followed: call it until it answers nothing.
    void Saw(bool fiscal);
    std::optional<Gap> TakeDecided();

    // How many numbers are without an explanation.
    std::int64_t Count() const;
    bool MayHoldEstorno() const;
    // Where so many documents without a row may stand: " (COO 17 to 19)", or nothing.
    std::string Where(std::int64_t count, Absent absent) const;
    // So many of them are explained, or told as missing.
    void Consume(std::int64_t count, Absent absent);

    // What is left at the end of the rows, the first first.
    bool IsEmpty() const { return m_gaps.empty(); }
    const Gap& First() const { return m_gaps.front(); }
    void RemoveFirst() { m_gaps.pop_front(); }

  private:
    std::size_t Find(Absent absent) const;
    static std::int64_t CountOf(const Gap& gap);

    std::deque<Gap> m_gaps;
};

} // namespace bancada::conferencia
