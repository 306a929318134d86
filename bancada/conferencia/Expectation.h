// A value that rows in order lead one to expect, told once where it changes for good.
#pragma once

#include <cstdint>
#include <optional>

namespace bancada::conferencia
{

class Expectation
{
  public:
    const std::optional<std::int64_t>& Value() const { return m_value; }

    // Takes it as it is.
    void Set(std::int64_t value)
    {
        m_value = value;
        m_other.reset();
    }

    // Whether the value is the one expected, or the first. One that is not is expected from then on
    // only when it comes again.
    bool Accept(std::int64_t value)
    {
        const bool accepted = !m_value || *m_value == value || m_other == value;
        if (accepted) {
            Set(value);
        } else {
            m_other = value;
        }
        return accepted;
    }

    // As many steps further, what was not expected included.
    void Advance(std::int64_t steps)
    {
        for (std::optional<std::int64_t>* value : {&m_value, &m_other}) {
            if (*value) {
                **value += steps;
            }
        }
    }

  private:
    std::optional<std::int64_t> m_value;
    std::optional<std::int64_t> m_other;
};

} // namespace bancada::conferencia
