// Programming of the register.
#include "bancada/CheckDigits.h"
#include "bancada/Messages.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/TextForms.h"
#include "bancada/registro/Totalizadores.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace bancada
{

namespace
{

constexpr std::array<std::string_view, 27> UNIDADES_DA_FEDERACAO = {
    "AC", "AL", "AM", "AP", "BA", "CE", "DF", "ES", "GO", "MA", "MG", "MS", "MT", "PA",
    "PB", "PE", "PI", "PR", "RJ", "RN", "RO", "RR", "RS", "SC", "SE", "SP", "TO"};

// The place of the rate: `indice`, or the first free one for 0. None when there is no such place.
TotalizadorPlace AliquotaPlace(const BaseFiscal& base, const std::string& tributacao, int indice)
{
    if (indice != 0) {
        return FindTotalizador(tributacao, indice);
    }
    for (int numero = 1; numero <= MAX_ALIQUOTAS; ++numero) {
        const TotalizadorPlace place = FindTotalizador(tributacao, numero);
        if (!base.programado[static_cast<std::size_t>(place.baseImposto)]
                            [static_cast<std::size_t>(place.posicao)]) {
            return place;
        }
    }
    return {};
}

Refusal CheckRange(const char* what, int valor, int maximum)
{
    if (valor < 1 || valor > maximum) {
        return Tr("%1 goes from 1 to %2", {Tr(what), std::to_string(maximum)});
    }
    return std::nullopt;
}

Refusal CheckText(const char* what, const std::string& text)
{
    if (text.empty()) {
        return Tr("%1 is missing", {Tr(what)});
    }
    return std::nullopt;
}

} // namespace

Refusal Registro::CheckProgramaAliquota(const std::string& tributacao, int indice,
                                        int centesimos) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    if (tributacao != "T" && tributacao != "S") {
        return Tr("a rate is of T (ICMS) or S (ISSQN), not %1", {tributacao});
    }
    if (centesimos < 0 || centesimos > MAX_ALIQUOTA) {
        return Tr("a rate goes from 0.00 to 99.99 %");
    }
    const TotalizadorPlace place = AliquotaPlace(m_memoria.fiscal, tributacao, indice);
    if (!place.Exists()) {
        return indice == 0 ? Tr("all %1 rates of %2 are programmed",
                                {std::to_string(MAX_ALIQUOTAS), tributacao})
                           : Tr("there is no rate %1", {tributacao + std::to_string(indice)});
    }
    const auto base = static_cast<std::size_t>(place.baseImposto);
    const auto posicao = static_cast<std::size_t>(place.posicao);
    if (m_memoria.fiscal.aliquota[base][posicao] != centesimos &&
        !m_memoria.fiscal.totais[base][posicao].IsZero()) {
        return Tr("the rate %1 has moved on this day: it stands until the Redução Z",
                  {tributacao + std::to_string(indice)});
    }
    return std::nullopt;
}

void Registro::ProgramaAliquota(const std::string& tributacao, int indice, int centesimos)
{
    const TotalizadorPlace place = AliquotaPlace(m_memoria.fiscal, tributacao, indice);
    const auto base = static_cast<std::size_t>(place.baseImposto);
    const auto posicao = static_cast<std::size_t>(place.posicao);
    m_memoria.fiscal.programado[base][posicao] = true;
    m_memoria.fiscal.aliquota[base][posicao] = centesimos;
}

Refusal Registro::CheckHabilitaTotalizador(const std::string& codigo, int numero,
                                           bool habilita) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    const TotalizadorPlace place = FindTotalizador(codigo, numero);
    if (!IsTotalizadorEspecial(codigo) || !place.Exists()) {
        return Tr("there is no totalizer %1", {codigo + std::to_string(numero)});
    }
    if (!habilita && !m_memoria.fiscal
                          .totais[static_cast<std::size_t>(place.baseImposto)]
                                 [static_cast<std::size_t>(place.posicao)]
                          .IsZero()) {
        return Tr("the totalizer %1 has moved on this day: it stands until the Redução Z",
                  {codigo + std::to_string(numero)});
    }
    return std::nullopt;
}

void Registro::HabilitaTotalizador(const std::string& codigo, int numero, bool habilita)
{
    const TotalizadorPlace place = FindTotalizador(codigo, numero);
    m_memoria.fiscal.programado[static_cast<std::size_t>(place.baseImposto)]
                               [static_cast<std::size_t>(place.posicao)] = habilita;
}

Refusal Registro::CheckProgramaMeioPagamento(int indice, const std::string& descricao,
                                             EVinculacaoCCD) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckRange(TrLater("a Meio de Pagamento"), indice, MAX_MEIOS_PAGAMENTO)) {
        return refusal;
    }
    return CheckText(TrLater("the description"), descricao);
}

void Registro::ProgramaMeioPagamento(int indice, const std::string& descricao,
                                     EVinculacaoCCD vinculacao)
{
    MeioDePagamento& meio = m_memoria.meios[static_cast<std::size_t>(indice) - 1];
    meio.descricao = descricao;
    meio.vinculacao = vinculacao;
}

Refusal Registro::CheckProgramaTotalizadorNF(int indice, const std::string& descricao) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal =
            CheckRange(TrLater("a non-fiscal totalizer"), indice, MAX_TOTALIZADORES_NF)) {
        return refusal;
    }
    return CheckText(TrLater("the description"), descricao);
}

void Registro::ProgramaTotalizadorNF(int indice, const std::string& descricao)
{
    m_memoria.naoFiscal.nome[static_cast<std::size_t>(indice) - 1] = descricao;
}

Refusal Registro::CheckProgramaLoja(int numero) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    return CheckRange(TrLater("the shop's number"), numero, MAX_NUMERO_LOJA);
}

void Registro::ProgramaLoja(int numero)
{
    m_memoria.ecf.loja = numero;
}

Refusal Registro::CheckProgramaSequenciaECF(int numero) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    return CheckRange(TrLater("the till number"), numero, MAX_SEQUENCIA_ECF);
}

void Registro::ProgramaSequenciaECF(int numero)
{
    m_memoria.ecf.sequencia = numero;
}

Refusal Registro::CheckProgramaUsuario(const std::string& razaoSocial, const std::string&,
                                       const std::string&) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    return CheckText(TrLater("the Razão Social"), razaoSocial);
}

void Registro::ProgramaUsuario(const std::string& razaoSocial, const std::string& nomeFantasia,
                               const std::string& endereco)
{
    m_memoria.contribuinte.razaoSocial = razaoSocial;
    m_memoria.contribuinte.nomeFantasia = nomeFantasia;
    m_memoria.contribuinte.endereco = endereco;
}

Refusal Registro::CheckProgramaCNPJ_IE_IM(const std::string& cnpj, const std::string&,
                                          const std::string&, const std::string& uf) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    if (!IsCNPJ(cnpj)) {
        return Tr("the CNPJ %1 is wrong", {cnpj});
    }
    if (std::find(UNIDADES_DA_FEDERACAO.begin(), UNIDADES_DA_FEDERACAO.end(), uf) ==
        UNIDADES_DA_FEDERACAO.end()) {
        return Tr("there is no UF %1", {uf});
    }
    return std::nullopt;
}

void Registro::ProgramaCNPJ_IE_IM(const std::string& cnpj, const std::string& ie,
                                  const std::string& im, const std::string& uf)
{
    Contribuinte& contribuinte = m_memoria.contribuinte;
    if (contribuinte.cnpj != cnpj) {
        m_memoria.gtInicial = m_memoria.gt;
    }
    contribuinte.cnpj = cnpj;
    contribuinte.ie = ie;
    contribuinte.im = im;
    contribuinte.uf = uf;
}

Refusal Registro::CheckProgramaNrSerie(const std::string&, const std::string&, const std::string&,
                                       const std::string& numSerie) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    return CheckText(TrLater("the serial number"), numSerie);
}

void Registro::ProgramaNrSerie(const std::string& marca, const std::string& modelo,
                               const std::string& tipo, const std::string& numSerie)
{
    m_memoria.ecf.marca = marca;
    m_memoria.ecf.modelo = modelo;
    m_memoria.ecf.tipo = tipo;
    m_memoria.ecf.numSerie = numSerie;
}

Refusal Registro::CheckProgramaMoeda(const std::string& simbolo) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    return CheckText(TrLater("the currency symbol"), simbolo);
}

void Registro::ProgramaMoeda(const std::string& simbolo)
{
    m_memoria.ecf.simboloMoeda = simbolo;
}

} // namespace bancada
