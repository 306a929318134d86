#include "bancada/registro/Assinatura.h"

#include "bancada/registro/CupomAtual.h"
#include "bancada/registro/Textos.h"

#include <sodium.h>

namespace bancada
{

static_assert(TAMANHO_ASSINATURA == crypto_hash_sha256_BYTES, "SHA-256 is 32 bytes");
static_assert(sodium_base64_ENCODED_LEN(TAMANHO_ASSINATURA, sodium_base64_VARIANT_ORIGINAL) ==
                  TAMANHO_ASSINATURA_BASE64 + 1,
              "Base64 of 32 bytes is 44 characters and a terminator");

namespace
{

// One line of the text: a word that names it and its fields. A text field carries its length, so
// that no text can pass for two fields.
class Linha
{
  public:
    explicit Linha(const char* nome) : m_texto(nome) {}

    Linha& Numero(long long valor)
    {
        m_texto += ' ' + std::to_string(valor);
        return *this;
    }
    Linha& Valor(const Financial& valor)
    {
        m_texto += ' ' + TextoValor(valor);
        return *this;
    }
    Linha& Texto(const std::string& texto)
    {
        m_texto += ' ' + std::to_string(texto.size()) + ':' + texto;
        return *this;
    }
    std::string Fim() { return m_texto + '\n'; }

  private:
    std::string m_texto;
};

} // namespace

std::string TextoCanonico(const Memoria& memoria)
{
    const CupomAtual& cupom = memoria.cupom;
    std::string texto =
        Linha("ecf").Texto(memoria.contribuinte.cnpj).Texto(memoria.ecf.numSerie).Fim();
    texto += Linha("documento")
                 .Numero(cupom.tipo)
                 .Numero(cupom.coo)
                 .Numero(cupom.ccf)
                 .Numero(cupom.gnf)
                 .Numero(cupom.abertura.s)
                 .Numero(cupom.fechamento.s)
                 .Fim();
    texto += Linha("consumidor")
                 .Texto(cupom.consumidor.cpfCnpj)
                 .Texto(cupom.consumidor.nome)
                 .Texto(cupom.consumidor.endereco)
                 .Fim();
    for (const ItemRegistrado& item : cupom.itens) {
        texto += Linha("item")
                     .Texto(item.codigo)
                     .Texto(item.descricao)
                     .Texto(TextoDecimal(item.quantidade))
                     .Texto(item.unidade)
                     .Texto(TextoDecimal(item.valorUnitario))
                     .Texto(item.tributacao)
                     .Numero(item.numero)
                     .Valor(item.bruto)
                     .Valor(item.desconto)
                     .Valor(item.acrescimo)
                     .Valor(item.rateio)
                     .Numero(item.cancelado ? 1 : 0)
                     .Fim();
    }
    texto += Linha("subtotal").Valor(cupom.subtotal).Fim();
    if (cupom.ajusteAplicado) {
        texto += Linha("ajuste").Numero(cupom.ajusteOperacao).Valor(cupom.ajusteValor).Fim();
    }
    for (const PagamentoRegistrado& pagamento : cupom.pagamentos) {
        texto += Linha("pagamento").Numero(pagamento.meio + 1).Valor(pagamento.valor).Fim();
    }
    texto += Linha("total").Valor(TotalDoCupom(cupom)).Valor(cupom.troco).Fim();
    texto += Linha("mensagem").Texto(cupom.mensagem).Fim();
    return texto;
}

std::array<std::uint8_t, TAMANHO_ASSINATURA> Assina(const Memoria& memoria)
{
    const std::string texto = TextoCanonico(memoria);
    std::array<std::uint8_t, TAMANHO_ASSINATURA> resumo{};
    crypto_hash_sha256(resumo.data(), reinterpret_cast<const unsigned char*>(texto.data()),
                       texto.size());
    return resumo;
}

void EscreveBase64(const char* assinatura, char* out)
{
    sodium_bin2base64(out, TAMANHO_ASSINATURA_BASE64 + 1,
                      reinterpret_cast<const unsigned char*>(assinatura), TAMANHO_ASSINATURA,
                      sodium_base64_VARIANT_ORIGINAL);
}

} // namespace bancada
