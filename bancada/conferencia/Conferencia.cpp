#include "bancada/conferencia/Conferencia.h"

#include "bancada/conferencia/Contexto.h"

#include <cstring>
#include <optional>
#include <stdexcept>

namespace bancada
{

namespace
{

const TipoAchado& Tipo(const char* nome)
{
    for (const TipoAchado& tipo : TiposDeAchado()) {
        if (std::strcmp(tipo.nome, nome) == 0) {
            return tipo;
        }
    }
    throw std::logic_error(std::string("no such kind of finding: ") + nome);
}

// Texts of the rows and of the log may hold anything; a finding is one line.
std::string UmaLinha(std::string texto)
{
    for (char& c : texto) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            c = '?';
        }
    }
    return texto;
}

UltimoDocumento LeUltimo(sqlite3* db)
{
    // The last of each table, the later of the two; of the same second, the one further on.
    Consulta fiscal(db, "SELECT cont_coo, data_hora_emissao FROM cupom_fiscal"
                        " ORDER BY rowid DESC LIMIT 1");
    Consulta outro(db, "SELECT cont_coo, data_hora_inicio_emissao FROM outros_documentos"
                       " ORDER BY rowid DESC LIMIT 1");
    const bool temFiscal = fiscal.Avanca();
    const bool temOutro = outro.Avanca();
    if (!temFiscal && !temOutro) {
        return {};
    }
    bool ehFiscal = temFiscal;
    if (temFiscal && temOutro) {
        const std::string horaFiscal = fiscal.Texto(1);
        const std::string horaOutro = outro.Texto(1);
        ehFiscal = horaFiscal != horaOutro
                       ? horaFiscal > horaOutro
                       : Avanco(outro.Inteiro(0), fiscal.Inteiro(0)) < MAX_CONTADOR / 2;
    }
    return {ehFiscal ? fiscal.Inteiro(0) : outro.Inteiro(0), ehFiscal};
}

// A lost row concerns the days of its receipt.
void AddJornadas(sqlite3* db, LossIndex& losses)
{
    Consulta jornada(db, "SELECT cont_crz FROM cupom_fiscal WHERE cont_coo = ?1"
                         " UNION SELECT cont_crz FROM cupom_nf WHERE cont_coo = ?1");
    for (const std::int64_t coo : losses.Coos()) {
        jornada.Com(coo);
        while (jornada.Avanca()) {
            losses.AddCrz(jornada.Inteiro(0));
        }
    }
}

void ReportLosses(Contexto& contexto, const LossIndex& losses)
{
    for (std::size_t i = 0; i < losses.Rows().size(); ++i) {
        const RejectedRow& row = losses.Rows()[i];
        const RejectedStatement& rejected = losses.All().rejected[i];
        const std::string what = row.operation.empty() ? "a statement that cannot be read"
                                                       : row.operation + " of " + row.table;
        contexto.Relata(row.expected ? "perda-prevista" : "linha-perdida",
                        row.table + " " + row.KeyText(),
                        what + " by command " + std::to_string(rejected.command) +
                            " was rejected: " + rejected.error,
                        false);
    }
    for (const LostCommand& command : losses.All().lost) {
        contexto.Relata("comando-perdido", command.time,
                        "the rows of a command are lost: " + command.reason, false);
    }
}

} // namespace

std::int64_t Avanco(std::int64_t a, std::int64_t b)
{
    const std::int64_t diferenca = (b - a) % MAX_CONTADOR;
    return diferenca < 0 ? diferenca + MAX_CONTADOR : diferenca;
}

void Faixa::Soma(std::int64_t valor)
{
    Soma(valor, valor);
}

void Faixa::Soma(std::int64_t deste, std::int64_t ateEste)
{
    menor += deste;
    maior += ateEste;
}

std::string Faixa::Texto() const
{
    return menor == maior ? Dinheiro(menor) : Dinheiro(menor) + " to " + Dinheiro(maior);
}

void Dia::Junta(std::int64_t coo, const std::string& hora)
{
    if (primeiraHora.empty() || hora < primeiraHora) {
        primeiraHora = hora;
        primeiroCoo = coo;
    }
    if (ultimaHora.empty() || hora > ultimaHora) {
        ultimaHora = hora;
        ultimoCoo = coo;
    }
}

std::string Dinheiro(std::int64_t centavos)
{
    const std::int64_t resto = centavos < 0 ? -(centavos % 100) : centavos % 100;
    const std::int64_t inteiro = centavos < 0 ? -(centavos / 100) : centavos / 100;
    return (centavos < 0 ? "-" : "") + std::to_string(inteiro) + (resto < 10 ? ".0" : ".") +
           std::to_string(resto);
}

std::string Coo(std::int64_t coo)
{
    return "COO " + std::to_string(coo);
}

std::string Crz(std::int64_t crz)
{
    return "CRZ " + std::to_string(crz);
}

Contexto::Contexto(sqlite3* db, const LossIndex* losses, const DestinoAchados& destino)
    : m_db(db), m_losses(losses), m_destino(destino), m_ultimo(LeUltimo(db)),
      m_cuponsComCoo(db, "SELECT (SELECT count(*) FROM cupom_fiscal WHERE cont_coo = ?1)"
                         " + (SELECT count(*) FROM cupom_nf WHERE cont_coo = ?1)"),
      m_pagamentos(
          db, "SELECT indice_meio_pagamento, centavos(valor_pagamento), id_estornado = 'S',"
              " centavos(valor_estornado), rowid, cont_gnf FROM pagamento_cupom WHERE cont_coo = ?1"
              " ORDER BY indice_meio_pagamento, rowid")
{
}

void Contexto::Relata(const char* tipo, const std::string& chave, const std::string& texto,
                      std::int64_t coo, std::int64_t crz)
{
    Relata(tipo, chave, texto,
           m_losses != nullptr &&
               ((coo != 0 && m_losses->HasCoo(coo)) || (crz != 0 && m_losses->HasCrz(crz))));
}

void Contexto::RelataItensAusentes(std::int64_t coo, std::int64_t anterior, std::int64_t item)
{
    if (item <= anterior + 1) {
        return;
    }
    Relata("item-ausente", Coo(coo),
           "no row of item " + std::to_string(anterior + 1) +
               (item > anterior + 2 ? " to " + std::to_string(item - 1) : ""),
           coo, 0);
}

void Contexto::Relata(const char* tipo, const std::string& chave, const std::string& texto,
                      bool explicado)
{
    const Achado achado = {&Tipo(tipo), UmaLinha(chave), UmaLinha(texto), explicado};
    if (achado.tipo->peso == Peso::AVISO) {
        ++resumo.avisos;
    } else {
        ++resumo.faltas;
        resumo.explicadas += explicado ? 1 : 0;
    }
    m_destino(achado);
}

std::int64_t Contexto::CuponsComCoo(std::int64_t coo)
{
    m_cuponsComCoo.Com(coo).Avanca();
    return m_cuponsComCoo.Inteiro(0);
}

Pagamentos Contexto::PagamentosDe(std::int64_t coo)
{
    Pagamentos pagamentos;
    // A reversal leaves the payment's value as it was and notes the amount beside it; a second one
    // takes the first off the value. What the means holds is the values less the amount noted last.
    std::map<std::int64_t, std::int64_t> estornado;
    std::map<std::int64_t, std::int64_t> gnfPorLinha;
    m_pagamentos.Com(coo);
    while (m_pagamentos.Avanca()) {
        const std::int64_t meio = m_pagamentos.Inteiro(0);
        gnfPorLinha.emplace(m_pagamentos.Inteiro(4), m_pagamentos.Inteiro(5));
        pagamentos.porMeio[meio] += m_pagamentos.Inteiro(1);
        pagamentos.soma += m_pagamentos.Inteiro(1);
        if (m_pagamentos.Inteiro(2) == 0) {
            continue;
        }
        if (!estornado.emplace(meio, m_pagamentos.Inteiro(3)).second) {
            pagamentos.incerto = true;
        }
    }
    // While a receipt is open the GNF stands still: a payment with another one was moved there by a
    // reversal, a document of its own.
    for (const auto& [linha, gnf] : gnfPorLinha) {
        if (gnf != gnfPorLinha.begin()->second) {
            gnfsDeEstorno.insert(gnf);
        }
    }
    for (const auto& [meio, valor] : estornado) {
        pagamentos.porMeio[meio] -= valor;
        pagamentos.soma -= valor;
    }
    return pagamentos;
}

ResumoConferencia Confere(const BancoLeitura& banco, const Losses* losses,
                          const DestinoAchados& destino)
{
    std::optional<LossIndex> index;
    if (losses != nullptr) {
        index.emplace(*losses);
        AddJornadas(banco.Handle(), *index);
    }
    Contexto contexto(banco.Handle(), index ? &*index : nullptr, destino);
    if (index) {
        ReportLosses(contexto, *index);
    }
    ConfereCupons(contexto);
    ConfereCuponsNf(contexto);
    ConfereReducoes(contexto);
    ConfereSequencias(contexto);
    ConfereLigacoes(contexto);
    return contexto.resumo;
}

} // namespace bancada
