#include "bancada/conferencia/Chaves.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Query.h"

#include <algorithm>
#include <cstdio>

namespace bancada::conferencia
{
namespace
{

constexpr std::size_t CNPJ_SIZE = 14;
const char* const END_OF_TIME = "9999-12-31 23:59:59";
constexpr std::size_t TAIL_SIZE = 16; // "-yyyymmdd-000120"

bool AreDigits(const std::string& text, std::size_t begin, std::size_t size)
{
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(begin),
                       text.begin() + static_cast<std::ptrdiff_t>(begin + size),
                       [](char c) { return c >= '0' && c <= '9'; });
}

std::string Tail(const leitura::CupomFiscalRow& cupom)
{
    std::string day = cupom.dataHoraEmissao.Value().substr(0, 10);
    day.erase(std::remove(day.begin(), day.end(), '-'), day.end());
    char coo[32];
    std::snprintf(coo, sizeof coo, "%06lld", static_cast<long long>(cupom.coo.Value()));
    return "-" + day + "-" + coo;
}

} // namespace

Chaves::Chaves(const leitura::DatabaseReading& database)
{
    leitura::Query owner(database,
                         "SELECT coalesce((SELECT cnpj FROM dados_usuario WHERE"
                         " typeof(cnpj) = 'text' ORDER BY rowid LIMIT 1),"
                         " '00000000000000') || '-' || coalesce((SELECT num_serie FROM"
                         " dados_ecf ORDER BY rowid LIMIT 1), '') AS prefix, EXISTS (SELECT 1"
                         " FROM dados_usuario) AND EXISTS (SELECT 1 FROM dados_ecf) AS"
                         " whole");
    if (owner.Next()) {
        m_programmed = owner.ReadText("prefix").Value();
        m_isProgrammed = owner.ReadInteger("whole").Value() == 1;
    }
    leitura::Query keys(database, "SELECT chave_cupom FROM cupom_fiscal WHERE trim(chave_cupom) <>"
                                  " '' LIMIT 100");
    int own = 0;
    int others = 0;
    while (keys.Next()) {
        ++(PrefixOf(keys.ReadText("chave_cupom").Value()).empty() ? others : own);
    }
    m_known = own > others;
}

std::string Chaves::PrefixOf(const std::string& key)
{
    if (key.size() < CNPJ_SIZE + 1 + TAIL_SIZE || key[CNPJ_SIZE] != '-' ||
        !AreDigits(key, 0, CNPJ_SIZE)) {
        return {};
    }
    const std::size_t tail = key.size() - TAIL_SIZE;
    const bool formed = key[tail] == '-' && AreDigits(key, tail + 1, 8) && key[tail + 9] == '-' &&
                        AreDigits(key, tail + 10, 6);
    return formed ? key.substr(0, tail) : std::string();
}

std::string Chaves::OwnPrefixOf(const std::string& key) const
{
    const std::string own = PrefixOf(key);
    return own.empty() ? m_programmed : own;
}

void Chaves::Report(FindingReport& findings, const leitura::CupomFiscalRow& cupom,
                    const std::string& expected, const std::string& text) const
{
    findings.Report(
        FindingKind::CUPOM_CHAVE, Coo(cupom.coo), text, DocumentOf(cupom.coo.Value()),
        {"cupom_fiscal", cupom.rowid, "chave_cupom", expected, cupom.chaveCupom.Shown()});
}

void Chaves::Check(FindingReport& findings, const leitura::CupomFiscalRow& cupom)
{
    if (!m_known) {
        return;
    }
    const std::string& key = cupom.chaveCupom.Value();
    const std::string prefix = PrefixOf(key);
    const std::string tail = Tail(cupom);
    if (prefix.empty() || key.substr(prefix.size()) != tail) {
        Report(findings, cupom, m_programmed + tail,
               Tr("key %1, the receipt's ends with %2", {cupom.chaveCupom.Shown(), tail}));
        return;
    }
    if (m_waits) {
        Decide(findings, prefix);
    }
    m_last = prefix;
    m_lastHora = cupom.dataHoraEmissao.Value();
    if (prefix == m_programmed || prefix == m_before) {
        m_before = prefix;
        return;
    }
    m_waiting = cupom;
    m_waits = true;
}

void Chaves::End(FindingReport& findings, const Acertos& relogio, bool beginsAtFactory)
{
    if (m_waits) {
        Decide(findings, {});
    }
    // Owner and register are programmed once; of a database that was begun later another one tells.
    if (!beginsAtFactory && !m_isProgrammed) {
        return;
    }
    // The keys write a CNPJ that is not programmed as zeros.
    if (!m_last.empty() && m_last != m_programmed &&
        !relogio.MayBeWithin(m_lastHora, END_OF_TIME)) {
        findings.Report(FindingKind::PROGRAMACAO, "dados_ecf, dados_usuario",
                        Tr("owner and register %1, the last key says %2, and no intervention since",
                           {m_programmed, m_last}),
                        {}, {"dados_ecf", 0, "num_serie", m_last, m_programmed});
    }
}

void Chaves::Decide(FindingReport& findings, const std::string& next)
{
    const std::string prefix = PrefixOf(m_waiting.chaveCupom.Value());
    // The first one may be the only one of its owner.
    if (prefix != next && !m_before.empty()) {
        Report(findings, m_waiting, m_programmed + Tail(m_waiting),
               Tr("key of %1, and neither the programming nor a receipt before or behind says so",
                  {prefix}));
    } else {
        m_before = prefix;
    }
    m_waits = false;
}

} // namespace bancada::conferencia
