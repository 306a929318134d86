// The facade: the owner and the register.
#include "bancada/registro/Registro.h"
#include "bancada/registro/TextForms.h"

namespace bancada
{

char* Registro::DadosContribuinte_GetRazaoSocial(char* out, int size)
{
    return CopyText(m_memoria.contribuinte.razaoSocial, out, size);
}

char* Registro::DadosContribuinte_GetNomeFantasia(char* out, int size)
{
    return CopyText(m_memoria.contribuinte.nomeFantasia, out, size);
}

char* Registro::DadosContribuinte_GetEndereco(char* out, int size)
{
    return CopyText(m_memoria.contribuinte.endereco, out, size);
}

char* Registro::DadosECF_GetVersaoSB(char* out, int size)
{
    return CopyText(m_memoria.ecf.versaoSB, out, size);
}

char* Registro::DadosECF_GetNrOrdemSeq(char* out, int size)
{
    const int sequencia = m_memoria.ecf.sequencia;
    return CopyText(sequencia == 0 ? "" : std::to_string(sequencia), out, size);
}

} // namespace bancada
