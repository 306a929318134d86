#include "bancada/relatorio/Show.h"

#include <filesystem>
#include <fstream>

#include "bancada/Unusable.h"
#include "bancada/log/Losses.h"
#include "bancada/relatorio/Bobina.h"
#include "bancada/relatorio/Json.h"
#include "bancada/relatorio/Leitor.h"
#include "bancada/relatorio/Linhas.h"
#include "bancada/relatorio/Lista.h"
#include "bancada/relatorio/Pagina.h"
#include "bancada/relatorio/Texto.h"

namespace bancada
{
namespace
{

using namespace relatorio;

void imprimeTodos(Leitor& leitor, const std::vector<Documento>& documentos, std::ostream& out)
{
    const Estabelecimento casa = leitor.estabelecimento();
    for (std::size_t i = 0; i < documentos.size(); ++i) {
        out << (i > 0 ? "\n" : "");
        for (const std::string& linha : imprime(documentos[i], casa)) {
            out << linha << '\n';
        }
    }
}

bool mostraCoo(Leitor& leitor, const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    const std::vector<Documento> documentos = leitor.documentos(*options.coo);
    if (documentos.empty()) {
        errors << options.database << ": no document has the COO " << *options.coo << '\n';
        return false;
    }
    if (options.json) {
        escreveDocumentosJson(*options.coo, documentos, out);
    } else {
        imprimeTodos(leitor, documentos, out);
    }
    return true;
}

bool mostraCrz(Leitor& leitor, const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    const std::vector<ReducaoZ> reducoes = leitor.reducoes(*options.crz);
    if (reducoes.empty()) {
        errors << options.database << ": there is no Z reduction " << *options.crz;
        if (const std::int64_t cupons = leitor.cuponsDoDia(*options.crz); cupons > 0) {
            errors << " (" << cupons << " receipts wait for it)";
        }
        errors << '\n';
        return false;
    }
    if (options.json) {
        escreveReducoesJson(*options.crz, reducoes, out);
        return true;
    }
    std::vector<Documento> documentos;
    for (const ReducaoZ& reducao : reducoes) {
        documentos.push_back(documentoDaReducao(reducao));
    }
    imprimeTodos(leitor, documentos, out);
    return true;
}

bool mostraPagina(Leitor& leitor, const ShowOptions& options, const Losses* losses,
                  std::ostream& errors)
{
    if (options.crz && leitor.reducoes(*options.crz).empty() &&
        leitor.cuponsDoDia(*options.crz) == 0) {
        errors << options.database << ": there is no day of the Z reduction " << *options.crz
               << '\n';
        return false;
    }
    std::ofstream arquivo(options.html, std::ios::binary | std::ios::trunc);
    if (arquivo) {
        const std::string nome = std::filesystem::path(options.database).filename().string();
        escrevePagina(leitor, {nome, options.crz, losses}, arquivo);
        arquivo.close();
    }
    if (!arquivo) {
        throw Unusable(options.html + ": cannot be written");
    }
    return true;
}

void ListLosses(const Losses& losses, std::ostream& out)
{
    out << "\nRejected statements: " << losses.rejected.size() << '\n';
    for (const RejectedStatement& one : losses.rejected) {
        out << "  " << formataDataHora(one.time) << "  command " << one.command << ": "
            << utf8(caracteres(one.error)) << "\n    " << utf8(caracteres(one.statement)) << '\n';
    }
    out << "Lost commands: " << losses.lost.size() << '\n';
    for (const LostCommand& one : losses.lost) {
        out << "  " << formataDataHora(one.time) << "  " << utf8(caracteres(one.reason)) << '\n';
    }
}

} // namespace

bool Show(const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    Leitor leitor(options.database);
    if (options.coo) {
        return mostraCoo(leitor, options, out, errors);
    }
    if (options.crz && options.html.empty()) {
        return mostraCrz(leitor, options, out, errors);
    }
    Losses read;
    const Losses* losses = nullptr;
    if (!options.log.empty()) {
        read = ReadLosses(options.log);
        losses = &read;
    }
    if (!options.html.empty()) {
        return mostraPagina(leitor, options, losses, errors);
    }
    if (options.json) {
        escreveListaJson(leitor, losses, out);
        return true;
    }
    escreveLista(leitor, out);
    if (losses) {
        ListLosses(*losses, out);
    }
    return true;
}

} // namespace bancada
