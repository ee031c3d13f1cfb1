#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// An exact decimal amount with up to six decimals; sums of cells never go through binary floating point.
class Decimal {
public:
    constexpr Decimal() = default;
    constexpr Decimal(std::int64_t unidades)
        : millonesimas_(Entero{unidades} * ESCALA) {} // NOLINT: whole pesos convert
    /// Reads a displayed amount: "." groups thousands, "," is the decimal mark; empty or unreadable is 0.
    [[nodiscard]] static Decimal leer(std::string_view chileno);
    [[nodiscard]] double valor() const;
    /// Whole pesos, halves away from zero; what no 64-bit number holds becomes the nearest that one does.
    [[nodiscard]] std::int64_t pesos() const;
    /// The same, whatever its size.
    [[nodiscard]] Decimal redondeado() const;
    /// Plain digits, "." as decimal mark and no more decimals than needed: "-1234.5".
    [[nodiscard]] std::string plano() const;
    /// The amount as a pattern shows it, in the Chilean form; halves go away from zero.
    [[nodiscard]] std::string formato(std::string_view patron) const;
    friend constexpr Decimal operator+(Decimal a, Decimal b) {
        return desde(a.millonesimas_ + b.millonesimas_);
    }
    friend constexpr Decimal operator-(Decimal a, Decimal b) {
        return desde(a.millonesimas_ - b.millonesimas_);
    }
    constexpr Decimal operator-() const { return desde(-millonesimas_); }
    friend constexpr auto operator<=>(Decimal, Decimal) = default;

private:
    __extension__ typedef __int128 Entero;
    static constexpr std::int64_t ESCALA = 1000000;
    static constexpr Decimal desde(Entero m) {
        Decimal d;
        d.millonesimas_ = m;
        return d;
    }
    Entero millonesimas_ = 0;
};

/// Whether a total can be stored: it has no more digits than an amount may have.
[[nodiscard]] constexpr bool cabe_en_total(Decimal total) {
    constexpr std::int64_t MAYOR = 999'999'999'999'999'999;
    return total >= -MAYOR && total <= MAYOR;
}

/// Formats a number with a pattern ("0", "00", "000000", "0.00", "#,##0", "#,##0.00", "#,##0.##"), "."
/// grouping and "," as decimal mark whatever the machine's settings; "#" is a decimal that is shown when
/// there is one. Rounds halves away from zero on the value's 15 significant decimal digits, so 250 × 1.19
/// shows 298.
/// @param bcero true shows 0 as an empty text
[[nodiscard]] std::string formato(double dblvalor, std::string_view strformato, bool bcero = false);
/// Reads a number whose decimal mark is "." or ","; the leading number counts, none is 0.
[[nodiscard]] double valnumerobase(std::string_view strnumero);
/// Reads a displayed amount: every "." is removed, "," is the decimal mark; an empty text is 0.
[[nodiscard]] double valnumeroformato(std::string_view strnumero);
/// Rounds to a whole number, halves to the even neighbour, on 15 significant digits.
[[nodiscard]] double Round(double valor);
/// A displayed amount as an SQL number literal ("1.234.567" gives "1234567", "" gives "0", "12,5" gives
/// "12.5").
/// @return nothing when the text is no number.
[[nodiscard]] std::optional<std::string> numero_sql(std::string_view chileno);
/// "1.234.567": no points, or only where thousands are grouped.
[[nodiscard]] bool bien_agrupado(std::string_view entero);
/// As numero_sql, for an amount that a person has typed: points only where thousands are grouped, and no more
/// decimals than it may have, so that every reader of the text sees one number.
[[nodiscard]] std::optional<std::string> monto_sql(std::string_view escrito, std::size_t decimales = 6);
/// The leading digits of a text as a number, 0 when there are none: val("12A") is 12.
[[nodiscard]] std::int64_t val_entero(std::string_view texto);
/// A whole number formatted with zeros in front to six digits; other texts stay as they are.
[[nodiscard]] std::string codigo_seis(std::string_view codigo);

} // namespace quorvel
