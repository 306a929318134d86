// What a spreadsheet is given: whole, and what could do harm there.
#include "bancada/relatorio/Csv.h"
#include "bancada/Unusable.h"

#include "tests/bancada/relatorio/ShowTest.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;

class Csv : public Sample
{
  protected:
    // The lines behind the file's name, the heading whole.
    std::string Table(relatorio::CsvTable table, const relatorio::Filtro& filtro = {})
    {
        const leitura::DatabaseReading database(Database());
        std::ostringstream out;
        relatorio::WriteCsv({&database}, table, filtro, out);
        std::string lines;
        const std::string name = Database() + ";";
        std::istringstream in(out.str());
        for (std::string line; std::getline(in, line);) {
            EXPECT_EQ(line.back(), '\r') << line;
            line.pop_back();
            lines += (line.rfind(name, 0) == 0 ? line.substr(name.size()) : line) + "\n";
        }
        return lines;
    }
};

TEST_F(Csv, Documentos)
{
    WriteSample();
    EXPECT_EQ(
        Table(relatorio::CsvTable::DOCUMENTOS),
        R"csv(arquivo;jornada;documento;coo;ccf;gnf;inicio;fim;cancelado;cpf_cnpj;nome;subtotal;desconto;acrescimo;total;troco
1;COMPROVANTE NÃO FISCAL;101;;1;2024-03-15 08:00:05;2024-03-15 08:00:05;N;;;100,00;0,00;0,00;100,00;
1;CUPOM FISCAL;102;51;;2024-03-15 09:12:44;;N;12345678909;José da Conceição;30,86;1,54;0,00;29,32;0,68
1;CUPOM FISCAL;103;52;;2024-03-15 09:40:00;;S;;;0,00;0,00;0,00;0,00;0,00
1;CUPOM FISCAL;104;53;;2024-03-15 11:05:10;;N;;;0,00;0,00;0,00;0,00;0,00
1;CUPOM FISCAL;105;54;;2024-03-15 17:30:00;;N;12345678000195;Padaria & Cia;1250,00;10,00;0,00;1240,00;0,00
1;COMPROVANTE CRÉDITO OU DÉBITO;106;;2;2024-03-15 17:31:00;2024-03-15 17:31:20;;;;;;;;
1;RELATÓRIO GERENCIAL;107;;3;2024-03-15 18:00:00;2024-03-15 18:02:00;;;;;;;;
1;COMPROVANTE NÃO FISCAL;108;;4;2024-03-15 18:10:00;2024-03-15 18:11:00;S;98765432100;Ana Lúcia;20,00;1,00;0,00;19,00;
1;CANCELAMENTO DE NÃO FISCAL;109;;5;2024-03-15 18:15:00;2024-03-15 18:15:00;;;;;;;;
1;COMPROVANTE NÃO FISCAL;110;;6;2024-03-15 21:00:00;2024-03-15 21:00:00;N;;;50,00;0,00;0,00;50,00;
1;REDUÇÃO Z;111;;6;2024-03-15 22:10:03;2024-03-15 22:10:03;;;;;;;;
2;LEITURA X;112;;6;2024-03-16 07:58:00;2024-03-16 07:58:00;;;;;;;;
2;CUPOM FISCAL;113;55;;2024-03-16 08:20:30;;N;;"</pre><script>document.title=""taken""</script>";5,00;0,00;0,00;5,00;0,00
)csv");
}

TEST_F(Csv, Totais)
{
    WriteSample();
    EXPECT_EQ(Table(relatorio::CsvTable::DIAS),
              "arquivo;crz;movimento;cupons;vendido;cancelados;ilegiveis;vb\n"
              "1;2024-03-15;3;1269,32;2;0;1330,96\n"
              "2;2024-03-16 07:58:00;1;5,00;0;0;\n");
    EXPECT_EQ(Table(relatorio::CsvTable::ALIQUOTAS), "arquivo;aliquota;itens;valor\n"
                                                     "01T18.00;3;1005,93\n"
                                                     "02T07.00;1;12,72\n"
                                                     "03S05.00;1;248,00\n"
                                                     "N1;1;9,21\n"
                                                     "fora_dos_itens;;-1,54\n");
    EXPECT_EQ(Table(relatorio::CsvTable::MEIOS), "arquivo;meio;nome;pagamentos;valor\n"
                                                 "1;Dinheiro;3;67,10\n"
                                                 "2;Cartão de crédito;1;1000,00\n"
                                                 "3;Cheque;1;240,00\n");
}

TEST_F(Csv, WhatTheFilterLeaves)
{
    WriteSample();
    relatorio::Filtro filtro;
    filtro.desde = "2024-03-16";
    EXPECT_EQ(Table(relatorio::CsvTable::PAGAMENTOS, filtro),
              "arquivo;jornada;coo;meio;nome;valor;parcelas;estornado;valor_estornado\n"
              "2;113;1;Dinheiro;5,00;1;N;0,00\n");
    EXPECT_EQ(Table(relatorio::CsvTable::ALIQUOTAS, filtro), "arquivo;aliquota;itens;valor\n"
                                                             "01T18.00;1;5,00\n");
}

TEST_F(Csv, Itens)
{
    WriteSample();
    EXPECT_EQ(
        Table(relatorio::CsvTable::ITENS),
        R"csv(arquivo;jornada;coo;item;codigo;descricao;quantidade;unidade;valor_unitario;aliquota;desconto;acrescimo;valor_liquido;cancelado
1;101;1;;FUNDO DE TROCO;;;;;0,00;0,00;100,00;N
1;102;1;7891000315507;Leite integral longa vida 1 litro;2,00;UN;4,99;01T18.00;1,05;0,00;8,93;N
1;102;2;2000001;Maçã gala;1,235;kg;9,90;02T07.00;0,00;0,50;12,72;N
1;102;3;555;Pilha;1,00;UN;7,50;F1;0,00;0,00;7,50;S
1;102;4;556;Gás de cozinha;2,00;UN;4,605;N1;0,00;0,00;9,21;N
1;103;1;1;Pão;10,00;UN;0,80;01T18.00;0,00;0,00;8,00;N
1;104;1;77;Queijo;1,00;UN;32,10;01T18.00;0,00;0,00;32,10;N
1;105;1;900;Forno elétrico;1,00;UN;1000,00;01T18.00;8,00;0,00;992,00;N
1;105;2;901;Instalação;1,00;SV;250,00;03S05.00;2,00;0,00;248,00;N
1;108;1;;Recarga de celular;;;;;0,00;0,00;20,00;N
1;110;1;;SANGRIA;;;;;0,00;0,00;50,00;N
2;113;1;<i>1</i>;"<script>document.title=""taken""</script>";1,00;UN;5,00;01T18.00;0,00;0,00;5,00;N
)csv");
}

TEST_F(Csv, Pagamentos)
{
    WriteSample();
    EXPECT_EQ(Table(relatorio::CsvTable::PAGAMENTOS),
              R"csv(arquivo;jornada;coo;meio;nome;valor;parcelas;estornado;valor_estornado
1;102;1;Dinheiro;30,00;1;N;0,00
1;104;1;Dinheiro;32,10;1;N;0,00
1;105;2;Cartão de crédito;1240,00;3;S;240,00
1;105;3;Cheque;240,00;1;N;0,00
1;108;1;Dinheiro;19,00;1;N;0,00
2;113;1;Dinheiro;5,00;1;N;0,00
)csv");
}

TEST_F(Csv, Reducoes)
{
    WriteSample();
    EXPECT_EQ(Table(relatorio::CsvTable::REDUCOES),
              R"csv(arquivo;crz;coo;gnf;cro;emissao;movimento;gt;vb;base_icms;icms;base_issqn;issqn
1;111;6;1;2024-03-15 22:10:03;2024-03-15;1330,96;1330,96;1052,75;188,90;248,00;12,40
)csv");
}

TEST_F(Csv, WhatIsNoValueStandsAsItIs)
{
    WriteSample();
    Write("UPDATE cupom_fiscal SET valor_total = NULL, valor_troco = 'x;y' WHERE cont_coo = 102;"
          "UPDATE cupom_fiscal SET id_cancelado = '=1+1' WHERE cont_coo = 103");
    const std::string lines = Table(relatorio::CsvTable::DOCUMENTOS);
    EXPECT_THAT(lines, HasSubstr(";NULL;\"x;y\"\n"));
    EXPECT_THAT(lines, HasSubstr(";'=1+1;"));
}

// A spreadsheet reckons with what begins so, and a terminal obeys escape sequences.
TEST_F(Csv, NoTextIsReckonedWithOrObeyed)
{
    WriteSample();
    for (const char* first : {"=", "+", "-", "@"}) {
        Write(std::string("UPDATE cupom_fiscal SET nome_consumidor = '") + first +
              "A1;\"\x1b[2J' WHERE cont_coo = 102");
        EXPECT_THAT(Table(relatorio::CsvTable::DOCUMENTOS),
                    HasSubstr(std::string(";\"'") + first + "A1;\"\"\uFFFD[2J\";"));
    }
}

// Writes to the database when it is written to.
class Disturbance : public std::streambuf
{
  public:
    explicit Disturbance(std::string file) : m_file(std::move(file)) {}

  protected:
    int overflow(int c) override
    {
        std::ofstream(m_file, std::ios::app | std::ios::binary) << 'x';
        return c;
    }

  private:
    std::string m_file;
};

TEST_F(Csv, ADatabaseThatChangedMeanwhileIsTold)
{
    WriteSample();
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(Database().c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_close(db), SQLITE_OK);
    const leitura::DatabaseReading database(Database());
    ASSERT_EQ(database.HowRead(), leitura::Manner::FILE_ALONE);
    Disturbance disturbance(Database());
    std::ostream out(&disturbance);
    EXPECT_THROW(relatorio::WriteCsv({&database}, relatorio::CsvTable::REDUCOES, {}, out),
                 Unusable);
}

TEST_F(Csv, SeveralDatabasesHaveOneHeading)
{
    WriteSample();
    const leitura::DatabaseReading database(Database());
    std::ostringstream one;
    relatorio::WriteCsv({&database}, relatorio::CsvTable::REDUCOES, {}, one);
    std::ostringstream two;
    relatorio::WriteCsv({&database, &database}, relatorio::CsvTable::REDUCOES, {}, two);
    const std::string lines = one.str().substr(one.str().find('\n') + 1);
    EXPECT_EQ(two.str(), one.str() + lines);
    EXPECT_EQ(lines.rfind(Database() + ";1;", 0), 0U);
}

} // namespace
} // namespace bancada::show_test
