#include "bancada/gerador/Generator.h"

#include "bancada/gerador/Consumidores.h"
#include "bancada/gerador/Draw.h"
#include "bancada/gerador/GeneratedCupom.h"
#include "bancada/gerador/LineWriter.h"
#include "bancada/gerador/Mercadorias.h"

#include <algorithm>
#include <iterator>

namespace bancada
{

namespace
{

constexpr std::int64_t PRIMEIRO_DIA = 19723; // 2024-01-01, counted from 1970-01-01
constexpr std::int64_t SEGUNDOS_DO_DIA = 86400;
constexpr std::int64_t HORA_ABERTURA = 6;
constexpr std::int64_t MAX_COO = 999999;

// How busy the shop is, hour by hour from its opening.
constexpr int MOVIMENTO[] = {2, 5, 8, 7, 6, 9, 10, 7, 5, 5, 7, 11, 12, 8, 4, 2};

// The programmed payment means. Those with a voucher give no change.
enum Meio : std::int32_t {
    DINHEIRO = 1,
    CHEQUE = 2,
    CREDITO = 3,
    DEBITO = 4,
    VALE = 5,
};

bool DaTroco(int meio)
{
    return meio == DINHEIRO || meio == CHEQUE;
}

const char* const MENSAGENS[] = {"Obrigado pela preferencia! Volte sempre.", "Confira o seu troco.",
                                 "Ofertas de hortifruti toda quarta-feira.", ""};

// The instant of the receipt `numero` (from 0) of `quantos`, in seconds after the opening: as many
// receipts in an hour as its share of the movement.
std::int64_t Horario(int numero, int quantos, std::int64_t acaso)
{
    std::int64_t soma = 0;
    for (const int hora : MOVIMENTO) {
        soma += hora;
    }
    std::int64_t resto =
        (numero * std::int64_t{1000} + acaso) * soma * 3600 / (quantos * std::int64_t{1000});
    std::int64_t hora = 0;
    for (const int movimento : MOVIMENTO) {
        const std::int64_t desta = movimento * std::int64_t{3600};
        if (resto < desta) {
            return hora * 3600 + resto / movimento;
        }
        resto -= desta;
        ++hora;
    }
    return hora * 3600;
}

class Gerador
{
  public:
    Gerador(const GeneratorOptions& opcoes, std::ostream& saida)
        : m_opcoes(opcoes), m_saida(saida), m_sorteio(opcoes.seed)
    {
        for (const Mercadoria& mercadoria : Mercadorias()) {
            m_pesoTotal += mercadoria.peso;
        }
    }

    void GenerateTape()
    {
        m_agora = PRIMEIRO_DIA * SEGUNDOS_DO_DIA + (HORA_ABERTURA - 1) * 3600;
        Programa();
        for (int dia = 0; dia < m_opcoes.jornadas && m_saida; ++dia) {
            GeraDia(dia);
        }
    }

  private:
    // --- Time and counters -------------------------------------------------------------------

    // A command one second after the one before it.
    LineWriter Linha(const char* comando)
    {
        ++m_agora;
        return {m_saida, comando};
    }

    // A command at `quando`, or as soon as the one before it allows.
    void Espera(std::int64_t quando) { m_em = std::max(quando, m_agora + 1); }

    // The first command after a wait says when it starts.
    LineWriter& Abre(LineWriter& linha)
    {
        if (m_em != 0) {
            linha.Em(m_em);
            m_agora = m_em;
            m_em = 0;
        }
        return linha;
    }

    // A document takes the next number.
    void Documento() { m_coo = m_coo >= MAX_COO ? 1 : m_coo + 1; }

    // --- The register's programming ----------------------------------------------------------

    void Programa()
    {
        {
            LineWriter linha(m_saida, "configura");
            linha.Sim("ratear_subtotal").Texto("aplicativo", "PDV MERCEARIA 1.0");
        }
        Espera(m_agora);
        {
            LineWriter linha = Linha("programa_nr_serie");
            Abre(linha)
                .Texto("marca", "BANCADA")
                .Texto("modelo", "REGISTRO 1")
                .Texto("tipo", "ECF-IF")
                .Texto("num_serie", "BN0100240300000017");
        }
        Linha("programa_sequencia_ecf").Numero("numero", 1);
        Linha("programa_loja").Numero("numero", 1);
        Linha("programa_usuario")
            .Texto("razao_social", "MERCEARIA FLOR DO IPE LTDA")
            .Texto("nome_fantasia", "MERCEARIA FLOR DO IPE")
            .Texto("endereco", "RUA DAS LARANJEIRAS, 215 - VILA NOVA - CAMPINAS");
        Linha("programa_cnpj_ie_im")
            .Texto("cnpj", DrawCnpj(m_sorteio))
            .Texto("ie", "244123456110")
            .Texto("im", "00123456")
            .Texto("uf", "SP");
        ProgramaTotalizadores();
        ProgramaMeios();
    }

    void ProgramaTotalizadores()
    {
        const std::int64_t aliquotas[] = {1800, 1200, 700};
        for (int i = 0; i < 3; ++i) {
            Linha("insere_aliquota")
                .Texto("tributacao", "T")
                .Numero("indice", i + 1)
                .Decimal("percentual", aliquotas[i], 2);
        }
        Linha("insere_aliquota")
            .Texto("tributacao", "S")
            .Numero("indice", 1)
            .Texto("percentual", "5.00");
        for (const char* codigo : {"F", "I", "N"}) {
            Linha("habilita_totalizadores").Texto("codigo", codigo).Numero("numero", 1);
        }
        Linha("insere_reg_ope_nf").Numero("indice", 3).Texto("descricao", "RECARGA CELULAR");
        Linha("insere_reg_ope_nf").Numero("indice", 4).Texto("descricao", "CONTA DE LUZ");
    }

    void ProgramaMeios()
    {
        const char* const nomes[] = {"DINHEIRO", "CHEQUE", "CARTAO CREDITO", "CARTAO DEBITO",
                                     "VALE REFEICAO"};
        for (int i = 0; i < 5; ++i) {
            LineWriter linha = Linha("insere_meio_pagamento");
            linha.Numero("indice", i + 1).Texto("descricao", nomes[i]);
            if (!DaTroco(i + 1)) {
                linha.Sim("vinculado_ccd");
            }
        }
    }

    // --- A day -------------------------------------------------------------------------------

    void GeraDia(int dia)
    {
        const std::int64_t abertura = (PRIMEIRO_DIA + dia) * SEGUNDOS_DO_DIA + HORA_ABERTURA * 3600;
        Espera(abertura - 900);
        Leitura("leitura_x");
        if (dia % 30 == 0) {
            Leitura("leitura_mf");
        }
        if (dia % 90 == 0) {
            Intervencao(dia % 180 == 0);
        }
        m_gaveta = 15000;
        Caixa("fundo_troco", m_gaveta);
        for (int cupom = 0; cupom < m_opcoes.cuponsPorJornada && m_saida; ++cupom) {
            Espera(abertura + Horario(cupom, m_opcoes.cuponsPorJornada, m_sorteio.Entre(0, 999)));
            GeraCupom();
            if (m_sorteio.PorMil(20)) {
                GeraNaoFiscal();
            }
            if (m_gaveta > 150000) {
                Caixa("sangria", 100000);
                m_gaveta -= 100000;
            }
        }
        Espera(abertura + static_cast<std::int64_t>(std::size(MOVIMENTO)) * 3600);
        if (m_coo > 20 && m_sorteio.PorMil(100)) {
            Reimprime();
        }
        if (m_gaveta > 0) {
            Caixa("sangria", m_gaveta);
        }
        Gerencial();
        Leitura("reducao_z");
    }

    void Leitura(const char* comando)
    {
        LineWriter linha = Linha(comando);
        Abre(linha);
        Documento();
    }

    // Entering L prints, entering T does not; leaving either prints.
    void Intervencao(bool tecnica)
    {
        Linha(tecnica ? "entrada_mit_interno" : "entrada_mil_interno");
        if (!tecnica) {
            Documento();
        }
        Linha(tecnica ? "saida_mit_interno" : "saida_mil_interno");
        Documento();
    }

    void Caixa(const char* operacao, std::int64_t valor)
    {
        LineWriter linha = Linha("sangria");
        Abre(linha).Texto("operacao", operacao).Dinheiro("valor", valor);
        Documento();
    }

    void Reimprime()
    {
        LineWriter linha = Linha("reimprime_mfd");
        Abre(linha)
            .Numero("coo_inicial", m_coo - m_sorteio.Entre(1, 10))
            .Numero("coo_final", m_coo);
        Documento();
    }

    void Gerencial()
    {
        {
            LineWriter linha = Linha("abre_gerencial");
            Abre(linha);
        }
        Documento();
        Linha("fecha_ccd_gerencial");
    }

    // --- A fiscal receipt --------------------------------------------------------------------

    void GeraCupom()
    {
        AbreCupom();
        GeneratedCupom compra;
        GeraItens(compra);
        if (m_sorteio.PorMil(7)) {
            Linha("cancela_cupom_em_emissao");
            return;
        }
        if (m_sorteio.PorMil(30)) {
            AjustaSubtotal(compra);
        }
        const int meio = Paga(compra.Total());
        Fecha();
        if (m_sorteio.PorMil(5)) {
            Linha("cancela_cupom");
            Documento();
            m_gaveta -= m_dinheiro;
            return;
        }
        if (meio == CHEQUE && m_sorteio.PorMil(100)) {
            Estorna(CHEQUE, DINHEIRO, compra.Total());
        }
        if (!DaTroco(meio) && m_sorteio.PorMil(400)) {
            Voucher(meio);
        }
    }

    void AbreCupom()
    {
        LineWriter linha = Linha("abre_cupom");
        Abre(linha);
        Documento();
        switch (m_sorteio.Pesado({78, 14, 5, 3})) {
        case 1:
            linha.Texto("cpf_cnpj", DrawCpf(m_sorteio));
            break;
        case 2:
            linha.Texto("cpf_cnpj", DrawCpf(m_sorteio));
            linha.Texto("nome", DrawNome(m_sorteio));
            break;
        case 3:
            linha.Texto("cpf_cnpj", DrawCnpj(m_sorteio));
            linha.Texto("nome", DrawNome(m_sorteio));
            linha.Texto("endereco", DrawEndereco(m_sorteio));
            break;
        default:
            break;
        }
    }

    // About 6 items: most baskets are small, some are the month's.
    int QuantosItens()
    {
        switch (m_sorteio.Pesado({40, 40, 17, 3})) {
        case 0:
            return static_cast<int>(m_sorteio.Entre(1, 3));
        case 1:
            return static_cast<int>(m_sorteio.Entre(3, 8));
        case 2:
            return static_cast<int>(m_sorteio.Entre(8, 16));
        default:
            return static_cast<int>(m_sorteio.Entre(16, 40));
        }
    }

    void GeraItens(GeneratedCupom& compra)
    {
        for (int quantos = QuantosItens(); quantos > 0; --quantos) {
            const int numero = VendeItem(compra);
            if (m_sorteio.PorMil(15)) {
                AjustaItem(compra, numero);
            }
            if (compra.Vivos() > 1 && m_sorteio.PorMil(8)) {
                compra.Cancela(numero);
                Linha("cancela_item").Numero("item", numero);
            }
        }
    }

    const Mercadoria& EscolheMercadoria()
    {
        auto sorteado =
            static_cast<std::int64_t>(m_sorteio.Ate(static_cast<std::uint64_t>(m_pesoTotal)));
        for (const Mercadoria& mercadoria : Mercadorias()) {
            if (sorteado < mercadoria.peso) {
                return mercadoria;
            }
            sorteado -= mercadoria.peso;
        }
        return Mercadorias().back();
    }

    int VendeItem(GeneratedCupom& compra)
    {
        const Mercadoria& mercadoria = EscolheMercadoria();
        const int casas = mercadoria.pesada ? 3 : 0;
        const std::int64_t quantidade = mercadoria.pesada ? m_sorteio.Entre(80, 2500) : Unidades();
        const bool arredonda = m_sorteio.PorMil(500);
        LineWriter linha = Linha(m_sorteio.PorMil(50) ? "vende_item_detalhado" : "vende_item");
        linha.Texto("codigo", CodigoDeBarras(mercadoria.codigo))
            .Texto("descricao", mercadoria.descricao)
            .Decimal("quantidade", quantidade, casas)
            .Texto("unidade", mercadoria.unidade);
        if (mercadoria.milesimos) {
            linha.Decimal("valor_unitario", mercadoria.preco, 3);
        } else {
            linha.Dinheiro("valor_unitario", mercadoria.preco / 10);
        }
        linha.Texto("tributacao", mercadoria.tributacao).Numero("indice", mercadoria.indice);
        if (arredonda) {
            linha.Sim("arredonda");
        }
        return compra.Vende(quantidade, casas, mercadoria.preco, arredonda);
    }

    std::int64_t Unidades()
    {
        switch (m_sorteio.Pesado({70, 18, 12})) {
        case 0:
            return 1;
        case 1:
            return 2;
        default:
            return m_sorteio.Entre(3, 12);
        }
    }

    // A discount or a surcharge, now and then taken back.
    void AjustaItem(GeneratedCupom& compra, int numero)
    {
        const std::int64_t base = compra.Item(numero).Liquido();
        if (base < 200) {
            return; // too little to take a percentage of
        }
        const bool desconto = m_sorteio.PorMil(850);
        const std::int64_t valor = Ajuste("efetua_desc_acres_item", desconto, base, numero);
        compra.Ajusta(numero, desconto, valor);
        if (m_sorteio.PorMil(60)) {
            Linha("cancela_desc_acres_item")
                .Texto("operacao", desconto ? "desconto" : "acrescimo")
                .Numero("item", numero);
            compra.CancelaAjuste(numero, desconto);
        }
    }

    void AjustaSubtotal(GeneratedCupom& compra)
    {
        const std::int64_t base = compra.Subtotal();
        if (base < 200) {
            return;
        }
        const bool desconto = m_sorteio.PorMil(850);
        const std::int64_t valor = Ajuste("efetua_desc_acres_subtotal", desconto, base, 0);
        compra.AjustaSubtotal(desconto, valor);
        if (m_sorteio.PorMil(60)) {
            Linha("cancela_desc_acres_subtotal")
                .Texto("operacao", desconto ? "desconto" : "acrescimo");
            compra.CancelaAjusteSubtotal();
        }
    }

    // Writes an adjustment of at most 10 % of `base`; answers what it comes to.
    std::int64_t Ajuste(const char* comando, bool desconto, std::int64_t base, int item)
    {
        LineWriter linha = Linha(comando);
        linha.Texto("operacao", desconto ? "desconto" : "acrescimo");
        std::int64_t valor = 0;
        if (m_sorteio.PorMil(500)) {
            const std::int64_t centesimos = m_sorteio.Entre(2, 20) * 50;
            linha.Texto("tipo", "percentual").Decimal("valor", centesimos, 2);
            valor = GeneratedCupom::Percentual(base, centesimos);
        } else {
            valor = m_sorteio.Entre(1, base / 10);
            linha.Texto("tipo", "valor").Dinheiro("valor", valor);
        }
        if (item > 0) {
            linha.Numero("item", item);
        }
        return valor;
    }

    // --- Payment and what follows the closing --------------------------------------------------

    // Pays a total; answers the means of the only payment, or of the card where there are two.
    int Paga(std::int64_t total)
    {
        m_dinheiro = 0;
        const int meios[] = {DINHEIRO, CREDITO, DEBITO, VALE, CHEQUE};
        const int meio = meios[m_sorteio.Pesado({45, 25, 20, 7, 3})];
        if (!DaTroco(meio) && total > 4000 && m_sorteio.PorMil(80)) {
            const std::int64_t cartao = total / 2;
            Pagamento(meio, cartao);
            PagaEmDinheiro(total - cartao);
        } else if (meio == DINHEIRO) {
            PagaEmDinheiro(total);
        } else {
            Pagamento(meio, total);
        }
        return meio;
    }

    // With the notes that a person would take out of the purse.
    void PagaEmDinheiro(std::int64_t total)
    {
        const std::int64_t notas[] = {1, 100, 500, 1000, 2000, 5000};
        const std::int64_t nota = notas[m_sorteio.Pesado({25, 20, 15, 15, 13, 12})];
        Pagamento(DINHEIRO, (total + nota - 1) / nota * nota);
        m_dinheiro = total;
        m_gaveta += total;
    }

    void Pagamento(int meio, std::int64_t valor)
    {
        LineWriter linha = Linha("efetua_pagamento");
        linha.Numero("meio", meio).Dinheiro("valor", valor);
        if (meio == CREDITO && m_sorteio.PorMil(200)) {
            linha.Numero("parcelas", m_sorteio.Entre(2, 6));
        }
        if (!DaTroco(meio)) {
            linha.Texto("info", "AUT " + std::to_string(m_sorteio.Entre(100000, 999999)));
        }
    }

    void Fecha()
    {
        LineWriter linha = Linha("fecha_cupom");
        std::string mensagem = MENSAGENS[m_sorteio.Ate(std::size(MENSAGENS))];
        if (m_sorteio.PorMil(40)) {
            mensagem = "CNPJ/CPF consumidor: " + PunctuatedCpf(DrawCpf(m_sorteio)) + " " + mensagem;
        }
        if (!mensagem.empty()) {
            linha.Texto("mensagem", mensagem);
        }
    }

    void Voucher(int meio)
    {
        Linha("abre_ccd").Numero("meio", meio);
        Documento();
        Linha("fecha_ccd_gerencial");
        if (m_sorteio.PorMil(10)) {
            Linha("abre_estorno_ccd");
            Documento();
            Linha("fecha_ccd_gerencial");
        }
    }

    void Estorna(int origem, int destino, std::int64_t valor)
    {
        Linha("estorna_meio_pagamento")
            .Numero("origem", origem)
            .Numero("destino", destino)
            .Dinheiro("valor", valor);
        Documento();
        m_gaveta += destino == DINHEIRO ? valor : 0;
    }

    // --- A non-fiscal receipt ------------------------------------------------------------------

    void GeraNaoFiscal()
    {
        {
            LineWriter linha = Linha("abre_cnf");
            Documento();
            if (m_sorteio.PorMil(300)) {
                linha.Texto("cpf_cnpj", DrawCpf(m_sorteio)).Texto("nome", DrawNome(m_sorteio));
            }
        }
        const bool recarga = m_sorteio.PorMil(600);
        const std::int64_t valor =
            recarga ? m_sorteio.Entre(2, 10) * 500 : m_sorteio.Entre(3000, 40000);
        Linha("vende_item_nf").Numero("totalizador", recarga ? 3 : 4).Dinheiro("valor", valor);
        m_dinheiro = 0;
        PagaEmDinheiro(valor);
        Linha("fecha_cupom_nf");
        if (m_sorteio.PorMil(20)) {
            Linha("cancela_cupom");
            Documento();
            m_gaveta -= m_dinheiro;
        }
    }

    const GeneratorOptions m_opcoes;
    std::ostream& m_saida;
    Draw m_sorteio;
    std::int64_t m_pesoTotal = 0;
    std::int64_t m_agora = 0;    // when the command written last starts
    std::int64_t m_em = 0;       // when the next one is to start, if it is to wait
    std::int64_t m_coo = 0;      // number of the document issued last
    std::int64_t m_gaveta = 0;   // cash in the till, cents
    std::int64_t m_dinheiro = 0; // cash that the last receipt brought
};

} // namespace

void GenerateTape(const GeneratorOptions& opcoes, std::ostream& saida)
{
    Gerador(opcoes, saida).GenerateTape();
}

} // namespace bancada
