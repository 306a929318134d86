// The state of the register: plain data, copied and compared field by field.
//
// Money is Financial and is always whole cents. Positions count from 0 and numbers from 1; a field
// says which it holds.
#pragma once

#include "FiscalCommands.h"
#include "FiscalData/Cupom.h"
#include "FiscalData/FiscalDataTypes.h"
#include "RtcClasses.h"
#include "bancada/registro/Decimal.h"
#include "bancada/registro/Limits.h"
#include "libs/Financial.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace bancada
{

constexpr int NUMERO_NF_FUNDO_TROCO = 1; // the non-fiscal totalizer of the till float
constexpr int NUMERO_NF_SANGRIA = 2;     // and that of the cash withdrawal

enum class ESituacaoCupom : std::int32_t {
    NENHUM = 0,       // no receipt yet
    EM_ITENS = 1,     // open, taking items
    EM_PAGAMENTO = 2, // open, a payment was made: the items stand
    FECHADO = 3,      // issued
    CANCELADO = 4,    // cancelled, in issue or afterwards
};

// The document other than a receipt that is open.
enum class EDocumentoAberto : std::int32_t {
    NENHUM = 0,
    CCD = 1,         // credit/debit voucher
    ESTORNO_CCD = 2, // reversal of a voucher
    GERENCIAL = 3,   // management report
};

enum class EModoIntervencao : std::int32_t {
    NENHUM = 0,
    MIL = 1, // mode L
    MIT = 2, // mode T, the technical one
};

struct Consumidor {
    std::string cpfCnpj; // 11 digits (CPF), 14 digits (CNPJ), or empty
    std::string nome;
    std::string endereco;
};

// An item of the receipt. On a non-fiscal receipt the quantity is 1, the unit price is the value.
struct ItemVendido {
    std::string codigo;
    std::string descricao;
    std::string unidade;
    std::string tributacao; // T, S, F, I, N, FS, IS, NS; empty on a non-fiscal receipt
    int numero = 0;         // number of the rate or totalizer within `tributacao`
    Decimal quantidade;
    Decimal valorUnitario;
    bool arredonda = false; // the gross total was rounded half up, not truncated
    int baseImposto = 0;    // tax base, 0 on a non-fiscal receipt
    int posicao = 0;        // position of the totalizer it is booked on
    Financial bruto;
    Financial desconto;  // its own discount
    Financial acrescimo; // its own surcharge
    Financial rateio;    // its share of the subtotal's applied adjustment, zero while there is none
    bool cancelado = false;
};

struct PagamentoEfetuado {
    int meio = 0; // position of the payment means
    Financial valor;
    int ordemCCD = 0; // of its voucher in the order of issue, from 1; 0: none, or reversed
};

// The receipt that is open or, when none is, the one issued last. A cash withdrawal or a till float
// is kept as a closed non-fiscal receipt of one item.
struct CurrentCupom {
    ESituacaoCupom situacao = ESituacaoCupom::NENHUM;
    FD_TIPO_CUPOM tipo = COMPROVANTE_NAO_FISCAL;
    bool movimentoDeCaixa = false; // it is a withdrawal or a float
    int coo = 0;
    int ccf = 0; // zero on a non-fiscal receipt
    int gnf = 0; // zero on a fiscal receipt
    RtcAbsoluteTime abertura;
    RtcAbsoluteTime fechamento; // unset while it is open
    Consumidor consumidor;
    std::vector<ItemVendido> itens;
    int itensVivos = 0; // items not cancelled
    Financial subtotal; // what the items not cancelled come to, their own adjustments applied

    // The subtotal's adjustment: the one applied, or else the one cancelled last.
    bool ajusteAplicado = false;
    EOperacao ajusteOperacao = DESCONTO;
    Financial ajusteValor;
    Financial ajusteCancelado; // equal to ajusteValor once it was cancelled

    std::vector<PagamentoEfetuado> pagamentos;
    Financial pago;
    Financial troco; // change: what was paid beyond the total
    std::string mensagem;
    std::array<std::uint8_t, 32> assinatura{}; // of the closed document
};

// The fiscal totals of a day, with the programming they were made under.
struct BaseFiscal {
    template <class T>
    using PorImposto = std::array<T, BASES_DE_IMPOSTO>;

    PorImposto<std::array<Financial, MAX_TOTALIZADORES>> totais; // net
    PorImposto<std::array<bool, MAX_TOTALIZADORES>> programado{};
    PorImposto<std::array<int, MAX_ALIQUOTAS>> aliquota{}; // hundredths of a percent
    PorImposto<Financial> descontos;
    PorImposto<Financial> acrescimos;
    PorImposto<Financial> cancelamentos;
    Financial vendaBruta; // VB; kept of a closed day only, the live day's is a difference of GTs
};

struct BaseNaoFiscal {
    std::array<Financial, MAX_TOTALIZADORES_NF> totais; // net
    std::array<std::string, MAX_TOTALIZADORES_NF> nome; // empty where none is programmed
};

// The fiscal day. After a Z reduction it goes on holding the day that was closed, until the first
// document of a new day begins it anew: that is how the Z reduction's logger can still read it.
struct Jornada {
    bool aberta = false;
    RtcAbsoluteTime data;     // midnight of the day's first document; unset without one
    RtcAbsoluteTime inicio;   // instant of that document
    RtcAbsoluteTime fim;      // instant of the Z reduction that closed it; unset while it is open
    RtcRelativeTime emitindo; // time spent issuing fiscal receipts
    std::array<Financial, MAX_MEIOS_PAGAMENTO> meios; // received in each payment means
    Financial troco;                                  // change given
};

struct MeioDePagamento {
    std::string descricao; // empty where none is programmed
    EVinculacaoCCD vinculacao = SEM_CCD;
};

struct Contribuinte {
    std::string razaoSocial;
    std::string nomeFantasia;
    std::string endereco;
    std::string cnpj;
    std::string ie;
    std::string im;
    std::string uf;
};

struct IdentidadeECF {
    std::string marca;
    std::string modelo;
    std::string tipo;
    std::string numSerie;
    std::string versaoSB = "01.00.00"; // version of the basic software
    std::string simboloMoeda;
    int sequencia = 0; // till number; zero until programmed
    int loja = 0;      // shop number; zero until programmed
};

struct Memoria {
    Memoria(); // a register as it leaves the factory: all zero, the two cash totalizers programmed

    std::array<int, COUNTER_MAX_SIZE> contadores{};
    Financial gt;         // grand total
    Financial gtUltimaRZ; // GT at the last Z reduction
    Financial gtInicial;  // GT when the present CNPJ was programmed

    BaseFiscal fiscal;         // base 0: the live day
    BaseNaoFiscal naoFiscal;   // base 1
    BaseFiscal fiscalRZ;       // base 2: the day closed last
    BaseNaoFiscal naoFiscalRZ; // base 3
    Jornada jornada;
    RtcAbsoluteTime dataFechada; // date of the day that the last Z reduction closed
    RtcAbsoluteTime relogio;     // when the last command that was executed ended; unset before it

    CurrentCupom cupom;
    EDocumentoAberto documento = EDocumentoAberto::NENHUM;
    EModoIntervencao modo = EModoIntervencao::NENHUM;

    std::array<MeioDePagamento, MAX_MEIOS_PAGAMENTO> meios;
    Contribuinte contribuinte;
    IdentidadeECF ecf;

    // Settings of the bench.
    bool ratearSubtotal = false;
    std::string aplicativo; // identification of the point-of-sale application
};

} // namespace bancada
