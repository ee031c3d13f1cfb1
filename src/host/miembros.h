#pragma once
#include "host/objeto_host.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvel {

/// One member that a host can name.
struct Miembro {
    std::string nombre;
    int parametros = 0; ///< of the method; a property has none
    std::function<Estado(std::span<const Variant>)> metodo;
    std::function<Estado(Variant&)> leer;
    std::function<Estado(const Variant&)> poner;
};

/// Members by name and number. A member's number is its place in the list, counted from 1.
class Miembros {
public:
    void agregar(Miembro m) { miembros_.push_back(std::move(m)); }
    /// The ten properties of the session context.
    void agregar_sesion(ObjetoHost& o);
    Estado id(std::string_view nombre, int& id) const;
    Estado llamar(int id, Llamada llamada, std::span<const Variant> argumentos, Variant* resultado) const;

private:
    std::vector<Miembro> miembros_;
};

/// Texts of a variant as an automation host converts them: numbers become their digits.
[[nodiscard]] Estado como_texto(const Variant& v, std::string& texto);
[[nodiscard]] Estado como_entero16(const Variant& v, std::int16_t& numero);

} // namespace quorvel
