#pragma once
#include "platform/db/clsConexion.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// Something wrong in a file: line (1 is the first), column name, what.
struct ErrorPlan {
    int linea = 0;
    std::string campo, mensaje;
    /// "línea 12, cuenta: …"
    [[nodiscard]] std::string texto() const;
};

struct CuentaPlan {
    int linea = 0;
    std::string codigo, nombre;
    std::string grupo; ///< first character of the code
    bool de_resultado = false, auxiliar = false;
    bool imputable = true; ///< no other account stands below it: it takes entries
    std::string uso;       ///< column of the year's configuration that the account is for, "" none
};

/// A chart of accounts as a file gives it.
struct Plan {
    std::vector<CuentaPlan> cuentas;
    std::string formato; ///< levels of the codes, "9.99.999"
    std::vector<ErrorPlan> errores;
};

/// Reads a chart: a title line, then an account a line, cells separated by ";", "," or tabs, quoted where
/// needed; UTF-8 or Windows-1252. Columns in any order: cuenta, nombre, tipo (activo, pasivo, patrimonio,
/// ingreso, gasto), and optionally auxiliar (1 or 0, sí or no) and uso. Dots in a code are left out. Every
/// error of the file is told, not only the first.
[[nodiscard]] Plan leer_plan(std::string_view bytes);

/// What keeps the chart from being added to that of the database: an account that is there with another name
/// or group, a group of another kind. @throws ErrorSesion
[[nodiscard]] std::vector<ErrorPlan> comparar_plan(clsConexion& db, const Plan& plan);
/// Adds the accounts and groups that the database lacks; inside the caller's transaction.
/// @return how many accounts @throws ErrorSesion
int agregar_plan(clsConexion& db, const Plan& plan);

} // namespace quorvel
