// How much stack the loggers need, SQLite and a database file with a write-ahead log included: each
// runs on a thread whose stack is painted with a pattern, and what of the pattern is gone
// afterwards was used.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/EmptyRegister.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <pthread.h>
#include <set>
#include <sqlite3.h>
#include <sstream>
#include <sys/mman.h>

#if defined(__SANITIZE_ADDRESS__)
#define ECF_UNDER_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ECF_UNDER_SANITIZER 1
#endif
#endif
#ifndef ECF_UNDER_SANITIZER
#define ECF_UNDER_SANITIZER 0
#endif

namespace
{

// The stack given to every logger. Sanitizers enlarge the frames and keep addresses of their own.
constexpr std::size_t STACK_SIZE = ECF_UNDER_SANITIZER ? 1024 * 1024 : 256 * 1024;
constexpr std::size_t GUARD_SIZE = 64 * 1024;
constexpr unsigned char PATTERN = 0xA5;

// What the loggers stay below, in bytes: those of one row a statement, and the closing that holds a
// whole receipt record (36 KB) besides its own frame and the apportionment's.
constexpr std::size_t ORDINARY_LIMIT = 32 * 1024;
constexpr std::size_t APPORTIONMENT_LIMIT = 80 * 1024;

// A stack with an unreadable page range below it.
class PaintedStack
{
  public:
    PaintedStack()
    {
        void* block = mmap(nullptr, GUARD_SIZE + STACK_SIZE, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        EXPECT_NE(block, MAP_FAILED);
        m_block = static_cast<unsigned char*>(block);
        EXPECT_EQ(mprotect(m_block, GUARD_SIZE, PROT_NONE), 0);
        std::memset(Lowest(), PATTERN, STACK_SIZE);
    }
    ~PaintedStack() { munmap(m_block, GUARD_SIZE + STACK_SIZE); }
    PaintedStack(const PaintedStack&) = delete;
    PaintedStack& operator=(const PaintedStack&) = delete;

    // Runs `work` on the stack and answers how many bytes below its caller's frame it has used.
    std::size_t Run(const std::function<void()>& work)
    {
        m_work = &work;
        pthread_attr_t attributes;
        EXPECT_EQ(pthread_attr_init(&attributes), 0);
        EXPECT_EQ(pthread_attr_setstack(&attributes, Lowest(), STACK_SIZE), 0);
        pthread_t thread;
        const int started = pthread_create(&thread, &attributes, Start, this);
        EXPECT_EQ(started, 0);
        if (started == 0) {
            EXPECT_EQ(pthread_join(thread, nullptr), 0);
        }
        EXPECT_EQ(pthread_attr_destroy(&attributes), 0);
        if (ECF_UNDER_SANITIZER || m_frame == nullptr) {
            return 0;
        }
        const unsigned char* const used =
            std::find_if(Lowest(), m_frame, [](unsigned char byte) { return byte != PATTERN; });
        return static_cast<std::size_t>(m_frame - used);
    }

  private:
    unsigned char* Lowest() const { return m_block + GUARD_SIZE; }

    static void* Start(void* self)
    {
        PaintedStack* const stack = static_cast<PaintedStack*>(self);
        stack->m_frame = static_cast<unsigned char*>(__builtin_frame_address(0));
        (*stack->m_work)();
        return nullptr;
    }

    unsigned char* m_block = nullptr;
    unsigned char* m_frame = nullptr;
    const std::function<void()>* m_work = nullptr;
};

// The classes that FiscalCommands.h declares: the second word of "class Cmd... : public Command".
std::set<std::string> DeclaredCommands()
{
    std::ifstream header(ECF_SOURCE_DIR "/FiscalCommands.h");
    std::set<std::string> declared;
    for (std::string line; std::getline(header, line);) {
        std::istringstream words(line);
        std::string first;
        std::string name;
        if (words >> first >> name && first == "class") {
            declared.insert(name);
        }
    }
    return declared;
}

class StackUse : public LoggerTest
{
  protected:
    // Every logger finds its answers, those of an item, a rate and a payment means included.
    StackUse()
    {
        ScriptEmptyRegister(fiscal);
        for (const std::string item : {"(-1)", "(0)"}) {
            fiscal.texts["Cupom_GetItemQtdeStr" + item] = "";
            fiscal.texts["Cupom_GetItemValorUnitarioStr" + item] = "";
            fiscal.money["Cupom_GetItemValorTotal" + item] = Financial();
            fiscal.money["Cupom_GetItemValorDesc" + item] = Financial();
        }
        fiscal.numbers["Totalizador_GetTotPercTrib(2,0,0)"] = 0;
        fiscal.money["Totalizador_GetTot(2,0,0)"] = Financial();
        fiscal.money["Totalizador_GetTotTrib(2,0,0)"] = Financial();
        fiscal.texts["BaseFormasPagamento_GetMeioPagamento(0)"] = "";
        fiscal.money["BaseFormasPagamento_GetFPTotal(0)"] = Financial();
    }

    // Moves the empty database into a file of the test's own.
    void SetUp() override
    {
        LoggerTest::SetUp();
        Execute("VACUUM INTO '" + m_folder.File("log.db") + "'");
        Reopen(m_folder.File("log.db"));
        EXPECT_EQ(Rows("PRAGMA journal_mode = WAL"), std::vector<std::string>{"wal"});
    }

    void TearDown() override
    {
        LoggerTest::TearDown();
        Reopen(":memory:");
    }

    void Reopen(const std::string& path)
    {
        EXPECT_EQ(sqlite3_close(db), SQLITE_OK);
        EXPECT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    }

    // Runs a class's logger on a stack of its own, reports what it used and holds it to `limit`.
    template <class CommandClass>
    void Measure(const char* name, std::size_t limit, CommandClass command)
    {
        Forget();
        BOOL answer = -1;
        PaintedStack stack;
        const std::size_t used = stack.Run([&] { answer = command.DBLogger(db); });

        EXPECT_NE(answer, -1) << name;
        m_measured.insert(name);
        if (ECF_UNDER_SANITIZER) {
            return;
        }
        EXPECT_GT(used, 0u) << name;
        EXPECT_LT(used, limit) << name;
        RecordProperty(name, std::to_string(used));
        std::printf("%-36s %6zu bytes of stack\n", name, used);
    }

    template <class CommandClass>
    void Measure(const char* name)
    {
        Measure(name, ORDINARY_LIMIT, NewCommand<CommandClass>());
    }

    std::set<std::string> m_measured;

  private:
    test_support::TempFolder m_folder;
};

#define MEASURE(CommandClass) Measure<CommandClass>(#CommandClass)

TEST_F(StackUse, EveryLoggerStaysBelow32KiB)
{
    // A data model in which every logger has something to write.
    fiscal.numbers["Cupom_GetTipoCupom()"] = 1;
    fiscal.numbers["Cupom_GetQuantidadeDeItens()"] = 1;
    fiscal.numbers["BaseFormasPagamento_GetNumeroDeFormasDePagamento()"] = 1;
    fiscal.numbers["BaseFormasPagamento_GetMeioPagamentoProgramado(0)"] = 1;
    fiscal.numbers["Totalizador_GetTotProgramado(2,0,0)"] = 1;

    MEASURE(CmdAbreCupom);
    MEASURE(CmdVendeItem);
    MEASURE(CmdVendeItemDetalhado);
    MEASURE(CmdEfetuaDescAcresItem);
    MEASURE(CmdCancelaDescAcresItem);
    MEASURE(CmdEfetuaDescAcresSubtotal);
    MEASURE(CmdCancelaDescAcresSubtotal);
    MEASURE(CmdEfetuaPagamento);
    MEASURE(CmdFechaCupom);
    MEASURE(CmdCancelaItem);
    MEASURE(CmdCancelaCupomFiscalNfEmEmissao);
    MEASURE(CmdCancelaCupom);
    MEASURE(CmdAbreCNF);
    MEASURE(CmdVendeItemNF);
    MEASURE(CmdFechaCupomNF);
    MEASURE(CmdEstornaMeioPagamento);
    MEASURE(CmdSangria);
    MEASURE(CmdLeituraX);
    MEASURE(CmdLeituraMF);
    MEASURE(CmdReducaoZ);
    MEASURE(CmdAbreCCD);
    MEASURE(CmdAbreEstornoCCD);
    MEASURE(CmdAbreGerencial);
    MEASURE(CmdFechaCCDGerencial);
    MEASURE(CmdEntradaMILInterno);
    MEASURE(CmdSaidaMILInterno);
    MEASURE(CmdEntradaMITInterno);
    MEASURE(CmdSaidaMITInterno);
    MEASURE(CmdReimprimeMFD);
    MEASURE(CmdInsereAliquota);
    MEASURE(CmdHabilitaTotalizadores);
    MEASURE(CmdDesabilitaTotalizadores);
    MEASURE(CmdInsereMeiosPagamento);
    MEASURE(CmdInsereRegOpeNF);
    MEASURE(CmdProgramaLoja);
    MEASURE(CmdProgramaSequenciaECF);
    MEASURE(CmdProgramaUsuario);
    MEASURE(CmdProgramaCNPJ_IE_IM);
    MEASURE(CmdProgramaNrSerie);
    MEASURE(CmdProgramaMoeda);
    // Some loggers are required to leave their counting query open.
    ReleaseOpenQueries();

    const std::set<std::string> declared = DeclaredCommands();
    EXPECT_FALSE(declared.empty());
    EXPECT_EQ(m_measured, declared);
}

TEST_F(StackUse, ClosingThatApportionsTheLongestReceiptStaysBelow80KiB)
{
    SetRatearSubtotal(1);
    fiscal.numbers["Cupom_GetSTDescAplicado()"] = 1;
    fiscal.numbers["Cupom_GetRateioPorItem()"] = 1;
    fiscal.rateio.m_iQuantidadeDeItens = 999;
    fiscal.texts["DadosPDV_GetIdAplicativo()"] = std::string(1499, 'a');
    fiscal.texts["CFe_GetChaveDeBusca()"] = std::string(1499, 'k');
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (0)");
    Execute("INSERT INTO item_cupom_fiscal (cont_coo, seq_item) VALUES (0, 999)");
    CmdFechaCupom command = NewCommand<CmdFechaCupom>();
    SetText(command.m_sMsgPromocional, std::string(1499, 'm'));

    Measure("CmdFechaCupom_999_items", APPORTIONMENT_LIMIT, command);

    EXPECT_EQ(Statements().size(), 1000u);
    EXPECT_THAT(LogEntries(), ::testing::IsEmpty());
    EXPECT_THAT(Rows("SELECT valor_total FROM item_cupom_fiscal"), ::testing::ElementsAre("0"));
}

TEST_F(StackUse, RejectedStatementStaysBelow32KiB)
{
    CmdAbreCupom command = NewCommand<CmdAbreCupom>();
    SetText(command.m_sNomeConsumidor, "D'AVILA");

    Measure("CmdAbreCupom_rejected", ORDINARY_LIMIT, command);

    EXPECT_THAT(LogEntries(), ::testing::SizeIs(2));
}

} // namespace
