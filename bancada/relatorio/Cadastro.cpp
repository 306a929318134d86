#include "bancada/relatorio/Cadastro.h"

namespace bancada::relatorio
{

Cadastro::Cadastro(const leitura::DatabaseReading& database)
    : m_usuario(database, leitura::DadosUsuarioTable(), "ORDER BY seq_usuario LIMIT 1"),
      m_ecf(database, leitura::DadosEcfTable(), "ORDER BY num_ecf LIMIT 1"),
      m_versao(database, leitura::VersaoSbTable(), "ORDER BY rowid DESC LIMIT 1"),
      m_meio(database, leitura::MeioPagamentoTable(), "WHERE num_indice = ?1"),
      m_totalizador(database, leitura::TotalizadorNaoFiscalTable(), "WHERE num_indice = ?1")
{
}

namespace
{

// A register may fill a name up with blanks to the width of its field.
void RemovePadding(Text& text)
{
    const std::string& value = text.Value();
    const std::size_t end = value.find_last_not_of(' ') + 1; // 0 where there is nothing else
    if (text.IsKnown() && end < value.size()) {
        text = value.substr(0, end);
    }
}

} // namespace

Estabelecimento Cadastro::ReadEstabelecimento()
{
    Estabelecimento e;
    if (leitura::DadosUsuarioRow usuario; m_usuario.With().Next(usuario)) {
        e.razaoSocial = usuario.razaoSocial;
        e.nomeFantasia = usuario.nomeFantasia;
        e.endereco = usuario.endereco;
        e.cnpj = usuario.cnpj;
        e.ie = usuario.ie;
        e.im = usuario.im;
        e.uf = usuario.uf;
    }
    m_usuario.End();
    if (leitura::DadosEcfRow ecf; m_ecf.With().Next(ecf)) {
        e.numSerie = ecf.numSerie;
        e.marca = ecf.marca;
        e.modelo = ecf.modelo;
        e.tipo = ecf.tipo;
        e.numCaixa = ecf.numCaixa;
    }
    m_ecf.End();
    if (leitura::VersaoSbRow versao; m_versao.With().Next(versao)) {
        e.versaoSb = versao.versao;
    }
    m_versao.End();
    for (Text* text : {&e.razaoSocial, &e.nomeFantasia, &e.endereco, &e.cnpj, &e.ie, &e.im, &e.uf,
                       &e.numSerie, &e.marca, &e.modelo, &e.tipo, &e.versaoSb}) {
        RemovePadding(*text);
    }
    return e;
}

Text Cadastro::FindMeio(const Integer& indice)
{
    if (!indice.IsKnown()) {
        return {};
    }
    leitura::MeioPagamentoRow meio;
    m_meio.With(indice.Value()).Next(meio);
    m_meio.End();
    return meio.descricao;
}

Text Cadastro::FindTotalizador(const Integer& indice)
{
    if (!indice.IsKnown()) {
        return {};
    }
    leitura::TotalizadorNaoFiscalRow totalizador;
    const bool programmed = m_totalizador.With(indice.Value()).Next(totalizador);
    m_totalizador.End();
    if (!programmed && indice.Value() == 1) {
        return std::string("FUNDO DE TROCO");
    }
    if (!programmed && indice.Value() == 2) {
        return std::string("SANGRIA");
    }
    return totalizador.descricao;
}

} // namespace bancada::relatorio
