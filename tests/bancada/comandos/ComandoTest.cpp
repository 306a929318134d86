#include "tests/bancada/comandos/ComandoTest.h"

#include "bancada/tape/LineParser.h"
#include "tests/support/Rows.h"

#include <sstream>

std::string Portrait(const bancada::Registro& registro)
{
    const bancada::Memoria& memoria = registro.GetMemoria();
    std::ostringstream portrait;
    const auto money = [&](const char* name, const Financial& valor) {
        char text[40];
        portrait << name << '=' << valor.ToString(text, sizeof text, FIN_STR_3, 2, 0) << ' ';
    };
    for (const int contador : memoria.contadores) {
        portrait << contador << ' ';
    }
    money("gt", memoria.gt);
    for (const auto& imposto : memoria.fiscal.totais) {
        for (const Financial& total : imposto) {
            money("tot", total);
        }
    }
    for (const auto& imposto : memoria.fiscal.programado) {
        for (const bool programado : imposto) {
            portrait << programado;
        }
    }
    for (const Financial& total : memoria.naoFiscal.totais) {
        money("nf", total);
    }
    for (const std::string& name : memoria.naoFiscal.nome) {
        portrait << name << ' ';
    }
    for (const Financial& recebido : memoria.jornada.meios) {
        money("meio", recebido);
    }
    for (const bancada::MeioDePagamento& meio : memoria.meios) {
        portrait << meio.descricao << ' ';
    }
    portrait << memoria.jornada.aberta << memoria.jornada.data.s << ' '
             << static_cast<int>(memoria.cupom.situacao) << memoria.cupom.coo << ' ';
    for (const bancada::ItemVendido& item : memoria.cupom.itens) {
        money("bruto", item.bruto);
        money("desconto", item.desconto);
        money("acrescimo", item.acrescimo);
        portrait << item.cancelado;
    }
    money("subtotal", memoria.cupom.subtotal);
    money("ajuste", memoria.cupom.ajusteValor);
    money("pago", memoria.cupom.pago);
    portrait << memoria.cupom.pagamentos.size() << static_cast<int>(memoria.documento)
             << static_cast<int>(memoria.modo) << memoria.contribuinte.cnpj
             << memoria.ecf.simboloMoeda << memoria.ecf.numSerie << memoria.ecf.sequencia
             << memoria.ecf.loja;
    return portrait.str();
}

std::unique_ptr<bancada::ComandoBancada> ComandoTest::Read(const std::string& line)
{
    bancada::TapeCommand read;
    for (const bancada::TapeField& field : bancada::ParseLine(line, "teste", 1).fields) {
        if (field.name == "cmd") {
            read.name = field.value.text;
        } else {
            read.fields.push_back(field);
        }
    }
    return caixa.Read(read);
}

void ComandoTest::Run(const std::string& line)
{
    const auto comando = Read(line);
    const bancada::Answer answer = caixa.Execute(*comando, RtcAbsoluteTime(now++));
    ASSERT_EQ(answer.fate, bancada::Answer::Fate::KEPT) << line << ": " << answer.reason;
}

std::string ComandoTest::Refused(const std::string& line)
{
    const auto comando = Read(line);
    const bancada::Answer answer = caixa.Execute(*comando, RtcAbsoluteTime(now++));
    EXPECT_EQ(answer.fate, bancada::Answer::Fate::REFUSED) << line;
    return answer.reason;
}

std::vector<std::string> ComandoTest::Rows(const std::string& sql)
{
    return test_support::Rows(database.Handle(), sql);
}

void ComandoTest::Programa()
{
    Run(R"({"cmd":"insere_aliquota","tributacao":"T","indice":1,"percentual":"18.00"})");
    Run(R"({"cmd":"insere_aliquota","tributacao":"S","indice":2,"percentual":"5.00"})");
    Run(R"({"cmd":"habilita_totalizadores","codigo":"F","numero":1})");
    Run(R"({"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"})");
    Run(R"({"cmd":"insere_meio_pagamento","indice":2,"descricao":"CARTAO","vinculado_ccd":true})");
    Run(R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA"})");
}

void ComandoTest::AbreCupomAndVende()
{
    Run(R"({"cmd":"abre_cupom"})");
    Run(R"({"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2",)"
        R"("valor_unitario":"10.00","tributacao":"T","indice":1})");
    Run(R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1.500",)"
        R"("valor_unitario":"5.99","tributacao":"T","indice":1})");
}

void ComandoTest::EmiteCupom()
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"30.00"})");
    Run(R"({"cmd":"fecha_cupom"})");
}
