// The register's state taken apart, field by field: what Memoria's structs hold is named here once
// more, in bindings that do not compile as soon as a field is added or taken away.
#pragma once

#include "bancada/registro/Memoria.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace bancada_test
{

// A struct as a tuple of references to its fields. M is one of the structs, const or not.
template <class M>
auto Partes(M& m)
{
    using T = std::remove_const_t<M>;
    if constexpr (std::is_same_v<T, bancada::Memoria>) {
        auto& [a, b, c, d, e, f, g, h, i, j, k, l, n, o, p, q, r, s] = m;
        return std::tie(a, b, c, d, e, f, g, h, i, j, k, l, n, o, p, q, r, s);
    } else if constexpr (std::is_same_v<T, bancada::BaseFiscal>) {
        auto& [a, b, c, d, e, f, g] = m;
        return std::tie(a, b, c, d, e, f, g);
    } else if constexpr (std::is_same_v<T, bancada::BaseNaoFiscal>) {
        auto& [a, b] = m;
        return std::tie(a, b);
    } else if constexpr (std::is_same_v<T, bancada::Jornada>) {
        auto& [a, b, c, d, e, f, g] = m;
        return std::tie(a, b, c, d, e, f, g);
    } else if constexpr (std::is_same_v<T, bancada::MeioDePagamento>) {
        auto& [a, b] = m;
        return std::tie(a, b);
    } else if constexpr (std::is_same_v<T, bancada::Contribuinte>) {
        auto& [a, b, c, d, e, f, g] = m;
        return std::tie(a, b, c, d, e, f, g);
    } else if constexpr (std::is_same_v<T, bancada::IdentidadeECF>) {
        auto& [a, b, c, d, e, f, g, h] = m;
        return std::tie(a, b, c, d, e, f, g, h);
    } else if constexpr (std::is_same_v<T, bancada::CurrentCupom>) {
        auto& [a, b, c, d, e, f, g, h, i, j, k, l, n, o, p, q, r, s, t, u, v] = m;
        return std::tie(a, b, c, d, e, f, g, h, i, j, k, l, n, o, p, q, r, s, t, u, v);
    } else if constexpr (std::is_same_v<T, bancada::Consumidor>) {
        auto& [a, b, c] = m;
        return std::tie(a, b, c);
    } else if constexpr (std::is_same_v<T, bancada::ItemVendido>) {
        auto& [a, b, c, d, e, f, g, h, i, j, k, l, n, o, p] = m;
        return std::tie(a, b, c, d, e, f, g, h, i, j, k, l, n, o, p);
    } else if constexpr (std::is_same_v<T, bancada::PagamentoEfetuado>) {
        auto& [a, b, c] = m;
        return std::tie(a, b, c);
    } else {
        static_assert(std::is_same_v<T, bancada::Decimal>, "a struct that is not taken apart");
        auto& [a, b] = m;
        return std::tie(a, b);
    }
}

// Gives every field the next number, or what it makes of it.
inline void Preenche(int& valor, int& proximo)
{
    valor = proximo++;
}
inline void Preenche(std::int64_t& valor, int& proximo)
{
    valor = proximo++;
}
inline void Preenche(bool& valor, int&)
{
    valor = true;
}
inline void Preenche(std::uint8_t& valor, int& proximo)
{
    valor = static_cast<std::uint8_t>(proximo++);
}
inline void Preenche(std::string& valor, int& proximo)
{
    valor = "t" + std::to_string(proximo++);
}
inline void Preenche(Financial& valor, int& proximo)
{
    valor = Financial::FromCents(proximo++);
}
inline void Preenche(RtcTime& valor, int& proximo)
{
    valor.s = static_cast<UINT32>(proximo++);
}
template <class T, std::enable_if_t<std::is_class_v<T> || std::is_enum_v<T>, int> = 0>
void Preenche(T& valor, int& proximo);
template <class T, std::size_t N>
void Preenche(std::array<T, N>& valores, int& proximo)
{
    for (T& valor : valores) {
        Preenche(valor, proximo);
    }
}
template <class T>
void Preenche(std::vector<T>& valores, int& proximo)
{
    for (T& valor : valores) {
        Preenche(valor, proximo);
    }
}
template <class T, std::enable_if_t<std::is_class_v<T> || std::is_enum_v<T>, int>>
void Preenche(T& valor, int& proximo)
{
    if constexpr (std::is_base_of_v<RtcTime, T>) {
        Preenche(static_cast<RtcTime&>(valor), proximo);
    } else if constexpr (!std::is_enum_v<T>) { // those have few values: the caller chooses
        std::apply([&](auto&... partes) { (Preenche(partes, proximo), ...); }, Partes(valor));
    }
}

// Whether both hold the same in every field.
template <class T>
bool Iguais(const T& um, const T& outro);
template <class T, std::size_t N>
bool Iguais(const std::array<T, N>& um, const std::array<T, N>& outro)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (!Iguais(um[i], outro[i])) {
            return false;
        }
    }
    return true;
}
template <class T>
bool Iguais(const std::vector<T>& um, const std::vector<T>& outro)
{
    bool iguais = um.size() == outro.size();
    for (std::size_t i = 0; iguais && i < um.size(); ++i) {
        iguais = Iguais(um[i], outro[i]);
    }
    return iguais;
}
template <class T>
bool Iguais(const T& um, const T& outro)
{
    if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_same_v<T, std::string> ||
                  std::is_same_v<T, Financial>) {
        return um == outro;
    } else if constexpr (std::is_base_of_v<RtcTime, T>) {
        return um.s == outro.s;
    } else {
        const auto partesDoOutro = Partes(outro);
        return std::apply(
            [&](const auto&... partes) {
                return std::apply(
                    [&](const auto&... outras) { return (Iguais(partes, outras) && ...); },
                    partesDoOutro);
            },
            Partes(um));
    }
}

} // namespace bancada_test
