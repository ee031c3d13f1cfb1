#pragma once
#include "catalogos/catalogo.h"

#include <optional>

namespace quorvel {

/// A value as a statement takes it.
[[nodiscard]] std::string sql_valor(const ColumnaCatalogo& columna, const std::string& valor);
/// " tabla.clave=…" of a row's code.
[[nodiscard]] std::string sql_fila(const Catalogo& c, const std::string& codigo);
/// Filled up with zeros in front.
[[nodiscard]] std::string rellenar(const std::string& digitos, std::size_t ancho);

/// @return nothing when there is no such code @throws ErrorSesion
[[nodiscard]] std::optional<FilaCatalogo> leer_fila(clsConexion& db, const Catalogo& c,
                                                    const std::string& codigo);
/// Marks set, the code that comes next, everything else empty. @throws ErrorSesion
[[nodiscard]] FilaCatalogo fila_nueva(clsConexion& db, const Catalogo& c);

struct Opcion {
    std::string codigo, nombre;
};
/// What a column of choices offers. @throws ErrorSesion
[[nodiscard]] std::vector<Opcion> opciones(clsConexion& db, const ColumnaCatalogo& columna);

/// Looks through a catalogue in the order of its codes, a slice at a time, so that half a million rows keep
/// nobody waiting; a slice is a range of the key.
class BusquedaCatalogo {
public:
    /// @param texto words, each of which stands somewhere in a row, accents, case and points ignored
    /// @param elegido value of the column that narrows the list, "" for all
    BusquedaCatalogo(clsConexion& db, const Catalogo& c, const std::string& texto, std::string elegido);
    /// Reads the next slice. @return its rows that have every word @throws ErrorSesion
    [[nodiscard]] std::vector<FilaCatalogo> seguir();
    [[nodiscard]] bool terminada() const { return terminada_; }

private:
    [[nodiscard]] bool tiene(const FilaCatalogo& fila) const;
    clsConexion& db_;
    const Catalogo& c_;
    std::vector<std::string> palabras_;
    std::string elegido_;
    std::optional<std::string> ultimo_;
    bool terminada_ = false;
};

} // namespace quorvel
