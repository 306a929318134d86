// How much stack the loggers need, SQLite and a database file with a write-ahead log included: each
// runs on a thread whose stack is painted with a pattern, and what of the pattern is gone
// afterwards was used. Prints a line a logger for the table in docs/integration.md.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/catalogue/LoggerCases.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <pthread.h>
#include <sqlite3.h>
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

    // How many bytes a work has used below the frame that called it: down to where it called the
    // engine last, and with the engine.
    struct Use {
        std::size_t own;
        std::size_t withEngine;
    };

    // Runs `work` on the stack.
    Use Run(const std::function<void()>& work)
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
            return {};
        }
        const unsigned char* const used =
            std::find_if(Lowest(), m_frame, [](unsigned char byte) { return byte != PATTERN; });
        const unsigned char* const call = static_cast<const unsigned char*>(seam.lowestCall);
        return {call == nullptr ? 0 : static_cast<std::size_t>(m_frame - call),
                static_cast<std::size_t>(m_frame - used)};
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

class StackUse : public LoggerTest
{
  protected:
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

    // Runs a logger on a stack of its own and holds what it used to `limit`.
    PaintedStack::Use Measure(const std::string& name, std::size_t limit, Command& command)
    {
        Forget();
        seam.lowestCall = nullptr;
        BOOL answer = -1;
        PaintedStack stack;
        const PaintedStack::Use use = stack.Run([&] { answer = command.DBLogger(db); });
        // Some loggers are required to leave their counting query open.
        ReleaseOpenQueries();

        EXPECT_NE(answer, -1) << name;
        if (!ECF_UNDER_SANITIZER) {
            EXPECT_GT(use.withEngine, use.own) << name;
            EXPECT_LT(use.withEngine, limit) << name;
        }
        return use;
    }

    // Reports what a logger uses at most.
    static void Report(const std::string& name, const PaintedStack::Use& use)
    {
        std::printf("stack\t%s\t%zu\t%zu\n", name.c_str(), use.own, use.withEngine);
    }

  private:
    test_support::TempFolder m_folder;
};

TEST_F(StackUse, EveryLoggerStaysBelow32KiB)
{
    std::map<std::string, PaintedStack::Use> most; // by class
    for (const LoggerCase& logger : LoggerCases()) {
        FixedModel model;
        const std::shared_ptr<Command> command = logger.make(model);
        if (model.rateio != 0) {
            continue; // below
        }
        Execute("BEGIN");
        for (const std::string& row : logger.rows) {
            Execute(row);
        }
        const PaintedStack::Use use = Measure(logger.Name(), ORDINARY_LIMIT, *command);
        Execute("ROLLBACK");
        PaintedStack::Use& ofClass = most[logger.commandClass];
        ofClass = {std::max(ofClass.own, use.own), std::max(ofClass.withEngine, use.withEngine)};
    }
    for (const auto& [commandClass, use] : most) {
        Report(commandClass, use);
    }
}

TEST_F(StackUse, ClosingThatApportionsTheLongestReceiptStaysBelow80KiB)
{
    const std::string text(1499, 'a');
    FixedModel model;
    model.descSubtotal = TRUE;
    model.itens = Cupom::MAX_ITENS;
    model.aplicativo = model.chave = text.c_str();
    SetRatearSubtotal(1);
    const std::string coo = std::to_string(FixedModel::COO);
    Execute("INSERT INTO cupom_fiscal (cont_coo) VALUES (" + coo + ")");
    Execute("INSERT INTO item_cupom_fiscal (cont_coo, seq_item) VALUES (" + coo + ", 999)");
    CmdFechaCupom command;
    command.FDController = &model;
    SetText(command.m_sMsgPromocional, std::string(1499, 'm'));

    Report("CmdFechaCupom, rateio", Measure("999 items", APPORTIONMENT_LIMIT, command));

    EXPECT_EQ(Statements().size(), 1000u);
    EXPECT_THAT(LogEntries(), ::testing::IsEmpty());
    EXPECT_THAT(Rows("SELECT valor_total FROM item_cupom_fiscal"), ::testing::ElementsAre("16.13"));
}

TEST_F(StackUse, RejectedStatementStaysBelow32KiB)
{
    FixedModel model;
    CmdAbreCupom command;
    command.FDController = &model;
    SetText(command.m_sNomeConsumidor, "D'AVILA");

    Measure("rejected", ORDINARY_LIMIT, command);

    EXPECT_THAT(LogEntries(), ::testing::SizeIs(2));
}

} // namespace
