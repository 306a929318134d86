#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bancada/relatorio/Decimal.h"

// The documents of a logging database as plain records: what the rows say, tied together, with no
// opinion about whether it is right.
namespace bancada::relatorio
{

// A discount or a surcharge, of an item or of a subtotal.
struct Ajuste {
    // tipo_: "V" by value, "P" by percentage, empty where the row has none.
    std::string tipo;
    // Percent with two decimals. It stays in the row after a cancellation, and in some rows after
    // a later adjustment by value.
    Decimal percentual;
    Decimal valor{0, 3, true};
};

// An item of a fiscal or of a non-fiscal receipt. Money has three decimals, because the total of
// an item whose unit price has three is written with three.
struct Item {
    std::int64_t numero = 0;
    // Empty for an item of a non-fiscal receipt.
    std::string codigo;
    // Of an item of a non-fiscal receipt: the name of its totalizer.
    std::string descricao;
    Decimal quantidade{0, 4, true};
    // With how many decimals the quantity and the unit price are written, at least.
    int casasQuantidade = 0;
    int casasValor = 2;
    std::string unidade;
    Decimal valorUnitario{0, 4, true};
    // The tax code as it stands in the row. A detailed item's ISSQN rate carries the letter T.
    std::string aliquota;
    std::string arredondaTrunca;
    // Of an item of a non-fiscal receipt: the number of its totalizer.
    std::int64_t totalizador = 0;
    Ajuste desconto;
    Ajuste acrescimo;
    Decimal acrescimoCancelado{0, 3, true};
    // After the item's adjustments; after apportionment also its share of the subtotal's.
    Decimal liquido{0, 3, true};
    bool cancelado = false;

    // Before the adjustments.
    Decimal bruto() const { return liquido + desconto.valor - acrescimo.valor; }
};

struct Pagamento {
    std::int64_t meio = 0;
    // The name the means is programmed with today; empty where it is not programmed.
    std::string nome;
    Decimal valor;
    std::int64_t parcelas = 0;
    std::string info;
    std::int64_t contGnf = 0;
    bool estornado = false;
    Decimal valorEstornado;

    // What the payment still counts: the row keeps its amount at the first reversal and records
    // what was moved beside it, and each later one takes off the one before.
    Decimal saldo() const { return valor - valorEstornado; }
};

struct TotalizadorReducao {
    std::string codigo;
    Decimal valor;
    Decimal imposto;
    bool fiscal = true;
};

struct MeioReducao {
    std::int64_t indice = 0;
    std::string descricao;
    Decimal valor;
};

// One tax kind's sums of a Z reduction.
struct SomaImposto {
    Decimal base;
    Decimal imposto;
    Decimal descontos;
    Decimal acrescimos;
    Decimal cancelamentos;
};

struct ReducaoZ {
    // Its row in the table.
    std::int64_t linha = 0;
    std::int64_t crz = 0;
    std::int64_t coo = 0;
    std::int64_t gnf = 0;
    std::int64_t cro = 0;
    std::string emissao;
    // The fiscal day, at midnight.
    std::string movimento;
    Decimal gt;
    Decimal vb;
    SomaImposto icms;
    SomaImposto issqn;
    // Seconds, by what they mean. The table holds them crossed over: the time spent issuing
    // documents stands in tempo_operacional and the operating time in tempo_emitindo_doc.
    std::int64_t segundosEmitindo = 0;
    std::int64_t segundosOperacional = 0;
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
    std::string codigo;
    // Its row in its table.
    std::int64_t linha = 0;
    std::int64_t coo = 0;
    // As logged: of a receipt the reduction that will close its day, of another document the last
    // one made (1 before the first).
    std::int64_t crz = 0;
    std::int64_t ccf = 0;
    std::int64_t gnf = 0;
    std::int64_t grg = 0;
    std::int64_t cdc = 0;
    std::string inicio;
    // Empty for a fiscal receipt, whose end is not logged.
    std::string fim;
    bool cancelado = false;

    // Receipts.
    // False where only items or payments are there, the row of the opening is not.
    bool aberturaRegistrada = true;
    std::string cpfCnpj;
    std::string nome;
    std::string endereco;
    Decimal subtotal;
    Decimal total;
    Ajuste desconto{"", {}, {}};
    Ajuste acrescimo{"", {}, {}};
    Decimal acrescimoCancelado;
    Decimal troco;
    std::string assinatura;
    std::string mensagem;
    std::string aplicativo;
    std::string chave;
    bool adicional = false;
    std::vector<Item> itens;
    std::vector<Pagamento> pagamentos;
    // The number came twice and the rows of its items or payments do not say whose they are: each
    // document of that number shows them all.
    bool linhasIncertas = false;

    // Z reductions.
    std::optional<ReducaoZ> reducao;

    bool cupom() const
    {
        return tipo == TipoDocumento::CUPOM_FISCAL || tipo == TipoDocumento::COMPROVANTE_NF;
    }
    // Whether the closing is in the database: it writes the signature of a fiscal receipt and the
    // total of a non-fiscal one.
    bool fechamentoRegistrado() const;
    // Whether the subtotal's adjustment stands in the items already, as apportionment writes it.
    bool rateado() const;
    // The items that are not cancelled, after their adjustments; three decimals.
    Decimal somaItens() const;
    // What the payments still count.
    Decimal somaPagamentos() const;
};

// The document's name as printed: CUPOM FISCAL, LEITURA X, ...
std::string titulo(const Documento& documento);

// Whose register it is. Texts are empty where they are not programmed.
struct Estabelecimento {
    std::string razaoSocial;
    std::string nomeFantasia;
    std::string endereco;
    std::string cnpj;
    std::string ie;
    std::string im;
    std::string uf;
    std::string numSerie;
    std::string marca;
    std::string modelo;
    std::string tipo;
    std::int64_t numCaixa = 0;
    std::string versaoSb;
};

} // namespace bancada::relatorio
