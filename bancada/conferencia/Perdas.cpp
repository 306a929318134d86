#include "bancada/conferencia/Perdas.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace bancada
{

namespace
{

// The columns by which a reader finds a row again.
const char* const COLUNAS_CHAVE[] = {
    "cont_coo", "cont_ccf", "cont_gnf",   "cont_crz",    "seq_item",
    "cont_cro", "cont_cfd", "num_indice", "seq_usuario", "indice_meio_pagamento"};

bool EhChave(const std::string& coluna)
{
    return std::find(std::begin(COLUNAS_CHAVE), std::end(COLUNAS_CHAVE), coluna) !=
           std::end(COLUNAS_CHAVE);
}

std::string Apara(const std::string& texto)
{
    const char* const brancos = " \t\r\n";
    const std::size_t inicio = texto.find_first_not_of(brancos);
    if (inicio == std::string::npos) {
        return {};
    }
    return texto.substr(inicio, texto.find_last_not_of(brancos) - inicio + 1);
}

std::vector<std::string> Separa(const std::string& texto, char separador)
{
    std::vector<std::string> partes;
    std::size_t inicio = 0;
    for (;;) {
        const std::size_t fim = texto.find(separador, inicio);
        partes.push_back(Apara(texto.substr(inicio, fim - inicio)));
        if (fim == std::string::npos) {
            return partes;
        }
        inicio = fim + 1;
    }
}

// A whole decimal number, between apostrophes or not.
std::optional<std::int64_t> Numero(std::string texto)
{
    if (texto.size() >= 2 && texto.front() == '\'' && texto.back() == '\'') {
        texto = texto.substr(1, texto.size() - 2);
    }
    if (texto.empty() || texto.size() > 18 ||
        texto.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    return std::strtoll(texto.c_str(), nullptr, 10);
}

// A number with or without decimals, or one character between apostrophes: a value that no text of
// a user can be mistaken for when it stands at the end of a statement.
bool ValorSimples(const std::string& valor)
{
    if (valor.size() == 3 && valor.front() == '\'' && valor.back() == '\'') {
        return true;
    }
    return !valor.empty() && valor.find_first_not_of("0123456789.-") == std::string::npos;
}

void LeInsert(const std::string& sql, Perda& perda)
{
    const std::size_t abreColunas = sql.find('(');
    if (abreColunas == std::string::npos) {
        perda.tabela = Apara(sql.substr(12));
        return;
    }
    perda.tabela = Apara(sql.substr(12, abreColunas - 12));
    const std::size_t fechaColunas = sql.find(')', abreColunas);
    const std::size_t abreValores = sql.find('(', abreColunas + 1);
    if (fechaColunas == std::string::npos || abreValores == std::string::npos) {
        return;
    }
    const std::vector<std::string> colunas =
        Separa(sql.substr(abreColunas + 1, fechaColunas - abreColunas - 1), ',');
    std::string texto = sql.substr(abreValores + 1);
    const bool inteiro = !texto.empty() && texto.back() == ')';
    if (inteiro) {
        texto.pop_back();
    }
    const std::vector<std::string> valores = Separa(texto, ',');
    // Commas inside a text shift what follows it. The values before the first text are in their
    // place counted from the start, those after the last text counted from the end.
    const std::size_t completos = inteiro ? valores.size() : valores.size() - 1;
    for (std::size_t i = 0; i < std::min(completos, colunas.size()); ++i) {
        const std::optional<std::int64_t> numero = Numero(valores[i]);
        if (!numero) {
            break;
        }
        if (EhChave(colunas[i])) {
            perda.chave[colunas[i]] = *numero;
        }
    }
    if (!inteiro) {
        return;
    }
    for (std::size_t i = 0; i < std::min(valores.size(), colunas.size()); ++i) {
        const std::string& valor = valores[valores.size() - 1 - i];
        const std::string& coluna = colunas[colunas.size() - 1 - i];
        if (!ValorSimples(valor)) {
            break;
        }
        const std::optional<std::int64_t> numero = Numero(valor);
        if (numero && EhChave(coluna)) {
            perda.chave.emplace(coluna, *numero);
        }
    }
}

void LeUpdate(const std::string& sql, Perda& perda)
{
    const std::size_t fimTabela = sql.find(' ', 7);
    perda.tabela = sql.substr(7, fimTabela == std::string::npos ? fimTabela : fimTabela - 7);
    std::string minusculo = sql;
    std::transform(minusculo.begin(), minusculo.end(), minusculo.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    // The condition stands last, after any text of a user.
    const std::size_t onde = minusculo.rfind("where ");
    if (onde == std::string::npos) {
        return;
    }
    std::string condicao = minusculo.substr(onde + 6);
    for (std::size_t e = condicao.find(" and "); e != std::string::npos;
         e = condicao.find(" and ")) {
        condicao.replace(e, 5, ",");
    }
    for (const std::string& igualdade : Separa(condicao, ',')) {
        const std::vector<std::string> lados = Separa(igualdade, '=');
        if (lados.size() != 2 || !EhChave(lados[0])) {
            continue;
        }
        const std::optional<std::int64_t> numero = Numero(lados[1]);
        if (numero) {
            perda.chave[lados[0]] = *numero;
        }
    }
}

bool Comeca(const std::string& texto, const char* prefixo)
{
    return texto.rfind(prefixo, 0) == 0;
}

} // namespace

std::optional<std::int64_t> Perda::Valor(const std::string& coluna) const
{
    const auto achado = chave.find(coluna);
    return achado == chave.end() ? std::nullopt : std::optional<std::int64_t>(achado->second);
}

std::string Perda::Chave() const
{
    std::string texto;
    for (const char* coluna : COLUNAS_CHAVE) {
        if (const std::optional<std::int64_t> valor = Valor(coluna)) {
            texto +=
                (texto.empty() ? "" : ", ") + std::string(coluna) + " " + std::to_string(*valor);
        }
    }
    return texto.empty() ? "?" : texto;
}

Perda LeStatement(const std::string& sql)
{
    Perda perda;
    if (Comeca(sql, "INSERT INTO ")) {
        perda.operacao = "INSERT";
        LeInsert(sql, perda);
        perda.prevista = perda.tabela == "moeda";
    } else if (Comeca(sql, "UPDATE ")) {
        perda.operacao = "UPDATE";
        LeUpdate(sql, perda);
        perda.prevista =
            perda.tabela == "cupom_fiscal" &&
            sql.find("' id_cupom_adicional = 'S' WHERE cont_coo = ") != std::string::npos;
    }
    return perda;
}

void Perdas::Rejeitado(int comando, const std::string& erro, const std::string& sql)
{
    Perda perda = LeStatement(sql);
    perda.comando = comando;
    perda.erro = erro;
    if (const std::optional<std::int64_t> coo = perda.Valor("cont_coo")) {
        // A loss that is part of the required behaviour is reckoned with and explains no fault.
        (perda.prevista ? m_adicionais : m_coos).insert(*coo);
    }
    if (const std::optional<std::int64_t> ccf = perda.Valor("cont_ccf")) {
        m_ccfs.insert(*ccf);
    }
    if (const std::optional<std::int64_t> gnf = perda.Valor("cont_gnf")) {
        m_gnfs.insert(*gnf);
    }
    if (const std::optional<std::int64_t> crz = perda.Valor("cont_crz")) {
        m_crzs.insert(*crz);
    }
    m_todas.push_back(std::move(perda));
}

void Perdas::ComandoPerdido(const std::string& hora, const std::string& motivo)
{
    m_comandos.emplace_back(hora, motivo);
}

} // namespace bancada
