#pragma once
#include "empresa/configuracion_anual.h"
#include "platform/db/clsConexion.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// How a column of a master table is written, shown and checked.
enum class Clase : std::uint8_t { texto, digitos, numero, decimal, marca, rut, eleccion };

struct ColumnaCatalogo {
    const char *nombre, *titulo;
    Clase clase = Clase::texto;
    std::size_t largo = 50;         ///< letters at most
    bool obligatoria = false;       ///< may not be empty
    std::size_t ceros = 0;          ///< digitos: filled up with zeros to this many
    const char* opciones = nullptr; ///< eleccion: query of codes and names
    const char* si = "1";           ///< marca: as it is stored when set
    const char* no = "0";
    int letra = -1;                  ///< marca: which letter of the column's text it is; -1 all of it
    const char* expresion = nullptr; ///< read by this, stored by the catalogue's al_grabar
    const char* ayuda = "";
};
/// One text for each column, marks "1" or "0". The first column is the key.
using FilaCatalogo = std::vector<std::string>;

/// Where a code is used, so that it cannot go.
struct UsoCatalogo {
    const char *tabla, *condicion; ///< "$" stands for the code
    const char* texto;             ///< "La usan comprobantes"
};

/// Who may change a catalogue: everybody who works, or who has every permission and sees all vouchers.
enum class Derecho : std::uint8_t { quien_trabaja, todos_los_permisos };

/// A master table that a person keeps. What only one of them needs is a function of it.
struct Catalogo {
    const char *nombre, *titulo, *singular; ///< singular with its article: "la cuenta"
    const char* tabla;
    std::span<const ColumnaCatalogo> columnas;
    std::span<const UsoCatalogo> usos;
    Derecho derecho = Derecho::todos_los_permisos;
    int elige = -1; ///< column by whose choice the list is narrowed
    /// What only this catalogue refuses. @param antes empty for a new row
    void (*revisar)(clsConexion&, const FilaCatalogo& fila, const FilaCatalogo& antes,
                    std::vector<Observacion>&) = nullptr;
    /// Why the row cannot go, "" when it can.
    std::string (*por_que_queda)(clsConexion&, const FilaCatalogo&) = nullptr;
    std::string (*proponer)(clsConexion&) = nullptr; ///< the next code
    /// Inside the transaction, behind the row itself.
    void (*al_grabar)(clsConexion&, const FilaCatalogo&) = nullptr;
    void (*al_borrar)(clsConexion&, const FilaCatalogo&) = nullptr;
};

/// In the order of the menu.
[[nodiscard]] std::span<const Catalogo> catalogos();
/// @throws std::out_of_range
[[nodiscard]] const Catalogo& catalogo(std::string_view nombre);
/// Place of a column. @throws std::out_of_range
[[nodiscard]] std::size_t columna(const Catalogo& c, std::string_view nombre);
/// @param permiso five flags of the session @param alias 2: sees only his own vouchers
[[nodiscard]] bool puede_cambiar(const Catalogo& c, std::string_view permiso, int alias);

} // namespace quorvel
