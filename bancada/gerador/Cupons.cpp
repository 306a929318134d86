#include "bancada/gerador/Cupons.h"

#include "bancada/gerador/Ajustes.h"
#include "bancada/gerador/Consumidores.h"
#include "bancada/gerador/GeneratedCupom.h"
#include "bancada/gerador/Itens.h"
#include "bancada/gerador/Meios.h"
#include "bancada/gerador/Pagamentos.h"

#include <iterator>
#include <string>

namespace bancada
{

namespace
{

const char* const MENSAGENS[] = {"Obrigado pela preferencia! Volte sempre.", "Confira o seu troco.",
                                 "Ofertas de hortifruti toda quarta-feira.", ""};

void WriteAbertura(Shop& shop)
{
    LineWriter line = shop.tape.Line("abre_cupom");
    shop.tape.Start(line);
    shop.tape.Documento();
    switch (shop.draw.Weighted({78, 14, 5, 3})) {
    case 1:
        line.Text("cpf_cnpj", DrawCpf(shop.draw));
        break;
    case 2:
        line.Text("cpf_cnpj", DrawCpf(shop.draw));
        line.Text("nome", DrawNome(shop.draw));
        break;
    case 3:
        line.Text("cpf_cnpj", DrawCnpj(shop.draw));
        line.Text("nome", DrawNome(shop.draw));
        line.Text("endereco", DrawEndereco(shop.draw));
        break;
    default:
        break;
    }
}

void WriteFechamento(Shop& shop)
{
    LineWriter line = shop.tape.Line("fecha_cupom");
    std::string mensagem = MENSAGENS[shop.draw.Below(std::size(MENSAGENS))];
    if (shop.draw.PerMille(40)) {
        mensagem = "CNPJ/CPF consumidor: " + PunctuatedCpf(DrawCpf(shop.draw)) + " " + mensagem;
    }
    if (!mensagem.empty()) {
        line.Text("mensagem", mensagem);
    }
}

// Of the receipt written last, whose cash leaves the till.
void WriteCancelamento(Shop& shop)
{
    shop.tape.Line("cancela_cupom");
    shop.tape.Documento();
    shop.cash -= shop.lastCash;
}

// A voucher, now and then reversed.
void WriteComprovante(Shop& shop, int meio)
{
    shop.tape.Line("abre_ccd").Number("meio", meio);
    shop.tape.Documento();
    shop.tape.Line("fecha_ccd_gerencial");
    if (shop.draw.PerMille(10)) {
        shop.tape.Line("abre_estorno_ccd");
        shop.tape.Documento();
        shop.tape.Line("fecha_ccd_gerencial");
    }
}

} // namespace

void WriteCupomFiscal(Shop& shop)
{
    WriteAbertura(shop);
    GeneratedCupom cupom;
    WriteItens(shop, cupom);
    if (shop.draw.PerMille(7)) {
        shop.tape.Line("cancela_cupom_em_emissao");
        return;
    }
    if (shop.draw.PerMille(30)) {
        WriteAjusteSubtotal(shop, cupom);
    }
    const int meio = WritePagamentos(shop, cupom.Total());
    WriteFechamento(shop);
    if (shop.draw.PerMille(5)) {
        WriteCancelamento(shop);
        return;
    }
    if (meio == CHEQUE && shop.draw.PerMille(100)) {
        WriteEstorno(shop, CHEQUE, DINHEIRO, cupom.Total());
    }
    if (!GivesTroco(meio) && shop.draw.PerMille(400)) {
        WriteComprovante(shop, meio);
    }
}

void WriteCupomNaoFiscal(Shop& shop)
{
    {
        LineWriter line = shop.tape.Line("abre_cnf");
        shop.tape.Documento();
        if (shop.draw.PerMille(300)) {
            const std::string cpf = DrawCpf(shop.draw);
            line.Text("cpf_cnpj", cpf).Text("nome", DrawNome(shop.draw));
        }
    }
    const bool recarga = shop.draw.PerMille(600);
    const std::int64_t valor =
        recarga ? shop.draw.Between(2, 10) * 500 : shop.draw.Between(3000, 40000);
    shop.tape.Line("vende_item_nf").Number("totalizador", recarga ? 3 : 4).Money("valor", valor);
    shop.lastCash = 0;
    WritePagamentoEmDinheiro(shop, valor);
    shop.tape.Line("fecha_cupom_nf");
    if (shop.draw.PerMille(20)) {
        WriteCancelamento(shop);
    }
}

} // namespace bancada
