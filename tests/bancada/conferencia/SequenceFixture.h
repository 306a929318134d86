// Documents with their counters alone, and what is found of the counters.
#pragma once

#include "bancada/conferencia/CheckContext.h"
#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <optional>
#include <string>
#include <vector>

namespace bancada::conferencia_test
{

class Sequence : public CheckedDatabase
{
  protected:
    // A fiscal receipt that was closed; `second` of the day tells the order of issue.
    void AddFiscal(int coo, int ccf, int second, bool cancelado = false) const
    {
        Execute("INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao,"
                " assinatura_documento, id_cancelado) VALUES (" +
                std::to_string(coo) + ", " + std::to_string(ccf) + ", 1, '" + Hora(second) +
                "', 'c2ln', '" + (cancelado ? "S" : "N") + "')");
    }
    void AddOutro(int coo, int gnf, const std::string& tipo, int second) const
    {
        Execute("INSERT INTO outros_documentos (cont_coo, cont_gnf, cont_crz,"
                " data_hora_inicio_emissao, id_tipo_documento) VALUES (" +
                std::to_string(coo) + ", " + std::to_string(gnf) + ", 1, '" + Hora(second) +
                "', '" + tipo + "')");
    }
    void AddReimpressao(int second) const
    {
        Execute("INSERT INTO fita_detalhe (data_hora_emissao) VALUES ('" + Hora(second) + "')");
    }
    void AddPagamento(int coo, int gnf) const
    {
        Execute("INSERT INTO pagamento_cupom (cont_coo, cont_gnf) VALUES (" + std::to_string(coo) +
                ", " + std::to_string(gnf) + ")");
    }

    // Adds a rejected statement to the firmware log.
    void Lose(const std::string& statement)
    {
        losses.rejected.push_back({1, Hora(0), 1, "syntax error", statement});
    }

    // What is found of the counters, each as "kind: key: text", " (explained)" behind it.
    std::vector<std::string> Findings()
    {
        std::vector<std::string> lines;
        const conferencia::FindingSink sink = [&](const conferencia::Finding& finding) {
            lines.push_back(std::string(conferencia::InfoOf(finding.kind).name) + ": " +
                            finding.key + ": " + finding.text +
                            (finding.explained ? " (explained)" : ""));
        };
        const leitura::DatabaseReading database(Path());
        const conferencia::LossIndex index(losses);
        conferencia::CheckContext context(database, losses.rejected.empty() ? nullptr : &index,
                                          sink);
        // The reversals of payments are known from the payments.
        for (std::int64_t coo = 1; coo < 10; ++coo) {
            context.ReadPagamentos(coo);
        }
        CheckSequencias(context);
        return lines;
    }

    Losses losses;

  private:
    static std::string Hora(int second)
    {
        return "2024-03-01 08:00:" + std::string(second < 10 ? "0" : "") + std::to_string(second);
    }
};

} // namespace bancada::conferencia_test
