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
/// them.
///
/// A host may call at any time, also from a timer while a person has a lookup, a question or a file dialog of
/// the screen open:
/// - UnloadForm never goes under a procedure of the screen. It calls off what the procedures wait for, from
/// the
///   top down, as if the person had left each without a choice, and answers E_PENDING; the screen unloads
///   when the last procedure has ended. A print preview or a printer's own dialog is the person's to close.
/// - ShowForm, LoadForm, grd_agregar and grd_borrar answer RPC_E_SERVERCALL_RETRYLATER and change nothing
/// while
///   a procedure of the screen runs. ShowForm does so too while it cannot show anything: clsQuorvel beside
///   something that waits for an answer, clsQuorvelRem when its screen is shown already.
/// - An open screen keeps its company, user and database. ShowForm and LoadForm with others are refused in
/// the
///   same way until it has been unloaded; a voucher is saved and annulled where it was read.
/// A screen that was closed is loaded afresh, empty as the first time.
///
/// A session is borrowed, never owned. It must live until UnloadForm has answered S_OK; after E_PENDING,
/// until the screen's Closed. An object that is
/// deleted while a procedure of its screen runs calls it off like UnloadForm, and then the sessions must
/// outlive the procedure; it is never deleted from within a call of its own.
class ObjetoHost {
public:
    virtual ~ObjetoHost() = default;
    /// Number of a member, its name read without regard to case. @return DISP_E_UNKNOWNNAME
    virtual Estado GetIDsOfNames(std::string_view nombre, int& id) const = 0;
    /// @param resultado the value of a property that is read; may be nullptr otherwise
    virtual Estado Invoke(int id, Llamada llamada, std::span<const Variant> argumentos,
                          Variant* resultado) = 0;
    /// Description of the last call if it failed, for the host's own message; otherwise empty.
    [[nodiscard]] virtual const std::string& descripcion_error() const = 0;
    /// The object's one screen, for hosts that draw it. Another one takes its place when a closed screen is
    /// loaded again.
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
