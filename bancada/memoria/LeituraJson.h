// Reads fields out of a JSON object.
#pragma once

#include "RtcClasses.h"
#include "bancada/memoria/NomesDaMemoria.h"
#include "bancada/memoria/ValoresJson.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace bancada
{

// A field does not hold what it should. what() begins with its place, "registro.gt: ".
class CampoInvalido : public std::runtime_error
{
  public:
    CampoInvalido(const std::string& lugar, const std::string& motivo)
        : std::runtime_error(lugar + ": " + motivo)
    {
    }
};

// Every operation takes the field `nome` if it is there and leaves the value unchanged otherwise.
// Throws CampoInvalido for a value of another kind or out of its range.
class LeituraJson
{
  public:
    // `objeto` is borrowed and outlives this. `lugar` is its place in the file.
    LeituraJson(const nlohmann::json& objeto, std::string lugar);

    // To be called after the last field: throws CampoInvalido if there are others.
    void Fim() const;

    void Inteiro(const char* nome, int& valor, int min, int max);
    void Inteiro(const char* nome, std::int64_t& valor, std::int64_t min, std::int64_t max);
    void Valor(const char* nome, Financial& valor);
    void Percentual(const char* nome, int& centesimos);
    void Numero(const char* nome, Decimal& numero);
    void Texto(const char* nome, std::string& texto);
    void Marca(const char* nome, bool& marca);
    void Instante(const char* nome, RtcAbsoluteTime& instante);
    void Segundos(const char* nome, RtcRelativeTime& tempo);
    void Bytes(const char* nome, std::array<std::uint8_t, 32>& bytes);

    template <class E, std::size_t N>
    void Opcao(const char* nome, E& valor, const std::array<const char*, N>& nomes, E = E{})
    {
        const nlohmann::json* campo = Campo(nome);
        if (campo == nullptr) {
            return;
        }
        std::string devidos;
        for (std::size_t i = 0; i < N; ++i) {
            if (campo->is_string() && campo->get_ref<const std::string&>() == nomes[i]) {
                valor = static_cast<E>(i);
                return;
            }
            devidos += (i == 0 ? "\"" : " or \"") + std::string(nomes[i]) + "\"";
        }
        throw CampoInvalido(Lugar(nome), devidos + " is due");
    }

    template <class F>
    void Grupo(const char* nome, F campos)
    {
        const nlohmann::json* campo = Campo(nome);
        if (campo == nullptr) {
            return;
        }
        LeituraJson grupo(*campo, Lugar(nome));
        campos(grupo);
        grupo.Fim();
    }

    template <class F>
    void Mapa(const char* nome, const std::vector<std::string>& chaves, std::size_t, F campos)
    {
        Grupo(nome, [&](LeituraJson& mapa) {
            for (std::size_t i = 0; i < chaves.size(); ++i) {
                mapa.Grupo(chaves[i].c_str(), [&](LeituraJson& elemento) { campos(elemento, i); });
            }
        });
    }

    template <class T, class F>
    void Lista(const char* nome, std::vector<T>& lista, std::size_t max, F campos)
    {
        const nlohmann::json* campo = Campo(nome);
        if (campo == nullptr) {
            return;
        }
        if (!campo->is_array() || campo->size() > max) {
            throw CampoInvalido(Lugar(nome),
                                "a list of at most " + std::to_string(max) + " is due");
        }
        lista.clear();
        for (const nlohmann::json& objeto : *campo) {
            LeituraJson leitura(objeto, Lugar(nome) + "[" + std::to_string(lista.size() + 1) + "]");
            campos(leitura, lista.emplace_back());
            leitura.Fim();
        }
    }

  private:
    // The field, or null.
    const nlohmann::json* Campo(const char* nome);
    std::string Lugar(const std::string& nome) const;
    template <class T, class F>
    void Le(const char* nome, T& valor, F leitura);

    const nlohmann::json& m_objeto;
    std::string m_lugar;
    std::set<std::string> m_vistos; // names that were asked for
};

} // namespace bancada
