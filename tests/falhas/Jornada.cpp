#include "tests/falhas/Jornada.h"

#include "bancada/Unusable.h"
#include "bancada/log/Losses.h"
#include "bancada/tape/LineParser.h"
#include "tests/falhas/RefusedStatements.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <stdexcept>

namespace falhas
{
namespace
{

const char* const PROGRAMACAO[] = {
    R"({"cmd":"programa_nr_serie","marca":"BANCADA","modelo":"REGISTRO 1","tipo":"ECF-IF","num_serie":"BN01"})",
    R"({"cmd":"programa_usuario","razao_social":"MERCEARIA LTDA","nome_fantasia":"MERCEARIA","endereco":"RUA 1"})",
    R"({"cmd":"programa_cnpj_ie_im","cnpj":"47195328000174","ie":"244123456110","im":"00123456","uf":"SP"})",
    R"({"cmd":"programa_moeda","simbolo":"R$"})",
    R"({"cmd":"insere_aliquota","tributacao":"T","indice":1,"percentual":"18.00"})",
    R"({"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"})",
    R"({"cmd":"insere_meio_pagamento","indice":1,"descricao":"EM DINHEIRO"})",
    R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA"})",
    R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA CELULAR"})",
};

const char* const DIA[] = {
    R"({"cmd":"leitura_x"})",
    R"({"cmd":"abre_cupom","nome":"ANA","endereco":"RUA 2"})",
    R"({"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2","valor_unitario":"10.00","tributacao":"T","indice":1})",
    R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1.500","valor_unitario":"5.99","tributacao":"T","indice":1})",
    R"({"cmd":"efetua_desc_acres_item","operacao":"desconto","tipo":"valor","valor":"1.00","item":1})",
    R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor","valor":"2.00"})",
    R"({"cmd":"efetua_pagamento","meio":1,"valor":"30.00"})",
    R"({"cmd":"fecha_cupom","mensagem":"OBRIGADO"})",
    R"({"cmd":"sangria","operacao":"sangria","valor":"5.00"})",
    R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":2})",
};

const char REDUCAO_Z[] = R"({"cmd":"reducao_z"})";

constexpr UINT32 UM_DIA_S = 24 * 60 * 60;

std::vector<std::string> Linhas()
{
    std::vector<std::string> lines(std::begin(PROGRAMACAO), std::end(PROGRAMACAO));
    const int days = IsLong() ? 3 : 1;
    for (int day = 0; day < days; ++day) {
        lines.insert(lines.end(), std::begin(DIA), std::end(DIA));
        lines.emplace_back(REDUCAO_Z);
    }
    return lines;
}

bancada::LogDatabase::Options DatabaseOptions(const SimulatedDisk& disk, bool append, int pageSize)
{
    bancada::LogDatabase::Options options;
    options.vfs = disk.Name();
    options.append = append;
    options.pageSize = pageSize;
    // Checkpoints come soon enough to be part of a short day.
    options.checkpointBytes = 40 * (pageSize == 0 ? LogDatabaseOptions().pageSize : pageSize);
    return options;
}

int CountStatements(sqlite3* db)
{
    int count = 0;
    for (sqlite3_stmt* one = sqlite3_next_stmt(db, nullptr); one != nullptr;
         one = sqlite3_next_stmt(db, one)) {
        ++count;
    }
    return count;
}

} // namespace

std::vector<bancada::TapeCommand> ParseTape(const std::vector<std::string>& lines)
{
    std::vector<bancada::TapeCommand> tape;
    for (const std::string& line : lines) {
        bancada::TapeCommand command;
        for (const bancada::TapeField& field : bancada::ParseLine(line, "fita", 1).fields) {
            if (field.name == "cmd") {
                command.name = field.value.text;
            } else {
                command.fields.push_back(field);
            }
        }
        tape.push_back(command);
    }
    return tape;
}

const std::vector<bancada::TapeCommand>& Fita()
{
    static const std::vector<bancada::TapeCommand> tape = ParseTape(Linhas());
    return tape;
}

bool IsLong()
{
    const char* extent = std::getenv("ECF_FALHAS");
    return extent != nullptr && std::string(extent) == "longa";
}

int Step()
{
    const char* step = std::getenv("ECF_FALHAS_PASSO");
    return step == nullptr ? 1 : std::max(1, std::atoi(step));
}

Bancada::Bancada(const SimulatedDisk& disk, const std::string& logPath, bool append, int pageSize)
    : caixa(BANCO, DatabaseOptions(disk, append, pageSize))
{
    caixa.OpenLog(logPath);
    registro.SetRatearSubtotal(true);
}

bool Bancada::Executa(const bancada::TapeCommand& linha)
{
    const auto comando = caixa.Read(linha);
    const bancada::Answer answer = caixa.Execute(*comando, RtcAbsoluteTime(m_agora));
    // The day after a Z is another one.
    m_agora += linha.name == "reducao_z" ? UM_DIA_S : 1;
    EXPECT_TRUE(answer.Executed()) << linha.name << ": " << answer.reason;
    return answer.fate == bancada::Answer::Fate::KEPT;
}

bool Bancada::Roda(const bancada::TapeCommand& linha)
{
    const bool kept = Executa(linha);
    caixa.RestAfter(linha);
    return kept;
}

bool Bancada::Roda(const bancada::TapeCommand& linha, Bancada& outra)
{
    outra.registro = registro;
    outra.m_agora = m_agora;
    const bool kept = outra.Roda(linha);
    registro = outra.registro;
    m_agora = outra.m_agora;
    return kept;
}

std::string Bancada::Retrato() const
{
    const bancada::Memoria& memoria = registro.GetMemoria();
    std::ostringstream retrato;
    for (const int contador : memoria.contadores) {
        retrato << contador << ' ';
    }
    char texto[40];
    retrato << memoria.gt.ToString(texto, sizeof texto, FIN_STR_3, 2, 0) << ' ' << memoria.cupom.coo
            << ' ' << memoria.jornada.data.s;
    return retrato.str();
}

const Esperado& SemFalhas(std::size_t quantos, const std::vector<bool>& perdidos)
{
    static std::map<std::pair<std::size_t, std::vector<bool>>, Esperado> known;
    std::vector<bool> lost(perdidos.begin(),
                           perdidos.begin() + static_cast<std::ptrdiff_t>(quantos));
    const auto found = known.find({quantos, lost});
    if (found != known.end()) {
        return found->second;
    }

    const ScratchFile log;
    const SimulatedDisk disk;
    const SimulatedDisk trash;
    Bancada bancada(disk, log.Path());
    Bancada trashBancada(trash, log.Path());
    for (std::size_t i = 0; i < quantos; ++i) {
        EXPECT_TRUE(lost[i] ? bancada.Roda(Fita()[i], trashBancada) : bancada.Roda(Fita()[i]));
    }
    return known[{quantos, lost}] = {Dump(bancada.Handle()), bancada.Retrato()};
}

ScratchFile::ScratchFile()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "falhas.XXXXXX").string();
    const int file = mkstemp(pattern.data());
    if (file < 0) {
        throw std::runtime_error("no scratch file");
    }
    close(file);
    m_path = pattern;
}

ScratchFile::~ScratchFile()
{
    std::error_code none;
    std::filesystem::remove(m_path, none);
}

void ScratchFile::Empty() const
{
    std::filesystem::resize_file(m_path, 0);
}

int RodaComFalhas(SimulatedDisk& disk, const std::function<void()>& disarm,
                  const std::string& circumstances)
{
    SCOPED_TRACE(circumstances);
    static const ScratchFile logFile;
    const std::vector<bancada::TapeCommand>& tape = Fita();
    const Esperado& unharmed = SemFalhas(tape.size(), std::vector<bool>(tape.size()));
    std::vector<bool> lost(tape.size(), true);
    logFile.Empty();
    RefusedStatements().clear();
    bool opened = false;
    std::string retrato;
    try {
        Bancada bancada(disk, logFile.Path());
        opened = true;
        const int statements = CountStatements(bancada.Handle());
        for (std::size_t i = 0; i < tape.size(); ++i) {
            // Nothing stays in memory from one command to the next, so that each one reads.
            sqlite3_db_release_memory(bancada.Handle());
            lost[i] = !bancada.Roda(tape[i]);
            EXPECT_NE(sqlite3_get_autocommit(bancada.Handle()), 0) << "left open: " << tape[i].name;
            EXPECT_EQ(CountStatements(bancada.Handle()), bancada.banco.IsOpen() ? statements : 0)
                << tape[i].name;
            EXPECT_EQ(lost[i], !bancada.banco.LastLoss().empty()) << tape[i].name;
        }
        retrato = bancada.Retrato();
        int told = 0;
        for (const bool one : lost) {
            told += one ? 1 : 0;
        }
        EXPECT_EQ(bancada.banco.Counts().commandsLost, told);
        EXPECT_EQ(bancada.banco.Counts().statementsRejected,
                  static_cast<std::int64_t>(RefusedStatements().size()));
    } catch (const bancada::Unusable&) {
        // It is said at once, and nothing runs.
    }
    disarm();

    if (!opened) {
        // What was begun is finished by the next opening.
        const ScratchFile other;
        try {
            const Bancada again(disk, other.Path());
        } catch (const std::exception& error) {
            ADD_FAILURE() << "cannot be opened afterwards: " << error.what();
            return 0;
        }
    } else {
        EXPECT_EQ(retrato, unharmed.retrato);
        std::vector<std::string> reported;
        for (const bancada::RejectedStatement& one : bancada::ReadLosses(logFile.Path()).rejected) {
            reported.push_back(one.statement);
        }
        EXPECT_EQ(reported, RefusedStatements());
    }
    const Leitura leitura(disk);
    EXPECT_EQ(Dump(leitura.Handle()), SemFalhas(tape.size(), lost).linhas);
    EXPECT_EQ(leitura.Integrity(), "ok");

    int count = 0;
    for (const bool one : lost) {
        count += opened && one ? 1 : 0;
    }
    return count;
}

} // namespace falhas
