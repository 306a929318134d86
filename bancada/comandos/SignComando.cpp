#include "bancada/comandos/SignComando.h"

#include <cstring>

namespace bancada
{

void SignComando(Command& comando, const Registro& registro)
{
    const auto& assinatura = registro.GetAssinatura();
    static_assert(sizeof assinatura == sizeof comando.m_sAssinaturaDigitalDocumento);
    std::memcpy(comando.m_sAssinaturaDigitalDocumento, assinatura.data(), assinatura.size());
    comando.m_bSignedDoc = TRUE;
}

} // namespace bancada
