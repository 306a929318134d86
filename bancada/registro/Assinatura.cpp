#include "bancada/registro/Assinatura.h"

#include "bancada/registro/CurrentCupom.h"
#include "bancada/registro/TextForms.h"

#include <sodium.h>

namespace bancada
{

static_assert(ASSINATURA_BYTES == crypto_hash_sha256_BYTES, "SHA-256 is 32 bytes");
static_assert(sodium_base64_ENCODED_LEN(ASSINATURA_BYTES, sodium_base64_VARIANT_ORIGINAL) ==
                  ASSINATURA_BASE64_LENGTH + 1,
              "Base64 of 32 bytes is 44 characters and a terminator");

namespace
{

// One line of the text: a word that names it and its fields. A text field carries its length, so
// that no text can pass for two fields.
class Line
{
  public:
    explicit Line(const char* name) : m_text(name) {}

    Line& Number(long long valor)
    {
        m_text += ' ' + std::to_string(valor);
        return *this;
    }
    Line& Value(const Financial& valor)
    {
        m_text += ' ' + ValorToText(valor);
        return *this;
    }
    Line& Text(const std::string& text)
    {
        m_text += ' ' + std::to_string(text.size()) + ':' + text;
        return *this;
    }
    std::string End() { return m_text + '\n'; }

  private:
    std::string m_text;
};

} // namespace

std::string CanonicalText(const Memoria& memoria)
{
    const CurrentCupom& cupom = memoria.cupom;
    std::string text = Line("ecf").Text(memoria.contribuinte.cnpj).Text(memoria.ecf.numSerie).End();
    text += Line("documento")
                .Number(cupom.tipo)
                .Number(cupom.coo)
                .Number(cupom.ccf)
                .Number(cupom.gnf)
                .Number(cupom.abertura.s)
                .Number(cupom.fechamento.s)
                .End();
    text += Line("consumidor")
                .Text(cupom.consumidor.cpfCnpj)
                .Text(cupom.consumidor.nome)
                .Text(cupom.consumidor.endereco)
                .End();
    for (const ItemVendido& item : cupom.itens) {
        text += Line("item")
                    .Text(item.codigo)
                    .Text(item.descricao)
                    .Text(DecimalToText(item.quantidade))
                    .Text(item.unidade)
                    .Text(DecimalToText(item.valorUnitario))
                    .Text(item.tributacao)
                    .Number(item.numero)
                    .Value(item.bruto)
                    .Value(item.desconto)
                    .Value(item.acrescimo)
                    .Value(item.rateio)
                    .Number(item.cancelado ? 1 : 0)
                    .End();
    }
    text += Line("subtotal").Value(cupom.subtotal).End();
    if (cupom.ajusteAplicado) {
        text += Line("ajuste").Number(cupom.ajusteOperacao).Value(cupom.ajusteValor).End();
    }
    for (const PagamentoEfetuado& pagamento : cupom.pagamentos) {
        text += Line("pagamento").Number(pagamento.meio + 1).Value(pagamento.valor).End();
    }
    text += Line("total").Value(CupomTotal(cupom)).Value(cupom.troco).End();
    text += Line("mensagem").Text(cupom.mensagem).End();
    return text;
}

std::array<std::uint8_t, ASSINATURA_BYTES> Sign(const Memoria& memoria)
{
    const std::string text = CanonicalText(memoria);
    std::array<std::uint8_t, ASSINATURA_BYTES> digest{};
    crypto_hash_sha256(digest.data(), reinterpret_cast<const unsigned char*>(text.data()),
                       text.size());
    return digest;
}

void WriteBase64(const char* assinatura, char* out)
{
    sodium_bin2base64(out, ASSINATURA_BASE64_LENGTH + 1,
                      reinterpret_cast<const unsigned char*>(assinatura), ASSINATURA_BYTES,
                      sodium_base64_VARIANT_ORIGINAL);
}

} // namespace bancada
