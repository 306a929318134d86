#include "bancada/arquivo/ArquivoLido.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/arquivo/Tributacao.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

// A register has a few of them: so many are kept of whatever the file names.
constexpr std::size_t MAX_NAMES = 200;

void AddOnce(std::vector<std::string>& names, const std::string& name)
{
    if (!name.empty() && names.size() < MAX_NAMES &&
        std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(name);
    }
}

// As the records have it.
std::string CrzText(std::int64_t crz)
{
    std::string number = std::to_string(crz);
    return number.insert(0, number.size() < 6 ? 6 - number.size() : 0, '0');
}

} // namespace

ArquivoLido::ArquivoLido(const std::string& path) : m_reader(path)
{
    for (const char* type : {"E14", "E15", "E16", "E19", "E20", "E21"}) {
        m_grupos.push_back({type});
        m_grupos.back().reader = std::make_unique<RecordReader>(path);
    }
    Record record;
    std::string first;
    while (m_reader.Next(record)) {
        first = first.empty() ? record.Type() : first;
        Take(record, m_reader.Offset());
    }
    if (first != "E01") {
        throw Unusable(path + ":1: " +
                       (first.empty()
                            ? Tr("a file begins with E01, the register's identification, not with "
                                 "its end")
                            : Tr("a file begins with E01, the register's identification, not with "
                                 "%1",
                                 {first})));
    }
    Finish();
}

ArquivoLido::Grupo& ArquivoLido::GrupoOf(std::string_view type)
{
    return *std::find_if(m_grupos.begin(), m_grupos.end(),
                         [type](const Grupo& grupo) { return type == grupo.type; });
}

void ArquivoLido::TakePlace(Grupo& grupo, const Record& record, std::int64_t offset, bool several)
{
    const auto coo = static_cast<std::int32_t>(record.Integer("coo"));
    if (several && !grupo.places.empty() && grupo.places.back().coo == coo) {
        ++grupo.places.back().count;
        return;
    }
    grupo.places.push_back({coo, 1, offset, record.Number(), 0});
}

void ArquivoLido::TakePagamento(const Record& record)
{
    const auto coo = static_cast<std::int32_t>(record.Integer("coo"));
    if (coo != m_pago) {
        m_pago = coo;
        const Place* cupom = Find("E14", coo);
        cupom = cupom == nullptr ? Find("E19", coo) : cupom;
        m_devido = cupom == nullptr ? 0 : cupom->total;
    }
    const std::int64_t valor = record.Integer("valor");
    if (m_devido > 0 && valor > m_devido) {
        m_meiosComTroco.insert(record.Text("meio"));
    }
    m_devido -= valor;
}

// Those that a register's clock can have, of which a tape can tell.
void ArquivoLido::RequireDates(const Record& record) const
{
    constexpr std::string_view NONE = "00000000";
    constexpr std::string_view FIRST = "19700102";
    constexpr std::string_view LAST = "21060206";
    for (const Field& field : record.GetLeiaute().fields) {
        if (field.form == Form::D) {
            const std::string_view date = record.Raw(field.name);
            if (date != NONE && (date < FIRST || date > LAST)) {
                m_reader.Fail(record, field.name,
                              Tr("a date from 1970-01-02 to 2106-02-06 is due"));
            }
        }
    }
}

// The tape's register is that of E01, with one owner; its Z reductions are those of the documents.
void ArquivoLido::HoldComuns(const Record& record)
{
    const std::string type(record.Type());
    if (type == "E01") {
        m_numeroSerie = record.Raw("numero_serie");
        m_modelo = record.Raw("modelo");
    }
    if (!record.GetLeiaute().IsPrefixed()) {
        return;
    }
    const auto hold = [&](bool holds, const char* field, const char* reason) {
        if (!holds) {
            m_naoDito.AddField(type, field, Tr(reason));
        }
    };
    hold(record.Raw("numero_serie") == m_numeroSerie, "numero_serie", TrLater("not that of E01"));
    hold(record.Raw("modelo") == m_modelo, "modelo", TrLater("not that of E01"));
    hold(record.Text("letra_adicional").empty(), "letra_adicional",
         TrLater("the register has no additional fiscal memory"));
    if (type == "E02" || type >= "E12") {
        hold(record.Integer("usuario") == USUARIO, "usuario",
             TrLater("the register has one owner"));
    }
    if (type == "E12" || (type == "E16" && record.Text("simbolo") == "RZ")) {
        m_crzs.insert(record.Integer("crz"));
    } else if (type == "E13" || type == "E17" || type == "E18") {
        hold(m_crzs.count(record.Integer("crz")) != 0, "crz",
             TrLater("no Z reduction of the file has the number"));
    }
}

void ArquivoLido::Take(const Record& record, std::int64_t offset)
{
    RequireDates(record);
    HoldComuns(record);
    const std::string_view type = record.Type();
    if (type <= "E11" || type == "EAD") {
        m_small[std::string(type)].push_back(record);
        for (const char* field : {"coo_inicial", "coo_final"}) {
            if (type == "E10" && record.Integer(field) == 0) {
                m_reader.Fail(record, field, Tr("the number of a document is due"));
            }
        }
    } else if (type == "E12") {
        const auto coo = static_cast<std::int32_t>(record.Integer("coo"));
        if (!m_reducoes.emplace(coo, record).second) {
            m_reader.Fail(record, "coo", Tr("a number that did not come before is due"));
        }
    } else if (type == "E13") {
        m_crzTotalizadores[std::string(record.Raw("crz")) + record.Text("totalizador")] =
            record.Integer("valor");
        m_totalizadores.insert(record.Text("totalizador"));
    } else if (type == "E17") {
        AddOnce(m_nomesNf, record.Text("nome"));
    } else if (type == "E18") {
        if (record.Text("nome") != "TROCO") {
            AddOnce(m_meios, record.Text("nome"));
        }
    } else {
        TakePlace(GrupoOf(type), record, offset, type == "E15" || type == "E20" || type == "E21");
    }
    if (type == "E14" || type == "E19") {
        GrupoOf(type).places.back().total = record.Integer("total");
    } else if (type == "E15") {
        const std::string totalizador = record.Text("totalizador");
        if (!IsTributacao(totalizador)) {
            m_reader.Fail(record, "totalizador", Tr("a totalizer that items are sold in is due"));
        }
        m_totalizadores.insert(totalizador);
    } else if (type == "E16") {
        m_simbolos.emplace_back(static_cast<std::int32_t>(record.Integer("coo")),
                                record.Text("simbolo"));
    } else if (type == "E20") {
        AddOnce(m_nomesNf, record.Text("nome"));
    } else if (type == "E21") {
        AddOnce(m_meios, record.Text("meio"));
    }
    // The numbers of a type are all there, in order, when the next type begins.
    if (type == "E21") {
        if (m_pago == 0) {
            for (const char* done : {"E14", "E19"}) {
                std::vector<Place>& places = GrupoOf(done).places;
                std::sort(places.begin(), places.end(),
                          [](const Place& a, const Place& b) { return a.coo < b.coo; });
            }
        }
        TakePagamento(record);
    }
}

void ArquivoLido::Finish()
{
    for (Grupo& grupo : m_grupos) {
        std::sort(grupo.places.begin(), grupo.places.end(), [](const Place& a, const Place& b) {
            return a.coo != b.coo ? a.coo < b.coo : a.line < b.line;
        });
        for (std::size_t i = 1; i < grupo.places.size(); ++i) {
            if (grupo.places[i].coo == grupo.places[i - 1].coo) {
                throw Unusable(m_reader.Path() + ":" + std::to_string(grupo.places[i].line) + ": " +
                               grupo.type + ", coo: " +
                               Tr("the number %1 comes again, apart from its first",
                                  {std::to_string(grupo.places[i].coo)}));
            }
        }
        if (grupo.type != std::string("E15") && grupo.type != std::string("E20") &&
            grupo.type != std::string("E21")) {
            for (const Place& place : grupo.places) {
                m_documentos.push_back(place.coo);
            }
        }
    }
    for (const auto& reducao : m_reducoes) {
        m_documentos.push_back(reducao.first);
    }
    std::sort(m_simbolos.begin(), m_simbolos.end());
    std::sort(m_documentos.begin(), m_documentos.end());
    m_documentos.erase(std::unique(m_documentos.begin(), m_documentos.end()), m_documentos.end());
    if (m_documentos.empty()) {
        return;
    }
    std::size_t first = 0;
    std::int64_t widest = leitura::Steps(m_documentos.back(), m_documentos.front());
    for (std::size_t i = 1; i < m_documentos.size(); ++i) {
        const std::int64_t gap = leitura::Steps(m_documentos[i - 1], m_documentos[i]);
        if (gap > widest) {
            widest = gap;
            first = i;
        }
    }
    std::rotate(m_documentos.begin(), m_documentos.begin() + static_cast<std::ptrdiff_t>(first),
                m_documentos.end());
}

const ArquivoLido::Place* ArquivoLido::Find(const char* type, std::int64_t coo) const
{
    const auto grupo = std::find_if(m_grupos.begin(), m_grupos.end(), [type](const Grupo& one) {
        return std::string_view(type) == one.type;
    });
    const auto found = std::lower_bound(
        grupo->places.begin(), grupo->places.end(), coo,
        [](const Place& place, std::int64_t number) { return place.coo < number; });
    return found == grupo->places.end() || found->coo != coo ? nullptr : &*found;
}

bool ArquivoLido::Has(const char* type, std::int64_t coo) const
{
    return Find(type, coo) != nullptr;
}

std::vector<Record> ArquivoLido::Read(const char* type, std::int64_t coo)
{
    std::vector<Record> records;
    const Place* place = Find(type, coo);
    if (place == nullptr) {
        return records;
    }
    RecordReader& reader = *GrupoOf(type).reader;
    reader.SeekTo(place->offset, place->line);
    Record record;
    while (static_cast<std::int32_t>(records.size()) < place->count && reader.Next(record)) {
        records.push_back(record);
    }
    if (static_cast<std::int32_t>(records.size()) < place->count ||
        records.front().Type() != type || records.front().Integer("coo") != coo) {
        throw Unusable(Tr("%1: was written to while it was read", {m_reader.Path()}));
    }
    return records;
}

std::string ArquivoLido::Simbolo(std::int64_t coo) const
{
    const auto found =
        std::lower_bound(m_simbolos.begin(), m_simbolos.end(), coo,
                         [](const auto& one, std::int64_t number) { return one.first < number; });
    return found == m_simbolos.end() || found->first != coo ? "" : found->second;
}

const std::vector<Record>& ArquivoLido::Small(const char* type) const
{
    static const std::vector<Record> none;
    const auto found = m_small.find(type);
    return found == m_small.end() ? none : found->second;
}

std::int64_t ArquivoLido::Totalizador(std::int64_t crz, const std::string& totalizador) const
{
    const auto found = m_crzTotalizadores.find(CrzText(crz) + totalizador);
    return found == m_crzTotalizadores.end() ? 0 : found->second;
}

bool ArquivoLido::HasRate(std::int64_t crz, const std::string& prefix) const
{
    const std::string key = CrzText(crz) + prefix;
    for (auto one = m_crzTotalizadores.lower_bound(key);
         one != m_crzTotalizadores.end() && one->first.compare(0, key.size(), key) == 0; ++one) {
        if (one->second != 0) {
            return true;
        }
    }
    return false;
}

std::int64_t ArquivoLido::NumbersBehind() const
{
    constexpr std::int64_t MAX_BEHIND = 1000;
    if (Small("E11").empty() || m_documentos.empty()) {
        return 0;
    }
    const std::int64_t behind =
        leitura::Steps(m_documentos.back(), Small("E11").front().Integer("coo"));
    // A counter that lies behind the last document counts no document of the file.
    return behind <= MAX_BEHIND ? behind : 0;
}

NumerosLivres ArquivoLido::FreeNumbers(std::size_t at) const
{
    NumerosLivres livres;
    for (std::size_t i = at + 1; i < m_documentos.size(); ++i) {
        const std::int32_t coo = m_documentos[i];
        livres.numeros += static_cast<std::size_t>(leitura::Steps(m_documentos[i - 1], coo) - 1);
        if (Has("E14", coo) || Has("E19", coo) || m_reducoes.count(coo) != 0) {
            return livres;
        }
        livres.comprovantes += Simbolo(coo) == "CC" ? 1 : 0;
    }
    livres.numeros += static_cast<std::size_t>(NumbersBehind());
    return livres;
}

} // namespace bancada::arquivo
