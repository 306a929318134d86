// The consumer that a receipt names.
#pragma once

#include <string>
#include <string_view>

namespace bancada::conferencia
{

// The digits by which a closing message names the consumer, as the closing writes them; empty where
// it names none.
std::string ConsumidorDaMensagem(std::string_view mensagem);

// Whether an opening can have named this consumer: nobody, or a CPF or CNPJ with its check digits.
bool IsConsumidor(std::string_view cpfCnpj);

} // namespace bancada::conferencia
