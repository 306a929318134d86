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
auto Parts(M& m)
{
    using T = std::remove_const_t<M>;
    if constexpr (std::is_same_v<T, bancada::Memoria>) {
        auto& [a, b, c, d, e, f, g, h, i, j, k, l, n, o, p, q, r, s, t] = m;
        return std::tie(a, b, c, d, e, f, g, h, i, j, k, l, n, o, p, q, r, s, t);
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
inline void Fill(int& value, int& next)
{
    value = next++;
}
inline void Fill(std::int64_t& value, int& next)
{
    value = next++;
}
inline void Fill(bool& value, int&)
{
    value = true;
}
inline void Fill(std::uint8_t& value, int& next)
{
    value = static_cast<std::uint8_t>(next++);
}
inline void Fill(std::string& value, int& next)
{
    value = "t" + std::to_string(next++);
}
inline void Fill(Financial& value, int& next)
{
    value = Financial::FromCents(next++);
}
inline void Fill(RtcTime& value, int& next)
{
    value.s = static_cast<UINT32>(next++);
}
template <class T, std::enable_if_t<std::is_class_v<T> || std::is_enum_v<T>, int> = 0>
void Fill(T& value, int& next);
template <class T, std::size_t N>
void Fill(std::array<T, N>& values, int& next)
{
    for (T& value : values) {
        Fill(value, next);
    }
}
template <class T>
void Fill(std::vector<T>& values, int& next)
{
    for (T& value : values) {
        Fill(value, next);
    }
}
template <class T, std::enable_if_t<std::is_class_v<T> || std::is_enum_v<T>, int>>
void Fill(T& value, int& next)
{
    if constexpr (std::is_base_of_v<RtcTime, T>) {
        Fill(static_cast<RtcTime&>(value), next);
    } else if constexpr (!std::is_enum_v<T>) { // those have few values: the caller chooses
        std::apply([&](auto&... parts) { (Fill(parts, next), ...); }, Parts(value));
    }
}

// Whether both hold the same in every field.
template <class T>
bool Same(const T& one, const T& other);
template <class T, std::size_t N>
bool Same(const std::array<T, N>& one, const std::array<T, N>& other)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (!Same(one[i], other[i])) {
            return false;
        }
    }
    return true;
}
template <class T>
bool Same(const std::vector<T>& one, const std::vector<T>& other)
{
    bool same = one.size() == other.size();
    for (std::size_t i = 0; same && i < one.size(); ++i) {
        same = Same(one[i], other[i]);
    }
    return same;
}
template <class T>
bool Same(const T& one, const T& other)
{
    if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_same_v<T, std::string> ||
                  std::is_same_v<T, Financial>) {
        return one == other;
    } else if constexpr (std::is_base_of_v<RtcTime, T>) {
        return one.s == other.s;
    } else {
        const auto partsOfOther = Parts(other);
        return std::apply(
            [&](const auto&... parts) {
                return std::apply(
                    [&](const auto&... others) { return (Same(parts, others) && ...); },
                    partsOfOther);
            },
            Parts(one));
    }
}

} // namespace bancada_test
