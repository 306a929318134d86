// Texts in Portuguese, as long as a test wants them.
#pragma once

#include "bancada/Messages.h"

namespace bancada_test
{

class InPortuguese
{
  public:
    InPortuguese() { bancada::SetLanguage(bancada::Language::PORTUGUESE); }
    ~InPortuguese() { bancada::SetLanguage(bancada::Language::ENGLISH); }
    InPortuguese(const InPortuguese&) = delete;
    InPortuguese& operator=(const InPortuguese&) = delete;
};

} // namespace bancada_test
