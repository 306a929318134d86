#include "tests/dono/Aparelho.h"

#include "FiscalData/RateioSubtotal.h"
#include "MfdServices/GravaLog.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <utility>

namespace dono
{
namespace
{

Aparelho* onDuty = nullptr;

const LoggerCase* Find(const std::string& name)
{
    for (const LoggerCase& one : LoggerCases()) {
        if (one.Name() == name) {
            return &one;
        }
    }
    throw std::runtime_error("the catalogue has no " + name);
}

// Before anything else of the program uses the engine.
[[maybe_unused]] const bool PREPARED = LogDatabase::PrepareEngine();

} // namespace

const std::vector<const LoggerCase*>& Comandos()
{
    static const std::vector<const LoggerCase*> all = [] {
        std::vector<const LoggerCase*> found;
        for (const char* name :
             {"CmdProgramaNrSerie, primeira", "CmdProgramaUsuario, primeira",
              "CmdProgramaCNPJ_IE_IM, seguinte", "CmdProgramaMoeda",
              "CmdInsereMeiosPagamento, primeira", "CmdInsereMeiosPagamento, seguinte",
              "CmdInsereRegOpeNF, primeira", "CmdAbreCupom, com consumidor", "CmdVendeItem, ICMS",
              "CmdEfetuaDescAcresItem, fiscal, acréscimo por valor", "CmdEfetuaPagamento",
              "CmdFechaCupom, rateio de 6 itens", "CmdSangria, sangria", "CmdReducaoZ, completa"}) {
            found.push_back(Find(name));
        }
        return found;
    }();
    return all;
}

Aparelho::Aparelho(const falhas::SimulatedDisk& disk, Numbers numbers, int pageSize)
    : m_vfs(disk.Name()), m_numbers(numbers), m_pageSize(pageSize)
{
    onDuty = this;
}

Aparelho::~Aparelho()
{
    m_database.Close();
    onDuty = nullptr;
}

LogFault Aparelho::Open()
{
    LogDatabaseOptions options;
    options.vfs = m_vfs.c_str();
    options.pageSize = m_pageSize > 0 ? m_pageSize : options.pageSize;
    // Checkpoints come soon enough to be part of a short run.
    options.checkpointBytes = std::int64_t{30} * options.pageSize;
    options.context = this;
    options.syncLog = [](void* self) {
        auto& device = *static_cast<Aparelho*>(self);
        device.m_synced = device.m_entries.size();
    };
    options.moveFile = [](void* self, const char* from, const char* to) {
        auto& device = *static_cast<Aparelho*>(self);
        return device.m_disk != nullptr && device.m_disk->Rename(from, to) == SQLITE_OK;
    };
    return m_database.Open(falhas::BANCO, options);
}

LogOutcome Aparelho::Run(std::size_t command)
{
    FixedModel model;
    const std::shared_ptr<Command> made = Comandos()[command]->make(model);
    m_ratear = model.rateio;
    m_database.Begin();
    made->DBLogger(m_database.Handle());
    if (m_numbers == Numbers::EACH) {
        m_database.NumberCommand(static_cast<std::int32_t>(command) + 1);
    }
    const LogOutcome outcome = m_database.Commit();
    if (command + 1 == Comandos().size()) {
        m_database.Rest();
    }
    return outcome;
}

const std::string& Expected(std::size_t count, const std::vector<bool>& lost)
{
    static std::map<std::pair<std::size_t, std::vector<bool>>, std::string> known;
    const auto key = std::make_pair(count, lost);
    const auto found = known.find(key);
    if (found != known.end()) {
        return found->second;
    }
    Aparelho* const before = onDuty;
    const falhas::SimulatedDisk disk;
    {
        Aparelho device(disk, Numbers::NONE);
        EXPECT_EQ(device.Open(), LogFault::NONE) << device.Database().Text();
        for (std::size_t i = 0; i < count; ++i) {
            if (!lost[i]) {
                EXPECT_EQ(device.Run(i).state, LogState::KEPT) << Comandos()[i]->Name();
            }
        }
    }
    onDuty = before;
    const falhas::Leitura leitura(disk);
    return known[key] = falhas::Dump(leitura.Handle());
}

int Step()
{
    const char* step = std::getenv("ECF_FALHAS_PASSO");
    return step == nullptr ? 1 : std::max(1, std::atoi(step));
}

} // namespace dono

void Vindral_GravaLog(char* text)
{
    if (dono::onDuty != nullptr) {
        dono::onDuty->Take(text);
    }
}

int GetRatearSubtotal()
{
    return dono::onDuty == nullptr ? 0 : dono::onDuty->RatearSubtotal();
}
