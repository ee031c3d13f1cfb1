#include "platform/db/clsConexion.h"
#include "text/numeros.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace quorvel {

std::string Value::text() const {
    if (const auto* t = std::get_if<std::string>(&v_)) return *t;
    if (const auto* n = std::get_if<std::int64_t>(&v_)) return std::to_string(*n);
    const auto* d = std::get_if<double>(&v_);
    if (d == nullptr) return "";
    std::array<char, 400> digits{};
    const auto r = std::to_chars(digits.data(), digits.data() + digits.size(), *d, std::chars_format::fixed);
    return std::string(digits.data(), r.ptr);
}

std::int64_t Value::integer() const {
    if (const auto* n = std::get_if<std::int64_t>(&v_)) return *n;
    if (const auto* t = std::get_if<std::string>(&v_)) return val_entero(*t);
    const double d = number();
    constexpr double LIMIT = 9.2e18;
    return std::fabs(d) < LIMIT ? static_cast<std::int64_t>(d) : 0;
}

double Value::number() const {
    if (const auto* n = std::get_if<std::int64_t>(&v_)) return static_cast<double>(*n);
    if (const auto* d = std::get_if<double>(&v_)) return *d;
    if (const auto* t = std::get_if<std::string>(&v_)) return valnumerobase(*t);
    return 0;
}

Decimal Value::decimal() const {
    if (const auto* n = std::get_if<std::int64_t>(&v_)) return *n;
    std::string chileno = text();
    std::ranges::replace(chileno, '.', ',');
    return Decimal::leer(chileno);
}

std::optional<Fecha> Value::date() const {
    const auto* t = std::get_if<std::string>(&v_);
    return t != nullptr ? leer_fecha_iso(*t) : std::nullopt;
}

} // namespace quorvel
