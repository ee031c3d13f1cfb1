#pragma once
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// A calendar date without a time of day.
using Fecha = std::chrono::year_month_day;

/// Reads "dd/mm/yyyy" ("-" also separates). @return nothing for an empty text or an impossible date.
[[nodiscard]] std::optional<Fecha> leer_fecha(std::string_view dd_mm_yyyy);
/// The same in the short forms that people type: "5/3/24", "050324", and "5/3" or "0503" in the given year;
/// also "2024-03-05". Two-digit years lie between 1950 and 2049.
[[nodiscard]] std::optional<Fecha> leer_fecha_corta(std::string_view texto, int anio_por_omision);
/// Reads "mm/dd/yyyy".
[[nodiscard]] std::optional<Fecha> leer_fecha_mdy(std::string_view mm_dd_yyyy);
/// Reads "yyyy-mm-dd", the form in which both engines hand dates over; a time of day behind it is ignored.
[[nodiscard]] std::optional<Fecha> leer_fecha_iso(std::string_view iso);
/// "dd/mm/yyyy"
[[nodiscard]] std::string fecha_dmy(Fecha f);
/// "mm/dd/yyyy"
[[nodiscard]] std::string fecha_mdy(Fecha f);
/// "yyyy-mm-dd"
[[nodiscard]] std::string fecha_iso(Fecha f);
[[nodiscard]] inline int anio(Fecha f) { return static_cast<int>(f.year()); }
[[nodiscard]] inline int mes(Fecha f) { return static_cast<int>(static_cast<unsigned>(f.month())); }
[[nodiscard]] inline int dia(Fecha f) { return static_cast<int>(static_cast<unsigned>(f.day())); }

/// The one source of "today"; tests and the driver set it.
class Reloj {
public:
    virtual ~Reloj() = default;
    [[nodiscard]] virtual Fecha hoy() const = 0;
    /// "hh:mm"
    [[nodiscard]] virtual std::string hora() const = 0;
};
class RelojSistema final : public Reloj {
public:
    [[nodiscard]] Fecha hoy() const override;
    [[nodiscard]] std::string hora() const override;
};
/// Stands still at the given day; the hour is the machine's.
class RelojFijo final : public Reloj {
public:
    explicit RelojFijo(Fecha hoy) : hoy_(hoy) {}
    [[nodiscard]] Fecha hoy() const override { return hoy_; }
    [[nodiscard]] std::string hora() const override { return RelojSistema{}.hora(); }

private:
    Fecha hoy_;
};

} // namespace quorvel
