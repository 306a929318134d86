#include "bancada/relatorio/Pagina.h"

#include <sodium.h>

#include "bancada/relatorio/Bobina.h"
#include "bancada/relatorio/Grafico.h"
#include "bancada/relatorio/PaginaRecursos.h"
#include "bancada/relatorio/Texto.h"

namespace bancada::relatorio
{
namespace
{

// The page's policy names its script by digest, so that no other runs, not even one that a text of
// the database managed to bring in.
std::string resumo(std::string_view texto)
{
    unsigned char bytes[crypto_hash_sha256_BYTES];
    crypto_hash_sha256(bytes, reinterpret_cast<const unsigned char*>(texto.data()), texto.size());
    char base64[sodium_base64_ENCODED_LEN(sizeof bytes, sodium_base64_VARIANT_ORIGINAL)];
    sodium_bin2base64(base64, sizeof base64, bytes, sizeof bytes, sodium_base64_VARIANT_ORIGINAL);
    return std::string("sha256-") + base64;
}

std::string numero(const std::string& valor, const std::string& nome)
{
    return "<div><b>" + escapaHtml(valor) + "</b><span>" + escapaHtml(nome) + "</span></div>\n";
}

class Escritor final : public Visitante
{
  public:
    Escritor(Leitor& leitor, const Pagina& pagina, const Estabelecimento& casa, std::ostream& saida)
        : m_leitor(leitor), m_pagina(pagina), m_casa(casa), m_saida(saida)
    {
    }

    void abreDia(const Dia& dia) override
    {
        if (fora(dia)) {
            return;
        }
        m_saida << "<details class=\"dia\" data-crz=\"" << dia.crz << "\""
                << (m_vazio ? " open" : "") << "><summary><strong>Z " << comZeros(dia.crz, 4)
                << "</strong>";
        m_vazio = false;
        if (dia.reducao) {
            m_saida << "<span>" << escapaHtml(formataDataHora(dia.reducao->movimento))
                    << "</span><span>gross sales R$ " << textoBr(dia.reducao->vb)
                    << "</span><span>closed " << escapaHtml(formataDataHora(dia.reducao->emissao))
                    << "</span>";
        } else {
            m_saida << "<span>not closed</span>";
        }
        m_saida << "</summary>\n";
        m_dentro = true;
    }

    void documento(Documento& d) override
    {
        if (!m_dentro) {
            return;
        }
        m_leitor.completa(d);
        const bool semFechamento = d.cupom() && !d.cancelado && !d.fechamentoRegistrado();
        m_saida << "<details class=\"doc" << (d.cancelado ? " cancelado" : "") << "\" data-coo=\""
                << d.coo << "\"><summary><span>" << comZeros(d.coo, 6)
                << "</span><span class=\"hora\">" << escapaHtml(formataDataHora(d.inicio))
                << "</span><span>" << escapaHtml(titulo(d)) << "</span><span class=\"valor num\">"
                << (d.cupom() || d.reducao ? textoBr(d.total) : "")
                << "</span><span class=\"marca\">"
                << (d.cancelado     ? "CANCELADO"
                    : semFechamento ? "no closing"
                                    : "")
                << "</span></summary>\n<div class=\"papel\"><pre class=\"bobina\" lang=\"pt-BR\">";
        for (const std::string& linha : imprime(d, m_casa)) {
            m_saida << escapaHtml(linha) << '\n';
        }
        m_saida << "</pre></div></details>\n";
    }

    void fechaDia(const Dia&) override
    {
        if (m_dentro) {
            m_saida << "</details>\n";
        }
        m_dentro = false;
    }

    bool vazio() const { return m_vazio; }

  private:
    bool fora(const Dia& dia) const { return m_pagina.crz && *m_pagina.crz != dia.crz; }

    Leitor& m_leitor;
    const Pagina& m_pagina;
    const Estabelecimento& m_casa;
    std::ostream& m_saida;
    bool m_vazio = true;
    bool m_dentro = false;
};

void escreveHoras(const std::vector<VendaHora>& horas, std::ostream& saida)
{
    saida << "<section class=\"quadro\" id=\"hours\"><h2>Sales by hour</h2>\n"
          << graficoPorHora(horas)
          << "\n<details><summary>Figures</summary><table><tr><th>Hour</th>"
             "<th class=\"num\">Receipts</th><th class=\"num\">R$</th></tr>\n";
    for (std::size_t hora = 0; hora < horas.size(); ++hora) {
        if (horas[hora].cupons > 0) {
            saida << "<tr><td>" << comZeros(static_cast<int>(hora), 2)
                  << " h</td><td class=\"num\">" << horas[hora].cupons << "</td><td class=\"num\">"
                  << textoBr(horas[hora].valor) << "</td></tr>\n";
        }
    }
    saida << "</table></details></section>\n";
}

void escreveMeios(const std::vector<VendaMeio>& meios, const Decimal& troco, std::ostream& saida)
{
    saida << "<section class=\"quadro\" id=\"means\"><h2>Sales by payment means</h2>\n";
    if (meios.empty()) {
        saida << "<p class=\"fraco\">No payments.</p></section>\n";
        return;
    }
    saida << graficoPorMeio(meios) << "\n<p class=\"fraco\">Change of R$ " << textoBr(troco)
          << " is not taken off.</p>\n<details><summary>Figures</summary><table><tr><th>Means</th>"
             "<th class=\"num\">Payments</th><th class=\"num\">R$</th></tr>\n";
    for (const VendaMeio& meio : meios) {
        saida << "<tr><td>" << escapaHtml(nomeOuNumero(meio)) << "</td><td class=\"num\">"
              << meio.pagamentos << "</td><td class=\"num\">" << textoBr(meio.valor)
              << "</td></tr>\n";
    }
    saida << "</table></details></section>\n";
}

void WriteLosses(const Losses* losses, std::ostream& saida)
{
    saida << "<section class=\"quadro\" id=\"lost\"><h2>Rejected statements and lost "
             "commands</h2>\n";
    if (!losses) {
        saida << "<p class=\"fraco\">No firmware log was given.</p>\n";
    } else if (losses->rejected.empty() && losses->lost.empty()) {
        saida << "<p class=\"fraco\">The firmware log holds none.</p>\n";
    } else {
        for (const RejectedStatement& one : losses->rejected) {
            saida << "<div class=\"perdido\"><p><b>" << escapaHtml(formataDataHora(one.time))
                  << "</b> command " << one.command << ", statement rejected, log line " << one.line
                  << ": <span class=\"marca\">" << escapaHtml(one.error) << "</span></p><pre>"
                  << escapaHtml(one.statement) << "</pre></div>\n";
        }
        for (const LostCommand& one : losses->lost) {
            saida << "<div class=\"perdido\"><p><b>" << escapaHtml(formataDataHora(one.time))
                  << "</b> command lost, log line " << one.line << ": <span class=\"marca\">"
                  << escapaHtml(one.reason) << "</span></p></div>\n";
        }
    }
    saida << "</section>\n";
}

void escreveCabeca(const std::string& nome, std::ostream& saida)
{
    saida << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
             "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
             "style-src '"
          << resumo(ESTILO_DA_PAGINA) << "'; script-src '" << resumo(SCRIPT_DA_PAGINA)
          << "'; base-uri 'none'; form-action 'none'\">\n"
             "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>"
          << escapaHtml(nome) << "</title>\n<style>" << ESTILO_DA_PAGINA << "</style></head>\n";
}

} // namespace

void escrevePagina(Leitor& leitor, const Pagina& pagina, std::ostream& saida)
{
    const Estabelecimento casa = leitor.estabelecimento();
    const std::vector<VendaHora> horas = leitor.vendasPorHora(pagina.crz);
    std::int64_t cupons = 0;
    Decimal total;
    for (const VendaHora& venda : horas) {
        cupons += venda.cupons;
        total = total + venda.valor;
    }

    const std::string nome = !emBranco(casa.nomeFantasia)  ? casa.nomeFantasia
                             : !emBranco(casa.razaoSocial) ? casa.razaoSocial
                                                           : pagina.nome;
    escreveCabeca(nome, saida);
    saida
        << "<body><header><h1>" << escapaHtml(nome) << "</h1>\n<p class=\"fraco\">"
        << escapaHtml(emBranco(casa.cnpj) ? "" : "CNPJ " + formataCpfCnpj(casa.cnpj) + " · ")
        << escapaHtml(pagina.nome)
        << (pagina.crz ? " · Z " + comZeros(*pagina.crz, 4) + " alone" : std::string())
        << "</p>\n<nav><a href=\"#hours\">By hour</a><a href=\"#means\">By payment means</a>"
           "<a href=\"#lost\">Rejected and lost</a><a href=\"#days\">Days and documents</a></nav>\n"
           "</header><main>\n<div class=\"numeros\">\n"
        << numero(std::to_string(cupons), "fiscal receipts, without cancelled ones")
        << numero("R$ " + textoBr(total), "sold on these receipts")
        << (pagina.losses
                ? numero(std::to_string(pagina.losses->rejected.size()), "rejected statements") +
                      numero(std::to_string(pagina.losses->lost.size()), "lost commands")
                : std::string())
        << "</div>\n";
    escreveHoras(horas, saida);
    escreveMeios(leitor.vendasPorMeio(pagina.crz), leitor.troco(pagina.crz), saida);
    WriteLosses(pagina.losses, saida);

    saida << "<section class=\"quadro\" id=\"days\"><h2>Days and documents</h2>\n"
             "<form class=\"ferramentas\" id=\"procura\"><label for=\"coo\">COO</label>"
             "<input id=\"coo\" inputmode=\"numeric\" pattern=\"[0-9]+\" required>"
             "<button>Show</button><button type=\"button\" id=\"abre\">Open all days</button>"
             "<button type=\"button\" id=\"fecha\">Close all</button>"
             "<span id=\"achado\" class=\"fraco\" role=\"status\"></span></form>\n";
    Escritor escritor(leitor, pagina, casa, saida);
    leitor.percorre(escritor);
    if (escritor.vazio()) {
        saida << "<p class=\"fraco\">No documents.</p>\n";
    }
    saida << "</section></main>\n<script>" << SCRIPT_DA_PAGINA << "</script></body></html>\n";
}

} // namespace bancada::relatorio
