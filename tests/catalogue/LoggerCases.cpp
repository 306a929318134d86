#include "tests/catalogue/LoggerCases.h"

#include "FiscalCommands.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <typeinfo>

namespace
{

constexpr RtcAbsoluteTime START(1772440530); // 2026-03-02 08:35:30
constexpr RtcAbsoluteTime END(1772440592);

const std::string COO = std::to_string(FixedModel::COO);

template <class CommandClass>
std::string NameOf()
{
    char* const name = abi::__cxa_demangle(typeid(CommandClass).name(), nullptr, nullptr, nullptr);
    const std::string text = name;
    std::free(name);
    return text;
}

template <std::size_t size>
void Set(char (&array)[size], const char* text)
{
    const std::size_t length = strnlen(text, size - 1);
    std::memcpy(array, text, length);
    array[length] = '\0';
}

// The longest text that the array holds.
template <std::size_t size>
void Fill(char (&array)[size])
{
    std::memset(array, 'N', size - 1);
    array[size - 1] = '\0';
}

// The list while it is made.
class Catalogue
{
  public:
    std::vector<LoggerCase> cases;

    // One case; `set` sets parameters and answers.
    template <class CommandClass>
    LoggerCase& Add(
        const char* variant = "",
        std::function<void(CommandClass&, FixedModel&)> set = [](CommandClass&, FixedModel&) {})
    {
        LoggerCase added;
        added.commandClass = NameOf<CommandClass>();
        added.variant = variant;
        added.make = [set](FixedModel& model) -> std::shared_ptr<Command> {
            // By value within: a command has no virtual destructor to be deleted by.
            struct Held {
                CommandClass command;
            };
            const auto held = std::make_shared<Held>();
            held->command.FDController = &model;
            held->command.m_dtExecStart = START;
            held->command.m_dtExecEnd = END;
            set(held->command, model);
            return {held, &held->command};
        };
        cases.push_back(added);
        return cases.back();
    }

    // The same on a fiscal and on a non-fiscal receipt; `rows` and `undo` are given for the first
    // and name its tables.
    template <class CommandClass>
    void AddForBothReceipts(const std::string& variant,
                            std::function<void(CommandClass&, FixedModel&)> set,
                            const std::vector<std::string>& rows)
    {
        for (const bool fiscal : {true, false}) {
            const std::string text =
                (fiscal ? "fiscal" : "não fiscal") + (variant.empty() ? "" : ", " + variant);
            Add<CommandClass>(text.c_str(), [=](CommandClass& command, FixedModel& model) {
                model.tipoCupom = fiscal ? CUPOM_FISCAL : COMPROVANTE_NAO_FISCAL;
                set(command, model);
            }).rows = rows;
        }
    }
};

const std::vector<std::string> RECEIPTS = {
    "INSERT INTO cupom_fiscal (cont_coo) VALUES (" + COO + ")",
    "INSERT INTO cupom_nf (cont_coo) VALUES (" + COO + ")",
};

const std::vector<std::string> ITEMS = {
    "INSERT INTO item_cupom_fiscal (cont_coo, seq_item) VALUES (" + COO + ", 3)",
    "INSERT INTO item_cupom_nf (cont_coo, seq_item) VALUES (" + COO + ", 3)",
};

const std::vector<std::string> DOCUMENT = {
    "INSERT INTO outros_documentos (cont_coo) VALUES (" + COO + ")",
};

const std::vector<std::string> USUARIO = {"INSERT INTO dados_usuario (seq_usuario) VALUES (1)"};
const std::vector<std::string> NO_USUARIO = {"DELETE FROM dados_usuario"};

// A closed receipt of so many items.
std::vector<std::string> ReceiptOf(int items)
{
    std::vector<std::string> rows = {RECEIPTS[0]};
    for (int item = 1; item <= items; ++item) {
        rows.push_back("INSERT INTO item_cupom_fiscal (cont_coo, seq_item) VALUES (" + COO + ", " +
                       std::to_string(item) + ")");
    }
    return rows;
}

template <class Venda>
void SetVenda(Venda& venda, const char* tributacao)
{
    Set(venda.m_sCodigoItem, "7891234567890");
    Set(venda.m_sDescricao, "TOMATE ITALIANO");
    Set(venda.m_sTributacao, tributacao);
    venda.m_iIndiceTributacao = 1;
    Set(venda.m_sUnidadeMedida, "KG");
    venda.m_iCasasDecimaisQtde = 3;
    venda.m_iCasasDecimaisValor = 2;
    venda.m_cArredTrunc = 'T';
}

template <class Venda>
void AddVendas(Catalogue& catalogue)
{
    for (const auto& [variant, tributacao] :
         {std::pair("ICMS", "T"), std::pair("ISSQN", "S"), std::pair("isento", "I")}) {
        catalogue.Add<Venda>(variant, [tributacao = tributacao](Venda& venda, FixedModel&) {
            SetVenda(venda, tributacao);
        });
    }
    catalogue.Add<Venda>("3 casas decimais", [](Venda& venda, FixedModel&) {
        SetVenda(venda, "T");
        venda.m_iCasasDecimaisValor = 3;
    });
    catalogue.Add<Venda>("texto longo", [](Venda& venda, FixedModel&) {
        SetVenda(venda, "T");
        Fill(venda.m_sDescricao);
    });
}

void AddReceiptCases(Catalogue& catalogue)
{
    catalogue.Add<CmdAbreCupom>("sem consumidor");
    catalogue.Add<CmdAbreCupom>("com consumidor", [](CmdAbreCupom& abre, FixedModel&) {
        Set(abre.m_sCPF_CNPJ, "12345678909");
        Set(abre.m_sNomeConsumidor, "MARIA DA SILVA");
        Set(abre.m_sEnderecoConsumidor, "RUA DAS FLORES, 123");
    });
    catalogue.Add<CmdAbreCupom>("textos longos", [](CmdAbreCupom& abre, FixedModel&) {
        Fill(abre.m_sCPF_CNPJ);
        Fill(abre.m_sNomeConsumidor);
        Fill(abre.m_sEnderecoConsumidor);
    });

    AddVendas<CmdVendeItem>(catalogue);
    AddVendas<CmdVendeItemDetalhado>(catalogue);
}

void AddAdjustmentCases(Catalogue& catalogue)
{
    struct Adjustment {
        EOperacao operacao;
        const char* name;
    };
    struct Kind {
        ETipoValor tipo;
        const char* name;
    };
    for (const Adjustment adjustment :
         {Adjustment{ACRESCIMO, "acréscimo"}, Adjustment{DESCONTO, "desconto"}}) {
        for (const Kind kind : {Kind{VALOR, " por valor"}, Kind{PERCENTUAL, " por percentual"}}) {
            catalogue.AddForBothReceipts<CmdEfetuaDescAcresItem>(
                std::string(adjustment.name) + kind.name,
                [=](CmdEfetuaDescAcresItem& command, FixedModel&) {
                    command.m_eOperacao = adjustment.operacao;
                    command.m_eTipoValor = kind.tipo;
                    command.m_Valor = BigInt(1050);
                    command.m_iNumeroItem = 3;
                },
                ITEMS);
            catalogue.AddForBothReceipts<CmdEfetuaDescAcresSubtotal>(
                std::string(adjustment.name) + kind.name,
                [=](CmdEfetuaDescAcresSubtotal& command, FixedModel&) {
                    command.m_eOperacao = adjustment.operacao;
                    command.m_eTipoValor = kind.tipo;
                    command.m_Valor = BigInt(1050);
                },
                RECEIPTS);
        }
        catalogue.AddForBothReceipts<CmdCancelaDescAcresItem>(
            adjustment.name,
            [=](CmdCancelaDescAcresItem& command, FixedModel&) {
                command.m_eOperacao = adjustment.operacao;
                command.m_iNumeroItem = 3;
            },
            ITEMS);
        catalogue.AddForBothReceipts<CmdCancelaDescAcresSubtotal>(
            adjustment.name,
            [=](CmdCancelaDescAcresSubtotal& command, FixedModel&) {
                command.m_eOperacao = adjustment.operacao;
            },
            RECEIPTS);
    }
}

void AddClosingCases(Catalogue& catalogue)
{
    catalogue.Add<CmdEfetuaPagamento>("", [](CmdEfetuaPagamento& paga, FixedModel&) {
        paga.m_iMeioPagamento = 1;
        paga.m_finValor = Financial::FromCents(12345);
        paga.m_iNumParcelas = 1;
        Set(paga.m_sInfoAdicional, "BALCAO");
    });
    catalogue.Add<CmdEfetuaPagamento>("texto longo", [](CmdEfetuaPagamento& paga, FixedModel&) {
        paga.m_iMeioPagamento = 1;
        paga.m_finValor = Financial::FromCents(12345);
        paga.m_iNumParcelas = 12;
        Fill(paga.m_sInfoAdicional);
    });

    const auto close = [](CmdFechaCupom& fecha, FixedModel&) {
        Set(fecha.m_sMsgPromocional, "OBRIGADO E VOLTE SEMPRE");
    };
    catalogue.Add<CmdFechaCupom>("sem consumidor", close).rows = RECEIPTS;
    catalogue
        .Add<CmdFechaCupom>("com consumidor",
                            [](CmdFechaCupom& fecha, FixedModel&) {
                                Set(fecha.m_sMsgPromocional,
                                    "CNPJ/CPF consumidor: 123.456.789-09 OBRIGADO E VOLTE SEMPRE");
                            })
        .rows = RECEIPTS;
    catalogue
        .Add<CmdFechaCupom>("textos longos",
                            [](CmdFechaCupom& fecha, FixedModel& model) {
                                static const std::string LONG_TEXT(1499, 'N');
                                Fill(fecha.m_sMsgPromocional);
                                model.aplicativo = model.chave = LONG_TEXT.c_str();
                            })
        .rows = RECEIPTS;
    catalogue
        .Add<CmdFechaCupom>("cupom adicional",
                            [=](CmdFechaCupom& fecha, FixedModel& model) {
                                close(fecha, model);
                                fecha.m_bCupomAdicional = TRUE;
                            })
        .rows = RECEIPTS;
    for (const int items : {6, Cupom::MAX_ITENS}) {
        const std::string variant = "rateio de " + std::to_string(items) + " itens";
        catalogue
            .Add<CmdFechaCupom>(variant.c_str(),
                                [=](CmdFechaCupom& fecha, FixedModel& model) {
                                    close(fecha, model);
                                    model.itens = items;
                                    model.descSubtotal = TRUE;
                                    model.rateio = 1;
                                })
            .rows = ReceiptOf(items);
    }

    catalogue.AddForBothReceipts<CmdCancelaItem>(
        "", [](CmdCancelaItem& cancela, FixedModel&) { cancela.m_iNumeroItem = 3; }, ITEMS);
    catalogue.AddForBothReceipts<CmdCancelaCupomFiscalNfEmEmissao>(
        "", [](CmdCancelaCupomFiscalNfEmEmissao&, FixedModel&) {}, RECEIPTS);
    catalogue.AddForBothReceipts<CmdCancelaCupom>(
        "",
        [](CmdCancelaCupom& cancela, FixedModel&) { cancela.m_iCOOCancelado = FixedModel::COO; },
        RECEIPTS);
}

void AddNonFiscalCases(Catalogue& catalogue)
{
    catalogue.Add<CmdAbreCNF>("", [](CmdAbreCNF& abre, FixedModel&) {
        Set(abre.m_sCPF_CNPJ, "12345678909");
        Set(abre.m_sNomeConsumidor, "MARIA DA SILVA");
    });
    catalogue.Add<CmdVendeItemNF>(
        "", [](CmdVendeItemNF& vende, FixedModel&) { vende.m_iIndiceTotalizador = 3; });
    catalogue.Add<CmdFechaCupomNF>().rows = {RECEIPTS[1], DOCUMENT[0]};
    catalogue.Add<CmdEstornaMeioPagamento>("", [](CmdEstornaMeioPagamento& estorna, FixedModel&) {
        estorna.m_iMeioPagamentoOrigem = 1;
        estorna.m_iMeioPagamentoDestino = 2;
        estorna.m_finValor = Financial::FromCents(12345);
        estorna.m_iNumParcelas = 1;
        Set(estorna.m_sInfoAdicional, "TROCA DE MEIO");
    });
    LoggerCase& estorno = catalogue.cases.back();
    estorno.rows = {"INSERT INTO pagamento_cupom (cont_coo, indice_meio_pagamento) VALUES (" + COO +
                    ", 1)"};
    estorno.undo = {"DELETE FROM pagamento_cupom WHERE indice_meio_pagamento = 2"};
    catalogue.Add<CmdSangria>(
        "sangria", [](CmdSangria& sangria, FixedModel&) { sangria.m_eTipoOperacao = SANGRIA; });
    catalogue.Add<CmdSangria>("fundo de troco", [](CmdSangria& sangria, FixedModel&) {
        sangria.m_eTipoOperacao = FUNDO_TROCO;
    });
}

void AddDocumentCases(Catalogue& catalogue)
{
    catalogue.Add<CmdLeituraX>(
        "impressa", [](CmdLeituraX& leitura, FixedModel&) { leitura.m_eMidia = IMPRESSAO; });
    catalogue.Add<CmdLeituraX>("fim desconhecido", [](CmdLeituraX& leitura, FixedModel&) {
        leitura.m_eMidia = IMPRESSAO;
        leitura.m_dtExecEnd = RtcAbsoluteTime(matlong[0]);
    });
    catalogue.Add<CmdLeituraX>(
        "arquivo", [](CmdLeituraX& leitura, FixedModel&) { leitura.m_eMidia = ARQUIVO; });
    catalogue.Add<CmdLeituraMF>();
    catalogue.Add<CmdReducaoZ>("completa");
    catalogue.Add<CmdReducaoZ>("sem movimento",
                               [](CmdReducaoZ&, FixedModel& model) { model.semMovimento = true; });
    catalogue.Add<CmdAbreCCD>();
    catalogue.Add<CmdAbreEstornoCCD>();
    catalogue.Add<CmdAbreGerencial>();
    catalogue.Add<CmdFechaCCDGerencial>().rows = DOCUMENT;

    const std::vector<std::string> intervencao = {
        "INSERT INTO intervencao (cont_cro) VALUES (102)"};
    const std::vector<std::string> noIntervencao = {"DELETE FROM intervencao"};
    catalogue.Add<CmdEntradaMILInterno>("primeira").undo = noIntervencao;
    catalogue.Add<CmdEntradaMILInterno>("seguinte").rows = intervencao;
    catalogue.Add<CmdSaidaMILInterno>();
    catalogue.Add<CmdEntradaMITInterno>("primeira").undo = noIntervencao;
    catalogue.Add<CmdEntradaMITInterno>("seguinte").rows = intervencao;
    catalogue.Add<CmdSaidaMITInterno>();

    const auto reprint = [](CmdReimprimeMFD& reimprime, FixedModel&) {
        reimprime.m_iCooInicial = 4000;
        reimprime.m_iCooFinal = 4300;
    };
    catalogue.Add<CmdReimprimeMFD>("primeira", reprint).undo = {"DELETE FROM fita_detalhe"};
    catalogue.Add<CmdReimprimeMFD>("seguinte", reprint).rows = {
        "INSERT INTO fita_detalhe (cont_cfd) VALUES (106)"};
}

void AddProgrammingCases(Catalogue& catalogue)
{
    catalogue.Add<CmdInsereAliquota>();
    catalogue.Add<CmdHabilitaTotalizadores>();
    catalogue.Add<CmdDesabilitaTotalizadores>();

    const auto meio = [](CmdInsereMeiosPagamento& insere, FixedModel&) {
        insere.m_iIndice = 2;
        Set(insere.m_sDescricao, "Cartao debito");
        insere.m_eVinculacaoCCD = COM_CCD;
    };
    catalogue.Add<CmdInsereMeiosPagamento>("primeira", meio).undo = {"DELETE FROM meio_pagamento"};
    catalogue.Add<CmdInsereMeiosPagamento>("seguinte", meio).rows = {
        "INSERT INTO meio_pagamento (num_indice) VALUES (2)"};

    const auto totalizador = [](CmdInsereRegOpeNF& insere, FixedModel&) {
        insere.m_iIndice = 5;
        Set(insere.m_sDescricao, "RECARGA CELULAR");
    };
    catalogue.Add<CmdInsereRegOpeNF>("primeira", totalizador).undo = {
        "DELETE FROM totalizador_nao_fiscal"};
    catalogue.Add<CmdInsereRegOpeNF>("seguinte", totalizador).rows = {
        "INSERT INTO totalizador_nao_fiscal (num_indice) VALUES (5)"};

    catalogue.Add<CmdProgramaLoja>();
    const std::vector<std::string> ecf = {"INSERT INTO dados_ecf (num_ecf) VALUES (1)"};
    catalogue
        .Add<CmdProgramaSequenciaECF>(
            "", [](CmdProgramaSequenciaECF& programa, FixedModel&) { programa.m_iNumCaixa = 7; })
        .rows = ecf;

    catalogue.Add<CmdProgramaUsuario>("primeira").undo = NO_USUARIO;
    catalogue.Add<CmdProgramaUsuario>("seguinte").rows = USUARIO;
    catalogue
        .Add<CmdProgramaUsuario>("textos longos",
                                 [](CmdProgramaUsuario&, FixedModel& model) {
                                     static const std::string LONG_TEXT(499, 'N');
                                     model.razaoSocial = model.nomeFantasia = model.endereco =
                                         LONG_TEXT.c_str();
                                 })
        .rows = USUARIO;

    const auto cnpj = [](CmdProgramaCNPJ_IE_IM& programa, FixedModel&) {
        Set(programa.m_sCNPJ, "11222333000181");
        Set(programa.m_sIE, "110042490114");
        Set(programa.m_sIM, "12345678");
        Set(programa.m_sUF, "SP");
    };
    catalogue.Add<CmdProgramaCNPJ_IE_IM>("primeira", cnpj).undo = NO_USUARIO;
    catalogue.Add<CmdProgramaCNPJ_IE_IM>("seguinte", cnpj).rows = USUARIO;

    const auto serie = [](CmdProgramaNrSerie& programa, FixedModel&) {
        Set(programa.m_sMarca, "ALFA");
        Set(programa.m_sModelo, "BETA 200");
        Set(programa.m_sTipo, "ECF-IF");
        Set(programa.m_sNumSerie, "AB010612345678901234");
    };
    catalogue.Add<CmdProgramaNrSerie>("primeira", serie).undo = {"DELETE FROM dados_ecf",
                                                                 "DELETE FROM versao_sb"};
    catalogue
        .Add<CmdProgramaNrSerie>("primeira, sem número de ordem",
                                 [=](CmdProgramaNrSerie& programa, FixedModel& model) {
                                     serie(programa, model);
                                     model.numeroDeOrdem = "";
                                 })
        .undo = {"DELETE FROM dados_ecf", "DELETE FROM versao_sb"};
    catalogue.Add<CmdProgramaNrSerie>("seguinte", serie).rows = {
        ecf[0], "INSERT INTO versao_sb (num_ecf) VALUES (1)"};

    catalogue.Add<CmdProgramaMoeda>(
        "", [](CmdProgramaMoeda& moeda, FixedModel&) { Set(moeda.m_sSimboloMoeda, "R$"); });
}

} // namespace

const std::vector<LoggerCase>& LoggerCases()
{
    static const std::vector<LoggerCase> CASES = [] {
        Catalogue catalogue;
        AddReceiptCases(catalogue);
        AddAdjustmentCases(catalogue);
        AddClosingCases(catalogue);
        AddNonFiscalCases(catalogue);
        AddDocumentCases(catalogue);
        AddProgrammingCases(catalogue);
        return catalogue.cases;
    }();
    return CASES;
}
