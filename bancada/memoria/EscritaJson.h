// Writes fields into a JSON object.
#pragma once

#include "RtcClasses.h"
#include "bancada/memoria/ValoresJson.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace bancada
{

// The operations are those of LeituraJson; limits are for the reader to check.
class EscritaJson
{
  public:
    nlohmann::json Fim() { return std::move(m_objeto); }

    void Inteiro(const char* nome, std::int64_t valor, std::int64_t, std::int64_t)
    {
        Poe(nome, valor, valor != 0);
    }
    void Valor(const char* nome, const Financial& valor)
    {
        Poe(nome, JsonDeValor(valor), !valor.IsZero());
    }
    void Percentual(const char* nome, int centesimos)
    {
        Poe(nome, JsonDeDecimal({centesimos, 2}), centesimos != 0);
    }
    void Numero(const char* nome, const Decimal& numero)
    {
        Poe(nome, JsonDeDecimal(numero), numero.unscaled != 0 || numero.decimals != 0);
    }
    void Texto(const char* nome, const std::string& texto) { Poe(nome, texto, !texto.empty()); }
    void Marca(const char* nome, bool marca) { Poe(nome, marca, marca); }
    void Instante(const char* nome, RtcAbsoluteTime instante)
    {
        Poe(nome, JsonDeInstante(instante), instante.s != matlong[0]);
    }
    void Segundos(const char* nome, RtcRelativeTime tempo) { Poe(nome, tempo.s, tempo.s != 0); }
    void Bytes(const char* nome, const std::array<std::uint8_t, 32>& bytes)
    {
        Poe(nome, JsonDeBytes(bytes), bytes != std::array<std::uint8_t, 32>{});
    }

    // `padrao` is what it is in an object just made.
    template <class E, std::size_t N>
    void Opcao(const char* nome, E valor, const std::array<const char*, N>& nomes, E padrao = E{})
    {
        Poe(nome, nomes.at(static_cast<std::size_t>(valor)), valor != padrao);
    }

    template <class F>
    void Grupo(const char* nome, F campos)
    {
        EscritaJson grupo;
        campos(grupo);
        const bool cheio = grupo.m_cheio;
        Poe(nome, grupo.Fim(), cheio);
    }

    // The elements that hold anything, each under its key; of the first `sempre` all.
    template <class F>
    void Mapa(const char* nome, const std::vector<std::string>& chaves, std::size_t sempre,
              F campos)
    {
        EscritaJson mapa;
        for (std::size_t i = 0; i < chaves.size(); ++i) {
            EscritaJson elemento;
            campos(elemento, i);
            if (elemento.m_cheio || i < sempre) {
                mapa.Poe(chaves[i].c_str(), elemento.Fim(), true);
            }
        }
        const bool cheio = mapa.m_cheio;
        Poe(nome, mapa.Fim(), cheio);
    }

    template <class T, class F>
    void Lista(const char* nome, const std::vector<T>& lista, std::size_t, F campos)
    {
        nlohmann::json elementos = nlohmann::json::array();
        for (const T& elemento : lista) {
            EscritaJson objeto;
            campos(objeto, elemento);
            elementos.push_back(objeto.Fim());
        }
        Poe(nome, std::move(elementos), !lista.empty());
    }

  private:
    void Poe(const char* nome, nlohmann::json valor, bool cheio)
    {
        m_objeto[nome] = std::move(valor);
        m_cheio = m_cheio || cheio;
    }

    nlohmann::json m_objeto = nlohmann::json::object();
    bool m_cheio = false; // a field differs from that of an object just made
};

} // namespace bancada
