// From document to document: the lines that replay them.
#include "bancada/Messages.h"
#include "bancada/arquivo/Coerencia.h"
#include "bancada/arquivo/Contadores.h"
#include "bancada/arquivo/ImportaCupom.h"
#include "bancada/arquivo/Instante.h"
#include "bancada/arquivo/Reinicios.h"
#include "bancada/leitura/Counter.h"

#include <algorithm>
#include <limits>

namespace bancada::arquivo
{
namespace
{

constexpr std::int64_t SECONDS_A_DAY = 86400;
constexpr std::size_t NONE = std::numeric_limits<std::size_t>::max();

class Percurso
{
  public:
    explicit Percurso(Importador& importing)
        : m_importing(importing), m_arquivo(importing.arquivo),
          m_documentos(importing.arquivo.Documentos()),
          m_intervencoes(IntervencoesInOrder(m_arquivo)), m_fitas(m_arquivo.Small("E10")),
          m_reinicios(FindReinicios(importing))
    {
        FindPrazos();
    }

    void Run()
    {
        for (std::size_t i = 0; i < m_documentos.size(); ++i) {
            if (i > 0) {
                WriteMissing(i, leitura::Steps(m_documentos[i - 1], m_documentos[i]) - 1);
            }
            m_importing.livres = m_arquivo.FreeNumbers(i);
            m_importing.crzDoDia = CrzFrom(i);
            m_importing.proximaHora = HoraFrom(i);
            WriteDocumento(i, m_documentos[i]);
        }
        WriteMissing(m_documentos.size(), m_arquivo.NumbersBehind());
        for (; m_intervencao < m_intervencoes.size(); ++m_intervencao) {
            AddIntervencao(m_intervencoes[m_intervencao]);
        }
        if (m_importing.cadastroEm) {
            m_importing.naoDito.AddField("E02", "data_cadastro, hora_cadastro",
                                         Tr("in an intervention that no document tells of"));
        }
        for (; m_fita < m_fitas.size(); ++m_fita) {
            m_importing.Note("E10", Tr("reprints for which no number is left"));
        }
    }

    // What was sold on the first day before the file begins, in cents.
    std::int64_t AntesDoArquivo() const { return m_antesDoArquivo; }

  private:
    // The last X reading that can be that of leaving each intervention, as counters tell it; none
    // before the first document.
    void FindPrazos()
    {
        const auto shows = [](std::int64_t cro, const Record& intervencao) {
            return !leitura::ComesBefore(cro, intervencao.Integer("cro"));
        };
        while (m_intervencao < m_intervencoes.size() &&
               shows(m_importing.contadores["cro"], m_intervencoes[m_intervencao])) {
            AddIntervencao(m_intervencoes[m_intervencao++]);
        }
        // Which document is the first that shows each one's counter, then which reading is before.
        m_prazos.assign(m_intervencoes.size(), NONE);
        std::size_t shown = m_intervencao;
        const auto show = [&](std::int64_t cro, std::size_t at) {
            for (; shown < m_prazos.size() && shows(cro, m_intervencoes[shown]); ++shown) {
                m_prazos[shown] = at;
            }
        };
        for (std::size_t at = 0; at < m_documentos.size(); ++at) {
            const auto reducao = m_arquivo.Reducoes().find(m_documentos[at]);
            if (reducao != m_arquivo.Reducoes().end()) {
                show(reducao->second.Integer("cro"), at);
            }
        }
        if (!m_arquivo.Small("E11").empty()) {
            show(m_arquivo.Small("E11").front().Integer("cro"), m_documentos.size());
        }
        std::size_t next = m_documentos.size();
        for (std::size_t i = shown; i-- > m_intervencao;) {
            next = std::min(next, m_prazos[i]);
            while (next > 0 && !IsLeituraX(next - 1)) {
                --next;
            }
            m_prazos[i] = next == 0 ? NONE : --next;
        }
    }

    // An X reading that no restart without a record takes.
    bool IsLeituraX(std::size_t at) const
    {
        const std::int32_t coo = m_documentos[at];
        return m_arquivo.Simbolo(coo) == "LX" && m_reinicios.reinicios.count(coo) == 0 &&
               m_reinicios.entradasL.count(coo) == 0 && m_reinicios.saidasL.count(coo) == 0;
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

    // The first time that documents tell from one on; 0: none. It is asked for from the first on.
    std::int64_t HoraFrom(std::size_t at)
    {
        if (m_hora == 0 || m_horaAt < at) {
            m_hora = 0;
            for (m_horaAt = std::max(m_horaAt, at); m_horaAt < m_documentos.size(); ++m_horaAt) {
                m_hora = EndAt(m_arquivo, m_documentos[m_horaAt]);
                if (m_hora != 0) {
                    break;
                }
            }
        }
        return m_hora;
    }

    // The first document from one on that is a receipt or a Z reduction.
    std::size_t NextCupom(std::size_t at) const
    {
        for (; at < m_documentos.size(); ++at) {
            const std::int32_t coo = m_documentos[at];
            if (m_arquivo.Has("E14", coo) || m_arquivo.Has("E19", coo) || IsReducao(coo)) {
                break;
            }
        }
        return at;
    }

    // The GNF that a document's records tell; 0: none.
    std::int64_t GnfAt(std::size_t at)
    {
        std::int64_t gnf = 0;
        for (const char* type : {"E16", "E19"}) {
            if (m_arquivo.Has(type, m_documentos[at])) {
                gnf = std::max(gnf, m_arquivo.Read(type, m_documentos[at]).front().Integer("gnf"));
            }
        }
        return gnf;
    }

    // How many of the numbers without a record, from the document on to the first not before
    // `until` that tells its GNF, moved that counter.
    std::int64_t MissingGnf(std::size_t at, std::size_t until)
    {
        const std::int64_t present = m_importing.contadores["gnf"];
        std::int64_t moved = 0; // by documents with a record
        for (; at < m_documentos.size(); ++at) {
            const std::int64_t gnf = GnfAt(at);
            moved += gnf != 0 ? 1 : 0;
            if (gnf != 0 && at >= until) {
                return leitura::Steps(present, gnf) - moved;
            }
        }
        const std::vector<Record>& contadores = m_arquivo.Small("E11");
        return contadores.empty()
                   ? 0
                   : leitura::Steps(present, contadores.front().Integer("gnf")) - moved;
    }

    // The numbers before the document at `next` that have no record.
    void WriteMissing(std::size_t next, std::int64_t count)
    {
        m_importing.proximaHora = HoraFrom(next);
        for (; count > 0; --count, --m_importing.livres.numeros) {
            if (m_importing.comprovantes.AnyOpen() && IsEstornoCcd(next)) {
                WriteEstornoCcd();
            } else if (!m_importing.pendentes.empty()) {
                WritePendente();
            } else if (m_fita < m_fitas.size() && IsDue(m_fitas[m_fita], next)) {
                WriteFita(m_fitas[m_fita++]);
            } else {
                // Any document keeps the numbers of those behind it.
                m_importing.Note("E16",
                                 Tr("numbers of documents that no record tells of, taken by X "
                                    "readings of no record"));
                m_importing.tape.Then("leitura_x");
            }
        }
    }

    std::vector<EstornoLido> EstornosPendentes() const
    {
        std::vector<EstornoLido> estornos;
        for (const SemRegistro& one : m_importing.pendentes) {
            if (one.kind == SemRegistro::Kind::ESTORNO_PAGAMENTO) {
                estornos.push_back(one.estorno);
            }
        }
        return estornos;
    }

    // Whether a number before the document at `next` is that of a voucher's reversal: where what is
    // due waits for it, and where numbers and GNF are left when all that is due has its own.
    bool IsEstornoCcd(std::size_t next)
    {
        const std::deque<SemRegistro>& pendentes = m_importing.pendentes;
        if (!pendentes.empty()) {
            const SemRegistro& due = pendentes.front();
            if (due.kind == SemRegistro::Kind::CANCELAMENTO ||
                !m_importing.comprovantes.MayMove(due.estorno)) {
                return true;
            }
        }
        const auto estornos = static_cast<std::int64_t>(EstornosPendentes().size());
        return m_importing.livres.numeros > pendentes.size() && MissingGnf(next, next) > 0 &&
               MissingGnf(next, NextCupom(next)) > estornos;
    }

    void WritePendente()
    {
        const SemRegistro pendente = m_importing.pendentes.front();
        if (pendente.kind == SemRegistro::Kind::ESTORNO_PAGAMENTO) {
            WriteEstorno(m_importing, pendente.estorno);
            m_importing.Count("gnf");
        } else {
            m_importing.tape.Then("cancela_cupom");
        }
        m_importing.pendentes.pop_front();
    }

    void WriteEstornoCcd()
    {
        m_importing.tape.Then("abre_estorno_ccd");
        m_importing.tape.Then("fecha_ccd_gerencial");
        m_importing.comprovantes.Reverse();
        m_importing.Count("gnf");
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

    // Behind the document before it, where there is room: of two of one second no row tells which
    // came first.
    void WriteFita(const Record& fita)
    {
        std::int64_t em = BeginOf(m_importing, SecondsOf(fita.Raw("data")));
        const bool isOfDay = (em + 1) / SECONDS_A_DAY == em / SECONDS_A_DAY;
        em += isOfDay && em < m_importing.proximaHora ? 1 : 0;
        HoldFita(m_importing, fita, m_importing.Count("cfd"), em);
        m_importing.tape.At("reimprime_mfd", em)
            .Number("coo_inicial", fita.Integer("coo_inicial"))
            .Number("coo_final", fita.Integer("coo_final"));
    }

    void WriteDocumento(std::size_t at, std::int64_t coo)
    {
        std::int64_t end = 0;
        std::string simbolo;
        Record record;
        const bool told = m_arquivo.Has("E16", coo);
        if (told) {
            record = m_arquivo.Read("E16", coo).front();
            simbolo = record.Text("simbolo");
            end = SecondsOf(record.Raw("data_fim"), record.Raw("hora_fim"));
        }
        m_fim = end;
        if (at > 0) {
            // What a refusal left open must not refuse the rest.
            m_importing.tape.Then("cancela_aberto");
        }
        const std::int64_t before = m_importing.tape.Now();
        OutroNumeros numeros;
        if (m_arquivo.Has("E14", coo)) {
            RequireNothingPending();
            WriteCupom(m_importing, at);
        } else if (m_arquivo.Has("E19", coo)) {
            RequireNothingPending();
            WriteCupomNf(m_importing, coo, end);
            numeros = {"CN", m_importing.contadores["gnf"]};
        } else if (IsReducao(coo) || simbolo == "RZ") {
            RequireNothingPending();
            numeros = {"RZ", 0, 0, 0, m_importing.Count("crz")};
            WriteReducao(coo, end);
        } else {
            numeros = WriteOutro(at, simbolo, std::max(end, m_importing.tape.Now()));
        }
        if (told) {
            HoldOutro(m_importing, record, numeros);
        }
        if (told && end < before && m_importing.tape.Now() >= before) {
            m_importing.naoDito.AddField("E16", "data_fim, hora_fim",
                                         Tr("before the end of the document before it"));
        }
    }

    void RequireNothingPending()
    {
        if (!m_importing.pendentes.empty()) {
            m_importing.Note("E14", Tr("cancellations or reversals for which no number is left"));
            m_importing.pendentes.clear();
        }
    }

    void WriteReducao(std::int64_t coo, std::int64_t end)
    {
        std::int64_t em = std::max(end, m_importing.tape.Now());
        const auto reducao = m_arquivo.Reducoes().find(static_cast<std::int32_t>(coo));
        if (reducao != m_arquivo.Reducoes().end()) {
            const Record& record = reducao->second;
            HoldReducao(m_importing, record);
            em = std::max(m_importing.tape.Now(),
                          SecondsOf(record.Raw("data_emissao"), record.Raw("hora_emissao")));
            const std::int64_t venda = record.Integer("venda_bruta");
            if (m_first && venda > m_importing.vendaDoDia) {
                m_antesDoArquivo = venda - m_importing.vendaDoDia;
            } else if (venda != m_importing.vendaDoDia) {
                m_importing.naoDito.AddField("E12", "venda_bruta",
                                             Tr("not what the receipts of the day come to"));
            }
        }
        m_first = false;
        m_importing.vendaDoDia = 0;
        m_importing.movimento = 0;
        m_importing.tape.At("reducao_z", em, end);
    }

    OutroNumeros WriteOutro(std::size_t at, const std::string& simbolo, std::int64_t end)
    {
        TapeText& tape = m_importing.tape;
        OutroNumeros numeros;
        numeros.simbolo = simbolo;
        if (simbolo == "LX") {
            WriteLeituraX(at, end);
        } else if (simbolo == "MF") {
            tape.At("leitura_mf", end);
        } else if (simbolo == "RG") {
            numeros.gnf = m_importing.Count("gnf");
            numeros.grg = m_importing.Count("grg");
            tape.At("abre_gerencial", end);
            tape.Then("fecha_ccd_gerencial");
        } else if (simbolo == "CC") {
            WriteComprovante(end, numeros);
        } else if (simbolo == "NC") {
            numeros.gnf = m_importing.Count("gnf");
            tape.At("cancela_cupom", end);
        } else {
            m_importing.Note("E16", Tr("documents %1, for which there is no command", {simbolo}));
            numeros.simbolo = "LX";
            tape.At("leitura_x", end);
        }
        return numeros;
    }

    void WriteComprovante(std::int64_t end, OutroNumeros& numeros)
    {
        const std::int64_t chosen =
            m_importing.comprovantes.Open(m_importing.programacao.vinculado, EstornosPendentes());
        if (chosen == 0) {
            m_importing.Note("E16", Tr("vouchers of a payment that is not there"));
            numeros.simbolo = "LX";
            m_importing.tape.At("leitura_x", end);
            return;
        }
        numeros.gnf = m_importing.Count("gnf");
        numeros.cdc = m_importing.Count("cdc");
        m_importing.tape.At("abre_ccd", end).Number("meio", chosen);
        m_importing.tape.Then("fecha_ccd_gerencial");
    }

    void WriteLeituraX(std::size_t at, std::int64_t end)
    {
        TapeText& tape = m_importing.tape;
        const std::int32_t coo = m_documentos[at];
        if (m_reinicios.reinicios.count(coo) != 0) {
            EnterMit(tape.Now());
            LeaveMit();
            return;
        }
        if (m_saida == NONE && m_intervencao < m_intervencoes.size() &&
            (TimeOf(m_intervencoes[m_intervencao]) <= end || m_fim < tape.Now() ||
             m_prazos[m_intervencao] == at)) {
            WriteIntervencao(m_intervencoes[m_intervencao++]);
            m_saida = FindSaida(at);
        }
        if (m_saida == at) {
            LeaveMit();
            m_saida = NONE;
        } else if (m_reinicios.entradasL.count(coo) != 0) {
            tape.At("entrada_mil_interno", end);
        } else if (m_reinicios.saidasL.count(coo) != 0) {
            tape.At("saida_mil_interno", end);
        } else {
            tape.At("leitura_x", end);
        }
    }

    // Which X reading leaving the intervention prints, of this one and those right behind it: that
    // at which the clock went back, where one did before the next intervention; else this one.
    std::size_t FindSaida(std::size_t at)
    {
        const std::size_t behind = m_intervencao < m_intervencoes.size()
                                       ? std::min(m_prazos[m_intervencao], m_documentos.size())
                                       : m_documentos.size();
        std::int64_t end = m_fim;
        for (std::size_t i = at + 1; end >= m_importing.tape.Now() && i < behind && IsLeituraX(i);
             ++i) {
            const std::int64_t next = EndAt(m_arquivo, m_documentos[i]);
            if (next < end) {
                return i;
            }
            end = next;
        }
        return at;
    }

    void WriteIntervencao(const Record& record)
    {
        const std::int64_t em = std::max(m_importing.tape.Now(), TimeOf(record));
        EnterMit(em);
        HoldIntervencao(m_importing, record, em);
        if (record.Text("perda_dados") == "S") {
            AddIntervencao(record);
        }
        const std::optional<Record>& cadastro = m_importing.cadastroEm;
        if (cadastro && cadastro->Integer("cro") == record.Integer("cro")) {
            const Record& usuario = m_arquivo.Small("E02").front();
            WriteUsuario(m_importing,
                         SecondsOf(usuario.Raw("data_cadastro"), usuario.Raw("hora_cadastro")));
            m_importing.cadastroEm.reset();
        }
    }

    void EnterMit(std::int64_t em)
    {
        m_importing.Count("cro");
        m_importing.tape.At("entrada_mit_interno", em);
    }

    // The clock may go back in an intervention.
    void LeaveMit()
    {
        TapeText& tape = m_importing.tape;
        if (m_fim != 0 && m_fim < tape.Now()) {
            tape.SetClock(m_fim);
        }
        tape.At("saida_mit_interno", std::max(tape.Now(), m_fim));
    }

    void AddIntervencao(const Record& record)
    {
        const std::int64_t time = TimeOf(record);
        m_importing.fatos.intervencoes.push_back({record.Integer("cro"),
                                                  time == 0 ? "" : InstantText(time),
                                                  record.Text("perda_dados") == "S"});
    }

    Importador& m_importing;
    ArquivoLido& m_arquivo;
    const std::vector<std::int32_t>& m_documentos;
    std::vector<Record> m_intervencoes;
    std::vector<Record> m_fitas;
    std::int64_t m_fim = 0;            // the end of the document at hand, as the file tells it
    std::size_t m_intervencao = 0;     // the next one
    std::vector<std::size_t> m_prazos; // the place of each one's last X reading
    std::size_t m_saida = NONE;        // that of the one that is being gone through
    std::size_t m_fita = 0;
    std::size_t m_reducaoAt = 0;
    std::size_t m_horaAt = 0; // the document that tells m_hora
    std::int64_t m_hora = 0;  // 0: not asked for yet, or none
    bool m_first = true;      // the first Z reduction is still to come
    Reinicios m_reinicios;

    std::int64_t m_antesDoArquivo = 0;
};

} // namespace

std::int64_t WriteDocumentos(Importador& importing)
{
    Percurso percurso(importing);
    percurso.Run();
    return percurso.AntesDoArquivo();
}

} // namespace bancada::arquivo
