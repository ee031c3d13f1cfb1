#pragma once
#include "host/objeto_host.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

/// Common implementation of both classes: the properties and the one screen.
template <class Interfaz> class SesionHost : public Interfaz {
public:
    explicit SesionHost(Servicios servicios) : pantalla_(std::move(servicios)) {}
    ~SesionHost() override {
        try {
            pantalla_.Unload();
        } catch (...) { // the host has closed the session before; there is nobody left to tell
        }
    }

    [[nodiscard]] frmQuorvel& pantalla() override { return pantalla_; }
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
        return intentar([this] { pantalla_.Unload(); });
    }

protected:
    /// Runs a call; what it throws becomes its failing status.
    template <class F> Estado intentar(F&& llamada) {
        try {
            error_.clear();
            llamada();
            return S_OK;
        } catch (const std::exception& e) {
            error_ = e.what();
        } catch (...) {
            error_ = "Error desconocido";
        }
        return E_FAIL;
    }
    /// The screen loads with the last of these, so everything that its load step reads comes before.
    void entregar_sesion() {
        if (!db_) throw std::runtime_error("Falta la sesión de la base de datos (glbdb)");
        frmQuorvel& f = pantalla_;
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
    }
    /// A screen that the user closed is loaded again by whatever touches it.
    frmQuorvel& pantalla_cargada() {
        if (!pantalla_.loaded()) entregar_sesion();
        return pantalla_;
    }
    template <class T> Estado leer(T* destino, const T& valor) {
        if (!destino) return E_INVALIDARG;
        *destino = valor;
        return S_OK;
    }
    template <class T, class V> Estado poner(T& destino, const V& valor) {
        return intentar([&] { destino = valor; });
    }

private:
    std::int16_t empresa_ = 0, usuario_ = 0, alias_ = 0;
    std::string n_empresa_, n_usuario_, programa_, permiso_, tipo_impresora_, error_;
    clsConexion* db_ = nullptr;
    clsConexion* reporte_ = nullptr;
    frmQuorvel pantalla_;
};

} // namespace quorvel
