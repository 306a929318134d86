// The commands of a receipt, told by its records.
#include "bancada/arquivo/Importador.h"

#include "bancada/arquivo/Instante.h"
#include "bancada/arquivo/Rateio.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

// What the array of the opening has room for.
constexpr std::int64_t SECONDS_A_DAY = 86400;
constexpr std::size_t MAX_NOME = 30;
constexpr std::int64_t HUNDRED_PERCENT = 10000; // hundredths of a percent
constexpr std::int64_t MAX_PERCENTUAL = 99999;

struct Item {
    Record record;
    std::int64_t bruto = 0;
    std::int64_t desconto = 0; // its own
    std::int64_t acrescimo = 0;
    std::int64_t liquido = 0; // as the file tells it
    bool cancelado = false;   // by itself
};

struct Cupom {
    const char* type = "E14";
    Record record;
    std::vector<Item> itens;
    std::vector<Record> pagamentos;
    std::int64_t subtotal = 0, desconto = 0, acrescimo = 0, acrescimoCancelado = 0, total = 0;
    bool cancelado = false;
    bool rateado = false;          // the file tells the items with their shares
    bool ratearFechamento = false; // likewise of an additional one
    bool adicional = false;        // its closing left the totals of its opening

    bool HasTotals() const { return total != 0 || subtotal != 0; }
    bool WasClosed() const { return HasTotals() || adicional; }
};

Cupom ReadCupom(const char* type, const Record& record)
{
    Cupom cupom;
    cupom.type = type;
    cupom.record = record;
    cupom.subtotal = record.Integer("subtotal");
    cupom.desconto = record.Integer("desconto");
    cupom.acrescimo = record.Integer("acrescimo");
    cupom.acrescimoCancelado = record.Integer("acrescimo_cancelado");
    cupom.total = record.Integer("total");
    cupom.cancelado = record.Text("cancelado") == "S";
    return cupom;
}

// Quantity times unit price in cents, cut or rounded.
std::int64_t Bruto(const Record& item)
{
    std::int64_t product = item.Integer("quantidade") * item.Integer("valor_unitario");
    std::int64_t decimals = item.Integer("decimais_quantidade") + item.Integer("decimais_valor");
    std::int64_t unitsACent = 1;
    for (; decimals > 2; --decimals) {
        unitsACent *= 10;
    }
    for (; decimals < 2; ++decimals) {
        product *= 10;
    }
    const bool rounded = item.Text("arredonda_trunca") == "A";
    return (product + (rounded ? unitsACent / 2 : 0)) / unitsACent;
}

// Marks items, the last ones first, that come to `excess` together.
bool MarkCancelados(std::vector<Item>& itens, std::int64_t excess, std::size_t end, int depth)
{
    if (excess == 0) {
        return true;
    }
    constexpr int MAX_DEPTH = 4;
    if (excess < 0 || depth == MAX_DEPTH) {
        return false;
    }
    for (std::size_t i = end; i-- > 0;) {
        itens[i].cancelado = true;
        if (MarkCancelados(itens, excess - itens[i].liquido, i, depth + 1)) {
            return true;
        }
        itens[i].cancelado = false;
    }
    return false;
}

std::int64_t SumOfValid(const std::vector<Item>& itens)
{
    std::int64_t sum = 0;
    for (const Item& item : itens) {
        sum += item.cancelado ? 0 : item.liquido;
    }
    return sum;
}

// Which items of a cancelled receipt were cancelled before it, and whether its items stand with
// their shares: what they come to tells.
bool Resolve(Cupom& cupom)
{
    const bool adjusted = cupom.desconto != 0 || cupom.acrescimo != 0;
    if (!cupom.HasTotals()) {
        if (cupom.cancelado) {
            for (Item& item : cupom.itens) {
                item.cancelado = false;
            }
        }
        return true;
    }
    const std::int64_t sum = SumOfValid(cupom.itens);
    if (!cupom.cancelado) {
        cupom.rateado = adjusted && sum == cupom.total && sum != cupom.subtotal;
        return sum == cupom.subtotal || cupom.rateado;
    }
    for (Item& item : cupom.itens) {
        item.cancelado = false;
    }
    const std::int64_t all = SumOfValid(cupom.itens);
    if (adjusted && MarkCancelados(cupom.itens, all - cupom.total, cupom.itens.size(), 0)) {
        cupom.rateado = true;
        return true;
    }
    return MarkCancelados(cupom.itens, all - cupom.subtotal, cupom.itens.size(), 0);
}

// Takes the receipt's share out of the items' adjustments.
bool TakeSharesOut(Cupom& cupom, std::int64_t subtotal)
{
    const bool desconto = cupom.desconto != 0;
    std::vector<ItemRateado> rateados;
    for (const Item& item : cupom.itens) {
        if (!item.cancelado) {
            rateados.push_back({item.liquido, desconto ? item.bruto + item.acrescimo
                                                       : item.bruto - item.desconto});
        }
    }
    const auto liquidos =
        UndoRateio(desconto ? cupom.desconto : cupom.acrescimo, desconto, subtotal, rateados);
    if (!liquidos) {
        return false;
    }
    std::size_t at = 0;
    for (Item& item : cupom.itens) {
        if (!item.cancelado) {
            const std::int64_t own = (*liquidos)[at] - rateados[at].limite;
            (desconto ? item.desconto : item.acrescimo) = desconto ? -own : own;
            ++at;
        }
    }
    return true;
}

// What is due: the items as registered and adjusted, which the register reckons itself.
std::int64_t Due(const Cupom& cupom)
{
    std::int64_t due = cupom.acrescimo - cupom.desconto;
    for (const Item& item : cupom.itens) {
        due += item.cancelado ? 0 : item.bruto + item.acrescimo - item.desconto;
    }
    return due;
}

// An additional receipt keeps the totals of its opening, which are none; that it is paid tells it
// from one that was not closed, and a number without a record its later cancellation from one in
// issue. Its items may stand with their shares, of which no total tells: they do where such shares
// are found.
void FindAdicional(const Importador& importing, Cupom& cupom)
{
    std::int64_t paid = 0;
    for (const Record& record : cupom.pagamentos) {
        paid += record.Integer("valor");
    }
    if (cupom.HasTotals() || cupom.itens.empty() ||
        (cupom.cancelado && importing.numerosLivres == 0)) {
        return;
    }
    if (cupom.desconto != 0 || cupom.acrescimo != 0) {
        const std::int64_t sum = SumOfValid(cupom.itens);
        Cupom shared = cupom;
        if (TakeSharesOut(shared, sum + cupom.desconto - cupom.acrescimo) && paid >= Due(shared)) {
            cupom = shared;
            cupom.adicional = true;
            cupom.ratearFechamento = true;
            return;
        }
    }
    cupom.adicional = paid >= Due(cupom);
}

void WriteAjuste(Importador& importing, const char* command, const char* operacao,
                 std::int64_t cents, std::int64_t item)
{
    TapeLine line = importing.tape.Then(command);
    line.Text("operacao", operacao).Text("tipo", "valor").Money("valor", cents);
    if (item != 0) {
        line.Number("item", item);
    }
}

// The percentage of `base` that comes to `valor`, hundredths; 0 where none does.
std::int64_t PercentualOf(std::int64_t base, std::int64_t valor)
{
    if (base <= 0) {
        return 0;
    }
    std::int64_t scaled = 0;
    if (__builtin_mul_overflow(valor, HUNDRED_PERCENT, &scaled)) {
        return 0;
    }
    const std::int64_t percentual = (scaled + base - 1) / base;
    if (percentual < 1 || percentual > MAX_PERCENTUAL ||
        __builtin_mul_overflow(base, percentual, &scaled) || scaled / HUNDRED_PERCENT != valor) {
        return 0;
    }
    return percentual;
}

// An item's surcharges and discount, as the file has them or the sharing left them.
void WriteAjustesItem(Importador& importing, const Item& item, std::int64_t numero)
{
    const std::int64_t cancelado = item.record.Integer("acrescimo_cancelado");
    if (cancelado != 0) {
        WriteAjuste(importing, "efetua_desc_acres_item", "acrescimo", cancelado, numero);
        importing.tape.Then("cancela_desc_acres_item")
            .Text("operacao", "acrescimo")
            .Number("item", numero);
    }
    if (item.acrescimo != 0) {
        WriteAjuste(importing, "efetua_desc_acres_item", "acrescimo", item.acrescimo, numero);
    }
    if (item.desconto != 0) {
        WriteAjuste(importing, "efetua_desc_acres_item", "desconto", item.desconto, numero);
    }
    if (item.cancelado) {
        importing.tape.Then("cancela_item").Number("item", numero);
    }
}

void WriteAcrescimoSubtotal(Importador& importing, const Cupom& cupom, std::int64_t base,
                            std::int64_t valor, bool percentual)
{
    const std::int64_t hundredths = percentual ? PercentualOf(base, valor) : 0;
    if (hundredths == 0) {
        if (percentual) {
            importing.naoDito.AddField(cupom.type, "tipo_acrescimo",
                                       "no percentage of two decimals comes to the surcharge");
        }
        WriteAjuste(importing, "efetua_desc_acres_subtotal", "acrescimo", valor, 0);
        return;
    }
    importing.tape.Then("efetua_desc_acres_subtotal")
        .Text("operacao", "acrescimo")
        .Text("tipo", "percentual")
        .Decimal("valor", hundredths, 2);
}

void WriteAjustesSubtotal(Importador& importing, const Cupom& cupom)
{
    std::int64_t base = 0;
    for (const Item& item : cupom.itens) {
        base += item.cancelado ? 0 : item.bruto + item.acrescimo - item.desconto;
    }
    const bool percentual = cupom.record.Text("tipo_acrescimo") == "P";
    if (cupom.acrescimoCancelado != 0) {
        WriteAcrescimoSubtotal(importing, cupom, base, cupom.acrescimoCancelado,
                               percentual && cupom.acrescimo == 0);
        importing.tape.Then("cancela_desc_acres_subtotal").Text("operacao", "acrescimo");
    }
    if (cupom.desconto != 0 && cupom.acrescimo != 0) {
        importing.naoDito.AddField(cupom.type, "acrescimo",
                                   "the register has one adjustment of a subtotal at a time");
    }
    if (cupom.desconto != 0) {
        WriteAjuste(importing, "efetua_desc_acres_subtotal", "desconto", cupom.desconto, 0);
    } else if (cupom.acrescimo != 0) {
        WriteAcrescimoSubtotal(importing, cupom, base, cupom.acrescimo, percentual);
    }
    if (cupom.record.Text("tipo_desconto") == "P") {
        importing.naoDito.AddField(cupom.type, "tipo_desconto",
                                   "a percentage of discount is logged as V");
    }
}

struct Pagamento {
    std::int64_t meio = 0;
    std::int64_t valor = 0;
    bool taken = false; // it is what a reversal gave to its means
};

// Finds the payments that a reversal made, and leaves the reversals in `estornos`.
std::vector<Pagamento> FindEstornos(const Importador& importing, const Cupom& cupom,
                                    std::vector<SemRegistro>& estornos)
{
    std::vector<Pagamento> pagamentos;
    std::vector<std::int64_t> known; // sources whose reversal was found: its rows are all marked
    for (const Record& record : cupom.pagamentos) {
        pagamentos.push_back(
            {importing.programacao.Meio(record.Text("meio")), record.Integer("valor"), false});
    }
    std::int64_t due = Due(cupom);
    for (std::size_t i = 0; i < pagamentos.size(); ++i) {
        if (pagamentos[i].taken) {
            continue;
        }
        if (cupom.cancelado) {
            // All are told as reversed by the cancellation: one behind the last that was due was
            // made by a reversal.
            if (due > 0 || i == 0) {
                due -= pagamentos[i].valor;
                continue;
            }
            for (std::size_t from = 0; from < i; ++from) {
                if (pagamentos[from].meio != pagamentos[i].meio &&
                    pagamentos[from].valor >= pagamentos[i].valor) {
                    pagamentos[i].taken = true;
                    estornos.push_back({SemRegistro::Kind::ESTORNO_PAGAMENTO, pagamentos[from].meio,
                                        pagamentos[i].meio, pagamentos[i].valor});
                    break;
                }
            }
            continue;
        }
        const std::int64_t origem = pagamentos[i].meio;
        if (cupom.pagamentos[i].Text("estornado") == "N" ||
            std::find(known.begin(), known.end(), origem) != known.end()) {
            continue;
        }
        const std::int64_t valor = cupom.pagamentos[i].Integer("valor_estornado");
        for (std::size_t to = pagamentos.size(); to-- > i + 1;) {
            if (pagamentos[to].meio != origem && pagamentos[to].valor == valor &&
                !pagamentos[to].taken) {
                pagamentos[to].taken = true;
                known.push_back(origem);
                estornos.push_back(
                    {SemRegistro::Kind::ESTORNO_PAGAMENTO, origem, pagamentos[to].meio, valor});
                break;
            }
        }
    }
    return pagamentos;
}

void WriteEstorno(Importador& importing, const SemRegistro& estorno)
{
    importing.tape.Then("estorna_meio_pagamento")
        .Number("origem", estorno.origem)
        .Number("destino", estorno.destino)
        .Money("valor", estorno.valor);
}

void WritePagamentos(Importador& importing, const Cupom& cupom, bool closed)
{
    std::vector<SemRegistro> estornos;
    const std::vector<Pagamento> pagamentos = FindEstornos(importing, cupom, estornos);
    for (const Pagamento& pagamento : pagamentos) {
        if (pagamento.taken) {
            continue;
        }
        if (pagamento.meio == 0) {
            importing.Note("E21", "payments in a means without a name");
            continue;
        }
        importing.tape.Then("efetua_pagamento")
            .Number("meio", pagamento.meio)
            .Money("valor", pagamento.valor);
        importing.meiosDoCupom.push_back(pagamento.meio);
    }
    // A reversal of an issued receipt has a number of its own.
    const std::size_t later = cupom.cancelado && closed ? 1 : 0;
    for (const SemRegistro& estorno : estornos) {
        if (closed && importing.pendentes.size() + later < importing.numerosLivres) {
            importing.pendentes.push_back(estorno);
        } else {
            WriteEstorno(importing, estorno);
        }
    }
}

void WriteConsumidor(Importador& importing, const Cupom& cupom, TapeLine& line)
{
    std::string digits(cupom.record.Raw("cpf_cnpj"));
    constexpr std::size_t CPF_DIGITS = 11;
    if (digits.find_first_not_of('0') == std::string::npos) {
        digits.clear();
    } else if (digits.compare(0, digits.size() - CPF_DIGITS, "000") == 0) {
        digits.erase(0, digits.size() - CPF_DIGITS);
    }
    std::string nome = cupom.record.Text("nome");
    if (nome.size() > MAX_NOME) {
        nome.resize(MAX_NOME);
        importing.naoDito.AddField(cupom.type, "nome", "the register has room for 30 letters");
    }
    if (!digits.empty()) {
        line.Text("cpf_cnpj", digits);
    }
    if (!nome.empty()) {
        line.Text("nome", nome);
    }
}

void BeginCupom(Importador& importing, const Cupom& cupom, const char* command, std::int64_t em)
{
    importing.pendentes.clear();
    importing.comprovantes = 0;
    importing.meiosDoCupom.clear();
    TapeLine line = importing.tape.At(command, std::max(importing.tape.Now(), em));
    WriteConsumidor(importing, cupom, line);
}

// The rate as the item was sold at, programmed anew where it is another.
void RequireAliquota(Importador& importing, const std::string& tributacao, std::int64_t indice,
                     std::int64_t percentual)
{
    std::int64_t& present = importing.aliquotas[tributacao + std::to_string(indice)];
    if (present != percentual) {
        importing.Note("E15", "rates that change: the register keeps the one of the day's sales");
        present = percentual;
    }
}

// Whether a code of ICMS is one of ISSQN as the detailed command writes it: the day's Z reduction
// tells, or the programming where the totalizer came to nothing.
bool IsDetalhado(const Importador& importing, const std::string& codigo, std::int64_t indice,
                 std::int64_t percentual)
{
    const std::string issqn = codigo.substr(0, 2) + "S" + codigo.substr(3);
    const ArquivoLido& arquivo = importing.arquivo;
    const auto icms = importing.programacao.icms.find(indice);
    const auto other = importing.programacao.issqn.find(indice);
    const bool programmed = icms != importing.programacao.icms.end() && icms->second == percentual;
    if (!programmed) {
        return other != importing.programacao.issqn.end() && other->second == percentual;
    }
    return importing.crzDoDia != 0 && !arquivo.HasTotalizador(importing.crzDoDia, codigo) &&
           arquivo.HasTotalizador(importing.crzDoDia, issqn);
}

void WriteItem(Importador& importing, const Item& item)
{
    const Record& record = item.record;
    const std::string codigo = record.Text("totalizador");
    constexpr std::size_t RATE_SIZE = 7; // xxTnnnn
    std::string tributacao;
    std::int64_t indice = 0;
    bool detalhado = false;
    if (codigo.size() == RATE_SIZE) {
        indice = std::stoll(codigo.substr(0, 2));
        const std::int64_t percentual = std::stoll(codigo.substr(3));
        tributacao = codigo.substr(2, 1);
        if (tributacao == "T" && IsDetalhado(importing, codigo, indice, percentual)) {
            tributacao = "S";
            detalhado = true;
        }
        RequireAliquota(importing, tributacao, indice, percentual);
    } else if (codigo.size() > 1) {
        tributacao = codigo.substr(0, codigo.size() - 1);
        indice = codigo.back() - '0';
    }
    importing.tape.Then(detalhado ? "vende_item_detalhado" : "vende_item")
        .Text("codigo", record.Text("codigo"))
        .Text("descricao", record.Text("descricao"))
        .Decimal("quantidade", record.Integer("quantidade"),
                 static_cast<int>(record.Integer("decimais_quantidade")))
        .Text("unidade", record.Text("unidade"))
        .Decimal("valor_unitario", record.Integer("valor_unitario"),
                 static_cast<int>(record.Integer("decimais_valor")))
        .Text("tributacao", tributacao)
        .Number("indice", indice)
        .Flag("arredonda", record.Text("arredonda_trunca") == "A");
    if (record.Text("cancelado") == "P") {
        importing.naoDito.AddField("E15", "cancelado, quantidade_cancelada, valor_cancelado",
                                   "an item is cancelled whole or not at all");
    }
}

void Registra(Importador& importing, std::int64_t cents)
{
    importing.registrado += cents;
    importing.vendaDoDia += cents;
}

} // namespace

void WriteCupom(Importador& importing, std::int64_t coo)
{
    Cupom cupom = ReadCupom("E14", importing.arquivo.Read("E14", coo).front());
    for (Record& record : importing.arquivo.Read("E15", coo)) {
        Item item;
        item.bruto = Bruto(record);
        item.desconto = record.Integer("desconto");
        item.acrescimo = record.Integer("acrescimo");
        item.liquido = record.Integer("total");
        item.cancelado = record.Text("cancelado") == "S";
        if (item.bruto + item.acrescimo - item.desconto != item.liquido) {
            importing.naoDito.AddField("E15", "total",
                                       "not quantity times price with its adjustments");
        }
        item.record = std::move(record);
        cupom.itens.push_back(std::move(item));
    }
    cupom.pagamentos = importing.arquivo.Read("E21", coo);
    if (!Resolve(cupom)) {
        importing.naoDito.AddField("E14", "subtotal", "not what the items come to");
    }
    FindAdicional(importing, cupom);
    if (cupom.rateado && !TakeSharesOut(cupom, cupom.subtotal)) {
        importing.naoDito.AddField("E15", "desconto, acrescimo",
                                   "the share of the receipt's cannot be told from the item's own");
        cupom.rateado = false;
    }

    BeginCupom(importing, cupom, "abre_cupom", SecondsOf(cupom.record.Raw("data_abertura")));
    std::int64_t numero = 0;
    for (const Item& item : cupom.itens) {
        ++numero;
        WriteItem(importing, item);
        WriteAjustesItem(importing, item, numero);
        Registra(importing,
                 item.bruto + item.acrescimo + item.record.Integer("acrescimo_cancelado"));
    }
    Registra(importing, cupom.acrescimo + cupom.acrescimoCancelado);
    WriteAjustesSubtotal(importing, cupom);
    WritePagamentos(importing, cupom, cupom.WasClosed());
    if (cupom.cancelado && !cupom.WasClosed()) {
        if ((cupom.desconto != 0 || cupom.acrescimo != 0) && cupom.itens.size() > 1) {
            importing.naoDito.AddField("E15", "cancelado",
                                       "of a receipt cancelled in issue, which items were "
                                       "cancelled before it and had no share");
        }
        importing.tape.Then("cancela_cupom_em_emissao");
        return;
    }
    if (!cupom.WasClosed()) {
        return; // still open
    }
    const bool adjusted = cupom.desconto != 0 || cupom.acrescimo != 0;
    const bool ratear = cupom.rateado || cupom.ratearFechamento;
    if (adjusted && importing.ratear != ratear) {
        importing.ratear = ratear;
        importing.tape.Directive("configura").Flag("ratear_subtotal", ratear);
    }
    TapeLine fecha = importing.tape.Then("fecha_cupom");
    if (cupom.adicional) {
        fecha.Flag("adicional", true);
    }
    if (cupom.cancelado) {
        importing.pendentes.push_back({SemRegistro::Kind::CANCELAMENTO, 0, 0, 0});
    }
}

void WriteCupomNf(Importador& importing, std::int64_t coo, std::int64_t end)
{
    Cupom cupom = ReadCupom("E19", importing.arquivo.Read("E19", coo).front());
    for (Record& record : importing.arquivo.Read("E20", coo)) {
        Item item;
        item.bruto = record.Integer("valor");
        item.desconto = record.Integer("desconto");
        item.acrescimo = record.Integer("acrescimo");
        item.liquido = record.Integer("total");
        item.cancelado = record.Text("cancelado") == "S";
        item.record = std::move(record);
        cupom.itens.push_back(std::move(item));
    }
    cupom.pagamentos = importing.arquivo.Read("E21", coo);
    const std::int64_t abertura = SecondsOf(cupom.record.Raw("data_abertura"));
    ++importing.gnf;

    const Programacao& programacao = importing.programacao;
    const std::int64_t first =
        cupom.itens.empty() ? 0 : programacao.Totalizador(cupom.itens.front().record.Text("nome"));
    if (first == 1 || first == 2) {
        importing.pendentes.clear();
        importing.comprovantes = 0;
        const std::int64_t em = end == 0 ? abertura : std::min(end, abertura + SECONDS_A_DAY - 1);
        TapeLine caixa = importing.tape.At("sangria", std::max(importing.tape.Now(), em), end);
        caixa.Text("operacao", first == 1 ? "fundo_troco" : "sangria")
            .Money("valor", cupom.itens.front().bruto);
        if (first == 1 && !cupom.pagamentos.empty()) {
            const std::string meio = cupom.pagamentos.front().Text("meio");
            importing.fatos.meioFundoTroco = meio;
            caixa.Number("meio", programacao.Meio(meio));
        }
        return;
    }
    if (!Resolve(cupom)) {
        importing.naoDito.AddField("E19", "subtotal", "not what the items come to");
    }
    // The document of one that was not closed ends with its opening.
    BeginCupom(importing, cupom, "abre_cnf", cupom.WasClosed() || end == 0 ? abertura : end);
    std::int64_t numero = 0;
    for (const Item& item : cupom.itens) {
        ++numero;
        const std::int64_t totalizador = programacao.Totalizador(item.record.Text("nome"));
        if (totalizador < 3) {
            importing.Note("E20", "items of a totalizer that takes none");
        }
        importing.tape.Then("vende_item_nf")
            .Number("totalizador", totalizador)
            .Money("valor", item.bruto);
        WriteAjustesItem(importing, item, numero);
    }
    WriteAjustesSubtotal(importing, cupom);
    WritePagamentos(importing, cupom, cupom.WasClosed());
    const std::int64_t em = std::max(importing.tape.Now(), end);
    if (cupom.cancelado && !cupom.WasClosed()) {
        importing.tape.At("cancela_cupom_em_emissao", importing.tape.Now());
    } else if (cupom.WasClosed()) {
        importing.tape.At("fecha_cupom_nf", em);
    }
}

} // namespace bancada::arquivo
