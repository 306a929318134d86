#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bancada/relatorio/Consulta.h"
#include "bancada/relatorio/Documento.h"

namespace bancada::relatorio
{

// A fiscal day: the documents from one Z reduction to the next.
struct Dia {
    // The reduction that closes it.
    std::int64_t crz = 0;
    // Without its totalizers and payment means; nothing while the day is open.
    std::optional<ReducaoZ> reducao;
};

// Who walks through the database's documents.
class Visitante
{
  public:
    virtual ~Visitante() = default;
    virtual void abreDia(const Dia& dia) = 0;
    // The document without its items, payments and totalizers; `Leitor::completa` fetches them.
    virtual void documento(Documento& documento) = 0;
    virtual void fechaDia(const Dia& dia) = 0;
};

// Cents by hour of the day.
struct VendaHora {
    std::int64_t cupons = 0;
    Decimal valor;
};

struct VendaMeio {
    std::int64_t indice = 0;
    // Empty where the means is not programmed.
    std::string nome;
    std::int64_t pagamentos = 0;
    Decimal valor;
};

// Reads a logging database and ties its rows together. Every operation throws Unusable where
// the database cannot be read; the constructor asks for every table and column that the others
// need, so that a database of another program is refused before anything is shown.
///
// Document numbers wrap, so a COO can come twice. Its receipts are told apart by the order of the
// rows: an item whose number does not go on from the one before begins the next receipt, and
// payments are grouped by the GNF that they carry.
class Leitor
{
  public:
    explicit Leitor(const std::string& caminho);

    Estabelecimento estabelecimento();

    // Everything that bears the number, complete: receipts whose opening is lost included. Empty
    // where there is nothing.
    std::vector<Documento> documentos(std::int64_t coo);

    // The Z reductions of that number, complete.
    std::vector<ReducaoZ> reducoes(std::int64_t crz);

    // How many receipts of either kind say that the Z reduction `crz` closes their day.
    std::int64_t cuponsDoDia(std::int64_t crz);

    // Walks through all days and documents in the order in which they were issued, holding one at
    // a time.
    void percorre(Visitante& visitante);

    void completa(Documento& documento);

    // 24 hours of fiscal receipts that are not cancelled; of one day when `crz` is given.
    std::vector<VendaHora> vendasPorHora(std::optional<std::int64_t> crz);

    // What the payments of receipts of either kind that are not cancelled came to, by means; of
    // one day when `crz` is given. Change is not taken off.
    std::vector<VendaMeio> vendasPorMeio(std::optional<std::int64_t> crz);

    // The change of the same fiscal receipts; that of non-fiscal ones is not logged.
    Decimal troco(std::optional<std::int64_t> crz);

  private:
    std::vector<Item> itens(const Documento& documento, bool& incertas);
    std::vector<Pagamento> pagamentos(const Documento& documento, bool& incertas);
    std::vector<Documento> semAbertura(std::int64_t coo);
    void completaReducao(ReducaoZ& reducao);
    std::string nomeDoMeio(std::int64_t indice);
    std::string nomeDoTotalizador(std::int64_t indice);
    std::optional<ReducaoZ> reducaoQueFecha(std::int64_t crz, const std::string& desde);

    BancoSomenteLeitura m_banco;
    Consulta m_fiscaisDoCoo;
    Consulta m_nfsDoCoo;
    Consulta m_outrosDoCoo;
    Consulta m_reducoesDoCoo;
    Consulta m_reducoesDoCrz;
    Consulta m_reducaoQueFecha;
    Consulta m_ordemFiscal;
    Consulta m_ordemNf;
    Consulta m_gnfsDoCoo;
    Consulta m_itensFiscais;
    Consulta m_itensNf;
    Consulta m_pagamentos;
    Consulta m_totalizadores;
    Consulta m_meiosReducao;
    Consulta m_ordemReducao;
    Consulta m_nomeMeio;
    Consulta m_nomeTotalizador;
    Consulta m_usuario;
    Consulta m_ecf;
    Consulta m_versao;
    Consulta m_cuponsDoDia;
};

} // namespace bancada::relatorio
