#include "bancada/relatorio/Show.h"

#include <filesystem>
#include <fstream>

#include "bancada/Unusable.h"
#include "bancada/log/FirmwareLogReader.h"
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

bool mostraPagina(Leitor& leitor, const ShowOptions& options,
                  const std::vector<RejectedStatement>* perdidos, std::ostream& errors)
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
        escrevePagina(leitor, {nome, options.crz, perdidos}, arquivo);
        arquivo.close();
    }
    if (!arquivo) {
        throw Unusable(options.html + ": cannot be written");
    }
    return true;
}

void listaPerdidos(const std::vector<RejectedStatement>& perdidos, std::ostream& out)
{
    out << "\nLost statements: " << perdidos.size() << '\n';
    for (const RejectedStatement& p : perdidos) {
        out << "  " << formataDataHora(p.time) << "  command " << p.command << ": "
            << utf8(caracteres(p.error)) << "\n    " << utf8(caracteres(p.statement)) << '\n';
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
    std::vector<RejectedStatement> lidos;
    const std::vector<RejectedStatement>* perdidos = nullptr;
    if (!options.log.empty()) {
        lidos = ReadRejectedStatements(options.log);
        perdidos = &lidos;
    }
    if (!options.html.empty()) {
        return mostraPagina(leitor, options, perdidos, errors);
    }
    if (options.json) {
        escreveListaJson(leitor, perdidos, out);
        return true;
    }
    escreveLista(leitor, out);
    if (perdidos) {
        listaPerdidos(*perdidos, out);
    }
    return true;
}

} // namespace bancada
