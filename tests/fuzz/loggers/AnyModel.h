// A fiscal data model of any answers. The same question gets the same answer for as long as the
// model lives, whoever asks.
#pragma once

#include "FiscalData/FiscalDataController.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <vector>

class AnyModel final : public FiscalDataController
{
  public:
    static constexpr int BASE64_SIZE = 45; // its 44 characters and the terminator

    explicit AnyModel(FuzzedDataProvider& data)
        : m_seed(data.ConsumeIntegral<std::uint32_t>()),
          m_tipo(data.ConsumeIntegralInRange<std::int32_t>(-1, 2)),
          m_itens(data.ConsumeIntegralInRange(0, 999)),
          m_meios(data.ConsumeIntegralInRange(-1, 22)),
          m_rateados(data.ConsumeIntegralInRange(-2, 12)), m_texts(3), m_numbers(4)
    {
        for (std::string& text : m_texts) {
            text = data.ConsumeRandomLengthString(600);
            text.erase(std::min(text.find('\0'), text.size()));
        }
        for (BigInt& number : m_numbers) {
            for (UINT32& word : number.number) {
                word = data.ConsumeIntegral<UINT32>();
            }
        }
        if (data.ConsumeBool()) {
            m_lent = std::string(data.ConsumeIntegralInRange<std::size_t>(0, 3000), 'L');
        }
        m_movimento = RtcAbsoluteTime(data.PickValueInArray<UINT32>({0, matlong[0], 1772409600}));
    }

    int Contador_Get(FISCALDATA_COUNTER_INDEX contador) override { return Number(1, contador); }
    int Cupom_GetCOO() override { return Number(2); }
    int Cupom_GetQuantidadeDeItens() override { return m_itens; }
    char* Cupom_GetItemQtdeStr(int item, char* out, int size) override
    {
        return Put(3, item, out, size);
    }
    char* Cupom_GetItemValorUnitarioStr(int item, char* out, int size) override
    {
        return Put(4, item, out, size);
    }
    Financial Cupom_GetItemValorTotal(int item) override { return Money(5, item); }
    Financial Cupom_GetItemValorAcr(int item) override { return Money(6, item); }
    Financial Cupom_GetItemValorDesc(int item) override { return Money(7, item); }
    Financial Cupom_GetSubTotal() override { return Money(8); }
    Financial Cupom_GetTotal() override { return Money(9); }
    Financial Cupom_GetTroco() override { return Money(10); }
    BOOL Cupom_GetSTAcrAplicado() override { return Flag(11); }
    BOOL Cupom_GetSTDescAplicado() override { return Flag(12); }
    Financial Cupom_GetSTValorDescAcr() override { return Money(13); }
    Financial Cupom_GetSTValorCanceladoDescAcr() override { return Money(14); }
    FD_TIPO_CUPOM Cupom_GetTipoCupom() override { return static_cast<FD_TIPO_CUPOM>(m_tipo); }
    BOOL Cupom_GetRateioPorItem(Cupom* copy) override
    {
        copy->m_iQuantidadeDeItens = m_rateados;
        for (int i = 0; i < std::min(m_rateados, Cupom::MAX_ITENS); ++i) {
            copy->m_Itens[i].m_finValorTotal = Money(15, i);
            copy->m_Itens[i].m_finValorDesc = Money(16, i);
            copy->m_Itens[i].m_finValorAcr = Money(17, i);
        }
        return Flag(18);
    }
    char* CFe_GetChaveDeBusca(char* out, int size) override { return Put(19, 0, out, size); }
    int AssinaturaDigital_GetBase64(char* out, char*) override
    {
        return static_cast<int>(std::strlen(Put(20, 0, out, BASE64_SIZE)));
    }
    char* DadosPDV_GetIdAplicativo(char* out, int size) override { return Put(21, 0, out, size); }
    int BaseFormasPagamento_GetNumeroDeFormasDePagamento() override { return m_meios; }
    char* BaseFormasPagamento_GetMeioPagamento(int index, char* out, int size) override
    {
        return Put(22, index, out, size);
    }
    BOOL BaseFormasPagamento_GetMeioPagamentoProgramado(int index) override
    {
        return Flag(23, index);
    }
    Financial BaseFormasPagamento_GetFPTotal(int index) override { return Money(24, index); }
    Financial BaseFormasPagamento_GetTrocoTotal() override { return Money(25); }
    Financial Totalizador_GetGT() override { return Money(26); }
    Financial Totalizador_GetGTIni(int ponto) override { return Money(27, ponto); }
    Financial Totalizador_GetVB(int base) override { return Money(28, base); }
    Financial Totalizador_GetTot(int base, int taxBase, int index) override
    {
        return Money(29, base, taxBase, index);
    }
    Financial Totalizador_GetTotTrib(int base, int taxBase, int index) override
    {
        return Money(30, base, taxBase, index);
    }
    int Totalizador_GetTotPercTrib(int base, int taxBase, int index) override
    {
        return Number(31, base, taxBase, index);
    }
    BOOL Totalizador_GetTotProgramado(int base, int taxBase, int index) override
    {
        return Flag(32, base, taxBase, index);
    }
    Financial Totalizador_GetSoma_Tot_VL(int base, int taxBase) override
    {
        return Money(33, base, taxBase);
    }
    Financial Totalizador_GetSoma_Tot_Canc(int base, int taxBase) override
    {
        return Money(34, base, taxBase);
    }
    Financial Totalizador_GetSoma_Tot_Desc(int base, int taxBase) override
    {
        return Money(35, base, taxBase);
    }
    Financial Totalizador_GetSoma_Tot_Acr(int base, int taxBase) override
    {
        return Money(36, base, taxBase);
    }
    Financial Totalizador_GetSoma_TotTrib(int base, int taxBase) override
    {
        return Money(37, base, taxBase);
    }
    Financial Totalizador_GetTotalNF(int base, int index) override
    {
        return Money(38, base, index);
    }
    int Totalizador_GetTotNFProgramado(int base, int index) override
    {
        return Number(39, base, index);
    }
    char* Totalizador_GetNomeNF(int, int index, char* out, int size) override
    {
        return Put(40, index, out, size);
    }
    int ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, char* code,
                        int number) override
    {
        return Number(41, taxBase, code[0], number);
    }
    RtcAbsoluteTime Jornada_GetDataMovimento() override { return m_movimento; }
    RtcRelativeTime Jornada_GetTempoOperacional(RtcAbsoluteTime ate) override
    {
        return {Hash(42, static_cast<int>(ate.s % 1000), 0, 0)};
    }
    RtcRelativeTime Jornada_GetTempoEmitindoDocFiscal() override { return {Hash(43, 0, 0, 0)}; }
    // The texts that a model may have at hand: null, or longer than the array that is offered.
    char* DadosContribuinte_GetRazaoSocial(char* out, int size) override
    {
        return Lend(44, out, size);
    }
    char* DadosContribuinte_GetNomeFantasia(char* out, int size) override
    {
        return Lend(45, out, size);
    }
    char* DadosContribuinte_GetEndereco(char* out, int size) override
    {
        return Lend(46, out, size);
    }
    char* DadosECF_GetVersaoSB(char* out, int size) override { return Lend(47, out, size); }
    char* DadosECF_GetNrOrdemSeq(char* out, int size) override { return Put(48, 0, out, size); }

  private:
    std::uint32_t Hash(int question, int a, int b, int c) const
    {
        std::uint32_t hash = m_seed;
        for (const int part : {question, a, b, c}) {
            hash = (hash ^ static_cast<std::uint32_t>(part)) * 2654435761u;
            hash ^= hash >> 15;
        }
        return hash;
    }

    // Any number that can have a successor; small ones and the last ones as often as others.
    int Number(int question, int a = 0, int b = 0, int c = 0) const
    {
        const std::uint32_t hash = Hash(question, a, b, c);
        switch (hash % 4) {
        case 0:
            return static_cast<int>(hash / 4 % 3) - 1;
        case 1:
            return INT32_MAX - 1 - static_cast<int>(hash / 4 % 2);
        case 2:
            return static_cast<int>(hash / 4 % 1000000);
        default:
            return INT32_MIN + static_cast<int>(hash / 2);
        }
    }

    BOOL Flag(int question, int a = 0, int b = 0, int c = 0) const
    {
        return static_cast<BOOL>(Hash(question, a, b, c) % 3);
    }

    Financial Money(int question, int a = 0, int b = 0, int c = 0) const
    {
        const std::uint32_t hash = Hash(question, a, b, c);
        return hash % 2 == 0 ? Financial(m_numbers[hash / 2 % m_numbers.size()])
                             : Financial::FromCents(static_cast<int>(hash) / 64);
    }

    char* Put(int question, int a, char* out, int size) const
    {
        const std::string& text = m_texts[Hash(question, a, 0, 0) % m_texts.size()];
        const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
        std::memcpy(out, text.data(), length);
        out[length] = '\0';
        return out;
    }

    char* Lend(int question, char* out, int size)
    {
        switch (Hash(question, 0, 0, 0) % 4) {
        case 0:
            return nullptr;
        case 1:
            return m_lent.data();
        default:
            return Put(question, 0, out, size);
        }
    }

    std::uint32_t m_seed;
    std::int32_t m_tipo;
    int m_itens;
    int m_meios;
    int m_rateados;
    std::vector<std::string> m_texts;
    std::vector<BigInt> m_numbers;
    std::string m_lent;
    RtcAbsoluteTime m_movimento;
};
