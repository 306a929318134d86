#include "bancada/conferencia/ReducaoParts.h"

namespace bancada::conferencia
{

std::map<std::int64_t, ReducaoParts> ReadReducaoParts(const leitura::DatabaseReading& database)
{
    std::map<std::int64_t, ReducaoParts> parts;
    leitura::Rows<leitura::TotalizadorReducaoRow> totalizadores(
        database, leitura::TotalizadorReducaoTable(), "ORDER BY rowid");
    leitura::TotalizadorReducaoRow totalizador;
    while (totalizadores.Next(totalizador)) {
        parts[totalizador.crz.Value()].totalizadores.push_back(totalizador);
    }
    leitura::Rows<leitura::MeioPagamentoReducaoRow> meios(
        database, leitura::MeioPagamentoReducaoTable(), "ORDER BY cont_crz, indice_meio_pagamento");
    leitura::MeioPagamentoReducaoRow meio;
    while (meios.Next(meio)) {
        ReducaoParts& part = parts[meio.crz.Value()];
        if (meio.descricaoMeioPagamento.Value() != "TROCO") {
            part.meios.push_back(meio);
            continue;
        }
        if (part.troco) {
            part.meios.push_back(*part.troco);
        }
        part.troco = meio;
    }
    return parts;
}

} // namespace bancada::conferencia
