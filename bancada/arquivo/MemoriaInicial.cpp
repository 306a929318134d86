// The memory that the register begins the tape with.
#include "bancada/Messages.h"
#include "bancada/arquivo/Importador.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace bancada::arquivo
{
namespace
{

using Json = nlohmann::ordered_json;

std::string Cents(std::int64_t cents)
{
    std::string digits = std::to_string(cents);
    digits.insert(0, digits.size() < 3 ? 3 - digits.size() : 0, '0');
    return digits.insert(digits.size() - 2, ".");
}

Json Totalizadores(const std::map<std::int64_t, std::set<std::int64_t>>& aliquotas,
                   const char* letter, const std::vector<std::string>& especiais, bool issqn)
{
    Json json = Json::object();
    for (const auto& [numero, percentuais] : aliquotas) {
        json[letter + std::to_string(numero)] = {{"programado", true},
                                                 {"aliquota", Cents(*percentuais.begin())}};
    }
    for (const std::string& codigo : especiais) {
        if ((codigo.size() == 3) == issqn) {
            json[codigo] = {{"programado", true}};
        }
    }
    return json;
}

} // namespace

std::string MemoriaInicial(Importador& importing,
                           const std::map<std::string, std::int64_t>& contadores,
                           std::int64_t antes)
{
    const Programacao& programacao = importing.programacao;
    ArquivoLido& arquivo = importing.arquivo;
    std::int64_t gt = arquivo.Small("E11").empty() ? 0 : arquivo.Small("E11").front().Integer("gt");
    if (arquivo.Small("E11").empty() && !arquivo.Small("E02").empty()) {
        gt = arquivo.Small("E02").front().Integer("gt");
    }
    gt -= importing.registrado;
    if (gt < 0) {
        importing.naoDito.AddField("E11", "gt", Tr("less than the receipts come to"));
        gt = 0;
    }
    Json registro;
    registro["contadores"] = contadores;
    registro["gt"] = Cents(gt);
    registro["gt_ultima_rz"] = Cents(gt - std::min(gt, antes));
    registro["fiscal"]["icms"]["totalizadores"] =
        Totalizadores(programacao.icms, "T", programacao.especiais, false);
    registro["fiscal"]["issqn"]["totalizadores"] =
        Totalizadores(programacao.issqn, "S", programacao.especiais, true);
    if (!arquivo.Small("E07").empty()) {
        const Record* first = &arquivo.Small("E07").front();
        for (const Record& record : arquivo.Small("E07")) {
            first = record.Raw("data") < first->Raw("data") ? &record : first;
        }
        registro["ecf"]["versao_sb"] = first->Text("versao_sb");
    } else if (!arquivo.Small("E01").empty()) {
        registro["ecf"]["versao_sb"] = arquivo.Small("E01").front().Text("versao_sb");
    }
    const Json memory = {{"formato", "ecf-bancada memoria"}, {"versao", 1}, {"registro", registro}};
    return memory.dump(4) + "\n";
}

} // namespace bancada::arquivo
