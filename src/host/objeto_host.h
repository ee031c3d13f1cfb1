#pragma once
#include "host/estado.h"
#include "host/variant.h"
#include "screen/servicios.h"

#include <memory>
#include <span>
#include <string_view>

namespace quorvel {

class frmQuorvel;

/// What a member is asked for.
enum class Llamada { metodo, leer, poner };

/// What both public classes share: the session context and calls by member name.
/// Every call returns a status; no exception leaves it. Texts are handed over by reference as the host holds
/// them; a session is borrowed, never owned, and must outlive the object or its UnloadForm.
class ObjetoHost {
public:
    virtual ~ObjetoHost() = default;
    /// Number of a member, its name read without regard to case. @return DISP_E_UNKNOWNNAME
    virtual Estado GetIDsOfNames(std::string_view nombre, int& id) const = 0;
    /// @param resultado the value of a property that is read; may be nullptr otherwise
    virtual Estado Invoke(int id, Llamada llamada, std::span<const Variant> argumentos,
                          Variant* resultado) = 0;
    /// Description of the last failed call, for the host's own message.
    [[nodiscard]] virtual const std::string& descripcion_error() const = 0;
    /// The object's one screen, for hosts that draw it.
    [[nodiscard]] virtual frmQuorvel& pantalla() = 0;

    // Session context, in slot order: get and let of each property.
    virtual Estado get_glbEmpresa(std::int16_t* valor) = 0;
    virtual Estado let_glbEmpresa(std::int16_t valor) = 0;
    virtual Estado get_glbN_empresa(std::string* valor) = 0;
    virtual Estado let_glbN_empresa(const std::string& valor) = 0;
    virtual Estado get_glbUsuario(std::int16_t* valor) = 0;
    virtual Estado let_glbUsuario(std::int16_t valor) = 0;
    virtual Estado get_glbN_usuario(std::string* valor) = 0;
    virtual Estado let_glbN_usuario(const std::string& valor) = 0;
    virtual Estado get_glbAlias(std::int16_t* valor) = 0;
    virtual Estado let_glbAlias(std::int16_t valor) = 0;
    virtual Estado get_glbPrograma(std::string* valor) = 0;
    virtual Estado let_glbPrograma(const std::string& valor) = 0;
    virtual Estado get_glbdb(clsConexion** valor) = 0;
    virtual Estado set_glbdb(clsConexion* valor) = 0;
    virtual Estado get_glbdbReport(clsConexion** valor) = 0;
    virtual Estado set_glbdbReport(clsConexion* valor) = 0;
    virtual Estado get_glbPermiso(std::string* valor) = 0;
    virtual Estado let_glbPermiso(const std::string& valor) = 0;
    virtual Estado get_glbTipoImpresora(std::string* valor) = 0;
    virtual Estado let_glbTipoImpresora(const std::string& valor) = 0;
};

/// "clsQuorvel" or "clsQuorvelRem", without regard to case; nullptr for another name.
[[nodiscard]] std::unique_ptr<ObjetoHost> crear_objeto(std::string_view clase, Servicios servicios);

} // namespace quorvel
