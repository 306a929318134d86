#include "bancada/arquivo/Fatos.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/arquivo/JsonFile.h"

#include <nlohmann/json.hpp>
#include <type_traits>

namespace bancada::arquivo
{
namespace
{

using Json = nlohmann::ordered_json;

constexpr char FORMATO[] = "ecf-bancada fatos";

// One list of the fields, in two directions: a visitor either takes them from JSON or gives them.
class Reader
{
  public:
    Reader(const Json& json, std::string place) : m_json(json), m_place(std::move(place))
    {
        if (!json.is_object()) {
            throw Unusable(m_place + ": " + Tr("an object is due"));
        }
    }

    void Field(const char* name, std::string& value)
    {
        if (const Json* field = Find(name)) {
            Require(field->is_string(), name, TrLater("a text is due"));
            value = field->get<std::string>();
        }
    }
    void Field(const char* name, std::int64_t& value)
    {
        if (const Json* field = Find(name)) {
            Require(field->is_number_unsigned() && field->get<std::uint64_t>() <= MAX_NUMBER, name,
                    TrLater("a whole number is due"));
            value = field->get<std::int64_t>();
        }
    }
    void Field(const char* name, bool& value)
    {
        if (const Json* field = Find(name)) {
            Require(field->is_boolean(), name, TrLater("true or false is due"));
            value = field->get<bool>();
        }
    }
    template <typename T>
    void Field(const char* name, std::optional<T>& value)
    {
        if (m_json.contains(name)) {
            Field(name, value.emplace());
        }
    }
    template <typename T, typename Visit>
    void Object(const char* name, std::optional<T>& value, Visit visit)
    {
        if (const Json* field = Find(name)) {
            Reader reader(*field, m_place + "." + name);
            visit(reader, value.emplace());
            reader.Finish();
        }
    }
    template <typename T, typename Visit>
    void List(const char* name, std::vector<T>& list, Visit visit)
    {
        if (const Json* field = Find(name)) {
            Require(field->is_array(), name, TrLater("a list is due"));
            for (const Json& element : *field) {
                Reader reader(element,
                              m_place + "." + name + "[" + std::to_string(list.size() + 1) + "]");
                visit(reader, list.emplace_back());
                reader.Finish();
            }
        }
    }
    template <typename Key, typename T>
    void Map(const char* name, std::map<Key, T>& map)
    {
        const Json* field = Find(name);
        if (field == nullptr) {
            return;
        }
        Reader reader(*field, m_place + "." + name);
        for (const auto& entry : field->items()) {
            T value{};
            reader.Field(entry.key().c_str(), value);
            if constexpr (std::is_same_v<Key, std::string>) {
                map[entry.key()] = value;
            } else {
                Require(!entry.key().empty() && entry.key().size() <= 6 &&
                            entry.key().find_first_not_of("0123456789") == std::string::npos,
                        name, TrLater("numbers of documents are due"));
                map[std::stoll(entry.key())] = value;
            }
        }
    }

    void Finish() const
    {
        for (const auto& entry : m_json.items()) {
            bool known = false;
            for (const std::string& name : m_asked) {
                known = known || name == entry.key();
            }
            if (!known) {
                throw Unusable(Tr("%1: there is no field \"%2\"", {m_place, entry.key()}));
            }
        }
    }

  private:
    static constexpr std::uint64_t MAX_NUMBER = 999'999'999'999'999'999; // 18 digits

    const Json* Find(const char* name)
    {
        m_asked.emplace_back(name);
        const auto found = m_json.find(name);
        return found == m_json.end() ? nullptr : &*found;
    }

    void Require(bool holds, const char* name, const char* due) const
    {
        if (!holds) {
            throw Unusable(m_place + "." + name + ": " + Tr(due));
        }
    }

    const Json& m_json;
    std::string m_place;
    std::vector<std::string> m_asked;
};

class Writer
{
  public:
    template <typename T>
    void Field(const char* name, const T& value)
    {
        m_json[name] = value;
    }
    template <typename T>
    void Field(const char* name, const std::optional<T>& value)
    {
        if (value) {
            m_json[name] = *value;
        }
    }
    template <typename T, typename Visit>
    void Object(const char* name, const std::optional<T>& value, Visit visit)
    {
        if (value) {
            Writer writer;
            visit(writer, *value);
            m_json[name] = writer.m_json;
        }
    }
    template <typename T, typename Visit>
    void List(const char* name, const std::vector<T>& list, Visit visit)
    {
        Json array = Json::array();
        for (const T& element : list) {
            Writer writer;
            visit(writer, element);
            array.push_back(writer.m_json);
        }
        if (!list.empty()) {
            m_json[name] = array;
        }
    }
    template <typename Key, typename T>
    void Map(const char* name, const std::map<Key, T>& map)
    {
        Json object = Json::object();
        for (const auto& [key, value] : map) {
            if constexpr (std::is_same_v<Key, std::string>) {
                object[key] = value;
            } else {
                object[std::to_string(key)] = value;
            }
        }
        if (!map.empty()) {
            m_json[name] = object;
        }
    }

    const Json& Result() const { return m_json; }

  private:
    Json m_json = Json::object();
};

// Who was registered, and when.
template <typename Visitor, typename One>
void VisitInscricao(Visitor& visitor, One& one)
{
    visitor.Field("data_hora", one.dataHora);
    visitor.Field("cnpj", one.cnpj);
    visitor.Field("ie", one.ie);
}

template <typename Visitor, typename F>
void Visit(Visitor& v, F& fatos)
{
    const auto software = [](auto& visitor, auto& one) {
        visitor.Field("versao", one.versao);
        visitor.Field("data_hora", one.dataHora);
    };
    const auto simbolo = [](auto& visitor, auto& one) {
        visitor.Field("cnpj", one.cnpj);
        visitor.Field("data_hora", one.dataHora);
        visitor.Field("simbolo", one.simbolo);
    };
    v.Field("extracao", fatos.extracao);
    v.Field("biblioteca", fatos.biblioteca);
    v.Object("software", fatos.software, software);
    v.List("versoes_software", fatos.versoesSoftware, software);
    v.List("prestadores", fatos.prestadores, [](auto& visitor, auto& one) {
        visitor.Field("numero", one.numero);
        VisitInscricao(visitor, one);
        visitor.Field("vendas", one.vendas);
    });
    v.List("proprietarios_anteriores", fatos.proprietarios, [](auto& visitor, auto& one) {
        visitor.Field("usuario", one.usuario);
        VisitInscricao(visitor, one);
        visitor.Field("cro", one.cro);
        visitor.Field("gt", one.gt);
    });
    v.List("cifras_gt", fatos.cifras, simbolo);
    v.List("moedas", fatos.moedas, simbolo);
    v.List("memorias_detalhe", fatos.memorias, [](auto& visitor, auto& one) {
        visitor.Field("cnpj", one.cnpj);
        visitor.Field("numero_serie", one.numeroSerie);
    });
    v.List("intervencoes", fatos.intervencoes, [](auto& visitor, auto& one) {
        visitor.Field("cro", one.cro);
        visitor.Field("data_hora", one.dataHora);
        visitor.Field("perda_dados", one.perdaDados);
    });
    v.Map("contadores", fatos.contadores);
    v.Field("desconto_issqn", fatos.descontoIssqn);
    v.Field("nome_fundo_troco", fatos.fundoTroco);
    v.Field("nome_sangria", fatos.sangria);
    v.Field("meio_fundo_troco", fatos.meioFundoTroco);
    v.Map("ordens", fatos.ordens);
    v.Field("assinatura", fatos.assinatura);
}

} // namespace

Fatos ReadFatos(const std::string& path)
{
    const Json json = ReadJsonFile(path);
    Fatos fatos;
    Reader reader(json, path);
    std::string formato;
    std::int64_t versao = 0;
    reader.Field("formato", formato);
    reader.Field("versao", versao);
    if (formato != FORMATO || versao != 1) {
        throw Unusable(Tr("%1: is no facts file: \"formato\" \"%2\" and \"versao\" 1 are due",
                          {path, FORMATO}));
    }
    Visit(reader, fatos);
    reader.Finish();
    return fatos;
}

std::string FatosText(const Fatos& fatos)
{
    Writer writer;
    writer.Field("formato", FORMATO);
    writer.Field("versao", 1);
    Visit(writer, fatos);
    return writer.Result().dump(4) + "\n";
}

} // namespace bancada::arquivo
