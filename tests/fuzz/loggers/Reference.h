// The second opinion on every logger: what it has to say, composed by the standard library's
// strings and formatting alone, from the same members and the same model. It shares no code with
// the loggers; each of its texts stands here once more, whole.
#pragma once

#include "FiscalCommands.h"
#include "tests/fuzz/loggers/AnyModel.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace reference
{

// What a logger hands to the engine.
struct Step {
    std::string sql;
    std::size_t arraySize; // a statement of this length or more does not fit
    bool isQuery;
};

struct Expectation {
    std::vector<Step> steps;
    BOOL answer = TRUE;
    UINT32 end = 0;        // m_dtExecEnd afterwards
    std::string descricao; // m_sDescricao of a sale afterwards
};

// Counts the rows that a query answers for before the logger runs; -1 where it cannot be run.
using Count = std::function<int(const std::string& query)>;

class Reference
{
  public:
    Reference(AnyModel& model, Command& command, Count count)
        : m_model(model), m_command(command), m_count(std::move(count))
    {
        m_expected.end = command.m_dtExecEnd.s;
    }

    const Expectation& Expected() const { return m_expected; }

    // One for every class, as its members stand now.
    void Of(const CmdAbreCupom& abre);
    void Of(const CmdVendeItem& vende);
    void Of(const CmdVendeItemDetalhado& vende);
    void Of(const CmdEfetuaDescAcresItem& efetua);
    void Of(const CmdCancelaDescAcresItem& cancela);
    void Of(const CmdEfetuaDescAcresSubtotal& efetua);
    void Of(const CmdCancelaDescAcresSubtotal& cancela);
    void Of(const CmdEfetuaPagamento& paga);
    void Of(const CmdFechaCupom& fecha);
    void Of(const CmdCancelaItem& cancela);
    void Of(const CmdCancelaCupomFiscalNfEmEmissao& cancela);
    void Of(const CmdCancelaCupom& cancela);
    void Of(const CmdAbreCNF& abre);
    void Of(const CmdVendeItemNF& vende);
    void Of(const CmdFechaCupomNF& fecha);
    void Of(const CmdEstornaMeioPagamento& estorna);
    void Of(const CmdSangria& sangria);
    void Of(const CmdLeituraX& leitura);
    void Of(const CmdLeituraMF& leitura);
    void Of(const CmdReducaoZ& reducao);
    void Of(const CmdAbreCCD& abre);
    void Of(const CmdAbreEstornoCCD& abre);
    void Of(const CmdAbreGerencial& abre);
    void Of(const CmdFechaCCDGerencial& fecha);
    void Of(const CmdEntradaMILInterno& entra);
    void Of(const CmdSaidaMILInterno& sai);
    void Of(const CmdEntradaMITInterno& entra);
    void Of(const CmdSaidaMITInterno& sai);
    void Of(const CmdReimprimeMFD& reimprime);
    void Of(const CmdInsereAliquota& insere);
    void Of(const CmdHabilitaTotalizadores& habilita);
    void Of(const CmdDesabilitaTotalizadores& desabilita);
    void Of(const CmdInsereMeiosPagamento& insere);
    void Of(const CmdInsereRegOpeNF& insere);
    void Of(const CmdProgramaLoja& programa);
    void Of(const CmdProgramaSequenciaECF& programa);
    void Of(const CmdProgramaUsuario& programa);
    void Of(const CmdProgramaCNPJ_IE_IM& programa);
    void Of(const CmdProgramaNrSerie& programa);
    void Of(const CmdProgramaMoeda& programa);

  private:
    static constexpr std::size_t STATEMENT = 5000;
    static constexpr std::size_t LARGE_STATEMENT = 8000;
    static constexpr std::size_t END_STATEMENT = 500;

    void Say(std::string sql, std::size_t arraySize = STATEMENT)
    {
        m_expected.steps.push_back({std::move(sql), arraySize, false});
    }
    // Answers -1 where the query cannot be run.
    int Ask(const std::string& query)
    {
        m_expected.steps.push_back({query, STATEMENT, true});
        return m_count(query);
    }

    std::string Counter(FISCALDATA_COUNTER_INDEX contador, int more = 0)
    {
        return std::to_string(m_model.Contador_Get(contador) + more);
    }
    std::string Started() const;
    bool IsFiscal() { return m_model.Cupom_GetTipoCupom() == CUPOM_FISCAL; }
    bool IsNeither()
    {
        return !IsFiscal() && m_model.Cupom_GetTipoCupom() != COMPROVANTE_NAO_FISCAL;
    }
    void SetEnd();
    void Documento(const char* tipo);
    void FimDoDocumento();
    template <class Venda>
    void LogVenda(const Venda& venda, const std::string& descricao, char issqn);
    void TotalDoItem(int item);
    void Pagamento(int coo, const Financial& valor, int parcelas, const std::string& info,
                   int meio);
    std::string InicioCupomNf();
    void Rateio();
    void Aliquotas(int taxBase, char letter);
    void Especiais(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase,
                   const std::vector<std::string>& codes);
    void Intervencao(const char* tipo);
    std::string Nomes();
    std::string Programacao();

    AnyModel& m_model;
    Command& m_command;
    Count m_count;
    Expectation m_expected;
};

// The text of an array, which it may fill.
template <std::size_t size>
std::string TextOf(const char (&array)[size])
{
    return std::string(array, std::find(array, array + size, '\0'));
}

inline std::string TextAt(const char* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

std::string Replaced(std::string text, char from, char to);
std::string Removed(std::string text, char character);
std::string Money(const Financial& value, int decimals = 2);
std::string InstantOf(UINT32 seconds, const char* format);
std::string Percent(const BigInt& value);
std::string TaxCode(int number, char letter, int rate);

} // namespace reference
