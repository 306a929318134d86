#include "bancada/arquivo/Importacao.h"

#include "bancada/arquivo/Coerencia.h"
#include "bancada/arquivo/Contadores.h"
#include "bancada/arquivo/Importador.h"

namespace bancada::arquivo
{

ImportResult Import(const std::string& path, std::ostream& tape, std::ostream& notes)
{
    Importador importing(path, tape);
    FindProgramacao(importing);
    importing.fatos = FindFatos(importing.arquivo);
    const std::map<std::string, std::int64_t> before = ContadoresBefore(importing);
    importing.contadores = before;
    WriteProgramacao(importing);
    HoldCadastro(importing);
    const std::int64_t antes = WriteDocumentos(importing);
    HoldContadores(importing);
    ImportResult result;
    result.memory = MemoriaInicial(importing, before, antes);
    result.fatos = importing.fatos;
    importing.naoDito.Print(notes);
    return result;
}

} // namespace bancada::arquivo
