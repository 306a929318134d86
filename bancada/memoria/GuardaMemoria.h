// The memory file of a register: its state from run to run, in step with the logging database.
#pragma once

#include "bancada/memoria/Execucao.h"
#include "bancada/registro/Memoria.h"

#include <cstdint>
#include <string>

namespace bancada
{

// A command is carried out in RAM and its rows wait in an open transaction that also numbers the
// database. Before COMMIT the file gets the state before and after the command (Pendente). After a
// crash the database tells which of the two holds: the one after if it carries the command's
// number, the one before if it does not; the command was then never replied, and is run again.
// docs/memory.md tells the file's form.
//
// Whatever cannot be read or written is thrown as Unusable. After a failed write the register must
// not go on: nobody could tell any more what it has done.
class GuardaMemoria
{
  public:
    // Reads the file `caminho`. One that is missing is a register as it leaves the factory. Throws
    // Unusable for a file that is damaged, is none of these or was written by a newer program; the
    // file stays as it is.
    explicit GuardaMemoria(const std::string& caminho);

    // Whether the file tells how far its commands have come: it then belongs to one database. A
    // file that is missing or was written by hand does not.
    bool TemExecucao() const { return m_temExecucao; }

    // Throws Unusable, naming both numbers, if the database `banco`, which carries `numero`, is not
    // the one that the file belongs to.
    void ConfereNumero(std::int32_t numero, const std::string& banco) const;

    // Settles which state holds and writes the file. REQUIRES: ConfereNumero accepts `numero`.
    void Assume(std::int32_t numero);

    // The state that holds, and how far it has come.
    const Memoria& Registro() const { return m_atual.registro; }
    const Execucao& GetExecucao() const { return m_atual.execucao; }

    // Before COMMIT: `registro` and `execucao` are those after the command; the state that holds
    // until now goes into the file as the one before.
    void Pendente(const Memoria& registro, const Execucao& execucao);

    // After COMMIT: the state of Pendente holds. Writes nothing: the file says so together with the
    // database.
    void Confirma();

    // Writes a state that holds whatever the database carries: what a refused command or a
    // directive left, or a command whose rows were lost.
    void Firma(const Memoria& registro, const Execucao& execucao);

  private:
    struct Estado {
        Memoria registro;
        Execucao execucao;
        // Both as fields of the file.
        std::string execucaoEmTexto;
        std::string registroEmTexto;
    };

    void Le(const std::string& conteudo);
    static void Prepara(Estado& estado, const Memoria& registro, const Execucao& execucao);
    // `antes` is the field of that name, with its comma, or empty.
    void Grava(const std::string& antes, const Estado& estado) const;

    std::string m_caminho;
    bool m_temExecucao = false;
    bool m_pendente = false;
    Estado m_atual;  // that of before while a command is pending
    Estado m_depois; // of the pending command
};

} // namespace bancada
