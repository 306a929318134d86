// Every logger with a data model of any answers and any members, against a second opinion
// (loggers/Reference.h): each statement is the same, byte by byte, and goes to the engine, or is
// two entries of the firmware log where it does not fit its array or the engine rejects it, never
// both, never neither; and nothing of the command changes but what has to.
#include "MfdServices/GravaLog.h"
#include "tests/fuzz/Hold.h"
#include "tests/fuzz/loggers/Reference.h"
#include "tests/support/Files.h"

#include <cstring>
#include <memory>
#include <sqlite3.h>
#include <tuple>

namespace
{

using reference::Reference;

using Commands =
    std::tuple<CmdAbreCupom, CmdVendeItem, CmdVendeItemDetalhado, CmdEfetuaDescAcresItem,
               CmdCancelaDescAcresItem, CmdEfetuaDescAcresSubtotal, CmdCancelaDescAcresSubtotal,
               CmdEfetuaPagamento, CmdFechaCupom, CmdCancelaItem, CmdCancelaCupomFiscalNfEmEmissao,
               CmdCancelaCupom, CmdAbreCNF, CmdVendeItemNF, CmdFechaCupomNF,
               CmdEstornaMeioPagamento, CmdSangria, CmdLeituraX, CmdLeituraMF, CmdReducaoZ,
               CmdAbreCCD, CmdAbreEstornoCCD, CmdAbreGerencial, CmdFechaCCDGerencial,
               CmdEntradaMILInterno, CmdSaidaMILInterno, CmdEntradaMITInterno, CmdSaidaMITInterno,
               CmdReimprimeMFD, CmdInsereAliquota, CmdHabilitaTotalizadores,
               CmdDesabilitaTotalizadores, CmdInsereMeiosPagamento, CmdInsereRegOpeNF,
               CmdProgramaLoja, CmdProgramaSequenciaECF, CmdProgramaUsuario, CmdProgramaCNPJ_IE_IM,
               CmdProgramaNrSerie, CmdProgramaMoeda>;

// What happened, in its order.
struct Event {
    enum Kind {
        QUERY,
        EXECUTED,
        REJECTED, // by the engine
        ENTRY     // of the firmware log
    };
    Kind kind;
    std::string text;
};

std::vector<Event> events;
bool watching = false;
int rateio = 0;

using Data = FuzzedDataProvider;

// Any content, with or without a terminator.
template <std::size_t size>
void Fill(Data& data, char (&array)[size])
{
    const std::string text = data.ConsumeRandomLengthString(size);
    std::memset(array, 0, size);
    std::memcpy(array, text.data(), text.size());
}

// Any number that has a neighbour on both sides: a position is the number less one.
void Fill(Data& data, int& value)
{
    value = data.ConsumeBool() ? data.ConsumeIntegralInRange(-1, 1000)
                               : data.ConsumeIntegralInRange(INT32_MIN + 1, INT32_MAX - 1);
}

template <class Enum, std::enable_if_t<std::is_enum_v<Enum>, int> = 0>
void Fill(Data& data, Enum& value)
{
    value = static_cast<Enum>(data.ConsumeIntegralInRange<std::int32_t>(-1, 4));
}

void Fill(Data& data, BigInt& value)
{
    for (UINT32& word : value.number) {
        word = data.ConsumeBool() ? data.ConsumeIntegral<UINT32>() : 0;
    }
}

void Fill(Data& data, Financial& value)
{
    Fill(data, value.nr);
}

template <class... Members>
void FillAll(Data& data, Members&... members)
{
    (Fill(data, members), ...);
}

// The members that each class's logger reads; a class that is not here has none.
template <class Command>
void FillMembers(Data&, Command&)
{
}
void FillMembers(Data& data, CmdAbreCupom& c)
{
    FillAll(data, c.m_sCPF_CNPJ, c.m_sNomeConsumidor, c.m_sEnderecoConsumidor);
}
template <class Venda>
void FillVenda(Data& data, Venda& c)
{
    FillAll(data, c.m_sCodigoItem, c.m_sDescricao, c.m_sTributacao, c.m_iIndiceTributacao,
            c.m_sUnidadeMedida, c.m_iCasasDecimaisQtde, c.m_iCasasDecimaisValor);
    if (data.ConsumeBool()) {
        c.m_sTributacao[0] = data.ConsumeBool() ? 'T' : 'S';
    }
    if (data.ConsumeBool()) {
        c.m_iCasasDecimaisValor = 3;
    }
    c.m_cArredTrunc = data.ConsumeIntegral<char>();
}
void FillMembers(Data& data, CmdVendeItem& c)
{
    FillVenda(data, c);
}
void FillMembers(Data& data, CmdVendeItemDetalhado& c)
{
    FillVenda(data, c);
}
void FillMembers(Data& data, CmdEfetuaDescAcresItem& c)
{
    FillAll(data, c.m_eOperacao, c.m_eTipoValor, c.m_Valor, c.m_iNumeroItem);
}
void FillMembers(Data& data, CmdCancelaDescAcresItem& c)
{
    FillAll(data, c.m_eOperacao, c.m_iNumeroItem);
}
void FillMembers(Data& data, CmdEfetuaDescAcresSubtotal& c)
{
    FillAll(data, c.m_eOperacao, c.m_eTipoValor, c.m_Valor);
}
void FillMembers(Data& data, CmdCancelaDescAcresSubtotal& c)
{
    FillAll(data, c.m_eOperacao);
}
void FillMembers(Data& data, CmdEfetuaPagamento& c)
{
    FillAll(data, c.m_iMeioPagamento, c.m_finValor, c.m_iNumParcelas, c.m_sInfoAdicional);
}
void FillMembers(Data& data, CmdFechaCupom& c)
{
    FillAll(data, c.m_bCupomAdicional, c.m_sMsgPromocional);
    if (data.ConsumeBool()) { // a message that names the consumer, as cut as it comes
        const std::string text = data.ConsumeRandomLengthString(60) +
                                 "CNPJ/CPF consumidor:" + data.ConsumeRandomLengthString(40);
        std::memcpy(c.m_sMsgPromocional, text.data(), text.size());
    }
}
void FillMembers(Data& data, CmdCancelaItem& c)
{
    FillAll(data, c.m_iNumeroItem);
}
void FillMembers(Data& data, CmdCancelaCupom& c)
{
    FillAll(data, c.m_iCOOCancelado);
}
void FillMembers(Data& data, CmdAbreCNF& c)
{
    FillAll(data, c.m_sCPF_CNPJ, c.m_sNomeConsumidor);
}
void FillMembers(Data& data, CmdVendeItemNF& c)
{
    FillAll(data, c.m_iIndiceTotalizador);
}
void FillMembers(Data& data, CmdEstornaMeioPagamento& c)
{
    FillAll(data, c.m_iMeioPagamentoOrigem, c.m_iMeioPagamentoDestino, c.m_finValor,
            c.m_iNumParcelas, c.m_sInfoAdicional);
}
void FillMembers(Data& data, CmdSangria& c)
{
    FillAll(data, c.m_eTipoOperacao);
}
void FillMembers(Data& data, CmdLeituraX& c)
{
    FillAll(data, c.m_eMidia);
}
void FillMembers(Data& data, CmdReimprimeMFD& c)
{
    FillAll(data, c.m_iCooInicial, c.m_iCooFinal);
}
void FillMembers(Data& data, CmdInsereMeiosPagamento& c)
{
    FillAll(data, c.m_iIndice, c.m_sDescricao, c.m_eVinculacaoCCD);
}
void FillMembers(Data& data, CmdInsereRegOpeNF& c)
{
    FillAll(data, c.m_iIndice, c.m_sDescricao);
}
void FillMembers(Data& data, CmdProgramaSequenciaECF& c)
{
    FillAll(data, c.m_iNumCaixa);
}
void FillMembers(Data& data, CmdProgramaCNPJ_IE_IM& c)
{
    FillAll(data, c.m_sCNPJ, c.m_sIE, c.m_sIM, c.m_sUF);
}
void FillMembers(Data& data, CmdProgramaNrSerie& c)
{
    FillAll(data, c.m_sMarca, c.m_sModelo, c.m_sTipo, c.m_sNumSerie);
}
void FillMembers(Data& data, CmdProgramaMoeda& c)
{
    FillAll(data, c.m_sSimboloMoeda);
}

// Compares what happened with what is due; `at` is behind what is compared.
void HoldStep(const reference::Step& step, EEscCmd command, std::size_t& at)
{
    const auto next = [&at]() -> const Event& {
        Hold(at < events.size());
        return events[at++];
    };
    const auto holdEntries = [&](const std::string& reason) {
        const Event& message = next();
        Hold(message.kind == Event::ENTRY);
        Hold(message.text.rfind("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'" +
                                    std::to_string(command) + "', Erro:'" + reason,
                                0) == 0);
        const Event& statement = next();
        Hold(statement.kind == Event::ENTRY);
        return statement.text;
    };
    if (step.sql.size() >= step.arraySize) {
        const std::string composed = holdEntries("statement too long'");
        Hold(composed.size() < step.arraySize && step.sql.rfind(composed, 0) == 0);
        return;
    }
    const Event& event = next();
    Hold(event.text == step.sql);
    Hold((event.kind == Event::QUERY) == step.isQuery);
    Hold(event.kind != Event::ENTRY);
    if (event.kind == Event::REJECTED) {
        Hold(holdEntries("") == step.sql);
    }
}

int CountIn(sqlite3* db, const std::string& query)
{
    sqlite3_stmt* statement = nullptr;
    int count = -1;
    if (sqlite3_prepare_v2(db, query.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
        count = sqlite3_column_int(statement, 0);
    }
    sqlite3_finalize(statement);
    return count;
}

// A command as it stands in memory, with what lies between its members.
template <class Logger>
std::vector<char> BytesOf(const Logger& command)
{
    const char* const first = reinterpret_cast<const char*>(&command);
    return {first, first + sizeof command};
}

// Makes a member in `bytes` what it is in the command.
template <class Logger, class Member>
void Take(const Logger& command, const Member& member, std::vector<char>& bytes)
{
    const char* const first = reinterpret_cast<const char*>(&member);
    std::copy(first, first + sizeof member,
              bytes.begin() + (first - reinterpret_cast<const char*>(&command)));
}

template <class Logger>
void Try(Data& data, sqlite3* db)
{
    AnyModel model(data);
    Logger command;
    FillMembers(data, command);
    command.FDController = &model;
    command.m_dtExecStart = RtcAbsoluteTime(data.ConsumeIntegral<UINT32>());
    command.m_dtExecEnd =
        RtcAbsoluteTime(data.ConsumeBool() ? matlong[0] : data.ConsumeIntegral<UINT32>());
    rateio = data.ConsumeIntegralInRange(0, 2);

    Reference due(model, command, [db](const std::string& query) { return CountIn(db, query); });
    due.Of(command);
    std::vector<char> bytes = BytesOf(command);

    events.clear();
    watching = true;
    const BOOL answer = command.DBLogger(db);
    watching = false;

    Hold(answer == due.Expected().answer);
    std::size_t at = 0;
    for (const reference::Step& step : due.Expected().steps) {
        HoldStep(step, command.m_eCmdType, at);
    }
    Hold(at == events.size());

    Hold(command.m_dtExecEnd.s == due.Expected().end);
    Take(command, command.m_dtExecEnd, bytes);
    if constexpr (std::is_same_v<Logger, CmdVendeItem>) {
        Hold(reference::TextOf(command.m_sDescricao) == due.Expected().descricao);
        Take(command, command.m_sDescricao, bytes);
    }
    Hold(bytes == BytesOf(command));
}

template <std::size_t... index>
void TryAny(Data& data, sqlite3* db, std::index_sequence<index...>)
{
    const std::size_t chosen = data.ConsumeIntegralInRange<std::size_t>(0, sizeof...(index) - 1);
    (void)((index == chosen && (Try<std::tuple_element_t<index, Commands>>(data, db), true)) ||
           ...);
}

void Run(sqlite3* db, const char* sql)
{
    Hold(sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
}

// One with the logging tables, one without any, whose every statement is rejected.
sqlite3* Opened(bool withTables)
{
    sqlite3* db = nullptr;
    Hold(sqlite3_open(":memory:", &db) == SQLITE_OK);
    if (withTables) {
        Run(db, test_support::ReadFile(ECF_SOURCE_DIR "/sqlite/schema.sql").c_str());
    }
    return db;
}

// Every class that the header declares is tried.
void HoldThatAllAreThere()
{
    const std::string header = test_support::ReadFile(ECF_SOURCE_DIR "/FiscalCommands.h");
    std::size_t classes = 0;
    for (std::size_t at = 0; (at = header.find("\nclass Cmd", at)) != std::string::npos; ++at) {
        ++classes;
    }
    Hold(classes == std::tuple_size_v<Commands>);
}

} // namespace

void Vindral_GravaLog(char* text)
{
    events.push_back({Event::ENTRY, text});
}

int GetRatearSubtotal()
{
    return rateio;
}

extern "C" {
using Callback = int (*)(void*, int, char**, char**);
int __real_sqlite3_exec(sqlite3*, const char*, Callback, void*, char**);
int __real_sqlite3_prepare_v2(sqlite3*, const char*, int, sqlite3_stmt**, const char**);

int __wrap_sqlite3_exec(sqlite3* db, const char* sql, Callback callback, void* argument,
                        char** error)
{
    const int result = __real_sqlite3_exec(db, sql, callback, argument, error);
    if (watching) {
        events.push_back({result == SQLITE_OK ? Event::EXECUTED : Event::REJECTED, sql});
    }
    return result;
}

int __wrap_sqlite3_prepare_v2(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                              const char** tail)
{
    if (watching) {
        Hold(static_cast<std::size_t>(bytes) == std::strlen(sql) + 1);
        events.push_back({Event::QUERY, sql});
    }
    return __real_sqlite3_prepare_v2(db, sql, bytes, statement, tail);
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    static sqlite3* const databases[] = {Opened(true), Opened(false)};
    static const bool all = (HoldThatAllAreThere(), true);
    static_cast<void>(all);
    Data data(bytes, size);
    sqlite3* const db = databases[data.ConsumeIntegralInRange(0, 7) == 0 ? 1 : 0];
    Run(db, "BEGIN");
    for (int i = 0; i < 4 && data.remaining_bytes() > 0; ++i) {
        TryAny(data, db, std::make_index_sequence<std::tuple_size_v<Commands>>());
    }
    // Some leave their counting query open.
    while (sqlite3_stmt* const left = sqlite3_next_stmt(db, nullptr)) {
        sqlite3_finalize(left);
    }
    // A statement's text may have ended the transaction.
    sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    return 0;
}
