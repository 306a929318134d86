#include "benchmarks/Cases.h"

#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"
#include "FiscalData/RateioSubtotal.h"
#include "MfdServices/GravaLog.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace
{

// While set, statements on their way to the engine are kept here.
std::vector<std::string>* capture = nullptr;

// REQUIRES: the text fits.
char* Put(const char* text, char* out, int)
{
    return std::strcpy(out, text);
}

Financial Money(int cents)
{
    return Financial::FromCents(cents);
}

} // namespace

// What the library leaves to its user. A rejected statement would spoil a measurement.
void Vindral_GravaLog(char* text)
{
    std::fprintf(stderr, "%s\n", text);
    std::abort();
}

int GetRatearSubtotal()
{
    return 1;
}

extern "C" {
using Callback = int (*)(void*, int, char**, char**);
int __real_sqlite3_exec(sqlite3*, const char*, Callback, void*, char**);
int __wrap_sqlite3_exec(sqlite3*, const char*, Callback, void*, char**);

int __wrap_sqlite3_exec(sqlite3* db, const char* sql, Callback callback, void* argument,
                        char** error)
{
    if (capture != nullptr) {
        capture->push_back(sql);
    }
    return __real_sqlite3_exec(db, sql, callback, argument, error);
}
}

// A fiscal data model with fixed answers, as cheap to ask as it can be.
struct Case::Model final : FiscalDataController {
    int itens = 6;
    bool ajuste = false; // the subtotal carries a discount

    CmdAbreCupom abertura;
    CmdVendeItem venda;
    CmdEfetuaPagamento pagamento;
    CmdFechaCupom fechamento;
    CmdReducaoZ reducaoZ;

    // The command of that case, its parameters set.
    Command& MakeCommand(const std::string& name);

    int Contador_Get(FISCALDATA_COUNTER_INDEX contador) override { return 4321 + contador; }
    int Cupom_GetCOO() override { return 4321; }
    int Cupom_GetQuantidadeDeItens() override { return itens; }
    char* Cupom_GetItemQtdeStr(int, char* out, int size) override
    {
        return Put("1,250", out, size);
    }
    char* Cupom_GetItemValorUnitarioStr(int, char* out, int size) override
    {
        return Put("12,99", out, size);
    }
    Financial Cupom_GetItemValorTotal(int) override { return Money(1623); }
    Financial Cupom_GetItemValorAcr(int) override { return Money(0); }
    Financial Cupom_GetItemValorDesc(int) override { return Money(50); }
    Financial Cupom_GetSubTotal() override { return Money(1621377); }
    Financial Cupom_GetTotal() override { return Money(1611377); }
    Financial Cupom_GetTroco() override { return Money(623); }
    BOOL Cupom_GetSTAcrAplicado() override { return FALSE; }
    BOOL Cupom_GetSTDescAplicado() override { return ajuste ? TRUE : FALSE; }
    Financial Cupom_GetSTValorDescAcr() override { return Money(10000); }
    Financial Cupom_GetSTValorCanceladoDescAcr() override { return Money(0); }
    FD_TIPO_CUPOM Cupom_GetTipoCupom() override { return CUPOM_FISCAL; }
    BOOL Cupom_GetRateioPorItem(Cupom* copy) override
    {
        copy->m_iQuantidadeDeItens = itens;
        for (int i = 0; i < itens; ++i) {
            copy->m_Itens[i].m_finValorTotal = Money(1613);
            copy->m_Itens[i].m_finValorDesc = Money(10);
        }
        return TRUE;
    }
    char* CFe_GetChaveDeBusca(char* out, int size) override
    {
        return Put("35260311222333000181000004321", out, size);
    }
    int AssinaturaDigital_GetBase64(char* out, char*) override
    {
        Put("n4bQgYhMfWWaL+qgxVrQFaO/TxsrC4Is0V1sFbDwCgg=", out, 45);
        return 44;
    }
    char* DadosPDV_GetIdAplicativo(char* out, int size) override
    {
        return Put("CAIXA 2.10", out, size);
    }
    int BaseFormasPagamento_GetNumeroDeFormasDePagamento() override { return 20; }
    char* BaseFormasPagamento_GetMeioPagamento(int, char* out, int size) override
    {
        return Put("Cartao debito", out, size);
    }
    BOOL BaseFormasPagamento_GetMeioPagamentoProgramado(int) override { return TRUE; }
    Financial BaseFormasPagamento_GetFPTotal(int) override { return Money(987654); }
    Financial BaseFormasPagamento_GetTrocoTotal() override { return Money(12345); }
    Financial Totalizador_GetGT() override { return Money(123456789); }
    Financial Totalizador_GetGTIni(int) override { return Money(0); }
    Financial Totalizador_GetVB(int) override { return Money(1234567); }
    Financial Totalizador_GetTot(int, int, int) override { return Money(34567); }
    Financial Totalizador_GetTotTrib(int, int, int) override { return Money(6222); }
    int Totalizador_GetTotPercTrib(int, int, int) override { return 1800; }
    BOOL Totalizador_GetTotProgramado(int, int, int) override { return TRUE; }
    Financial Totalizador_GetSoma_Tot_VL(int, int) override { return Money(1000000); }
    Financial Totalizador_GetSoma_Tot_Canc(int, int) override { return Money(5000); }
    Financial Totalizador_GetSoma_Tot_Desc(int, int) override { return Money(12345); }
    Financial Totalizador_GetSoma_Tot_Acr(int, int) override { return Money(678); }
    Financial Totalizador_GetSoma_TotTrib(int, int) override { return Money(180000); }
    Financial Totalizador_GetTotalNF(int, int) override { return Money(10000); }
    int Totalizador_GetTotNFProgramado(int, int) override { return 1; }
    char* Totalizador_GetNomeNF(int, int, char* out, int size) override
    {
        return Put("RECARGA CELULAR", out, size);
    }
    int ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES, char*, int number) override
    {
        return 29 + number;
    }
    RtcAbsoluteTime Jornada_GetDataMovimento() override { return RtcAbsoluteTime(1772409600); }
    RtcRelativeTime Jornada_GetTempoOperacional(RtcAbsoluteTime) override { return {36000}; }
    RtcRelativeTime Jornada_GetTempoEmitindoDocFiscal() override { return {7200}; }
    char* DadosContribuinte_GetRazaoSocial(char* out, int size) override
    {
        return Put("", out, size);
    }
    char* DadosContribuinte_GetNomeFantasia(char* out, int size) override
    {
        return Put("", out, size);
    }
    char* DadosContribuinte_GetEndereco(char* out, int size) override { return Put("", out, size); }
    char* DadosECF_GetVersaoSB(char* out, int size) override { return Put("", out, size); }
    char* DadosECF_GetNrOrdemSeq(char* out, int size) override { return Put("", out, size); }
};

namespace
{

void Run(sqlite3* db, const std::string& sql)
{
    char* error = nullptr;
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
        throw std::runtime_error(error);
    }
}

std::string Schema()
{
    std::ifstream file(ECF_SCHEMA_FILE);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

Command& Case::Model::MakeCommand(const std::string& name)
{
    if (name == "abertura") {
        std::strcpy(abertura.m_sCPF_CNPJ, "12345678909");
        std::strcpy(abertura.m_sNomeConsumidor, "MARIA DA SILVA");
        std::strcpy(abertura.m_sEnderecoConsumidor, "RUA DAS FLORES, 123");
        return abertura;
    }
    if (name == "venda") {
        std::strcpy(venda.m_sCodigoItem, "7891234567890");
        std::strcpy(venda.m_sDescricao, "TOMATE ITALIANO");
        std::strcpy(venda.m_sTributacao, "T");
        venda.m_iIndiceTributacao = 1;
        std::strcpy(venda.m_sUnidadeMedida, "KG");
        venda.m_iCasasDecimaisQtde = 3;
        venda.m_iCasasDecimaisValor = 2;
        venda.m_cArredTrunc = 'T';
        return venda;
    }
    if (name == "pagamento") {
        pagamento.m_iMeioPagamento = 1;
        pagamento.m_finValor = Money(12345);
        pagamento.m_iNumParcelas = 1;
        std::strcpy(pagamento.m_sInfoAdicional, "BALCAO");
        return pagamento;
    }
    if (name == "fechamento_999") {
        std::strcpy(fechamento.m_sMsgPromocional,
                    "CNPJ/CPF consumidor: 123.456.789-09 OBRIGADO E VOLTE SEMPRE");
        return fechamento;
    }
    if (name == "reducao_z") {
        return reducaoZ;
    }
    throw std::invalid_argument("no such case: " + name);
}

std::vector<std::string> Case::Names()
{
    return {"abertura", "venda", "pagamento", "fechamento_999", "reducao_z"};
}

Case::Case(const std::string& name)
    : m_model(std::make_unique<Model>()), m_command(m_model->MakeCommand(name))
{
    if (sqlite3_open(":memory:", &m_db) != SQLITE_OK) {
        throw std::runtime_error("no in-memory database");
    }
    Run(m_db, Schema());

    m_command.FDController = m_model.get();
    m_command.m_dtExecStart = RtcAbsoluteTime(1772440530);
    if (name == "fechamento_999") {
        m_model->itens = 999;
        m_model->ajuste = true;
        Run(m_db, "INSERT INTO cupom_fiscal (cont_coo) VALUES (4321)");
        for (int item = 1; item <= m_model->itens; ++item) {
            Run(m_db, "INSERT INTO item_cupom_fiscal (cont_coo, seq_item) VALUES (4321, " +
                          std::to_string(item) + ")");
        }
    }

    Run(m_db, "BEGIN");
    capture = &m_statements;
    m_command.DBLogger(m_db);
    capture = nullptr;
    Reset();
}

Case::~Case()
{
    sqlite3_close(m_db);
}

void Case::Log()
{
    m_command.DBLogger(m_db);
}

void Case::Execute()
{
    for (const std::string& sql : m_statements) {
        m_command.DBLoggerExecuteSQL(m_db, sql.c_str());
    }
}

void Case::Reset()
{
    Run(m_db, "ROLLBACK");
    Run(m_db, "BEGIN");
}
