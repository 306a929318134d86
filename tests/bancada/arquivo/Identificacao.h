// The record with which every file begins.
#pragma once

#include <string>

namespace bancada::arquivo_test
{

// Of a register without serial number, letter or model.
inline const std::string E01 = "E01" + std::string(78, ' ') + std::string(31, '0') + "TDM" +
                               std::string(28, '0') + std::string(8, ' ') + "AC1704 01.00.00\n";

} // namespace bancada::arquivo_test
