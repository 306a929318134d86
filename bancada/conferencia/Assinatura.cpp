#include "bancada/conferencia/Assinatura.h"

#include "bancada/conferencia/Dominio.h"
#include "bancada/conferencia/Rateio.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <sodium.h>

namespace bancada::conferencia
{
namespace
{

using leitura::Amount;
using leitura::ItemCupomFiscalRow;
using leitura::PagamentoCupomRow;

constexpr int CENTS = 2;
// So many digests are made of one receipt, and no more.
constexpr std::int64_t MOST_DIGESTS = 120000;
// Most receipts are closed within so many seconds: everything else is tried within them first, and
// behind them no more than one place at a time.
constexpr std::int64_t SOON = 600;
constexpr std::int64_t AT_ONCE = 60;
const char* const CONSUMIDOR = "CNPJ/CPF consumidor:";

std::int64_t Cents(const Amount& amount)
{
    return amount.WithDecimals(CENTS).Units();
}

std::string CentsText(std::int64_t cents)
{
    return Money(Amount(cents, CENTS));
}

// A text field carries its length.
std::string Field(const std::string& text)
{
    return ' ' + std::to_string(text.size()) + ':' + text;
}

// A quantity or a price with the decimals that it was sold with.
std::string DecimalField(const Amount& value, const leitura::Integer& casas)
{
    if (casas.Value() < 0 || casas.Value() > leitura::MAX_CASAS) {
        return "?";
    }
    const int decimals = static_cast<int>(casas.Value());
    std::string text = PointText(value.WithDecimals(decimals), decimals);
    std::replace(text.begin(), text.end(), '.', ',');
    return Field(text);
}

// "T" and 1 of "01T18.00", "FS" and 1 of "FS1".
std::string TributacaoFields(const std::string& code, bool issqn)
{
    if (!IsTaxCode(code)) {
        return "?";
    }
    if (code[0] >= '0' && code[0] <= '9') {
        return Field(issqn ? "S" : code.substr(2, 1)) + ' ' + std::to_string(std::stoi(code));
    }
    return Field(code.substr(0, code.size() - 1)) + ' ' + code.back();
}

// An item's adjustments as they stood before its share of the subtotal's.
struct Ajustes {
    std::int64_t desconto = 0;
    std::int64_t acrescimo = 0;
    std::int64_t share = 0;
};

// Which of the texts that the rows may stand for is tried: 0 is the rows' own.
enum Choice : std::uint8_t {
    CNPJ,
    CPF,
    ENDERECO,
    DESCRICAO,
    TRIBUTACAO,
    PAGAMENTOS,
    MENSAGEM,
    CHOICES
};
using Choices = std::array<std::size_t, CHOICES>;

class SignedText
{
  public:
    explicit SignedText(const SignedCupom& documento) : m_documento(documento)
    {
        AddTexts();
        AddPagamentos();
        m_decided = AddAjustes() && m_decided;
    }

    // False where the rows are not enough to say that something else was signed.
    bool IsDecided() const { return m_decided; }
    std::size_t CountOf(std::size_t choice) const { return m_counts[choice]; }
    // The same beside a second place: of the rates one alone.
    std::size_t CountOfTwo(std::size_t choice) const
    {
        return choice == TRIBUTACAO ? m_rates.size() + 1 : m_counts[choice];
    }

    // Up to the instant of the closing, and behind it.
    void Build(const Choices& choices, std::string& head, std::string& tail) const
    {
        const leitura::CupomFiscalRow& cupom = m_documento.cupom;
        const std::string cnpj = m_documento.prefix.substr(0, m_documento.prefix.find('-'));
        const std::string numSerie = m_documento.prefix.substr(cnpj.size() + 1);
        head = "ecf" + Field(choices[CNPJ] == 0 ? cnpj : std::string()) + Field(numSerie) +
               "\ndocumento 1 " + Number(cupom.coo) + ' ' + Number(cupom.ccf) + " 0 " +
               std::to_string(SecondsOf(cupom.dataHoraEmissao.Value()).value_or(0)) + ' ';
        tail = "\nconsumidor" +
               Field(choices[CPF] == 0 ? cupom.cpfCnpjConsumidor.Value() : std::string()) +
               Field(cupom.nomeConsumidor.Value()) + Field(Endereco(choices[ENDERECO])) + '\n';
        std::size_t backquote = 0;
        for (std::size_t i = 0; i < m_documento.itens.size(); ++i) {
            AddItem(i, choices, backquote, tail);
        }
        tail += "subtotal " + Money(cupom.valorSubtotal) + '\n';
        if (m_ajuste != 0) {
            tail += std::string("ajuste ") + (m_desconto ? '0' : '1') + ' ' + CentsText(m_ajuste) +
                    '\n';
        }
        const std::vector<std::int64_t>& valores = m_pagamentos[choices[PAGAMENTOS]];
        for (std::size_t i = 0; i < valores.size(); ++i) {
            tail += "pagamento " + Number(m_rows[i].indiceMeioPagamento) + ' ' +
                    CentsText(valores[i]) + '\n';
        }
        tail += "total " + Money(cupom.valorTotal) + ' ' + Money(cupom.valorTroco) + "\nmensagem" +
                Field(Mensagem(choices[MENSAGEM])) + '\n';
    }

  private:
    void AddTexts()
    {
        const leitura::CupomFiscalRow& cupom = m_documento.cupom;
        m_counts.fill(1);
        if (m_documento.prefix.substr(0, m_documento.prefix.find('-')) == "00000000000000") {
            m_counts[CNPJ] = 2;
        }
        // The closing names the consumer anew; the opening's is gone then, if it was another.
        if (cupom.textoSuplementar.Value().find(CONSUMIDOR) != std::string::npos) {
            m_counts[CPF] = 2;
            m_decided = false;
        }
        m_endereco = cupom.enderecoConsumidor.Value();
        if (!m_endereco.empty()) {
            m_endereco.pop_back();
        }
        if (!m_endereco.empty()) {
            m_counts[ENDERECO] = m_endereco.size() + 2;
        }
        for (const ItemCupomFiscalRow& item : m_documento.itens) {
            const std::string& descricao = item.descricao.Value();
            m_backquotes +=
                static_cast<std::size_t>(std::count(descricao.begin(), descricao.end(), '`'));
            const std::string& code = item.aliquota.Value();
            const bool rate = IsTaxCode(code) && code[2] == 'T';
            if (rate && std::find(m_rates.begin(), m_rates.end(), code) == m_rates.end()) {
                m_rates.push_back(code);
            }
        }
        m_counts[DESCRICAO] += m_backquotes == 0 ? 0 : m_backquotes + 1;
        AddIssqn();
        const std::string& mensagem = cupom.textoSuplementar.Value();
        for (std::size_t i = 0; i < mensagem.size(); ++i) {
            if (mensagem[i] == ' ') {
                m_blanks.push_back(i);
            }
        }
        m_counts[MENSAGEM] += m_blanks.size();
    }

    // Which of the rates may have been of ISSQN: each alone, then several together.
    void AddIssqn()
    {
        constexpr std::size_t MOST = 6;
        for (const std::string& rate : m_rates) {
            m_issqn.push_back({rate});
        }
        if (m_rates.size() > MOST) {
            m_decided = false;
        } else {
            for (unsigned set = 0; set < 1U << m_rates.size(); ++set) {
                std::vector<std::string> several;
                for (std::size_t rate = 0; rate < m_rates.size(); ++rate) {
                    if ((set >> rate & 1U) != 0) {
                        several.push_back(m_rates[rate]);
                    }
                }
                if (several.size() > 1) {
                    m_issqn.push_back(several);
                }
            }
        }
        m_counts[TRIBUTACAO] += m_issqn.size();
    }

    bool IsIssqn(const std::string& code, std::size_t choice) const
    {
        return choice > 0 && std::find(m_issqn[choice - 1].begin(), m_issqn[choice - 1].end(),
                                       code) != m_issqn[choice - 1].end();
    }

    // What the payments were at the closing: reversals of the issued receipt, which took a GNF of
    // their own, came behind it.
    void AddPagamentos()
    {
        std::vector<std::int64_t> later;
        bool laterEstornado = false;
        for (const PagamentoCupomRow& row : m_documento.pagamentos.rows) {
            if (row.gnf.Value() == m_documento.pagamentos.rows.front().gnf.Value()) {
                m_rows.push_back(row);
            } else {
                later.push_back(Cents(row.valorPagamento));
                laterEstornado = laterEstornado || row.estornado.IsSet();
            }
        }
        // One of them may have been reversed twice, which takes from what it was.
        constexpr std::size_t MOST_ONCE = 2;
        if (laterEstornado && later.size() > MOST_ONCE) {
            m_decided = false;
        }
        std::vector<std::int64_t> meios;
        std::vector<std::int64_t> noted;
        for (const PagamentoCupomRow& row : m_rows) {
            const std::int64_t meio = row.indiceMeioPagamento.Value();
            if (!row.estornado.IsSet()) {
                continue;
            }
            if (std::find(meios.begin(), meios.end(), meio) != meios.end()) {
                m_decided = false; // several payments of a means, each with the same note
            } else {
                meios.push_back(meio);
                noted.push_back(Cents(row.valorEstornado));
            }
        }
        // Each later reversal took its amount from one of the means, or from a later payment.
        constexpr std::size_t MOST = 64;
        std::size_t ways = 1;
        for (std::size_t i = 0; i < later.size(); ++i) {
            ways *= meios.size() + 1;
        }
        if (ways > MOST) {
            m_decided = false;
            ways = MOST;
        }
        // Those that account for what is noted are tried first.
        std::vector<std::vector<std::int64_t>> others;
        for (std::size_t way = 0; way < ways; ++way) {
            std::size_t rest = way;
            std::vector<std::int64_t> undone(meios.size());
            for (const std::int64_t valor : later) {
                const std::size_t meio = rest % (meios.size() + 1);
                rest /= meios.size() + 1;
                if (meio < meios.size()) {
                    undone[meio] += valor;
                }
            }
            (undone == noted ? m_pagamentos : others).push_back(AtClosing(meios, undone));
        }
        m_pagamentos.insert(m_pagamentos.end(), others.begin(), others.end());
        m_counts[PAGAMENTOS] = m_pagamentos.size();
    }

    std::vector<std::int64_t> AtClosing(const std::vector<std::int64_t>& meios,
                                        const std::vector<std::int64_t>& undone) const
    {
        std::vector<std::int64_t> valores;
        std::vector<std::int64_t> taken(meios.size());
        for (const PagamentoCupomRow& row : m_rows) {
            std::int64_t valor = Cents(row.valorPagamento);
            if (row.estornado.IsSet()) {
                const auto at = static_cast<std::size_t>(
                    std::find(meios.begin(), meios.end(), row.indiceMeioPagamento.Value()) -
                    meios.begin());
                const std::int64_t left = Cents(row.valorEstornado) - undone[at] - taken[at];
                const std::int64_t share = std::min(left, valor);
                taken[at] += share;
                valor -= share;
            }
            valores.push_back(valor);
        }
        return valores;
    }

    // The share that each item had of the subtotal's adjustment. False where the rows do not tell.
    bool AddAjustes()
    {
        const leitura::CupomFiscalRow& cupom = m_documento.cupom;
        m_desconto = !cupom.valorDesconto.IsZero();
        m_ajuste = Cents(m_desconto ? cupom.valorDesconto : cupom.valorAcrescimo);
        std::int64_t soma = 0;
        std::vector<std::int64_t> brutos;
        std::vector<std::int64_t> liquidos;
        for (const ItemCupomFiscalRow& item : m_documento.itens) {
            const Ajustes ajustes{Cents(item.valorDesconto), Cents(item.valorAcrescimo), 0};
            const std::int64_t total = item.cancelado.IsSet() ? 0 : Cents(item.valorTotal);
            m_ajustes.push_back(ajustes);
            liquidos.push_back(total);
            brutos.push_back(item.cancelado.IsSet() ? 0
                                                    : total + ajustes.desconto - ajustes.acrescimo);
            soma += total;
        }
        if (m_ajuste == 0) {
            return true;
        }
        const bool rewritten =
            soma == Cents(cupom.valorTotal) && soma != Cents(cupom.valorSubtotal);
        if (!rewritten) {
            return SetShares(Ratear(m_ajuste, liquidos));
        }
        if (TakeShares(Ratear(m_ajuste, brutos), brutos, liquidos)) {
            return true;
        }
        // Items adjusted on their own: from the totals back to the values that were shared on.
        constexpr int ROUNDS = 8;
        std::vector<std::int64_t> before = liquidos;
        for (int round = 0; round < ROUNDS; ++round) {
            const auto shares = Ratear(m_ajuste, before);
            if (TakeShares(shares, before, liquidos)) {
                break;
            }
            for (std::size_t i = 0; shares && i < before.size(); ++i) {
                before[i] = liquidos[i] + (m_desconto ? (*shares)[i] : -(*shares)[i]);
            }
        }
        return false;
    }

    bool SetShares(const std::optional<std::vector<std::int64_t>>& shares)
    {
        for (std::size_t i = 0; shares && i < m_ajustes.size(); ++i) {
            m_ajustes[i].share = (*shares)[i];
        }
        return shares.has_value();
    }

    // Takes the shares out of what the items hold, where they lead from `before` to `after`.
    bool TakeShares(const std::optional<std::vector<std::int64_t>>& shares,
                    const std::vector<std::int64_t>& before, const std::vector<std::int64_t>& after)
    {
        for (std::size_t i = 0; shares && i < before.size(); ++i) {
            const std::int64_t share = (*shares)[i];
            const std::int64_t& held = m_desconto ? m_ajustes[i].desconto : m_ajustes[i].acrescimo;
            if (held < share || before[i] + (m_desconto ? -share : share) != after[i]) {
                return false;
            }
        }
        if (!SetShares(shares)) {
            return false;
        }
        for (Ajustes& ajustes : m_ajustes) {
            (m_desconto ? ajustes.desconto : ajustes.acrescimo) -= ajustes.share;
        }
        return true;
    }

    // Nothing, or one apostrophe put back, or one at the end.
    std::string Endereco(std::size_t choice) const
    {
        std::string text = m_endereco;
        if (choice > 0) {
            text.insert(choice - 1, 1, '\'');
        }
        return text;
    }

    std::string Mensagem(std::size_t choice) const
    {
        std::string text = m_documento.cupom.textoSuplementar.Value();
        if (choice > 0) {
            text[m_blanks[choice - 1]] = '\'';
        }
        return text;
    }

    void AddItem(std::size_t i, const Choices& choices, std::size_t& backquote,
                 std::string& text) const
    {
        const ItemCupomFiscalRow& item = m_documento.itens[i];
        const Ajustes& ajustes = m_ajustes[i];
        std::string descricao = item.descricao.Value();
        for (char& c : descricao) {
            if (c == '`') {
                ++backquote;
                const bool all = choices[DESCRICAO] == 1;
                c = all || choices[DESCRICAO] == backquote + 1 ? '\'' : '`';
            }
        }
        const std::string& code = item.aliquota.Value();
        const bool issqn = IsIssqn(code, choices[TRIBUTACAO]);
        const std::int64_t bruto =
            Cents(item.valorTotal) + Cents(item.valorDesconto) - Cents(item.valorAcrescimo);
        text += "item" + Field(item.codItem.Value()) + Field(descricao) +
                DecimalField(item.quantidade, item.casasDecimaisQuantidade) +
                Field(item.unMedida.Value()) +
                DecimalField(item.valorUnitario, item.casasDecimaisValor) +
                TributacaoFields(code, issqn) + ' ' + CentsText(bruto) + ' ' +
                CentsText(ajustes.desconto) + ' ' + CentsText(ajustes.acrescimo) + ' ' +
                CentsText(ajustes.share) + (item.cancelado.IsSet() ? " 1\n" : " 0\n");
    }

    const SignedCupom& m_documento;
    bool m_decided = true;
    std::array<std::size_t, CHOICES> m_counts{};
    std::string m_endereco;
    std::size_t m_backquotes = 0;
    std::vector<std::string> m_rates; // codes of the letter T, which the detailed sale writes for S
    std::vector<std::vector<std::string>> m_issqn; // those of them that may have been S together
    std::vector<std::size_t> m_blanks;
    std::vector<PagamentoCupomRow> m_rows; // those that were made before the closing
    std::vector<std::vector<std::int64_t>> m_pagamentos;
    bool m_desconto = false;
    std::int64_t m_ajuste = 0;
    std::vector<Ajustes> m_ajustes;
};

using Digest = std::array<unsigned char, crypto_hash_sha256_BYTES>;

// The bytes of the row's signature; nothing where it is no digest in Base64.
std::optional<Digest> DigestOf(const std::string& base64)
{
    Digest digest{};
    std::size_t size = 0;
    const bool read =
        sodium_base642bin(digest.data(), digest.size(), base64.data(), base64.size(), nullptr,
                          &size, nullptr, sodium_base64_VARIANT_ORIGINAL) == 0;
    return read && size == digest.size() ? std::optional(digest) : std::nullopt;
}

class Search
{
  public:
    Search(const SignedCupom& documento, std::int64_t until)
        : m_texts(documento), m_signed(DigestOf(documento.cupom.assinaturaDocumento.Value())),
          m_opening(SecondsOf(documento.cupom.dataHoraEmissao.Value())), m_last(until)
    {
    }

    SignatureSearch Run(Reach reach)
    {
        if (!m_signed || !m_opening) {
            return {Signed::NOT_FOUND, 0};
        }
        if (!(reach == Reach::NEAR ? TryNear() : TryFar())) {
            return {m_texts.IsDecided() ? Signed::NOT_FOUND : Signed::UNDECIDED, 0};
        }
        return {Signed::FOUND, m_fechamento};
    }

  private:
    bool TryNear()
    {
        SetWindow(*m_opening, *m_opening + AT_ONCE);
        return Try(Choices{});
    }

    bool TryFar()
    {
        const std::int64_t soon = *m_opening + SOON;
        SetWindow(*m_opening, soon);
        if (TryOne() || TryTwo()) {
            return true;
        }
        SetWindow(soon + 1, m_last);
        return TryOne();
    }

    void SetWindow(std::int64_t from, std::int64_t until)
    {
        m_from = from;
        m_until = std::min(until, m_last);
    }

    // The rows' own text, then those of one other choice.
    bool TryOne()
    {
        const Choices choices{};
        if (Try(choices)) {
            return true;
        }
        for (std::size_t a = 0; a < CHOICES; ++a) {
            const auto last = [this](const Choices& one) { return Try(one); };
            if (TryEach(choices, a, m_texts.CountOf(a), last)) {
                return true;
            }
        }
        return false;
    }

    bool TryTwo()
    {
        const Choices choices{};
        for (std::size_t a = 0; a < CHOICES; ++a) {
            const auto second = [this, a](Choices tried) {
                for (std::size_t b = a + 1; b < CHOICES; ++b) {
                    const auto last = [this](const Choices& both) { return Try(both); };
                    if (TryEach(tried, b, m_texts.CountOfTwo(b), last)) {
                        return true;
                    }
                }
                return false;
            };
            if (TryEach(choices, a, m_texts.CountOfTwo(a), second)) {
                return true;
            }
        }
        return false;
    }

    template <typename Next>
    bool TryEach(Choices choices, std::size_t choice, std::size_t count, const Next& next)
    {
        for (std::size_t i = 1; i < count; ++i) {
            choices[choice] = i;
            if (next(choices)) {
                return true;
            }
        }
        return false;
    }

    bool Try(const Choices& choices)
    {
        m_texts.Build(choices, m_head, m_tail);
        crypto_hash_sha256_state head;
        crypto_hash_sha256_init(&head);
        Update(head, m_head);
        for (std::int64_t instant = m_from; instant <= m_until; ++instant) {
            if (++m_digests > MOST_DIGESTS) {
                return false;
            }
            crypto_hash_sha256_state state = head;
            Update(state, std::to_string(instant));
            Update(state, m_tail);
            Digest digest{};
            crypto_hash_sha256_final(&state, digest.data());
            if (digest == *m_signed) {
                m_fechamento = instant;
                return true;
            }
        }
        return false;
    }

    static void Update(crypto_hash_sha256_state& state, const std::string& text)
    {
        crypto_hash_sha256_update(&state, reinterpret_cast<const unsigned char*>(text.data()),
                                  text.size());
    }

    SignedText m_texts;
    std::optional<Digest> m_signed;
    std::optional<std::int64_t> m_opening;
    std::int64_t m_last;
    // What is tried now.
    std::int64_t m_from = 0;
    std::int64_t m_until = 0;
    std::string m_head, m_tail;
    std::int64_t m_digests = 0;
    std::int64_t m_fechamento = 0;
};

} // namespace

std::optional<std::int64_t> SecondsOf(const std::string& instant)
{
    if (!IsInstant(instant)) {
        return std::nullopt;
    }
    const auto number = [&instant](std::size_t at, std::size_t size) {
        return std::stoll(instant.substr(at, size));
    };
    // Years begin in March, so that the leap day is their last.
    const std::int64_t month = (number(5, 2) + 9) % 12;
    const std::int64_t year = number(0, 4) - (month >= 10 ? 1 : 0);
    constexpr std::int64_t DAYS_TO_1970 = 719468;
    const std::int64_t days = 365 * year + year / 4 - year / 100 + year / 400 +
                              (153 * month + 2) / 5 + number(8, 2) - 1 - DAYS_TO_1970;
    return ((days * 24 + number(11, 2)) * 60 + number(14, 2)) * 60 + number(17, 2);
}

SignatureSearch SearchSignature(const SignedCupom& documento, std::int64_t until, Reach reach)
{
    return Search(documento, until).Run(reach);
}

} // namespace bancada::conferencia
