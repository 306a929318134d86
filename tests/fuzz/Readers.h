// All that reads a logging database, on one that nobody can vouch for.
#pragma once

#include "bancada/Unusable.h"
#include "bancada/arquivo/Exportacao.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/conferencia/LookedAt.h"
#include "bancada/relatorio/Show.h"
#include "tests/fuzz/Hold.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

// A reading answers, or throws Unusable; anything else ends the program.
template <class Reading>
void ReadOrRefuse(const Reading& reading)
{
    try {
        reading();
    } catch (const bancada::Unusable&) {
        // The file is named and refused, as it should be.
    }
}

// Shows what is asked for, which is text, JSON or a page.
inline void ShowOf(const bancada::ShowOptions& options)
{
    ReadOrRefuse([&] {
        std::ostringstream out;
        std::ostringstream errors;
        const bool shown = bancada::Show(options, out, errors);
        Hold(shown || !errors.str().empty());
        Hold(!shown || !options.json || nlohmann::json::accept(out.str()));
    });
}

constexpr int READERS = 8;

// One of them, `which` from 0; `number` is the document or reduction that is asked for.
inline void ReadDatabase(const std::string& path, int which, std::int64_t number)
{
    using namespace bancada;
    ShowOptions options;
    options.databases = {path};
    switch (which) {
    case 0:
        ShowOf(options);
        break;
    case 1:
        options.json = true;
        ShowOf(options);
        break;
    case 2:
    case 3:
        options.json = which == 3;
        options.coo = number;
        ShowOf(options);
        break;
    case 4:
        options.crz = number % 2;
        ShowOf(options);
        break;
    case 5:
        options.html = true;
        ShowOf(options);
        break;
    case 6:
        ReadOrRefuse([&] {
            const leitura::DatabaseReading database(path);
            static_cast<void>(conferencia::ReadLookedAt(database));
            std::int64_t told = 0;
            const conferencia::CheckSummary summary = conferencia::CheckDatabase(
                database, nullptr, [&](const conferencia::Finding&) { ++told; });
            Hold(told == summary.faults + summary.notes);
        });
        break;
    default:
        ReadOrRefuse([&] {
            arquivo::ExportOptions exported;
            exported.database = path;
            exported.library = "1.0.0";
            std::ostringstream out;
            std::ostringstream notes;
            arquivo::Export(exported, out, notes);
        });
    }
}
