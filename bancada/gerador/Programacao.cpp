#include "bancada/gerador/Programacao.h"

#include "bancada/gerador/Consumidores.h"
#include "bancada/gerador/Meios.h"

namespace bancada
{

namespace
{

void WriteIdentidade(TapeWriter& tape)
{
    {
        LineWriter line = tape.Line("programa_nr_serie");
        tape.Start(line)
            .Text("marca", "BANCADA")
            .Text("modelo", "REGISTRO 1")
            .Text("tipo", "ECF-IF")
            .Text("num_serie", "BN0100240300000017");
    }
    tape.Line("programa_sequencia_ecf").Number("numero", 1);
    tape.Line("programa_loja").Number("numero", 1);
}

void WriteContribuinte(Shop& shop)
{
    shop.tape.Line("programa_usuario")
        .Text("razao_social", "MERCEARIA FLOR DO IPE LTDA")
        .Text("nome_fantasia", "MERCEARIA FLOR DO IPE")
        .Text("endereco", "RUA DAS LARANJEIRAS, 215 - VILA NOVA - CAMPINAS");
    shop.tape.Line("programa_cnpj_ie_im")
        .Text("cnpj", DrawCnpj(shop.draw))
        .Text("ie", "244123456110")
        .Text("im", "00123456")
        .Text("uf", "SP");
}

void WriteTotalizadores(TapeWriter& tape)
{
    const std::int64_t aliquotas[] = {1800, 1200, 700};
    for (int i = 0; i < 3; ++i) {
        tape.Line("insere_aliquota")
            .Text("tributacao", "T")
            .Number("indice", i + 1)
            .Decimal("percentual", aliquotas[i], 2);
    }
    tape.Line("insere_aliquota")
        .Text("tributacao", "S")
        .Number("indice", 1)
        .Text("percentual", "5.00");
    for (const char* codigo : {"F", "I", "N"}) {
        tape.Line("habilita_totalizadores").Text("codigo", codigo).Number("numero", 1);
    }
    tape.Line("insere_reg_ope_nf").Number("indice", 3).Text("descricao", "RECARGA CELULAR");
    tape.Line("insere_reg_ope_nf").Number("indice", 4).Text("descricao", "CONTA DE LUZ");
}

void WriteMeios(TapeWriter& tape)
{
    const char* const descricoes[] = {"DINHEIRO", "CHEQUE", "CARTAO CREDITO", "CARTAO DEBITO",
                                      "VALE REFEICAO"};
    for (int meio = DINHEIRO; meio <= VALE; ++meio) {
        LineWriter line = tape.Line("insere_meio_pagamento");
        line.Number("indice", meio).Text("descricao", descricoes[meio - DINHEIRO]);
        if (!GivesTroco(meio)) {
            line.True("vinculado_ccd");
        }
    }
}

} // namespace

void WriteProgramacao(Shop& shop)
{
    shop.tape.Directive("configura")
        .True("ratear_subtotal")
        .Text("aplicativo", "PDV MERCEARIA 1.0");
    shop.tape.Wait(shop.tape.Now());
    WriteIdentidade(shop.tape);
    WriteContribuinte(shop);
    WriteTotalizadores(shop.tape);
    WriteMeios(shop.tape);
}

} // namespace bancada
