#include "bancada/relatorio/Filtro.h"

#include "bancada/Messages.h"
#include "bancada/relatorio/DisplayText.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace bancada::relatorio
{
namespace
{

// `wanted` is folded.
bool Contains(const Text& text, const std::u32string& wanted)
{
    return Folded(text.Shown()).find(wanted) != std::u32string::npos;
}

std::string DigitsOf(const std::string& text)
{
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](char c) { return c >= '0' && c <= '9'; });
    return digits;
}

// Whether the text is a CPF or CNPJ, or a part of one, as it is written or printed.
bool IsNumber(const std::string& text)
{
    return !DigitsOf(text).empty() && text.find_first_not_of("0123456789./- ") == std::string::npos;
}

bool IsLess(const Amount& a, const Amount& b)
{
    return (a - b).Units() < 0;
}

bool HasConsumidor(const Documento& d, const std::string& consumidor)
{
    const std::u32string wanted = Folded(consumidor);
    return Contains(d.nome, wanted) || Contains(d.cpfCnpj, wanted) ||
           (IsNumber(consumidor) &&
            DigitsOf(d.cpfCnpj.Shown()).find(DigitsOf(consumidor)) != std::string::npos);
}

bool HasTexto(const Documento& d, const std::string& texto)
{
    std::vector<const Text*> texts = {&d.cpfCnpj,  &d.nome,       &d.endereco,
                                      &d.mensagem, &d.aplicativo, &d.chave};
    for (const Item& item : d.itens) {
        texts.insert(texts.end(), {&item.codigo, &item.descricao, &item.unidade, &item.aliquota});
    }
    for (const Pagamento& pagamento : d.pagamentos) {
        texts.insert(texts.end(), {&pagamento.nome, &pagamento.info});
    }
    if (d.reducao) {
        for (const TotalizadorReducao& totalizador : d.reducao->totalizadores) {
            texts.push_back(&totalizador.codigo);
        }
        for (const MeioReducao& meio : d.reducao->meios) {
            texts.push_back(&meio.descricao);
        }
    }
    const std::u32string wanted = Folded(texto);
    return Contains(Title(d), wanted) ||
           std::any_of(texts.begin(), texts.end(),
                       [&](const Text* text) { return Contains(*text, wanted); });
}

} // namespace

bool Filtro::IsNone() const
{
    return !cancelado && consumidor.empty() && !minimo && !maximo && texto.empty() &&
           desde.empty() && ate.empty();
}

bool Filtro::Admits(const Documento& d) const
{
    const bool ofReceipts = cancelado || !consumidor.empty() || minimo || maximo;
    if (ofReceipts && !d.IsCupom()) {
        return false;
    }
    if (cancelado && !d.cancelado.IsSet()) {
        return false;
    }
    if ((minimo && (!d.total.IsKnown() || IsLess(d.total, *minimo))) ||
        (maximo && (!d.total.IsKnown() || IsLess(*maximo, d.total)))) {
        return false;
    }
    const std::string dia = d.inicio.Shown().substr(0, 10);
    if ((!desde.empty() && dia < desde) || (!ate.empty() && dia > ate)) {
        return false;
    }
    return (consumidor.empty() || HasConsumidor(d, consumidor)) &&
           (texto.empty() || HasTexto(d, texto));
}

std::string Filtro::Described() const
{
    std::string described;
    const auto add = [&described](const std::string& text) {
        described += (described.empty() ? "" : "; ") + text;
    };
    if (cancelado) {
        add(Tr("cancelled receipts"));
    }
    if (!consumidor.empty()) {
        add(Tr("consumer %1", {consumidor}));
    }
    if (minimo) {
        add(Tr("total of at least R$ %1", {AmountText(*minimo)}));
    }
    if (maximo) {
        add(Tr("total of at most R$ %1", {AmountText(*maximo)}));
    }
    if (!texto.empty()) {
        add(Tr("with the text %1", {texto}));
    }
    if (!desde.empty()) {
        add(Tr("from %1 on", {FormatDateTime(desde)}));
    }
    if (!ate.empty()) {
        add(Tr("up to %1", {FormatDateTime(ate)}));
    }
    return described;
}

} // namespace bancada::relatorio
