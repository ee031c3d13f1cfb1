#pragma once
#include "host/miembros.h"
#include "screen/frmQuorvel.h"

#include <stdexcept>

namespace quorvel {

/// Common implementation of both classes: calls by name, the properties and the one screen.
template <class Interfaz> class SesionHost : public Interfaz {
public:
    explicit SesionHost(Servicios servicios)
        : servicios_(std::move(servicios)), pantalla_(std::make_unique<frmQuorvel>(servicios_)) {}
    ~SesionHost() override {
        try {
            (void)pantalla_->dismiss();
            if (pantalla_->in_use()) servicios_.escritorio.keep(std::move(pantalla_));
        } catch (...) { // the host has closed the session before; there is nobody left to tell
        }
    }

    Estado GetIDsOfNames(std::string_view nombre, int& id) const override {
        return responder(miembros_.id(nombre, id));
    }
    Estado Invoke(int id, Llamada llamada, std::span<const Variant> argumentos, Variant* resultado) override {
        error_.clear();
        const Estado e = miembros_.llamar(id, llamada, argumentos, resultado);
        return fallo(e) && !error_.empty() ? e : responder(e);
    }
    [[nodiscard]] frmQuorvel& pantalla() override { return *pantalla_; }
    [[nodiscard]] const std::string& descripcion_error() const override { return error_; }

    Estado get_glbEmpresa(std::int16_t* v) override { return leer(v, empresa_); }
    Estado let_glbEmpresa(std::int16_t v) override { return poner(empresa_, v); }
    Estado get_glbN_empresa(std::string* v) override { return leer(v, n_empresa_); }
    Estado let_glbN_empresa(const std::string& v) override { return poner(n_empresa_, v); }
    Estado get_glbUsuario(std::int16_t* v) override { return leer(v, usuario_); }
    Estado let_glbUsuario(std::int16_t v) override { return poner(usuario_, v); }
    Estado get_glbN_usuario(std::string* v) override { return leer(v, n_usuario_); }
    Estado let_glbN_usuario(const std::string& v) override { return poner(n_usuario_, v); }
    Estado get_glbAlias(std::int16_t* v) override { return leer(v, alias_); }
    Estado let_glbAlias(std::int16_t v) override { return poner(alias_, v); }
    Estado get_glbPrograma(std::string* v) override { return leer(v, programa_); }
    Estado let_glbPrograma(const std::string& v) override { return poner(programa_, v); }
    Estado get_glbdb(clsConexion** v) override { return leer(v, db_); }
    Estado set_glbdb(clsConexion* v) override { return poner(db_, v); }
    Estado get_glbdbReport(clsConexion** v) override { return leer(v, reporte_); }
    Estado set_glbdbReport(clsConexion* v) override { return poner(reporte_, v); }
    Estado get_glbPermiso(std::string* v) override { return leer(v, permiso_); }
    Estado let_glbPermiso(const std::string& v) override { return poner(permiso_, v); }
    Estado get_glbTipoImpresora(std::string* v) override { return leer(v, tipo_impresora_); }
    Estado let_glbTipoImpresora(const std::string& v) override { return poner(tipo_impresora_, v); }
    Estado UnloadForm() override {
        bool hecho = false;
        const Estado e = intentar([&] { hecho = pantalla_->dismiss(); });
        return hecho || fallo(e) ? e : responder(E_PENDING);
    }

protected:
    /// Runs a call; what it throws becomes its failing status.
    template <class F> Estado intentar(F&& llamada) {
        const ui::Escritorio::Acting anfitrion(servicios_.escritorio, nullptr);
        error_.clear();
        try {
            llamada();
            return responder(S_OK); // the host may have called in between, from a modal show
        } catch (const ui::Busy& e) {
            error_ = e.what();
            return RPC_E_SERVERCALL_RETRYLATER;
        } catch (const std::exception& e) {
            error_ = e.what();
        } catch (...) {
            error_ = "Error desconocido";
        }
        return E_FAIL;
    }
    /// The screen for a call that loads it; it loads with the last value that it is handed, so everything
    /// that its load step reads comes before.
    frmQuorvel& entregar_sesion() {
        if (!db_) throw std::runtime_error("Falta la sesión de la base de datos (glbdb)");
        frmQuorvel& f = libre();
        if (f.loaded() && (f.glbdb != db_ || f.glbEmpresa != empresa_ || f.glbUsuario != usuario_))
            throw ui::Busy(
                "La pantalla está abierta con otra empresa, otro usuario u otra base: ciérrela antes");
        f.glbAlias = alias_;
        f.glbdb = db_;
        f.glbdbReport = reporte_;
        f.glbEmpresa = empresa_;
        f.glbN_empresa = n_empresa_;
        f.glbUsuario = usuario_;
        f.glbN_usuario = n_usuario_;
        f.glbPermiso = permiso_;
        f.glbPrograma = programa_;
        f.SetglbTipoImpresora(tipo_impresora_);
        return f;
    }
    /// A screen that the user closed is loaded again by whatever touches it.
    frmQuorvel& pantalla_cargada() {
        frmQuorvel& f = libre();
        return f.loaded() ? f : entregar_sesion();
    }
    template <class T> Estado leer(T* destino, const T& valor) {
        if (destino) *destino = valor;
        return responder(destino ? S_OK : E_INVALIDARG);
    }
    template <class T, class V> Estado poner(T& destino, const V& valor) {
        return intentar([&] { destino = valor; });
    }
    Miembros miembros_;

private:
    Estado responder(Estado e) const {
        error_ = descripcion(e);
        return e;
    }
    /// The screen while none of its procedures runs; a new one once it was closed.
    frmQuorvel& libre() {
        if (pantalla_->loaded() && pantalla_->running())
            throw ui::Busy("La pantalla está ocupada: espere a que termine lo que está haciendo");
        if (pantalla_->loaded() || !pantalla_->spent()) return *pantalla_;
        auto nueva = std::make_unique<frmQuorvel>(servicios_);
        if (pantalla_->in_use()) servicios_.escritorio.keep(std::move(pantalla_));
        pantalla_ = std::move(nueva);
        return *pantalla_;
    }
    std::int16_t empresa_ = 0, usuario_ = 0, alias_ = 0;
    std::string n_empresa_, n_usuario_, programa_, permiso_, tipo_impresora_;
    mutable std::string error_;
    clsConexion* db_ = nullptr;
    clsConexion* reporte_ = nullptr;
    const Servicios servicios_;
    std::unique_ptr<frmQuorvel> pantalla_;
};

} // namespace quorvel
