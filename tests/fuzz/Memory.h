// A memory's files, held in memory, and what is claimed of them whatever they hold.
#pragma once

#include "bancada/Unusable.h"
#include "bancada/memoria/MemoriaFile.h"
#include "bancada/memoria/MemoriaJson.h"
#include "bancada/memoria/ProgressJson.h"
#include "bancada/registro/Registro.h"
#include "tests/fuzz/Hold.h"

#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

constexpr char MEMORY[] = "registro.memory";
constexpr char JOURNAL[] = "registro.memory.journal";

using Files = std::map<std::string, std::string>;

// Files in memory, which the test shares.
class MapStorage : public bancada::Storage
{
  public:
    explicit MapStorage(std::shared_ptr<Files> files) : m_files(std::move(files)) {}

    std::optional<std::string> Read(const std::string& path, std::size_t) override
    {
        const auto file = m_files->find(path);
        return file == m_files->end() ? std::nullopt : std::optional(file->second);
    }
    void Replace(const std::string& path, std::string_view content) override
    {
        (*m_files)[path] = content;
    }
    void Create(const std::string& path, std::string_view content, const std::string&) override
    {
        m_appended = path;
        (*m_files)[path] = content;
    }
    void Append(std::string_view text) override { (*m_files)[m_appended] += text; }
    void Remove(const std::string& path) override { m_files->erase(path); }

  private:
    std::shared_ptr<Files> m_files;
    std::string m_appended;
};

// They are taken or refused as a whole; what is taken is settled, and is the same when it is
// written and read again.
inline void HoldMemory(const Files& before)
{
    const auto files = std::make_shared<Files>(before);
    try {
        bancada::MemoriaFile memory(MEMORY, std::make_unique<MapStorage>(files));
        Hold(*files == before);
        const bancada::CommandProgress progress = memory.GetProgress();
        memory.CheckNumber(progress.sequence, "registro.db");
        memory.Settle(progress.sequence);
        const nlohmann::json state = MemoriaToJson(memory.State());
        const bancada::Registro registro(memory.State());
        Hold(MemoriaToJson(registro.GetMemoria()) == state);

        const bancada::MemoriaFile again(MEMORY, std::make_unique<MapStorage>(files));
        Hold(MemoriaToJson(again.State()) == state);
        Hold(ProgressToJson(again.GetProgress()) == ProgressToJson(memory.GetProgress()));
    } catch (const bancada::Unusable&) {
        Hold(*files == before);
    }
}
