// The records of a file, made from the tape and the register's state as it goes on: no database,
// and nothing that export is made of.
#pragma once

#include "bancada/registro/Memoria.h"
#include "bancada/tape/TapeCommand.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bancada::arquivo_test
{

class SecondWriter
{
  public:
    // An executed command, and the register before and after it.
    void Take(const TapeCommand& line, const Memoria& before, const Memoria& after);

    // Every record that needs no facts, in their order, lines ended by LF.
    std::string Text() const;

  private:
    struct Item {
        std::string codigo, descricao, unidade, totalizador;
        std::int64_t quantidade = 0, unitario = 0;
        int decimaisQuantidade = 0, decimaisValor = 0;
        std::int64_t bruto = 0, desconto = 0, acrescimo = 0, canceladoAcrescimo = 0;
        bool arredonda = false, cancelado = false;
        std::string nome; // of a non-fiscal totalizer
    };
    struct Pagamento {
        int meio = 0;
        std::string nome;
        std::int64_t valor = 0, estornado = 0;
        bool reversed = false;
    };
    struct Cupom {
        bool fiscal = false;
        int coo = 0, numero = 0;
        std::string data, nome, cpfCnpj;
        std::int64_t subtotal = 0, desconto = 0, acrescimo = 0, cancelado = 0, total = 0;
        char tipoAcrescimo = 'V';
        bool isCancelado = false;
        std::vector<Item> itens;
        std::vector<Pagamento> pagamentos;
    };
    struct Documento {
        int coo = 0, gnf = 0, grg = 0, cdc = 0, crz = 0;
        std::string simbolo, fim;
    };
    struct Reducao {
        std::string movimento, record;
    };

    void Open(const Memoria& after, bool fiscal);
    void Sell(const TapeCommand& line, const Memoria& after);
    void SellNf(const Memoria& after);
    void Adjust(const Memoria& before, const Memoria& after, bool cancels, const TapeCommand& line);
    void AdjustSubtotal(const TapeCommand& line, const Memoria& after, bool cancels);
    void Close(const Memoria& after, bool adicional);
    void Print(const Memoria& after, const char* simbolo);
    void Reduce(const TapeCommand& line, const Memoria& before, const Memoria& after);
    void Program(const TapeCommand& line, const Memoria& after);
    void Enter(const TapeCommand& line, const Memoria& after);
    std::string Identificacao() const;
    std::string Contadores() const;
    std::string Prefix(const char* type) const;
    std::string CupomText(const Cupom& cupom) const;

    Memoria m_registro;                        // as the last command left it
    std::string m_cadastro;                    // when the owner was registered
    int m_croDoCadastro = 0;                   // when he was programmed last
    std::map<int, std::string> m_intervencoes; // by the counter at entering, those of mode L too
    std::vector<Cupom> m_cupons;
    std::vector<Documento> m_documentos;
    std::map<int, Reducao> m_reducoes;
    std::map<int, std::string> m_fitas, m_totalizadores, m_naoFiscais, m_meios;
};

} // namespace bancada::arquivo_test
