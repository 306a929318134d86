// The documents of a logging database as plain records: what the rows say, tied together, with no
// opinion about whether it is right.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bancada/leitura/Amount.h"
#include "bancada/leitura/Cell.h"

namespace bancada::relatorio
{

using leitura::Amount;
using leitura::Flag;
using leitura::Integer;
using leitura::Text;

// A discount or a surcharge, of an item or of a subtotal.
struct Ajuste {
    // tipo_: "V" by value, "P" by percentage, empty where the row has none.
    Text tipo;
    // Percent with two decimals. It stays in the row after a cancellation, and in some rows after
    // a later adjustment by value.
    Amount percentual;
    Amount valor{0, 3};
};

// An item of a fiscal or of a non-fiscal receipt. Money has three decimals, because the total of
// an item whose unit price has three is written with three.
struct Item {
    Integer numero;
    // Empty for an item of a non-fiscal receipt.
    Text codigo;
    // Of an item of a non-fiscal receipt: the name of its totalizer.
    Text descricao;
    Amount quantidade{0, 4};
    // With how many decimals the quantity and the unit price are written, at least.
    int casasQuantidade = 0;
    int casasValor = 2;
    Text unidade;
    Amount valorUnitario{0, 4};
    // The tax code as it stands in the row. A detailed item's ISSQN rate carries the letter T.
    Text aliquota;
    Text arredondaTrunca;
    // Of an item of a non-fiscal receipt: the number of its totalizer.
    Integer totalizador;
    Ajuste desconto;
    Ajuste acrescimo;
    Amount acrescimoCancelado{0, 3};
    // After the item's adjustments; after apportionment also its share of the subtotal's.
    Amount liquido{0, 3};
    Flag cancelado;

    // Before the adjustments.
    Amount ValorBruto() const { return liquido + desconto.valor - acrescimo.valor; }
};

struct Pagamento {
    Integer meio;
    // The name the means is programmed with today; empty where it is not programmed.
    Text nome;
    Amount valor;
    Integer parcelas;
    Text info;
    Integer gnf;
    Flag estornado;
    Amount valorEstornado;

    // What the payment still counts: the row keeps its amount at the first reversal and records
    // what was moved beside it, and each later one takes off the one before.
    Amount Saldo() const { return valor - valorEstornado; }
};

struct TotalizadorReducao {
    Text codigo;
    Amount valor;
    Amount imposto;
    Flag fiscal;
};

struct MeioReducao {
    Integer indice;
    Text descricao;
    Amount valor;
};

// One tax kind's sums of a Z reduction.
struct SomaImposto {
    Amount base;
    Amount imposto;
    Amount descontos;
    Amount acrescimos;
    Amount cancelamentos;
};

struct ReducaoZ {
    // Its row in the table.
    std::int64_t rowid = 0;
    Integer crz;
    Integer coo;
    Integer gnf;
    Integer cro;
    // From when to when it was issued; the end is empty where its document's row is missing.
    Text emissao;
    Text fim;
    // The fiscal day, at midnight.
    Text movimento;
    Amount gt;
    Amount vb;
    SomaImposto icms;
    SomaImposto issqn;
    Integer segundosEmitindo;
    Integer segundosOperacional;
    // The number came twice, its rows do not say whose they are, they are many, and the first
    // reduction of that number alone shows them.
    bool rowsAtFirst = false;
    std::vector<TotalizadorReducao> totalizadores;
    // The last one is the change, TROCO.
    std::vector<MeioReducao> meios;
};

enum class TipoDocumento {
    CUPOM_FISCAL,
    COMPROVANTE_NF,
    REDUCAO_Z,
    OUTRO,
};

struct Documento {
    TipoDocumento tipo = TipoDocumento::OUTRO;
    // The two letters of outros_documentos, "CN" and "RZ" included; empty for a fiscal receipt.
    Text codigo;
    // Its row in its table.
    std::int64_t rowid = 0;
    Integer coo;
    // As logged: of a receipt the reduction that will close its day, of another document the last
    // one made (1 before the first).
    Integer crz;
    Integer ccf;
    Integer gnf;
    Integer grg;
    Integer cdc;
    Text inicio;
    // Empty for a fiscal receipt, whose end is not logged.
    Text fim;
    Flag cancelado;

    // Receipts.
    // False where only items or payments are there, the row of the opening is not.
    bool hasAbertura = true;
    Text cpfCnpj;
    Text nome;
    Text endereco;
    Amount subtotal;
    Amount total;
    Ajuste desconto{{}, {}, {}};
    Ajuste acrescimo{{}, {}, {}};
    Amount acrescimoCancelado;
    Amount troco;
    Text assinatura;
    Text mensagem;
    Text aplicativo;
    Text chave;
    Flag adicional;
    std::vector<Item> itens;
    std::vector<Pagamento> pagamentos;
    // The number came twice and the rows of its items or payments do not say whose they are: each
    // document of that number shows them all, as long as they are few.
    bool rowsUncertain = false;
    // They are many, and the first document of that number alone shows them.
    bool rowsAtFirst = false;

    // Z reductions.
    std::optional<ReducaoZ> reducao;

    bool IsCupom() const
    {
        return tipo == TipoDocumento::CUPOM_FISCAL || tipo == TipoDocumento::COMPROVANTE_NF;
    }
    // Whether the closing is in the database: it writes the signature of a fiscal receipt and the
    // total of a non-fiscal one.
    [[nodiscard]] bool HasFechamento() const;
    // Whether the subtotal's adjustment stands in the items already, as apportionment writes it.
    [[nodiscard]] bool IsRateado() const;
    // The items that are not cancelled, after their adjustments; three decimals.
    [[nodiscard]] Amount SumItens() const;
    // What the payments still count.
    [[nodiscard]] Amount SumPagamentos() const;
    // "CANCELADO" of a cancelled document, what its flag holds where that is neither S nor N, and
    // nothing of every other.
    [[nodiscard]] std::string CanceladoMark() const;
};

// The document's name as printed: CUPOM FISCAL, LEITURA X, ...
std::string Title(const Documento& documento);

// Whose register it is. Texts are empty where they are not programmed.
struct Estabelecimento {
    Text razaoSocial;
    Text nomeFantasia;
    Text endereco;
    Text cnpj;
    Text ie;
    Text im;
    Text uf;
    Text numSerie;
    Text marca;
    Text modelo;
    Text tipo;
    Integer numCaixa;
    Text versaoSb;
};

} // namespace bancada::relatorio
