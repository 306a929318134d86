// Rows whose document is missing, and keys that come twice.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Query.h"

#include <optional>
#include <set>

namespace bancada::conferencia
{
namespace
{

// A column by which rows are tied to a document or a day, or told apart.
struct Key {
    const char* column;
    const char* label;
    Subject (*subject)(std::int64_t number);
};

Subject NoSubject(std::int64_t)
{
    return {};
}

constexpr Key COO = {"cont_coo", "COO ", DocumentOf};
constexpr Key CRZ = {"cont_crz", "CRZ ", JornadaOf};
constexpr Key CRO = {"cont_cro", "CRO ", NoSubject};
constexpr Key CFD = {"cont_cfd", "CFD ", NoSubject};
constexpr Key INDICE = {"num_indice", "", NoSubject};
constexpr Key USUARIO = {"seq_usuario", "", NoSubject};
constexpr Key ECF = {"num_ecf", "", NoSubject};

// The items of receipts, most of a database's rows: they are walked through once, in the order of
// their keys, before the engine groups and counts them.
struct Itens {
    const char* table;
    const char* receipts;
};

constexpr Itens ITENS_FISCAIS = {"item_cupom_fiscal", "cupom_fiscal"};
constexpr Itens ITENS_NF = {"item_cupom_nf", "cupom_nf"};

// Faulty keys, and how many rows stand under each. What is asked of a key stands behind HAVING,
// where the engine asks it once a key and not once a row.
struct Link {
    FindingKind kind;
    Key key;
    const char* table;            // said before the key where the kind does not say it
    const char* what;             // stands under the key, %1 of them, for Tr
    const char* rows;             // behind SELECT and its columns
    const Itens* itens = nullptr; // asked for where one of them is suspect alone
};

const Link LINKS[] = {
    {FindingKind::ITEM_SEM_CUPOM, COO, "", TrLater("%1 items without their receipt"),
     "FROM item_cupom_fiscal i GROUP BY cont_coo HAVING NOT EXISTS (SELECT 1 FROM cupom_fiscal c"
     " WHERE c.cont_coo = i.cont_coo)",
     &ITENS_FISCAIS},
    {FindingKind::ITEM_NF_SEM_CUPOM, COO, "", TrLater("%1 items without their receipt"),
     "FROM item_cupom_nf i GROUP BY cont_coo HAVING NOT EXISTS (SELECT 1 FROM cupom_nf c WHERE"
     " c.cont_coo = i.cont_coo)",
     &ITENS_NF},
    {FindingKind::PAGAMENTO_SEM_CUPOM, COO, "", TrLater("%1 payments without their receipt"),
     "FROM pagamento_cupom p GROUP BY cont_coo HAVING NOT EXISTS (SELECT 1 FROM cupom_fiscal c"
     " WHERE c.cont_coo = p.cont_coo) AND NOT EXISTS (SELECT 1 FROM cupom_nf n WHERE n.cont_coo ="
     " p.cont_coo)"},
    {FindingKind::NF_SEM_DOCUMENTO, COO, "",
     TrLater("%1 non-fiscal receipts without their document row"),
     "FROM cupom_nf n WHERE NOT EXISTS (SELECT 1 FROM outros_documentos o WHERE o.cont_coo ="
     " n.cont_coo AND o.id_tipo_documento = 'CN') GROUP BY cont_coo"},
    {FindingKind::DOCUMENTO_SEM_NF, COO, "",
     TrLater("%1 document rows without their non-fiscal receipt"),
     "FROM outros_documentos o WHERE id_tipo_documento = 'CN' AND NOT EXISTS (SELECT 1 FROM"
     " cupom_nf n WHERE n.cont_coo = o.cont_coo) GROUP BY cont_coo"},
    {FindingKind::DOCUMENTO_SEM_REDUCAO, COO, "",
     TrLater("%1 document rows without their Z reduction"),
     "FROM outros_documentos WHERE id_tipo_documento = 'RZ' AND cont_coo NOT IN (SELECT"
     " cont_coo FROM reducao_z WHERE cont_coo IS NOT NULL) GROUP BY cont_coo"},
    {FindingKind::REDUCAO_SEM_DOCUMENTO, COO, "",
     TrLater("%1 Z reductions without their document row"),
     "FROM reducao_z z WHERE NOT EXISTS (SELECT 1 FROM outros_documentos o WHERE o.cont_coo ="
     " z.cont_coo AND o.id_tipo_documento = 'RZ') GROUP BY cont_coo"},
    // A number that comes round again names several receipts without any fault.
    {FindingKind::COO_REUTILIZADO, COO, "",
     TrLater(
         "%1 receipts share the number: their amounts, items and payments cannot be told apart"),
     "FROM cupom_fiscal GROUP BY cont_coo HAVING count(*) > 1"},
    {FindingKind::COO_REUTILIZADO, COO, "",
     TrLater(
         "%1 non-fiscal receipts share the number: their amounts, items and payments cannot be told apart"),
     "FROM cupom_nf n GROUP BY cont_coo HAVING count(*) > 1"},
    {FindingKind::COO_REUTILIZADO, COO, "",
     TrLater(
         "%1 fiscal receipts share the number with a non-fiscal one: their payments cannot be told apart"),
     "FROM cupom_fiscal c WHERE EXISTS (SELECT 1 FROM cupom_nf n WHERE n.cont_coo ="
     " c.cont_coo) GROUP BY cont_coo"},
    {FindingKind::COO_REUTILIZADO, COO, "",
     TrLater("%1 other documents share the number with a receipt: their ends cannot be told apart"),
     "FROM outros_documentos o WHERE id_tipo_documento <> 'CN' AND (EXISTS (SELECT 1 FROM"
     " cupom_fiscal c WHERE c.cont_coo = o.cont_coo) OR EXISTS (SELECT 1 FROM cupom_nf n WHERE"
     " n.cont_coo = o.cont_coo)) GROUP BY cont_coo"},
    {FindingKind::COO_REUTILIZADO, COO, "",
     TrLater("%1 other documents share the number: their ends cannot be told apart"),
     "FROM outros_documentos WHERE id_tipo_documento <> 'CN' GROUP BY cont_coo HAVING"
     " count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, COO, "item_cupom_fiscal ", TrLater("%1 rows of the same item"),
     "FROM item_cupom_fiscal i GROUP BY cont_coo, seq_item HAVING count(*) > 1 AND NOT EXISTS"
     " (SELECT 1 FROM cupom_fiscal c WHERE c.cont_coo = i.cont_coo LIMIT 1 OFFSET 1)",
     &ITENS_FISCAIS},
    {FindingKind::CHAVE_REPETIDA, COO, "item_cupom_nf ", TrLater("%1 rows of the same item"),
     "FROM item_cupom_nf i GROUP BY cont_coo, seq_item HAVING count(*) > 1 AND NOT EXISTS"
     " (SELECT 1 FROM cupom_nf c WHERE c.cont_coo = i.cont_coo LIMIT 1 OFFSET 1)",
     &ITENS_NF},
    {FindingKind::CHAVE_REPETIDA, COO, "cupom_nf ", TrLater("%1 rows of one document"),
     "FROM cupom_nf n GROUP BY cont_coo HAVING count(*) > max(1, (SELECT count(*) FROM"
     " outros_documentos o WHERE o.cont_coo = n.cont_coo AND o.id_tipo_documento = 'CN'))"},
    // Two non-fiscal totalizers may bear one name.
    {FindingKind::CHAVE_REPETIDA, CRZ, "totalizador_reducao ",
     TrLater("%1 rows of the same totalizer"),
     "FROM totalizador_reducao WHERE id_fiscal = 'S' GROUP BY cont_crz, totalizador HAVING"
     " count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, CRZ, "meio_pagamento_reducao ",
     TrLater("%1 rows of the same means"),
     "FROM meio_pagamento_reducao GROUP BY cont_crz, indice_meio_pagamento HAVING count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, CRO, "intervencao ", TrLater("%1 rows of the same intervention"),
     "FROM intervencao GROUP BY cont_cro HAVING count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, CFD, "fita_detalhe ", TrLater("%1 rows of the same reprint"),
     "FROM fita_detalhe GROUP BY cont_cfd HAVING count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, INDICE, "meio_pagamento ", TrLater("%1 rows of the same means"),
     "FROM meio_pagamento GROUP BY num_indice HAVING count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, INDICE, "totalizador_nao_fiscal ",
     TrLater("%1 rows of the same totalizer"),
     "FROM totalizador_nao_fiscal GROUP BY num_indice HAVING count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, USUARIO, "dados_usuario ", TrLater("%1 rows of the owner"),
     "FROM dados_usuario GROUP BY seq_usuario HAVING count(*) > 1"},
    {FindingKind::CHAVE_REPETIDA, ECF, "versao_sb ", TrLater("%1 rows of the version"),
     "FROM versao_sb GROUP BY num_ecf HAVING count(*) > 1"},
};

// The rows' table stands behind FROM.
std::string TableOf(const Link& link)
{
    constexpr std::size_t FROM = 5;
    const std::string rows = link.rows;
    return rows.substr(FROM, rows.find(' ', FROM) - FROM);
}

// Whether an item may have no receipt, or a key that another one has: true also for a key that is
// no number.
bool AreSuspect(const CheckContext& context, const Itens& itens)
{
    leitura::Query items(context.Database(), std::string("SELECT cont_coo, seq_item FROM ") +
                                                 itens.table + " ORDER BY cont_coo, seq_item");
    leitura::Query receipt(context.Database(), std::string("SELECT 1 FROM ") + itens.receipts +
                                                   " WHERE cont_coo = ?1 LIMIT 1");
    std::optional<std::int64_t> lastCoo;
    std::int64_t lastItem = 0;
    while (items.Next()) {
        const leitura::Integer coo = leitura::ReadInteger(items.Row(), 0, leitura::Nullable::NO);
        const leitura::Integer item = leitura::ReadInteger(items.Row(), 1, leitura::Nullable::NO);
        if (!coo.IsKnown() || !item.IsKnown()) {
            return true;
        }
        if (lastCoo != coo.Value()) {
            if (!receipt.With(coo.Value()).Next()) {
                return true;
            }
        } else if (lastItem == item.Value()) {
            return true;
        }
        lastCoo = coo.Value();
        lastItem = item.Value();
    }
    return false;
}

} // namespace

void CheckLinks(CheckContext& context)
{
    std::set<const Itens*> sound;
    for (const Itens* itens : {&ITENS_FISCAIS, &ITENS_NF}) {
        if (!AreSuspect(context, *itens)) {
            sound.insert(itens);
        }
    }
    for (const Link& link : LINKS) {
        if (sound.count(link.itens) != 0) {
            continue;
        }
        leitura::Query query(context.Database(),
                             std::string("SELECT ") + link.key.column +
                                 " AS number, count(*) AS row_count, min(rowid) AS first_row " +
                                 link.rows);
        while (query.Next()) {
            const leitura::Integer number = query.ReadInteger("number");
            context.findings.Report(link.kind,
                                    std::string(link.table) + link.key.label + Number(number),
                                    Tr(link.what, {Number(query.ReadInteger("row_count"))}),
                                    link.key.subject(number.Value()),
                                    {TableOf(link), query.ReadInteger("first_row").Value(),
                                     link.key.column, "", Number(number)});
        }
    }
}

} // namespace bancada::conferencia
