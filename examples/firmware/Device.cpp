// A whole device: reads its host's commands from standard input, a line each, carries them out on
// its own data and mirrors them into the logging database.
//
//   abre CPF | vende CODE NAME QUANTITY CENTS | paga CENTS | fecha
//
// It answers a line to each: "ok" as soon as no power cut can take it back, "refused" where it
// changed nothing, "lost: REASON" where the database does not have it and the firmware log says so.
//
// Usage: device DATABASE LOG
#include "FiscalCommands.h"
#include "FiscalData/RateioSubtotal.h"
#include "LogDatabase/LogDatabase.h"
#include "MfdServices/GravaLog.h"
#include "Registro.h"

#include <cstdio>
#include <cstring>
#include <ctime>
#include <sqlite3.h>
#include <unistd.h>

namespace
{

std::FILE* firmwareLog = nullptr;
bool told = false; // something that is not on the disk yet

// Called before each COMMIT: a command that told nothing costs no second sync.
void SyncLog(void*)
{
    if (!told) {
        return;
    }
    told = std::fflush(firmwareLog) != 0 || fsync(fileno(firmwareLog)) != 0;
}

// A device that keeps its counters nowhere else goes on after the last receipt of the database. (A
// register has a memory of its own, and would compare the two.)
void GoOn(Registro& registro, sqlite3* db)
{
    sqlite3_stmt* last = nullptr;
    sqlite3_prepare_v2(db,
                       "SELECT cont_coo, cont_ccf FROM cupom_fiscal ORDER BY cont_coo DESC LIMIT 1",
                       -1, &last, nullptr);
    if (sqlite3_step(last) == SQLITE_ROW) {
        registro.GoOnAfter(sqlite3_column_int(last, 0), sqlite3_column_int(last, 1));
    }
    sqlite3_finalize(last);
}

// Mirrors a command that was carried out, and answers the host.
void Log(Command& command, Registro& registro, LogDatabase& database)
{
    command.FDController = &registro;
    command.m_dtExecStart = RtcAbsoluteTime(static_cast<UINT32>(std::time(nullptr)));
    database.Begin();
    command.DBLogger(database.Handle());
    const LogOutcome outcome = database.Commit();
    if (outcome.state == LogState::KEPT) {
        std::puts("ok");
    } else {
        std::printf("lost: %s\n", outcome.text);
    }
}

// Carries out one line and mirrors it. Answers false for a line that is refused.
bool Execute(const char* line, Registro& registro, LogDatabase& database)
{
    char cpf[15] = "";
    char code[15] = "";
    char name[30] = "";
    int quantidade = 0;
    int centavos = 0;
    if (std::sscanf(line, "abre %14s", cpf) == 1 && registro.AbreCupom()) {
        CmdAbreCupom command;
        std::strcpy(command.m_sCPF_CNPJ, cpf);
        Log(command, registro, database);
        return true;
    }
    if (std::sscanf(line, "vende %14s %29s %d %d", code, name, &quantidade, &centavos) == 4 &&
        registro.VendeItem(quantidade, centavos)) {
        CmdVendeItem command;
        std::strcpy(command.m_sCodigoItem, code);
        std::strcpy(command.m_sDescricao, name);
        std::strcpy(command.m_sTributacao, "I");
        command.m_iIndiceTributacao = 1;
        std::strcpy(command.m_sUnidadeMedida, "UN");
        command.m_iCasasDecimaisValor = 2;
        command.m_cArredTrunc = 'A';
        Log(command, registro, database);
        return true;
    }
    if (std::sscanf(line, "paga %d", &centavos) == 1 && registro.EfetuaPagamento(centavos)) {
        CmdEfetuaPagamento command;
        command.m_finValor = Financial::FromCents(centavos);
        command.m_iNumParcelas = 1;
        Log(command, registro, database);
        return true;
    }
    if (std::strcmp(line, "fecha\n") == 0 && registro.FechaCupom()) {
        CmdFechaCupom command;
        Log(command, registro, database);
        return true;
    }
    return false;
}

} // namespace

// What the libraries leave to the firmware, beside the data model.
void Vindral_GravaLog(char* text)
{
    std::fprintf(firmwareLog, "%s\n", text);
    told = true;
}
int GetRatearSubtotal()
{
    return 0;
}

int main(int argc, char** argv)
{
    firmwareLog = argc == 3 ? std::fopen(argv[2], "a") : nullptr;
    if (firmwareLog == nullptr) {
        return 2;
    }
    Registro registro;
    LogDatabase database;
    LogDatabaseOptions options;
    options.syncLog = SyncLog;
    LogDatabase::PrepareEngine();
    if (database.Open(argv[1], options) != LogFault::NONE) {
        std::fprintf(stderr, "%s: %s\n", argv[1], database.Text());
        return 1;
    }
    GoOn(registro, database.Handle());

    char line[128];
    while (std::fgets(line, sizeof line, stdin) != nullptr) {
        if (!Execute(line, registro, database)) {
            std::puts("refused");
        }
        std::fflush(stdout);
    }
    database.Close();
    return 0;
}
