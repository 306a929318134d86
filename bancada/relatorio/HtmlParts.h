// What the page of a database and the pages of a folder are made of. Every text of the database is
// escaped.
#pragma once

#include "bancada/relatorio/Documento.h"
#include "bancada/relatorio/HtmlPage.h"
#include "bancada/relatorio/JornadaWalk.h"
#include "bancada/relatorio/Totais.h"
#include "bancada/relatorio/Vendas.h"
#include "bancada/relatorio/Verdict.h"

#include <cstddef>
#include <limits>
#include <ostream>
#include <string>

namespace bancada::relatorio
{

// As many bytes of a list as there are.
constexpr std::size_t ALL_OF_IT = std::numeric_limits<std::size_t>::max();

// From the doctype to the end of the head, with the policy that runs no script but the page's own.
void WriteHead(const std::string& name, std::ostream& out);

// The name by which the owner is known; that of the first database where none is programmed.
std::string NameOf(const std::vector<PageSource>& sources);

// What the page calls the databases, one after the other.
std::string FilesOf(const std::vector<PageSource>& sources);

// The form that finds a document by its number; `buttons` stand behind its own.
void WriteSearch(const std::string& buttons, std::ostream& out);

// A button that the page's script knows by `id`.
std::string Button(const char* id, const char* text);

// A figure with its name below.
std::string NumberBox(const std::string& value, const std::string& name);

// How many findings; empty where there are none.
std::string FaultsMark(std::int64_t faults);

// What the figures are of, and what a reconciliation says of them. Of the findings it lists texts
// of at most `most` bytes together, and counts the others.
void WriteVerdicts(const std::vector<PageSource>& sources, const HtmlPage& page, std::size_t most,
                   std::ostream& out);

// How many findings all of them have; empty where one was not checked to its end.
std::string FaultsBox(const std::vector<PageSource>& sources);

// The links to the sections of a page, `days` being those to its days.
void WriteSections(const std::string& days, std::ostream& out);
// A link to a section of the page.
std::string SectionLink(const char* id, const char* text);

// What the databases sold: of the documents that their reports' filter admits, of the jornada `crz`
// alone when that is given. Of the totals the hours, the means and the change.
Totais ReadVendas(const std::vector<PageSource>& sources, std::optional<std::int64_t> crz);

void WriteHoras(const VendasByHora& vendas, std::ostream& out);
void WriteMeios(const VendasByMeio& vendas, const Amount& troco, std::ostream& out);

// The totals by day and by tax code.
void WriteTotaisByDia(const Totais& totais, std::ostream& out);
void WriteTotaisByAliquota(const Totais& totais, std::ostream& out);

// What the documents on the page were chosen by; nothing where all are there.
void WriteFiltro(const std::vector<PageSource>& sources, std::ostream& out);

// Likewise at most `most` bytes of statements and reasons; null where no log was given.
void WriteLosses(const Losses* losses, std::size_t most, std::ostream& out);

// What is seen of a jornada that is rolled up.
void WriteJornadaSummary(const Jornada& jornada, const Verdict* verdict, std::ostream& out);

// A complete document, rolled up. `verdict` may be null.
void WriteDocumento(const Documento& documento, const Estabelecimento& estabelecimento,
                    const Verdict* verdict, std::ostream& out);

} // namespace bancada::relatorio
