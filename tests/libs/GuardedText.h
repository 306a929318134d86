// A text buffer of a size between guard bytes.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

class GuardedText
{
  public:
    explicit GuardedText(int size)
        : m_bytes(static_cast<std::size_t>(size) + 2 * GUARD, FILL),
          m_size(static_cast<std::size_t>(size))
    {
    }

    char* Buffer() { return m_bytes.data() + GUARD; }
    std::string Text() const { return std::string(m_bytes.data() + GUARD); }

    // Whether no byte around the buffer was written.
    bool GuardsAreWhole() const
    {
        const auto isFill = [](char c) { return c == FILL; };
        return std::all_of(m_bytes.begin(), m_bytes.begin() + GUARD, isFill) &&
               std::all_of(m_bytes.begin() + GUARD + static_cast<std::ptrdiff_t>(m_size),
                           m_bytes.end(), isFill);
    }

  private:
    static constexpr int GUARD = 64;
    static constexpr char FILL = '#';

    std::vector<char> m_bytes;
    std::size_t m_size;
};
