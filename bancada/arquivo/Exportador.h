// What the parts of an export share.
#pragma once

#include "bancada/arquivo/Exportacao.h"
#include "bancada/arquivo/Fatos.h"
#include "bancada/arquivo/MemoriaGuardada.h"
#include "bancada/arquivo/Neutros.h"
#include "bancada/arquivo/RecordWriter.h"
#include "bancada/arquivo/Selecao.h"
#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace bancada::arquivo
{

// The non-fiscal totalizers of the till's floats and withdrawals.
constexpr std::int64_t NUMERO_FUNDO_TROCO = 1;
constexpr std::int64_t NUMERO_SANGRIA = 2;

// A receipt: its row, and what its items and payments are found and told by.
struct CupomNumbers {
    std::int64_t rowid = 0;
    std::int32_t coo = 0;
    std::int32_t numero = 0; // CCF of a fiscal one, GNF of the other
    bool fiscal = false;
    bool cancelado = false;
    bool doubled = false; // another receipt of the database has its COO
};

struct Exportador {
    Exportador(const ExportOptions& exportOptions, std::ostream& out);

    const ExportOptions& options;
    leitura::DatabaseReading database;
    Fatos fatos;
    std::optional<MemoriaGuardada> memoria;
    Selecao selecao;
    RecordWriter writer;
    Neutros neutros;

    leitura::DadosEcfRow ecf;         // as a row of nothing where there is none
    leitura::DadosUsuarioRow usuario; // likewise
    leitura::Text cnpj;               // empty without one
    std::string versaoSb;             // of the database; empty without one
    std::vector<CupomNumbers> cupons; // the chosen ones of both kinds, by kind and number

    // Throws Unusable: whose the items and payments of a number that stands twice are is told by
    // no row.
    void RequireOnce(const CupomNumbers& cupom) const;
    // Lists how many rows of a table have no receipt in any of these.
    void NoteOrphans(const char* type, const std::string& table,
                     std::initializer_list<const char*> receipts);
};

// E01 to E11.
void ExportIdentificacao(Exportador& exporting);
void ExportCadastro(Exportador& exporting);
void ExportIntervencoes(Exportador& exporting);
void ExportFitas(Exportador& exporting);
void ExportContadores(Exportador& exporting);
// E12, E13, E17 and E18.
void ExportReducoes(Exportador& exporting);
void ExportTotalizadores(Exportador& exporting);
void ExportTotalizadoresNf(Exportador& exporting);
void ExportMeios(Exportador& exporting);
// E14 and E15.
void ExportCupons(Exportador& exporting);
void ExportItens(Exportador& exporting);
// E16, E19 and E20.
void ExportOutrosDocumentos(Exportador& exporting);
void ExportCuponsNf(Exportador& exporting);
void ExportItensNf(Exportador& exporting);
// E21.
void ExportPagamentos(Exportador& exporting);

// A rate as the file writes it: "01T18.00" is 01T1800.
std::string WithoutPoint(std::string text);

// TDM and so on.
std::string ComandoText(Comando comando);

// The grand total as the register has it now: the memory's or, without one, that of the last Z
// reduction and what was registered since. Not known where the rows do not add up.
leitura::Amount GrandeTotal(const Exportador& exporting);

} // namespace bancada::arquivo
