// A file, the tape that import makes of it, what that yields: the same file.
#include "bancada/arquivo/Comparacao.h"
#include "bancada/arquivo/Exportacao.h"
#include "bancada/arquivo/Importacao.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/gerador/Generator.h"
#include "tests/bancada/arquivo/RandomTape.h"
#include "tests/bancada/arquivo/Replay.h"
#include "tests/bancada/arquivo/SecondWriter.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace bancada::arquivo
{
namespace
{

using arquivo_test::RandomTape;
using arquivo_test::ReadMemory;
using arquivo_test::Replay;

// How many seeds: ECF_CIRCLE_SEEDS from the environment for a long run.
int Seeds()
{
    const char* text = std::getenv("ECF_CIRCLE_SEEDS");
    return text == nullptr ? 4 : std::atoi(text);
}

class CircleTest : public testing::Test
{
  protected:
    void ExportTo(const std::string& name, bool facts)
    {
        ExportOptions options;
        options.database = folder.File(name + ".db");
        options.memory = folder.File(name + ".memory");
        options.facts = facts ? folder.File("facts") : "";
        options.library = "1.0.0";
        std::ofstream out(folder.File(name), std::ios::binary);
        std::ostringstream notes;
        Export(options, out, notes);
    }

    // What check finds, but for notes, a line each.
    std::string Findings(const std::string& name) const
    {
        std::string text;
        const leitura::DatabaseReading database(folder.File(name + ".db"));
        conferencia::CheckDatabase(database, nullptr, [&text](const conferencia::Finding& one) {
            if (conferencia::InfoOf(one.kind).weight == conferencia::Weight::FAULT) {
                text += one.key + ": " + one.text + "\n";
            }
        });
        return text;
    }

    // The tape that the file `name` makes.
    std::string TapeOf(const std::string& name) const
    {
        std::ostringstream tape;
        std::ostringstream notes;
        static_cast<void>(Import(folder.File(name), tape, notes));
        return tape.str();
    }

    // From the tape "tape" round to the file "second"; what differs.
    std::string Differences(const Memoria& start = Memoria())
    {
        std::string reason;
        refused = Replay(folder, "tape", start, "first", reason);
        ExportTo("first", false);
        {
            std::ofstream tape(folder.File("tape2"), std::ios::binary);
            std::ostringstream notes;
            const ImportResult result = Import(folder.File("first"), tape, notes);
            folder.Write("memory2", result.memory);
            folder.Write("facts", FatosText(result.fatos));
            told = notes.str();
        }
        const int refusedAgain =
            Replay(folder, "tape2", ReadMemory(folder.File("memory2")), "second", reason);
        ExportTo("second", true);
        std::string text;
        if (refusedAgain != 0) {
            text += std::to_string(refusedAgain) + " refused, first " + reason + "\n";
        }
        // Nothing of a file that comes out the same is listed as what a tape cannot say.
        std::istringstream notes(told);
        for (std::string note; std::getline(notes, note);) {
            if (note.find("receipt that can have been several") == std::string::npos) {
                text += note + "\n";
            }
        }
        int shown = 0;
        summary = Compare(folder.File("first"), folder.File("second"), [&](const Difference& d) {
            if (shown++ < 10) {
                text += std::string(NameOf(d.kind)) + " " + d.type + " " + d.key + " " + d.field +
                        " '" + d.first + "' '" + d.second + "'\n";
            }
        });
        // What came of the imported tape is found as sound as what it came of.
        const std::string found = Findings("first");
        findings = found;
        if (const std::string again = Findings("second"); comparesFindings && again != found) {
            text += "found '" + found + "', then '" + again + "'\n";
        }
        if (text.empty() && folder.Read("first") != folder.Read("second")) {
            text = "not the same to the byte";
        }
        return text;
    }

    test_support::TempFolder folder;
    ComparisonSummary summary;
    std::string told;
    std::string findings; // of the database of "tape"
    int refused = 0;      // of the commands of "tape"
    bool comparesFindings = true;
};

TEST_F(CircleTest, TheGrocersDays)
{
    for (int seed = 1; seed <= Seeds(); ++seed) {
        std::ostringstream tape;
        GenerateTape({2, 25, static_cast<std::uint32_t>(seed)}, tape);
        folder.Write("tape", tape.str());
        EXPECT_EQ(Differences(), "") << "seed " << seed << "\n" << told;
        EXPECT_EQ(findings, "");
        EXPECT_GE(summary.types.size(), 15U) << "of the types that have a source, seed " << seed;
        folder.Write("first.db", "");
        folder.Write("second.db", "");
    }
}

// Mode L, entered under the counter of a later restart, keeps the row of that one away.
TEST_F(CircleTest, RestartsWithAndWithoutARow)
{
    std::ostringstream tape;
    GenerateTape({185, 1, 1}, tape);
    folder.Write("tape", tape.str());
    EXPECT_EQ(Differences(), "") << told;
    EXPECT_EQ(summary.types.size(), 16U) << "every type that has a source";
}

TEST_F(CircleTest, EverythingThatARegisterDoes)
{
    for (int seed = 1; seed <= Seeds(); ++seed) {
        folder.Write("tape", RandomTape(static_cast<std::uint64_t>(seed), 4));
        EXPECT_EQ(Differences(), "") << "seed " << seed << "\n" << told;
        // Up to six rates that may be of ISSQN in one receipt.
        EXPECT_EQ(findings.find("not what was signed"), std::string::npos) << "seed " << seed;
        folder.Write("first.db", "");
        folder.Write("second.db", "");
    }
}

TEST_F(CircleTest, CountersThatGoPastTheLastNumber)
{
    // What is found of restarts past the last number goes by the times of interventions and days,
    // and of a receipt that opens a day the file has no time.
    comparesFindings = false;
    for (int seed = 1; seed <= Seeds(); ++seed) {
        Memoria start;
        start.contadores[COUNTER_COO] = 999890 + seed % 100;
        start.contadores[COUNTER_CCF] = 999960 + seed % 40;
        start.contadores[COUNTER_GNF] = 999950 + seed % 50;
        start.contadores[COUNTER_CRZ] = 999996 + seed % 4;
        start.contadores[COUNTER_GRG] = 999997 + seed % 3;
        start.contadores[COUNTER_CRO] = 999997 + seed % 3;
        start.contadores[COUNTER_CDC] = 9997 + seed % 3;
        start.gt = Financial::FromCents(123456789);
        start.gtUltimaRZ = start.gt;
        folder.Write("tape", RandomTape(static_cast<std::uint64_t>(seed), 4));
        EXPECT_EQ(Differences(start), "") << "seed " << seed << "\n" << told;
        folder.Write("first.db", "");
        folder.Write("second.db", "");
    }
}

// A register that has a rate, two means with a voucher and cash.
constexpr char PROGRAMMED[] =
    R"({"cmd":"programa_usuario","em":"2024-03-01 07:00:00","razao_social":"RAZAO","nome_fantasia":"FANTASIA","endereco":"RUA, 1"}
{"cmd":"programa_cnpj_ie_im","cnpj":"11222333000181","ie":"110042490114","im":"","uf":"SP"}
{"cmd":"insere_aliquota","tributacao":"T","indice":1,"percentual":"18.00"}
{"cmd":"insere_aliquota","tributacao":"S","indice":1,"percentual":"2.00"}
{"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"}
{"cmd":"insere_meio_pagamento","indice":2,"descricao":"CARTAO","vinculado_ccd":true}
{"cmd":"insere_meio_pagamento","indice":3,"descricao":"VALE","vinculado_ccd":true}
{"cmd":"leitura_x","em":"2024-03-01 08:00:00"}
{"cmd":"sangria","operacao":"fundo_troco","valor":"10.00"}
)";

// The same register before its day is begun.
std::string WithoutDay()
{
    const std::string text = PROGRAMMED;
    return text.substr(0, text.find("{\"cmd\":\"sangria\""));
}

// Its items hold the subtotal's discount, and no row tells that it was closed.
TEST_F(CircleTest, AnAdditionalReceiptCancelledBehindItsClosingIsNoFinding)
{
    constexpr char CANCELLED[] = R"({"cmd":"configura","ratear_subtotal":true}
{"cmd":"abre_cupom","em":"2024-03-01 09:00:00"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor","valor":"1.00"}
{"cmd":"efetua_pagamento","meio":1,"valor":"20.00"}
{"cmd":"fecha_cupom","adicional":true}
{"cmd":"cancela_aberto"}
{"cmd":"cancela_cupom"}
{"cmd":"reducao_z","em":"2024-03-01 23:00:00"}
)";
    folder.Write("tape", std::string(PROGRAMMED) + CANCELLED);
    EXPECT_EQ(Differences(), "") << told;
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(findings, "");
}

// A voucher's reversal and a payment's have no record, and come in one order alone.
TEST_F(CircleTest, AVoucherIsReversedBeforeItsPaymentIs)
{
    constexpr char PAID[] = R"({"cmd":"abre_cupom","em":"2024-03-01 09:00:00"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":2,"valor":"2.00"}
{"cmd":"efetua_pagamento","meio":1,"valor":"9.00"}
{"cmd":"fecha_cupom"}
)";
    const std::string voucher =
        "{\"cmd\":\"abre_ccd\",\"meio\":2}\n{\"cmd\":\"fecha_ccd_gerencial\"}\n";
    const std::string reversal =
        "{\"cmd\":\"abre_estorno_ccd\"}\n{\"cmd\":\"fecha_ccd_gerencial\"}\n";
    const std::string payment =
        "{\"cmd\":\"estorna_meio_pagamento\",\"origem\":2,\"destino\":3,\"valor\":\"1.00\"}\n";
    const std::string cancelled = "{\"cmd\":\"cancela_cupom\"}\n";
    const std::string end = "{\"cmd\":\"reducao_z\",\"em\":\"2024-03-01 23:00:00\"}\n";
    for (const std::string& behind :
         {voucher + reversal + payment, voucher + reversal + payment + cancelled,
          voucher + reversal + cancelled, voucher + reversal + voucher + reversal + payment,
          payment + voucher + reversal}) {
        folder.Write("tape", PROGRAMMED + std::string(PAID) + behind + end);
        EXPECT_EQ(Differences(), "") << behind << told;
        EXPECT_EQ(refused, 0) << behind;
        // What waits for it tells it, too, where no counter does.
        if (behind != payment + voucher + reversal) {
            const std::string file = folder.Read("first");
            const std::size_t e11 = file.find("\nE11") + 1;
            folder.Write("without", file.substr(0, e11) + file.substr(file.find("\nE12") + 1));
            EXPECT_EQ(TapeOf("without"), folder.Read("tape2")) << behind;
        }
        folder.Write("first.db", "");
        folder.Write("second.db", "");
    }
}

// The GNF tells which of the numbers without a record it was that moved it.
TEST_F(CircleTest, AVoucherIsReversedWhereTheGnfTellsIt)
{
    constexpr char PAID[] = R"({"cmd":"abre_cupom","em":"2024-03-01 09:00:00"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":2,"valor":"2.00"}
{"cmd":"efetua_pagamento","meio":1,"valor":"9.00"}
{"cmd":"fecha_cupom"}
{"cmd":"abre_ccd","meio":2}
{"cmd":"fecha_ccd_gerencial"}
)";
    const std::string reprint = R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":1})"
                                "\n";
    const std::string report = "{\"cmd\":\"abre_gerencial\"}\n{\"cmd\":\"fecha_ccd_gerencial\"}\n";
    const std::string reversal =
        "{\"cmd\":\"abre_estorno_ccd\"}\n{\"cmd\":\"fecha_ccd_gerencial\"}\n";
    const std::string payment =
        R"({"cmd":"estorna_meio_pagamento","origem":1,"destino":3,"valor":"1.00"})"
        "\n";
    // Which tells no GNF.
    const std::string cupom = R"({"cmd":"abre_cupom","em":"2024-03-01 10:00:00"})"
                              "\n"
                              R"({"cmd":"cancela_cupom_em_emissao"})"
                              "\n";
    const std::string end =
        R"({"cmd":"sangria","em":"2024-03-01 21:40:00","operacao":"sangria","valor":"1.00"})"
        "\n"
        R"({"cmd":"reducao_z","em":"2024-03-01 23:00:00"})"
        "\n";
    for (const std::string& behind :
         {reprint + report + reversal, reversal + report + reprint, payment + reprint,
          payment + reversal + reprint, payment + reprint + cupom,
          payment + reversal + reprint + cupom}) {
        folder.Write("tape", PROGRAMMED + std::string(PAID) + behind + end);
        EXPECT_EQ(Differences(), "") << behind << told;
        EXPECT_EQ(refused, 0) << behind;
        folder.Write("first.db", "");
        folder.Write("second.db", "");
    }
}

// Fourteen digits that begin with zeros may be of either; and a receipt without an item left is not
// closed, so that the number behind it is of something else.
TEST_F(CircleTest, ABuyerAndAReceiptThatLookLikeOthers)
{
    constexpr char DAY[] =
        R"({"cmd":"abre_cupom","em":"2024-03-01 09:00:00","cpf_cnpj":"00077788800173"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":1,"valor":"5.00"}
{"cmd":"fecha_cupom"}
{"cmd":"abre_cupom","cpf_cnpj":"52998224725"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"cancela_item","item":1}
{"cmd":"cancela_cupom_em_emissao"}
{"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":1}
{"cmd":"reducao_z","em":"2024-03-01 23:00:00"}
)";
    folder.Write("tape", std::string(PROGRAMMED) + DAY);
    EXPECT_EQ(Differences(), "") << told;
    EXPECT_EQ(refused, 0);
    EXPECT_NE(folder.Read("tape2").find("\"00077788800173\""), std::string::npos);
}

TEST_F(CircleTest, RestartsPastTheLastNumberStandInTheirOrder)
{
    comparesFindings = false;
    Memoria start;
    start.contadores[COUNTER_CRO] = 999997;
    std::string tape = WithoutDay();
    for (const char* em : {"09:00:00", "10:00:00", "11:00:00", "12:00:00"}) {
        tape += std::string(R"({"cmd":"entrada_mit_interno","em":"2024-03-01 )") + em +
                "\"}\n{\"cmd\":\"saida_mit_interno\"}\n";
    }
    folder.Write("tape", tape + "{\"cmd\":\"reducao_z\",\"em\":\"2024-03-01 23:00:00\"}\n");
    EXPECT_EQ(Differences(start), "") << told;
    EXPECT_EQ(refused, 0);
}

// Reversals of payments before the first document that tells the GNF moved it; nothing else did.
TEST_F(CircleTest, TheGnfBeforeTheFirstDocumentThatTellsIt)
{
    const std::string report = "{\"cmd\":\"abre_gerencial\"}\n{\"cmd\":\"fecha_ccd_gerencial\"}\n";
    const std::string payment =
        R"({"cmd":"estorna_meio_pagamento","origem":2,"destino":3,"valor":"1.00"})"
        "\n";
    const std::string reprint = R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":1})"
                                "\n";
    const auto cupom = [](const std::string& inIssue) {
        return R"({"cmd":"abre_cupom"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":2,"valor":"4.00"}
{"cmd":"efetua_pagamento","meio":1,"valor":"9.00"}
)" + inIssue + "{\"cmd\":\"fecha_cupom\"}\n";
    };
    const std::string end = R"({"cmd":"reducao_z","em":"2024-03-01 23:00:00"})"
                            "\n";
    for (const int gnf : {40, 999998}) {
        Memoria start;
        start.contadores[COUNTER_GNF] = gnf;
        for (const std::string& day :
             {cupom("") + payment + report, cupom("") + report + payment,
              cupom("") + reprint + report, cupom(payment) + cupom("") + reprint + report,
              cupom("") + payment + payment + report}) {
            folder.Write("tape", WithoutDay() + day + end);
            EXPECT_EQ(Differences(start), "") << gnf << "\n" << day << told;
            EXPECT_EQ(refused, 0) << day;
            folder.Write("first.db", "");
            folder.Write("second.db", "");
        }
    }
}

// A means without a voucher of its own has the one that leaves a later reversal to be made.
TEST_F(CircleTest, AVoucherLeavesTheLaterReversalToBeMade)
{
    constexpr char DAY[] = R"({"cmd":"abre_cupom","em":"2024-03-01 09:00:00"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":2,"valor":"5.00"}
{"cmd":"fecha_cupom"}
{"cmd":"abre_ccd","meio":2}
{"cmd":"fecha_ccd_gerencial"}
{"cmd":"abre_cupom","em":"2024-03-01 10:00:00"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":3,"valor":"1.30"}
{"cmd":"efetua_pagamento","meio":1,"valor":"9.00"}
{"cmd":"fecha_cupom"}
{"cmd":"estorna_meio_pagamento","origem":1,"destino":2,"valor":"0.52"}
{"cmd":"estorna_meio_pagamento","origem":1,"destino":2,"valor":"0.84"}
{"cmd":"abre_ccd","meio":3}
{"cmd":"fecha_ccd_gerencial"}
{"cmd":"estorna_meio_pagamento","origem":2,"destino":3,"valor":"0.92"}
{"cmd":"reducao_z","em":"2024-03-01 23:00:00"}
)";
    folder.Write("tape", std::string(PROGRAMMED) + DAY);
    EXPECT_EQ(Differences(), "") << told;
    EXPECT_EQ(refused, 0);
}

// Of receipts a file tells the day alone, and rows are read by their times.
TEST_F(CircleTest, ReceiptsComeBehindWhatWasPrintedBeforeTheClockWentBack)
{
    const auto back = [](const std::string& to) {
        return "{\"cmd\":\"entrada_mit_interno\"}\n{\"cmd\":\"acerta_relogio\",\"em\":\"" + to +
               "\"}\n{\"cmd\":\"saida_mit_interno\"}\n";
    };
    const auto cupom = [](const std::string& em) {
        return "{\"cmd\":\"abre_cupom\",\"em\":\"" + em + "\"}\n" +
               R"({"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":1,"valor":"5.00"}
{"cmd":"fecha_cupom"}
)";
    };
    const std::string end = R"({"cmd":"reducao_z","em":"2024-03-01 23:00:00"})"
                            "\n";
    const std::string begin = WithoutDay();
    folder.Write("tape", begin + back("2024-03-01 07:40:00") + cupom("2024-03-01 09:00:00") + end);
    EXPECT_EQ(Differences(), "") << told;
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(findings, "");
    EXPECT_NE(folder.Read("tape2").find(R"({"cmd":"abre_cupom","em":"2024-03-01 08:00:01"})"),
              std::string::npos)
        << folder.Read("tape2");
    // The file leaves no room for that, or the receipt is of another day.
    for (const std::string& day : {back("2024-03-01 07:40:00") + cupom("2024-03-01 07:45:00") +
                                       "{\"cmd\":\"leitura_x\",\"em\":\"2024-03-01 07:50:00\"}\n",
                                   back("2024-02-28 07:40:00") + cupom("2024-02-28 09:00:00")}) {
        folder.Write("first.db", "");
        folder.Write("second.db", "");
        folder.Write("tape", begin + day + end);
        EXPECT_EQ(Differences(), "") << day << told;
        EXPECT_EQ(refused, 0) << day;
    }
}

// A reprint of the second of another document may stand before it or behind it.
TEST_F(CircleTest, AReprintBeginsBehindTheDocumentBeforeIt)
{
    constexpr char DAY[] = R"({"cmd":"abre_cupom","em":"2024-03-01 09:00:00"}
{"cmd":"vende_item","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":"5.00","tributacao":"T","indice":1,"arredonda":true}
{"cmd":"efetua_pagamento","meio":1,"valor":"5.00"}
{"cmd":"fecha_cupom"}
{"cmd":"estorna_meio_pagamento","origem":1,"destino":2,"valor":"0.52"}
{"cmd":"sangria","em":"2024-03-01 21:40:00","operacao":"sangria","valor":"1.00"}
{"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":3}
{"cmd":"reducao_z","em":"2024-03-01 23:00:00"}
)";
    folder.Write("tape", std::string(PROGRAMMED) + DAY);
    EXPECT_EQ(Differences(), "") << told;
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(findings, "");
    EXPECT_NE(folder.Read("tape2").find(R"({"cmd":"reimprime_mfd","em":"2024-03-01 21:40:01")"),
              std::string::npos)
        << folder.Read("tape2");
    // Also where the clock was set back before it.
    constexpr char BACK[] = R"({"cmd":"entrada_mit_interno"}
{"cmd":"acerta_relogio","em":"2024-03-01 07:40:00"}
{"cmd":"saida_mit_interno"}
{"cmd":"reimprime_mfd","em":"2024-03-01 21:40:00","coo_inicial":1,"coo_final":1}
{"cmd":"reducao_z","em":"2024-03-01 23:00:00"}
)";
    folder.Write("first.db", "");
    folder.Write("second.db", "");
    folder.Write("tape", WithoutDay() + BACK);
    EXPECT_EQ(Differences(), "") << told;
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(findings, "");
    EXPECT_NE(folder.Read("tape2").find(R"({"cmd":"reimprime_mfd","em":"2024-03-01 08:00:02")"),
              std::string::npos)
        << folder.Read("tape2");
}

// A detailed command writes ISSQN with the letter of ICMS: of a receipt that was cancelled only the
// day's cancellations tell which rate of the number was of which.
TEST_F(CircleTest, BothTaxesOfANumberInOneCancelledReceipt)
{
    const auto item = [](const char* command, const char* tributacao, const char* valor) {
        return std::string("{\"cmd\":\"") + command +
               R"(","codigo":"1","descricao":"A","quantidade":"1","unidade":"KG","valor_unitario":")" +
               valor + R"(","tributacao":")" + tributacao +
               R"(","indice":1,"arredonda":true})"
               "\n";
    };
    const std::string open = R"({"cmd":"abre_cupom"})"
                             "\n";
    const std::string cancel = R"({"cmd":"cancela_cupom_em_emissao"})"
                               "\n";
    const std::string pay = R"({"cmd":"efetua_pagamento","meio":1,"valor":"9.00"})"
                            "\n"
                            R"({"cmd":"fecha_cupom"})"
                            "\n";
    const std::string icms = item("vende_item_detalhado", "T", "5.00");
    const std::string issqn = item("vende_item_detalhado", "S", "3.00");
    const std::string end = R"({"cmd":"reducao_z","em":"2024-03-01 23:00:00"})"
                            "\n";
    for (const std::string& day :
         {open + icms + issqn + cancel, open + issqn + cancel,
          open + issqn + icms + cancel + open + icms + cancel,
          open + icms + issqn + cancel + open + item("vende_item", "S", "1.00") + pay,
          open + icms + issqn + cancel + open + item("vende_item", "T", "1.00") + pay,
          open + icms + cancel + open + item("vende_item", "S", "1.00") + pay}) {
        folder.Write("tape", PROGRAMMED + day + end);
        EXPECT_EQ(Differences(), "") << day << told;
        EXPECT_EQ(refused, 0) << day;
        folder.Write("first.db", "");
        folder.Write("second.db", "");
    }
}

// An error made both ways would close the circle: the file is also written from the tape and the
// register's state, by nothing that export is made of.
TEST_F(CircleTest, ASecondWriterWritesTheSameFile)
{
    for (int seed = 1; seed <= Seeds(); ++seed) {
        folder.Write("tape", RandomTape(static_cast<std::uint64_t>(seed), 4));
        arquivo_test::SecondWriter second;
        std::string reason;
        Replay(folder, "tape", Memoria(), "first", reason,
               [&second](const TapeCommand& line, const Memoria& before, const Memoria& after,
                         bool executed) {
                   if (executed) {
                       second.Take(line, before, after);
                   }
               });
        ExportTo("first", false);
        std::string written;
        std::istringstream lines(folder.Read("first"));
        for (std::string line; std::getline(lines, line);) {
            written += line.substr(0, line.size() - 1) + "\n";
        }
        EXPECT_EQ(written, second.Text()) << "seed " << seed;
        folder.Write("first.db", "");
    }
}

} // namespace
} // namespace bancada::arquivo
