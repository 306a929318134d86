// Rows whose document is missing, and keys that come twice.
#include "bancada/conferencia/Contexto.h"

namespace bancada
{

namespace
{

// A query of faulty keys: a number, and how many rows stand under it.
struct Ligacao {
    const char* tipo;
    const char* rotulo; // of the number
    const char* linhas; // what stands under it
    const char* sql;
};

const Ligacao LIGACOES[] = {
    {"item-sem-cupom", "COO ", "items without their receipt",
     "SELECT cont_coo, count(*) FROM item_cupom_fiscal i WHERE NOT EXISTS"
     " (SELECT 1 FROM cupom_fiscal c WHERE c.cont_coo = i.cont_coo) GROUP BY cont_coo"},
    {"item-nf-sem-cupom", "COO ", "items without their receipt",
     "SELECT cont_coo, count(*) FROM item_cupom_nf i WHERE NOT EXISTS"
     " (SELECT 1 FROM cupom_nf c WHERE c.cont_coo = i.cont_coo) GROUP BY cont_coo"},
    {"pagamento-sem-cupom", "COO ", "payments without their receipt",
     "SELECT cont_coo, count(*) FROM pagamento_cupom p WHERE NOT EXISTS"
     " (SELECT 1 FROM cupom_fiscal c WHERE c.cont_coo = p.cont_coo) AND NOT EXISTS"
     " (SELECT 1 FROM cupom_nf n WHERE n.cont_coo = p.cont_coo) GROUP BY cont_coo"},
    {"nf-sem-documento", "COO ", "non-fiscal receipts without their document row",
     "SELECT cont_coo, count(*) FROM cupom_nf n WHERE NOT EXISTS (SELECT 1 FROM outros_documentos o"
     " WHERE o.cont_coo = n.cont_coo AND o.id_tipo_documento = 'CN') GROUP BY cont_coo"},
    {"documento-sem-nf", "COO ", "document rows without their non-fiscal receipt",
     "SELECT cont_coo, count(*) FROM outros_documentos o WHERE id_tipo_documento = 'CN' AND NOT"
     " EXISTS (SELECT 1 FROM cupom_nf n WHERE n.cont_coo = o.cont_coo) GROUP BY cont_coo"},
    {"documento-sem-reducao", "COO ", "document rows without their Z reduction",
     "SELECT cont_coo, count(*) FROM outros_documentos WHERE id_tipo_documento = 'RZ'"
     " AND cont_coo NOT IN (SELECT cont_coo FROM reducao_z) GROUP BY cont_coo"},
    {"reducao-sem-documento", "COO ", "Z reductions without their document row",
     "SELECT cont_coo, count(*) FROM reducao_z z WHERE NOT EXISTS (SELECT 1 FROM outros_documentos o"
     " WHERE o.cont_coo = z.cont_coo AND o.id_tipo_documento = 'RZ') GROUP BY cont_coo"},
    // A number that comes round again names several receipts without any fault.
    {"coo-reutilizado", "COO ", "receipts share the number",
     "SELECT cont_coo, count(*) FROM cupom_fiscal GROUP BY cont_coo HAVING count(*) > 1"},
    {"coo-reutilizado", "COO ", "non-fiscal receipts share the number",
     "SELECT cont_coo, count(*) FROM cupom_nf n GROUP BY cont_coo HAVING count(*) > 1"},
    {"coo-reutilizado", "COO ", "fiscal receipts share the number with a non-fiscal one",
     "SELECT cont_coo, count(*) FROM cupom_fiscal c WHERE EXISTS (SELECT 1 FROM cupom_nf n"
     " WHERE n.cont_coo = c.cont_coo) GROUP BY cont_coo"},
    {"chave-repetida", "item_cupom_fiscal COO ", "rows of the same item",
     "SELECT cont_coo, count(*) FROM item_cupom_fiscal i GROUP BY cont_coo, seq_item"
     " HAVING count(*) > 1 AND (SELECT count(*) FROM cupom_fiscal c WHERE c.cont_coo = i.cont_coo)"
     " <= 1"},
    {"chave-repetida", "item_cupom_nf COO ", "rows of the same item",
     "SELECT cont_coo, count(*) FROM item_cupom_nf i GROUP BY cont_coo, seq_item"
     " HAVING count(*) > 1 AND (SELECT count(*) FROM cupom_nf c WHERE c.cont_coo = i.cont_coo)"
     " <= 1"},
    {"chave-repetida", "cupom_nf COO ", "rows of one document",
     "SELECT cont_coo, count(*) FROM cupom_nf n GROUP BY cont_coo HAVING count(*) > max(1,"
     " (SELECT count(*) FROM outros_documentos o WHERE o.cont_coo = n.cont_coo"
     " AND o.id_tipo_documento = 'CN'))"},
    // Two non-fiscal totalizers may bear one name.
    {"chave-repetida", "totalizador_reducao CRZ ", "rows of the same totalizer",
     "SELECT cont_crz, count(*) FROM totalizador_reducao WHERE id_fiscal = 'S'"
     " GROUP BY cont_crz, totalizador HAVING count(*) > 1"},
    {"chave-repetida", "meio_pagamento_reducao CRZ ", "rows of the same means",
     "SELECT cont_crz, count(*) FROM meio_pagamento_reducao"
     " GROUP BY cont_crz, indice_meio_pagamento HAVING count(*) > 1"},
    {"chave-repetida", "intervencao CRO ", "rows of the same intervention",
     "SELECT cont_cro, count(*) FROM intervencao GROUP BY cont_cro HAVING count(*) > 1"},
    {"chave-repetida", "fita_detalhe CFD ", "rows of the same reprint",
     "SELECT cont_cfd, count(*) FROM fita_detalhe GROUP BY cont_cfd HAVING count(*) > 1"},
    {"chave-repetida", "meio_pagamento ", "rows of the same means",
     "SELECT num_indice, count(*) FROM meio_pagamento GROUP BY num_indice HAVING count(*) > 1"},
    {"chave-repetida", "totalizador_nao_fiscal ", "rows of the same totalizer",
     "SELECT num_indice, count(*) FROM totalizador_nao_fiscal GROUP BY num_indice"
     " HAVING count(*) > 1"},
    {"chave-repetida", "dados_usuario ", "rows of the owner",
     "SELECT seq_usuario, count(*) FROM dados_usuario GROUP BY seq_usuario HAVING count(*) > 1"},
    {"chave-repetida", "versao_sb ", "rows of the version",
     "SELECT num_ecf, count(*) FROM versao_sb GROUP BY num_ecf HAVING count(*) > 1"},
};

} // namespace

void ConfereLigacoes(Contexto& contexto)
{
    for (const Ligacao& ligacao : LIGACOES) {
        Consulta consulta(contexto.Db(), ligacao.sql);
        const std::string rotulo = ligacao.rotulo;
        while (consulta.Avanca()) {
            const std::int64_t numero = consulta.Inteiro(0);
            const bool coo = rotulo.find("COO ") != std::string::npos;
            const bool crz = rotulo.find("CRZ ") != std::string::npos;
            contexto.Relata(ligacao.tipo, rotulo + std::to_string(numero),
                            consulta.Texto(1) + " " + ligacao.linhas, coo ? numero : 0,
                            crz ? numero : 0);
        }
    }
}

} // namespace bancada
