#include "bancada/conferencia/LookedAt.h"

#include "bancada/Messages.h"
#include "bancada/Sha256.h"
#include "bancada/Unusable.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Query.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

namespace bancada::conferencia
{
namespace
{

using leitura::Query;

std::string DigestOf(const std::string& path, std::int64_t& size)
{
    std::ifstream file(path, std::ios::binary);
    Sha256 digest;
    std::vector<char> piece(1 << 16);
    size = 0;
    while (file.read(piece.data(), static_cast<std::streamsize>(piece.size())), file.gcount() > 0) {
        digest.Add({piece.data(), static_cast<std::size_t>(file.gcount())});
        size += file.gcount();
    }
    return size == 0 ? std::string() : digest.Hex();
}

// The first or the last row of the documents' tables.
void ReadDocument(const leitura::DatabaseReading& database, const char* which, bool last,
                  leitura::Integer& coo, std::string& hora)
{
    Query query(database, std::string("SELECT cont_coo AS coo, data_hora_emissao AS hora FROM"
                                      " cupom_fiscal WHERE rowid = (SELECT ") +
                              which +
                              "(rowid) FROM cupom_fiscal) UNION ALL SELECT cont_coo,"
                              " data_hora_inicio_emissao FROM outros_documentos WHERE rowid ="
                              " (SELECT " +
                              which + "(rowid) FROM outros_documentos)");
    while (query.Next()) {
        const leitura::Integer number = query.ReadInteger("coo");
        if (!number.IsKnown()) {
            continue;
        }
        const bool further = coo.IsKnown() && leitura::ComesBefore(coo.Value(), number.Value());
        if (!coo.IsKnown() || further == last) {
            coo = number;
            hora = query.ReadText("hora").Shown();
        }
    }
}

std::string OneText(const leitura::DatabaseReading& database, const char* sql)
{
    Query query(database, sql);
    return query.Next() ? query.ReadText("value").Shown() : std::string();
}

} // namespace

LookedAt ReadLookedAt(const leitura::DatabaseReading& database)
{
    leitura::RequireTables(database);
    LookedAt lookedAt;
    lookedAt.file = database.Path();
    lookedAt.sha256 = DigestOf(database.Path(), lookedAt.size);
    if (database.HowRead() != leitura::Manner::FILE_ALONE) {
        lookedAt.logSha256 = DigestOf(database.Path() + "-wal", lookedAt.logSize);
    }
    lookedAt.numSerie =
        OneText(database, "SELECT num_serie AS value FROM dados_ecf ORDER BY rowid LIMIT 1");
    lookedAt.contribuinte = OneText(
        database, "SELECT rtrim(razao_social) || coalesce(', CNPJ ' || cnpj, '') AS value FROM"
                  " dados_usuario ORDER BY rowid LIMIT 1");
    ReadDocument(database, "min", false, lookedAt.primeiroCoo, lookedAt.primeiraHora);
    ReadDocument(database, "max", true, lookedAt.ultimoCoo, lookedAt.ultimaHora);
    leitura::Rows<leitura::ReducaoZRow> reducoes(
        database, leitura::ReducaoZTable(),
        "WHERE rowid IN (SELECT min(rowid) FROM reducao_z UNION SELECT max(rowid) FROM reducao_z)"
        " ORDER BY rowid");
    leitura::ReducaoZRow z;
    bool first = true;
    while (reducoes.Next(z)) {
        lookedAt.primeiroCrz = first ? z.crz : lookedAt.primeiroCrz;
        lookedAt.ultimoCrz = z.crz;
        lookedAt.gt = z.valorGt;
        first = false;
    }
    return lookedAt;
}

std::string RangeOf(const LookedAt& lookedAt)
{
    return Tr("%1 of %2 to %3 of %4, %5 to %6",
              {Coo(lookedAt.primeiroCoo), lookedAt.primeiraHora, Coo(lookedAt.ultimoCoo),
               lookedAt.ultimaHora, Crz(lookedAt.primeiroCrz), Crz(lookedAt.ultimoCrz)});
}

std::optional<Anchor> ParseAnchor(const std::string& text)
{
    Anchor anchor;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ',');) {
        const std::size_t equals = part.find('=');
        const std::string name = part.substr(0, equals);
        const std::string value = equals == std::string::npos ? "" : part.substr(equals + 1);
        const std::size_t point = name == "GT" ? value.find('.') : std::string::npos;
        std::string digits = value;
        if (point != std::string::npos) {
            digits.erase(point, 1);
        }
        const bool formed =
            !digits.empty() && digits.size() <= 17 &&
            digits.find_first_not_of("0123456789") == std::string::npos &&
            (point == std::string::npos || (point > 0 && value.size() - point - 1 == 2));
        if (!formed) {
            return std::nullopt;
        }
        const std::int64_t number = std::strtoll(digits.c_str(), nullptr, 10);
        if (name == "COO" && !anchor.coo) {
            anchor.coo = number;
        } else if (name == "CRZ" && !anchor.crz) {
            anchor.crz = number;
        } else if (name == "GT" && !anchor.gt) {
            anchor.gt = leitura::Amount(point == std::string::npos ? number * 100 : number, 2);
        } else {
            return std::nullopt;
        }
    }
    const bool any = anchor.coo || anchor.crz || anchor.gt;
    return any ? std::optional(anchor) : std::nullopt;
}

std::int64_t CheckAnchor(const leitura::DatabaseReading& database, const LookedAt& lookedAt,
                         const Anchor& anchor, const FindingSink& sink)
{
    std::int64_t findings = 0;
    const auto report = [&](const std::string& key, const Subject& subject,
                            const std::string& column, const std::string& expected,
                            const std::string& found) {
        ++findings;
        sink({FindingKind::ANCORA,
              subject,
              key,
              Tr("known to be %1, the rows end at %2", {expected, found}),
              false,
              {column == "cont_coo" ? "" : "reducao_z", 0, column, expected, found}});
    };
    if (anchor.coo &&
        (lookedAt.IsEmpty() || leitura::ComesBefore(lookedAt.ultimoCoo.Value(), *anchor.coo))) {
        report("COO " + std::to_string(*anchor.coo), DocumentOf(*anchor.coo), "cont_coo",
               std::to_string(*anchor.coo), Number(lookedAt.ultimoCoo));
    }
    const leitura::Integer crz = anchor.crz ? leitura::Integer(*anchor.crz) : lookedAt.ultimoCrz;
    leitura::Rows<leitura::ReducaoZRow> rows(database, leitura::ReducaoZTable(),
                                             "WHERE cont_crz = ?1 ORDER BY rowid DESC LIMIT 1");
    leitura::ReducaoZRow z;
    const bool found = rows.With(crz.Value()).Next(z);
    if (anchor.crz && !found) {
        report(Crz(crz), JornadaOf(crz.Value()), "cont_crz", Number(crz),
               Number(lookedAt.ultimoCrz));
    }
    if (anchor.gt && (!found || !IsSame(z.valorGt, *anchor.gt))) {
        report(Crz(crz) + " GT", JornadaOf(crz.Value()), "valor_gt", Money(*anchor.gt),
               found ? Money(z.valorGt) : Tr("none"));
    }
    return findings;
}

} // namespace bancada::conferencia
