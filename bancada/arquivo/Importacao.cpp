#include "bancada/arquivo/Importacao.h"

#include "bancada/arquivo/Importador.h"
#include "bancada/arquivo/Instante.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

namespace bancada::arquivo
{
namespace
{

using Json = nlohmann::ordered_json;

constexpr std::int64_t SECONDS_A_DAY = 86400;

std::int64_t Before(std::int64_t number)
{
    return number <= 0 ? 0 : number - 1;
}

std::string Cents(std::int64_t cents)
{
    std::string digits = std::to_string(cents);
    digits.insert(0, digits.size() < 3 ? 3 - digits.size() : 0, '0');
    return digits.insert(digits.size() - 2, ".");
}

// A lower bound of the first document's instant.
std::int64_t FirstInstant(ArquivoLido& arquivo)
{
    for (const std::int32_t coo : arquivo.Documentos()) {
        for (const char* type : {"E14", "E19"}) {
            if (arquivo.Has(type, coo)) {
                return SecondsOf(arquivo.Read(type, coo).front().Raw("data_abertura"));
            }
        }
        if (arquivo.Has("E16", coo)) {
            const Record record = arquivo.Read("E16", coo).front();
            return SecondsOf(record.Raw("data_fim"), record.Raw("hora_fim"));
        }
        const auto reducao = arquivo.Reducoes().find(coo);
        if (reducao != arquivo.Reducoes().end()) {
            return SecondsOf(reducao->second.Raw("data_emissao"),
                             reducao->second.Raw("hora_emissao"));
        }
    }
    return 1;
}

// The restart counter before the first document, where the owner was registered on its day or
// later: then that tells it.
std::optional<std::int64_t> CroDoCadastro(ArquivoLido& arquivo)
{
    if (arquivo.Small("E02").empty()) {
        return std::nullopt;
    }
    const Record& usuario = arquivo.Small("E02").front();
    const std::int64_t cadastro = SecondsOf(usuario.Raw("data_cadastro"));
    if (cadastro == 0 || cadastro + SECONDS_A_DAY <= FirstInstant(arquivo)) {
        return std::nullopt;
    }
    return usuario.Integer("cro");
}

// Goes from document to document.
class Walk
{
  public:
    explicit Walk(Importador& importing)
        : m_importing(importing), m_arquivo(importing.arquivo),
          m_documentos(importing.arquivo.Documentos()), m_intervencoes(m_arquivo.Small("E09")),
          m_fitas(m_arquivo.Small("E10"))
    {
        std::sort(m_intervencoes.begin(), m_intervencoes.end(),
                  [](const Record& a, const Record& b) { return TimeOf(a) < TimeOf(b); });
        FindReinicios();
    }

    void Run()
    {
        for (std::size_t i = 0; i < m_documentos.size(); ++i) {
            if (i > 0) {
                WriteMissing(i, leitura::Steps(m_documentos[i - 1], m_documentos[i]) - 1);
            }
            m_importing.numerosLivres = m_arquivo.FreeNumbers(i);
            m_importing.crzDoDia = CrzFrom(i);
            WriteDocumento(i, m_documentos[i]);
        }
        WriteMissing(m_documentos.size(), m_arquivo.NumbersBehind());
        for (; m_intervencao < m_intervencoes.size(); ++m_intervencao) {
            AddIntervencao(m_intervencoes[m_intervencao]);
        }
        for (; m_fita < m_fitas.size(); ++m_fita) {
            m_importing.Note("E10", "reprints for which no number is left");
        }
    }

    // What was sold on the first day before the file begins, in cents.
    std::int64_t AntesDoArquivo() const { return m_antesDoArquivo; }

  private:
    static std::int64_t TimeOf(const Record& intervencao)
    {
        return SecondsOf(intervencao.Raw("data"), intervencao.Raw("hora"));
    }

    bool IsCupom(std::int64_t coo) const
    {
        return m_arquivo.Has("E14", coo) || m_arquivo.Has("E19", coo);
    }
    bool IsReducao(std::int64_t coo) const
    {
        return m_arquivo.Reducoes().count(static_cast<std::int32_t>(coo)) != 0;
    }

    // The Z reduction that closes the day of a document; it is asked for from the first on.
    std::int64_t CrzFrom(std::size_t at)
    {
        for (m_reducaoAt = std::max(m_reducaoAt, at); m_reducaoAt < m_documentos.size();
             ++m_reducaoAt) {
            const auto found = m_arquivo.Reducoes().find(m_documentos[m_reducaoAt]);
            if (found != m_arquivo.Reducoes().end()) {
                return found->second.Integer("crz");
            }
        }
        return 0;
    }

    // How many of the numbers without a record, from the document on to the next one that tells
    // its GNF, moved that counter.
    std::int64_t MissingGnf(std::size_t at)
    {
        for (std::size_t i = at; i < m_documentos.size(); ++i) {
            std::int64_t gnf = 0;
            for (const char* type : {"E16", "E19"}) {
                if (m_arquivo.Has(type, m_documentos[i])) {
                    gnf =
                        std::max(gnf, m_arquivo.Read(type, m_documentos[i]).front().Integer("gnf"));
                }
            }
            if (gnf != 0) {
                return leitura::Steps(m_importing.gnf, gnf) - 1;
            }
        }
        const std::vector<Record>& contadores = m_arquivo.Small("E11");
        return contadores.empty()
                   ? 0
                   : leitura::Steps(m_importing.gnf, contadores.front().Integer("gnf"));
    }

    // The numbers before the document at `next` that have no record.
    void WriteMissing(std::size_t next, std::int64_t count)
    {
        for (; count > 0; --count) {
            if (!m_importing.pendentes.empty()) {
                WritePendente();
            } else if (m_importing.comprovantes > 0 && MissingGnf(next) > 0) {
                WriteEstornoCcd();
            } else if (m_fita < m_fitas.size() && IsDue(m_fitas[m_fita], next)) {
                WriteFita(m_fitas[m_fita++]);
            } else {
                // Any document keeps the numbers of those behind it.
                m_importing.Note("E16", "numbers of documents that no record tells of, taken by X "
                                        "readings of no record");
                m_importing.tape.Then("leitura_x");
            }
        }
    }

    void WritePendente()
    {
        const SemRegistro pendente = m_importing.pendentes.front();
        if (pendente.kind == SemRegistro::Kind::ESTORNO_PAGAMENTO) {
            m_importing.tape.Then("estorna_meio_pagamento")
                .Number("origem", pendente.origem)
                .Number("destino", pendente.destino)
                .Money("valor", pendente.valor);
            m_importing.meiosDoCupom.push_back(pendente.destino);
            ++m_importing.gnf;
        } else if (m_importing.comprovantes > 0) {
            WriteEstornoCcd();
            return;
        } else {
            m_importing.tape.Then("cancela_cupom");
        }
        m_importing.pendentes.pop_front();
    }

    void WriteEstornoCcd()
    {
        m_importing.tape.Then("abre_estorno_ccd");
        m_importing.tape.Then("fecha_ccd_gerencial");
        --m_importing.comprovantes;
        ++m_importing.gnf;
    }

    // A reprint has a date and no number of its own.
    bool IsDue(const Record& fita, std::size_t next)
    {
        const std::int64_t data = SecondsOf(fita.Raw("data"));
        if (data + SECONDS_A_DAY <= m_importing.tape.Now()) {
            return true;
        }
        if (next >= m_documentos.size()) {
            return true;
        }
        return data <= StartOf(m_documentos[next]);
    }

    // A lower bound of when the document began.
    std::int64_t StartOf(std::int64_t coo)
    {
        if (m_arquivo.Has("E14", coo)) {
            return SecondsOf(m_arquivo.Read("E14", coo).front().Raw("data_abertura"));
        }
        if (m_arquivo.Has("E16", coo)) {
            const Record record = m_arquivo.Read("E16", coo).front();
            return SecondsOf(record.Raw("data_fim"), record.Raw("hora_fim"));
        }
        return m_importing.tape.Now() + SECONDS_A_DAY;
    }

    void WriteFita(const Record& fita)
    {
        m_importing.tape
            .At("reimprime_mfd", std::max(m_importing.tape.Now(), SecondsOf(fita.Raw("data"))))
            .Number("coo_inicial", fita.Integer("coo_inicial"))
            .Number("coo_final", fita.Integer("coo_final"));
    }

    void WriteDocumento(std::size_t at, std::int64_t coo)
    {
        std::int64_t end = 0;
        std::string simbolo = m_arquivo.Simbolo(coo);
        if (!simbolo.empty()) {
            const Record record = m_arquivo.Read("E16", coo).front();
            end = SecondsOf(record.Raw("data_fim"), record.Raw("hora_fim"));
        }
        m_fim = end;
        if (at > 0) {
            // What a refusal left open must not refuse the rest.
            m_importing.tape.Then("cancela_aberto");
        }
        const std::int64_t before = m_importing.tape.Now();
        if (m_arquivo.Has("E14", coo)) {
            RequireNothingPending();
            WriteCupom(m_importing, at);
        } else if (m_arquivo.Has("E19", coo)) {
            RequireNothingPending();
            WriteCupomNf(m_importing, coo, end);
        } else if (IsReducao(coo) || simbolo == "RZ") {
            RequireNothingPending();
            WriteReducao(coo, end);
        } else {
            WriteOutro(at, simbolo, std::max(end, m_importing.tape.Now()));
        }
        if (end != 0 && end < before && m_importing.tape.Now() >= before) {
            m_importing.naoDito.AddField("E16", "data_fim, hora_fim",
                                         "before the end of the document before it");
        }
    }

    void RequireNothingPending()
    {
        if (!m_importing.pendentes.empty()) {
            m_importing.Note("E14", "cancellations or reversals for which no number is left");
            m_importing.pendentes.clear();
        }
    }

    void WriteReducao(std::int64_t coo, std::int64_t end)
    {
        std::int64_t em = std::max(end, m_importing.tape.Now());
        const auto reducao = m_arquivo.Reducoes().find(static_cast<std::int32_t>(coo));
        if (reducao != m_arquivo.Reducoes().end()) {
            const Record& record = reducao->second;
            em = std::max(m_importing.tape.Now(),
                          SecondsOf(record.Raw("data_emissao"), record.Raw("hora_emissao")));
            const std::int64_t venda = record.Integer("venda_bruta");
            if (m_first && venda > m_importing.vendaDoDia) {
                m_antesDoArquivo = venda - m_importing.vendaDoDia;
            } else if (venda != m_importing.vendaDoDia) {
                m_importing.naoDito.AddField("E12", "venda_bruta",
                                             "not what the receipts of the day come to");
            }
        }
        m_first = false;
        m_importing.vendaDoDia = 0;
        m_importing.tape.At("reducao_z", em, end);
    }

    void WriteOutro(std::size_t at, const std::string& simbolo, std::int64_t end)
    {
        TapeText& tape = m_importing.tape;
        if (simbolo == "LX") {
            WriteLeituraX(at, end);
        } else if (simbolo == "MF") {
            tape.At("leitura_mf", end);
        } else if (simbolo == "RG") {
            ++m_importing.gnf;
            tape.At("abre_gerencial", end);
            tape.Then("fecha_ccd_gerencial");
        } else if (simbolo == "CC") {
            ++m_importing.gnf;
            WriteComprovante(end);
        } else if (simbolo == "NC") {
            ++m_importing.gnf;
            tape.At("cancela_cupom", end);
        } else {
            m_importing.Note("E16", "documents " + simbolo + ", for which there is no command");
            tape.At("leitura_x", end);
        }
    }

    void WriteComprovante(std::int64_t end)
    {
        const std::vector<std::int64_t>& meios = m_importing.meiosDoCupom;
        int skip = m_importing.comprovantes;
        std::int64_t chosen = 0;
        for (const std::int64_t meio : meios) {
            if (m_importing.programacao.vinculado[static_cast<std::size_t>(meio) - 1] &&
                skip-- <= 0) {
                chosen = meio;
                break;
            }
        }
        if (chosen == 0) {
            m_importing.Note("E16", "vouchers of a payment that is not there");
            m_importing.tape.At("leitura_x", end);
            return;
        }
        ++m_importing.comprovantes;
        m_importing.tape.At("abre_ccd", end).Number("meio", chosen);
        m_importing.tape.Then("fecha_ccd_gerencial");
    }

    void WriteLeituraX(std::size_t at, std::int64_t end)
    {
        TapeText& tape = m_importing.tape;
        const std::int32_t coo = m_documentos[at];
        if (m_reinicios.count(coo) != 0) {
            WriteReinicio(tape.Now());
        } else if (m_intervencao < m_intervencoes.size() &&
                   (TimeOf(m_intervencoes[m_intervencao]) <= end || m_fim < tape.Now())) {
            const Record& record = m_intervencoes[m_intervencao++];
            WriteReinicio(std::max(tape.Now(), TimeOf(record)));
            if (record.Text("perda_dados") == "S") {
                AddIntervencao(record);
            }
        } else if (m_entradasL.count(coo) != 0) {
            tape.At("entrada_mil_interno", end);
        } else if (m_saidasL.count(coo) != 0) {
            tape.At("saida_mil_interno", end);
        } else {
            tape.At("leitura_x", end);
        }
    }

    // The clock may go back in an intervention.
    void WriteReinicio(std::int64_t em)
    {
        TapeText& tape = m_importing.tape;
        tape.At("entrada_mit_interno", em);
        if (m_fim != 0 && m_fim < tape.Now()) {
            tape.SetClock(m_fim);
        }
        tape.At("saida_mit_interno", std::max(tape.Now(), m_fim));
    }

    void AddIntervencao(const Record& record)
    {
        m_importing.fatos.intervencoes.push_back({record.Integer("cro"),
                                                  InstantText(TimeOf(record)),
                                                  record.Text("perda_dados") == "S"});
    }

    // A restart that no E09 tells of: its row was kept away by another of the same counter, which
    // entering mode L makes. Two X readings behind one another may be entering and leaving it.
    void FindReinicios()
    {
        std::set<std::int64_t> told;
        for (const Record& record : m_intervencoes) {
            told.insert(record.Integer("cro"));
        }
        std::int64_t cro = CroDoCadastro(m_arquivo).value_or(-1);
        std::vector<std::int32_t> leituras; // X readings since the last restart
        std::vector<std::int32_t> doDia;    // and since the last Z reduction
        for (const std::int32_t coo : m_documentos) {
            if (m_arquivo.Simbolo(coo) == "LX") {
                doDia.push_back(coo);
            }
            const auto reducao = m_arquivo.Reducoes().find(coo);
            if (reducao == m_arquivo.Reducoes().end()) {
                continue;
            }
            const std::int64_t present = reducao->second.Integer("cro");
            if (cro >= 0 && present != cro && told.count(present) == 0) {
                FindReinicio(leituras, doDia);
                leituras.clear();
            } else if (present != cro) {
                leituras.clear();
            }
            leituras.insert(leituras.end(), doDia.begin(), doDia.end());
            doDia.clear();
            cro = present;
        }
    }

    void FindReinicio(std::vector<std::int32_t> leituras, const std::vector<std::int32_t>& doDia)
    {
        if (doDia.empty()) {
            m_importing.Note("E12", "restarts for which there is no X reading");
            return;
        }
        m_reinicios.insert(doDia.back());
        leituras.insert(leituras.end(), doDia.begin(), doDia.end() - 1);
        for (std::size_t i = leituras.size(); i-- > 1;) {
            if (leitura::Steps(leituras[i - 1], leituras[i]) == 1) {
                m_entradasL.insert(leituras[i - 1]);
                m_saidasL.insert(leituras[i]);
                return;
            }
        }
        m_importing.Note("E09", "restarts without a record, which will have a row");
    }

    Importador& m_importing;
    ArquivoLido& m_arquivo;
    const std::vector<std::int32_t>& m_documentos;
    std::vector<Record> m_intervencoes;
    std::vector<Record> m_fitas;
    std::int64_t m_fim = 0;        // the end of the document at hand, as the file tells it
    std::size_t m_intervencao = 0; // the next one
    std::size_t m_fita = 0;
    std::size_t m_reducaoAt = 0;
    bool m_first = true; // the first Z reduction is still to come
    std::set<std::int32_t> m_reinicios, m_entradasL, m_saidasL;

    std::int64_t m_antesDoArquivo = 0;
};

// The first value of a counter, of the records in the order of the documents.
std::int64_t FirstOf(ArquivoLido& arquivo, std::initializer_list<const char*> types,
                     const char* field)
{
    for (const std::int32_t coo : arquivo.Documentos()) {
        for (const char* type : types) {
            if (arquivo.Has(type, coo)) {
                const std::int64_t number = arquivo.Read(type, coo).front().Integer(field);
                if (number != 0) {
                    return number;
                }
            }
        }
    }
    return 0;
}

std::int64_t Told(ArquivoLido& arquivo, const char* field)
{
    return arquivo.Small("E11").empty() ? 0 : arquivo.Small("E11").front().Integer(field);
}

// A counter before the first document: one less than the first that is told; the present one where
// none is.
std::int64_t CounterBefore(ArquivoLido& arquivo, std::initializer_list<const char*> types,
                           const char* field)
{
    const std::int64_t first = FirstOf(arquivo, types, field);
    if (first == 0) {
        return Told(arquivo, field);
    }
    return first == 1 && Told(arquivo, field) < first ? 0 : Before(first);
}

Json Contadores(ArquivoLido& arquivo)
{
    const std::vector<std::int32_t>& documentos = arquivo.Documentos();
    Json contadores;
    contadores["coo"] = documentos.empty() ? Told(arquivo, "coo") : Before(documentos.front());
    std::int64_t crz = Told(arquivo, "crz");
    std::int64_t cro = Told(arquivo, "cro");
    for (const std::int32_t coo : documentos) {
        const auto reducao = arquivo.Reducoes().find(coo);
        if (reducao != arquivo.Reducoes().end()) {
            crz = Before(reducao->second.Integer("crz"));
            cro = reducao->second.Integer("cro");
            for (const Record& intervencao : arquivo.Small("E09")) {
                const std::int64_t time =
                    SecondsOf(intervencao.Raw("data"), intervencao.Raw("hora"));
                const std::int64_t emissao = SecondsOf(reducao->second.Raw("data_emissao"),
                                                       reducao->second.Raw("hora_emissao"));
                cro -= time <= emissao && cro > 0 ? 1 : 0;
            }
            break;
        }
    }
    contadores["crz"] = crz;
    contadores["cro"] = CroDoCadastro(arquivo).value_or(cro);
    contadores["ccf"] = CounterBefore(arquivo, {"E14"}, "ccf");
    contadores["gnf"] = CounterBefore(arquivo, {"E16", "E19"}, "gnf");
    contadores["grg"] = CounterBefore(arquivo, {"E16"}, "grg");
    std::int64_t cdc = FirstOf(arquivo, {"E16"}, "cdc");
    contadores["cdc"] = Before(cdc);
    contadores["cfd"] = arquivo.Small("E10").empty()
                            ? Told(arquivo, "cfd")
                            : Before(arquivo.Small("E10").front().Integer("cfd"));
    return contadores;
}

Json Totalizadores(const std::map<std::int64_t, std::set<std::int64_t>>& aliquotas,
                   const char* letter, const std::vector<std::string>& especiais, bool issqn)
{
    Json json = Json::object();
    for (const auto& [numero, percentuais] : aliquotas) {
        json[letter + std::to_string(numero)] = {{"programado", true},
                                                 {"aliquota", Cents(*percentuais.begin())}};
    }
    for (const std::string& codigo : especiais) {
        if ((codigo.size() == 3) == issqn) {
            json[codigo] = {{"programado", true}};
        }
    }
    return json;
}

std::string MemoryText(Importador& importing, const Json& contadores, std::int64_t antes)
{
    const Programacao& programacao = importing.programacao;
    ArquivoLido& arquivo = importing.arquivo;
    std::int64_t gt = Told(arquivo, "gt");
    if (arquivo.Small("E11").empty() && !arquivo.Small("E02").empty()) {
        gt = arquivo.Small("E02").front().Integer("gt");
    }
    gt -= importing.registrado;
    if (gt < 0) {
        importing.naoDito.AddField("E11", "gt", "less than the receipts come to");
        gt = 0;
    }
    Json registro;
    registro["contadores"] = contadores;
    registro["gt"] = Cents(gt);
    registro["gt_ultima_rz"] = Cents(gt - std::min(gt, antes));
    registro["fiscal"]["icms"]["totalizadores"] =
        Totalizadores(programacao.icms, "T", programacao.especiais, false);
    registro["fiscal"]["issqn"]["totalizadores"] =
        Totalizadores(programacao.issqn, "S", programacao.especiais, true);
    if (!arquivo.Small("E07").empty()) {
        const Record* first = &arquivo.Small("E07").front();
        for (const Record& record : arquivo.Small("E07")) {
            first = record.Raw("data") < first->Raw("data") ? &record : first;
        }
        registro["ecf"]["versao_sb"] = first->Text("versao_sb");
    } else if (!arquivo.Small("E01").empty()) {
        registro["ecf"]["versao_sb"] = arquivo.Small("E01").front().Text("versao_sb");
    }
    const Json memory = {{"formato", "ecf-bancada memoria"}, {"versao", 1}, {"registro", registro}};
    return memory.dump(4) + "\n";
}

} // namespace

ImportResult Import(const std::string& path, std::ostream& tape, std::ostream& notes)
{
    Importador importing(path, tape);
    importing.programacao = FindProgramacao(importing.arquivo);
    importing.fatos = FindFatos(importing.arquivo);
    for (const auto& [numero, percentuais] : importing.programacao.icms) {
        importing.aliquotas["T" + std::to_string(numero)] = *percentuais.begin();
    }
    for (const auto& [numero, percentuais] : importing.programacao.issqn) {
        importing.aliquotas["S" + std::to_string(numero)] = *percentuais.begin();
    }
    const Json contadores = Contadores(importing.arquivo);
    importing.gnf = contadores["gnf"].get<std::int64_t>();
    WriteProgramacao(importing, FirstInstant(importing.arquivo));
    Walk walk(importing);
    walk.Run();
    ImportResult result;
    result.memory = MemoryText(importing, contadores, walk.AntesDoArquivo());
    result.fatos = importing.fatos;
    importing.naoDito.Print(notes);
    return result;
}

} // namespace bancada::arquivo
