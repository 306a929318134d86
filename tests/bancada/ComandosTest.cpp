#include "tests/bancada/ComandosTest.h"

#include "bancada/fita/LineParser.h"
#include "bancada/fita/TapeFields.h"

#include <sstream>
#include <stdexcept>

std::vector<std::string> Linhas(sqlite3* db, const std::string& sql)
{
    std::vector<std::string> linhas;
    sqlite3_stmt* consulta = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db, sql.c_str(), -1, &consulta, nullptr), SQLITE_OK)
        << sqlite3_errmsg(db) << " in " << sql;
    while (sqlite3_step(consulta) == SQLITE_ROW) {
        std::string linha;
        for (int i = 0; i < sqlite3_column_count(consulta); ++i) {
            const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(consulta, i));
            linha += (i == 0 ? "" : "|") + std::string(texto == nullptr ? "NULL" : texto);
        }
        linhas.push_back(linha);
    }
    sqlite3_finalize(consulta);
    return linhas;
}

std::string Retrato(const bancada::Registro& registro)
{
    const bancada::Memoria& memoria = registro.GetMemoria();
    std::ostringstream retrato;
    const auto dinheiro = [&](const char* nome, const Financial& valor) {
        char texto[40];
        retrato << nome << '=' << valor.ToString(texto, sizeof texto, FIN_STR_3, 2, 0) << ' ';
    };
    for (const int contador : memoria.contadores) {
        retrato << contador << ' ';
    }
    dinheiro("gt", memoria.gt);
    for (const auto& imposto : memoria.fiscal.totais) {
        for (const Financial& total : imposto) {
            dinheiro("tot", total);
        }
    }
    for (const auto& imposto : memoria.fiscal.programado) {
        for (const bool programado : imposto) {
            retrato << programado;
        }
    }
    for (const Financial& total : memoria.naoFiscal.totais) {
        dinheiro("nf", total);
    }
    for (const std::string& nome : memoria.naoFiscal.nome) {
        retrato << nome << ' ';
    }
    for (const Financial& recebido : memoria.jornada.meios) {
        dinheiro("meio", recebido);
    }
    for (const bancada::MeioDePagamento& meio : memoria.meios) {
        retrato << meio.descricao << ' ';
    }
    retrato << memoria.jornada.aberta << memoria.jornada.data.s << ' '
            << static_cast<int>(memoria.cupom.situacao) << memoria.cupom.coo << ' ';
    for (const bancada::ItemVendido& item : memoria.cupom.itens) {
        dinheiro("bruto", item.bruto);
        dinheiro("desconto", item.desconto);
        dinheiro("acrescimo", item.acrescimo);
        retrato << item.cancelado;
    }
    dinheiro("subtotal", memoria.cupom.subtotal);
    dinheiro("ajuste", memoria.cupom.ajusteValor);
    dinheiro("pago", memoria.cupom.pago);
    retrato << memoria.cupom.pagamentos.size() << static_cast<int>(memoria.documento)
            << static_cast<int>(memoria.modo) << memoria.contribuinte.cnpj
            << memoria.ecf.simboloMoeda << memoria.ecf.numSerie << memoria.ecf.sequencia
            << memoria.ecf.loja;
    return retrato.str();
}

std::unique_ptr<bancada::ComandoBancada> ComandosTest::Le(const std::string& linha)
{
    bancada::TapeCommand lida;
    for (const bancada::TapeField& campo : bancada::ParseLine(linha, "teste", 1).fields) {
        if (campo.name == "cmd") {
            lida.name = campo.value.text;
        } else {
            lida.fields.push_back(campo);
        }
    }
    const bancada::CatalogueEntry* item = bancada::FindComando(lida.name);
    if (item == nullptr) {
        throw std::invalid_argument("no command \"" + lida.name + "\"");
    }
    auto comando = item->make(registro);
    bancada::TapeFields campos(lida);
    comando->Fields(campos);
    campos.Finish();
    return comando;
}

void ComandosTest::Roda(const std::string& linha)
{
    const auto comando = Le(linha);
    const bancada::Outcome resultado = executor.Execute(*comando, RtcAbsoluteTime(agora++));
    ASSERT_TRUE(resultado.executed) << linha << ": " << resultado.refusal.value_or("");
    ASSERT_TRUE(resultado.kept) << linha;
}

std::string ComandosTest::Recusa(const std::string& linha)
{
    const auto comando = Le(linha);
    const bancada::Outcome resultado = executor.Execute(*comando, RtcAbsoluteTime(agora++));
    EXPECT_FALSE(resultado.executed) << linha;
    return resultado.refusal.value_or("");
}

std::vector<std::string> ComandosTest::Linhas(const std::string& sql)
{
    return ::Linhas(banco.Handle(), sql);
}

void ComandosTest::Programa()
{
    Roda(R"({"cmd":"insere_aliquota","tributacao":"T","indice":1,"percentual":"18.00"})");
    Roda(R"({"cmd":"insere_aliquota","tributacao":"S","indice":2,"percentual":"5.00"})");
    Roda(R"({"cmd":"habilita_totalizadores","codigo":"F","numero":1})");
    Roda(R"({"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"})");
    Roda(R"({"cmd":"insere_meio_pagamento","indice":2,"descricao":"CARTAO","vinculado_ccd":true})");
    Roda(R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA"})");
}

void ComandosTest::Vende()
{
    Roda(R"({"cmd":"abre_cupom"})");
    Roda(R"({"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2",)"
         R"("valor_unitario":"10.00","tributacao":"T","indice":1})");
    Roda(R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1.500",)"
         R"("valor_unitario":"5.99","tributacao":"T","indice":1})");
}

void ComandosTest::EmiteCupom()
{
    Vende();
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"30.00"})");
    Roda(R"({"cmd":"fecha_cupom"})");
}
