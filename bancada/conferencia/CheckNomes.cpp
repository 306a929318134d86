// The names under which Z reductions list payment means and non-fiscal totalizers, against one
// another and against the programming. A means can be renamed, so that a name is at fault only
// where the Z before it, the Z behind it or the programming, all of one mind, say another.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/CheckReducao.h"
#include "bancada/conferencia/ReducaoParts.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace bancada::conferencia
{
namespace
{

using leitura::ReducaoZRow;

// A Z and the names that it lists.
struct Names {
    ReducaoZRow z;
    std::map<std::int64_t, std::string> meios;
    std::multiset<std::string> naoFiscais;
    std::map<std::string, leitura::Amount> totais;
};

struct Programacao {
    std::map<std::int64_t, std::string> meios;
    std::map<std::int64_t, std::string> naoFiscais;
};

void Report(CheckContext& context, const ReducaoZRow& z, const char* table, const char* column,
            const std::string& expected, const std::string& found, const std::string& text)
{
    context.findings.Report(FindingKind::Z_NOME, Crz(z.crz), text, SubjectOf(z),
                            {table, 0, column, expected, found});
}

Programacao ReadProgramacao(const leitura::DatabaseReading& database)
{
    Programacao programacao;
    leitura::Rows<leitura::MeioPagamentoRow> meios(database, leitura::MeioPagamentoTable(),
                                                   "ORDER BY rowid");
    leitura::MeioPagamentoRow meio;
    while (meios.Next(meio)) {
        programacao.meios[meio.numIndice.Value()] = meio.descricao.Value();
    }
    leitura::Rows<leitura::TotalizadorNaoFiscalRow> totalizadores(
        database, leitura::TotalizadorNaoFiscalTable(), "ORDER BY rowid");
    leitura::TotalizadorNaoFiscalRow totalizador;
    while (totalizadores.Next(totalizador)) {
        programacao.naoFiscais[totalizador.numIndice.Value()] = totalizador.descricao.Value();
    }
    return programacao;
}

std::vector<Names> ReadNames(CheckContext& context)
{
    std::map<std::int64_t, ReducaoParts> parts = ReadReducaoParts(context.Database());
    std::vector<Names> all;
    leitura::Rows<ReducaoZRow> rows(context.Database(), leitura::ReducaoZTable(), "ORDER BY rowid");
    Names names;
    while (rows.Next(names.z)) {
        const ReducaoParts& part = parts[names.z.crz.Value()];
        names.meios.clear();
        names.naoFiscais.clear();
        names.totais.clear();
        for (const leitura::MeioPagamentoReducaoRow& meio : part.meios) {
            names.meios[meio.indiceMeioPagamento.Value()] = meio.descricaoMeioPagamento.Value();
        }
        for (const leitura::TotalizadorReducaoRow& row : part.totalizadores) {
            if (!row.fiscal.IsSet()) {
                names.naoFiscais.insert(row.totalizador.Value());
                leitura::Amount& total = names.totais[row.totalizador.Value()];
                total = total + row.valorBaseCalculo;
            }
        }
        all.push_back(names);
    }
    return all;
}

void CheckMeios(CheckContext& context, const std::vector<Names>& all,
                const Programacao& programacao)
{
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::map<std::int64_t, std::string>& next =
            i + 1 < all.size() ? all[i + 1].meios : programacao.meios;
        for (const auto& [indice, nome] : all[i].meios) {
            const auto behind = next.find(indice);
            const bool hasBefore = i > 0 && all[i - 1].meios.count(indice) != 0;
            // Means are never taken away.
            if (behind == next.end() && (i + 1 < all.size() || context.BeginsAtFactory())) {
                Report(context, all[i].z, "meio_pagamento_reducao", "indice_meio_pagamento", "",
                       std::to_string(indice),
                       Tr(i + 1 < all.size()
                              ? TrLater("means %1 %2, which the next Z does not have")
                              : TrLater("means %1 %2, which is not programmed"),
                          {std::to_string(indice), nome}));
            } else if (behind != next.end() && hasBefore && behind->second != nome &&
                       all[i - 1].meios.at(indice) == behind->second) {
                Report(context, all[i].z, "meio_pagamento_reducao", "descricao_meio_pagamento",
                       behind->second, nome,
                       Tr("means %1 %2, before and behind %3",
                          {std::to_string(indice), nome, behind->second}));
            }
        }
    }
}

// Non-fiscal totalizers stand under their names alone.
void CheckNaoFiscais(CheckContext& context, const std::vector<Names>& all,
                     const Programacao& programacao)
{
    std::multiset<std::string> programmed;
    for (const auto& [indice, nome] : programacao.naoFiscais) {
        programmed.insert(nome);
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const bool isLast = i + 1 == all.size();
        for (const std::string& nome : all[i].naoFiscais) {
            const bool before = i > 0 && all[i - 1].naoFiscais.count(nome) != 0;
            const bool behind =
                programmed.count(nome) != 0 || (!isLast && all[i + 1].naoFiscais.count(nome) != 0);
            if (i > 0 && !before && !behind) {
                Report(
                    context, all[i].z, "totalizador_reducao", "totalizador", "", nome,
                    Tr("non-fiscal totalizer %1, which neither the Z before nor what follows knows",
                       {nome}));
            }
        }
        if (i > 0 && all[i].naoFiscais.size() < all[i - 1].naoFiscais.size()) {
            Report(context, all[i].z, "totalizador_reducao", "totalizador",
                   std::to_string(all[i - 1].naoFiscais.size()),
                   std::to_string(all[i].naoFiscais.size()),
                   Tr("%1 non-fiscal totalizers, the Z before has %2",
                      {std::to_string(all[i].naoFiscais.size()),
                       std::to_string(all[i - 1].naoFiscais.size())}));
        }
    }
}

std::map<std::int64_t, std::string> WithTill(const Programacao& programacao)
{
    std::map<std::int64_t, std::string> names = {{1, "FUNDO DE TROCO"}, {2, "SANGRIA"}};
    for (const auto& [indice, nome] : programacao.naoFiscais) {
        names[indice] = nome;
    }
    return names;
}

// Totalizers are never taken away: what the last Z lists and what receipts booked on is programmed,
// in a database that holds the whole programming.
void CheckProgramacao(CheckContext& context, const std::vector<Names>& all,
                      const Programacao& programacao)
{
    if (!context.BeginsAtFactory() || context.MayHaveLost("totalizador_nao_fiscal")) {
        return;
    }
    const auto report = [&context](const std::string& column, const std::string& expected,
                                   const std::string& found, const std::string& text) {
        context.findings.Report(FindingKind::PROGRAMACAO, "totalizador_nao_fiscal", text, {},
                                {"totalizador_nao_fiscal", 0, column, expected, found});
    };
    const std::map<std::int64_t, std::string> nomes = WithTill(programacao);
    if (!all.empty() && all.back().naoFiscais.size() > nomes.size()) {
        const std::string listed = std::to_string(all.back().naoFiscais.size());
        const std::string programmed = std::to_string(nomes.size());
        report("", listed, programmed,
               Tr("%1 totalizers with the till's, the last Z has %2", {programmed, listed}));
    }
    std::set<std::int64_t> booked;
    for (const auto& [crz, jornada] : context.jornadas) {
        for (const auto& [indice, range] : jornada.porTotalizadorNf) {
            booked.insert(indice);
        }
    }
    for (const std::int64_t indice : booked) {
        if (nomes.count(indice) == 0) {
            report("num_indice", std::to_string(indice), Tr("none"),
                   Tr("totalizer %1 is not programmed, and receipts booked on it",
                      {std::to_string(indice)}));
        }
    }
}

// What the receipts booked on each totalizer against the Z, by name, where every name of the Z is
// that of one programmed now.
void CheckTotais(CheckContext& context, const Names& names, const Programacao& programacao)
{
    const Jornada& jornada = context.jornadas[names.z.crz.Value()];
    const std::map<std::int64_t, std::string> nomes = WithTill(programacao);
    std::multiset<std::string> known;
    for (const auto& [indice, nome] : nomes) {
        known.insert(nome);
    }
    const bool same =
        std::includes(known.begin(), known.end(), names.naoFiscais.begin(), names.naoFiscais.end());
    if (!same || !jornada.itensIncertos.empty()) {
        return;
    }
    std::map<std::string, AmountRange> due;
    for (const std::string& nome : names.naoFiscais) {
        due[nome];
    }
    for (const auto& [indice, range] : jornada.porTotalizadorNf) {
        const auto nome = nomes.find(indice);
        due[nome == nomes.end() ? Tr("number %1", {std::to_string(indice)}) : nome->second].Add(
            range);
    }
    for (const auto& [nome, range] : due) {
        const auto found = names.totais.find(nome);
        const leitura::Amount total =
            found == names.totais.end() ? leitura::Amount() : found->second;
        if (range.IsKnown() && !range.Contains(total)) {
            context.findings.Report(
                FindingKind::Z_NAO_FISCAIS, Crz(names.z.crz) + " " + nome,
                Tr("%1, valid non-fiscal items %2", {Money(total), range.Text()}),
                SubjectOf(names.z),
                {"totalizador_reducao", 0, "valor_base_calculo", range.Text(), Money(total)});
        }
    }
}

} // namespace

void CheckNomes(CheckContext& context)
{
    const Programacao programacao = ReadProgramacao(context.Database());
    const std::vector<Names> all = ReadNames(context);
    CheckMeios(context, all, programacao);
    CheckNaoFiscais(context, all, programacao);
    CheckProgramacao(context, all, programacao);
    for (const Names& names : all) {
        context.CheckWithLosses(names.z.crz.Value(),
                                [&] { CheckTotais(context, names, programacao); });
    }
}

} // namespace bancada::conferencia
